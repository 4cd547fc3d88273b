// Splitting, joining and sorting texts, against the slowest way.
#include <vector>

#include "Fuzz.h"
#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"

namespace {

using Lines = std::vector<std::string>;

Lines Split(std::string const & text, char sep1, char sep2, bool keepEmpty)
{
    if (text.empty()) return {""};
    Lines lines;
    std::string line;
    for (char const c : text) {
        bool const ends = c == sep1 || c == sep2;
        if (ends && (keepEmpty || !line.empty())) lines.push_back(line);
        line = ends ? "" : line + c;
    }
    if (!line.empty()) lines.push_back(line);
    return lines;
}

void RequireLines(char const * what, auto const & got, auto const & expected)
{
    RequireEqual(what, std::equal(got.begin(), got.end(), expected.begin(), expected.end()), true);
}

}  // namespace

void Fuzz(Input input)
{
    char const sep1 = input.Take<char>();
    char const sep2 = input.Take<char>();
    bool const keepEmpty = input.Take<char>() % 2 != 0;
    std::string const text = input.Rest();

    LCStringList list;
    list.DivideTextInLines(LCString(text), sep1, keepEmpty);
    RequireLines("one separator", list, Split(text, sep1, sep1, keepEmpty));
    list.DivideTextInLines(LCString(text), sep1, sep2);
    RequireLines("two separators", list, Split(text, sep1, sep2, true));
    LCStringVector vector;
    vector.DivideTextInLines(LCString(text), sep1);
    RequireLines("vector", vector, Split(text, sep1, sep1, true));
    if (sep1 != '\0' && !text.empty()) {
        LCString const again = vector.Str(sep1);
        RequireEqual("join", text.ends_with(sep1) ? again.str() + sep1 : again.str(), text);
    }

    Lines sorted = Split(text, sep1, sep2, true);
    std::stable_sort(sorted.begin(), sorted.end(), [](std::string const & a, std::string const & b) {
        return LCString(a).UpperCase() < LCString(b).UpperCase();
    });
    list.SortCI();
    RequireLines("sorted", list, sorted);
    LCString::LCCompareCI const less;
    vector.SortCI();
    RequireEqual("sorted vector", std::is_sorted(vector.begin(), vector.end(), less), true);
    Lines elements = Split(text, sep1, sep1, true);
    std::sort(elements.begin(), elements.end());
    std::sort(vector.begin(), vector.end());
    RequireLines("elements of the sorted vector", vector, elements);
    LCDoubleVector numbers;
    std::vector<double> expected;
    bool all = !text.empty();
    for (std::string const & field : Split(text, sep1, sep1, true)) {
        double value = 0.0;
        bool const good = (all || !keepEmpty) && LCString(field).AsDoubleWithCheck(value);
        if (good) expected.push_back(value);
        all = all && good;
    }
    RequireEqual("numbers", numbers.DivideText(LCString(text), sep1, keepEmpty), all || !keepEmpty);
    RequireLines("numbers", numbers, expected);
}

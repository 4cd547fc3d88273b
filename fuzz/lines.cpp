// Splitting, joining and sorting texts, against the slowest way.
#include "Fuzz.h"
#include "collections/LCNumberLists.h"
#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"

using Lines = std::vector<std::string>;

static Lines Split(std::string const & text, char sep1, char sep2, bool keepEmpty)
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

static void RequireLines(char const * what, auto const & got, auto const & expected)
{
    RequireEqual(what, std::equal(got.begin(), got.end(), expected.begin(), expected.end()), true);
}

void Fuzz(Input input)
{
    char const sep1 = input.Take<char>(), sep2 = input.Take<char>();
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
    std::string const end(text.ends_with(sep1) ? 1 : 0, sep1);
    RequireEqual("join", sep1 == '\0' ? text : vector.Str(sep1).str() + end, text);

    Lines sorted = Split(text, sep1, sep2, true);
    std::ranges::stable_sort(sorted, {}, [](std::string const & line) { return LCString(line).UpperCase(); });
    list.SortCI();
    RequireLines("sorted", list, sorted);
    LCStringVector const unsorted = vector;
    vector.SortCI();
    RequireEqual("sorted vector", std::ranges::is_sorted(vector, LCString::LCCompareCI()), true);
    RequireEqual("elements of the sorted vector", std::ranges::is_permutation(vector, unsorted), true);
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

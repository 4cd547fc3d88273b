// Splitting, joining and sorting texts, against the slowest way.
#include "Fuzz.h"
#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"

using Lines = std::vector<LCString>;

static Lines Split(std::string text, char sep1, char sep2, bool keepEmpty)
{
    if (text.empty()) return Lines(1);
    std::ranges::replace(text, sep2, sep1);
    std::istringstream in(text);
    Lines lines;
    for (std::string line; std::getline(in, line, sep1);)
        if (keepEmpty || !line.empty()) lines.emplace_back(line);
    return lines;
}

void Fuzz(Input input)
{
    char const sep1 = input.Take<char>(), sep2 = input.Take<char>();
    bool const keepEmpty = input.Take<char>() % 2 != 0;
    std::string const text = input.Rest();

    LCStringList list;
    list.DivideTextInLines(LCString(text), sep1, keepEmpty);
    RequireEqual("one separator", Lines(list.begin(), list.end()), Split(text, sep1, sep1, keepEmpty));
    list.DivideTextInLines(LCString(text), sep1, sep2);
    Lines sorted = Split(text, sep1, sep2, true);
    RequireEqual("two separators", Lines(list.begin(), list.end()), sorted);
    LCStringVector vector;
    vector.DivideTextInLines(LCString(text), sep1);
    RequireEqual<Lines>("vector", vector, Split(text, sep1, sep1, true));
    std::string const end(text.ends_with(sep1) ? 1 : 0, sep1);
    RequireEqual("join", sep1 == '\0' ? text : vector.Str(sep1).str() + end, text);

    std::ranges::stable_sort(sorted, {}, &LCString::UpperCase);
    list.SortCI();
    RequireEqual("sorted", Lines(list.begin(), list.end()), sorted);
    vector.SortCI();
    RequireEqual("sorted vector", std::ranges::is_sorted(vector, LCString::LCCompareCI()), true);
    RequireEqual("elements", std::ranges::is_permutation(vector, Split(text, sep1, sep1, true)), true);
}

// Search, replace and wildcards, against the slowest way. Three lines: a text, what to look for, what to put
// in.
#include "Fuzz.h"

static std::string Fold(std::string text, bool ignoreCase, bool slashes)
{
    for (char & c : text) {
        if (ignoreCase && c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
        if (slashes && c == '/') c = '\\';
    }
    return text;
}

static std::string Replace(std::string text, std::string const & from, std::string const & to, bool ci)
{
    std::string folded = Fold(text, ci, false), sought = Fold(from, ci, false);
    for (std::size_t i = 0; !from.empty() && (i = folded.find(sought, i)) != std::string::npos; i += to.size()) {
        text.replace(i, from.size(), to);
        folded.replace(i, from.size(), to);
    }
    return text;
}

/// By table: whether the first `s` bytes match what was read of the pattern.
static bool Matches(std::string const & subject, std::string const & pattern)
{
    std::vector<bool> row(subject.size() + 1);
    row[0] = true;
    for (char const c : pattern) {
        if (c == '*') std::fill(std::ranges::find(row, true), row.end(), true);
        for (std::size_t s = subject.size(); c != '*' && s > 0; --s)
            row[s] = row[s - 1] && (c == '?' || c == subject[s - 1]);
        row[0] = row[0] && c == '*';
    }
    return row.back();
}

void Fuzz(Input input)
{
    LCUInt64 const pos = input.Take<unsigned char>();
    std::string const text = input.TakeLine(), sought = input.TakeLine(), to = input.Rest();
    LCString s(text), pattern(sought), with(to);

    std::size_t const place = Fold(text, true, false).find(Fold(sought, true, false), pos);
    RequireEqual("FindCI", s.FindCI(pattern, pos), place == text.size() ? LCString::npos : place);
    for (bool const ci : {false, true}) {
        bool const expected = Matches(Fold(text.c_str(), ci, true), Fold(sought.c_str(), ci, true));
        RequireEqual("wildcards", ci ? s.CompareWildCardsCI(pattern) : s.CompareWildCards(pattern), int{expected});
        std::string const replaced = Replace(text, sought, to, ci);
        RequireEqual("Replace", (ci ? s.ReplaceCI(pattern, with) : s.Replace(pattern, with)).str(), replaced);
        LCString edited(text);
        ci ? edited.ReplaceInStringCI(pattern, with) : edited.ReplaceInString(pattern, with);
        RequireEqual("ReplaceInString", edited.str(), replaced);
    }
}

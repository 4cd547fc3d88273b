// Comparison and search without case, replacement, wildcards.

#include <algorithm>
#include <cstring>
#include <fnmatch.h>
#include <strings.h>

#include "Bench.h"
#include "foundation/LCString.h"

#ifdef PEER_ABSL
#include <absl/strings/match.h>
#include <absl/strings/str_replace.h>
#endif
#ifdef PEER_BOOST
#include <boost/algorithm/string.hpp>
#endif

namespace {

std::string Words(std::mt19937_64 & random, std::size_t size)
{
    std::string text;
    while (text.size() < size) {
        for (auto n = 3 + random() % 8; n > 0; --n)
            text += static_cast<char>((random() % 8 == 0 ? 'A' : 'a') + random() % 26);
        text += ' ';
    }
    text.resize(size);
    return text;
}

/// Every other pair is equal.
void Equality()
{
    using Pair = std::pair<LCString, LCString>;
    static std::vector<Pair> pairs;
    std::vector<bool> expected;
    auto random = bench::Random();
    for (std::size_t i = 0; i < 10000; ++i) {
        LCString const text(Words(random, 4 + random() % 20));
        auto & [a, b] = pairs.emplace_back(text, text.UpperCase());
        expected.push_back(i % 2 == 0);
        if (!expected.back()) b.SetAt(b.GetLength() - 1, '#');
    }
    auto const row = [&](char const * implementation, auto equal) {
        bench::RegisterEach("W04.equal-ci", implementation, pairs, equal, expected);
    };
    row("ours", [](Pair const & pair) { return pair.first.EqCI(pair.second); });
    row("strcasecmp", [](Pair const & pair) {
        return pair.first.size() == pair.second.size() &&
               strcasecmp(pair.first.c_str(), pair.second.c_str()) == 0;
    });
#ifdef PEER_ABSL
    row("absl",
        [](Pair const & pair) { return absl::EqualsIgnoreCase(pair.first.str(), pair.second.str()); });
#endif
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// A needle that stands at the very end of 1 MiB.
void Search(std::string const & workload, std::string text, std::string needle)
{
    static std::vector<std::pair<LCString, LCString>> inputs;
    inputs.reserve(8);
    auto const & [haystack, wanted] = inputs.emplace_back(text + needle, LCString(needle).UpperCase());
    auto const row = [&](char const * implementation, auto find) {
        bench::RegisterMade(workload, implementation, 1, find, text.size());
    };
    row("ours", [&] { return haystack.FindCI(wanted); });
    row("strcasestr", [&] {
        return static_cast<std::size_t>(strcasestr(haystack.c_str(), wanted.c_str()) - haystack.c_str());
    });
    row("std::search", [&] {
        auto const at = std::search(haystack.str().begin(), haystack.str().end(), wanted.str().begin(),
                                    wanted.str().end(), [](char a, char b) { return Lower(a) == Lower(b); });
        return static_cast<std::size_t>(at - haystack.str().begin());
    });
}

/// Not made for one `from`, as ours is not.
[[gnu::noipa]] std::string ReplacedByAppending(std::string const & text, std::string_view from,
                                               std::string_view to)
{
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, copied)) {
        result.append(text, copied, at - copied).append(to);
        copied = at + from.size();
    }
    return result.append(text, copied);
}

/// A match each 40 bytes, replaced by something longer.
void Replacement(std::size_t megabytes)
{
    static std::vector<LCString> texts;
    texts.reserve(8);
    auto random = bench::Random();
    std::string text = Words(random, megabytes << 20);
    std::size_t matches = 0;
    for (std::size_t i = 0; i + 40 < text.size(); i += 40, ++matches) text.replace(i, 4, "%id%");
    LCString const & input = texts.emplace_back(text);
    std::string const workload = "W05.replace-all-" + std::to_string(megabytes) + "MB";
    std::string const expected = ReplacedByAppending(text, "%id%", "part-7");
    auto const row = [&](char const * implementation, auto replace) {
        bench::RegisterMade(workload, implementation, matches, replace, expected);
    };
    row("ours", [&] { return input.Replace("%id%", "part-7"); });
    row("find+append", [&] { return ReplacedByAppending(input.str(), "%id%", "part-7"); });
#ifdef PEER_ABSL
    row("absl", [&] { return absl::StrReplaceAll(input.str(), {{"%id%", "part-7"}}); });
#endif
#ifdef PEER_BOOST
    row("boost", [&] { return boost::algorithm::replace_all_copy(input.str(), "%id%", "part-7"); });
#endif
}

void Wildcards(std::string const & workload, std::vector<std::string> const & subjects,
               std::string const & pattern)
{
    static std::vector<std::pair<std::vector<LCString>, LCString>> inputs;
    inputs.reserve(16);
    auto & [texts, wanted] =
        inputs.emplace_back(std::vector<LCString>(subjects.begin(), subjects.end()), pattern);
    for (LCString & text : texts) {
        bench::Require((text.CompareWildCards(wanted) == 1) ==
                           (fnmatch(wanted.c_str(), text.c_str(), FNM_NOESCAPE) == 0),
                       workload.c_str());
    }
    bench::Register(workload, "ours", texts.size(), [&] {
        for (LCString & text : texts) benchmark::DoNotOptimize(text.CompareWildCards(wanted));
    });
    bench::Register(workload, "fnmatch", texts.size(), [&] {
        for (LCString & text : texts)
            benchmark::DoNotOptimize(fnmatch(wanted.c_str(), text.c_str(), FNM_NOESCAPE));
    });
}

}  // namespace

int main(int argc, char ** argv)
{
    auto random = bench::Random();
    Equality();
    Search("W04.search-ci-1MiB", Words(random, 1 << 20), "bracket#17");
    Search("W04.search-ci-1MiB-worst", std::string(1 << 20, 'a'),
           std::string(16, 'a') + "b" + std::string(16, 'a'));
    for (std::size_t const megabytes : {1u, 2u, 4u, 8u, 10u}) Replacement(megabytes);
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i)
        names.push_back(Words(random, 8) + "-" + std::to_string(i) + (i % 2 != 0 ? ".xml" : ".dxf"));
    Wildcards("W06.wildcard", names, "*-?*5*.xml");
    for (std::size_t const size : {100u, 200u, 400u}) {
        Wildcards("W06.wildcard-worst-" + std::to_string(size), {std::string(size, 'a')}, "*a*a*a*b");
    }
    Wildcards("W06.wildcard-worst-200-8-stars", {std::string(200, 'a')}, "*a*a*a*a*a*a*a*b");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

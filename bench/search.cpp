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

void Equality()
{
    constexpr std::size_t pairs = 10000;
    static std::vector<LCString> as, bs;
    auto random = bench::Random();
    for (std::size_t i = 0; i < pairs; ++i) {
        as.emplace_back(Words(random, 4 + random() % 20));
        bs.push_back(as.back().UpperCase());
        if (i % 2 != 0) bs.back().SetAt(bs.back().GetLength() - 1, '#');
    }
    bench::Register("W04.equal-ci", "ours", pairs, [] {
        for (std::size_t i = 0; i < pairs; ++i) benchmark::DoNotOptimize(as[i].EqCI(bs[i]));
    });
    bench::Register("W04.equal-ci", "strcasecmp", pairs, [] {
        for (std::size_t i = 0; i < pairs; ++i) {
            benchmark::DoNotOptimize(as[i].size() == bs[i].size() &&
                                     strcasecmp(as[i].c_str(), bs[i].c_str()) == 0);
        }
    });
#ifdef PEER_ABSL
    bench::Register("W04.equal-ci", "absl", pairs, [] {
        for (std::size_t i = 0; i < pairs; ++i)
            benchmark::DoNotOptimize(absl::EqualsIgnoreCase(as[i].str(), bs[i].str()));
    });
#endif
}

/// A needle that stands at the very end of 1 MiB.
void Search(std::string const & workload, std::string text, std::string needle)
{
    static std::vector<std::pair<LCString, LCString>> inputs;
    inputs.reserve(8);
    auto const & [haystack, wanted] = inputs.emplace_back(text + needle, LCString(needle).UpperCase());
    bench::Require(haystack.FindCI(wanted) == text.size(), workload.c_str());
    bench::Require(strcasestr(haystack.c_str(), wanted.c_str()) == haystack.c_str() + text.size(),
                   workload.c_str());
    bench::Register(workload, "ours", 1, [&] { benchmark::DoNotOptimize(haystack.FindCI(wanted)); });
    bench::Register(workload, "strcasestr", 1,
                    [&] { benchmark::DoNotOptimize(strcasestr(haystack.c_str(), wanted.c_str())); });
    bench::Register(workload, "std::search", 1, [&] {
        benchmark::DoNotOptimize(std::search(haystack.str().begin(), haystack.str().end(),
                                             wanted.str().begin(), wanted.str().end(),
                                             [](char a, char b) { return (a | 32) == (b | 32); }));
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
    bench::Require(input.Replace("%id%", "part-7").str() == ReplacedByAppending(text, "%id%", "part-7"),
                   workload.c_str());
    bench::Register(workload, "ours", matches,
                    [&] { benchmark::DoNotOptimize(input.Replace("%id%", "part-7")); });
    bench::Register(workload, "find+append", matches,
                    [&] { benchmark::DoNotOptimize(ReplacedByAppending(input.str(), "%id%", "part-7")); });
#ifdef PEER_ABSL
    bench::Register(workload, "absl", matches, [&] {
        benchmark::DoNotOptimize(absl::StrReplaceAll(input.str(), {{"%id%", "part-7"}}));
    });
#endif
#ifdef PEER_BOOST
    bench::Register(workload, "boost", matches, [&] {
        benchmark::DoNotOptimize(boost::algorithm::replace_all_copy(input.str(), "%id%", "part-7"));
    });
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

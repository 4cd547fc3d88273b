// Text and name collections beside plain code over standard containers: splitting and joining, line files,
// sorting and looking up without case.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <list>
#include <set>
#include <strings.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Bench.h"
#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "identity/LCKeyContainers.h"

namespace {

using Texts = std::vector<std::string>;
using WideTexts = std::vector<bench::WideText>;
static_assert(sizeof(bench::WideText) == sizeof(LCString));
char const wide[] = "the peer over texts of 40 bytes";

std::size_t CountLines(std::string const & text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

template <typename Collection> Collection SplitByMemchr(std::string_view text)
{
    Collection lines;
    char const * at = text.data();
    char const * const end = at + text.size();
    while (at != end) {
        auto const * stop =
            static_cast<char const *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (stop == nullptr) stop = end;
        lines.emplace_back(at, stop);
        at = stop == end ? end : stop + 1;
    }
    return lines;
}

template <typename Lines> std::string JoinBySizes(Lines const & lines, char separator)
{
    std::size_t size = lines.size();
    for (auto const & line : lines) size += bench::TextOf(line).size();
    std::string text;
    text.reserve(size);
    for (auto const & line : lines) (text += bench::TextOf(line)) += separator;
    text.pop_back();
    return text;
}

template <typename Collection> Collection LoadMapped(char const * name)
{
    int const file = ::open(name, O_RDONLY);
    struct stat status {};
    ::fstat(file, &status);
    auto const size = static_cast<std::size_t>(status.st_size);
    void * const map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
    Collection lines = SplitByMemchr<Collection>({static_cast<char const *>(map), size});
    ::munmap(map, size);
    ::close(file);
    return lines;
}

template <typename Lines> void SaveBuffered(Lines const & lines, char const * name)
{
    constexpr std::size_t block = 256 * 1024;
    int const file = ::open(name, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    std::string buffer;
    buffer.reserve(block + 4096);
    auto const flush = [&] {
        bench::Require(::write(file, buffer.data(), buffer.size()) == static_cast<ssize_t>(buffer.size()),
                       "write");
        buffer.clear();
    };
    for (auto const & line : lines) {
        (buffer += bench::TextOf(line)) += '\n';
        if (buffer.size() >= block) flush();
    }
    flush();
    ::close(file);
}

std::string Contents(char const * name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
std::string Upper(std::string text)
{
    for (char & c : text) c = Upper(c);
    return text;
}
bool LessUpper(std::string const & a, std::string const & b)
{
    return std::ranges::lexicographical_compare(a, b, [](char x, char y) {
        return static_cast<unsigned char>(Upper(x)) < static_cast<unsigned char>(Upper(y));
    });
}

void SplitAndJoin()
{
    static std::string const text = bench::Lines(10 << 20);
    static LCString const ours{text};
    std::size_t const count = CountLines(text);
    static LCStringVector vector;
    vector.DivideTextInLines(ours, '\n');
    static Texts const lines = SplitByMemchr<Texts>(text);
    auto const split = [&](char const * workload, char const * implementation, auto make) {
        bench::RegisterMade(workload, implementation, count, make, lines);
    };
    split("W07.split-10MB-vector", "ours", [] {
        LCStringVector made;
        made.DivideTextInLines(ours, '\n');
        return made;
    });
    split("W07.split-10MB-vector", "memchr-loop", [] { return SplitByMemchr<Texts>(text); });
    split("W07.split-10MB-list", "ours", [] {
        LCStringList made;
        made.DivideTextInLines(ours, '\n', true);
        return made;
    });
    split("W07.split-10MB-list", "memchr-loop", [] { return SplitByMemchr<std::list<std::string>>(text); });
    std::string const joined = text.substr(0, text.size() - 1);
    bench::RegisterMade(
        "W07.join-10MB", "ours", count, [] { return vector.Str('\n'); }, joined);
    bench::RegisterMade(
        "W07.join-10MB", "sizes-first", count, [] { return JoinBySizes(lines, '\n'); }, joined);

    static auto const wides = SplitByMemchr<WideTexts>(text);
    bench::RegisterBound("W07.split-10MB-vector", wide, count,
                         [] { benchmark::DoNotOptimize(SplitByMemchr<WideTexts>(text).data()); });
    bench::RegisterBound("W07.split-10MB-list", wide, count, [] {
        benchmark::DoNotOptimize(SplitByMemchr<std::list<bench::WideText>>(text).front());
    });
    bench::RegisterBound("W07.join-10MB", wide, count,
                         [] { benchmark::DoNotOptimize(JoinBySizes(wides, '\n').data()); });
}

void LineFiles()
{
    static bench::TemporaryFile const file;
    static char const * const name = file.Name();
    std::string const text = bench::Lines(100 << 20);
    std::size_t const count = CountLines(text);
    bench::Require(LCString(text).SaveToFile(name), "the file is written");
    static LCStringVector vector;
    bench::Require(vector.LoadFromFile(name) && vector.size() == count, "the file is loaded");
    static Texts const lines = SplitByMemchr<Texts>(text);

    auto const load = [&](char const * workload, char const * implementation, auto make) {
        bench::RegisterMade(workload, implementation, count, make, lines);
    };
    load("W08.load-100MB-vector", "ours", [] {
        LCStringVector loaded;
        loaded.LoadFromFile(name);
        return loaded;
    });
    load("W08.load-100MB-vector", "mmap+memchr", [] { return LoadMapped<Texts>(name); });
    load("W08.load-100MB-list", "ours", [] {
        LCStringList loaded;
        loaded.LoadFromFile(name);
        return loaded;
    });
    load("W08.load-100MB-list", "mmap+memchr", [] { return LoadMapped<std::list<std::string>>(name); });
    auto const save = [&](std::string const & implementation, auto pass) {
        std::string const workload = "W08.save-100MB-vector";
        pass();
        bench::Require(Contents(name) == text, (workload + "/" + implementation).c_str());
        bench::Register(workload, implementation, count, pass);
    };
    save("ours", [] { vector.SaveToFile(name); });
    save("buffer+write", [] { SaveBuffered(lines, name); });

    static auto const wides = LoadMapped<WideTexts>(name);
    bench::RegisterBound("W08.load-100MB-vector", wide, count,
                         [] { benchmark::DoNotOptimize(LoadMapped<WideTexts>(name).data()); });
    bench::RegisterBound("W08.load-100MB-list", wide, count, [] {
        benchmark::DoNotOptimize(LoadMapped<std::list<bench::WideText>>(name).front());
    });
    bench::RegisterBound("W08.save-100MB-vector", wide, count, [] { SaveBuffered(wides, name); });
}

/// Sorts a fresh copy of the names, which is made and released outside the time. `same` compares what is
/// sorted with what is expected.
template <typename Collection>
void Sort(std::string const & workload, std::string const & implementation, Texts const & expected,
          bool (*same)(std::string const &, std::string const &), void (*sort)(Collection &))
{
    auto const make = [] {
        Collection names;
        for (std::string const & name : bench::Names(1'000'000)) names.emplace_back(name);
        return names;
    };
    Collection checked = make();
    sort(checked);
    bench::Require(std::ranges::equal(
                       checked, expected,
                       [same](auto const & a, std::string const & b) { return same(bench::TextOf(a), b); }),
                   (workload + "/" + implementation).c_str());
    bench::RegisterPrepared(workload, implementation, expected.size(), [make, sort] {
        return [names = make(), sort](benchmark::State & state) {
            state.PauseTiming();
            {
                Collection sorted = names;
                state.ResumeTiming();
                sort(sorted);
                state.PauseTiming();
            }
            state.ResumeTiming();
        };
    });
}

void Sorting()
{
    Texts expected = bench::Names(1'000'000);
    std::ranges::stable_sort(expected, LessUpper);
    auto const identical = [](std::string const & a, std::string const & b) { return a == b; };
    // An order that is not stable leaves open which of two that differ in case comes first.
    auto const sameUpper = [](std::string const & a, std::string const & b) { return Upper(a) == Upper(b); };
    std::string const stable = "W09.stable-sort-ci-1e6";
    Sort<LCStringList>(stable, "ours", expected, identical, [](LCStringList & list) { list.SortCI(); });
    Sort<std::list<std::string>>(
        stable, "upper-case-keys", expected, identical, [](std::list<std::string> & list) {
            std::vector<std::pair<std::string, std::list<std::string>::iterator>> keys;
            keys.reserve(list.size());
            for (auto i = list.begin(); i != list.end(); ++i) keys.emplace_back(Upper(*i), i);
            std::ranges::stable_sort(keys, {},
                                     [](auto const & key) -> std::string const & { return key.first; });
            for (auto const & key : keys) list.splice(list.end(), list, key.second);
        });
    std::string const vector = "W09.sort-ci-1e6-vector";
    Sort<LCStringVector>(vector, "ours", expected, sameUpper, [](LCStringVector & texts) { texts.SortCI(); });
    Sort<Texts>(vector, "std::sort", expected, sameUpper,
                [](Texts & texts) { std::ranges::sort(texts, LessUpper); });
    Sort<Texts>(vector, "upper-case-keys", expected, sameUpper, [](Texts & texts) {
        std::vector<std::pair<std::string, std::size_t>> keys;
        keys.reserve(texts.size());
        for (std::string const & text : texts) keys.emplace_back(Upper(text), keys.size());
        std::ranges::sort(keys);
        Texts sorted;
        sorted.reserve(texts.size());
        for (auto const & key : keys) sorted.push_back(std::move(texts[key.second]));
        texts = std::move(sorted);
    });
}

/// Looks up texts that are there in another case, spread over the collection.
void LookUp()
{
    constexpr std::size_t count = 100000;
    constexpr std::size_t look = 16;
    static Texts const names = bench::Names(count);
    static LCStringVector vector;
    static LCKeyIDRevList keys;
    static std::list<std::string> list;
    static LCStringSet set;
    static std::set<std::string> const plain(names.begin(), names.end());
    // One after the other, so that the texts of each lie together.
    for (std::string const & entry : names) vector.push_back(entry);
    for (std::string const & entry : names) keys.emplace_back(LCString(entry), 1, 2);
    for (std::string const & entry : names) list.push_back(entry);
    for (std::string const & entry : names) set.insert(entry);
    struct KeyText : bench::WideText {
        using WideText::WideText;
        std::int64_t revisions[2] = {1, 2};
    };
    static_assert(sizeof(KeyText) == sizeof(LCKeyIDRev));
    static WideTexts const wides(names.begin(), names.end());
    static std::list<KeyText> const wideKeys(names.begin(), names.end());
    static std::set<bench::WideText> const wideSet(names.begin(), names.end());
    static Texts sought;
    std::vector<std::ptrdiff_t> inOrder, inSet;
    for (std::size_t i = 0; i < look; ++i) {
        std::size_t const at = (2 * i + 1) * count / (2 * look);
        sought.push_back(Upper(names[at]));
        inOrder.push_back(static_cast<std::ptrdiff_t>(at));
        inSet.push_back(std::distance(plain.begin(), plain.find(names[at])));
    }
    static std::vector<LCString> const ours(sought.begin(), sought.end());

    // `expected`: where in the collection the entries stand.
    auto const row = [](std::string const & workload, char const * implementation, auto & collection,
                        auto const & texts, std::vector<std::ptrdiff_t> const & expected, auto find) {
        for (std::size_t i = 0; i < look; ++i)
            bench::Require(std::ranges::distance(collection.begin(), find(collection, texts[i])) ==
                               expected[i],
                           (workload + "/" + implementation).c_str());
        bench::Register(workload, implementation, look, [&collection, &texts, find] {
            for (auto const & text : texts) benchmark::DoNotOptimize(find(collection, text));
        });
    };
    auto const findCI = [](auto & collection, auto const & text) { return collection.FindCI(text); };
    static constexpr auto scan = [](auto const & texts, std::string const & text) {
        return std::ranges::find_if(texts, [&](auto const & entry) {
            std::string const & other = bench::TextOf(entry);
            return other.size() == text.size() && ::strncasecmp(other.data(), text.data(), text.size()) == 0;
        });
    };
    static constexpr auto scanAll = [](auto const & texts) {
        for (std::string const & text : sought) benchmark::DoNotOptimize(scan(texts, text));
    };
    std::string const inVector = "W20.lookup-ci-1e5-vector-scan";
    row(inVector, "ours", vector, ours, inOrder, findCI);
    row(inVector, "strncasecmp", names, sought, inOrder, scan);
    std::string const inKeys = "W20.lookup-ci-1e5-key-list-scan";
    row(inKeys, "ours", keys, ours, inOrder, [](LCKeyIDRevList & in, LCString const & text) {
        return in.FindCI({text, 1, 2});
    });
    row(inKeys, "strncasecmp", list, sought, inOrder, scan);
    std::string const inTextSet = "W20.lookup-ci-1e5-set-scan";
    row(inTextSet, "ours", set, ours, inSet, findCI);
    row(inTextSet, "strncasecmp", plain, sought, inSet, scan);

    bench::RegisterBound("W20.lookup-ci-1e5-vector-scan", wide, look, [] { scanAll(wides); });
    bench::RegisterBound("W20.lookup-ci-1e5-key-list-scan", "the peer over nodes as large", look,
                         [] { scanAll(wideKeys); });
    bench::RegisterBound("W20.lookup-ci-1e5-set-scan", "the peer over nodes as large", look,
                         [] { scanAll(wideSet); });
}

void Growth()
{
    for (std::size_t const size : {1u, 2u, 4u, 8u}) {
        std::string const megabytes = std::to_string(size) + "MB";
        LCString const text{bench::Lines(size << 20)};
        std::size_t const count = CountLines(text.str());
        auto const divided = [](LCString const & whole) {
            LCStringVector lines;
            lines.DivideTextInLines(whole, '\n');
            return lines;
        };
        bench::Register("growth.split", megabytes, count,
                        [text, divided] { benchmark::DoNotOptimize(divided(text).data()); });
        bench::Register("growth.join", megabytes, count,
                        [lines = divided(text)] { benchmark::DoNotOptimize(lines.Str('\n')); });
    }
    for (std::size_t const count : {1'000u, 10'000u, 100'000u}) {
        LCStringVector names;
        for (std::string const & name : bench::Names(count)) names.emplace_back(name);
        bench::Register("growth.sort-ci", std::to_string(count), count, [names] {
            LCStringVector sorted = names;
            sorted.SortCI();
            benchmark::DoNotOptimize(sorted.data());
        });
        LCString const sought = names.back().UpperCase();
        bench::Register("growth.lookup-ci-scan", std::to_string(count), count,
                        [names, sought]() mutable { benchmark::DoNotOptimize(names.FindCI(sought)); });
    }
}

}  // namespace

int main(int argc, char ** argv)
{
    SplitAndJoin();
    LineFiles();
    LookUp();  // before the heap is full of holes in the order of sorted texts
    Sorting();
    Growth();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

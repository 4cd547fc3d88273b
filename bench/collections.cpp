// Text and name collections beside plain code over standard containers: splitting and joining, line files,
// sorting and looking up without case.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
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
    bench::Require(vector.size() == lines.size() && vector.Str('\n').str() == JoinBySizes(lines, '\n'),
                   "split");

    bench::Register("W07.split-10MB-vector", "ours", count, [] {
        LCStringVector split;
        split.DivideTextInLines(ours, '\n');
        benchmark::DoNotOptimize(split.data());
    });
    bench::Register("W07.split-10MB-vector", "memchr-loop", count,
                    [] { benchmark::DoNotOptimize(SplitByMemchr<Texts>(text).data()); });
    bench::Register("W07.split-10MB-list", "ours", count, [] {
        LCStringList split;
        split.DivideTextInLines(ours, '\n', true);
        benchmark::DoNotOptimize(split.front());
    });
    bench::Register("W07.split-10MB-list", "memchr-loop", count,
                    [] { benchmark::DoNotOptimize(SplitByMemchr<std::list<std::string>>(text).front()); });
    bench::Register("W07.join-10MB", "ours", count,
                    [] { benchmark::DoNotOptimize(vector.Str('\n').c_str()); });
    bench::Register("W07.join-10MB", "sizes-first", count,
                    [] { benchmark::DoNotOptimize(JoinBySizes(lines, '\n').data()); });

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
    static Texts const lines = LoadMapped<Texts>(name);
    bench::Require(lines.size() == count, "the file is mapped");

    bench::Register("W08.load-100MB-vector", "ours", count, [] {
        LCStringVector loaded;
        loaded.LoadFromFile(name);
        benchmark::DoNotOptimize(loaded.data());
    });
    bench::Register("W08.load-100MB-vector", "mmap+memchr", count,
                    [] { benchmark::DoNotOptimize(LoadMapped<Texts>(name).data()); });
    bench::Register("W08.load-100MB-list", "ours", count, [] {
        LCStringList loaded;
        loaded.LoadFromFile(name);
        benchmark::DoNotOptimize(loaded.front());
    });
    bench::Register("W08.load-100MB-list", "mmap+memchr", count,
                    [] { benchmark::DoNotOptimize(LoadMapped<std::list<std::string>>(name).front()); });
    bench::Register("W08.save-100MB-vector", "ours", count, [] { vector.SaveToFile(name); });
    bench::Register("W08.save-100MB-vector", "buffer+write", count, [] { SaveBuffered(lines, name); });

    static auto const wides = LoadMapped<WideTexts>(name);
    bench::RegisterBound("W08.load-100MB-vector", wide, count,
                         [] { benchmark::DoNotOptimize(LoadMapped<WideTexts>(name).data()); });
    bench::RegisterBound("W08.load-100MB-list", wide, count, [] {
        benchmark::DoNotOptimize(LoadMapped<std::list<bench::WideText>>(name).front());
    });
    bench::RegisterBound("W08.save-100MB-vector", wide, count, [] { SaveBuffered(wides, name); });
}

/// Sorts a fresh copy of the names, which is made and released outside the time.
template <typename Collection>
void Sort(std::string const & workload, std::string const & implementation, void (*sort)(Collection &))
{
    bench::RegisterPrepared(workload, implementation, 1'000'000, [sort] {
        Collection names;
        for (std::string const & name : bench::Names(1'000'000)) names.emplace_back(name);
        return [names = std::move(names), sort](benchmark::State & state) {
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
    std::string const stable = "W09.stable-sort-ci-1e6";
    Sort<LCStringList>(stable, "ours", [](LCStringList & list) { list.SortCI(); });
    Sort<std::list<std::string>>(stable, "upper-case-keys", [](std::list<std::string> & list) {
        std::vector<std::pair<std::string, std::list<std::string>::iterator>> keys;
        keys.reserve(list.size());
        for (auto i = list.begin(); i != list.end(); ++i) keys.emplace_back(Upper(*i), i);
        std::ranges::stable_sort(keys, {}, [](auto const & key) -> std::string const & { return key.first; });
        for (auto const & key : keys) list.splice(list.end(), list, key.second);
    });
    std::string const vector = "W09.sort-ci-1e6-vector";
    Sort<LCStringVector>(vector, "ours", [](LCStringVector & texts) { texts.SortCI(); });
    Sort<Texts>(vector, "std::sort", [](Texts & texts) { std::ranges::sort(texts, LessUpper); });
    Sort<Texts>(vector, "upper-case-keys", [](Texts & texts) {
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
    for (std::size_t i = 0; i < look; ++i) sought.push_back(Upper(names[(2 * i + 1) * count / (2 * look)]));
    static std::vector<LCString> const ours(sought.begin(), sought.end());

    static auto const scan = [](auto const & texts) {
        for (std::string const & text : sought) {
            benchmark::DoNotOptimize(std::ranges::find_if(texts, [&](auto const & entry) {
                std::string const & other = bench::TextOf(entry);
                return other.size() == text.size() &&
                       ::strncasecmp(other.data(), text.data(), text.size()) == 0;
            }));
        }
    };
    bench::Register("W20.lookup-ci-1e5-vector-scan", "ours", look, [] {
        for (LCString const & text : ours) benchmark::DoNotOptimize(vector.FindCI(text));
    });
    bench::Register("W20.lookup-ci-1e5-vector-scan", "strncasecmp", look, [] { scan(names); });
    bench::Register("W20.lookup-ci-1e5-key-list-scan", "ours", look, [] {
        for (LCString const & text : ours) benchmark::DoNotOptimize(keys.FindCI({text, 1, 2}));
    });
    bench::Register("W20.lookup-ci-1e5-key-list-scan", "strncasecmp", look, [] { scan(list); });
    bench::Register("W20.lookup-ci-1e5-set-scan", "ours", look, [] {
        for (LCString const & text : ours) benchmark::DoNotOptimize(set.FindCI(text));
    });
    bench::Register("W20.lookup-ci-1e5-set-scan", "strncasecmp", look, [] { scan(plain); });

    bench::RegisterBound("W20.lookup-ci-1e5-vector-scan", wide, look, [] { scan(wides); });
    bench::RegisterBound("W20.lookup-ci-1e5-key-list-scan", "the peer over nodes as large", look,
                         [] { scan(wideKeys); });
    bench::RegisterBound("W20.lookup-ci-1e5-set-scan", "the peer over nodes as large", look,
                         [] { scan(wideSet); });
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
    Sorting();
    LookUp();
    Growth();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

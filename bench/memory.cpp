// Peak memory, each row in a process of its own: documents, line files, GUIDs.

#include <cstdint>
#include <fstream>
#include <list>
#include <sys/resource.h>
#include <sys/wait.h>

#include "Trees.h"
#include "collections/LCStringList.h"
#include "collections/LCStringVector.h"
#include "identity/LCGUID.h"

namespace {

std::int64_t PeakBytes()
{
    struct rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * std::int64_t{1024};
}

/// Registers how much `work` adds to the peak of a process that does nothing else, in bytes for each of its
/// items.
template <typename Work>
void Register(std::string const & workload, std::string const & implementation, std::size_t items, Work work)
{
    benchmark::RegisterBenchmark((workload + "/" + implementation).c_str(), [items,
                                                                             work](benchmark::State & state) {
        std::int64_t added = 0;
        for (auto _ : state) {
            int channel[2];
            bench::Require(::pipe(channel) == 0, "a pipe");
            ::pid_t const child = ::fork();
            if (child == 0) {
                std::int64_t const before = PeakBytes();
                work();
                std::int64_t const more = PeakBytes() - before;
                ::_exit(::write(channel[1], &more, sizeof more) == sizeof more ? 0 : 1);
            }
            bench::Require(::read(channel[0], &added, sizeof added) == sizeof added, "the memory of a child");
            ::waitpid(child, nullptr, 0);
            ::close(channel[0]);
            ::close(channel[1]);
        }
        state.counters["bytes"] = static_cast<double>(added) / static_cast<double>(items);
    })->Iterations(1);
}

/// A collection of `count` elements, each what `make` gives.
template <typename Collection, typename Make>
void Filled(std::string const & workload, std::string const & implementation, std::size_t count, Make make)
{
    Register(workload, implementation, count, [count, make] {
        Collection collection;
        for (std::size_t i = 0; i < count; ++i) collection.push_back(make());
        benchmark::DoNotOptimize(&collection);
    });
}

template <typename Collection> void ByGetline(char const * name)
{
    std::ifstream file(name);
    Collection lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    benchmark::DoNotOptimize(&lines);
}

template <typename Collection> void ByLoading(char const * name)
{
    Collection lines;
    bench::Require(lines.LoadFromFile(name), "loading");
}

}  // namespace

int main(int argc, char * arguments[])
{
    constexpr int million = 1'000'000;
    bench::ForEachTree([]<typename Tree> {
        Register("memory.tree-1e6", Tree::name, million, [] {
            Tree tree;
            tree.Build(million);
            benchmark::DoNotOptimize(&tree);
        });
    });

    static bench::TemporaryFile const file;
    std::size_t count = 0;
    {
        std::ofstream lines(file.Name());
        auto random = bench::Random();
        for (std::size_t size = 0; size < 100 << 20; ++count) {
            std::string const line = bench::Word(random, 5 + random() % 40);
            lines << line << '\n';
            size += line.size() + 1;
        }
    }
    Register("memory.load-100MB-vector", "ours", count, [] { ByLoading<LCStringVector>(file.Name()); });
    Register("memory.load-100MB-vector", "std::getline", count,
             [] { ByGetline<std::vector<std::string>>(file.Name()); });
    Register("memory.load-100MB-list", "ours", count, [] { ByLoading<LCStringList>(file.Name()); });
    Register("memory.load-100MB-list", "std::getline", count,
             [] { ByGetline<std::list<std::string>>(file.Name()); });

    Filled<LCGUIDList>("memory.guid-list-1e6", "ours", million, [] { return LCGUID(); });
    Filled<std::list<std::string>>("memory.guid-list-1e6", "std::list", million,
                                   [] { return std::string(36, 'A'); });
    benchmark::Initialize(&argc, arguments);
    benchmark::RunSpecifiedBenchmarks();
}

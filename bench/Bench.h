#pragma once

// What every family of workloads uses: registration by name, time per item, and the check that all give the
// same.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

/// Seeded alike in every run.
inline std::mt19937_64 Random() { return std::mt19937_64(20260101); }

/// Registers "workload/implementation": `pass` goes once over the whole input of `items` items. Reports the
/// counter "ns", nanoseconds per item.
template <typename Pass>
benchmark::internal::Benchmark * Register(std::string const & workload, std::string const & implementation,
                                          std::size_t items, Pass pass)
{
    return benchmark::RegisterBenchmark(
        (workload + "/" + implementation).c_str(), [items, pass](benchmark::State & state) {
            for (auto _ : state) {
                pass();
                benchmark::ClobberMemory();
            }
            state.counters["ns"] = benchmark::Counter(static_cast<double>(items) * 1e-9,
                                                      benchmark::Counter::kIsIterationInvariantRate |
                                                          benchmark::Counter::kInvert);
        });
}

/// Ends the program if an implementation does not give what the others give.
inline void Require(bool same, char const * what)
{
    if (same) return;
    std::fprintf(stderr, "bench: results differ: %s\n", what);
    std::exit(1);
}

}  // namespace bench

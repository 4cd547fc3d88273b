#pragma once

// What every family of workloads uses: registration by name, time per item, the check that all give the same,
// and seeded input.

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <ranges>
#include <stdlib.h>
#include <string>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

/// Seeded alike in every run.
inline std::mt19937_64 Random() { return std::mt19937_64(20260101); }

/// A text of letters in both cases, digits, blanks and minus signs.
inline std::string Word(std::mt19937_64 & random, std::size_t size)
{
    static constexpr char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -";
    std::string word(size, ' ');
    for (char & c : word) c = letters[random() % 64];
    return word;
}

/// Names of 5 to 44 bytes.
inline std::vector<std::string> Names(std::size_t count)
{
    std::mt19937_64 random = Random();
    std::vector<std::string> names(count);
    for (std::string & name : names) name = Word(random, 5 + random() % 40);
    return names;
}

/// Lines of 5 to 44 bytes.
inline std::string Lines(std::size_t size)
{
    std::mt19937_64 random = Random();
    std::string text;
    while (text.size() < size) text += Word(random, 5 + random() % 40) + '\n';
    return text;
}

/// Registers "workload/implementation": what `prepare` gives goes once over the whole input of `items` items.
/// Reports the counter "ns", nanoseconds per item. What is prepared lives no longer than its row is measured.
/// A pass that takes the state may pause the time.
///
/// The workloads "growth." are compared with themselves: the implementation is the size of the input.
template <typename Prepare>
benchmark::internal::Benchmark * RegisterPrepared(std::string const & workload,
                                                  std::string const & implementation, std::size_t items,
                                                  Prepare prepare)
{
    return benchmark::RegisterBenchmark(
        (workload + "/" + implementation).c_str(), [items, prepare](benchmark::State & state) {
            auto pass = prepare();
            for (auto _ : state) {
                if constexpr (std::invocable<decltype(pass), benchmark::State &>) {
                    pass(state);
                } else {
                    pass();
                }
                benchmark::ClobberMemory();
            }
            state.counters["ns"] = benchmark::Counter(static_cast<double>(items) * 1e-9,
                                                      benchmark::Counter::kIsIterationInvariantRate |
                                                          benchmark::Counter::kInvert);
        });
}

/// The same with nothing to prepare.
template <typename Pass>
benchmark::internal::Benchmark * Register(std::string const & workload, std::string const & implementation,
                                          std::size_t items, Pass pass)
{
    return RegisterPrepared(workload, implementation, items, [pass] { return pass; });
}

/// The name under which a bound of the workload is registered.
inline std::string Bound(std::string const & workload) { return "bound." + workload; }

/// Registers what a workload contains whatever its code, to be seen beside it: nothing to compare results
/// with.
template <typename Pass>
benchmark::internal::Benchmark * RegisterBound(std::string const & workload, std::string const & what,
                                               std::size_t items, Pass pass)
{
    return Register(Bound(workload), what, items, pass);
}

/// A text in 40 bytes, as ours, which point to their class: what of a row is the size of its texts.
struct WideText {
    explicit WideText(std::string const & of) : text(of) {}
    WideText(char const * begin, char const * end) : text(begin, end) {}
    auto operator<=>(WideText const & other) const { return text <=> other.text; }

    void const * kind = nullptr;
    std::string text;
};
inline std::string const & TextOf(std::string const & text) { return text; }
inline std::string const & TextOf(WideText const & text) { return text.text; }
template <typename Text>
requires requires(Text const & text) { text.str(); }
std::string const & TextOf(Text const & text) { return text.str(); }

/// Ends the program if an implementation does not give what the others give.
inline void Require(bool same, char const * what)
{
    if (same) return;
    std::fprintf(stderr, "bench: results differ: %s\n", what);
    std::exit(1);
}

/// Whether two results are the same: texts by their bytes, ranges one by one, numbers by their bits.
template <typename Result, typename Expected> bool Same(Result const & result, Expected const & expected)
{
    if constexpr (requires { TextOf(result) == TextOf(expected); }) {
        return TextOf(result) == TextOf(expected);
    } else if constexpr (std::ranges::range<Result>) {
        return std::ranges::equal(result, expected,
                                  [](auto const & a, auto const & b) { return Same(a, b); });
    } else if constexpr (std::same_as<Result, double>) {
        return std::bit_cast<std::uint64_t>(result) == std::bit_cast<std::uint64_t>(expected);
    } else {
        return result == expected;
    }
}

/// Registers what `make` gives, which must be what is expected.
template <typename Make, typename Expected>
void RegisterMade(std::string const & workload, std::string const & implementation, std::size_t items,
                  Make make, Expected const & expected)
{
    Require(Same(make(), expected), (workload + "/" + implementation).c_str());
    Register(workload, implementation, items, [make] { benchmark::DoNotOptimize(make()); });
}

/// Registers what `make` gives for each of the inputs, which outlive the run: it must be what is expected.
template <typename Inputs, typename Make, typename Expected>
void RegisterEach(std::string const & workload, std::string const & implementation, Inputs const & inputs,
                  Make make, Expected const & expected)
{
    Require(std::ranges::equal(
                inputs, expected, [](auto const & a, auto const & b) { return Same(a, b); }, make),
            (workload + "/" + implementation).c_str());
    Register(workload, implementation, inputs.size(), [&inputs, make] {
        for (auto const & input : inputs) benchmark::DoNotOptimize(make(input));
    });
}

/// The name of a file that goes with the object. Where the system has such a folder it lies in memory, so
/// that no disk plays a part.
class TemporaryFile {
public:
    TemporaryFile()
        : name_((::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + std::string("/bench-XXXXXX"))
    {
        int const file = ::mkstemp(name_.data());
        Require(file >= 0, "a temporary file");
        ::close(file);
    }
    TemporaryFile(TemporaryFile const &) = delete;
    TemporaryFile & operator=(TemporaryFile const &) = delete;
    ~TemporaryFile() { ::unlink(name_.c_str()); }

    char const * Name() const { return name_.c_str(); }

private:
    std::string name_;
};

}  // namespace bench

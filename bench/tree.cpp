// Documents: trees of named parameters, built, read by name, saved, loaded, and written again.

#include <algorithm>

#include "Trees.h"

namespace {

/// All trees of one size give the same when they are read, and after a save and a load.
template <typename Tree> void Check()
{
    constexpr int parameters = 1000;
    static double const expected = [] {
        bench::OurTree ours;
        ours.Build(parameters);
        return ours.Read();
    }();
    Tree tree, loaded;
    tree.Build(parameters);
    bench::Require(tree.Read() == expected, Tree::name);
    bench::Require(loaded.Load(tree.Save()) && loaded.Read() == expected, Tree::name);
}

template <typename Tree> std::shared_ptr<Tree> Built(int parameters)
{
    auto tree = std::make_shared<Tree>();
    tree->Build(parameters);
    return tree;
}

/// The four operations on a whole document; `row` turns the name of one into that of the workload.
template <typename Tree> void Whole(std::string const & implementation, int parameters, auto row)
{
    auto const count = static_cast<std::size_t>(parameters);
    bench::Register(row("build"), implementation, count, [parameters](benchmark::State & state) {
        auto tree = Built<Tree>(parameters);
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    });
    bench::RegisterPrepared(row("read-by-name"), implementation, count, [parameters] {
        return [tree = Built<Tree>(parameters)] { benchmark::DoNotOptimize(tree->Read()); };
    });
    bench::RegisterPrepared(row("save"), implementation, count, [parameters] {
        return [tree = Built<Tree>(parameters)] { benchmark::DoNotOptimize(tree->Save()); };
    });
    bench::RegisterPrepared(row("load"), implementation, count, [parameters] {
        return [text = Built<Tree>(parameters)->Save()](benchmark::State & state) {
            auto tree = std::make_unique<Tree>();
            tree->Load(text);
            state.PauseTiming();
            tree.reset();
            state.ResumeTiming();
        };
    });
}

/// A node of `count` children, whose names come in no order, a piece of them in each pass.
template <typename Tree> struct Children {
    explicit Children(std::size_t count) : piece(std::min<std::size_t>(count, 2000))
    {
        for (std::size_t i = 0; i < count; ++i)
            names.push_back(LCString("Value_") + LCString(static_cast<int>(i)));
        tree.BuildChildren(names);
        auto random = bench::Random();
        std::shuffle(names.begin(), names.end(), random);
        tree.WriteChild(names[0], "two");
        bench::Require(tree.LengthOfChild(names[0]) == 3 && tree.LengthOfChild(names[1]) == 1, Tree::name);
    }
    template <typename Do> void Piece(Do what)
    {
        for (std::size_t i = 0; i < piece; ++i, ++next) what(names[next % names.size()]);
    }

    Tree tree;
    std::vector<LCString> names;
    std::size_t piece;
    std::size_t next = 0;
};

template <typename Tree>
void WriteAgain(std::string const & workload, std::string const & implementation, std::size_t count)
{
    bench::RegisterPrepared(workload, implementation, std::min<std::size_t>(count, 2000), [count] {
        return [children = std::make_shared<Children<Tree>>(count), text = LCString("12.5")] {
            children->Piece([&](LCString const & name) { children->tree.WriteChild(name, text); });
        };
    });
}

template <typename Tree>
void ReadChildren(std::string const & workload, std::string const & implementation, std::size_t count)
{
    bench::RegisterPrepared(workload, implementation, std::min<std::size_t>(count, 2000), [count] {
        return [children = std::make_shared<Children<Tree>>(count)] {
            children->Piece(
                [&](LCString const & name) { benchmark::DoNotOptimize(children->tree.LengthOfChild(name)); });
        };
    });
}

}  // namespace

int main(int argc, char * arguments[])
{
    bench::ForEachTree([]<typename Tree> {
        Check<Tree>();
        Whole<Tree>(Tree::name, 1'000'000, [](std::string const & what) { return "W15." + what + "-1e6"; });
        for (std::size_t const count : {5'000u, 10'000u, 20'000u})
            WriteAgain<Tree>("W15.find-existing-" + std::to_string(count), Tree::name, count);
        for (std::size_t const count : {10u, 1'000u})
            ReadChildren<Tree>("W15.read-child-of-" + std::to_string(count), Tree::name, count);
    });
    for (int const parameters : {1'000, 10'000, 100'000})
        Whole<bench::OurTree>(std::to_string(parameters), parameters,
                              [](std::string const & what) { return "growth.tree-" + what; });
    for (std::size_t const count : {1'000u, 10'000u, 100'000u}) {
        WriteAgain<bench::OurTree>("growth.find-existing", std::to_string(count), count);
        ReadChildren<bench::OurTree>("growth.read-child", std::to_string(count), count);
#ifdef PEER_NLOHMANN
        ReadChildren<bench::PeerTree<bench::Nlohmann>>("growth.read-child-nlohmann", std::to_string(count),
                                                       count);
#endif
    }
    benchmark::Initialize(&argc, arguments);
    benchmark::RunSpecifiedBenchmarks();
}

// Names and shared reads: a dotted path looked up in a large tree, beside a
// lookup in std::unordered_map for scale; and a read of a chain in which
// every parameter reads the one below twice, which costs linear time only
// because a value read twice within one read is computed once.
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterRoot.h"

#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>

namespace {

constexpr int groups = 1000;
constexpr int members_per_group = 100;

vorParameterPtr real(double value) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_NONE, value));
}

/// 100 000 numerics: m0.p0 to m999.p99.
vorParameterPtr large_tree() {
    vorParameterPtr root(new vorParameterRoot("machining"));
    for (int m = 0; m < groups; ++m) {
        vorParameterPtr group =
            root->add(utString("m" + std::to_string(m)), vorParameterPtr(new vorParameterMap()));
        for (int p = 0; p < members_per_group; ++p)
            group->add(utString("p" + std::to_string(p)), real(p));
    }
    return root;
}

void BM_LookupPathInLargeTree(benchmark::State& state) {
    vorParameterPtr root = large_tree();
    for (auto _ : state)
        benchmark::DoNotOptimize(root["m123.p45"].get());
}
BENCHMARK(BM_LookupPathInLargeTree);

void BM_StdUnorderedMapLookup(benchmark::State& state) {
    std::unordered_map<std::string, double> table;
    for (int m = 0; m < groups; ++m)
        for (int p = 0; p < members_per_group; ++p)
            table["m" + std::to_string(m) + ".p" + std::to_string(p)] = p;
    const std::string key = "m123.p45";
    for (auto _ : state)
        benchmark::DoNotOptimize(table.find(key));
}
BENCHMARK(BM_StdUnorderedMapLookup);

void BM_ReadDoublingChain(benchmark::State& state) {
    const int depth = static_cast<int>(state.range(0));
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr bottom = root->add("p0", real(1));
    for (int i = 1; i <= depth; ++i) {
        const std::string below = "p" + std::to_string(i - 1);
        vorParameterPtr p = root->add(utString("p" + std::to_string(i)), real(0));
        p->set_string(utString(below + " + " + below));
    }
    vorParameterPtr top = root[utString("p" + std::to_string(depth))];
    double value = 1;
    for (auto _ : state) {
        bottom->set_double(value);
        value += 1;
        benchmark::DoNotOptimize(top->get_double());
    }
}
BENCHMARK(BM_ReadDoublingChain)->Arg(10)->Arg(20)->Arg(40);

} // namespace

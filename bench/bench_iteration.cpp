// A full walk of a 100 000-parameter tree with vorParameterIter, beside two
// yardsticks over the same nodes: a recursive walk of the members and a plain
// loop over a vector of handles. Rates are in nodes per second.
#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

vorParameterPtr number(double v) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, vorDimensions(), v));
}

/// 1000 maps, each of 90 numbers and an array of 8: 100 000 nodes below the
/// root.
const vorParameterPtr& tree() {
    static const vorParameterPtr root = [] {
        vorParameterPtr top(new vorParameterMap());
        for (int m = 0; m < 1000; ++m) {
            vorParameterPtr op = top->add(vorParameterKey("op" + std::to_string(m)),
                                          vorParameterPtr(new vorParameterMap()));
            for (int i = 0; i < 90; ++i)
                op->add(vorParameterKey("value" + std::to_string(i)), number(i));
            vorParameterPtr passes = op->add("passes", vorParameterPtr(new vorParameterArray()));
            for (int i = 0; i < 8; ++i)
                passes->add(vorParameterKey(), number(i));
        }
        return top;
    }();
    return root;
}

constexpr int kNodes = 100000;

void BM_IterateTree(benchmark::State& state) {
    const vorParameterPtr& root = tree();
    for (auto _ : state) {
        vorParameterIter it(root);
        int nodes = 0;
        while (++it)
            ++nodes;
        benchmark::DoNotOptimize(nodes);
    }
    state.SetItemsProcessed(state.iterations() * kNodes);
}
BENCHMARK(BM_IterateTree)->Unit(benchmark::kMillisecond);

// The same walk asking every node's key relative to the root.
void BM_IterateTreeWithKeys(benchmark::State& state) {
    const vorParameterPtr& root = tree();
    for (auto _ : state) {
        vorParameterIter it(root);
        std::size_t length = 0;
        while (++it)
            length += it.index().str().size();
        benchmark::DoNotOptimize(length);
    }
    state.SetItemsProcessed(state.iterations() * kNodes);
}
BENCHMARK(BM_IterateTreeWithKeys)->Unit(benchmark::kMillisecond);

int walk(const vorParameter& node) {
    int nodes = 0;
    if (const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(&node)) {
        for (const auto& [name, member] : map->members())
            nodes += 1 + walk(*member);
    } else if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(&node)) {
        for (const vorParameterPtr& element : array->elements())
            nodes += 1 + walk(*element);
    }
    return nodes;
}

// Yardstick: a recursive walk that copies no handle and checks nothing.
void BM_RecursiveWalk(benchmark::State& state) {
    const vorParameterPtr& root = tree();
    for (auto _ : state)
        benchmark::DoNotOptimize(walk(*root));
    state.SetItemsProcessed(state.iterations() * kNodes);
}
BENCHMARK(BM_RecursiveWalk)->Unit(benchmark::kMillisecond);

// Yardstick: the nodes in a vector, asked their type.
void BM_VectorWalk(benchmark::State& state) {
    std::vector<vorParameterPtr> nodes;
    vorParameterIter it(tree());
    while (++it)
        nodes.push_back(it());
    for (auto _ : state) {
        int maps = 0;
        for (const vorParameterPtr& node : nodes)
            maps += node->type() == TYPE_MAP;
        benchmark::DoNotOptimize(maps);
    }
    state.SetItemsProcessed(state.iterations() * kNodes);
}
BENCHMARK(BM_VectorWalk)->Unit(benchmark::kMillisecond);

} // namespace

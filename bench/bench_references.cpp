// Resolving a reference against looking the same path up directly, and the
// root's tables of active expressions. A reference evaluates its text at each
// use, so it costs an evaluation of the path; the direct lookup is the floor.
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterRef.h"
#include "vorparameter/parameter/vorParameterRoot.h"
#include "vorparameter/platform/coContainers.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

vorParameterPtr tool_tree() {
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));
    root->add("cut", vorParameterPtr(new vorParameterRef("tool.diameter")));
    return root;
}

void BM_PathLookupDirect(benchmark::State& state) {
    vorParameterPtr root = tool_tree();
    const vorParameterKey path("tool.diameter");
    for (auto _ : state)
        benchmark::DoNotOptimize((*root)[path]->get_double());
}
BENCHMARK(BM_PathLookupDirect);

void BM_PathThroughReference(benchmark::State& state) {
    vorParameterPtr root = tool_tree();
    vorParameterPtr cut = (*root)["cut"];
    for (auto _ : state)
        benchmark::DoNotOptimize(cut->get_double());
}
BENCHMARK(BM_PathThroughReference);

} // namespace

namespace {

// A tree of `n` parameters, every one with an active expression that reads
// two capitalised names.
vorParameterPtr conditional_tree(int n) {
    vorParameterPtr root(new vorParameterRoot("machining"));
    root->add("Depth", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 2)));
    vorParameterPtr group;
    for (int i = 0; i < n; ++i) {
        if (i % 100 == 0)
            group = root->add(utString("Group" + std::to_string(i / 100)),
                              vorParameterPtr(new vorParameterMap()));
        vorParameterPtr p =
            group->add(utString("P" + std::to_string(i)),
                       vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_NONE, i)));
        p->set_active("Depth > 1 & Group0.P" + utString(std::to_string(i % 100)) + " >= 0");
    }
    return root;
}

void BM_ActiveExpressionTables(benchmark::State& state) {
    vorParameterPtr root = conditional_tree(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        utStringutStringcoSetcoTable dependants;
        vorParameterRoot::build_par_dependency_table(*root, dependants);
        benchmark::DoNotOptimize(dependants.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ActiveExpressionTables)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

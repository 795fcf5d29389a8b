// Resolving a reference against looking the same path up directly, and the
// root's tables of active expressions. A reference evaluates its text at each
// use, so it costs an evaluation of the path; the direct lookup is the floor.
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterRef.h"
#include "vorparameter/parameter/vorParameterRoot.h"

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

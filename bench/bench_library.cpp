// Calls of the standard functions and of a user function through expressions,
// and the lookup of a function by name: what every expression with a call
// pays on top of its arithmetic.
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/library/vorParameterFunction.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/library/vorParameterLibRoot.h"

#include <benchmark/benchmark.h>

namespace {

vorParameterPtr make_root() {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    root->add("a", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 16)));
    root->add("hypot", vorParameterPtr(new vorParameterFunction("sqrt(argv[0]^2 + argv[1]^2)")));
    return root;
}

void evaluate_in_root(benchmark::State& state, const char* expression) {
    vorParameterPtr root = make_root();
    vorEvaluator evaluator(root.get());
    for (auto _ : state)
        benchmark::DoNotOptimize(evaluator.evaluate(expression));
}

// The call of a standard function found through the root.
void BM_CallSqrt(benchmark::State& state) {
    evaluate_in_root(state, "sqrt(a)");
}
BENCHMARK(BM_CallSqrt);

// Two arguments, and rounding through the text of the number.
void BM_CallRound(benchmark::State& state) {
    evaluate_in_root(state, "round(a / 3; 2)");
}
BENCHMARK(BM_CallRound);

// A user function: binds argv, evaluates its body (which calls sqrt).
void BM_CallUserFunction(benchmark::State& state) {
    evaluate_in_root(state, "hypot(3; 4)");
}
BENCHMARK(BM_CallUserFunction);

// Indexing the library by name: one probe of the table and a new function
// object carrying the description.
void BM_LookupFunction(benchmark::State& state) {
    vorParameterLib library;
    const vorParameterKey key("atan2");
    for (auto _ : state)
        benchmark::DoNotOptimize(library[key]);
}
BENCHMARK(BM_LookupFunction);

} // namespace

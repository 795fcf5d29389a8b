// Numbers: reading a literal must be a cache hit, and the operators run once
// per operator of every evaluated expression.
#include "vorparameter/expression/vorParameterNumeric.h"

#include <benchmark/benchmark.h>

namespace {

vorParameterPtr make_number(vorParameterSubType kind, double value) {
    return vorParameterPtr(new vorParameterNumeric(kind, DIM_LENGTH, value));
}

// A literal is parsed once; every further read answers from the cache.
void BM_NumericReadLiteral(benchmark::State& state) {
    vorParameterNumeric n(SUB_REAL, DIM_LENGTH, 12.5);
    for (auto _ : state)
        benchmark::DoNotOptimize(n.get_double());
}
BENCHMARK(BM_NumericReadLiteral);

// A write formats the number and classifies the text; the read parses it.
void BM_NumericSetThenRead(benchmark::State& state) {
    vorParameterNumeric n(SUB_REAL, DIM_LENGTH, 0.0);
    double value = 0.0;
    for (auto _ : state) {
        value += 0.25;
        n.set_double(value);
        benchmark::DoNotOptimize(n.get_double());
    }
}
BENCHMARK(BM_NumericSetThenRead);

void BM_NumericAdd(benchmark::State& state) {
    vorParameterPtr a = make_number(SUB_REAL, 12.5);
    vorParameterPtr b = make_number(SUB_REAL, 0.75);
    const utString op("+");
    for (auto _ : state)
        benchmark::DoNotOptimize(a->operate_binary(op, b));
}
BENCHMARK(BM_NumericAdd);

void BM_NumericMultiply(benchmark::State& state) {
    vorParameterPtr a = make_number(SUB_REAL, 12.5);
    vorParameterPtr b = make_number(SUB_NUMBER, 3.0);
    const utString op("*");
    for (auto _ : state)
        benchmark::DoNotOptimize(a->operate_binary(op, b));
}
BENCHMARK(BM_NumericMultiply);

// A unit suffix reads the host's length unit at each use.
void BM_NumericUnitSuffix(benchmark::State& state) {
    vorParameterPtr literal(new vorParameterNumeric(SUB_NUMBER, DIM_NONE, 2.0));
    const utString unit("in");
    for (auto _ : state)
        benchmark::DoNotOptimize(literal->operate_postfix(unit));
}
BENCHMARK(BM_NumericUnitSuffix);

} // namespace

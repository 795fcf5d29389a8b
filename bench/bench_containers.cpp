// Containers: building and reading a long list, concatenating arrays and
// finding vector elements by accessor name.
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/expression/vorParameterNumeric.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kListSize = 100000;

vorParameterPtr real(double v) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, vorDimensions(), v));
}

vorParameterPtr make_list(int size) {
    vorParameterPtr list(new vorParameterList(real(0)));
    for (int i = 0; i < size; ++i)
        list->add(vorParameterKey(), real(i));
    return list;
}

// Appending clones the element type and copies the given value: amortised
// constant time per element.
void BM_ListBuild(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(make_list(kListSize));
    state.SetItemsProcessed(state.iterations() * kListSize);
}
BENCHMARK(BM_ListBuild)->Unit(benchmark::kMillisecond);

// An index key is parsed and the element found in constant time.
void BM_ListIndex(benchmark::State& state) {
    vorParameterPtr list = make_list(kListSize);
    const vorParameterKey key("[54321]");
    for (auto _ : state)
        benchmark::DoNotOptimize((*list)[key]);
}
BENCHMARK(BM_ListIndex);

// Walking every element through the array's own sequence.
void BM_ListWalk(benchmark::State& state) {
    vorParameterPtr list = make_list(kListSize);
    const auto& array = static_cast<const vorParameterArray&>(*list);
    for (auto _ : state) {
        double sum = 0;
        for (const vorParameterPtr& element : array.elements())
            sum += element->get_double();
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kListSize);
}
BENCHMARK(BM_ListWalk)->Unit(benchmark::kMillisecond);

// "+" clones the elements of both operands into a new array.
void BM_ArrayConcatenate(benchmark::State& state) {
    const int size = static_cast<int>(state.range(0));
    vorParameterPtr a = make_list(size);
    vorParameterPtr b = make_list(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(a->operate_binary("+", b));
    state.SetItemsProcessed(state.iterations() * 2 * size);
}
BENCHMARK(BM_ArrayConcatenate)->Arg(16)->Arg(1024);

// An accessor name is matched against names lowered once, without
// allocating.
void BM_VectorAccessorLookup(benchmark::State& state) {
    auto* vector = new vorParameterVector(10, real(1));
    vector->set_access_type(VECTOR_ACCESS_ORDINAL);
    vorParameterPtr handle(vector);
    const vorParameterKey key("Ninth");
    for (auto _ : state)
        benchmark::DoNotOptimize((*handle)[key]);
}
BENCHMARK(BM_VectorAccessorLookup);

} // namespace

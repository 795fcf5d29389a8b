// Containers: building and reading a long list, concatenating arrays,
// finding vector elements by accessor name, and adding and removing map
// members by name beside std::unordered_map.
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

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
BENCHMARK(BM_ArrayConcatenate)->Arg(16)->Arg(1024)->Arg(1 << 19)->Unit(benchmark::kMicrosecond);

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

std::vector<vorParameterKey> member_keys(int count) {
    std::vector<vorParameterKey> keys;
    keys.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        keys.emplace_back(utString(("member" + std::to_string(i)).c_str()));
    return keys;
}

// Adds `range(0)` members to a map and removes them all by name, first the
// even ones and then the odd ones, so that removal meets holes: amortised
// constant time per member. The members are made outside the timing.
void BM_MapAddRemoveByName(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::vector<vorParameterKey> keys = member_keys(count);
    std::vector<vorParameterPtr> members;
    for (int i = 0; i < count; ++i)
        members.push_back(real(i));
    for (auto _ : state) {
        vorParameterPtr map(new vorParameterMap());
        for (int i = 0; i < count; ++i)
            map->add(keys[static_cast<std::size_t>(i)], members[static_cast<std::size_t>(i)]);
        for (int parity : {0, 1})
            for (int i = parity; i < count; i += 2)
                map->remove(keys[static_cast<std::size_t>(i)]);
        benchmark::DoNotOptimize(map->size());
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_MapAddRemoveByName)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The yardstick: the same work on a standard hash map from names to handles.
void BM_UnorderedMapAddRemoveByName(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> names;
    std::vector<vorParameterPtr> members;
    for (int i = 0; i < count; ++i) {
        names.push_back("member" + std::to_string(i));
        members.push_back(real(i));
    }
    for (auto _ : state) {
        std::unordered_map<std::string, vorParameterPtr> map;
        for (int i = 0; i < count; ++i)
            map.emplace(names[static_cast<std::size_t>(i)], members[static_cast<std::size_t>(i)]);
        for (int parity : {0, 1})
            for (int i = parity; i < count; i += 2)
                map.erase(names[static_cast<std::size_t>(i)]);
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_UnorderedMapAddRemoveByName)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

// The tree core's hottest operations: making keys, finding members by name
// and copying handles. Every expression evaluation does many of each.
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterKey.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

// A name key whose text was seen before is one cache lookup, no parse.
void BM_KeyCachedName(benchmark::State& state) {
    vorParameterKey warm("tool.diameter");
    for (auto _ : state) {
        vorParameterKey key("tool.diameter");
        benchmark::DoNotOptimize(key);
    }
}
BENCHMARK(BM_KeyCachedName);

// Paths that start with an index are never cached: each one is parsed.
void BM_KeyParseIndexPath(benchmark::State& state) {
    const utString text("[12].tool.diameter");
    for (auto _ : state) {
        vorParameterKey key(text);
        benchmark::DoNotOptimize(key);
    }
}
BENCHMARK(BM_KeyParseIndexPath);

// A map of `size` members, one of them "diameter".
vorParameterPtr make_map(int size) {
    vorParameterPtr map(new vorParameterMap());
    for (int i = 1; i < size; ++i)
        map->add(vorParameterKey(utString("member" + std::to_string(i))),
                 vorParameterPtr(new vorParameterString("value")));
    map->add("diameter", vorParameterPtr(new vorParameterString("6")));
    return map;
}

void BM_MapLookupExact(benchmark::State& state) {
    vorParameterPtr map = make_map(static_cast<int>(state.range(0)));
    const vorParameterKey key("diameter");
    for (auto _ : state)
        benchmark::DoNotOptimize((*map)[key]);
}
BENCHMARK(BM_MapLookupExact)->Arg(4)->Arg(64);

// The name differs in case from the member's, so the exact match misses and
// the case-insensitive search answers.
void BM_MapLookupOtherCase(benchmark::State& state) {
    vorParameterPtr map = make_map(static_cast<int>(state.range(0)));
    const vorParameterKey key("Diameter");
    for (auto _ : state)
        benchmark::DoNotOptimize((*map)[key]);
}
BENCHMARK(BM_MapLookupOtherCase)->Arg(4)->Arg(64);

// Copying and dropping a handle: an atomic increment and decrement.
void BM_HandleCopy(benchmark::State& state) {
    vorParameterPtr par(new vorParameterString("End mill 6mm"));
    for (auto _ : state) {
        vorParameterPtr copy(par);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_HandleCopy);

} // namespace

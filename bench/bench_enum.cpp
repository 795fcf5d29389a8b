// Looking enumeration states up by name and writing values by name, both
// through the synonym table. The state count is the argument: the cost per
// lookup should not grow with it.
#include "vorparameter/containers/vorParameterEnum.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

vorParameterEnum enumeration_of(int states) {
    std::string text;
    for (int i = 0; i < states; ++i)
        text += (i ? "|s" : "s") + std::to_string(i);
    return vorParameterEnum(utString(text), utString());
}

void BM_EnumFindIndexLastState(benchmark::State& state) {
    const int states = static_cast<int>(state.range(0));
    vorParameterEnum e = enumeration_of(states);
    const utString last("s" + std::to_string(states - 1));
    for (auto _ : state)
        benchmark::DoNotOptimize(e.find_index(last));
}
BENCHMARK(BM_EnumFindIndexLastState)->Arg(10)->Arg(1000)->Arg(100000);

void BM_EnumSetStringBySynonym(benchmark::State& state) {
    vorParameterEnum e("port_area_clear|port_plunge|port_spiral", "");
    for (auto _ : state) {
        e.set_string("tubespiral");
        benchmark::DoNotOptimize(e.get_int());
    }
}
BENCHMARK(BM_EnumSetStringBySynonym);

void BM_EnumSetStringByIndex(benchmark::State& state) {
    vorParameterEnum e = enumeration_of(100);
    for (auto _ : state) {
        e.set_string("42");
        benchmark::DoNotOptimize(e.get_int());
    }
}
BENCHMARK(BM_EnumSetStringByIndex);

} // namespace

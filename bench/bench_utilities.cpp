// mirror_parameters over a 100 000-parameter tree of points, directions and
// angles; the rate is in nodes per second and should not fall as the tree
// grows (the walk and every rule are linear).
#include "vorparameter/containers/vorParameterUtils.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

vorParameterPtr number(double v) {
    return vorParameterPtr(new vorParameterNumeric(SUB_ANGLE, vorDimensions(), v));
}

vorParameterPtr vector3(vorParameterMirrorMode mode) {
    auto* vector = new vorParameterVector(3, number(1));
    vector->set_mirror_mode(mode);
    return vorParameterPtr(vector);
}

/// `maps` maps, each of a point, a direction (4 nodes each) and 92 angles:
/// 100 nodes per map.
vorParameterPtr tree(int maps) {
    vorParameterPtr top(new vorParameterMap());
    for (int m = 0; m < maps; ++m) {
        vorParameterPtr op = top->add(vorParameterKey("op" + std::to_string(m)),
                                      vorParameterPtr(new vorParameterMap()));
        op->add("point", vector3(MIRROR_NEGATE));
        op->add("axis", vector3(MIRROR_DIRECTION));
        for (int i = 0; i < 92; ++i) {
            vorParameterPtr angle = op->add(vorParameterKey("a" + std::to_string(i)), number(i));
            angle->set_mirror_mode(MIRROR_SUPPLEMENT);
        }
    }
    return top;
}

void BM_MirrorParameters(benchmark::State& state) {
    const int maps = static_cast<int>(state.range(0));
    vorParameterPtr top = tree(maps);
    for (auto _ : state)
        vorParameterUtils::mirror_parameters(top, giPoint3(1, 2, 3), giVector3(1, 1, 0));
    state.SetItemsProcessed(state.iterations() * maps * 100);
}
BENCHMARK(BM_MirrorParameters)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace

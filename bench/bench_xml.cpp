// to_xml of a 100 000-parameter tree, beside a yardstick that writes the
// same names and values with std::ostringstream and nothing else (no
// escaping, no type words, no reference handling). Rates are in parameters
// per second.
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/persistence/vorParameterXml.h"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>
#include <string_view>

namespace {

/// 1000 maps, each of 80 numbers, 10 texts and a list of 8: 100 000
/// parameters below the root.
const vorParameterPtr& tree() {
    static const vorParameterPtr root = [] {
        vorParameterPtr top(new vorParameterMap());
        for (int m = 0; m < 1000; ++m) {
            vorParameterPtr op = top->add(vorParameterKey("op" + std::to_string(m)),
                                          vorParameterPtr(new vorParameterMap()));
            for (int i = 0; i < 80; ++i)
                op->add(vorParameterKey("value" + std::to_string(i)),
                        vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, i * 0.25)));
            for (int i = 0; i < 10; ++i)
                op->add(
                    vorParameterKey("label" + std::to_string(i)),
                    vorParameterPtr(new vorParameterString("pass <" + std::to_string(i) + ">")));
            vorParameterPtr passes =
                op->add("passes", vorParameterPtr(new vorParameterList(vorParameterPtr(
                                      new vorParameterNumeric(SUB_INT, DIM_NONE, 1)))));
            passes->set_int(8);
        }
        return top;
    }();
    return root;
}

constexpr int kParameters = 100000;

void BM_ToXml(benchmark::State& state) {
    const vorParameterPtr& root = tree();
    for (auto _ : state) {
        std::optional<utString> xml = to_xml(*root);
        benchmark::DoNotOptimize(xml);
    }
    state.SetItemsProcessed(state.iterations() * kParameters);
}
BENCHMARK(BM_ToXml)->Unit(benchmark::kMillisecond);

void write_plain(std::ostringstream& out, std::string_view name, const vorParameter& node) {
    out << "<p name=\"" << name << "\">";
    if (const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(&node)) {
        for (const auto& [key, member] : map->members())
            write_plain(out, key, *member);
    } else if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(&node)) {
        for (const vorParameterPtr& element : array->elements())
            write_plain(out, element->get_name(), *element);
    } else {
        out << node.get_string();
    }
    out << "</p>\n";
}

// Yardstick: the same names and values through a std::ostringstream.
void BM_OstringstreamYardstick(benchmark::State& state) {
    const vorParameterPtr& root = tree();
    for (auto _ : state) {
        std::ostringstream out;
        write_plain(out, utString(), *root);
        std::string text = out.str();
        benchmark::DoNotOptimize(text);
    }
    state.SetItemsProcessed(state.iterations() * kParameters);
}
BENCHMARK(BM_OstringstreamYardstick)->Unit(benchmark::kMillisecond);

} // namespace

// Saving and loading whole trees as text, at 10 000, 100 000 and 1 000 000
// parameters: maps of maps holding numbers ("12.5"), texts and short arrays,
// as a host's settings look. Loading goes into an open root (which creates
// every parameter) and into a fresh copy of the host's tree (whose default
// loader sets values on the parameters it has). The same values as a JSON
// document, parsed and dumped by nlohmann::json, are measured beside them for
// scale under the "Json" names. Rates are in bytes of text per second, so the
// two compare although their texts differ in length; the sizes show whether
// the cost grows in step with the file.
#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRoot.h"
#include "vorparameter/persistence/vorParameterOpenRoot.h"
#include "vorparameter/persistence/vorParameterSerializer.h"

#include <benchmark/benchmark.h>

#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
#include <nlohmann/json.hpp>
#endif

#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

// A group is a map of 10 members: 7 lengths, 2 texts and an array of 3
// lengths; with the map and the array it counts 14 parameters. Ten groups
// make a section, a map directly under the root.
constexpr int kGroupParameters = 14;
constexpr int kGroupsPerSection = 10;

struct Fixture {
    vorParameterPtr tree;
    std::string text; ///< the tree as saved
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
    nlohmann::json json;
    std::string json_text; ///< the JSON document as dumped
#endif
};

double length_value(int i) {
    return 0.5 + 0.25 * (i % 400); // "0.5", "12.5", "99.75", ...
}

vorParameterPtr length(double value) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, value));
}

vorParameterPtr text(const std::string& value) {
    return vorParameterPtr(new vorParameterString(value));
}

// The tree and the JSON document hold the same names and values.
std::unique_ptr<Fixture> make_fixture(int parameters) {
    auto fixture = std::make_unique<Fixture>();
    fixture->tree = vorParameterPtr(new vorParameterRoot("machining"));
    const int groups = parameters / kGroupParameters;
    int counter = 0;
    vorParameterPtr section;
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
    nlohmann::json* json_section = nullptr;
#endif
    for (int g = 0; g < groups; ++g) {
        const std::string section_name = "section" + std::to_string(g / kGroupsPerSection);
        if (g % kGroupsPerSection == 0) {
            section =
                fixture->tree->add(section_name.c_str(), vorParameterPtr(new vorParameterMap()));
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
            json_section = &fixture->json[section_name];
#endif
        }
        const std::string group_name = "group" + std::to_string(g % kGroupsPerSection);
        vorParameterPtr group =
            section->add(group_name.c_str(), vorParameterPtr(new vorParameterMap()));
        vorParameterPtr array = vorParameterPtr(new vorParameterArray());
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
        nlohmann::json& json_group = (*json_section)[group_name];
        nlohmann::json json_array = nlohmann::json::array();
#endif
        for (int i = 0; i < 7; ++i) {
            const std::string name = "value" + std::to_string(i);
            const double value = length_value(counter++);
            group->add(name.c_str(), length(value));
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
            json_group[name] = value;
#endif
        }
        for (int i = 0; i < 2; ++i) {
            const std::string name = "label" + std::to_string(i);
            const std::string value = "Roughing pass " + std::to_string(counter++);
            group->add(name.c_str(), text(value));
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
            json_group[name] = value;
#endif
        }
        for (int i = 0; i < 3; ++i) {
            const double value = length_value(counter++);
            array->add(vorParameterKey(), length(value));
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
            json_array.push_back(value);
#endif
        }
        group->add("steps", array);
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
        json_group["steps"] = std::move(json_array);
#endif
    }
    std::ostringstream out;
    vorParameterSerializer serializer;
    if (serializer.save(static_cast<const vorParameterRoot&>(*fixture->tree), out) != SERIAL_OK)
        return nullptr;
    fixture->text = out.str();
#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
    fixture->json_text = fixture->json.dump(1, '\t');
#endif
    return fixture;
}

// Fixtures are built once per size and kept for the whole run: building the
// largest takes longer than measuring it.
const Fixture* fixture_for(benchmark::State& state) {
    static std::map<int, std::unique_ptr<Fixture>> fixtures;
    const int parameters = static_cast<int>(state.range(0));
    std::unique_ptr<Fixture>& fixture = fixtures[parameters];
    if (!fixture)
        fixture = make_fixture(parameters);
    if (!fixture)
        state.SkipWithError("the tree could not be saved");
    return fixture.get();
}

void report(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
    state.counters["file_bytes"] = static_cast<double>(bytes);
}

void BM_SerializerSave(benchmark::State& state) {
    const Fixture* fixture = fixture_for(state);
    if (!fixture)
        return;
    const auto& root = static_cast<const vorParameterRoot&>(*fixture->tree);
    vorParameterSerializer serializer;
    for (auto _ : state) {
        std::ostringstream out;
        benchmark::DoNotOptimize(serializer.save(root, out));
        benchmark::DoNotOptimize(out.tellp());
    }
    report(state, fixture->text.size());
}

// Every parameter is created: maps, arrays and a string for each value.
void BM_SerializerLoadOpen(benchmark::State& state) {
    const Fixture* fixture = fixture_for(state);
    if (!fixture)
        return;
    vorParameterSerializer serializer;
    for (auto _ : state) {
        std::istringstream in(fixture->text);
        vorParameterSerialError error = SERIAL_OK;
        std::unique_ptr<vorParameterOpenRoot> root =
            vorParameterOpenRoot::load(in, serializer, error);
        if (error != SERIAL_OK) {
            state.SkipWithError("the open root did not load the file");
            return;
        }
        benchmark::DoNotOptimize(root.get());
    }
    report(state, fixture->text.size());
}

// The host's case: its tree exists, and every value text is set on the
// parameter found at its key. The copy is made outside the measurement.
void BM_SerializerLoadHost(benchmark::State& state) {
    const Fixture* fixture = fixture_for(state);
    if (!fixture)
        return;
    vorParameterSerializer serializer;
    vorParameterPtr copy;
    for (auto _ : state) {
        state.PauseTiming();
        copy = vorParameterPtr(fixture->tree->create_new());
        std::istringstream in(fixture->text);
        state.ResumeTiming();
        if (serializer.load(static_cast<vorParameterRoot&>(*copy), in) != SERIAL_OK) {
            state.SkipWithError("the host tree did not load the file");
            return;
        }
    }
    report(state, fixture->text.size());
}

// Every measurement at the three sizes: the rates should stay level if the
// cost is linear in the file's length.
void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_SerializerSave)->Apply(sizes);
BENCHMARK(BM_SerializerLoadOpen)->Apply(sizes);
BENCHMARK(BM_SerializerLoadHost)->Apply(sizes);

#ifdef VORPARAMETER_HAVE_NLOHMANN_JSON
void BM_JsonDump(benchmark::State& state) {
    const Fixture* fixture = fixture_for(state);
    if (!fixture)
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(fixture->json.dump(1, '\t'));
    report(state, fixture->json_text.size());
}

void BM_JsonParse(benchmark::State& state) {
    const Fixture* fixture = fixture_for(state);
    if (!fixture)
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json::parse(fixture->json_text));
    report(state, fixture->json_text.size());
}

BENCHMARK(BM_JsonDump)->Apply(sizes);
BENCHMARK(BM_JsonParse)->Apply(sizes);
#endif

} // namespace

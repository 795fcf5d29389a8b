// sort, filter and remove_duplicates over 100 000 numbers, each beside what
// the standard library does with the same values (std::stable_sort, a loop,
// std::unordered_set): the yardstick shows what the parameters cost on top.
#include "vorparameter/vorparameter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace {

constexpr int kItems = 100000;

double value_at(int i) {
    return static_cast<double>((i * 7919LL) % 50000);
}

std::vector<double> plain_values() {
    std::vector<double> values(kItems);
    for (int i = 0; i < kItems; ++i)
        values[static_cast<std::size_t>(i)] = value_at(i);
    return values;
}

/// A root holding the list "L" of the same values.
vorParameterPtr root_with_list() {
    vorParameterPtr root(new vorParameterLibRoot("Bench"));
    vorParameterPtr list =
        root->add("L", vorParameterPtr(new vorParameterList(vorParameterPtr(
                           new vorParameterNumeric(SUB_REAL, vorDimensions(), 0.0)))));
    list->set_int(kItems);
    auto& array = static_cast<vorParameterArray&>(*list);
    for (int i = 0; i < kItems; ++i)
        array.at(i)->set_double(value_at(i));
    return root;
}

void evaluate_on_list(benchmark::State& state, const char* expression) {
    vorParameterPtr root = root_with_list();
    vorEvaluator evaluator(root.get());
    for (auto _ : state)
        benchmark::DoNotOptimize(evaluator.evaluate(expression));
    state.SetItemsProcessed(state.iterations() * kItems);
}

void BM_SortList(benchmark::State& state) {
    evaluate_on_list(state, "sort(L)");
}
BENCHMARK(BM_SortList)->Unit(benchmark::kMillisecond);

// One evaluation of the key expression per item on top of the sort.
void BM_SortListByExpression(benchmark::State& state) {
    evaluate_on_list(state, "sort(L; '-this')");
}
BENCHMARK(BM_SortListByExpression)->Unit(benchmark::kMillisecond);

void BM_SortStdYardstick(benchmark::State& state) {
    const std::vector<double> values = plain_values();
    for (auto _ : state) {
        std::vector<double> copy = values;
        std::stable_sort(copy.begin(), copy.end());
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BM_SortStdYardstick)->Unit(benchmark::kMillisecond);

void BM_FilterList(benchmark::State& state) {
    evaluate_on_list(state, "filter(L; 'this < 25000')");
}
BENCHMARK(BM_FilterList)->Unit(benchmark::kMillisecond);

void BM_FilterStdYardstick(benchmark::State& state) {
    const std::vector<double> values = plain_values();
    for (auto _ : state) {
        std::vector<double> kept;
        std::copy_if(values.begin(), values.end(), std::back_inserter(kept),
                     [](double v) { return v < 25000; });
        benchmark::DoNotOptimize(kept.data());
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BM_FilterStdYardstick)->Unit(benchmark::kMillisecond);

// Half of the items are duplicates; the list is rebuilt outside the timing,
// since the call changes it in place.
void BM_RemoveDuplicates(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        vorParameterPtr root = root_with_list();
        vorEvaluator evaluator(root.get());
        state.ResumeTiming();
        benchmark::DoNotOptimize(evaluator.evaluate("remove_duplicates(L)"));
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BM_RemoveDuplicates)->Unit(benchmark::kMillisecond);

void BM_RemoveDuplicatesStdYardstick(benchmark::State& state) {
    const std::vector<double> values = plain_values();
    for (auto _ : state) {
        std::unordered_set<double> seen;
        std::vector<double> kept;
        for (double v : values)
            if (seen.insert(v).second)
                kept.push_back(v);
        benchmark::DoNotOptimize(kept.data());
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BM_RemoveDuplicatesStdYardstick)->Unit(benchmark::kMillisecond);

} // namespace

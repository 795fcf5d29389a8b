// The read paths a host leans on, each beside a yardstick in the same run:
// re-reading an expression parameter and evaluating a new text (muParser),
// reading a literal number (muParser's Eval of a variable), the heap of a
// large tree and a dotted lookup in it (std::unordered_map<std::string,
// double>), and the cost of an expression against its length (both engines).
//
// Every yardstick is named after the case it measures with a "Yardstick"
// suffix, so docs/performance_chart.py can pair the two and print ratios.
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#ifdef VORPARAMETER_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

const char* const short_expression = "a*2+b";
const char* const long_expression = "(a+b)*(a-b)/2+sqrt(a*a+b*b)";

vorParameterPtr real(double value) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_NONE, value));
}

/// A root that knows the standard functions, with numbers a and b and a
/// parameter x whose value text is `expression`.
struct ExpressionTree {
    explicit ExpressionTree(const char* expression) {
        root.add("a", real(3));
        root.add("b", real(4));
        x = root.add("x", real(0));
        x->set_string(expression);
    }
    vorParameterLibRoot root{"bench"};
    vorParameterPtr x;
};

void read_expression(benchmark::State& state, const char* expression) {
    ExpressionTree tree(expression);
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.x->get_double());
}

void BM_ReadShortExpression(benchmark::State& state) {
    read_expression(state, short_expression);
}
BENCHMARK(BM_ReadShortExpression);

void BM_ReadLongExpression(benchmark::State& state) {
    read_expression(state, long_expression);
}
BENCHMARK(BM_ReadLongExpression);

/// The text of a new expression, never seen before in the process: the count
/// goes on across the benchmark's runs and repetitions, so no cache of
/// compiled texts can answer it. Both engines pay for making it.
std::string next_new_text() {
    static std::size_t count = 0;
    return "a*2+b+" + std::to_string(++count);
}

void BM_SetNewTextThenRead(benchmark::State& state) {
    ExpressionTree tree(short_expression);
    for (auto _ : state) {
        tree.x->set_string(utString(next_new_text()));
        benchmark::DoNotOptimize(tree.x->get_double());
    }
}
BENCHMARK(BM_SetNewTextThenRead);

void BM_ReadLiteral(benchmark::State& state) {
    vorParameterPtr number = real(12.5);
    for (auto _ : state)
        benchmark::DoNotOptimize(number->get_double());
}
BENCHMARK(BM_ReadLiteral);

/// "s0+s1+...": a sum of `count` names.
std::string sum_of_names(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i ? "+s" : "s") + std::to_string(i);
    return text;
}

void BM_ReadSumOfNames(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    vorParameterLibRoot root("bench");
    for (int i = 0; i < count; ++i)
        root.add(utString("s" + std::to_string(i)), real(i));
    vorParameterPtr x = root.add("x", real(0));
    x->set_string(utString(sum_of_names(count)));
    for (auto _ : state)
        benchmark::DoNotOptimize(x->get_double());
    state.counters["names"] = count;
}
BENCHMARK(BM_ReadSumOfNames)->RangeMultiplier(2)->Range(1, 256);

// The large tree: 1 000 maps "m0".."m999" of 100 numbers "p0".."p99" each,
// reached by paths such as "m123.p45".
constexpr int tree_maps = 1000;
constexpr int tree_members_per_map = 100;
constexpr int tree_members = tree_maps * tree_members_per_map;

std::string member_path(int map, int member) {
    return "m" + std::to_string(map) + ".p" + std::to_string(member);
}

std::unique_ptr<vorParameterLibRoot> build_tree() {
    auto root = std::make_unique<vorParameterLibRoot>("bench");
    for (int m = 0; m < tree_maps; ++m) {
        vorParameterPtr map =
            root->add(utString("m" + std::to_string(m)), vorParameterPtr(new vorParameterMap()));
        for (int p = 0; p < tree_members_per_map; ++p)
            map->add(utString("p" + std::to_string(p)), real(p + 0.5));
    }
    return root;
}

std::unordered_map<std::string, double> build_table() {
    std::unordered_map<std::string, double> table;
    for (int m = 0; m < tree_maps; ++m)
        for (int p = 0; p < tree_members_per_map; ++p)
            table.emplace(member_path(m, p), p + 0.5);
    return table;
}

/// Bytes the heap holds for the blocks in use, allocation overhead included.
std::size_t heap_in_use() {
    return mallinfo2().uordblks;
}

/// Reports the heap that `build` leaves in use, per member of the large tree.
template <class Build>
void measure_heap(benchmark::State& state, Build build) {
    for (auto _ : state) {
        const std::size_t before = heap_in_use();
        auto built = build();
        const std::size_t after = heap_in_use();
        state.counters["bytes_per_member"] =
            static_cast<double>(after - before) / static_cast<double>(tree_members);
        state.PauseTiming(); // the release is not part of the figure
        built = decltype(built)();
        state.ResumeTiming();
    }
}

void BM_TreeHeapPerMember(benchmark::State& state) {
    measure_heap(state, build_tree);
}
BENCHMARK(BM_TreeHeapPerMember)->Iterations(1);

void BM_TreeHeapPerMemberYardstick(benchmark::State& state) {
    measure_heap(state, build_table);
}
BENCHMARK(BM_TreeHeapPerMemberYardstick)->Iterations(1);

void BM_TreeLookup(benchmark::State& state) {
    const auto root = build_tree();
    for (auto _ : state)
        benchmark::DoNotOptimize((*root)["m123.p45"]);
}
BENCHMARK(BM_TreeLookup);

void BM_TreeLookupYardstick(benchmark::State& state) {
    const std::unordered_map<std::string, double> table = build_table();
    const std::string path = "m123.p45";
    for (auto _ : state)
        benchmark::DoNotOptimize(table.find(path));
}
BENCHMARK(BM_TreeLookupYardstick);

#ifdef VORPARAMETER_HAVE_MUPARSER
/// A muParser with variables a = 3 and b = 4 and the text `expression`.
struct MuParserFixture {
    explicit MuParserFixture(const std::string& expression) {
        parser.DefineVar("a", &a);
        parser.DefineVar("b", &b);
        parser.SetExpr(expression);
    }
    double a = 3;
    double b = 4;
    mu::Parser parser;
};

void eval_mu_parser(benchmark::State& state, const char* expression) {
    MuParserFixture mu(expression);
    for (auto _ : state)
        benchmark::DoNotOptimize(mu.parser.Eval());
}

void BM_ReadShortExpressionYardstick(benchmark::State& state) {
    eval_mu_parser(state, short_expression);
}
BENCHMARK(BM_ReadShortExpressionYardstick);

void BM_ReadLongExpressionYardstick(benchmark::State& state) {
    eval_mu_parser(state, long_expression);
}
BENCHMARK(BM_ReadLongExpressionYardstick);

void BM_SetNewTextThenReadYardstick(benchmark::State& state) {
    MuParserFixture mu(short_expression);
    for (auto _ : state) {
        mu.parser.SetExpr(next_new_text());
        benchmark::DoNotOptimize(mu.parser.Eval());
    }
}
BENCHMARK(BM_SetNewTextThenReadYardstick);

void BM_ReadLiteralYardstick(benchmark::State& state) {
    eval_mu_parser(state, "a");
}
BENCHMARK(BM_ReadLiteralYardstick);

void BM_ReadSumOfNamesYardstick(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    std::vector<double> values(static_cast<std::size_t>(count));
    mu::Parser parser;
    for (int i = 0; i < count; ++i) {
        values[static_cast<std::size_t>(i)] = i;
        parser.DefineVar("s" + std::to_string(i), &values[static_cast<std::size_t>(i)]);
    }
    parser.SetExpr(sum_of_names(count));
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.Eval());
    state.counters["names"] = count;
}
BENCHMARK(BM_ReadSumOfNamesYardstick)->RangeMultiplier(2)->Range(1, 256);
#endif

} // namespace

// Evaluating expressions: a new text each time, and re-reading a parameter
// whose expression follows another one, both for "a*2+b" and for a longer
// arithmetic expression. The same arithmetic in muParser, a
// general-purpose formula parser, is measured beside it for scale; its
// figures appear under the "muParser" names in the same table.
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterRoot.h"

#include <benchmark/benchmark.h>

#include <string>

#ifdef VORPARAMETER_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

vorParameterPtr real(double value, vorDimStandard dim = DIM_NONE) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, dim, value));
}

struct MachiningTree {
    MachiningTree()
        : root(new vorParameterRoot("machining")) {
        vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
        tool->add("diameter", real(6, DIM_LENGTH));
        a = root->add("a", real(1));
        root->add("b", real(2));
        x = root->add("x", real(0));
        x->set_string("a*2+b");
        y = root->add("y", real(0));
        y->set_string("(a+b)*(a-b)/2+sqrt(a*a+b*b)");
    }
    vorParameterPtr root;
    vorParameterPtr a;
    vorParameterPtr x;
    vorParameterPtr y;
};

void BM_EvaluateNewText(benchmark::State& state) {
    MachiningTree tree;
    const utString text("tool.diameter * 2 + 1mm");
    for (auto _ : state) {
        vorEvaluator evaluator(tree.root.get());
        benchmark::DoNotOptimize(evaluator.evaluate(text)->get_double());
    }
}
BENCHMARK(BM_EvaluateNewText);

// Texts never met before: each one is scanned (the cache cannot help).
void BM_EvaluateDistinctTexts(benchmark::State& state) {
    MachiningTree tree;
    long serial = 0;
    for (auto _ : state) {
        const utString text("tool.diameter * 2 + " + std::to_string(++serial) + "mm");
        vorEvaluator evaluator(tree.root.get());
        benchmark::DoNotOptimize(evaluator.evaluate(text)->get_double());
    }
}
BENCHMARK(BM_EvaluateDistinctTexts);

/// Reads the tree's member `read` after each change of `a`.
void read_after_change(benchmark::State& state, vorParameterPtr MachiningTree::*read) {
    MachiningTree tree;
    double value = 0;
    for (auto _ : state) {
        tree.a->set_double(value);
        value += 1;
        benchmark::DoNotOptimize((tree.*read)->get_double());
    }
}

void BM_ReadExpressionAfterChange(benchmark::State& state) {
    read_after_change(state, &MachiningTree::x);
}
BENCHMARK(BM_ReadExpressionAfterChange);

void BM_ReadLongExpressionAfterChange(benchmark::State& state) {
    read_after_change(state, &MachiningTree::y);
}
BENCHMARK(BM_ReadLongExpressionAfterChange);

#ifdef VORPARAMETER_HAVE_MUPARSER
void BM_MuParserNewText(benchmark::State& state) {
    double diameter = 6;
    mu::Parser parser;
    parser.DefineVar("diameter", &diameter);
    for (auto _ : state) {
        parser.SetExpr("diameter * 2 + 1");
        benchmark::DoNotOptimize(parser.Eval());
    }
}
BENCHMARK(BM_MuParserNewText);

/// muParser evaluating `expression` again after each change of `a`.
void muparser_read_after_change(benchmark::State& state, const char* expression) {
    double a = 0;
    double b = 2;
    mu::Parser parser;
    parser.DefineVar("a", &a);
    parser.DefineVar("b", &b);
    parser.SetExpr(expression);
    for (auto _ : state) {
        a += 1;
        benchmark::DoNotOptimize(parser.Eval());
    }
}

void BM_MuParserReadAfterChange(benchmark::State& state) {
    muparser_read_after_change(state, "a*2+b");
}
BENCHMARK(BM_MuParserReadAfterChange);

void BM_MuParserReadLongAfterChange(benchmark::State& state) {
    muparser_read_after_change(state, "(a+b)*(a-b)/2+sqrt(a*a+b*b)");
}
BENCHMARK(BM_MuParserReadLongAfterChange);
#endif

} // namespace

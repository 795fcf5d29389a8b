// Runaway evaluation: chains deeper than the nesting limit through every
// recursive path, graphs that read a parameter exponentially often, active
// conditions that read themselves, and rewriting of huge texts. Each read
// must answer an error value (or its plain result) instead of exhausting the
// stack or running for hours, and leave nothing behind for the next read.

#include "../support/prelude.h"

namespace {

utString name(const char* prefix, int i) {
    return utString(prefix + std::to_string(i));
}

int error_kind(const vorParameterPtr& result) {
    return result->is_error() ? result->subtype() : -1;
}

/// Lowers the evaluation budget for one test, so that exhausting it stays
/// quick under the sanitizers.
class EvaluationBudget {
public:
    explicit EvaluationBudget(long budget)
        : m_previous(vorEvaluator::set_max_evaluations(budget)) {}
    ~EvaluationBudget() { vorEvaluator::set_max_evaluations(m_previous); }
    EvaluationBudget(const EvaluationBudget&) = delete;
    EvaluationBudget& operator=(const EvaluationBudget&) = delete;

private:
    long m_previous;
};

constexpr int chain_length = 10000;

class StressEvaluation : public ::testing::Test {
protected:
    StressEvaluation()
        : root(new vorParameterLibRoot("machining")) {}
    vorParameterPtr root;
};

} // namespace

TEST_F(StressEvaluation, ChainsDeeperThanTheNestingLimitFailAlsoWhenMixed) {
    // Interpolated strings, plain references, operands: each kind of chain
    // stops at the limit, while its shallow end still reads as before.
    root->add("s0", text("base"));
    root->add("p0", numeric("1"));
    root->add("q0", numeric("1"));
    for (int i = 1; i <= chain_length; ++i) {
        root->add(name("s", i), text("${" + name("s", i - 1) + "}"));
        root->add(name("p", i), numeric(name("p", i - 1)));
        root->add(name("q", i), numeric(name("q", i - 1) + " + 1"));
    }
    for (const char* chain : {"s", "p", "q"}) {
        vorParameterPtr top = root[name(chain, chain_length)];
        EXPECT_EQ(error_kind(top->evaluate()), ERR_EXPRESSION) << chain;
        EXPECT_FALSE(top->is_evaluating()) << chain;
    }
    EXPECT_EQ(root["s10000"]->get_string(), "") << "no error text leaks as a value";
    EXPECT_EQ(root["s100"]->get_string(), "base");
    EXPECT_EQ(root["p300"]->get_double(), 1);
    EXPECT_EQ(root["q100"]->get_double(), 101);

    // A string literal inside an expression interpolates on the same budget.
    root->add("t", numeric("size('${s10000}')"));
    EXPECT_EQ(error_kind(root["t"]->evaluate()), ERR_EXPRESSION);

    // Numeric expressions, interpolated strings and user functions take
    // turns, so that no single kind of step is ever deep on its own.
    root->add("twice", function("argv[0] * 2"));
    root->add("m0", numeric("1"));
    for (int i = 1; i <= chain_length; ++i) {
        const utString previous = name("m", i - 1);
        if (i % 3 == 1)
            root->add(name("m", i), numeric("1 + " + previous));
        else if (i % 3 == 2)
            root->add(name("m", i), text("${" + previous + "}"));
        else
            root->add(name("m", i), numeric("twice(real(" + previous + "))"));
    }
    EXPECT_EQ(error_kind(root[name("m", chain_length)]->evaluate()), ERR_EXPRESSION);
    EXPECT_EQ(root["m6"]->get_double(), 10);

    root->add("endless", function("1 + endless(argv[0])"));
    EXPECT_EQ(error_kind(vorEvaluator(root.get()).evaluate("endless(1)")), ERR_EXPRESSION);
    EXPECT_EQ(vorEvaluator(root.get()).evaluate("twice(m6)")->get_double(), 20);
}

TEST_F(StressEvaluation, DoublingGraphsShareNumbersAndBudgetTheRest) {
    // Every level reads the one below twice: numbers, interpolated strings
    // and user functions. Level 40 would take 2^41 evaluations. A number
    // read a second time within one read is reused, so the numbers cost
    // two evaluations a level; texts and function calls are evaluated
    // afresh every time and run into the budget.
    EvaluationBudget budget(10000);
    root->add("n0", numeric("1"));
    root->add("s0", text("x"));
    root->add("f0", function("argv[0]"));
    for (int i = 1; i <= 40; ++i) {
        const utString below = name("n", i - 1);
        root->add(name("n", i), numeric(below + " + " + below));
        const utString text_below = "${" + name("s", i - 1) + "}";
        root->add(name("s", i), text(text_below + " " + text_below));
        const utString call = name("f", i - 1) + "(argv[0])";
        root->add(name("f", i), function(call + " + " + call));
    }
    EXPECT_EQ(root["n40"]->evaluate()->get_double(), 1099511627776.0);
    EXPECT_EQ(root["n40"]->get_double(), 1099511627776.0);
    EXPECT_EQ(error_kind(root["s40"]->evaluate()), ERR_EXPRESSION);
    EXPECT_EQ(error_kind(vorEvaluator(root.get()).evaluate("f40(1)")), ERR_EXPRESSION);

    // The budget belongs to one top-level read: 2^13 - 1 evaluations fit,
    // and so they do again on the next read.
    EXPECT_EQ(root["n12"]->get_double(), 4096);
    EXPECT_EQ(root["n12"]->get_double(), 4096);
    EXPECT_EQ(root["s2"]->get_string(), "x x x x");
    EXPECT_EQ(vorEvaluator(root.get()).evaluate("f12(1)")->get_double(), 4096);

    // A function anywhere below makes every level above it read afresh.
    root["n0"]->set_string("f0(1)");
    EXPECT_EQ(error_kind(root["n40"]->evaluate()), ERR_EXPRESSION);
    EXPECT_EQ(root["n11"]->get_double(), 2048) << "2^11 calls and evaluations of n0 fit";
}

TEST_F(StressEvaluation, WideDiamondsReadEachNumberOnce) {
    // A grid in which every number reads the two below it: without sharing,
    // a read of the top would take about C(2 * side, side), 10^17, evaluations.
    constexpr int side = 30;
    EvaluationBudget budget(4 * side * side);
    auto cell = [](int row, int col) { return name("g", row * 1000 + col); };
    for (int row = 0; row < side; ++row)
        for (int col = 0; col < side; ++col) {
            if (row == 0 || col == 0)
                root->add(cell(row, col), numeric("1"));
            else
                root->add(cell(row, col),
                          numeric("(" + cell(row - 1, col) + " + " + cell(row, col - 1) + ") / 2"));
        }
    EXPECT_DOUBLE_EQ(root[cell(side - 1, side - 1)]->get_double(), 1.0);
}

TEST_F(StressEvaluation, ActiveConditionsEndAndHugeTextsAreRewrittenInLinearTime) {
    vorParameterPtr plain = root->add("plain", numeric("1"));
    plain->set_active("plain > 0");
    EXPECT_TRUE(plain->is_active());

    vorParameterPtr cycle = root->add("cycle", numeric("cycle + 1"));
    cycle->set_active("cycle > 0");
    EXPECT_FALSE(cycle->is_active()) << "a value that refers to itself is no condition";

    vorParameterPtr self = root->add("self", numeric("1"));
    self->set_active("active(self) | 1");
    EXPECT_TRUE(self->is_active()) << "its own state is the one known so far";

    // Each condition asks for the active state of the one before.
    root->add("c0", numeric("1"));
    for (int i = 1; i <= chain_length; ++i)
        root->add(name("c", i), numeric("1"))->set_active("active(" + name("c", i - 1) + ")");
    EXPECT_FALSE(root[name("c", chain_length)]->is_active());
    EXPECT_TRUE(root["c50"]->is_active());
    EXPECT_TRUE(plain->is_active());

    // Over the length limit a text is no expression and comes back as it is.
    std::string huge;
    while (huge.size() < (std::size_t(64) << 20))
        huge += "max(1,5; tool.diameter) + 'a,b' ";
    const utString huge_text(huge);
    EXPECT_EQ(vorEvaluator::neutralize(huge_text), huge_text);
    EXPECT_EQ(vorEvaluator::localize(huge_text), huge_text);

    // Just under it, every one of its tokens is still rewritten.
    std::string longest;
    const std::string term = "f(2,5, a) + ";
    while (longest.size() + term.size() + 1 <= vorEvaluator::max_expression_length)
        longest += term;
    longest += "1";
    const utString neutral = vorEvaluator::neutralize(utString(longest));
    EXPECT_EQ(neutral.size(), longest.size());
    const std::string tail = "f(2.5; a) + 1";
    EXPECT_EQ(neutral.view().substr(neutral.size() - tail.size()), tail);
}

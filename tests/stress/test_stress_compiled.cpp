// Compiled evaluation under hostile input: texts at the length limit, nesting
// past the limit, and floods of distinct texts. Compiling must stay linear,
// the limits must answer as scanning does, and the program cache must stay
// within its bound.

#include "../support/prelude.h"

namespace {

struct Both {
    vorParameterPtr scanned;
    vorParameterPtr compiled;
};

Both evaluate_both(const vorParameterPtr& scope, const std::string& text) {
    Both both;
    vorEvaluator::set_compiled(false);
    both.scanned = vorEvaluator(scope.get()).evaluate(text.c_str());
    vorEvaluator::set_compiled(true);
    // A text is compiled when it is met again.
    for (int time = 0; time < 2; ++time)
        both.compiled = vorEvaluator(scope.get()).evaluate(text.c_str());
    return both;
}

void expect_same(const Both& both, const char* what) {
    EXPECT_EQ(both.scanned->type(), both.compiled->type()) << what;
    EXPECT_EQ(both.scanned->subtype(), both.compiled->subtype()) << what;
    EXPECT_EQ(both.scanned->get_string(), both.compiled->get_string()) << what;
}

} // namespace

TEST(StressCompiled, HugeAndDeepTextsAnswerAsScanningDoesAndTheCacheStaysBounded) {
    vorParameterPtr root(new vorParameterRoot("machining"));
    root->add("a", real(1));

    // 256 KiB of "a+a+...": compiled in one pass, then run within the limits.
    std::string sum = "a";
    while (sum.size() + 2 <= vorEvaluator::max_expression_length)
        sum += "+a";
    expect_same(evaluate_both(root, sum), "a sum at the length limit");
    expect_same(evaluate_both(root, sum + "+a"), "a sum past the length limit");

    // Words that read as units after an operand and as names before one,
    // and list separators that the tokenizer rewrites, all the way through.
    std::string words = "m";
    while (words.size() + 6 <= vorEvaluator::max_expression_length)
        words += " m, in";
    expect_same(evaluate_both(root, words), "a long run of unit words");

    const std::string deep = std::string(2000, '(') + "1" + std::string(2000, ')');
    const Both nested = evaluate_both(root, deep);
    expect_same(nested, "brackets past the nesting limit");
    EXPECT_EQ(nested.compiled->subtype(), ERR_EXPRESSION);
    expect_same(evaluate_both(root, std::string(5000, '-') + "1"), "prefixes past the limit");

    // The program cache stays within its bound.
    std::size_t most = 0;
    for (int i = 0; i < 20000; ++i) {
        // A text is compiled on its second sight.
        for (int sight = 0; sight < 2; ++sight) {
            vorParameterPtr result =
                vorEvaluator(root.get()).evaluate(utString("1+" + std::to_string(i)));
            ASSERT_EQ(result->get_double(), 1 + i);
        }
        most = std::max(most, vorEvaluator::cached_programs());
    }
    EXPECT_LE(most, std::size_t(4096));
    EXPECT_GT(vorEvaluator::cached_programs(), 0u);
}

// The expression language end to end: literals, names, operators, lists,
// short-circuits, limits and the text rewriting of the tokenizer.

#include "../support/prelude.h"

namespace {

class Evaluator : public ::testing::Test {
protected:
    Evaluator()
        : root(new vorParameterRoot("machining")) {
        root->add("a", real(2));
        root->add("b", real(3));
        root->add("s", text("abc"));
        tool = root->add("tool", map());
        tool->add("diameter", real(6, DIM_LENGTH));
    }

    vorParameterPtr eval(const char* text) { return vorEvaluator(root.get()).evaluate(text); }
    double number(const char* text) { return eval(text)->get_double(); }
    int kind(const char* text) {
        vorParameterPtr r = eval(text);
        return r->is_error() ? r->subtype() : -1;
    }

    vorParameterPtr root;
    vorParameterPtr tool;
};

} // namespace

// The examples of docs/expressions.md (ExpressionDocs) cover what is not
// repeated here: left-associativity, "-2^2", units after an operand, names
// in any case, short-circuits and errors as values.

TEST_F(Evaluator, ValuesOfOperatorsLiteralsNamesAndShortCircuits) {
    // Keyword operators, "$name", texts compared, and the right side of "&"
    // and "|" skipped with its unknown names and calls.
    for (const char* truth : {"1 < 2 == 1", "NOT 0", "1 and 0 or 1", "a GE 2", "a <= b",
                              "'abc' <= 'abd'", "s == 'abc'", "1 | s(1)"})
        EXPECT_EQ(number(truth), 1) << truth;
    for (const char* falsity : {"1 XOR 1", "0 & (undefined(1) + x.y[2])", "0 & undefined(1)"})
        EXPECT_EQ(number(falsity), 0) << falsity;
    EXPECT_EQ(number("(1+2)*3"), 9);
    EXPECT_EQ(number("7 % 4"), 3);
    EXPECT_EQ(number("$a"), 2);
    // A unit applies to the operand just read; "2-3" is a subtraction.
    EXPECT_EQ(number("2.5e-3in"), 2.5e-3 * 25.4);
    vorParameterPtr length = eval("10mm");
    EXPECT_EQ(length->get_double(), 10);
    EXPECT_EQ(static_cast<vorParameterNumeric&>(*length).get_dim(), vorDimensions(DIM_LENGTH));
    EXPECT_EQ(number("1,5"), 1.5);
    EXPECT_EQ(number(".5"), 0.5);
    EXPECT_EQ(number("1e-3"), 1e-3);
    EXPECT_EQ(number("2-3"), -1);
    EXPECT_EQ(eval("'abc' + \"d'e\"")->get_string(), "abcd'e");
    EXPECT_EQ(eval("THIS").get(), root.get());
    EXPECT_EQ(eval("this.a").get(), root["a"].get());
    EXPECT_EQ(vorEvaluator(nullptr).evaluate("a")->subtype(), ERR_INVALID_NAME);

    EXPECT_EQ(eval("(1)")->type(), TYPE_NUMERIC);
    EXPECT_EQ(eval("(1; 2)")->size(), 2);
    EXPECT_EQ(eval("{1; 2; 3}")->size(), 3);
    EXPECT_EQ(eval("{}")->size() + eval("()")->size(), 0);
    EXPECT_EQ(eval("{a; b}")["[1]"]->get_double(), 3);
    EXPECT_EQ(eval("{1; {2; 3}}")["[1]"]->size(), 2);
    vorEvaluator strict(root.get());
    strict.strict_decimal();
    EXPECT_EQ(strict.evaluate("{1,5}")->size(), 2) << "with strict decimals a comma separates";
}

TEST_F(Evaluator, ErrorKinds) {
    // A unit where an operand belongs is a name, and so is a call of a
    // member: a call looks up functions only. A literal ends before a second
    // "e"; a text that cannot be read after a complete value is not dropped.
    // After a number a point is the member operator, and a string is not
    // callable. The parse stops at "[" or after an error, before the end.
    const std::pair<int, std::vector<const char*>> cases[] = {
        {ERR_INVALID_NAME,
         {"mm", "undefined_name", "s(1)", "undefined_fn()", "0 | undefined_name"}},
        {ERR_SYNTAX,
         {"1e-3e2", "1e999", ".5.2", "{1; 2", "", "   ", "1 2", "(1", "1)", "a =< b", "1 +", "*",
          "\"abc", "a 'b", "a 1e+", "0 & 'b"}},
        {ERR_TYPE, {"3 .5", "(s)(1)"}},
        {ERR_EXPRESSION, {"[1]", "undefined_name)"}}};
    for (const auto& [expected, texts] : cases)
        for (const char* text : texts)
            EXPECT_EQ(kind(text), expected) << text;
}

TEST_F(Evaluator, ParamsetRecordsEachParameterOnce) {
    vorEvaluator evaluator(root.get());
    evaluator.evaluate("a + a * tool.diameter");
    const vorParameterPtrcoDList& read = evaluator.paramset();
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].get(), root["a"].get());
    EXPECT_EQ(read[1].get(), root["tool.diameter"].get()) << "only the final member of a path";
    EXPECT_FALSE(evaluator.has_function_param());

    // Long lists are indexed for the look-up: still each once, in the order
    // first met, across the point where the index starts.
    std::string text = "a";
    for (int i = 0; i < 12; ++i) {
        root->add(utString("p" + std::to_string(i)), real(i));
        text += "+p" + std::to_string(i) + "+a";
    }
    evaluator.evaluate(utString(text + "+p0+p11"));
    ASSERT_EQ(read.size(), 13u);
    EXPECT_EQ(read[0].get(), root["a"].get());
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(read[static_cast<std::size_t>(i) + 1].get(),
                  root[utString("p" + std::to_string(i))].get());
}

TEST_F(Evaluator, RewritesSeparatorsAndLimitsAndSelfReferenceGiveErrorValues) {
    vorEvaluator evaluator(root.get());
    evaluator.evaluate("{1 , 2}");
    EXPECT_EQ(evaluator.get_expr(), "{1 ; 2}");
    EXPECT_EQ(vorEvaluator::neutralize("max(1,2)"), "max(1.2)");
    EXPECT_EQ(vorEvaluator::neutralize("f(a, 'x,y'; 2.5)"), "f(a; 'x,y'; 2.5)");
    nlsUtils::set_decimal_point(',');
    EXPECT_EQ(vorEvaluator::neutralize("f(1,5; 2)"), "f(1.5; 2)");
    EXPECT_EQ(vorEvaluator::localize("f(1.5; 2)"), "f(1,5; 2)");
    EXPECT_EQ(number("1,5 + 1"), 2.5);
    nlsUtils::set_decimal_point('.');

    std::string deep(10000, '(');
    deep += "1";
    deep += std::string(10000, ')');
    EXPECT_TRUE(eval(deep.c_str())->is_error());
    std::string prefixes(10000, '-');
    prefixes += "1";
    EXPECT_TRUE(eval(prefixes.c_str())->is_error());
    std::string braces(10000, '{');
    EXPECT_TRUE(eval(braces.c_str())->is_error());
    std::string huge = "1";
    for (int i = 0; i < 200000; ++i)
        huge += "+1";
    EXPECT_EQ(kind(huge.c_str()), ERR_SYNTAX) << "over the length limit";
    std::string long_sum = "0";
    for (int i = 0; i < 20000; ++i)
        long_sum += "+1";
    EXPECT_EQ(number(long_sum.c_str()), 20000) << "a long flat expression is fine";

    vorParameterPtr x = root->add("x", real(0));
    vorParameterPtr y = root->add("y", real(0));
    x->set_string("y + 1");
    y->set_string("x * 2");
    EXPECT_EQ(x->evaluate()->subtype(), ERR_EXPRESSION);
    EXPECT_EQ(x->get_double(), 0);
    EXPECT_FALSE(x->is_evaluating());
    EXPECT_FALSE(y->is_evaluating());
    // Long chains of distinct parameters: StressEvaluation.
}

// Strings: expressions by interpolation, defaults, locks, comparison, print.

#include "../support/prelude.h"

TEST(String, InterpolationMakesAnExpressionAndShortFormsEndWithTheirNameRun) {
    vorParameterPtr root(new vorParameterRoot("machining"));
    root->add("a", text("abc"));
    vorParameterPtr s = root->add("s", text("${a}"));
    EXPECT_TRUE(s->is_expr());
    EXPECT_EQ(s->get_string(), "abc");
    EXPECT_EQ(s->get_expr(), "${a}");
    EXPECT_EQ(s->print(0), "(STRING) ${a} = abc\n");
    for (const char* literal : {"50%", "", "$", "[1+1]", "{1+1}"})
        EXPECT_FALSE(vorParameterString(literal).is_expr()) << literal;
    EXPECT_TRUE(vorParameterString("a%[b]").is_expr());

    vorEvaluator evaluator(root.get());
    EXPECT_EQ(evaluator.interpolate_string("%[1+1]"), "2");
    EXPECT_EQ(evaluator.interpolate_string("[1+1] {1+1}"), "[1+1] {1+1}");
    EXPECT_EQ(evaluator.interpolate_string("x${}y"), "x[#ERROR: Syntax error]");
    EXPECT_EQ(evaluator.interpolate_string("$$$a"), "$abc");
    EXPECT_EQ(evaluator.interpolate_string("${a} ${a}"), "abc abc");
    EXPECT_EQ(evaluator.interpolate_string("${a}$a"), "abc$a");
    EXPECT_EQ(evaluator.interpolate_string("${a"), "[#ERROR: Syntax error]");
    EXPECT_EQ(evaluator.interpolate_string("${root_keys}"), "[#ERROR: Invalid name]");
    EXPECT_EQ(evaluator.interpolate_string("${_keys}"), "[#ERROR: Type error]")
        << "a list has no printed value";

    root->add("w", real(2));
    EXPECT_EQ(evaluator.interpolate_string("$w+1 is $w,$w\t$w"), "3 is 2,2\t2");
    EXPECT_EQ(evaluator.interpolate_string("Länge $w mm, ø${w}ü"), "Länge 2 mm, ø2ü");
    // A "}" the expression did not open ends the form and stays in place.
    EXPECT_EQ(evaluator.interpolate_string("{w: $w}"), "{w: 2}");
    EXPECT_EQ(evaluator.interpolate_string("$w}x"), "2}x");
    EXPECT_EQ(evaluator.interpolate_string("$w}$w}"), "2}2}");
    EXPECT_EQ(evaluator.interpolate_string("${w}$w}"), "2$w}") << "right after a form";
    EXPECT_EQ(evaluator.interpolate_string("{$w*{3}[0]}"), "{6}") << "a list's own \"}\"";
    // Nothing is read beyond the run: a string cut by the blank is unterminated.
    EXPECT_EQ(evaluator.interpolate_string("$w+'a b'"), "[#ERROR: Syntax error]");
    EXPECT_EQ(evaluator.interpolate_string("x $w) y"), "x [#ERROR: Syntax error]");

    // An expression must give a string: one that reads itself does not.
    vorParameterPtr self = root->add("self", text("${self}"));
    EXPECT_EQ(self->get_string(), "[#ERROR: Expression/Reference error]");
    EXPECT_FALSE(self->is_evaluating());
    EXPECT_EQ(vorParameterString("plain").evaluate()->get_string(), "plain");
}

TEST(String, SettersHonourTheLockAndDefaultsAndTextsCompareAndJoin) {
    vorParameterPtr s(new vorParameterString("first"));
    s->set_onmodify_callback(count_modification);
    g_modified = 0;
    s->set_string("second");
    EXPECT_EQ(g_modified, 1);
    s->lock(1);
    s->set_string("third");
    EXPECT_EQ(s->get_string(), "second");
    EXPECT_EQ(g_modified, 1);
    s->lock(0);
    s->reset();
    EXPECT_EQ(s->get_string(), "first") << "reset restores the value it was created with";

    s->set_defaults("metric", "imperial");
    s->reset();
    EXPECT_EQ(s->get_string(), "metric");

    auto compare = [](const char* a, const char* op, const char* b) {
        vorParameterPtr lhs(new vorParameterString(a));
        return lhs->operate_binary(op, text(b))->get_int();
    };
    EXPECT_EQ(compare("abc", "<=", "abd"), 1);
    EXPECT_EQ(compare("b", ">", "a"), 1);
    EXPECT_EQ(compare("a", "<", "a"), 0);
    EXPECT_EQ(compare("a", "==", "a"), 1);
    EXPECT_EQ(compare("a", "!=", "a"), 0);
    vorParameterPtr x(new vorParameterString("x"));
    vorParameterPtr three(new vorParameterNumeric(SUB_INT, DIM_NONE, 3));
    EXPECT_EQ(x->operate_binary("+", three)->get_string(), "x3");
    EXPECT_EQ(x->operate_binary("*", three)->subtype(), ERR_TYPE);
    EXPECT_EQ(x->operate_binary("+", vorParameterError::create(ERR_DOMAIN))->subtype(),
              ERR_INVALID_ARGUMENTS);
}

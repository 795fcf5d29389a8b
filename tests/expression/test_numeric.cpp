#include "../support/prelude.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

vorParameterPtr number(vorParameterSubType kind, double value,
                       vorDimensions dim = vorDimensions(DIM_NONE)) {
    return real(value, dim, kind);
}

const vorParameterNumeric& as_numeric(const vorParameterPtr& p) {
    return *vorParameterNumeric::ut_dynamic_cast(p.par());
}

vorParameterPtr eval(const char* text) {
    return vorEvaluator(nullptr).evaluate(text);
}

} // namespace

TEST(Numeric, LiteralsReadBackAndComputedNumbersWriteTheirTextForTheFirstReader) {
    vorParameterNumeric n(SUB_REAL, DIM_LENGTH, 0.1);
    EXPECT_EQ(n.get_value(), "0.1");
    EXPECT_DOUBLE_EQ(n.get_double(), 0.1);

    for (const char* literal : {"1,5", " 1.5 ", "+1.5", "15e-1"}) {
        n.set_string(literal);
        double cached = -1.0;
        EXPECT_FALSE(n.get_cached_evaluation(cached)) << literal;
        EXPECT_FALSE(n.is_expr()) << literal;
        EXPECT_EQ(n.get_double(), 1.5) << literal;
        EXPECT_TRUE(n.get_cached_evaluation(cached) && cached == 1.5) << literal;
        EXPECT_EQ(n.get_string(), "1.5") << literal;
    }
    nlsUtils::set_decimal_point(',');
    n.set_string("2.25");
    EXPECT_FALSE(n.is_expr());
    EXPECT_EQ(n.get_double(), 2.25);
    nlsUtils::set_decimal_point('.');

    // Texts that are no numbers read as 0 and the empty string, never fail.
    for (const char* bad : {"abc", "1e999", "2 3", "nan", "inf"}) {
        n.set_string(bad);
        EXPECT_TRUE(n.is_expr()) << bad;
        EXPECT_EQ(n.get_double(), 0.0) << bad;
        EXPECT_EQ(n.get_string(), "") << bad;
        EXPECT_FALSE(n.is_valid()) << bad;
    }
    n.set_string("");
    EXPECT_FALSE(n.is_expr());
    EXPECT_EQ(n.get_double(), 0.0);

    vorParameterNumeric huge(SUB_REAL, DIM_NONE, std::numeric_limits<double>::max());
    EXPECT_EQ(huge.get_double(), std::numeric_limits<double>::max());
    EXPECT_EQ(vorParameterNumeric(SUB_REAL, DIM_NONE, NAN).get_double(), 0.0);
    EXPECT_EQ(vorParameterNumeric(SUB_STRING, DIM_NONE, 1).subtype(), SUB_NUMBER);

    // 0.1 + 0.2 is no short decimal: a text written from anything but the
    // exact value would show it.
    const utString sum = "0.30000000000000004";
    EXPECT_EQ(eval("0.1+0.2")->get_expr(), sum);
    EXPECT_EQ(eval("0.1+0.2")->print(0), "(NUMERIC) " + sum.str() + " \n");

    // A copy of a number whose text nobody read has the text, and keeps it
    // as its default.
    vorParameterPtr copy(eval("0.1+0.2")->create_new());
    EXPECT_EQ(as_numeric(copy).get_value(), sum);
    copy->set_double(1);
    copy->reset();
    EXPECT_EQ(as_numeric(copy).get_value(), sum);
}

TEST(Numeric, RangeClampsReadsIsIgnoredWhenMalformedAndCopiesKeepTheirOwn) {
    vorParameterNumeric n(SUB_REAL, DIM_NONE, 12);
    n.set_range(vorRange(1, 10));
    EXPECT_EQ(n.get_double(), 10.0);
    EXPECT_FALSE(n.check_range());
    n.set_double(5);
    EXPECT_TRUE(n.check_range());
    n.set_string("no number");
    EXPECT_FALSE(n.check_range());
    EXPECT_EQ(n.get_double(), 0.0); // not moved into the range

    n.set_double(12);
    for (vorRange ignored : {vorRange(), vorRange(10, 0), vorRange(NAN, 10), vorRange(0, NAN)}) {
        n.set_range(ignored);
        EXPECT_EQ(n.get_double(), 12.0);
        EXPECT_TRUE(n.check_range());
    }

    // Literal reads still run callbacks; copies keep their own range.
    static int reads = 0;
    n.set_onread_callback([](const vorParameter*) { ++reads; });
    reads = 0;
    EXPECT_EQ(n.get_double(), 12.0);
    EXPECT_EQ(n.get_double(), 12.0);
    EXPECT_EQ(reads, 2) << "a literal runs its on-read callback on every read";
    n.set_onread_callback(nullptr);

    n.set_range(vorRange(1, 10));
    vorParameterNumeric copy(n);
    n.set_range(vorRange(20, 30));
    EXPECT_EQ(copy.get_double(), 10.0);
    EXPECT_EQ(copy.get_range().high(), 10.0);
    EXPECT_EQ(n.get_double(), 20.0);
    EXPECT_EQ(vorParameterNumeric(SUB_REAL, DIM_NONE, 1).get_range().low(), vorRange::no_bound);
}

TEST(Numeric, SettersHonourTheLockAndNotifyAndIntegersRoundAndSaturate) {
    vorParameterNumeric n(SUB_REAL, DIM_NONE, 1);
    n.set_onmodify_callback(count_modification);
    g_modified = 0;
    n.set_double(2);
    n.set_int(3);
    EXPECT_EQ(g_modified, 2);
    n.lock(1);
    n.set_double(4);
    EXPECT_EQ(n.get_double(), 3.0);
    EXPECT_EQ(g_modified, 2);
    n.lock(0);

    const char* typed[] = {"- 007", "+.5", " 0,25 ", "-0", "a+1"};
    const char* stored[] = {"-7", "0.5", "0,25", "-0", "a+1"};
    for (int i = 0; i < 5; ++i) {
        n.set_normalized_value(typed[i]);
        EXPECT_EQ(n.get_value(), stored[i]);
    }

    // Integer reads round half away from zero and saturate.
    vorParameterNumeric whole(SUB_INT, DIM_NONE, 0);
    const double values[] = {2.5, -2.5, 2.49, -0.4, 1e300, -1e300};
    const int expected[] = {3, -3, 2, 0, INT_MAX, INT_MIN};
    for (int i = 0; i < 6; ++i) {
        whole.set_double(values[i]);
        EXPECT_EQ(whole.get_int(), expected[i]) << values[i];
    }
    whole.set_int(-7);
    EXPECT_EQ(whole.get_value(), "-7");
}

TEST(Numeric, ExpressionsFollowTheirNamesAndResultKindsDimensionsAndUnits) {
    vorParameterPtr map(new vorParameterMap());
    vorParameterPtr a = number(SUB_REAL, 2, DIM_LENGTH);
    vorParameterPtr b = number(SUB_REAL, 0, DIM_LENGTH);
    map->add("a", a);
    map->add("b", b);
    b->set_string("a*3");
    EXPECT_TRUE(b->is_expr());
    EXPECT_EQ(b->get_double(), 6.0);
    a->set_double(5);
    EXPECT_EQ(b->get_double(), 15.0);
    EXPECT_EQ(b->get_string(), "15");
    EXPECT_EQ(b->print(0), "(REAL) a*3 = 15 [L]\n");
    EXPECT_EQ(a->print(0), "(REAL) 5 [L]\n");

    // An operand's failure travels through the operators.
    b->set_string("b + 1");
    EXPECT_EQ(b->evaluate()->subtype(), ERR_EXPRESSION);
    EXPECT_EQ(b->get_double(), 0.0);
    a->set_string("1/0");
    b->set_string("a + 1");
    EXPECT_EQ(b->evaluate()->subtype(), ERR_DIVIDE_BY_ZERO);
    EXPECT_FALSE(b->is_valid());

    b->set_string("\"abc\"");
    EXPECT_EQ(b->get_string(), "abc");
    EXPECT_EQ(b->get_double(), 0.0);

    // Whole-number tests, and the texts of each kind.
    vorParameterNumeric n(SUB_INT, DIM_NONE, -2.5);
    EXPECT_TRUE(n.is_int_value()); // one-sided on purpose
    n.set_double(2.5);
    EXPECT_FALSE(n.is_int_value());
    EXPECT_FALSE(n.is_bool_value());
    vorParameterNumeric flag(SUB_BOOL, DIM_NONE, 2);
    EXPECT_TRUE(flag.is_bool_value());
    EXPECT_FALSE(flag.is_int_value());
    EXPECT_FALSE(vorParameterNumeric(SUB_REAL, DIM_NONE, 1).is_bool_value());

    const vorParameterSubType kinds[] = {SUB_NUMBER, SUB_REAL, SUB_INT, SUB_BOOL, SUB_ANGLE};
    const char* xml[] = {"", "real", "int", "bool", "angle"};
    const char* printed[] = {"(NUMERIC) 5 \n", "(REAL) 5 \n", "(INT) 5 \n", "(BOOL) 5 \n",
                             "(ANGLE) 5 \n"};
    for (int i = 0; i < 5; ++i) {
        vorParameterNumeric p(kinds[i], DIM_NONE, 5);
        EXPECT_EQ(p.get_xml_typename(), xml[i]);
        EXPECT_EQ(p.print(0), printed[i]);
    }
    EXPECT_TRUE(vorParameterNumeric::valid_subtype(SUB_NUMBER));
    EXPECT_FALSE(vorParameterNumeric::valid_subtype(SUB_ENUM));

    const vorParameterSubType N = SUB_NUMBER, I = SUB_INT, R = SUB_REAL, A = SUB_ANGLE,
                              B = SUB_BOOL;
    struct Case {
        vorParameterSubType left;
        const char* op;
        vorParameterSubType right;
        vorParameterSubType result;
    } cases[] = {{N, "+", N, N}, {N, "^", N, N}, {N, "/", N, N}, {I, "+", N, I}, {B, "+", B, I},
                 {I, "*", R, R}, {R, "-", A, A}, {A, "*", A, R}, {I, "/", I, R}, {A, "/", N, A},
                 {A, "/", A, R}, {N, "/", A, R}, {I, "^", N, R}, {I, "%", I, I}, {N, "<", R, B}};
    for (const Case& c : cases) {
        vorParameterPtr result = number(c.left, 7)->operate_binary(c.op, number(c.right, 2));
        EXPECT_EQ(result->subtype(), c.result) << c.left << c.op << c.right;
    }
    EXPECT_EQ(number(I, 7)->operate_binary("/", number(I, 2))->get_double(), 3.5);
    EXPECT_EQ(number(B, 1)->operate_prefix("-")->subtype(), I);
    EXPECT_EQ(number(A, 1)->operate_prefix("-")->subtype(), A);

    vorParameterPtr length = number(SUB_REAL, 2, DIM_LENGTH);
    vorParameterPtr time = number(SUB_REAL, 3, DIM_TIME);
    vorParameterPtr sum = length->operate_binary("+", time);
    ASSERT_FALSE(sum->is_error());
    EXPECT_EQ(as_numeric(sum).get_dim().invalid(), 1);
    EXPECT_EQ(as_numeric(length->operate_binary("*", length)).get_dim(), DIM_AREA);
    EXPECT_EQ(as_numeric(length->operate_binary("/", time)).get_dim(), DIM_VELOCITY);
    EXPECT_EQ(as_numeric(length->operate_binary("^", number(SUB_NUMBER, 3.9))).get_dim(),
              DIM_VOLUME);
    EXPECT_TRUE(length->operate_postfix("mm")->is_error());

    vorParameterPtr area = eval("2mm in");
    EXPECT_EQ(as_numeric(area).get_dim(), DIM_AREA);
    EXPECT_DOUBLE_EQ(area->get_double(), 2 * 25.4);
    EXPECT_EQ(as_numeric(eval("(2*3)mm")).get_dim(), DIM_LENGTH);
    ASSERT_TRUE(vorUnitsUtils::set_units(UNITS_INCH));
    EXPECT_EQ(eval("1in")->get_double(), 1.0);
    EXPECT_DOUBLE_EQ(eval("254mm")->get_double(), 10.0);
    EXPECT_DOUBLE_EQ(eval("3th")->get_double(), 0.003);
    vorUnitsUtils::set_units(UNITS_MM);
    EXPECT_DOUBLE_EQ(eval("1.5m")->get_double(), 1500.0);
}

// The examples of docs/expressions.md check the errors of division by zero,
// "(-8)^(1/3)", overflow, "2!" and "0.5 & 1", and "(-8)^3" and "1 + \"x\"".
TEST(Numeric, OperatorErrorsAreValuesAndComparisonsUseTheTolerance) {
    const struct {
        const char* text;
        vorParameterSubType kind;
    } cases[] = {{"0^-1", ERR_DOMAIN},  {"10^400", ERR_DOMAIN}, {"1e308m", ERR_DOMAIN},
                 {"0 | 2.5", ERR_TYPE}, {"!0.5", ERR_TYPE},     {"1 xor \"a\"", ERR_TYPE}};
    for (const auto& c : cases) {
        vorParameterPtr result = eval(c.text);
        EXPECT_TRUE(result->is_error()) << c.text;
        EXPECT_EQ(result->subtype(), c.kind) << c.text;
    }
    EXPECT_EQ(eval("1 | 0.5")->get_int(), 1); // the evaluator skips the right side
    EXPECT_EQ(eval("2 xor 0")->get_int(), 1);

    // The operator itself tests both operands: an integer or real right
    // operand is no truth value, whatever it holds.
    vorParameterPtr one = number(SUB_NUMBER, 1);
    vorParameterPtr zero = number(SUB_NUMBER, 0);
    for (vorParameterSubType kind : {SUB_INT, SUB_REAL})
        for (double value : {0.0, 1.0}) {
            EXPECT_EQ(one->operate_binary("|", number(kind, value))->subtype(), ERR_TYPE);
            EXPECT_EQ(zero->operate_binary("&", number(kind, value))->subtype(), ERR_TYPE);
        }
    EXPECT_EQ(one->operate_binary("|", number(SUB_BOOL, 0))->get_int(), 1);

    vorParameterPtr error = vorParameterError::create(ERR_INVALID_DATA);
    EXPECT_EQ(one->operate_binary("+", error), error);
    EXPECT_EQ(one->operate_prefix("~")->subtype(), ERR_TYPE);
    EXPECT_EQ(one->operate_postfix("km")->subtype(), ERR_TYPE);

    // Comparisons use the tolerance.
    ASSERT_EQ(giKernelResources::point_tolerance(), 1e-6);
    const struct {
        const char* text;
        int truth;
    } comparisons[] = {{"1 == 1.0000001", 1}, {"1 != 1.0000001", 0}, {"1 < 1.0000001", 0},
                       {"1 <= 1.0000001", 1}, {"1.0000001 > 1", 0},  {"1 >= 1.0000001", 1},
                       {"1 < 1.1", 1},        {"2 > 1", 1},          {"1 == 1.1", 0}};
    for (const auto& c : comparisons) {
        vorParameterPtr result = eval(c.text);
        EXPECT_EQ(result->subtype(), SUB_BOOL) << c.text;
        EXPECT_EQ(result->get_int(), c.truth) << c.text;
    }
    vorParameterNumeric a(SUB_REAL, DIM_NONE, 2.0), b(SUB_INT, DIM_LENGTH, 2.0000001);
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a.expression_equivalent(2.0000005));
}

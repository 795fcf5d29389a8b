// The conversion, numeric and mathematical functions, and the examples of
// docs/functions.md.

#include "../support/doc_examples.h"
#include "lib_test_tree.h"

#include "../support/prelude.h"

#include <cmath>
#include <limits>

namespace {

const vorParameterNumeric& as_numeric(const vorParameterPtr& p) {
    return *vorParameterNumeric::ut_dynamic_cast(p.par());
}

} // namespace

TEST(LibFunctionsDocs, EveryExampleGivesTheDocumentedResult) {
    vorParameterPtr tree = example_tree();
    expect_doc_examples("docs/functions.md", 60, [&](const std::string& expression) {
        return eval(tree, expression.c_str())->get_string().str();
    });
}

// The examples of docs/functions.md (above) are not repeated below.
TEST(LibMath, ArgumentsDomainsAndResultKinds) {
    vorParameterPtr tree = example_tree();
    for (const char* bad :
         {"sqrt()", "sqrt({4})", "sqrt(hypot)", "atan2(1)", "compare(1; 2)", "sign(passes)"})
        EXPECT_EQ(eval(tree, bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;
    for (const char* outside :
         {"asin(1.0001)", "acos(-2)", "log(-1)", "sqrt(-1e-300)", "tan(-270)", "exp(710)"})
        EXPECT_EQ(eval(tree, outside)->subtype(), ERR_DOMAIN) << outside;

    // Results are dimensionless whatever the argument; inverse functions
    // give angles.
    EXPECT_EQ(as_numeric(eval(tree, "sqrt(depth * depth)")).get_dim(), vorDimensions(DIM_NONE));
    EXPECT_EQ(eval(tree, "abs(-3mm)")->subtype(), SUB_REAL);
    EXPECT_EQ(eval(tree, "asin(0.5)")->subtype(), SUB_ANGLE);
    EXPECT_EQ(eval(tree, "compare(1; 1; 0)")->subtype(), SUB_BOOL);
    EXPECT_EQ(eval(tree, "sign(-0)")->get_double(), 0.0);

    // The angle unit is read at every call.
    vorParameterLib::set_angle_unit(GI_RADIANS);
    EXPECT_NEAR(eval(tree, "sin(1.5707963267948966)")->get_double(), 1.0, 1e-15);
    EXPECT_NEAR(eval(tree, "atan(1)")->get_double(), std::atan(1.0), 1e-15);
    EXPECT_EQ(eval(tree, "tan(1.5707963267948966)")->subtype(), ERR_DOMAIN);
    vorParameterLib::set_angle_unit(GI_DEGREES);
    EXPECT_EQ(eval(tree, "atan(1)")->get_double(), 45.0);

    // Numbers that are no numbers never reach the computation.
    for (double strange : {std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(vorParameterLibFunctions::sqrt(arguments({real(strange)}))->subtype(),
                  ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(vorParameterLibFunctions::abs(real(1))->subtype(), ERR_INVALID_ARGUMENTS)
        << "an argument list that is no list holds no arguments";
    EXPECT_EQ(
        vorParameterLibFunctions::cos(arguments({vorParameterLib::error(ERR_DOMAIN)}))->subtype(),
        ERR_INVALID_ARGUMENTS);
}

TEST(LibNumeric, AggregatesConversionsAndRounding) {
    vorParameterPtr tree = example_tree();
    vorParameterPtr total = eval(tree, "sum(depth; 2mm; 1in)");
    EXPECT_DOUBLE_EQ(total->get_double(), 39.4);
    EXPECT_EQ(as_numeric(total).get_dim(), vorDimensions(DIM_LENGTH));
    EXPECT_EQ(as_numeric(eval(tree, "max(passes)")).get_dim(), vorDimensions(DIM_LENGTH));
    EXPECT_EQ(eval(tree, "sum(int(1); int(2))")->subtype(), SUB_INT);
    EXPECT_EQ(eval(tree, "sum(int(1); 2)")->subtype(), SUB_REAL);
    EXPECT_EQ(eval(tree, "mean(int(1); int(2))")->subtype(), SUB_REAL);
    EXPECT_EQ(eval(tree, "min(asin(1); acos(1))")->subtype(), SUB_ANGLE);
    EXPECT_EQ(as_numeric(eval(tree, "int(depth / 5)")).get_dim(), vorDimensions(DIM_LENGTH));
    EXPECT_EQ(vorParameterLib::sum(arguments({real(1e308), real(1e308)}))->subtype(), ERR_DOMAIN);

    for (const char* bad : {"max(1mm; 1)", "mean(1mm * 1mm; 1mm)", "sum(1mm + 1 * 1mm * 1mm)"})
        EXPECT_EQ(eval(tree, bad)->subtype(), ERR_DIMENSIONS) << bad; // an invalid one adds none
    for (const char* bad : {"sum()", "min({})", "max(1; 'a')", "sum({1; {2}})", "mean(passes; 1)",
                            "real('abc')", "string('a'; 2)"})
        EXPECT_EQ(eval(tree, bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;
    EXPECT_EQ(eval(tree, "int(-2147483649)")->subtype(), ERR_DOMAIN);
    EXPECT_EQ(eval(tree, "int(-0.5)")->get_string(), "0");
    EXPECT_EQ(eval(tree, "int(' 2.9 ')")->get_double(), 2.0);
    EXPECT_EQ(eval(tree, "int(2147483647.5)")->get_double(), 2147483647.0);
    EXPECT_EQ(eval(tree, "bool('0.0')")->get_int(), 0);

    // Places are clamped to 0 ... 16; the result is a dimensionless real.
    vorParameterPtr r = eval(tree, "round(depth / 7; 40)");
    EXPECT_EQ(r->get_string(), "1.7142857142857142");
    EXPECT_EQ(as_numeric(r).get_dim(), vorDimensions(DIM_NONE));
    EXPECT_EQ(eval(tree, "round(1.5; -3)")->get_string(), "2");
    EXPECT_EQ(eval(tree, "round(0.26; 1.4)")->get_string(), "0.3");
    EXPECT_EQ(eval(tree, "round(1e300; 0)")->get_double(), 1e300) << "beyond int, still whole";
    EXPECT_EQ(eval(tree, "round(-1e300; 2)")->get_double(), -1e300);
}

TEST(LibNumeric, ParametersAsArgumentsAndConvertInTheGivenUnit) {
    vorParameterPtr tree = example_tree();
    EXPECT_EQ(eval(tree, "if(0; depth; feed)").get(), tree["feed"].get()) << "the argument itself";
    EXPECT_EQ(eval(tree, "select(1; 'a'; 2)")->subtype(), ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(eval(tree, "if('1'; 2; 3)")->subtype(), ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(eval(tree, "locked(depth)")->get_int(), 0);
    EXPECT_EQ(eval(tree, "size(this)")->get_int(), tree->size());
    EXPECT_EQ(eval(tree, "desc(round)")->get_string(),
              "Round value to the specified number of decimal places.");
    tree->add("note", real(1))->set_desc("${depth} deep");
    EXPECT_EQ(eval(tree, "desc(note)")->get_string(), "${depth} deep") << "results are final";
    for (const char* bad : {"active()", "locked(1; 2)", "error()"})
        EXPECT_EQ(eval(tree, bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;

    // evaluate reads names in the library's evaluation scope unless given one
    // (without one, the documented examples find no "depth").
    vorParameterLib::set_eval_scope(tree);
    EXPECT_EQ(eval(tree, "evaluate('depth * 2')")->get_double(), 24.0);
    vorParameterLib::set_eval_scope(vorParameterPtr());
    EXPECT_EQ(eval(tree, "evaluate(1)")->subtype(), ERR_INVALID_ARGUMENTS);

    vorParameterPtr copies = eval(tree, "get_func_args(depth; 'x')");
    ASSERT_EQ(copies->size(), 2);
    EXPECT_NE(copies["[0]"].get(), tree["depth"].get()) << "copies, not the tree's nodes";
    EXPECT_EQ(copies["[0]"]->get_double(), 12.0);
    EXPECT_EQ(eval(tree, "size(get_func_args())")->get_int(), 0);

    EXPECT_NEAR(eval(tree, "convert(depth * depth; ' IN ')")->get_double(), 144 / 645.16, 1e-15);
    EXPECT_EQ(eval(tree, "convert(depth; 'deg')")->subtype(), ERR_DIMENSIONS);
    EXPECT_EQ(eval(tree, "convert(depth; '!')")->subtype(), ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(eval(tree, "convert(depth; 3)")->subtype(), ERR_INVALID_ARGUMENTS);
    vorParameterLib::set_angle_unit(GI_RADIANS);
    EXPECT_EQ(eval(tree, "convert(3.141592653589793; 'deg')")->get_double(), 180.0);
    vorParameterLib::set_angle_unit(GI_DEGREES);
}

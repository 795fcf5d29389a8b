// The vector and geometry functions of the standard library.

#include "../support/prelude.h"

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

/// A tree with a length vector "axis" (X, Y, Z accessors) and a text "name".
class LibGeometry : public ::testing::Test {
protected:
    LibGeometry() {
        vorParameterPtr length(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 0.0));
        axis = root->add("axis", vorParameterPtr(new vorParameterVector(3, length)));
        static_cast<vorParameterVector&>(*axis).set_access_type(VECTOR_ACCESS_XYZ);
        root->add("name", text("x"));
    }
    ~LibGeometry() override { vorParameterLib::set_angle_unit(GI_DEGREES); }

    vorParameterPtr eval(const char* text) { return vorEvaluator(root.get()).evaluate(text); }
    double value(const char* text) { return eval(text)->get_double(); }

    vorParameterPtr root{new vorParameterLibRoot()};
    vorParameterPtr axis;
};

} // namespace

TEST_F(LibGeometry, ResultsWritesAnglesSignsExtremesAndBadArguments) {
    vorParameterPtr unit = eval("unit({0; 0; 5})");
    const auto* vector = vorParameterVector::ut_dynamic_cast(unit.get());
    ASSERT_NE(vector, nullptr);
    EXPECT_EQ(vector->access_type(), VECTOR_ACCESS_XYZ);
    EXPECT_EQ((*unit)["z"]->get_double(), 1.0);
    EXPECT_EQ((*unit)["X"]->subtype(), SUB_REAL);

    vorParameterPtr distance = eval("distance({0; 0; 0}; {3; 4; 0})");
    EXPECT_EQ(distance->subtype(), SUB_REAL);
    EXPECT_EQ(static_cast<vorParameterNumeric&>(*distance).get_dim(), vorDimensions(DIM_LENGTH));
    EXPECT_EQ(eval("angle({1; 0; 0}; {0; 1; 0})")->subtype(), SUB_ANGLE);
    EXPECT_EQ(eval("parallel({1; 0; 0}; {1; 0; 0})")->subtype(), SUB_BOOL);

    // Signs and the tolerance of directions.
    const char* pairs[] = {"{1; 2; 3}; {-4; 0.5; 2}", "{0; 1; 0}; {-1; -1; 3}"};
    for (const char* pair : pairs) {
        std::string forward = std::string("apparent_angle(") + pair + "; {0; 0; 1})";
        std::string flipped = std::string("apparent_angle(") + pair + "; {0; 0; -1})";
        EXPECT_NEAR(value(forward.c_str()), -value(flipped.c_str()), 1e-9) << pair;
    }
    EXPECT_EQ(value("apparent_angle({1; 0; 0}; {-1; 0; 0}; {0; 0; -1})"), 180.0);
    EXPECT_EQ(value("parallel({1; 0; 0}; {1; 1e-9; 0})"), 1.0);
    EXPECT_EQ(value("parallel({1; 0; 0}; {-1; 1e-9; 0})"), 1.0);
    EXPECT_EQ(value("parallel({1; 0; 0}; {1; 1e-3; 0})"), 0.0);
    EXPECT_EQ(eval("normal({1; 0; 0}; {1; 1e-9; 0})")->subtype(), ERR_DOMAIN);
    EXPECT_EQ(eval("apparent_angle({1; 0; 0}; {1; 1; 0}; {-2; 0; 0})")->subtype(), ERR_DOMAIN);

    // Extreme components neither overflow nor underflow.
    EXPECT_NEAR(value("unit({1e300; 1e300; 0}).x"), std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(value("unit({1e-300; 0; 1e-300}).z"), std::sqrt(0.5), 1e-15);
    EXPECT_EQ(value("angle({1e-300; 0; 0}; {0; 1e300; 0})"), 90.0);
    EXPECT_EQ(value("normal({1e300; 0; 0}; {0; 1e300; 0}).z"), 1.0);
    EXPECT_NEAR(value("elevation({1e-300; 0; 1e-300})"), 45.0, 1e-12);
    EXPECT_NEAR(value("distance({0; 0; 0}; {1e200; 1e200; 0})"), std::sqrt(2.0) * 1e200, 1e186);
    EXPECT_EQ(eval("distance({-1e308; 0; 0}; {1e308; 0; 0})")->subtype(), ERR_DOMAIN);

    for (const char* bad :
         {"unit()", "unit({1; 2})", "unit({1; 2; 3; 4})", "unit({1; 'a'; 3})", "unit({1; {2}; 3})",
          "unit(5)", "unit(name)", "angle({1; 0; 0})", "angle({1; 0; 0}; {0; 1; 0}; {0; 0; 1})",
          "apparent_angle({1; 0; 0}; {0; 1; 0})", "normal({1; 0; 0}; 3)", "parallel({1; 0; 0})",
          "azimuth({1; 0; 0}; {1; 0; 0})", "elevation('up')", "distance({0; 0; 0})",
          "distance({0; 0}; {0; 0})"})
        EXPECT_EQ(eval(bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;
    for (const char* zero : {"unit({0; 0; 0})", "angle({0; 0; 0}; {1; 0; 0})",
                             "apparent_angle({1; 0; 0}; {0; 1; 0}; {0; 0; 0})",
                             "normal({0; 0; 0}; {1; 0; 0})", "azimuth({0; 0; 0})"})
        EXPECT_EQ(eval(zero)->subtype(), ERR_DOMAIN) << zero;

    EXPECT_EQ(eval("set_vector(axis; 0; 0; 1)").get(), axis.get());
    EXPECT_EQ(value("axis.z"), 1.0);
    eval("set_point(axis; {1; 2; 3})");
    EXPECT_EQ(value("axis.x") + value("axis.y") + value("axis.z"), 6.0);
    EXPECT_EQ((*axis)["Y"]->subtype(), SUB_REAL);
    EXPECT_EQ(value("length(axis)"), 3.0);

    axis->lock(1);
    EXPECT_EQ(eval("set_vector(axis; {7; 7; 7})")->subtype(), ERR_UNKNOWN);
    axis->lock(0);
    (*axis)["2"]->lock(1);
    EXPECT_EQ(eval("set_point(axis; 7; 7; 7)")->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(value("axis.x"), 1.0) << "a refused write writes nothing";

    for (const char* bad :
         {"set_vector(name; 1; 2; 3)", "set_vector({1; 'a'; 3}; 1; 2; 3)", "set_vector(axis; 1; 2)",
          "set_vector(axis; 1; 2; 3; 4)", "set_vector(axis)", "set_point(axis; {1; 2})",
          "set_point(axis; 1; 'a'; 3)"})
        EXPECT_EQ(eval(bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;

    vorParameterLib::set_angle_unit(GI_RADIANS);
    EXPECT_NEAR(value("angle({1; 0; 0}; {0; 1; 0})"), pi / 2, 1e-15);
    EXPECT_NEAR(value("azimuth({0; -1; 0})"), 3 * pi / 2, 1e-15);
    EXPECT_NEAR(value("azimuth({1; -1e-300; 0})"), 0.0, 1e-15) << "stays below one turn";
    EXPECT_NEAR(value("elevation({0; 0; 1})"), pi / 2, 1e-15);
    EXPECT_NEAR(value("apparent_angle({0; 1; 0}; {1; 0; 0}; {0; 0; 1})"), -pi / 2, 1e-15);
}

#include "../support/prelude.h"

#include <cmath>
#include <limits>

namespace {

// Both settings are process-wide; every test leaves the defaults behind.
class HostSettings : public ::testing::Test {
protected:
    void TearDown() override {
        vorUnitsUtils::set_units(UNITS_MM);
        giKernelResources::set_point_tolerance(1e-6);
    }
};

} // namespace

TEST_F(HostSettings, UnitScalesFollowTheSystemAndToleranceRefusesUnusableValues) {
    const auto unknown = static_cast<vorUnitsType>(7);
    EXPECT_EQ(vorUnitsUtils::get_units(), UNITS_MM);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(UNITS_MM), 1.0);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(UNITS_INCH), 25.4);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(unknown), 1.0);

    ASSERT_TRUE(vorUnitsUtils::set_units(UNITS_INCH));
    EXPECT_EQ(vorUnitsUtils::get_units(), UNITS_INCH);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(UNITS_MM), 1.0 / 25.4);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(UNITS_INCH), 1.0);
    EXPECT_DOUBLE_EQ(vorUnitsUtils::get_scale_from(unknown), 1.0);
    // A thousandth of an inch, expressed in millimetres and back.
    EXPECT_DOUBLE_EQ(0.0254 * vorUnitsUtils::get_scale_from(UNITS_MM), 0.001);

    EXPECT_FALSE(vorUnitsUtils::set_units(unknown));
    EXPECT_FALSE(vorUnitsUtils::set_units(static_cast<vorUnitsType>(-1)));
    EXPECT_EQ(vorUnitsUtils::get_units(), UNITS_INCH);

    EXPECT_EQ(giKernelResources::point_tolerance(), 1e-6);
    ASSERT_TRUE(giKernelResources::set_point_tolerance(1e-3));
    for (double bad : {std::nan(""), -1e-9, std::numeric_limits<double>::infinity(),
                       -std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(giKernelResources::set_point_tolerance(bad)) << bad;
        EXPECT_EQ(giKernelResources::point_tolerance(), 1e-3) << bad;
    }
    EXPECT_TRUE(giKernelResources::set_point_tolerance(0.0));
    EXPECT_EQ(giKernelResources::point_tolerance(), 0.0);
}

//===- giAngle.cpp - Angles with exact quadrant handling ------------------===//
//
// Trigonometry of giAngle. Angles in degrees are split exactly into a
// quadrant and a remainder of at most 45 degrees, so that the multiples of
// 90 degrees, where sine and cosine are 0 and +-1, never see a rounded pi.
//
//===----------------------------------------------------------------------===//
#include "vorparameter/platform/giAngle.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct SinCos {
    double sine;
    double cosine;
};

/// Sine and cosine of an angle of at most 45 degrees in magnitude. The
/// remainders 30 and 45 have exact answers that sin and cos of a rounded
/// pi/6 or pi/4 would miss by an ulp (which would make tan(45) != 1).
SinCos sin_cos_of_remainder(double degrees) {
    double magnitude = std::fabs(degrees);
    if (magnitude == 30.0)
        return {std::copysign(0.5, degrees), std::sqrt(3.0) / 2.0};
    if (magnitude == 45.0)
        return {std::copysign(std::sqrt(0.5), degrees), std::sqrt(0.5)};
    double radians = degrees * (kPi / 180.0);
    return {std::sin(radians), std::cos(radians)};
}

SinCos sin_cos_of_degrees(double degrees) {
    if (!std::isfinite(degrees))
        return {kNaN, kNaN};
    // fmod is exact. Subtracting the nearest multiple of 90 is exact too:
    // the two operands lie within a factor of two of each other (or the
    // multiple is zero), so no bit of the angle is lost.
    double turn = std::fmod(degrees, 360.0);
    double quarters = std::round(turn / 90.0);
    SinCos r = sin_cos_of_remainder(turn - quarters * 90.0);
    switch ((static_cast<int>(quarters) % 4 + 4) % 4) {
    case 1:
        return {r.cosine, -r.sine};
    case 2:
        return {-r.sine, -r.cosine};
    case 3:
        return {-r.cosine, r.sine};
    default:
        return r;
    }
}

/// The angle in degrees whose sine is `magnitude` (non-negative), when that
/// is one of the exactly known values 0, 1/2 and 1.
bool exact_asin_degrees(double magnitude, double& degrees) {
    if (magnitude == 0.0)
        degrees = 0.0;
    else if (magnitude == 0.5)
        degrees = 30.0;
    else if (magnitude == 1.0)
        degrees = 90.0;
    else
        return false;
    return true;
}

SinCos sin_cos(const giAngle& angle) {
    if (angle.unit() == GI_DEGREES)
        return sin_cos_of_degrees(angle.degrees());
    return {std::sin(angle.radians()), std::cos(angle.radians())};
}

} // namespace

double giAngle::sin() const {
    return sin_cos(*this).sine;
}

double giAngle::cos() const {
    return sin_cos(*this).cosine;
}

double giAngle::tan(int& status) const {
    SinCos sc = sin_cos(*this);
    // A double angle is only known to about an ulp of itself, and near a
    // pole the cosine is about the angle's distance from the pole; so a
    // cosine within a few ulps of the angle counts as zero. Exact degree
    // poles give a cosine of exactly zero.
    double tolerance =
        4.0 * std::numeric_limits<double>::epsilon() * std::max(1.0, std::fabs(radians()));
    if (!(std::fabs(sc.cosine) > tolerance)) {
        status = 1;
        return 0.0;
    }
    status = 0;
    return sc.sine / sc.cosine;
}

giAngle giAngle::from_sine(double sine) {
    double s = std::clamp(sine, -1.0, 1.0);
    double degrees = 0.0;
    if (exact_asin_degrees(std::fabs(s), degrees))
        return giAngle(GI_DEGREES, std::copysign(degrees, s));
    return giAngle(GI_RADIANS, std::asin(s));
}

giAngle giAngle::from_cosine(double cosine) {
    double c = std::clamp(cosine, -1.0, 1.0);
    double degrees = 0.0;
    // acos(c) = 90 - asin(c), which is exact for the exactly known values.
    if (exact_asin_degrees(std::fabs(c), degrees))
        return giAngle(GI_DEGREES, 90.0 - std::copysign(degrees, c));
    return giAngle(GI_RADIANS, std::acos(c));
}

giAngle giAngle::from_tangent(double tangent) {
    double magnitude = std::fabs(tangent);
    if (magnitude == 0.0)
        return giAngle(GI_DEGREES, std::copysign(0.0, tangent));
    if (magnitude == 1.0)
        return giAngle(GI_DEGREES, std::copysign(45.0, tangent));
    if (std::isinf(magnitude))
        return giAngle(GI_DEGREES, std::copysign(90.0, tangent));
    return giAngle(GI_RADIANS, std::atan(tangent));
}

giAngle giAngle::from_sine_cosine(double y, double x) {
    if (std::isnan(y) || std::isnan(x))
        return giAngle(GI_RADIANS, kNaN);
    // On the axes and the diagonals the answer is exact in degrees. Signed
    // zeros are ignored so that the range stays (-180, 180].
    if (y == 0.0)
        return giAngle(GI_DEGREES, x < 0.0 ? 180.0 : 0.0);
    if (x == 0.0)
        return giAngle(GI_DEGREES, std::copysign(90.0, y));
    if (std::fabs(y) == std::fabs(x))
        return giAngle(GI_DEGREES, std::copysign(x > 0.0 ? 45.0 : 135.0, y));
    return giAngle(GI_RADIANS, std::atan2(y, x));
}

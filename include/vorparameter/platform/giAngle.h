//===- giAngle.h - Angles with exact quadrant handling ----------*- C++ -*-===//
//
// An angle keeps the unit it was given in, together with its value, so that
// an angle entered in degrees is never rounded through radians before it is
// needed. Two consequences matter to callers:
//
//  - Angles in degrees are reduced exactly to a quadrant before any
//    trigonometry, so sin() and cos() of every multiple of 90 degrees are
//    exactly 0, 1 or -1 (and of 30, 45, 60 ... degrees exactly 0.5 or
//    sqrt(0.5) where that is the true value). giAngle(GI_DEGREES, 90).cos()
//    is 0, not 6e-17.
//
//  - tan(status) reports a pole instead of returning a huge number: status
//    is set to 1 (and 0.0 returned) when the cosine is zero to within a few
//    units in the last place of the angle itself, so 90 and 270 degrees
//    exactly, and M_PI/2 radians, all report it; so do non-finite angles.
//    Otherwise status is 0.
//
// The inverse functions (from_sine, from_cosine, from_tangent and
// from_sine_cosine) return the exact angle in degrees for the inputs whose
// answer is a multiple of 30 or 45 degrees (asin(1) is 90 degrees exactly,
// atan2(1, 0) likewise), and an angle in radians otherwise; read the result
// with value(unit) in whichever unit the caller works.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GIANGLE_H
#define VORPARAMETER_PLATFORM_GIANGLE_H

#include "vorparameter/platform/vorExport.h"

/// The unit in which an angle is given or read.
enum giAngleType { GI_DEGREES = 0, GI_RADIANS = 1 };

/// An angle in degrees or radians. Default: zero. Values are kept as given,
/// not wrapped into one turn (450 degrees stays 450).
class VOR_API giAngle {
public:
    constexpr giAngle() = default;
    /// Any unit other than GI_RADIANS is taken as degrees.
    constexpr giAngle(giAngleType unit, double value)
        : unit_(unit == GI_RADIANS ? GI_RADIANS : GI_DEGREES)
        , value_(value) {}

    /// asin: the angle in [-90, 90] degrees with this sine. The argument is
    /// clamped to [-1, 1] so that rounding just past 1 still gives 90.
    static giAngle from_sine(double sine);
    /// acos: the angle in [0, 180] degrees with this cosine (argument clamped
    /// to [-1, 1]).
    static giAngle from_cosine(double cosine);
    /// atan: the angle in [-90, 90] degrees with this tangent; an infinite
    /// tangent gives exactly +-90.
    static giAngle from_tangent(double tangent);
    /// atan2: the direction of (x, y), in (-180, 180] degrees, its quadrant
    /// chosen by the signs of both values. (0, 0) gives 0.
    static giAngle from_sine_cosine(double y, double x);

    /// The unit the angle was made in; value(unit()) is exactly that value.
    constexpr giAngleType unit() const { return unit_; }
    constexpr double value(giAngleType unit) const {
        return unit == GI_RADIANS ? radians() : degrees();
    }
    constexpr double radians() const {
        return unit_ == GI_RADIANS ? value_ : value_ * (kPi / 180.0);
    }
    constexpr double degrees() const {
        return unit_ == GI_DEGREES ? value_ : value_ * (180.0 / kPi);
    }

    double sin() const;
    double cos() const;
    /// The tangent, with `status` 0; or 0.0 with `status` 1 when the angle
    /// has no finite tangent (see the file comment for the tolerance).
    double tan(int& status) const;

private:
    static constexpr double kPi = 3.14159265358979323846;

    giAngleType unit_ = GI_DEGREES;
    double value_ = 0.0;
};

#endif // VORPARAMETER_PLATFORM_GIANGLE_H

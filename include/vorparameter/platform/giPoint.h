//===- giPoint.h - Positions in 2D and 3D -----------------------*- C++ -*-===//
//
// Positions of the geometry library. A point is not a vector: points do not
// add or scale. The difference of two points is a vector, and a point moved
// by a vector is a point, which keeps positions and displacements apart in
// host code (a transform moves a point but only turns a vector; see
// giXform3.h).
//
// Equality (== and !=) is exact; use distance_to() with the host's
// coincidence tolerance to decide whether two computed points are the same.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GIPOINT_H
#define VORPARAMETER_PLATFORM_GIPOINT_H

#include "vorparameter/platform/giVector.h"

/// A position in the plane. Default: the origin.
class giPoint2 {
public:
    constexpr giPoint2() = default;
    constexpr giPoint2(double x, double y)
        : x_(x)
        , y_(y) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }

    constexpr giPoint2& operator+=(const giVector2& v) {
        x_ += v.x();
        y_ += v.y();
        return *this;
    }
    constexpr giPoint2& operator-=(const giVector2& v) {
        x_ -= v.x();
        y_ -= v.y();
        return *this;
    }

    double distance_to(const giPoint2& other) const;

private:
    double x_ = 0.0;
    double y_ = 0.0;
};

constexpr giVector2 operator-(const giPoint2& a, const giPoint2& b) {
    return {a.x() - b.x(), a.y() - b.y()};
}
constexpr giPoint2 operator+(giPoint2 p, const giVector2& v) {
    return p += v;
}
constexpr giPoint2 operator-(giPoint2 p, const giVector2& v) {
    return p -= v;
}
constexpr bool operator==(const giPoint2& a, const giPoint2& b) {
    return a.x() == b.x() && a.y() == b.y();
}
constexpr bool operator!=(const giPoint2& a, const giPoint2& b) {
    return !(a == b);
}

inline double giPoint2::distance_to(const giPoint2& other) const {
    return (*this - other).length();
}

/// A position in space. Default: the origin.
class giPoint3 {
public:
    constexpr giPoint3() = default;
    constexpr giPoint3(double x, double y, double z)
        : x_(x)
        , y_(y)
        , z_(z) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }
    constexpr double z() const { return z_; }

    constexpr giPoint3& operator+=(const giVector3& v) {
        x_ += v.x();
        y_ += v.y();
        z_ += v.z();
        return *this;
    }
    constexpr giPoint3& operator-=(const giVector3& v) {
        x_ -= v.x();
        y_ -= v.y();
        z_ -= v.z();
        return *this;
    }

    double distance_to(const giPoint3& other) const;

private:
    double x_ = 0.0;
    double y_ = 0.0;
    double z_ = 0.0;
};

constexpr giVector3 operator-(const giPoint3& a, const giPoint3& b) {
    return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
}
constexpr giPoint3 operator+(giPoint3 p, const giVector3& v) {
    return p += v;
}
constexpr giPoint3 operator-(giPoint3 p, const giVector3& v) {
    return p -= v;
}
constexpr bool operator==(const giPoint3& a, const giPoint3& b) {
    return a.x() == b.x() && a.y() == b.y() && a.z() == b.z();
}
constexpr bool operator!=(const giPoint3& a, const giPoint3& b) {
    return !(a == b);
}

inline double giPoint3::distance_to(const giPoint3& other) const {
    return (*this - other).length();
}

#endif // VORPARAMETER_PLATFORM_GIPOINT_H

//===- giVector.h - Vectors and unit vectors in 2D and 3D -------*- C++ -*-===//
//
// Free vectors (displacements and directions) of the geometry library.
//
// giVector2 and giVector3 add, subtract, scale and measure; a point minus a
// point is one (giPoint.h). giUnitVec2 and giUnitVec3 are directions that are
// unit length by construction and convert implicitly to the matching vector,
// so a unit vector can be passed wherever a vector is read.
//
// Zero-vector rule: a unit vector made from a vector of zero or non-finite
// length is the X axis. A caller that must tell such input apart uses
// try_from(), which returns no value instead of substituting the X axis.
//
// Equality (== and !=) is exact, component by component. Compare with a
// tolerance wherever rounding may have happened.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GIVECTOR_H
#define VORPARAMETER_PLATFORM_GIVECTOR_H

#include <cmath>
#include <optional>

//===----------------------------------------------------------------------===//
// giVector2
//===----------------------------------------------------------------------===//

/// A displacement in the plane. Default: the zero vector.
class giVector2 {
public:
    constexpr giVector2() = default;
    constexpr giVector2(double x, double y)
        : x_(x)
        , y_(y) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }

    constexpr double dot(const giVector2& other) const { return x_ * other.x_ + y_ * other.y_; }
    /// The z component of the 3D cross product: positive when `other` is
    /// counter-clockwise from this vector.
    constexpr double cross(const giVector2& other) const { return x_ * other.y_ - y_ * other.x_; }
    constexpr double squared_length() const { return dot(*this); }
    double length() const { return std::sqrt(squared_length()); }
    /// This vector scaled to unit length; the zero vector stays zero.
    giVector2 normalised() const;

    constexpr giVector2& operator+=(const giVector2& v) {
        x_ += v.x_;
        y_ += v.y_;
        return *this;
    }
    constexpr giVector2& operator-=(const giVector2& v) {
        x_ -= v.x_;
        y_ -= v.y_;
        return *this;
    }
    constexpr giVector2& operator*=(double s) {
        x_ *= s;
        y_ *= s;
        return *this;
    }
    constexpr giVector2& operator/=(double s) {
        x_ /= s;
        y_ /= s;
        return *this;
    }

private:
    double x_ = 0.0;
    double y_ = 0.0;
};

constexpr giVector2 operator+(giVector2 a, const giVector2& b) {
    return a += b;
}
constexpr giVector2 operator-(giVector2 a, const giVector2& b) {
    return a -= b;
}
constexpr giVector2 operator-(const giVector2& v) {
    return {-v.x(), -v.y()};
}
constexpr giVector2 operator*(giVector2 v, double s) {
    return v *= s;
}
constexpr giVector2 operator*(double s, giVector2 v) {
    return v *= s;
}
constexpr giVector2 operator/(giVector2 v, double s) {
    return v /= s;
}
constexpr bool operator==(const giVector2& a, const giVector2& b) {
    return a.x() == b.x() && a.y() == b.y();
}
constexpr bool operator!=(const giVector2& a, const giVector2& b) {
    return !(a == b);
}

inline giVector2 giVector2::normalised() const {
    double len = length();
    return len > 0.0 ? *this / len : *this;
}

//===----------------------------------------------------------------------===//
// giVector3
//===----------------------------------------------------------------------===//

/// A displacement in space. Default: the zero vector.
class giVector3 {
public:
    constexpr giVector3() = default;
    constexpr giVector3(double x, double y, double z)
        : x_(x)
        , y_(y)
        , z_(z) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }
    constexpr double z() const { return z_; }

    constexpr double dot(const giVector3& other) const {
        return x_ * other.x_ + y_ * other.y_ + z_ * other.z_;
    }
    /// Right-handed: X cross Y is Z.
    constexpr giVector3 cross(const giVector3& other) const {
        return {y_ * other.z_ - z_ * other.y_, z_ * other.x_ - x_ * other.z_,
                x_ * other.y_ - y_ * other.x_};
    }
    constexpr double squared_length() const { return dot(*this); }
    double length() const { return std::sqrt(squared_length()); }
    /// This vector scaled to unit length; the zero vector stays zero.
    giVector3 normalised() const;

    constexpr giVector3& operator+=(const giVector3& v) {
        x_ += v.x_;
        y_ += v.y_;
        z_ += v.z_;
        return *this;
    }
    constexpr giVector3& operator-=(const giVector3& v) {
        x_ -= v.x_;
        y_ -= v.y_;
        z_ -= v.z_;
        return *this;
    }
    constexpr giVector3& operator*=(double s) {
        x_ *= s;
        y_ *= s;
        z_ *= s;
        return *this;
    }
    constexpr giVector3& operator/=(double s) {
        x_ /= s;
        y_ /= s;
        z_ /= s;
        return *this;
    }

private:
    double x_ = 0.0;
    double y_ = 0.0;
    double z_ = 0.0;
};

constexpr giVector3 operator+(giVector3 a, const giVector3& b) {
    return a += b;
}
constexpr giVector3 operator-(giVector3 a, const giVector3& b) {
    return a -= b;
}
constexpr giVector3 operator-(const giVector3& v) {
    return {-v.x(), -v.y(), -v.z()};
}
constexpr giVector3 operator*(giVector3 v, double s) {
    return v *= s;
}
constexpr giVector3 operator*(double s, giVector3 v) {
    return v *= s;
}
constexpr giVector3 operator/(giVector3 v, double s) {
    return v /= s;
}
constexpr bool operator==(const giVector3& a, const giVector3& b) {
    return a.x() == b.x() && a.y() == b.y() && a.z() == b.z();
}
constexpr bool operator!=(const giVector3& a, const giVector3& b) {
    return !(a == b);
}

inline giVector3 giVector3::normalised() const {
    double len = length();
    return len > 0.0 ? *this / len : *this;
}

//===----------------------------------------------------------------------===//
// giUnitVec2
//===----------------------------------------------------------------------===//

/// A direction in the plane, always of unit length. Default: the X axis.
class giUnitVec2 {
public:
    constexpr giUnitVec2() = default;
    /// The direction of `v`; the X axis when `v` has zero or non-finite length.
    explicit giUnitVec2(const giVector2& v)
        : v_(try_from(v).value_or(giUnitVec2()).v_) {}
    explicit giUnitVec2(double x, double y)
        : giUnitVec2(giVector2(x, y)) {}

    /// The direction of `v`, or no value when `v` has zero or non-finite length.
    static std::optional<giUnitVec2> try_from(const giVector2& v);

    constexpr double x() const { return v_.x(); }
    constexpr double y() const { return v_.y(); }
    constexpr const giVector2& vector() const { return v_; }
    constexpr operator const giVector2&() const { return v_; }

    constexpr double dot(const giVector2& other) const { return v_.dot(other); }
    constexpr double cross(const giVector2& other) const { return v_.cross(other); }
    constexpr giUnitVec2 operator-() const { return giUnitVec2(-v_, Unit{}); }

private:
    struct Unit {}; // tags components that are already unit length
    constexpr giUnitVec2(const giVector2& unit, Unit)
        : v_(unit) {}

    giVector2 v_{1.0, 0.0};
};

inline std::optional<giUnitVec2> giUnitVec2::try_from(const giVector2& v) {
    // Dividing by the largest component first keeps tiny and huge vectors
    // from underflowing or overflowing in the squared length.
    if (!std::isfinite(v.x()) || !std::isfinite(v.y()))
        return std::nullopt;
    double largest = std::fmax(std::fabs(v.x()), std::fabs(v.y()));
    if (largest == 0.0)
        return std::nullopt;
    giVector2 scaled = v / largest;
    return giUnitVec2(scaled / scaled.length(), Unit{});
}

constexpr bool operator==(const giUnitVec2& a, const giUnitVec2& b) {
    return a.vector() == b.vector();
}
constexpr bool operator!=(const giUnitVec2& a, const giUnitVec2& b) {
    return !(a == b);
}

//===----------------------------------------------------------------------===//
// giUnitVec3
//===----------------------------------------------------------------------===//

/// A direction in space, always of unit length. Default: the X axis.
class giUnitVec3 {
public:
    constexpr giUnitVec3() = default;
    /// The direction of `v`; the X axis when `v` has zero or non-finite length.
    explicit giUnitVec3(const giVector3& v)
        : v_(try_from(v).value_or(giUnitVec3()).v_) {}
    explicit giUnitVec3(double x, double y, double z)
        : giUnitVec3(giVector3(x, y, z)) {}

    /// The direction of `v`, or no value when `v` has zero or non-finite length.
    static std::optional<giUnitVec3> try_from(const giVector3& v);

    constexpr double x() const { return v_.x(); }
    constexpr double y() const { return v_.y(); }
    constexpr double z() const { return v_.z(); }
    constexpr const giVector3& vector() const { return v_; }
    constexpr operator const giVector3&() const { return v_; }

    constexpr double dot(const giVector3& other) const { return v_.dot(other); }
    constexpr giVector3 cross(const giVector3& other) const { return v_.cross(other); }
    constexpr giUnitVec3 operator-() const { return giUnitVec3(-v_, Unit{}); }

private:
    struct Unit {}; // tags components that are already unit length
    constexpr giUnitVec3(const giVector3& unit, Unit)
        : v_(unit) {}

    giVector3 v_{1.0, 0.0, 0.0};
};

inline std::optional<giUnitVec3> giUnitVec3::try_from(const giVector3& v) {
    // Dividing by the largest component first keeps tiny and huge vectors
    // from underflowing or overflowing in the squared length.
    if (!std::isfinite(v.x()) || !std::isfinite(v.y()) || !std::isfinite(v.z()))
        return std::nullopt;
    double largest = std::fmax(std::fabs(v.x()), std::fmax(std::fabs(v.y()), std::fabs(v.z())));
    if (largest == 0.0)
        return std::nullopt;
    giVector3 scaled = v / largest;
    return giUnitVec3(scaled / scaled.length(), Unit{});
}

constexpr bool operator==(const giUnitVec3& a, const giUnitVec3& b) {
    return a.vector() == b.vector();
}
constexpr bool operator!=(const giUnitVec3& a, const giUnitVec3& b) {
    return !(a == b);
}

#endif // VORPARAMETER_PLATFORM_GIVECTOR_H

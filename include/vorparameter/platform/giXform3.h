//===- giXform3.h - Affine transforms of 3D space ---------------*- C++ -*-===//
//
// A giXform3 is an affine map x -> M x + t: a 3x3 linear part M and a
// translation t. It is made by the named constructors below (translation,
// rotation, uniform scaling, mirroring) and by composing them, so every
// transform a host builds is a similarity: angles are kept, and the same
// matrix turns both directions and plane normals correctly.
//
// Applying a transform depends on what is transformed:
//  - a point is moved (M p + t);
//  - a vector is only turned and scaled (M v), never translated;
//  - a unit vector is turned and renormalised, so it stays unit length (a
//    transform that collapses it, e.g. scaling by 0, gives the X axis by the
//    zero-vector rule of giUnitVec3).
//
// Composition reads like function application: (a * b).apply(p) is
// a.apply(b.apply(p)), i.e. b first.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GIXFORM3_H
#define VORPARAMETER_PLATFORM_GIXFORM3_H

#include "vorparameter/platform/giAngle.h"
#include "vorparameter/platform/giPoint.h"
#include "vorparameter/platform/giVector.h"
#include "vorparameter/platform/vorExport.h"

#include <optional>

class VOR_API giXform3 {
public:
    /// The identity.
    giXform3() = default;

    static giXform3 identity() { return giXform3(); }
    static giXform3 translation(const giVector3& offset);
    /// Rotation by `angle` about the line through `point` along `axis`,
    /// counter-clockwise when looking against the axis (right-hand rule).
    static giXform3 rotation(const giPoint3& point, const giUnitVec3& axis, const giAngle& angle);
    /// Uniform scaling by `factor` about `centre`. A negative factor also
    /// inverts through the centre; a zero factor gives a transform with no
    /// inverse.
    static giXform3 scaling(const giPoint3& centre, double factor);
    /// Mirroring in the plane through `point` with normal `normal` (of any
    /// non-zero length). The plane's points stay where they are. A zero
    /// normal defines no plane and gives the identity.
    static giXform3 reflection(const giPoint3& point, const giVector3& normal);

    /// The transform that applies `first` and then this one.
    giXform3 operator*(const giXform3& first) const;
    /// The inverse transform, or no value when the linear part is singular
    /// (its determinant is negligible against the size of its rows).
    std::optional<giXform3> inverse() const;

    giPoint3 apply(const giPoint3& p) const {
        return {row(0, p.x(), p.y(), p.z()) + t_[0], row(1, p.x(), p.y(), p.z()) + t_[1],
                row(2, p.x(), p.y(), p.z()) + t_[2]};
    }
    giVector3 apply(const giVector3& v) const {
        return {row(0, v.x(), v.y(), v.z()), row(1, v.x(), v.y(), v.z()),
                row(2, v.x(), v.y(), v.z())};
    }
    giUnitVec3 apply(const giUnitVec3& u) const { return giUnitVec3(apply(u.vector())); }

    /// Element (row, column) of the linear part, both in 0..2.
    double linear(int row, int column) const { return m_[row][column]; }
    /// The translation part: where the origin goes.
    giVector3 offset() const { return {t_[0], t_[1], t_[2]}; }
    double determinant() const;
    /// True for transforms that mirror, which turn a right-handed set of
    /// axes into a left-handed one.
    bool reverses_orientation() const { return determinant() < 0.0; }

private:
    double row(int r, double x, double y, double z) const {
        return m_[r][0] * x + m_[r][1] * y + m_[r][2] * z;
    }

    double m_[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    double t_[3] = {0.0, 0.0, 0.0};
};

#endif // VORPARAMETER_PLATFORM_GIXFORM3_H

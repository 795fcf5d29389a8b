//===- giWorkplane3.h - Right-handed local coordinate frames ----*- C++ -*-===//
//
// A workplane is an origin with three orthonormal, right-handed axes
// (X = Y x Z). Hosts store a workplane as its origin, Y axis and Z axis
// only; the X axis always follows from the other two.
//
// Construction takes the Z axis as it is and makes the given Y axis
// orthogonal to it (Gram-Schmidt): Y stays in the plane of the given Y and
// Z, on the side of the given Y. If the given Y is parallel to Z (within
// about 1e-12 radians) it carries no direction of its own; then the world
// axis least aligned with Z is used in its place, so the result is still a
// valid frame and the same input always gives the same frame.
//
// Transforming a workplane transforms its origin, Y axis and Z axis and
// rebuilds it from them. A workplane stays right-handed even under a
// mirroring transform: Y and Z become the mirror images of the old Y and Z,
// and X (recomputed as Y x Z) points opposite to the mirror image of the old
// X.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GIWORKPLANE3_H
#define VORPARAMETER_PLATFORM_GIWORKPLANE3_H

#include "vorparameter/platform/giPoint.h"
#include "vorparameter/platform/giVector.h"
#include "vorparameter/platform/vorExport.h"

class giXform3;

class VOR_API giWorkplane3 {
public:
    /// The world frame: origin (0, 0, 0) and the X, Y and Z axes.
    giWorkplane3() = default;
    giWorkplane3(const giPoint3& origin, const giUnitVec3& y_axis, const giUnitVec3& z_axis);

    const giPoint3& origin() const { return origin_; }
    const giUnitVec3& x_axis() const { return x_axis_; }
    const giUnitVec3& y_axis() const { return y_axis_; }
    const giUnitVec3& z_axis() const { return z_axis_; }

    /// This workplane moved by `xform`, still orthonormal and right-handed.
    giWorkplane3 transformed(const giXform3& xform) const;

private:
    giPoint3 origin_;
    giUnitVec3 x_axis_{1.0, 0.0, 0.0};
    giUnitVec3 y_axis_{0.0, 1.0, 0.0};
    giUnitVec3 z_axis_{0.0, 0.0, 1.0};
};

#endif // VORPARAMETER_PLATFORM_GIWORKPLANE3_H

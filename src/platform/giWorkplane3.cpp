//===- giWorkplane3.cpp - Right-handed local coordinate frames ------------===//
//
// Building a workplane's orthonormal axes from a Y and a Z axis.
//
//===----------------------------------------------------------------------===//
#include "vorparameter/platform/giWorkplane3.h"

#include "vorparameter/platform/giXform3.h"

#include <cmath>

namespace {

/// Below this length the part of a unit Y axis orthogonal to Z (the sine of
/// the angle between them) is taken as no direction at all.
constexpr double kParallelTolerance = 1e-12;

giVector3 without_component_along(const giVector3& v, const giUnitVec3& normal) {
    return v - v.dot(normal) * normal;
}

/// The world axis that makes the largest angle with `normal`.
giVector3 least_aligned_world_axis(const giUnitVec3& normal) {
    const double ax = std::fabs(normal.x()), ay = std::fabs(normal.y()), az = std::fabs(normal.z());
    if (ax <= ay && ax <= az)
        return {1.0, 0.0, 0.0};
    if (ay <= az)
        return {0.0, 1.0, 0.0};
    return {0.0, 0.0, 1.0};
}

/// The unit direction of `direction` made orthogonal to `normal`.
giUnitVec3 orthogonal_to(const giUnitVec3& direction, const giUnitVec3& normal) {
    giVector3 rest = without_component_along(direction, normal);
    if (rest.length() <= kParallelTolerance)
        rest = without_component_along(least_aligned_world_axis(normal), normal);
    // A second pass removes what cancellation left behind when the two were
    // nearly parallel.
    return giUnitVec3(without_component_along(rest, normal));
}

} // namespace

giWorkplane3::giWorkplane3(const giPoint3& origin, const giUnitVec3& y_axis,
                           const giUnitVec3& z_axis)
    : origin_(origin)
    , y_axis_(orthogonal_to(y_axis, z_axis))
    , z_axis_(z_axis) {
    x_axis_ = giUnitVec3(y_axis_.cross(z_axis_));
}

giWorkplane3 giWorkplane3::transformed(const giXform3& xform) const {
    return giWorkplane3(xform.apply(origin_), xform.apply(y_axis_), xform.apply(z_axis_));
}

//===- giTolerance.cpp - Point-coincidence tolerance of geometry ----------===//

#include "vorparameter/platform/giTolerance.h"

#include <cmath>

namespace {

double point_coincidence = 1e-6;

} // namespace

double giKernelResources::point_tolerance() {
    return point_coincidence;
}

bool giKernelResources::set_point_tolerance(double tolerance) {
    // isfinite excludes NaN and both infinities.
    if (!std::isfinite(tolerance) || tolerance < 0.0)
        return false;
    point_coincidence = tolerance;
    return true;
}

//===- giTolerance.h - Point-coincidence tolerance of geometry --*- C++ -*-===//
//
// Two points closer than the point-coincidence tolerance are the same point
// to the geometry kernel. The parameter library uses the same distance to
// decide when two numbers are equal, so that a value computed by an
// expression compares equal to the literal a user typed despite rounding.
//
// The tolerance is one process-wide value, 1e-6 until the host sets another;
// it is read afresh at each use.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_GITOLERANCE_H
#define VORPARAMETER_PLATFORM_GITOLERANCE_H

#include "vorparameter/platform/vorExport.h"

class VOR_API giKernelResources {
public:
    /// The distance below which two points coincide.
    static double point_tolerance();
    /// Sets the tolerance. NaN, negative and infinite values are refused:
    /// the tolerance stays as it was and the answer is false. Zero is
    /// accepted and makes equality exact.
    static bool set_point_tolerance(double tolerance);
};

#endif // VORPARAMETER_PLATFORM_GITOLERANCE_H

//===- vorUnitsUtils.h - The host's current length unit ---------*- C++ -*-===//
//
// A machining host works either in millimetres or in inches; every length the
// library computes is a number in that current unit. Unit suffixes in
// expressions ("10mm", "2in") therefore need the factor that turns one
// millimetre or one inch into the current unit: get_scale_from answers it.
//
// The setting is one process-wide value that the host changes with set_units;
// it is read afresh at each use, so nothing in the library caches a scale.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VORUNITSUTILS_H
#define VORPARAMETER_PLATFORM_VORUNITSUTILS_H

#include "vorparameter/platform/vorExport.h"

/// The length units a host can work in. The underlying type is fixed so
/// that any int a host stores in it is a defined value (and refused below).
enum vorUnitsType : int {
    UNITS_MM = 0,  // millimetres
    UNITS_INCH = 1 // inches
};

class VOR_API vorUnitsUtils {
public:
    /// The host's current length unit; millimetres until the host sets one.
    static vorUnitsType get_units();
    /// Makes `units` the current length unit. A value that names no unit is
    /// refused: the setting stays as it was and the answer is false.
    static bool set_units(vorUnitsType units);
    /// The factor that converts one unit of `from` into the current unit:
    /// in a millimetre system 1 for UNITS_MM and 25.4 for UNITS_INCH, in an
    /// inch system 1/25.4 and 1. A value that names no unit gives 1.0, so
    /// that a bad argument leaves a length unscaled rather than zeroed.
    static double get_scale_from(vorUnitsType from);
};

#endif // VORPARAMETER_PLATFORM_VORUNITSUTILS_H

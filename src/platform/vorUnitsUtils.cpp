//===- vorUnitsUtils.cpp - The host's current length unit -----------------===//

#include "vorparameter/platform/vorUnitsUtils.h"

namespace {

constexpr double MM_PER_INCH = 25.4;

vorUnitsType current_units = UNITS_MM;

bool is_known(vorUnitsType units) {
    return units == UNITS_MM || units == UNITS_INCH;
}

// The length of one unit of `units`, in millimetres.
double in_mm(vorUnitsType units) {
    return units == UNITS_INCH ? MM_PER_INCH : 1.0;
}

} // namespace

vorUnitsType vorUnitsUtils::get_units() {
    return current_units;
}

bool vorUnitsUtils::set_units(vorUnitsType units) {
    if (!is_known(units))
        return false;
    current_units = units;
    return true;
}

double vorUnitsUtils::get_scale_from(vorUnitsType from) {
    if (!is_known(from))
        return 1.0;
    if (from == current_units)
        return 1.0;
    return in_mm(from) / in_mm(current_units);
}

//===- nlsUtils.h - Locale settings of number texts -------------*- C++ -*-===//
//
// The decimal point that users type and see in number texts. It is "." until
// the host sets another one (for example "," for a German user interface).
// Stored texts are always neutral ("."); see vorEvaluator::localize and
// vorEvaluator::neutralize for the conversion.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_NLSUTILS_H
#define VORPARAMETER_PLATFORM_NLSUTILS_H

#include "vorparameter/platform/vorExport.h"

class VOR_API nlsUtils {
public:
    /// The locale's decimal point, read at each use.
    static char m_decimal_point;

    static char decimal_point() { return m_decimal_point; }
    /// Sets the decimal point; anything but "." or "," is refused (returns false).
    static bool set_decimal_point(char point);
};

#endif // VORPARAMETER_PLATFORM_NLSUTILS_H

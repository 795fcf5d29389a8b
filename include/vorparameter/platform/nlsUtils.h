//===- nlsUtils.h - Locale settings of number texts -------------*- C++ -*-===//
//
// The decimal point of number texts: the one users type and see, and the one
// the library writes when it formats a number (vorformat_double). It is "."
// until the host sets another one (for example "," for a German user
// interface). Saved files use "."; vorEvaluator::neutralize and
// vorEvaluator::localize convert an expression between the two forms.
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

//===- nlsUtils.cpp - Locale settings of number texts ---------------------===//

#include "vorparameter/platform/nlsUtils.h"

char nlsUtils::m_decimal_point = '.';

bool nlsUtils::set_decimal_point(char point) {
    if (point != '.' && point != ',')
        return false;
    m_decimal_point = point;
    return true;
}

// Function results as the documentation of the library shows them.
#ifndef VORPARAMETER_TESTS_SHOWN_VALUE_H
#define VORPARAMETER_TESTS_SHOWN_VALUE_H

#include "../support/prelude.h"

/// A value as the documentation shows it: arrays as "{a; b}".
inline std::string shown(const vorParameterPtr& value) {
    const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(value.par());
    if (!array)
        return value->get_string().str();
    std::string items;
    for (const vorParameterPtr& element : array->elements())
        items += (items.empty() ? "" : "; ") + shown(element);
    return "{" + items + "}";
}

#endif // VORPARAMETER_TESTS_SHOWN_VALUE_H

// Small builders shared by the container tests.
#ifndef VORPARAMETER_TESTS_CONTAINERS_CONTAINER_TEST_HELPERS_H
#define VORPARAMETER_TESTS_CONTAINERS_CONTAINER_TEST_HELPERS_H

#include "../support/prelude.h"

#include <initializer_list>

namespace container_test {

inline vorParameterPtr number(double v, vorParameterSubType kind = SUB_REAL) {
    return real(v, vorDimensions(), kind);
}

/// A plain array of the given numbers.
inline vorParameterPtr array_of(std::initializer_list<double> values) {
    vorParameterPtr array(new vorParameterArray());
    for (double v : values)
        array->add(vorParameterKey(), number(v));
    return array;
}

/// A vector of `n` zeros with the names of `access`.
inline vorParameterPtr vector_of(int n, vorParameterVectorAccessType access) {
    auto* vector = new vorParameterVector(n, number(0));
    vector->set_access_type(access);
    return vorParameterPtr(vector);
}

/// The elements of an array read as numbers.
inline std::vector<double> values_of(const vorParameterPtr& array) {
    std::vector<double> out;
    for (int i = 0; i < array->size(); ++i)
        out.push_back((*array)[vorParameterKey(i, utString())]->get_double());
    return out;
}

} // namespace container_test

#endif // VORPARAMETER_TESTS_CONTAINERS_CONTAINER_TEST_HELPERS_H

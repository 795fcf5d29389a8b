// What every test file uses: the library, GoogleTest, the standard
// containers and streams the tests build their cases with, and builders of
// the values most tests put in their trees.
#ifndef VORPARAMETER_TESTS_SUPPORT_PRELUDE_H
#define VORPARAMETER_TESTS_SUPPORT_PRELUDE_H

#include "vorparameter/vorparameter.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// A number of the given value, dimension and kind.
inline vorParameterPtr real(double value, vorDimensions dim = vorDimensions(DIM_NONE),
                            vorParameterSubType kind = SUB_REAL) {
    return vorParameterPtr(new vorParameterNumeric(kind, dim, value));
}

/// A dimensionless number whose text (a literal or an expression) is `text`.
inline vorParameterPtr numeric(const utString& text, vorParameterSubType kind = SUB_REAL) {
    vorParameterPtr par = real(0, vorDimensions(DIM_NONE), kind);
    par->set_string(text);
    return par;
}

inline vorParameterPtr text(const utString& value) {
    return vorParameterPtr(new vorParameterString(value));
}

/// A user function whose body is `body`.
inline vorParameterPtr function(const utString& body) {
    return vorParameterPtr(new vorParameterFunction(body));
}

inline vorParameterPtr map() {
    return vorParameterPtr(new vorParameterMap());
}

inline vorParameterPtr reference(const utString& target) {
    return vorParameterPtr(new vorParameterRef(target));
}

/// What the tests' on-read and on-modify functions count; each test sets
/// the counter it reads to 0 first.
inline int g_reads = 0;
inline int g_modified = 0;

inline void count_read(const vorParameter*) {
    ++g_reads;
}

inline void count_modification(vorParameter*) {
    ++g_modified;
}

/// What `expression` gives, evaluated in `scope`.
inline vorParameterPtr eval(const vorParameterPtr& scope, const utString& expression) {
    return vorEvaluator(scope.get()).evaluate(expression);
}

#endif // VORPARAMETER_TESTS_SUPPORT_PRELUDE_H

//===- vorLibSupport.h - Shared helpers of the library functions -*- C++ -*-===//
//
// What most library functions do the same way: take numbers from their
// arguments, make their results, and fail with the library's error values.
//
// A "number" argument is a numeric parameter (or a reference to one) whose
// value evaluates to a number; error values, texts, containers and numerics
// whose expression fails are not numbers.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORLIBSUPPORT_H
#define VORPARAMETER_LIBRARY_VORLIBSUPPORT_H

#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/parameter/vorParameter.h"

#include <array>
#include <cstddef>

namespace vorLibSupport {

/// The numeric that `arg` holds or refers to when it is a valid number,
/// otherwise null.
const vorParameterNumeric* as_number(const vorParameterPtr& arg);

/// True when the call has exactly `count` arguments, all numbers; their
/// values go to `values`.
bool read_numbers(const vorParameterPtr& args, double* values, std::size_t count);

template <std::size_t N>
bool read_numbers(const vorParameterPtr& args, std::array<double, N>& values) {
    return read_numbers(args, values.data(), N);
}

/// A new numeric of `kind` and `dim` holding `value`, or ERR_DOMAIN when the
/// value is not finite (an overflow: a numeric could not hold it).
vorParameterPtr make_number(vorParameterSubType kind, double value,
                            const vorDimensions& dim = vorDimensions(DIM_NONE));

/// A new string parameter holding `text` as its final value: a "${...}" in
/// it is text, not an expression.
vorParameterPtr make_string(const utString& text);

/// ERR_INVALID_ARGUMENTS, the answer to arguments that do not fit.
vorParameterPtr invalid_arguments();

/// Registers one function when constructed: static objects of this class
/// fill the table while the library is loaded.
class Registration {
public:
    Registration(const char* name, vorParameterLibFn fn, const char* desc);
};

} // namespace vorLibSupport

#endif // VORPARAMETER_LIBRARY_VORLIBSUPPORT_H

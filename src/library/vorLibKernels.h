//===- vorLibKernels.h - Standard functions on plain numbers -----*- C++ -*-===//
//
// The mathematical functions of the library are pure: their answer depends
// on their numbers alone (and on the library's angle unit, read at each
// call). Each is written once as a kernel over plain doubles; the library
// entry decodes its argument array and calls the kernel, and a compiled
// expression (src/expression/vorPlanKernel.h) calls the kernel directly on
// numbers it never made into parameters. Both give the same outcome because
// they are the same code.
//
// A kernel belongs to the library's own entry: a host that replaces an entry
// with add_entry replaces its kernel too (there is none for the host's
// function), and vorLibTableVersion() tells a caller that remembered a kernel
// that the table has changed since.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_LIBRARY_VORLIBKERNELS_H
#define VORPARAMETER_SRC_LIBRARY_VORLIBKERNELS_H

#include "expression/vorNumericArithmetic.h"

#include <cstddef>
#include <cstdint>

struct vorLibKernel {
    /// How many numbers the function takes; any other count is
    /// ERR_INVALID_ARGUMENTS.
    std::size_t arity;
    /// The outcome of the function for `arity` numbers.
    vorNumericOutcome (*apply)(const double* numbers);
};

/// The kernel of `function`, a function of the standard library as an
/// expression resolves it, or null when it has none (another node, a
/// function that is not pure, an entry the host replaced).
const vorLibKernel* vorLibKernelOf(const vorParameter& function);

/// Advances whenever add_entry registers or replaces an entry.
std::uint64_t vorLibTableVersion();

#endif // VORPARAMETER_SRC_LIBRARY_VORLIBKERNELS_H

//===- vorParameterArgDecoder.h - Taking a call's arguments -----*- C++ -*-===//
//
// The cursor through which a library function takes its arguments, in call
// order, without copying them. Asking for more than were passed gives the
// error ERR_INVALID_ARGUMENTS; next_argument_as<T> gives null for a missing
// argument or one of another class.
//
// The argument list is an array (the evaluator passes a temporary array). Any
// other parameter, or an empty handle, counts as a list without arguments, so
// a host that calls an operation with something else gets an error value
// from it rather than a crash.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORPARAMETERARGDECODER_H
#define VORPARAMETER_LIBRARY_VORPARAMETERARGDECODER_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstdint>

class VOR_API vorParameterArgDecoder {
public:
    explicit vorParameterArgDecoder(const vorParameterPtr& args)
        : m_args(args) {}

    /// The next argument, or ERR_INVALID_ARGUMENTS when all were taken.
    vorParameterPtr next_argument();
    /// The next argument as a `T`, or null. A reference counts as what it
    /// refers to. The pointer is borrowed: the argument list (or the tree,
    /// for a referent) keeps the parameter alive.
    template <class T>
    const T* next_argument_as() {
        vorParameterPtr arg = next_argument();
        return T::ut_dynamic_cast(arg.par());
    }
    bool all_arguments_used() const;
    /// A new array of the arguments not yet taken; does not advance.
    vorParameterPtr remaining_arguments() const;
    /// How many arguments were passed.
    int count() const;

private:
    vorParameterPtr m_args;
    std::uint32_t m_next = 0;
};

#endif // VORPARAMETER_LIBRARY_VORPARAMETERARGDECODER_H

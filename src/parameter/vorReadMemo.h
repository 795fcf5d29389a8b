//===- vorReadMemo.h - Values shared within one read -------------*- C++ -*-===//
//
// A read of a parameter evaluates its expression, which reads the parameters
// it names, and so on down. When several paths reach one parameter (a
// diamond, or a chain in which every parameter reads the one below twice),
// the plain recursion evaluates it once per path: exponentially often. The
// memo keeps, for the length of one outermost evaluation, the value each
// numeric member of a tree evaluated to, and hands a copy of it to every
// later path.
//
// A value is reused only when a fresh evaluation could not tell the
// difference. It is kept together with a stamp: the tree generation (the
// shape of every tree) and a count of disturbances, which advances on
//   - every change of a value (set_string, set_double, set_value, anything
//     that notifies onmodify_callback()),
//   - every on-read callback and every function call, before and after it
//     (either may read a clock, count, or change the tree),
//   - every cycle met (a parameter or reference reached while it is being
//     evaluated answers an error that depends on the path taken).
// An evaluation during which the stamp moved is not kept; a kept value is
// reused only while the stamp has not moved since it was computed. So a
// parameter whose on-read callback must run, or whose value comes from a
// function, is evaluated as often as ever.
//
// Only the common, safe case is kept: a numeric parameter owned by handles
// (a member of a tree, typically) evaluating to a fresh numeric value of its
// own. Strings, arrays, errors and results that are nodes of a tree are
// evaluated afresh each time. The memo holds each parameter it keeps a
// value for until the read ends, so that no other node can be created at
// its address meanwhile and be taken for it; a member removed during a read
// (by a callback or a function) is therefore released when the read ends.
//
// A reused value still enters one level of nesting and counts as one
// evaluation of the read's budget, as reading the parameter always does;
// the evaluations made to compute it the first time are not counted again.
// That is the point: a doubling chain forty deep costs about eighty
// evaluations instead of 2^41.
//
// The memo holds at most one entry per parameter the read reaches, and the
// read's evaluation budget bounds those; it is emptied when the outermost
// evaluation ends. One memo per thread.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_PARAMETER_VORREADMEMO_H
#define VORPARAMETER_SRC_PARAMETER_VORREADMEMO_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstdint>

class vorReadMemo {
public:
    /// Marks that something happened which a kept value cannot account for.
    static void disturb();

    /// Held by every evaluation of a parameter's expression; the outermost
    /// one empties the memo when it ends.
    class Evaluation {
    public:
        explicit Evaluation(const vorParameter& node);
        ~Evaluation();
        Evaluation(const Evaluation&) = delete;
        Evaluation& operator=(const Evaluation&) = delete;

        /// A copy of the value the node evaluated to earlier in this read,
        /// or an empty handle when there is none that may be reused.
        vorParameterPtr reuse() const;
        /// Keeps `result` for the rest of the read when it may be reused.
        void keep(const vorParameterPtr& result) const;
        /// False when keep() would keep no result, whatever it is.
        bool may_keep() const;

    private:
        const vorParameter& m_node;
        bool m_eligible;
        std::uint64_t m_stamp;
    };
};

#endif // VORPARAMETER_SRC_PARAMETER_VORREADMEMO_H

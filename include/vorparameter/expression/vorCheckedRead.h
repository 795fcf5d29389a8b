//===- vorCheckedRead.h - Reading a number and why it failed ----*- C++ -*-===//
//
// get_double() never fails: a value that does not evaluate to a number reads
// as 0.0, which looks like a true 0. vorReadDouble reads the same number and
// also tells whether it is one, and if not, which error stood in its place:
//
//   vorCheckedDouble feed = vorReadDouble(root["feed"]);
//   if (!feed)
//       std::cerr << "feed: " << feed.message() << '\n'; // "Divide by zero"
//   else
//       use(feed.value());
//
// A read fails when
//   - the handle holds an error: a failed lookup (Invalid name), an empty
//     handle (Unknown error), a reference that does not resolve; the error is
//     that value;
//   - the node, or a reference's referent, is a numeric whose value does not
//     evaluate to a number: the error is the one the evaluation gave (the
//     first failure inside the expression, which travels up unchanged), or a
//     Type error when the expression gave a value of another kind (a text);
//   - the node is no number at all (a string, a map, an enumeration...): a
//     Type error.
//
// The value is exactly what get_double() reads (the on-read callback runs
// and the range applies); 0.0 when the read fails.
//
// Cost: one get_double(). Only a value that reads as 0.0 costs more: it is
// evaluated once more to tell a true 0 from a failure (a literal answers from
// its cache), and a failure once more again to fetch its error. A numeric
// expression that reads 0.0 thus runs its on-read callback twice.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORCHECKEDREAD_H
#define VORPARAMETER_EXPRESSION_VORCHECKEDREAD_H

#include "vorparameter/parameter/vorParameter.h"

#include <utility>

/// A number read from a parameter, or the error that stood in its place.
class vorCheckedDouble {
public:
    static vorCheckedDouble success(double value) { return vorCheckedDouble(value, {}); }
    /// A failed read of `error` (an error parameter).
    static vorCheckedDouble failure(vorParameterPtr error) {
        return vorCheckedDouble(0.0, std::move(error));
    }

    bool ok() const { return m_error.is_null(); }
    explicit operator bool() const { return ok(); }
    /// The number read; 0.0 when the read failed.
    double value() const { return m_value; }
    /// The error value (is_error(), its kind in subtype()); an empty handle
    /// when the read succeeded.
    const vorParameterPtr& error() const { return m_error; }
    /// The error's translated message ("Divide by zero"); empty on success.
    utString message() const { return ok() ? utString() : m_error->get_expr(); }

private:
    vorCheckedDouble(double value, vorParameterPtr error)
        : m_value(value)
        , m_error(std::move(error)) {}

    double m_value;
    vorParameterPtr m_error;
};

/// Reads `par` as get_double() does and tells whether that was a number; see
/// the file comment. Never changes the handle, even when it is empty.
VOR_API vorCheckedDouble vorReadDouble(const vorParameterPtr& par);

#endif // VORPARAMETER_EXPRESSION_VORCHECKEDREAD_H

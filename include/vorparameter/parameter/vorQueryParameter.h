//===- vorQueryParameter.h - Evaluate a text to a plain value ---*- C++ -*-===//
//
// The query is the process-wide shortcut for parts of a host that only want
// a number or a text from an expression ("tool.diameter * 2") without
// handling parameters. It evaluates through an evaluation function that the
// host may replace (to evaluate against its current document, say); the
// default evaluates in the scope given to set_scope() (none at first: then
// only literals and operators work).
//
//   vorQueryParameter& query = vorQueryParameter::instance();
//   query.set_scope(&root);
//   double d = query.get_double("tool.diameter / 2");
//
// A failed evaluation reads as 0, and as its error text ("#ERROR: ...")
// through get_string(); query() gives the result itself to test with
// is_error(). Used from the host's one thread.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORQUERYPARAMETER_H
#define VORPARAMETER_PARAMETER_VORQUERYPARAMETER_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorQueryParameter {
public:
    /// Evaluates `expression` in `scope` (which may be null).
    using EvalFn = vorParameterPtr (*)(const utString& expression, const vorParameter* scope);

    static vorQueryParameter& instance();

    vorQueryParameter(const vorQueryParameter&) = delete;
    vorQueryParameter& operator=(const vorQueryParameter&) = delete;

    /// Replaces the evaluation function and returns the previous one; null
    /// restores the default.
    EvalFn set_eval_function(EvalFn fn);
    /// The node in whose scope expressions are read; null for none. The
    /// query does not own it.
    void set_scope(const vorParameter* scope) { m_scope = scope; }
    const vorParameter* get_scope() const { return m_scope; }

    vorParameterPtr query(const utString& expression) const;
    double get_double(const utString& expression) const;
    int get_int(const utString& expression) const;
    utString get_string(const utString& expression) const;

    /// The default evaluation: a vorEvaluator bound to `scope`.
    static vorParameterPtr evaluate_in_scope(const utString& expression, const vorParameter* scope);

private:
    vorQueryParameter() = default;

    EvalFn m_eval = &evaluate_in_scope;
    const vorParameter* m_scope = nullptr;
};

#endif // VORPARAMETER_PARAMETER_VORQUERYPARAMETER_H

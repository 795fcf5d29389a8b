//===- vorParameterFunction.h - User functions ------------------*- C++ -*-===//
//
// A user function is a parameter whose body is an expression. Calling it,
// "f(2; 3)", evaluates the body with the call's arguments bound to "argv":
// argv[0], argv[1] ... or argv itself. The body is read in the function's own
// scope, so other names resolve up the tree from where the function stands.
// argv is null again after the call (also after a nested call of the same
// function, which leaves it null for the rest of the outer evaluation).
// Every call nests one level and spends one evaluation of the read's budget,
// so a function that calls itself without end stops at the evaluator's
// nesting limit (vorEvaluator::max_nesting), and one that calls itself twice
// per level at the evaluation budget (vorEvaluator::max_evaluations), with
// an error value as the result.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORPARAMETERFUNCTION_H
#define VORPARAMETER_LIBRARY_VORPARAMETERFUNCTION_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterFunction : public vorParameter {
    UT_DECLARE_TYPE(vorParameterFunction, vorParameter)
public:
    explicit vorParameterFunction(const utString& body = utString())
        : m_body(body) {}

    vorParameter* create_new() const override { return new vorParameterFunction(*this); }
    vorParameterSubType subtype() const override { return SUB_FUNCTION; }
    vorParameterType type() const override { return TYPE_FUNCTION; }
    utString print(int indent) const override;
    /// The body text.
    utString get_string() const override { return m_body; }
    utString get_expr() const override { return m_body; }
    /// Replaces the body unless locked; no callback, no change tracking.
    void set_string(const utString& body) override;
    /// "argv" (or "argv[i]..." below it) during a call; any other name, and
    /// "argv" outside a call, is ERR_INVALID_NAME, so that the name resolves
    /// further up the tree.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// "(" calls the function with `args`; other operators as for any node.
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& args) const override;

    const vorParameterPtr& get_argv() const { return m_argv; }

protected:
    /// Copies the body; the copy is not in a call (its argv is null).
    vorParameterFunction(const vorParameterFunction& other);
    /// A copy of `other` with another body.
    vorParameterFunction(const vorParameterFunction& other, const utString& body);
    const utString& body() const { return m_body; }

private:
    vorParameterPtr lookup(const vorParameterKey& key) const;

    utString m_body;
    mutable vorParameterPtr m_argv;
};

#endif // VORPARAMETER_LIBRARY_VORPARAMETERFUNCTION_H

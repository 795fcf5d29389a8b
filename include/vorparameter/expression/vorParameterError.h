//===- vorParameterError.h - Errors as values -------------------*- C++ -*-===//
//
// Every failing lookup, operator, function call or evaluation returns a
// vorParameterError instead of throwing. An error carries one of ten kinds
// (its subtype, ERR_UNKNOWN to ERR_INVALID_DATA) and prints a translated
// message. Errors are immutable and shared: create(kind) hands out the one
// instance of each kind. Reading a number from an error gives 0; writing to
// it is ignored. Operators applied to an error give that error again, so the
// first failure in an expression is the one reported.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORPARAMETERERROR_H
#define VORPARAMETER_EXPRESSION_VORPARAMETERERROR_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterError : public vorParameter {
    UT_DECLARE_TYPE(vorParameterError, vorParameter)
public:
    /// The shared error of `kind`; kinds above 9 share one further instance of
    /// kind ERR_UNKNOWN.
    static vorParameterPtr create(unsigned kind);
    /// True for the kinds 0 to 9.
    static bool valid_subtype(unsigned kind) { return kind <= ERR_INVALID_DATA; }
    /// The untranslated message of `kind` ("Divide by zero"); empty outside 0 to 9.
    static const char* message(unsigned kind);

    vorParameter* create_new() const override { return new vorParameterError(*this); }
    bool is_valid() const override { return false; }
    bool is_active() const override { return true; }
    bool is_error() const override { return true; }
    utString print(int indent) const override;
    int get_int() const override;
    double get_double() const override;
    /// "#ERROR: " and the translated message.
    utString get_string() const override;
    void set_int(int) override;
    void set_double(double) override;
    void set_string(const utString&) override;
    /// The translated message of the kind.
    utString get_expr() const override;
    vorParameterSubType subtype() const override {
        return static_cast<vorParameterSubType>(m_code);
    }
    vorParameterType type() const override { return TYPE_ERROR; }
    /// A fresh copy of the same kind.
    vorParameterPtr evaluate() const override;
    /// An error is the result of every operator applied to it: the first
    /// failure travels up through an expression unchanged.
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& rhs) const override;
    vorParameterPtr operate_prefix(const utString& op) const override;
    vorParameterPtr operate_postfix(const utString& op) const override;

private:
    explicit vorParameterError(unsigned code)
        : m_code(code) {}
    vorParameterError(const vorParameterError&) = default;

    unsigned m_code;
};

#endif // VORPARAMETER_EXPRESSION_VORPARAMETERERROR_H

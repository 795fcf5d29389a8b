//===- vorParameterScalar.h - Single values kept as text --------*- C++ -*-===//
//
// The base of every single-valued parameter (strings, numbers, enumerations,
// functions): its value is kept as text, either a literal or an expression
// that is evaluated on demand. A scalar counts as an expression when its text
// contains "%[" or "${" (an interpolation); derived classes refine the test.
//
// The shared record holds two defaults applied by reset(): the default text
// and an alternative default for hosts working in inches (invalid when there
// is none).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORPARAMETERSCALAR_H
#define VORPARAMETER_EXPRESSION_VORPARAMETERSCALAR_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterScalar : public vorParameter {
    UT_DECLARE_TYPE(vorParameterScalar, vorParameter)
public:
    utString get_expr() const override;
    bool is_expr() const override;
    utString get_string() const override;
    /// Honours the lock; stores the text, then runs the on-modify callback.
    void set_string(const utString& text) override;
    /// Valid when the evaluated value has this parameter's own type.
    bool is_valid() const override;
    bool is_equal(const vorParameter& other) const override;
    void set_defaults(const utString& value, const utString& alternative) override;
    void reset() override;
    /// The rules every scalar shares, after an invalid right operand (which
    /// gives ERR_INVALID_ARGUMENTS): "==" and "!=" compare the texts, and when
    /// either operand is an enumeration both texts must name one of its states
    /// (else ERR_TYPE); "+" concatenates the texts; any other operator is the
    /// base's error.
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& other) const override;

    /// The stored text as it stands.
    const utString& get_value() const {
        if (m_value.empty())
            write_deferred_value();
        return m_value;
    }
    /// Stores `text` (registering the change with the update tracker when it
    /// differs) without running callbacks; for loaders and copies.
    virtual void set_value(const utString& text);

protected:
    vorParameterScalar() = default;
    explicit vorParameterScalar(utString value)
        : m_value(std::move(value)) {}
    vorParameterScalar(const vorParameterScalar& other);
    vorParameterScalar& operator=(const vorParameterScalar& other) = default;

    /// True when the text holds an interpolation ("%[" or "${").
    static bool has_interpolation(const utString& text);
    /// Records the current value as the default when the record has none.
    void record_default_if_missing();
    /// Appends to the stored text, with the bookkeeping of set_value.
    void append_value(const utString& more);

    /// A class that may leave its text unwritten until it is read (a number
    /// an expression computes is seldom read as text) writes it here with
    /// write_value. Called by get_value while the stored text is empty.
    virtual void write_deferred_value() const {}
    /// Stores the text of the value the parameter already has, without the
    /// bookkeeping of set_value: nothing changes for a reader.
    void write_value(utString text) const { m_value = std::move(text); }

private:
    mutable utString m_value;
};

#endif // VORPARAMETER_EXPRESSION_VORPARAMETERSCALAR_H

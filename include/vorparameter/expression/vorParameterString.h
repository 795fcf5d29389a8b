//===- vorParameterString.h - Text parameters -------------------*- C++ -*-===//
//
// A parameter holding text. A text with an interpolation ("${expr}",
// "%[expr]") is an expression whose value is the interpolated text; any other
// text is its own value. Strings compare with < <= > >= by bytes and
// concatenate with "+".
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H
#define VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H

#include "vorparameter/expression/vorParameterScalar.h"

class VOR_API vorParameterString : public vorParameterScalar {
    UT_DECLARE_TYPE(vorParameterString, vorParameter)
public:
    /// Stores `text` and records its evaluated text as the default.
    explicit vorParameterString(const utString& text = utString());

    vorParameter* create_new() const override { return new vorParameterString(*this); }
    vorParameterSubType subtype() const override { return SUB_STRING; }
    vorParameterType type() const override { return TYPE_STRING; }
    utString get_xml_typename() const override { return "string"; }
    utString print(int indent) const override;
    /// A copy for a literal; the interpolated string for an expression; an
    /// error of kind ERR_TYPE when an expression gives no string.
    vorParameterPtr evaluate() const override;
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& other) const override;

protected:
    vorParameterString(const vorParameterString& other) = default;
};

#endif // VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H

//===- vorParameterString.h - Text parameters -------------------*- C++ -*-===//
//
// A parameter holding text. A text with an interpolation ("${expr}",
// "%[expr]") is an expression whose value is the interpolated text; any other
// text is its own value. The strings that evaluation produces (string
// literals, interpolated texts) are verbatim: their text is final. Strings compare with < <= > >=
// by bytes and concatenate with "+".
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H
#define VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H

#include "vorparameter/expression/vorParameterScalar.h"

class VOR_API vorParameterString : public vorParameterScalar {
    UT_DECLARE_TYPE(vorParameterString, vorParameter)
public:
    /// The longest text that evaluation builds (64 MiB): joining texts with
    /// "+", interpolation, and the text functions that can grow their input
    /// ("replace", "join") answer ERR_DOMAIN rather than go past it, so no
    /// expression can ask for unbounded memory.
    static constexpr std::size_t max_text_length = std::size_t(1) << 26;

    /// Stores `text` and records its evaluated text as the default.
    explicit vorParameterString(const utString& text = utString());
    /// A string whose text is final: never interpolated, even when it holds
    /// "${" (the result of an interpolation, for example).
    static vorParameterPtr create_verbatim(const utString& text);
    /// `joined` + `more` in place, when `joined` is a verbatim string that no
    /// one else holds (the result of a previous "+" of the same expression):
    /// a chain of joins then costs time linear in its result instead of
    /// copying the growing text at every step. False, changing nothing, when
    /// `joined` does not qualify, `more` is no valid operand or the text
    /// would pass max_text_length; the caller then joins as usual.
    static bool append_in_place(const vorParameterPtr& joined, const vorParameterPtr& more);

    vorParameter* create_new() const override { return new vorParameterString(*this); }
    vorParameterSubType subtype() const override { return SUB_STRING; }
    vorParameterType type() const override { return TYPE_STRING; }
    utString get_xml_typename() const override { return "string"; }
    bool is_expr() const override;
    utString print(int indent) const override;
    /// A copy for a literal; the interpolated string for an expression; an
    /// error of kind ERR_TYPE when an expression gives no string.
    vorParameterPtr evaluate() const override;
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& other) const override;

protected:
    vorParameterString(const vorParameterString& other) = default;

private:
    bool m_verbatim = false;
};

#endif // VORPARAMETER_EXPRESSION_VORPARAMETERSTRING_H

//===- vorParameterString.cpp - Text parameters ---------------------------===//

#include "vorparameter/expression/vorParameterString.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>

UT_DEFINE_TYPE(vorParameterString, vorParameterScalar)

vorParameterString::vorParameterString(const utString& text)
    : vorParameterScalar(text) {
    get_impl()->edit_details().default_value = get_string();
}

vorParameterPtr vorParameterString::create_verbatim(const utString& text) {
    vorParameterString* verbatim = new vorParameterString();
    verbatim->m_verbatim = true;
    verbatim->set_value(text);
    verbatim->get_impl()->edit_details().default_value = text;
    return vorParameterPtr(verbatim);
}

bool vorParameterString::append_in_place(const vorParameterPtr& joined,
                                         const vorParameterPtr& more) {
    vorParameterString* text = ut_dynamic_cast(joined.get());
    if (!text || !text->m_verbatim || !joined.unique() || !more->is_valid())
        return false;
    const utString tail = more->get_string();
    if (tail.size() > max_text_length - std::min(text->get_value().size(), max_text_length))
        return false;
    text->append_value(tail);
    return true;
}

bool vorParameterString::is_expr() const {
    return !m_verbatim && vorParameterScalar::is_expr();
}

vorParameterPtr vorParameterString::evaluate() const {
    if (!is_expr())
        return vorParameterPtr(create_new());
    vorParameterPtr result = vorParameter::evaluate();
    if (ut_dynamic_cast(result.get()) || result->is_error())
        return result;
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameterString::operate_binary(const utString& op,
                                                   const vorParameterPtr& other) const {
    const bool ordering = op == ">" || op == ">=" || op == "<" || op == "<=";
    if (ordering && (other->type() == TYPE_STRING || other->type() == TYPE_NUMERIC)) {
        int cmp = vorcompare(get_string().view(), other->get_string().view());
        bool result = op == ">" ? cmp > 0 : op == ">=" ? cmp >= 0 : op == "<" ? cmp < 0 : cmp < 1;
        return vorParameterNumeric::create_bool(result);
    }
    return vorParameterScalar::operate_binary(op, other);
}

utString vorParameterString::print(int) const {
    utString text = is_valid() ? "(STRING) " : "(STRING !) ";
    text += get_value();
    if (is_expr()) {
        utString evaluated = get_string();
        if (evaluated != get_value()) {
            text += " = ";
            text += evaluated;
        }
    }
    text += '\n';
    return text;
}

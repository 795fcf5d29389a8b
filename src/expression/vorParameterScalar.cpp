//===- vorParameterScalar.cpp - Single values kept as text ----------------===//

#include "vorparameter/expression/vorParameterScalar.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterGuards.h"
#include "vorparameter/parameter/vorParameterUpdateTrack.h"
#include "vorparameter/platform/vorUnitsUtils.h"

UT_DEFINE_TYPE(vorParameterScalar, vorParameter)

vorParameterScalar::vorParameterScalar(const vorParameterScalar& other)
    : vorParameter(other)
    , m_value(other.m_value) {
    record_default_if_missing();
}

void vorParameterScalar::record_default_if_missing() {
    if (get_impl()->default_value.is_invalid())
        get_impl()->default_value = m_value;
}

bool vorParameterScalar::has_interpolation(const utString& text) {
    return text.contains("%[") || text.contains("${");
}

utString vorParameterScalar::get_expr() const {
    onread_callback();
    return m_value;
}

bool vorParameterScalar::is_expr() const {
    return has_interpolation(m_value);
}

utString vorParameterScalar::get_string() const {
    if (is_expr()) {
        vorParameterPtr result = evaluate();
        if (const vorParameterScalar* scalar = ut_dynamic_cast(result.get()))
            return scalar->get_string();
        return utString();
    }
    onread_callback();
    return m_value;
}

void vorParameterScalar::set_value(const utString& text) {
    if (text == m_value && text.is_invalid() == m_value.is_invalid())
        return;
    vorParameterUpdateTrack::track_parameter(this);
    m_value = text;
}

void vorParameterScalar::set_string(const utString& text) {
    if (is_locked())
        return;
    set_value(text);
    onmodify_callback();
}

bool vorParameterScalar::is_valid() const {
    vorParameterPtr result = evaluate();
    return result->type() == type() && vorParameter::is_valid();
}

bool vorParameterScalar::is_equal(const vorParameter& other) const {
    return vorParameter::is_equal(other) && get_expr() == other.get_expr();
}

void vorParameterScalar::set_defaults(const utString& value, const utString& alternative) {
    if (value != alternative)
        get_impl()->alt_default_value = vorEvaluator::localize(alternative);
    else
        get_impl()->alt_default_value.set_invalid();
    get_impl()->default_value = vorEvaluator::localize(value);
}

void vorParameterScalar::reset() {
    record_default_if_missing();
    const vorParameterImpl& impl = *get_impl();
    if (!impl.alt_default_value.is_invalid() && vorUnitsUtils::get_units() != UNITS_MM)
        set_string(impl.alt_default_value);
    else
        set_string(impl.default_value);
}

vorParameterPtr vorParameterScalar::operate_binary(const utString& op,
                                                   const vorParameterPtr& other) const {
    if (!other->is_valid())
        return vorParameterError::create(ERR_INVALID_ARGUMENTS);
    if (op == "==" || op == "!=") {
        bool same = get_string() == other->get_string();
        return vorParameterNumeric::create_bool(op == "==" ? same : !same);
    }
    if (op == "+")
        return vorParameterString::create_verbatim(get_string() + other->get_string().view());
    return vorParameter::operate_binary(op, other);
}

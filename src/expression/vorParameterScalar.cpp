//===- vorParameterScalar.cpp - Single values kept as text ----------------===//

#include "vorparameter/expression/vorParameterScalar.h"

#include "parameter/vorReadMemo.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterGuards.h"

#include "vorparameter/parameter/vorParameterUpdateTrack.h"
#include "vorparameter/platform/vorUnitsUtils.h"
#include <algorithm>

UT_DEFINE_TYPE(vorParameterScalar, vorParameter)

vorParameterScalar::vorParameterScalar(const vorParameterScalar& other)
    : vorParameter(other)
    , m_value(other.get_value()) {
    record_default_if_missing();
}

void vorParameterScalar::record_default_if_missing() {
    if (get_impl()->details().default_value.is_invalid())
        get_impl()->edit_details().default_value = get_value();
}

bool vorParameterScalar::has_interpolation(const utString& text) {
    return text.contains("%[") || text.contains("${");
}

utString vorParameterScalar::get_expr() const {
    onread_callback();
    return get_value();
}

bool vorParameterScalar::is_expr() const {
    return has_interpolation(get_value());
}

utString vorParameterScalar::get_string() const {
    if (is_expr()) {
        vorParameterPtr result = evaluate();
        if (const vorParameterScalar* scalar = ut_dynamic_cast(result.get()))
            return scalar->get_string();
        return utString();
    }
    onread_callback();
    return get_value();
}

void vorParameterScalar::set_value(const utString& text) {
    const utString& current = get_value();
    if (text == current && text.is_invalid() == current.is_invalid())
        return;
    vorParameterUpdateTrack::track_parameter(this);
    vorReadMemo::disturb();
    m_value = text;
}

void vorParameterScalar::append_value(const utString& more) {
    if (more.empty())
        return;
    vorParameterUpdateTrack::track_parameter(this);
    vorReadMemo::disturb();
    get_value(); // a deferred text is written before it is appended to
    m_value += more.view();
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
        get_impl()->edit_details().alt_default_value = vorEvaluator::localize(alternative);
    else
        get_impl()->edit_details().alt_default_value.set_invalid();
    get_impl()->edit_details().default_value = vorEvaluator::localize(value);
}

void vorParameterScalar::reset() {
    record_default_if_missing();
    const vorParameterImpl& impl = *get_impl();
    if (!impl.details().alt_default_value.is_invalid() && vorUnitsUtils::get_units() != UNITS_MM)
        set_string(impl.details().alt_default_value);
    else
        set_string(impl.details().default_value);
}

namespace {

/// "==" or "!=" of two scalars of which at least one is an enumeration. Both
/// texts must name a state of every enumeration operand, so that a misspelt
/// state ("strategy == 'rastr'") is a type error rather than a silent false;
/// names then compare after the synonym table, as states are looked up.
vorParameterPtr compare_with_enumeration(const utString& op, const vorParameter& lhs,
                                         const vorParameter& rhs) {
    // Read as the host would read them unlocked: an on-read callback may
    // refresh the value, which a lock would refuse.
    vorParameterNoLock unlocked;
    const utString left = lhs.get_string();
    const utString right = rhs.get_string();
    for (const vorParameter* operand : {&lhs, &rhs}) {
        const vorParameterEnum* enumeration = vorParameterEnum::ut_dynamic_cast(operand->get_ref());
        if (enumeration &&
            (enumeration->find_index(left) < 0 || enumeration->find_index(right) < 0))
            return vorParameterError::create(ERR_TYPE);
    }
    const bool same = vorParameterEnum::lookup_state_synonym(left) ==
                      vorParameterEnum::lookup_state_synonym(right);
    return vorParameterNumeric::create_bool(op == "==" ? same : !same);
}

} // namespace

vorParameterPtr vorParameterScalar::operate_binary(const utString& op,
                                                   const vorParameterPtr& other) const {
    if (!other->is_valid())
        return vorParameterError::create(ERR_INVALID_ARGUMENTS);
    if (op == "==" || op == "!=") {
        if (type() == TYPE_ENUM || other->type() == TYPE_ENUM)
            return compare_with_enumeration(op, *this, *other);
        bool same = get_string() == other->get_string();
        return vorParameterNumeric::create_bool(op == "==" ? same : !same);
    }
    if (op == "+") {
        utString text = get_string();
        const utString more = other->get_string();
        if (more.size() > vorParameterString::max_text_length -
                              std::min(text.size(), vorParameterString::max_text_length))
            return vorParameterError::create(ERR_DOMAIN);
        text += more.view();
        return vorParameterString::create_verbatim(text);
    }
    return vorParameter::operate_binary(op, other);
}

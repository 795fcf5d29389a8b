//===- vorParameterEnum.cpp - Choices among named states ------------------===//

#include "vorparameter/containers/vorParameterEnum.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/platform/vorTranslate.h"

UT_DEFINE_TYPE(vorParameterEnum, vorParameterScalar)

vorParameterEnum::vorParameterEnum() {
    record_default_if_missing();
}

namespace {

/// The name of state 0 of a states text: the text up to the first "|".
utString first_state_of(const utString& states) {
    return utString(states.view().substr(0, states.view().find('|')));
}

} // namespace

vorParameterEnum::vorParameterEnum(const utString& states, const utString& value)
    : vorParameterScalar(value.empty() ? first_state_of(states) : value) {
    const std::string_view text = states.view();
    for (std::size_t start = 0;;) {
        const std::size_t bar = text.find('|', start);
        add_state(utString(text.substr(start, bar - start)), utString(), utString(), utString());
        if (bar == std::string_view::npos)
            break;
        start = bar + 1;
    }
    record_default_if_missing();
}

//===----------------------------------------------------------------------===//
// States
//===----------------------------------------------------------------------===//

void vorParameterEnum::add_state(const utString& name, const utString& title, const utString& desc,
                                 const utString& condition) {
    if (is_locked())
        return;
    if (!name.empty())
        m_index_of_name.emplace(name, num_states());
    m_states.push_back({name, title, desc, condition});
}

int vorParameterEnum::find_index(const utString& name) const {
    auto found = m_index_of_name.find(lookup_state_synonym(name));
    return found == m_index_of_name.end() ? -1 : found->second;
}

utString vorParameterEnum::find_state(int index) const {
    if (index < 0 || index >= num_states())
        return utString();
    return m_states[static_cast<std::size_t>(index)].name;
}

const vorParameterEnumState* vorParameterEnum::state_named(const utString& name) const {
    const int index = find_index(name);
    return index < 0 ? nullptr : &m_states[static_cast<std::size_t>(index)];
}

utString vorParameterEnum::get_state_title(const utString& name) const {
    const vorParameterEnumState* state = state_named(name);
    return state ? state->title : utString();
}

utString vorParameterEnum::get_state_desc(const utString& name) const {
    const vorParameterEnumState* state = state_named(name);
    return state ? state->desc : utString();
}

bool vorParameterEnum::is_state_active(int index) const {
    if (index < 0)
        index += num_states();
    if (index < 0 || index >= num_states())
        return false;
    const utString& condition = m_states[static_cast<std::size_t>(index)].condition;
    if (condition.empty())
        return true;

    // A condition costs one evaluation of the read's budget, like an active
    // expression, so that conditions that read each other cannot run away.
    vorEvalLevel level(EVAL_EXPRESSION);
    if (level.refused())
        return false;
    vorParameterPtr result = vorEvaluator(this).evaluate(condition);
    return result->type() == TYPE_NUMERIC && result->get_int() != 0;
}

void vorParameterEnum::strip_active_states() {
    for (vorParameterEnumState& state : m_states)
        state.condition.clear();
}

//===----------------------------------------------------------------------===//
// Value
//===----------------------------------------------------------------------===//

int vorParameterEnum::get_int() const {
    const int index = find_index(get_string());
    return index < 0 ? 0 : index;
}

void vorParameterEnum::set_int(int index) {
    if (is_locked())
        return;
    set_value(find_state(index));
    onmodify_callback();
}

void vorParameterEnum::set_string(const utString& text) {
    if (is_locked())
        return;
    long long index = 0;
    if (text.parse_int(index) && index >= 0)
        set_value(index < num_states() ? find_state(static_cast<int>(index)) : utString());
    else
        set_value(lookup_state_synonym(text));
    onmodify_callback();
}

bool vorParameterEnum::is_valid() const {
    utString name;
    if (is_expr()) {
        vorParameterPtr result = evaluate();
        if (result->is_error())
            return false;
        name = result->get_string();
    } else {
        name = get_string();
    }
    return find_index(name) >= 0 && vorParameter::is_valid();
}

vorParameterPtr vorParameterEnum::evaluate() const {
    if (!is_expr())
        return vorParameterPtr(create_new());
    vorParameterPtr result = vorParameter::evaluate();
    const vorParameterType type = result->type();
    if (type == TYPE_STRING || type == TYPE_ENUM || type == TYPE_ERROR)
        return result;
    return vorParameterError::create(ERR_TYPE);
}

utString vorParameterEnum::get_translated_string() const {
    const utString name = get_string();
    const utString title = get_state_title(name);
    return vortranslate(title.empty() ? name : title);
}

utString vorParameterEnum::print(int) const {
    utString text = is_valid() ? "(ENUM) " : "(ENUM !) ";
    text += get_value();
    const utString evaluated = get_string();
    if (evaluated != get_value()) {
        text += " =";
        text += evaluated;
    }
    text += '\n';
    return text;
}

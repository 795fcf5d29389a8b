//===- vorParameterVector.cpp - Arrays with named accessors ---------------===//

#include "vorparameter/containers/vorParameterVector.h"

#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>

UT_DEFINE_TYPE(vorParameterVector, vorParameterArray)

namespace {

/// The names each access type installs; null for those that install none.
const char* names_of(vorParameterVectorAccessType type) {
    switch (type) {
    case VECTOR_ACCESS_NONE:
        return "";
    case VECTOR_ACCESS_XYZ:
        return "X,Y,Z";
    case VECTOR_ACCESS_ORDINAL:
        return "First,Second,Third,Fourth,Fifth,Sixth,Seventh,Eighth,Ninth,Tenth";
    case VECTOR_ACCESS_PLANES:
        return "XY,YZ,ZX";
    case VECTOR_ACCESS_RGB:
        return "R,G,B";
    default:
        return nullptr;
    }
}

/// What `text` evaluates to in the scope of `scope` when that is an array of
/// `size` elements (at least one); otherwise null.
vorParameterPtr evaluate_array(const vorParameter& scope, const utString& text, int size) {
    if (text.empty() || size == 0)
        return vorParameterPtr();
    vorParameterPtr result = vorEvaluator(&scope).evaluate(text);
    const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(result.par());
    return array && array->size() == size ? result : vorParameterPtr();
}

/// Element `i` of an array that evaluate_array() answered.
const vorParameterPtr& element_of(const vorParameterPtr& array, int i) {
    return static_cast<const vorParameterArray&>(*array.par()).at(i);
}

} // namespace

vorParameterVector::vorParameterVector(int n, vorParameterPtr prototype) {
    const int count = std::clamp(n, 0, max_elements);
    reserve(count);
    for (int i = 0; i < count; ++i)
        insert_element(i, prototype.copy());
}

vorParameterVector::vorParameterVector(const vorParameterVector& other)
    : vorParameterArray(other)
    , m_access_type(other.m_access_type)
    , m_names(other.m_names)
    , m_name_list(other.m_name_list)
    , m_lower_names(other.m_lower_names) {}

vorParameterVector& vorParameterVector::operator=(const vorParameterVector& other) {
    if (this != &other) {
        vorParameterArray::operator=(other);
        m_access_type = other.m_access_type;
        copy_names_from(other);
    }
    return *this;
}

//===----------------------------------------------------------------------===//
// Accessor names
//===----------------------------------------------------------------------===//

void vorParameterVector::set_access_type(vorParameterVectorAccessType type) {
    m_access_type = type;
    if (const char* names = names_of(type))
        install_names(names);
}

void vorParameterVector::set_access_type(const utString& names) {
    m_access_type = VECTOR_ACCESS_CUSTOM;
    install_names(names);
}

void vorParameterVector::install_names(const utString& names) {
    m_name_list.clear();
    m_lower_names.clear();
    std::size_t start = 0;
    while (!names.empty()) {
        const std::size_t comma = names.find(",", start);
        push_name(vortrim(names.view().substr(start, comma - start)));
        if (comma == utString::npos)
            break;
        start = comma + 1;
    }
    m_names = names;
    m_keys.reset();
}

void vorParameterVector::push_name(const utString& name) {
    m_name_list.push_back(name);
    m_lower_names.push_back(vordowncase(name.view()));
}

bool vorParameterVector::has_name(const utString& name) const {
    const utString lower = vordowncase(name.view());
    return std::find(m_lower_names.begin(), m_lower_names.end(), lower) != m_lower_names.end();
}

void vorParameterVector::append_name(const utString& name) {
    // Extends the text rather than rebuilding it, so that naming n elements
    // one by one stays linear.
    if (!m_name_list.empty())
        m_names += ',';
    m_names += name;
    push_name(name);
    m_keys.reset();
}

void vorParameterVector::erase_names(int from, int to) {
    const int last = std::min(to, name_count());
    if (from >= last)
        return;
    m_name_list.erase(m_name_list.begin() + from, m_name_list.begin() + last);
    m_lower_names.erase(m_lower_names.begin() + from, m_lower_names.begin() + last);
    rebuild_names_text();
}

void vorParameterVector::copy_names_from(const vorParameterVector& other) {
    m_names = other.m_names;
    m_name_list = other.m_name_list;
    m_lower_names = other.m_lower_names;
    m_keys.reset();
}

void vorParameterVector::rebuild_names_text() {
    m_names.clear();
    for (const utString& name : m_name_list) {
        if (&name != &m_name_list.front())
            m_names += ',';
        m_names += name;
    }
    m_keys.reset();
}

int vorParameterVector::accessor_index(const vorParameterKey& key) const {
    if (key.type() != TYPE_MAP || m_lower_names.empty())
        return -1;
    const utString& wanted = key.impl().first_lower();
    const int limit = std::min(name_count(), size());
    for (int i = 0; i < limit; ++i)
        if (m_lower_names[static_cast<std::size_t>(i)] == wanted)
            return i;
    return -1;
}

vorParameterKey vorParameterVector::apply_accessors(const vorParameterKey& key) const {
    const int i = accessor_index(key);
    return i < 0 ? key : vorParameterKey(i, key.remainder_str());
}

vorParameterPtr vorParameterVector::get_keys() const {
    const int wanted = std::min(name_count(), size());
    if (m_keys.is_null() || m_keys->size() != wanted)
        m_keys = vorParameterList::of_strings(
            std::vector<utString>(m_name_list.begin(), m_name_list.begin() + wanted));
    return m_keys;
}

//===----------------------------------------------------------------------===//
// Lookup and structure
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameterVector::lookup(const vorParameterKey& key, bool as_const) const {
    if (key.type() == TYPE_MAP && key.first() == "_keys" && !m_name_list.empty())
        return lookup_rest(get_keys(), key, as_const);
    const int i = accessor_index(key);
    if (i >= 0)
        return lookup_rest(elements()[static_cast<std::size_t>(i)], key, as_const);
    return index_lookup(key, as_const);
}

vorParameterPtr vorParameterVector::operator[](const vorParameterKey& key) const {
    return lookup(key, true);
}

vorParameterPtr vorParameterVector::operator[](const vorParameterKey& key) {
    return lookup(key, false);
}

vorParameterPtr vorParameterVector::add(const vorParameterKey& key, vorParameterPtr par) {
    return vorParameterArray::add(apply_accessors(key), std::move(par));
}

vorParameterPtr vorParameterVector::remove(const vorParameterKey& key) {
    return vorParameterArray::remove(apply_accessors(key));
}

//===----------------------------------------------------------------------===//
// Values
//===----------------------------------------------------------------------===//

void vorParameterVector::copy_elements_from(const vorParameter& source) {
    const vorParameterArray* other = vorParameterArray::ut_dynamic_cast(source.get_ref());
    if (!other || other == this || other->size() != size() || size() == 0)
        return;
    // Copies first: the source may hold this vector's own elements, as
    // "{Y;X;Z}" does, and must be read before any of them changes.
    vorParameterPtrcoDList values;
    values.reserve(other->elements().size());
    for (const vorParameterPtr& element : other->elements())
        values.push_back(element.copy());
    for (std::size_t i = 0; i < values.size(); ++i)
        elements()[i]->copy_value_from(*values[i]);
}

void vorParameterVector::set_string(const utString& text) {
    if (is_locked())
        return;
    vorParameterPtr result = evaluate_array(*this, text, size());
    if (!result.is_null())
        copy_elements_from(*result);
}

void vorParameterVector::copy_value_from(const vorParameter& source) {
    copy_elements_from(source);
}

void vorParameterVector::set_defaults(const utString& value, const utString& alternative) {
    vorParameterPtr values = evaluate_array(*this, value, size());
    if (values.is_null())
        return;
    vorParameterPtr alternatives = evaluate_array(*this, alternative, size());
    for (int i = 0; i < size(); ++i) {
        vorParameter& element = *at(i);
        // Elements cloned from one prototype share a record, and with it the
        // defaults: each needs its own before it can have its own default.
        if (!element.get_impl().unique())
            element.set_impl(vorParameterImplPtr::clone_of(*element.get_impl()));
        // A scalar reads an alternative equal to the value as "none".
        const utString text = element_of(values, i)->get_string();
        element.set_defaults(
            text, alternatives.is_null() ? text : element_of(alternatives, i)->get_string());
    }
}

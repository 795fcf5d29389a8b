//===- vorParameterList.cpp - Arrays of one element type ------------------===//

#include "vorparameter/containers/vorParameterList.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <algorithm>

UT_DEFINE_TYPE(vorParameterList, vorParameterArray)

vorParameterList::vorParameterList(vorParameterPtr prototype)
    : m_element_type(parented_clone(prototype)) {}

vorParameterList::vorParameterList(const vorParameterList& other)
    : vorParameterArray(other)
    , m_element_type(parented_clone(other.m_element_type)) {}

vorParameterList& vorParameterList::operator=(const vorParameterList& other) {
    if (this != &other) {
        vorParameterPtr old_type = m_element_type;
        m_element_type = parented_clone(other.m_element_type);
        unlink_par(old_type);
        vorParameterArray::operator=(other);
    }
    return *this;
}

vorParameterList::~vorParameterList() {
    unlink_par(m_element_type);
}

vorParameterPtr vorParameterList::of_strings(const std::vector<utString>& names) {
    if (names.size() > static_cast<std::size_t>(max_elements))
        return vorParameterError::create(ERR_UNKNOWN);
    auto* list = new vorParameterList(vorParameterPtr(new vorParameterString()));
    vorParameterPtr result(list);
    list->reserve(static_cast<int>(names.size()));
    for (const utString& name : names)
        list->insert_element(list->size(), vorParameterPtr(new vorParameterString(name)));
    return result;
}

vorParameterPtr vorParameterList::operator[](const vorParameterKey& key) const {
    return growing_lookup(key, true);
}

vorParameterPtr vorParameterList::operator[](const vorParameterKey& key) {
    return growing_lookup(key, false);
}

vorParameterPtr vorParameterList::make_element(const vorParameterPtr& par, bool& copy_value) const {
    const bool given = !par.is_null() && !par->is_error();
    const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(m_element_type.get());
    if (map && !map->is_fixed() && given)
        return par.copy();
    copy_value = given && vorParameterScalar::ut_dynamic_cast(m_element_type.get()) != nullptr;
    return m_element_type.copy();
}

vorParameterPtr vorParameterList::add(const vorParameterKey& key, vorParameterPtr par) {
    int pos = 0;
    vorParameterPtr error = insert_position(key, pos);
    if (!error.is_null())
        return error;
    if (m_element_type->is_error())
        return vorParameterError::create(ERR_UNKNOWN);
    bool copy_value = false;
    vorParameterPtr element = insert_element(pos, make_element(par, copy_value));
    // The value is copied once the element is in place, so that its change
    // notification travels up through this list.
    if (copy_value && !element->is_error())
        element->copy_value_from(*par);
    return element;
}

void vorParameterList::set_int(int n) {
    if (is_locked())
        return;
    const int wanted = std::clamp(n, 0, max_elements);
    if (wanted == size())
        return;
    reserve(wanted);
    while (size() < wanted)
        if (add(vorParameterKey(), vorParameterPtr())->is_error())
            break;
    if (size() > wanted)
        erase_elements(wanted, size());
    onmodify_callback();
}

void vorParameterList::copy_value_from(const vorParameter& source) {
    const vorParameterArray* other = vorParameterArray::ut_dynamic_cast(source.get_ref());
    if (!other || other == this)
        return;
    // Hold the source's elements first: resizing may release the source.
    const vorParameterPtrcoDList values = other->elements();
    set_int(static_cast<int>(values.size()));
    const std::size_t n = std::min(values.size(), elements().size());
    for (std::size_t i = 0; i < n; ++i)
        elements()[i]->copy_value_from(*values[i]);
}

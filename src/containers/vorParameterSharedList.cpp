//===- vorParameterSharedList.cpp - Lists of foreign parameters -----------===//

#include "vorparameter/containers/vorParameterSharedList.h"

#include "vorparameter/expression/vorParameterError.h"

UT_DEFINE_TYPE(vorParameterSharedList, vorParameterArray)

namespace {

/// Keys a shared list accepts for add() and remove(): the empty key or a
/// bare index.
bool is_plain_index(const vorParameterKey& key) {
    return key.empty() || (key.type() == TYPE_ARRAY && key.remainder_str().empty());
}

} // namespace

vorParameterSharedList::vorParameterSharedList(vorParameterPtr prototype)
    : vorParameterArray(SHARES_ELEMENTS)
    , m_element_type(parented_clone(prototype)) {}

vorParameterSharedList::vorParameterSharedList(const vorParameterSharedList& other)
    : vorParameterArray(other)
    , m_element_type(parented_clone(other.m_element_type)) {}

vorParameterSharedList& vorParameterSharedList::operator=(const vorParameterSharedList& other) {
    if (this != &other) {
        vorParameter::operator=(other);
        copy_value_from(other);
    }
    return *this;
}

vorParameterSharedList::~vorParameterSharedList() {
    unlink_par(m_element_type);
}

vorParameterPtr vorParameterSharedList::operator[](const vorParameterKey& key) const {
    return growing_lookup(key, true);
}

vorParameterPtr vorParameterSharedList::operator[](const vorParameterKey& key) {
    return growing_lookup(key, false);
}

bool vorParameterSharedList::accepts(const vorParameter& par) const {
    // An error (type none) passes both checks: it stands for "a fresh element".
    if (par.type() == TYPE_ERROR)
        return true;
    return par.type() == get_type(*m_element_type) && par.parent() && !would_own_itself(par);
}

vorParameterPtr vorParameterSharedList::add(const vorParameterKey& key, vorParameterPtr par) {
    if (!is_plain_index(key))
        return vorParameterError::create(ERR_INVALID_NAME);
    int pos = 0;
    vorParameterPtr error = insert_position(key, pos);
    if (!error.is_null())
        return error;
    if (m_element_type->is_error() || !accepts(*par))
        return vorParameterError::create(ERR_UNKNOWN);
    if (par->is_error())
        par = m_element_type.copy();
    return insert_element(pos, std::move(par));
}

vorParameterPtr vorParameterSharedList::remove(const vorParameterKey& key) {
    if (!is_plain_index(key))
        return vorParameterError::create(ERR_INVALID_NAME);
    return vorParameterArray::remove(key);
}

void vorParameterSharedList::copy_value_from(const vorParameter& source) {
    const vorParameterSharedList* other = ut_dynamic_cast(source.get_ref());
    if (!other || other == this)
        return;
    vorParameterPtr old_type = m_element_type;
    m_element_type = parented_clone(other->m_element_type);
    unlink_par(old_type);
    vorParameterArray::copy_value_from(*other);
}

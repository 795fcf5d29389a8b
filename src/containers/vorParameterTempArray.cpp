//===- vorParameterTempArray.cpp - Working arrays of evaluation -----------===//

#include "vorparameter/containers/vorParameterTempArray.h"

#include "vorparameter/expression/vorParameterError.h"

#include <algorithm>

UT_DEFINE_TYPE(vorParameterTempArray, vorParameterVector)

namespace {

vorParameterPtr invalid_name() {
    return vorParameterError::create(ERR_INVALID_NAME);
}

} // namespace

vorParameterPtr vorParameterTempArray::add(const vorParameterKey& key, vorParameterPtr par) {
    if (would_own_itself(*par))
        return vorParameterError::create(ERR_UNKNOWN);
    if (key.empty())
        return insert_element(size(), std::move(par));
    if (key.type() == TYPE_MAP)
        return add_named(key.first(), std::move(par));
    int index = 0;
    if (!key.index(index) || name_count() > 0)
        return invalid_name();
    const int pos = index == -1 ? size() : std::clamp(index, 0, size());
    return insert_element(pos, std::move(par));
}

vorParameterPtr vorParameterTempArray::add_named(const utString& name, vorParameterPtr par) {
    if (has_name(name) || name_count() != size())
        return invalid_name();
    // A full array refuses the element, and then its name too.
    const int before = size();
    vorParameterPtr added = insert_element(before, std::move(par));
    if (size() > before)
        append_name(name);
    return added;
}

vorParameterPtr vorParameterTempArray::remove(const vorParameterKey& key) {
    int i = accessor_index(key);
    if (i < 0 && !index_in(key, 0, size() - 1, i))
        return invalid_name();
    vorParameterPtr removed = at(i);
    erase_elements(i, i + 1);
    return removed;
}

void vorParameterTempArray::erase_elements(int from, int to) {
    vorParameterVector::erase_elements(from, to);
    erase_names(from, to);
}

void vorParameterTempArray::copy_value_from(const vorParameter& source) {
    const vorParameterArray* other = vorParameterArray::ut_dynamic_cast(source.get_ref());
    if (!other || other == this || !assign_elements(*other))
        return;
    erase_names(0, name_count());
    if (const vorParameterVector* vector = vorParameterVector::ut_dynamic_cast(other))
        copy_names_from(*vector);
}

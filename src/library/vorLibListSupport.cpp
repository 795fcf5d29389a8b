//===- vorLibListSupport.cpp - Lists as arguments and results -------------===//

#include "library/vorLibListSupport.h"

#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterSharedList.h"
#include "vorparameter/containers/vorParameterTempArray.h"
#include "vorparameter/library/vorParameterLib.h"

namespace vorLibLists {

const vorParameterArray* as_list(const vorParameterPtr& arg) {
    const vorParameter* value = arg.par();
    return value->type() == TYPE_ARRAY ? vorParameterArray::ut_dynamic_cast(value) : nullptr;
}

bool is_literal(const vorParameterArray& list) {
    return vorParameterTempArray::ut_dynamic_cast(&list) != nullptr;
}

vorParameterPtr list_to_change(const vorParameterPtr& arg) {
    const vorParameterArray* list = as_list(arg);
    if (!list)
        return vorParameterPtr();
    if (is_literal(*list))
        return owned_copy(arg);
    return vorParameterPtr::share(const_cast<vorParameterArray*>(list));
}

vorParameterPtr owned_copy(const vorParameterPtr& item) {
    const vorParameterArray* list = as_list(item);
    if (!list || !is_literal(*list))
        return item.copy();
    auto* copy = new vorParameterArray();
    vorParameterPtr result(copy);
    for (const vorParameterPtr& element : list->elements())
        copy->append(owned_copy(element));
    return result;
}

vorParameterPtr empty_like(const vorParameterArray& source) {
    const auto prototype = [](const vorParameter& type) {
        return vorParameterPtr(type.create_new());
    };
    if (const auto* list = vorParameterList::ut_dynamic_cast(&source))
        return vorParameterPtr(new vorParameterList(prototype(list->get_element_type())));
    if (const auto* shared = vorParameterSharedList::ut_dynamic_cast(&source))
        return vorParameterPtr(new vorParameterSharedList(prototype(shared->get_element_type())));
    return vorParameterPtr(new vorParameterArray());
}

vorParameterPtr append_item(vorParameterArray& result, const vorParameterPtr& item) {
    if (vorParameterSharedList::ut_dynamic_cast(&result))
        return result.append(item);
    // The list's own add() would make a fresh element from its element type
    // (dropping the values of a fixed map, for one); the item already is an
    // element of a list of that type, so its exact copy goes in.
    return result.vorParameterArray::add(vorParameterKey(), owned_copy(item));
}

vorParameterArray* unlocked_list(const vorParameterPtr& list, vorParameterPtr& refusal) {
    auto* array = vorParameterArray::ut_dynamic_cast(list.get());
    if (!array)
        refusal = vorParameterLib::error(ERR_INVALID_ARGUMENTS);
    else if (array->is_locked())
        refusal = vorParameterLib::error(ERR_UNKNOWN);
    return refusal.is_null() ? array : nullptr;
}

} // namespace vorLibLists

//===- vorLibListFunctions.cpp - List and dictionary functions ------------===//
//
// add_first, add_last, remove_first, remove_last, is_empty, values, fill,
// get_typename, extract, reverse and dict_set_value. docs/functions-lists.md
// describes each for users.
//
// A wrong number of arguments, an argument of the wrong kind or an error
// value as an argument gives ERR_INVALID_ARGUMENTS. A list of the tree that
// is locked refuses every change with ERR_UNKNOWN, as its own add() and
// remove() do; so does a list that would grow past
// vorParameterArray::max_elements.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibListSupport.h"
#include "library/vorLibSupport.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <vector>

using vorLibSupport::invalid_arguments;
using namespace vorLibLists;

namespace {

/// The one argument of a call that takes a single list, or null.
const vorParameterArray* single_list(const vorParameterPtr& args, vorParameterPtr& holder) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return nullptr;
    holder = decoder.next_argument();
    return as_list(holder);
}

/// Adds the second argument to the first at index `at` (0 for the front, -1
/// for the end), and answers the changed list.
vorParameterPtr add_item_at(const vorParameterPtr& args, int at) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    vorParameterPtr list = list_to_change(decoder.next_argument());
    vorParameterPtr item = decoder.next_argument();
    if (item->is_error())
        return invalid_arguments();
    vorParameterPtr refusal;
    vorParameterArray* array = unlocked_list(list, refusal);
    if (!array)
        return refusal;
    // A list decides for itself what it stores (an integer list turns "5"
    // into 5) and a shared list holds the item itself; any other array gets
    // a copy, so that the item stays where it lives.
    const bool holds_copies = array->subtype() != SUB_LIST && array->subtype() != SUB_SHARED_LIST;
    vorParameterPtr added =
        array->add(vorParameterKey(at, utString()), holds_copies ? owned_copy(item) : item);
    return added->is_error() ? added : list;
}

/// Takes out the item at the front (`from_end` false) or at the end, and
/// answers it.
vorParameterPtr take_item(const vorParameterPtr& args, bool from_end) {
    vorParameterPtr arg;
    const vorParameterArray* source = single_list(args, arg);
    if (!source)
        return invalid_arguments();
    // A brace list loses the item only in its copy: answer a copy of it.
    if (is_literal(*source)) {
        if (source->size() == 0)
            return vorParameterLib::error(ERR_INVALID_NAME);
        return owned_copy(source->at(from_end ? source->size() - 1 : 0));
    }
    vorParameterPtr refusal;
    vorParameterArray* list = unlocked_list(list_to_change(arg), refusal);
    if (!list)
        return refusal;
    return list->remove(vorParameterKey(from_end ? list->size() - 1 : 0, utString()));
}

} // namespace

vorParameterPtr vorParameterLib::add_first(const vorParameterPtr& args) {
    return add_item_at(args, 0);
}

vorParameterPtr vorParameterLib::add_last(const vorParameterPtr& args) {
    return add_item_at(args, -1);
}

vorParameterPtr vorParameterLib::remove_first(const vorParameterPtr& args) {
    return take_item(args, false);
}

vorParameterPtr vorParameterLib::remove_last(const vorParameterPtr& args) {
    return take_item(args, true);
}

vorParameterPtr vorParameterLib::is_empty(const vorParameterPtr& args) {
    vorParameterPtr arg;
    const vorParameterArray* list = single_list(args, arg);
    return list ? vorParameterNumeric::create_bool(list->size() == 0) : invalid_arguments();
}

/// values(enum): the names of the enumeration's states, in their order.
vorParameterPtr vorParameterLib::values(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    const vorParameterEnum* enumeration =
        decoder.count() == 1 ? decoder.next_argument_as<vorParameterEnum>() : nullptr;
    if (!enumeration)
        return invalid_arguments();
    std::vector<utString> names;
    names.reserve(static_cast<std::size_t>(enumeration->num_states()));
    for (int i = 0; i < enumeration->num_states(); ++i)
        names.push_back(enumeration->find_state(i));
    return vorParameterList::of_strings(names);
}

vorParameterPtr vorParameterLib::get_typename(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    if (arg->is_error())
        return invalid_arguments();
    return vorLibSupport::make_string(arg.par()->get_typename());
}

namespace vorParameterLibFunctions {

/// fill(size; value): a list whose element type is a copy of `value`, with
/// `size` elements made from it.
vorParameterPtr fill(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    const vorParameterNumeric* size = vorLibSupport::as_number(decoder.next_argument());
    vorParameterPtr value = decoder.next_argument();
    if (!size || value->is_error())
        return invalid_arguments();
    const double count = size->get_double();
    if (!(count >= 0 && count <= vorParameterArray::max_elements))
        return vorParameterLib::error(ERR_DOMAIN);
    vorParameterPtr list(new vorParameterList(owned_copy(value)));
    list->set_int(size->get_int());
    return list;
}

/// extract(list; name): copies of the member `name` (a path, such as
/// "holder.length") of each item that has one, in the list's order.
vorParameterPtr extract(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    const vorParameterArray* list = as_list(arg);
    const vorParameterString* name = decoder.next_argument_as<vorParameterString>();
    if (!list || !name)
        return invalid_arguments();
    const vorParameterKey key(name->get_string());
    auto* extracted = new vorParameterArray();
    vorParameterPtr result(extracted);
    for (const vorParameterPtr& item : list->elements()) {
        if (item.par()->type() != TYPE_MAP)
            continue;
        vorParameterPtr member = (*item.par())[key];
        if (!member->is_error())
            extracted->append(owned_copy(member));
    }
    return result;
}

/// reverse(list): a new list of the items in the opposite order.
vorParameterPtr reverse(const vorParameterPtr& args) {
    vorParameterPtr arg;
    const vorParameterArray* list = single_list(args, arg);
    if (!list)
        return invalid_arguments();
    vorParameterPtr result = empty_like(*list);
    auto& reversed = static_cast<vorParameterArray&>(*result);
    for (int i = list->size() - 1; i >= 0; --i)
        append_item(reversed, list->at(i));
    return result;
}

/// dict_set_value(map; key; value): the member `key` of the map takes the
/// text `value`; a missing member is added as a string. Answers the map.
vorParameterPtr dict_set_value(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 3)
        return invalid_arguments();
    vorParameterPtr dict = decoder.next_argument();
    const vorParameterString* key_text = decoder.next_argument_as<vorParameterString>();
    vorParameterPtr value = decoder.next_argument();
    const vorParameterScalar* value_text = vorParameterScalar::ut_dynamic_cast(value.par());
    if (dict.par()->type() != TYPE_MAP || !key_text || !value_text || !value_text->is_valid())
        return invalid_arguments();
    // One member name: a path would reach into other containers.
    const vorParameterKey key(key_text->get_string());
    if (key.type() != TYPE_MAP || !key.remainder_str().empty())
        return vorParameterLib::error(ERR_INVALID_NAME);
    vorParameter& map = *dict.par();
    vorParameterPtr member = map[key];
    if (member->is_error()) {
        if (map.is_locked())
            return vorParameterLib::error(ERR_UNKNOWN);
        member = map.add(key, vorParameterPtr(new vorParameterString(utString())));
        if (member->is_error())
            return member;
    }
    if (!vorParameterScalar::ut_dynamic_cast(member.par()))
        return vorParameterLib::error(ERR_TYPE);
    if (member->is_locked())
        return vorParameterLib::error(ERR_UNKNOWN);
    member->set_string(value_text->get_string());
    return vorParameterPtr::share(&map);
}

} // namespace vorParameterLibFunctions

//===- vorLibSetFunctions.cpp - Membership and set functions --------------===//
//
// member, remove, remove_duplicates, set_union, subtract and intersection.
// Items are equal as vorLibItemIndex.h says (numbers within tolerance, texts
// exactly). The set functions find equal items through a vorLibItemIndex, so
// their cost grows with the number of items, not with its square.
//
// Their results keep the order of first occurrence: the items of the first
// list as they come, each once, then (set_union) the items of the second
// that the first lacks. A set result is a new plain array of copies.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibItemIndex.h"
#include "library/vorLibListSupport.h"
#include "library/vorLibSupport.h"

#include "vorparameter/library/vorParameterArgDecoder.h"

#include <algorithm>
#include <vector>

using vorLibSupport::invalid_arguments;
using namespace vorLibLists;

namespace {

/// The index of the first item of `list` equal to `value`, or -1.
int index_of(const vorParameterArray& list, const vorParameter& value) {
    for (int i = 0; i < list.size(); ++i)
        if (vorLibItemsEqual(*list.at(i).par(), value))
            return i;
    return -1;
}

/// The two lists of a set function, or false.
bool two_lists(const vorParameterPtr& args, vorParameterPtr& first, vorParameterPtr& second) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return false;
    first = decoder.next_argument();
    second = decoder.next_argument();
    return as_list(first) && as_list(second);
}

/// Which items of `list` come first among the items equal to them (and, with
/// `seen`, among those already added to it as well). Adds them to `seen`.
std::vector<bool> first_occurrences(const vorParameterArray& list, vorLibItemIndex& seen) {
    std::vector<bool> first(static_cast<std::size_t>(list.size()));
    for (int i = 0; i < list.size(); ++i) {
        const vorParameter& item = *list.at(i).par();
        if (seen.find(item))
            continue;
        seen.add(item);
        first[static_cast<std::size_t>(i)] = true;
    }
    return first;
}

vorLibItemIndex index_of_items(const vorParameterArray& list) {
    vorLibItemIndex index;
    for (const vorParameterPtr& item : list.elements())
        index.add(*item.par());
    return index;
}

/// A new plain array of copies of the items of `list` that `keep` marks, or
/// the error of an array that would grow past its limit.
vorParameterPtr append_kept(vorParameterPtr result, const vorParameterArray& list,
                            const std::vector<bool>& keep) {
    auto& array = static_cast<vorParameterArray&>(*result);
    for (int i = 0; i < list.size(); ++i) {
        if (!keep[static_cast<std::size_t>(i)])
            continue;
        vorParameterPtr added = array.append(owned_copy(list.at(i)));
        if (added->is_error())
            return added;
    }
    return result;
}

/// The items of `first` that `second` holds (`in_both`) or lacks, each once.
vorParameterPtr filter_by_second(const vorParameterPtr& args, bool in_both) {
    vorParameterPtr first;
    vorParameterPtr second;
    if (!two_lists(args, first, second))
        return invalid_arguments();
    const vorParameterArray& items = *as_list(first);
    const vorLibItemIndex other = index_of_items(*as_list(second));
    vorLibItemIndex seen;
    std::vector<bool> keep = first_occurrences(items, seen);
    for (int i = 0; i < items.size(); ++i)
        if (keep[static_cast<std::size_t>(i)])
            keep[static_cast<std::size_t>(i)] =
                (other.find(*items.at(i).par()) != nullptr) == in_both;
    return append_kept(vorParameterPtr(new vorParameterArray()), items, keep);
}

/// Keeps the elements of `list` that `keep` marks, in order, as the same
/// nodes: a list of the tree stays the list its host holds.
void retain(vorParameterArray& list, const std::vector<bool>& keep) {
    std::vector<vorParameterPtr> kept;
    for (int i = 0; i < list.size(); ++i)
        if (keep[static_cast<std::size_t>(i)])
            kept.push_back(list.at(i));
    list.remove_all();
    // The kept elements were made by the list's own rules already; the base
    // add() puts each back as it is, where a list's add() would make anew.
    for (vorParameterPtr& element : kept)
        list.vorParameterArray::add(vorParameterKey(), std::move(element));
}

} // namespace

vorParameterPtr vorParameterLib::member(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    const vorParameterArray* list = as_list(arg);
    vorParameterPtr value = decoder.next_argument();
    if (!list || value->is_error())
        return invalid_arguments();
    return vorParameterNumeric::create_bool(index_of(*list, *value.par()) >= 0);
}

vorParameterPtr vorParameterLib::remove(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    const vorParameterArray* source = as_list(arg);
    vorParameterPtr value = decoder.next_argument();
    if (!source || value->is_error())
        return invalid_arguments();
    const int found = index_of(*source, *value.par());
    // A brace list changes only in its copy, which no one sees.
    if (found < 0 || is_literal(*source))
        return vorParameterNumeric::create_bool(found >= 0);
    vorParameterPtr refusal;
    vorParameterArray* list = unlocked_list(list_to_change(arg), refusal);
    if (!list)
        return refusal;
    vorParameterPtr removed = list->remove(vorParameterKey(found, utString()));
    return removed->is_error() ? removed : vorParameterNumeric::create_bool(true);
}

vorParameterPtr vorParameterLib::remove_duplicates(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    const vorParameterArray* source = as_list(arg);
    if (!source)
        return invalid_arguments();
    vorLibItemIndex seen;
    const std::vector<bool> keep = first_occurrences(*source, seen);
    const auto removed = static_cast<double>(std::count(keep.begin(), keep.end(), false));
    if (removed == 0 || is_literal(*source))
        return vorLibSupport::make_number(SUB_INT, removed);
    vorParameterPtr refusal;
    vorParameterArray* list = unlocked_list(list_to_change(arg), refusal);
    if (!list)
        return refusal;
    retain(*list, keep);
    return vorLibSupport::make_number(SUB_INT, removed);
}

vorParameterPtr vorParameterLib::set_union(const vorParameterPtr& args) {
    vorParameterPtr first;
    vorParameterPtr second;
    if (!two_lists(args, first, second))
        return invalid_arguments();
    vorLibItemIndex seen;
    const std::vector<bool> from_first = first_occurrences(*as_list(first), seen);
    const std::vector<bool> from_second = first_occurrences(*as_list(second), seen);
    vorParameterPtr result =
        append_kept(vorParameterPtr(new vorParameterArray()), *as_list(first), from_first);
    return result->is_error() ? result : append_kept(result, *as_list(second), from_second);
}

vorParameterPtr vorParameterLib::subtract(const vorParameterPtr& args) {
    return filter_by_second(args, false);
}

vorParameterPtr vorParameterLib::intersection(const vorParameterPtr& args) {
    return filter_by_second(args, true);
}

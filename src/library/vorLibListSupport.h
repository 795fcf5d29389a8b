//===- vorLibListSupport.h - Lists as arguments and results ----*- C++ -*-===//
//
// What the list, set and dictionary functions share: taking a list argument
// and building a list result.
//
// A list argument is any array: a list, a shared list, a plain array, a
// vector, or a brace list of an expression ("{1; 2; 3}", a temporary array).
// A reference counts as what it refers to. A list of the tree is changed in
// place by the functions that change their list; a brace list holds items
// that belong elsewhere (a literal's numbers, or members of the tree named
// in it), so those functions work on a copy of it instead.
//
// Results hold copies of the chosen items, except that a shared list's
// result is again a shared list holding the same members, which live in
// their own containers.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORLIBLISTSUPPORT_H
#define VORPARAMETER_LIBRARY_VORLIBLISTSUPPORT_H

#include "vorparameter/containers/vorParameterArray.h"

namespace vorLibLists {

/// The array that `arg` is or refers to, or null (for an error too).
const vorParameterArray* as_list(const vorParameterPtr& arg);

/// True for a brace list of an expression.
bool is_literal(const vorParameterArray& list);

/// A list to change: the array of the tree itself, or a new plain array of
/// copies of a brace list's items. An empty handle when `arg` is no array.
vorParameterPtr list_to_change(const vorParameterPtr& arg);

/// A copy of `item` that owns what it holds: a brace list becomes a plain
/// array of such copies, anything else its own clone.
vorParameterPtr owned_copy(const vorParameterPtr& item);

/// A new, empty list for items taken from `source`: a list of the same
/// element type, a shared list of the same element type, or a plain array.
vorParameterPtr empty_like(const vorParameterArray& source);

/// Appends `item`, an item of a list like `result`'s source, to `result`
/// (made by empty_like): the item itself to a shared list, an owned copy to
/// anything else. Returns what was appended, or the error of a full array.
vorParameterPtr append_item(vorParameterArray& result, const vorParameterPtr& item);

/// `arg` as an array to change, when it is one and not locked; otherwise
/// `refusal` is set to the error to answer (ERR_INVALID_ARGUMENTS for no
/// array, ERR_UNKNOWN for a locked one) and null is returned.
vorParameterArray* unlocked_list(const vorParameterPtr& list, vorParameterPtr& refusal);

} // namespace vorLibLists

#endif // VORPARAMETER_LIBRARY_VORLIBLISTSUPPORT_H

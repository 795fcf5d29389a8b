//===- vorLibStateActive.cpp - The function "state_active" ----------------===//
//
// state_active(e; state): 1 when the state of the enumeration e is active,
// else 0. The state is an index (negative counts from the end: -1 is the
// last state) or a name (old names are read through the synonym table);
// without it, the state that e's value names. A state that e does not have
// is not active. Registered when the library is loaded, like the
// mathematical functions.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/library/vorParameterArgDecoder.h"

namespace {

/// The state of `choice` that `arg` names: a number's integer value as an
/// index, a text as a name. False when `arg` is neither; `exists` is false
/// for a name that no state has (an index is for is_state_active to judge).
bool state_index(const vorParameterEnum& choice, const vorParameterPtr& arg, int& index,
                 bool& exists) {
    if (const vorParameterNumeric* number = vorLibSupport::as_number(arg)) {
        index = number->get_int();
        exists = true;
        return true;
    }
    if (arg->is_error() || arg.par()->type() != TYPE_STRING)
        return false;
    index = choice.find_index(arg->get_string());
    exists = index >= 0;
    return true;
}

const vorLibSupport::Registration state_active("state_active",
                                               &vorParameterLibFunctions::state_active,
                                               "Test whether an enum state of a parameter is "
                                               "active.");

} // namespace

vorParameterPtr vorParameterLibFunctions::state_active(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() < 1 || decoder.count() > 2)
        return vorLibSupport::invalid_arguments();
    const vorParameterPtr first = decoder.next_argument();
    const vorParameterEnum* choice =
        first->is_error() ? nullptr : vorParameterEnum::ut_dynamic_cast(first.par());
    if (!choice)
        return vorLibSupport::invalid_arguments();

    int index = choice->find_index(choice->get_string());
    bool exists = index >= 0;
    if (!decoder.all_arguments_used() &&
        !state_index(*choice, decoder.next_argument(), index, exists))
        return vorLibSupport::invalid_arguments();
    return vorParameterNumeric::create_bool(exists && choice->is_state_active(index));
}

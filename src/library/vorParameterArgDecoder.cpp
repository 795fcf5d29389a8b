//===- vorParameterArgDecoder.cpp - Taking a call's arguments -------------===//

#include "vorparameter/library/vorParameterArgDecoder.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/library/vorParameterLib.h"

namespace {

// The argument list as an array; null for anything else, which then holds no
// arguments.
const vorParameterArray* as_array(const vorParameterPtr& args) {
    return vorParameterArray::ut_dynamic_cast(args.get());
}

} // namespace

vorParameterPtr vorParameterArgDecoder::next_argument() {
    if (all_arguments_used())
        return vorParameterLib::error(ERR_INVALID_ARGUMENTS);
    return as_array(m_args)->at(static_cast<int>(m_next++));
}

bool vorParameterArgDecoder::all_arguments_used() const {
    return m_next >= static_cast<std::uint32_t>(count());
}

vorParameterPtr vorParameterArgDecoder::remaining_arguments() const {
    const vorParameterArray* array = as_array(m_args);
    if (!array)
        return vorParameterPtr(new vorParameterArray());
    return array->slice(static_cast<int>(m_next), array->size());
}

int vorParameterArgDecoder::count() const {
    const vorParameterArray* array = as_array(m_args);
    return array ? array->size() : 0;
}

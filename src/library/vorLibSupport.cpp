//===- vorLibSupport.cpp - Shared helpers of the library functions --------===//

#include "library/vorLibSupport.h"

#include "expression/vorNumericArithmetic.h"

#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterLib.h"

namespace vorLibSupport {

const vorParameterNumeric* as_number(const vorParameterPtr& arg) {
    const vorParameterNumeric* number = vorParameterNumeric::ut_dynamic_cast(arg.par());
    return number && number->is_valid() ? number : nullptr;
}

bool read_numbers(const vorParameterPtr& args, double* values, std::size_t count) {
    vorParameterArgDecoder decoder(args);
    if (static_cast<std::size_t>(decoder.count()) != count)
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        const vorParameterNumeric* number = as_number(decoder.next_argument());
        if (!number)
            return false;
        values[i] = number->get_double();
    }
    return true;
}

vorParameterPtr make_number(vorParameterSubType kind, double value, const vorDimensions& dim) {
    // The rule the operators and the math functions' kernels follow.
    return vorNumericOutcome::of(kind, dim, value).to_parameter();
}

vorParameterPtr make_string(const utString& text) {
    return vorParameterString::create_verbatim(text);
}

vorParameterPtr invalid_arguments() {
    return vorParameterLib::error(ERR_INVALID_ARGUMENTS);
}

Registration::Registration(const char* name, vorParameterLibFn fn, const char* desc) {
    vorParameterLib::add_entry(name, fn, desc);
}

} // namespace vorLibSupport

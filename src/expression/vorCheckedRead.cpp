//===- vorCheckedRead.cpp - Reading a number and why it failed ------------===//

#include "vorparameter/expression/vorCheckedRead.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"

namespace {

/// Why `numeric`, whose value read as 0.0, holds no number; an empty handle
/// when it does hold one (a true 0).
vorParameterPtr failure_of(const vorParameterNumeric& numeric) {
    double again = 0.0;
    if (numeric.get_evaluated_double(again))
        return vorParameterPtr();
    vorParameterPtr result = numeric.evaluate();
    return result->is_error() ? result : vorParameterError::create(ERR_TYPE);
}

} // namespace

vorCheckedDouble vorReadDouble(const vorParameterPtr& par) {
    const vorParameter* node = par.get();
    if (!node)
        return vorCheckedDouble::failure(vorParameterError::create(ERR_UNKNOWN));
    if (node->is_error())
        return vorCheckedDouble::failure(par);
    // get_ref() is a reference's referent, or the error its resolution gave.
    const vorParameter* target = node->get_ref();
    if (target->is_error())
        return vorCheckedDouble::failure(vorParameterPtr::share(const_cast<vorParameter*>(target)));
    const vorParameterNumeric* numeric = vorParameterNumeric::ut_dynamic_cast(target);
    if (!numeric)
        return vorCheckedDouble::failure(vorParameterError::create(ERR_TYPE));
    const double value = node->get_double();
    if (value != 0.0)
        return vorCheckedDouble::success(value);
    vorParameterPtr failure = failure_of(*numeric);
    return failure.is_null() ? vorCheckedDouble::success(value)
                             : vorCheckedDouble::failure(std::move(failure));
}

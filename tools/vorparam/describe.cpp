#include "describe.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterData.h"

namespace vorparam {

std::string describe(const vorParameterPtr& par) {
    if (par->is_error())
        return "error: " + par->get_expr().str();
    if (par->type() == TYPE_ARRAY) {
        std::string items;
        for (int i = 0, n = par->size(); i < n; ++i)
            items += (i ? "; " : "") + describe((*par)[vorParameterKey(i, utString())]);
        return "{" + items + "}";
    }

    const std::string value = par->get_string().str();
    if (const vorParameterNumeric* numeric = vorParameterNumeric::ut_dynamic_cast(par.get())) {
        const vorDimensions& dim = numeric->get_dim();
        if (dim.invalid())
            return value + " (no valid dimension)";
        const std::string dim_text = dim.get_string().str();
        return value + (dim_text.empty() ? " (dimensionless)" : " " + dim_text);
    }
    if (par->type() == TYPE_STRING)
        return "\"" + value + "\" (text)";
    if (const vorParameterData* data = vorParameterData::ut_dynamic_cast(par.get()))
        return "(host data of type " + data->get_data_type().str() + ")";
    if (const vorParameterEnum* choice = vorParameterEnum::ut_dynamic_cast(par.get())) {
        const std::string title = choice->get_state_title(utString(value)).str();
        return value + (title.empty() ? " (choice)" : " (" + title + ")");
    }
    return value;
}

} // namespace vorparam

#include "settings.h"

#include <ostream>

namespace vorparam {

std::string check_setting_syntax(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos || equals == 0)
        return "wants PATH=VALUE, not '" + argument + "'";
    return {};
}

Setting split_setting(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

bool values_evaluate(const std::vector<AppliedSetting>& applied, const char* command,
                     std::ostream& err) {
    bool all_ok = true;
    for (const AppliedSetting& setting : applied) {
        const vorParameterPtr value = setting.parameter->evaluate();
        if (!value->is_error())
            continue;
        err << "vorparam " << command << ": " << setting.argument << ": " << value->get_expr()
            << '\n';
        all_ok = false;
    }
    return all_ok;
}

} // namespace vorparam

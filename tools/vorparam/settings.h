// "PATH=VALUE" arguments, as `eval --set` and `set` take them, and the check
// that every value given still evaluates once all of them are in place.
#ifndef VORPARAM_SETTINGS_H
#define VORPARAM_SETTINGS_H

#include "vorparameter/parameter/vorParameter.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace vorparam {

struct Setting {
    std::string path;
    std::string value;
};

/// As a CLI11 validator: "" when `argument` is "PATH=VALUE" with a PATH,
/// else what is wrong.
std::string check_setting_syntax(const std::string& argument);
/// Splits a checked "PATH=VALUE" at its first '='.
Setting split_setting(const std::string& argument);

/// A parameter that received a value text, and the argument that gave it.
struct AppliedSetting {
    vorParameterPtr parameter;
    std::string argument;
};

/// Evaluates each parameter that received a value; for each one that gives
/// an error, reports "vorparam COMMAND: PATH=VALUE: MESSAGE" on `err`. True
/// when none failed. Run it after every setting is in place, so that values
/// may name each other in any order.
bool values_evaluate(const std::vector<AppliedSetting>& applied, const char* command,
                     std::ostream& err);

} // namespace vorparam

#endif // VORPARAM_SETTINGS_H

// One-line descriptions of parameters for the tool's output.
#ifndef VORPARAM_DESCRIBE_H
#define VORPARAM_DESCRIBE_H

#include "vorparameter/parameter/vorParameter.h"

#include <string>

namespace vorparam {

/// The value and what it measures: "6 [L]", "4 (dimensionless)",
/// "\"End mill 6mm\" (text)", a choice's state with its title
/// "offset (Offset passes)", "{1 (dimensionless); 2 (dimensionless)}" or
/// "error: Invalid name".
std::string describe(const vorParameterPtr& par);

} // namespace vorparam

#endif // VORPARAM_DESCRIBE_H

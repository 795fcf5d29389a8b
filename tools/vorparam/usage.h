// The help and version texts of vorparam.
#ifndef VORPARAM_USAGE_H
#define VORPARAM_USAGE_H

#include <iosfwd>

namespace vorparam {

void print_usage(std::ostream& out);
void print_version(std::ostream& out);

} // namespace vorparam

#endif // VORPARAM_USAGE_H

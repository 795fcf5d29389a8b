#include "usage.h"

#include "commands.h"
#include "vorparameter/version.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>

namespace vorparam {

void print_usage(std::ostream& out) {
    out << "usage: vorparam <command> [arguments]\n"
           "       vorparam --help | --version\n"
           "\n"
           "Commands:\n";
    std::size_t width = 0;
    for (const Command& command : commands())
        width = std::max(width, std::strlen(command.name) + 1 + std::strlen(command.synopsis));
    for (const Command& command : commands()) {
        std::size_t used = std::strlen(command.name);
        out << "  " << command.name;
        if (*command.synopsis) {
            out << ' ' << command.synopsis;
            used += 1 + std::strlen(command.synopsis);
        }
        out << std::string(width - used + 3, ' ') << command.summary << '\n';
    }
}

void print_version(std::ostream& out) {
    out << "vorparam " << VORPARAMETER_VERSION_STRING << '\n';
}

} // namespace vorparam

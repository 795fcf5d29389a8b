// vorparam check: loads each file and says whether it loaded completely. A
// file that did not is described as a compiler would: "FILE:LINE:COL: words"
// for where the load stopped, and one line for each value that was refused.
#include "commands.h"
#include "file_tree.h"

#include <ostream>

namespace vorparam {

int run_check(const Arguments& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << "vorparam check: needs at least one FILE\n";
        return 2;
    }
    for (const std::string& arg : args) {
        if (is_option(arg)) {
            err << "vorparam check: unknown option '" << arg << "'\n";
            return 2;
        }
    }
    int status = 0;
    for (const std::string& path : args) {
        if (load_file_tree(path, out).complete())
            out << path << ": ok\n";
        else
            status = 1;
    }
    return status;
}

} // namespace vorparam

// vorparam get: prints the value text of each path, one a line, in the form
// that set takes back (an expression's value, not its text).
#include "commands.h"
#include "file_tree.h"

#include <ostream>

namespace vorparam {

int run_get(const Arguments& args, std::ostream& out, std::ostream& err) {
    for (const std::string& arg : args) {
        if (is_option(arg)) {
            err << "vorparam get: unknown option '" << arg << "'\n";
            return 2;
        }
    }
    if (args.size() < 2) {
        err << "vorparam get: needs a FILE and at least one PATH\n";
        return 2;
    }
    const FileTree tree = load_file_tree(args[0], err);
    if (!tree.complete())
        return 1;
    int status = 0;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const vorParameterPtr par = find_value(*tree.root, args[i], "get", err);
        if (par->is_error())
            status = 1;
        else
            out << par->get_string() << '\n';
    }
    return status;
}

} // namespace vorparam

// vorparam print: the tree a file holds, as the library prints it.
#include "commands.h"
#include "file_tree.h"

#include <ostream>

namespace vorparam {

int run_print(const Arguments& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1 || is_option(args[0])) {
        err << "vorparam print: takes one FILE\n";
        return 2;
    }
    const FileTree tree = load_file_tree(args[0], err);
    if (!tree.complete())
        return 1;
    out << tree.root->print(0);
    return 0;
}

} // namespace vorparam

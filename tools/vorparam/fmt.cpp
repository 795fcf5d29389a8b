// vorparam fmt: writes a file's tree back in the saved form, laid out as the
// library lays it out (or on one line with --compact). The output is the
// file itself, so it ends where the tree's closing brace does.
#include "commands.h"
#include "file_tree.h"

#include <ostream>

namespace vorparam {

int run_fmt(const Arguments& args, std::ostream& out, std::ostream& err) {
    bool compact = false;
    std::string path;
    for (const std::string& arg : args) {
        if (arg == "--compact") {
            compact = true;
        } else if (is_option(arg)) {
            err << "vorparam fmt: unknown option '" << arg << "'\n";
            return 2;
        } else if (!path.empty()) {
            err << "vorparam fmt: takes one FILE\n";
            return 2;
        } else {
            path = arg;
        }
    }
    if (path.empty()) {
        err << "vorparam fmt: needs a FILE\n";
        return 2;
    }

    const FileTree tree = load_file_tree(path, err);
    if (!tree.complete())
        return 1;
    vorParameterSerializer serializer;
    serializer.set_compact_mode(compact);
    if (serializer.save(*tree.root, out) != SERIAL_OK) {
        err << "vorparam fmt: cannot write the tree of " << path << '\n';
        return 1;
    }
    return 0;
}

} // namespace vorparam

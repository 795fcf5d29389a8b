// vorparam set: gives parameters of a file new value texts and saves the
// file, in place or to another file with -o. Nothing is written unless the
// file loaded completely and every path names a single value; the target is
// replaced only by a complete save, never left half written.
#include "commands.h"
#include "file_tree.h"

#include <ostream>
#include <utility>

namespace vorparam {

namespace {

struct SetOptions {
    std::string file;
    std::string output;
    std::vector<std::pair<std::string, std::string>> settings;
};

/// Reads the operands; false (after a message) for a usage mistake.
bool read_options(const Arguments& args, SetOptions& options, std::ostream& err) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "-o") {
            if (i + 1 == args.size() || !options.output.empty()) {
                err << "vorparam set: -o takes one OUT file\n";
                return false;
            }
            options.output = args[++i];
        } else if (is_option(arg)) {
            err << "vorparam set: unknown option '" << arg << "'\n";
            return false;
        } else if (options.file.empty()) {
            options.file = arg;
        } else {
            const std::size_t equals = arg.find('=');
            if (equals == std::string::npos || equals == 0) {
                err << "vorparam set: wants PATH=VALUE, not '" << arg << "'\n";
                return false;
            }
            options.settings.emplace_back(arg.substr(0, equals), arg.substr(equals + 1));
        }
    }
    if (options.settings.empty()) {
        err << "vorparam set: needs a FILE and at least one PATH=VALUE\n";
        return false;
    }
    return true;
}

} // namespace

int run_set(const Arguments& args, std::ostream&, std::ostream& err) {
    SetOptions options;
    if (!read_options(args, options, err))
        return 2;
    const FileTree tree = load_file_tree(options.file, err);
    if (!tree.complete()) {
        if (tree.root)
            err << "vorparam set: " << options.file
                << " did not load completely; nothing written\n";
        return 1;
    }
    bool all_found = true;
    for (const auto& [path, value] : options.settings) {
        const vorParameterPtr par = find_value(*tree.root, path, "set", err);
        if (par->is_error())
            all_found = false;
        else
            par->set_string(utString(value));
    }
    if (!all_found)
        return 1;
    const std::string& target = options.output.empty() ? options.file : options.output;
    return save_file_tree(*tree.root, target, err) ? 0 : 1;
}

} // namespace vorparam

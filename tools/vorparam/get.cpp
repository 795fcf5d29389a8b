// vorparam get: prints the value text of each path, one a line, in the form
// that set takes back (an expression's value, not its text).
#include "commands.h"
#include "file_tree.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

struct GetOptions {
    std::string file;
    std::vector<std::string> paths;
};

int run_get(const GetOptions& options) {
    const FileTree tree = load_file_tree(options.file, std::cerr);
    if (!tree.complete())
        return 1;
    int status = 0;
    for (const std::string& path : options.paths) {
        const vorParameterPtr par = find_value(*tree.root, path, "get", std::cerr);
        if (par->is_error())
            status = 1;
        else
            std::cout << par->get_string() << '\n';
    }
    return status;
}

} // namespace

void add_get_command(CLI::App& app, int& status) {
    auto options = std::make_shared<GetOptions>();
    CLI::App* command = app.add_subcommand("get", "Print the value of each PATH in a saved file.");
    command->add_option("FILE", options->file, "saved file")->required();
    command->add_option("PATH", options->paths, "dotted paths such as tool.diameter")->required();
    command->callback([options, &status] { status = run_get(*options); });
}

} // namespace vorparam

// vorparam print: the tree a file holds, as the library prints it.
#include "commands.h"
#include "file_tree.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

int run_print(const std::string& file) {
    const FileTree tree = load_file_tree(file, std::cerr);
    if (!tree.complete())
        return 1;
    std::cout << tree.root->print(0);
    return 0;
}

} // namespace

void add_print_command(CLI::App& app, int& status) {
    auto file = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("print", "Print a saved file's tree.");
    command->add_option("FILE", *file, "saved file")->required();
    command->callback([file, &status] { status = run_print(*file); });
}

} // namespace vorparam

// vorparam demo: builds the sample machining tree, prints it and reads a few
// members back by path. Paths are case-insensitive; expressions are evaluated
// as they are read.
#include "commands.h"
#include "demo_tree.h"
#include "describe.h"

#include <CLI/CLI.hpp>

#include <iomanip>
#include <iostream>

namespace vorparam {

namespace {

int run_demo() {
    const vorParameterPtr root = build_demo_tree();
    std::cout << "The machining tree:\n\n" << root->print(0) << "\nLookups:\n";

    int status = 0;
    for (const char* path : {"tool.diameter", "TOOL.Flutes", "tool.name", "strategy.stepover"}) {
        const vorParameterPtr par = (*root)[path];
        std::cout << "  " << std::left << std::setw(18) << path << " = " << describe(par) << '\n';
        if (par->is_error())
            status = 1;
    }
    return status;
}

} // namespace

void add_demo_command(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand(
        "demo", "Build a sample machining tree, print it and look up a few paths.");
    command->callback([&status] { status = run_demo(); });
}

} // namespace vorparam

// vorparam check: loads each file and says whether it loaded completely. A
// file that did not is described as a compiler would: "FILE:LINE:COL: words"
// for where the load stopped, and one line for each value that was refused.
#include "commands.h"
#include "file_tree.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

int run_check(const std::vector<std::string>& files) {
    int status = 0;
    for (const std::string& path : files) {
        if (load_file_tree(path, std::cout).complete())
            std::cout << path << ": ok\n";
        else
            status = 1;
    }
    return status;
}

} // namespace

void add_check_command(CLI::App& app, int& status) {
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* command = app.add_subcommand(
        "check", "Load each saved file and report where it is malformed and which values "
                 "were refused.");
    command->add_option("FILE", *files, "saved files")->required();
    command->callback([files, &status] { status = run_check(*files); });
}

} // namespace vorparam

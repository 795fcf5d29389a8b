// vorparam: command-line access to libvorparameter.
#include "commands.h"

#include "vorparameter/version.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include <unistd.h>

namespace {

constexpr int usage_status = 2;

/// CLI11's answer to --help, --version or a usage mistake: help and version
/// go to standard output with status 0, a mistake to standard error with 2.
int parse_outcome(const CLI::App& app, const CLI::ParseError& error) {
    const int status = app.exit(error, std::cout, std::cerr);
    return status == 0 ? 0 : usage_status;
}

/// Output that did not reach its file (a full disk, a closed pipe) is a
/// failure like any other.
bool flush_standard_output() {
    std::cout.flush();
    if (std::cout && std::fflush(stdout) == 0)
        return true;
    std::cerr << "vorparam: cannot write the output (" << std::strerror(errno) << ")\n";
    return false;
}

} // namespace

int main(int argc, char** argv) {
    using namespace vorparam;

    CLI::App app("Parameter trees and their expressions from the command line.", "vorparam");
    app.set_version_flag("--version", std::string("vorparam ") + VORPARAMETER_VERSION_STRING);
    app.require_subcommand(0, 1);
    app.footer("Run 'vorparam COMMAND --help' for a command's options. With no command and "
               "piped input, vorparam evaluates one expression a line.");

    int status = 0;
    add_check_command(app, status);
    add_convert_command(app, status);
    add_demo_command(app, status);
    add_eval_command(app, status);
    add_fmt_command(app, status);
    add_get_command(app, status);
    add_graph_command(app, status);
    add_ls_command(app, status);
    add_print_command(app, status);
    add_repl_command(app, status);
    add_set_command(app, status);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return parse_outcome(app, error);
    }
    if (app.get_subcommands().empty()) {
        if (isatty(STDIN_FILENO)) {
            std::cerr << app.help();
            return usage_status;
        }
        status = evaluate_standard_input();
    }
    return flush_standard_output() ? status : 1;
}

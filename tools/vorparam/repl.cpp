// vorparam repl: an interactive session on the sample tree or a saved file.
// On a terminal it reads lines with a prompt, line editing, history and tab
// completion; otherwise it reads standard input one line at a time, without
// a prompt, so that scripts and pipes can drive it.
#include "commands.h"
#include "repl_completion.h"
#include "repl_editor.h"
#include "repl_session.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

#include <unistd.h>

namespace vorparam {

namespace {

/// Each result is flushed before the next line is read, so that a program
/// that writes a line and waits for its answer gets it.
int run_piped(ReplSession& session, std::istream& in) {
    bool all_ok = true;
    for (std::string line; !session.finished() && std::getline(in, line);) {
        all_ok = session.run_line(line) && all_ok;
        std::cout.flush();
    }
    return all_ok ? 0 : 1;
}

int run_interactive(ReplSession& session) {
    LineEditor editor("vorparam> ", [&session](std::string_view word) {
        return completion_candidates(session.root(), word);
    });
    bool all_ok = true;
    while (!session.finished()) {
        const std::optional<std::string> line = editor.read_line();
        if (!line) {
            std::cout << '\n';
            break;
        }
        if (line->find_first_not_of(" \t") != std::string::npos)
            editor.remember(*line);
        all_ok = session.run_line(*line) && all_ok;
    }
    return all_ok ? 0 : 1;
}

int run_repl(const std::string& file) {
    ReplSession session(std::cout, std::cerr);
    if (!file.empty() && !session.load(file))
        return 1;
    return isatty(STDIN_FILENO) ? run_interactive(session) : run_piped(session, std::cin);
}

} // namespace

void add_repl_command(CLI::App& app, int& status) {
    auto file = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand(
        "repl", "Evaluate expressions and run commands (:help) line by line, on the sample tree "
                "or a saved file.");
    command->add_option("-f,--file", *file, "work on this saved file's tree")->option_text("FILE");
    command->callback([file, &status] { status = run_repl(*file); });
}

} // namespace vorparam

// The commands of vorparam. Each command lives in its own source file, which
// defines its add_*_command: it adds a CLI11 subcommand with its options and a
// callback that runs it. main() adds every command and parses.
//
// Exit status: 0 success; 1 a failed expression, load or write; 2 a usage
// mistake (reported by CLI11 before any callback runs).
#ifndef VORPARAM_COMMANDS_H
#define VORPARAM_COMMANDS_H

namespace CLI {
class App;
}

namespace vorparam {

/// Adds the subcommand to `app`. When the user chose it, its callback runs
/// it and stores the exit status in `status`.
void add_check_command(CLI::App& app, int& status);
void add_convert_command(CLI::App& app, int& status);
void add_demo_command(CLI::App& app, int& status);
void add_eval_command(CLI::App& app, int& status);
void add_fmt_command(CLI::App& app, int& status);
void add_get_command(CLI::App& app, int& status);
void add_graph_command(CLI::App& app, int& status);
void add_ls_command(CLI::App& app, int& status);
void add_print_command(CLI::App& app, int& status);
void add_repl_command(CLI::App& app, int& status);
void add_set_command(CLI::App& app, int& status);

/// Evaluates one expression a line from standard input against the sample
/// tree: what `vorparam` does with piped input and no command.
int evaluate_standard_input();

} // namespace vorparam

#endif // VORPARAM_COMMANDS_H

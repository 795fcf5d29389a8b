// The commands of vorparam. Each command is one entry of the table in
// commands.cpp and one function; main() only finds and runs it.
#ifndef VORPARAM_COMMANDS_H
#define VORPARAM_COMMANDS_H

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace vorparam {

using Arguments = std::vector<std::string>;

struct Command {
    const char* name;
    /// Operands after the name, for the usage text ("" when none).
    const char* synopsis;
    const char* summary;
    /// Runs the command with the arguments after its name; the exit status.
    int (*run)(const Arguments& args, std::ostream& out, std::ostream& err);
};

/// Every command, in the order the usage text lists them.
const std::vector<Command>& commands();
/// The command called `name`, or null.
const Command* find_command(std::string_view name);

/// True for an argument that is an option ("-o", "--compact"), not an operand.
bool is_option(const std::string& arg);

int run_check(const Arguments& args, std::ostream& out, std::ostream& err);
int run_demo(const Arguments& args, std::ostream& out, std::ostream& err);
int run_eval(const Arguments& args, std::ostream& out, std::ostream& err);
int run_fmt(const Arguments& args, std::ostream& out, std::ostream& err);
int run_get(const Arguments& args, std::ostream& out, std::ostream& err);
int run_ls(const Arguments& args, std::ostream& out, std::ostream& err);
int run_print(const Arguments& args, std::ostream& out, std::ostream& err);
int run_set(const Arguments& args, std::ostream& out, std::ostream& err);

} // namespace vorparam

#endif // VORPARAM_COMMANDS_H

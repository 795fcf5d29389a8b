#include "commands.h"

namespace vorparam {

const std::vector<Command>& commands() {
    static const std::vector<Command> table = {
        {"check", "FILE...",
         "load each saved file and report where it is malformed and which values were refused",
         run_check},
        {"demo", "", "build a sample machining tree, print it and look up a few paths", run_demo},
        {"eval", "[-f FILE] [--set PATH=VALUE]... [--raw] [EXPR]...",
         "evaluate expressions against the sample tree or a saved file (one per line from "
         "standard input when none is given); --raw prints the values alone",
         run_eval},
        {"fmt", "[--compact] FILE", "write a saved file's tree back in the saved layout", run_fmt},
        {"get", "FILE PATH...", "print the value of each PATH in a saved file", run_get},
        {"ls", "[--depth N] [--leaves] [--active] [PATH]",
         "list the sample tree, or the subtree at PATH, with keys, types and values", run_ls},
        {"print", "FILE", "print a saved file's tree", run_print},
        {"set", "FILE PATH=VALUE... [-o OUT]",
         "set values in a saved file and save it, in place or to OUT", run_set},
    };
    return table;
}

bool is_option(const std::string& arg) {
    return arg.size() > 1 && arg[0] == '-';
}

const Command* find_command(std::string_view name) {
    for (const Command& command : commands())
        if (name == command.name)
            return &command;
    return nullptr;
}

} // namespace vorparam

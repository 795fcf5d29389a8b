#include "commands.h"

namespace vorparam {

const std::vector<Command>& commands() {
    static const std::vector<Command> table = {
        {"demo", "", "build a sample machining tree, print it and look up a few paths", run_demo},
        {"eval", "[--set PATH=VALUE]... [EXPR]...",
         "evaluate expressions against the sample tree (one per line from standard input "
         "when none is given)",
         run_eval},
        {"ls", "[--depth N] [--leaves] [--active] [PATH]",
         "list the sample tree, or the subtree at PATH, with keys, types and values", run_ls},
    };
    return table;
}

const Command* find_command(std::string_view name) {
    for (const Command& command : commands())
        if (name == command.name)
            return &command;
    return nullptr;
}

} // namespace vorparam

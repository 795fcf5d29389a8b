// vorparam: command-line access to libvorparameter.
#include "commands.h"
#include "usage.h"

#include <iostream>
#include <string_view>

#include <unistd.h>

int main(int argc, char** argv) {
    using namespace vorparam;

    if (argc < 2) {
        // Piped input without a command: one expression a line.
        if (!isatty(STDIN_FILENO))
            return run_eval(Arguments(), std::cout, std::cerr);
        print_usage(std::cerr);
        return 2;
    }
    const std::string_view name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        print_usage(std::cout);
        return 0;
    }
    if (name == "--version") {
        print_version(std::cout);
        return 0;
    }
    const Command* command = find_command(name);
    if (!command) {
        std::cerr << "vorparam: unknown command '" << name << "'\n\n";
        print_usage(std::cerr);
        return 2;
    }
    const Arguments args(argv + 2, argv + argc);
    return command->run(args, std::cout, std::cerr);
}

// vorparam demo: builds the sample machining tree, prints it and reads a few
// members back by path. Paths are case-insensitive; expressions are evaluated
// as they are read.
#include "commands.h"
#include "demo_tree.h"
#include "describe.h"

#include <iomanip>
#include <ostream>

namespace vorparam {

int run_demo(const Arguments& args, std::ostream& out, std::ostream& err) {
    if (!args.empty()) {
        err << "vorparam demo: takes no arguments\n";
        return 2;
    }
    const vorParameterPtr root = build_demo_tree();
    out << "The machining tree:\n\n" << root->print(0) << "\nLookups:\n";

    int status = 0;
    for (const char* path : {"tool.diameter", "TOOL.Flutes", "tool.name", "strategy.stepover"}) {
        const vorParameterPtr par = (*root)[path];
        out << "  " << std::left << std::setw(18) << path << " = " << describe(par) << '\n';
        if (par->is_error())
            status = 1;
    }
    return status;
}

} // namespace vorparam

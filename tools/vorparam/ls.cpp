// vorparam ls: lists the sample tree, or the subtree at a path, one node a
// line: its key relative to that path, its type and its value. Containers
// come before their contents; references are shown with their text and not
// walked through (a path that is itself a reference lists its referent, and
// a path to a single value lists that value).
#include "commands.h"
#include "demo_tree.h"
#include "describe.h"

#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

namespace vorparam {

namespace {

struct ListOptions {
    int depth = 0;
    bool leaves = false;
    bool active = false;
    std::string path;
};

/// "(3 members)", "&tool = ...", or what describe() says.
std::string value_text(const vorParameterPtr& par) {
    if (const vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(par.get())) {
        const std::string text = "&" + ref->get_ref_string().str();
        const vorParameterType type = par->type();
        if (type == TYPE_MAP || type == TYPE_ARRAY)
            return text;
        return text + " = " + describe(par);
    }
    if (par->type() == TYPE_MAP)
        return "(" + std::to_string(par->size()) + " members)";
    if (par->type() == TYPE_ARRAY)
        return "(" + std::to_string(par->size()) + " elements)";
    return describe(par);
}

struct Line {
    std::string key, type, value;
};

/// The keys padded to the longest, then the types in a column of their own.
void print_columns(const std::vector<Line>& lines, std::ostream& out) {
    std::size_t key_width = 0;
    for (const Line& line : lines)
        key_width = std::max(key_width, line.key.size());
    for (const Line& line : lines)
        out << line.key << std::string(key_width - line.key.size() + 2, ' ') << line.type
            << std::string(10 - std::min<std::size_t>(line.type.size(), 9), ' ') << line.value
            << '\n';
}

int run_ls(const ListOptions& options) {
    const vorParameterPtr root = build_demo_tree();
    vorParameterPtr start = root;
    if (!options.path.empty()) {
        start = (*root)[vorParameterKey(utString(options.path))];
        if (start->is_error()) {
            std::cerr << "vorparam ls: " << options.path << ": " << start->get_expr() << '\n';
            return 1;
        }
        if (start->is_ref())
            start = vorParameterPtr::share(start.par());
    }

    std::vector<Line> lines;
    const vorParameterType start_type = start->type();
    if (start_type != TYPE_MAP && start_type != TYPE_ARRAY)
        lines.push_back({options.path, vorTypeWord(start_type), value_text(start)});
    vorParameterIter it(start);
    it.set_max_depth(options.depth);
    it.set_leaf_only(options.leaves);
    it.set_active_only(options.active);
    while (++it) {
        const vorParameterPtr par = it();
        const char* type = par->is_ref() ? "ref" : vorTypeWord(par->type());
        lines.push_back({it.index().str().str(), type, value_text(par)});
    }

    print_columns(lines, std::cout);
    return 0;
}

} // namespace

void add_ls_command(CLI::App& app, int& status) {
    auto options = std::make_shared<ListOptions>();
    CLI::App* command = app.add_subcommand(
        "ls", "List the sample tree, or the subtree at PATH, with keys, types and values.");
    command->add_option("PATH", options->path, "dotted path of the subtree");
    command->add_option("--depth", options->depth, "levels to list (0: all)")
        ->check(CLI::Range(0, 1000000))
        ->option_text("N");
    command->add_flag("--leaves", options->leaves, "list only values, not containers");
    command->add_flag("--active", options->active, "leave out inactive parameters");
    command->callback([options, &status] { status = run_ls(*options); });
}

} // namespace vorparam

// vorparam eval: evaluates expressions against the sample machining tree, or
// against the tree of a saved file given with -f, after applying the values
// given with --set, and prints each result with its dimension or the error it
// gave. With --raw it prints each result's value text alone, so that the
// output can go to other tools, and errors go to standard error. Without
// expressions it reads one per line from standard input.
#include "commands.h"
#include "demo_tree.h"
#include "describe.h"
#include "file_tree.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"

#include <iostream>
#include <ostream>

namespace vorparam {

namespace {

// A new parameter for --set: a quoted text is a string, anything else a
// dimensionless real whose text may be a number or an expression.
vorParameterPtr new_parameter(const std::string& value) {
    const bool quoted = value.size() >= 2 && (value.front() == '\'' || value.front() == '"') &&
                        value.back() == value.front();
    if (quoted)
        return vorParameterPtr(new vorParameterString(value.substr(1, value.size() - 2)));
    vorParameterPtr number(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0.0));
    number->set_string(value);
    return number;
}

// Applies "path=value": sets an existing parameter, or adds a new one to the
// container the path's parent names.
bool apply_setting(const vorParameterPtr& root, const std::string& setting, std::ostream& err) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0) {
        err << "vorparam eval: --set wants PATH=VALUE, not '" << setting << "'\n";
        return false;
    }
    const vorParameterKey path(utString(setting.substr(0, equals)));
    const std::string value = setting.substr(equals + 1);
    vorParameterPtr existing = (*root)[path];
    if (!existing->is_error()) {
        existing->set_string(value);
        return true;
    }
    vorParameterPtr container = path.parent().empty() ? root : (*root)[path.parent()];
    if (container->is_error() ||
        container->add(vorParameterKey(path.last()), new_parameter(value))->is_error()) {
        err << "vorparam eval: cannot set '" << path.str() << "'\n";
        return false;
    }
    return true;
}

// The value text alone: a text unquoted, a number without its dimension, a
// list as "{a; b}".
std::string raw_text(const vorParameterPtr& par) {
    if (par->type() != TYPE_ARRAY)
        return par->get_string().str();
    std::string items;
    for (int i = 0, n = par->size(); i < n; ++i)
        items += (i ? "; " : "") + raw_text((*par)[vorParameterKey(i, utString())]);
    return "{" + items + "}";
}

struct EvalOutput {
    bool raw;
    std::ostream& out;
    std::ostream& err;
};

// Prints one result; true when the expression gave no error.
bool evaluate_line(const vorParameterPtr& root, const std::string& expression,
                   const EvalOutput& output) {
    const vorParameterPtr result = vorEvaluator(root.get()).evaluate(utString(expression));
    if (!output.raw)
        output.out << expression << " => " << describe(result) << '\n';
    else if (result->is_error())
        output.err << "vorparam eval: " << expression << ": " << result->get_expr() << '\n';
    else
        output.out << raw_text(result) << '\n';
    return !result->is_error();
}

struct EvalOptions {
    bool raw = false;
    std::string file;
    std::vector<std::string> settings;
    std::vector<std::string> expressions;
};

/// Sorts the arguments; false (after a message) for a usage mistake. Any
/// argument that is not an option is an expression, even one like "-1".
bool read_options(const Arguments& args, EvalOptions& options, std::ostream& err) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--set") {
            if (i + 1 == args.size()) {
                err << "vorparam eval: --set needs PATH=VALUE\n";
                return false;
            }
            options.settings.push_back(args[++i]);
        } else if (arg == "-f") {
            if (i + 1 == args.size() || !options.file.empty()) {
                err << "vorparam eval: -f takes one FILE\n";
                return false;
            }
            options.file = args[++i];
        } else if (arg == "--raw") {
            options.raw = true;
        } else if (arg.rfind("--set=", 0) == 0) {
            options.settings.push_back(arg.substr(6));
        } else {
            options.expressions.push_back(arg);
        }
    }
    return true;
}

} // namespace

int run_eval(const Arguments& args, std::ostream& out, std::ostream& err) {
    EvalOptions options;
    if (!read_options(args, options, err))
        return 2;
    FileTree file;
    vorParameterPtr root;
    if (options.file.empty()) {
        root = build_demo_tree();
    } else {
        file = load_file_tree(options.file, err);
        if (!file.complete())
            return 1;
        root = vorParameterPtr::share(file.root.get());
    }
    for (const std::string& setting : options.settings)
        if (!apply_setting(root, setting, err))
            return 2;

    const EvalOutput output{options.raw, out, err};
    bool all_ok = true;
    if (options.expressions.empty()) {
        for (std::string line; std::getline(std::cin, line);)
            if (line.find_first_not_of(" \t\r") != std::string::npos)
                all_ok = evaluate_line(root, line, output) && all_ok;
    }
    for (const std::string& expression : options.expressions)
        all_ok = evaluate_line(root, expression, output) && all_ok;
    return all_ok ? 0 : 1;
}

} // namespace vorparam

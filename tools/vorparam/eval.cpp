// vorparam eval: evaluates expressions against the sample machining tree, or
// against the tree of a saved file given with -f, after applying the values
// given with --set, and prints each result: a value with its dimension, a map
// or array as the tree the library prints. With --raw it prints the values
// alone, so that the output can go to other tools. Errors go to standard
// error as "EXPR: MESSAGE". Without expressions it reads one per line from
// standard input.
#include "commands.h"
#include "describe.h"
#include "file_tree.h"
#include "settings.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

// A new parameter for --set in `container`: a quoted text is a string,
// anything else a number that keeps the value text (a number or an
// expression). The number takes the kind and dimension of what the text
// gives now ("5mm" makes a length); a text that does not give a number yet
// makes a dimensionless real, and the check after every --set reports it if
// it still gives none.
vorParameterPtr new_parameter(const vorParameter& container, const std::string& value) {
    const bool quoted = value.size() >= 2 && (value.front() == '\'' || value.front() == '"') &&
                        value.back() == value.front();
    if (quoted)
        return vorParameterPtr(new vorParameterString(value.substr(1, value.size() - 2)));
    vorParameterSubType kind = SUB_REAL;
    vorDimensions dimensions(DIM_NONE);
    const vorParameterPtr now = vorEvaluator(&container).evaluate(utString(value));
    if (const vorParameterNumeric* number = vorParameterNumeric::ut_dynamic_cast(now->get_ref())) {
        kind = number->subtype() == SUB_NUMBER ? SUB_REAL : number->subtype();
        dimensions = number->get_dim();
    }
    vorParameterPtr made(new vorParameterNumeric(kind, dimensions, 0.0));
    made->set_string(value);
    return made;
}

// Applies "path=value": sets an existing parameter, or adds a new one to the
// container the path's parent names. The parameter that took the value, or
// an error after a message.
vorParameterPtr apply_setting(const vorParameterPtr& root, const Setting& setting) {
    const vorParameterKey path{utString(setting.path)};
    vorParameterPtr existing = (*root)[path];
    if (!existing->is_error()) {
        existing->set_string(setting.value);
        return existing;
    }
    vorParameterPtr container = path.parent().empty() ? root : (*root)[path.parent()];
    if (container->is_error()) {
        std::cerr << "vorparam eval: cannot set " << setting.path << ": " << container->get_expr()
                  << '\n';
        return container;
    }
    vorParameterPtr added = container->add(vorParameterKey(path.last()),
                                           new_parameter(*container->get_ref(), setting.value));
    if (added->is_error())
        std::cerr << "vorparam eval: cannot set " << setting.path << ": " << added->get_expr()
                  << '\n';
    return added;
}

bool is_container(const vorParameterPtr& par) {
    const vorParameterType type = par->type();
    return type == TYPE_MAP || type == TYPE_ARRAY;
}

/// Prints one result; true when the expression gave no error.
bool evaluate_line(const vorParameterPtr& root, const std::string& expression, bool raw) {
    const vorParameterPtr result = vorEvaluator(root.get()).evaluate(utString(expression));
    if (result->is_error()) {
        std::cerr << "vorparam eval: " << expression << ": " << result->get_expr() << '\n';
        return false;
    }
    if (!raw)
        std::cout << expression << " =>" << (is_container(result) ? "\n" : " ");
    if (is_container(result))
        std::cout << result->print(raw ? 0 : 1);
    else
        std::cout << (raw ? result->get_string().str() : describe(result)) << '\n';
    return true;
}

/// Evaluates every nonblank line of standard input; true when none failed.
bool evaluate_lines(const vorParameterPtr& root, bool raw) {
    bool all_ok = true;
    for (std::string line; std::getline(std::cin, line);)
        if (line.find_first_not_of(" \t\r") != std::string::npos)
            all_ok = evaluate_line(root, line, raw) && all_ok;
    return all_ok;
}

struct EvalOptions {
    bool raw = false;
    std::string file;
    std::vector<std::string> settings;
    std::vector<std::string> expressions;
};

int run_eval(const EvalOptions& options) {
    const CommandTree tree = open_command_tree(options.file, std::cerr);
    if (tree.root.is_null())
        return 1;
    const vorParameterPtr& root = tree.root;
    std::vector<AppliedSetting> applied;
    for (const std::string& argument : options.settings) {
        const vorParameterPtr par = apply_setting(root, split_setting(argument));
        if (par->is_error())
            return 1;
        applied.push_back({par, argument});
    }
    if (!values_evaluate(applied, "eval --set", std::cerr))
        return 1;

    bool all_ok = true;
    if (options.expressions.empty())
        all_ok = evaluate_lines(root, options.raw);
    for (const std::string& expression : options.expressions)
        all_ok = evaluate_line(root, expression, options.raw) && all_ok;
    return all_ok ? 0 : 1;
}

} // namespace

int evaluate_standard_input() {
    return run_eval(EvalOptions());
}

void add_eval_command(CLI::App& app, int& status) {
    auto options = std::make_shared<EvalOptions>();
    CLI::App* command = app.add_subcommand(
        "eval", "Evaluate expressions against the sample tree or a saved file (one a line "
                "from standard input when none is given).");
    command->add_option("EXPR", options->expressions,
                        "expressions; put them after -- when one begins with -");
    command->add_option("-f,--file", options->file, "evaluate against this saved file's tree")
        ->option_text("FILE");
    command
        ->add_option("--set", options->settings,
                     "give PATH the value text VALUE first (adds PATH when it is new)")
        ->option_text("PATH=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(check_setting_syntax, "PATH=VALUE"));
    command->add_flag("--raw", options->raw, "print values alone, without dimensions");
    command->callback([options, &status] { status = run_eval(*options); });
}

} // namespace vorparam

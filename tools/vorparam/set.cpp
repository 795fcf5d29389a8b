// vorparam set: gives parameters of a file new value texts and saves the
// file, in place or to another file with -o. Nothing is written unless the
// file loaded completely, every path names a single value and every new
// value evaluates; the target is replaced only by a complete save, never
// left half written.
#include "commands.h"
#include "file_tree.h"
#include "settings.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

struct SetOptions {
    std::string file;
    std::string output;
    std::vector<std::string> settings;
};

int run_set(const SetOptions& options) {
    const FileTree tree = load_file_tree(options.file, std::cerr);
    if (!tree.complete()) {
        if (tree.root)
            std::cerr << "vorparam set: " << options.file
                      << " did not load completely; nothing written\n";
        return 1;
    }
    std::vector<AppliedSetting> applied;
    bool all_found = true;
    for (const std::string& argument : options.settings) {
        const Setting setting = split_setting(argument);
        const vorParameterPtr par = find_value(*tree.root, setting.path, "set", std::cerr);
        if (par->is_error()) {
            all_found = false;
            continue;
        }
        par->set_string(utString(setting.value));
        applied.push_back({par, argument});
    }
    if (!all_found || !values_evaluate(applied, "set", std::cerr))
        return 1;
    const std::string& target = options.output.empty() ? options.file : options.output;
    return save_file_tree(*tree.root, target, std::cerr) ? 0 : 1;
}

} // namespace

void add_set_command(CLI::App& app, int& status) {
    auto options = std::make_shared<SetOptions>();
    CLI::App* command =
        app.add_subcommand("set", "Set values in a saved file and save it, in place or to OUT.");
    command->add_option("FILE", options->file, "saved file")->required();
    command->add_option("PATH=VALUE", options->settings, "new value texts")
        ->required()
        ->check(CLI::Validator(check_setting_syntax, "PATH=VALUE"));
    command->add_option("-o,--output", options->output, "write to OUT instead of FILE")
        ->option_text("OUT");
    command->callback([options, &status] { status = run_set(*options); });
}

} // namespace vorparam

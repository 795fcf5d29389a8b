// vorparam fmt: writes a file's tree back in the saved form, laid out as the
// library lays it out (or on one line with --compact). The output is the
// file itself, so it ends where the tree's closing brace does.
#include "commands.h"
#include "file_tree.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace vorparam {

namespace {

struct FmtOptions {
    std::string file;
    bool compact = false;
};

int run_fmt(const FmtOptions& options) {
    const FileTree tree = load_file_tree(options.file, std::cerr);
    if (!tree.complete())
        return 1;
    vorParameterSerializer serializer;
    serializer.set_compact_mode(options.compact);
    if (serializer.save(*tree.root, std::cout) != SERIAL_OK) {
        std::cerr << "vorparam fmt: cannot write the tree of " << options.file << '\n';
        return 1;
    }
    return 0;
}

} // namespace

void add_fmt_command(CLI::App& app, int& status) {
    auto options = std::make_shared<FmtOptions>();
    CLI::App* command =
        app.add_subcommand("fmt", "Write a saved file's tree back in the saved layout.");
    command->add_option("FILE", options->file, "saved file")->required();
    command->add_flag("--compact", options->compact, "write everything on one line");
    command->callback([options, &status] { status = run_fmt(*options); });
}

} // namespace vorparam

// vorparam graph: the dependency graph of the sample tree, or of a saved
// file's tree, as Graphviz DOT, so that `dot -Tsvg` shows which parameter
// reads which.
#include "commands.h"
#include "file_tree.h"
#include "graph_writer.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>

namespace vorparam {

namespace {

struct GraphOptions {
    std::string file;
    std::string output;
    std::string path;
};

/// Writes the graph to `output`, or to standard output when it is empty
/// (whose errors main() reports). False, after a message, when writing the
/// file failed.
bool write_to(const std::string& output, const vorParameterPtr& start, const std::string& path) {
    if (output.empty()) {
        write_graph(start, path, std::cout);
        return true;
    }
    std::ofstream out(output, std::ios::binary | std::ios::trunc);
    if (out) {
        write_graph(start, path, out);
        out.close();
    }
    if (out.fail()) {
        std::cerr << "vorparam graph: cannot write " << output << " (" << std::strerror(errno)
                  << ")\n";
        return false;
    }
    return true;
}

int run(const GraphOptions& options) {
    const CommandTree tree = open_command_tree(options.file, std::cerr);
    if (tree.root.is_null())
        return 1;
    const vorParameterPtr& root = tree.root;
    vorParameterPtr start = root;
    if (!options.path.empty()) {
        start = (*root)[vorParameterKey(utString(options.path))];
        if (start->is_error()) {
            std::cerr << "vorparam graph: no parameter '" << options.path << "'\n";
            return 1;
        }
    }
    return write_to(options.output, start, options.path) ? 0 : 1;
}

} // namespace

void add_graph_command(CLI::App& app, int& status) {
    CLI::App* sub = app.add_subcommand(
        "graph", "write which parameter reads which as a Graphviz DOT graph (dot -Tsvg draws it)");
    auto options = std::make_shared<GraphOptions>();
    sub->add_option("-f,--file", options->file, "a saved file to draw instead of the sample tree")
        ->option_text("FILE");
    sub->add_option("-o,--output", options->output, "write to OUT instead of standard output")
        ->option_text("OUT");
    sub->add_option("PATH", options->path, "draw only the subtree at PATH and what it reads");
    sub->callback([options, &status] { status = run(*options); });
}

} // namespace vorparam

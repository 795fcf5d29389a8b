// vorparam convert: a saved file to JSON and JSON back to a saved file, or a
// saved file laid out again (--to text, --to compact), on standard output or
// into a file that is replaced only once the whole output is written.
#include "commands.h"
#include "file_tree.h"
#include "json_convert.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

namespace vorparam {

namespace {

struct ConvertOptions {
    std::string file;
    std::string from = "text";
    /// "text", "compact" or "json"; empty for the other form than `from`.
    std::string to;
    /// Empty for standard output.
    std::string output;
};

bool read_whole_file(const std::string& path, std::string& text) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        std::cerr << path << ": cannot open (is a directory)\n";
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << path << ": cannot open (" << std::strerror(errno) << ")\n";
        return false;
    }
    std::ostringstream copy;
    copy << in.rdbuf(); // an empty file copies nothing, which is no failure
    if (in.bad()) {
        std::cerr << path << ": cannot read (" << std::strerror(errno) << ")\n";
        return false;
    }
    text = copy.str();
    return true;
}

std::unique_ptr<vorParameterOpenRoot> read_json_tree(const std::string& path) {
    std::string json;
    if (!read_whole_file(path, json))
        return nullptr;
    std::string error;
    std::unique_ptr<vorParameterOpenRoot> root = tree_from_json(json, error);
    if (!root) {
        // "FILE:LINE:COL: words" for a place in the text, else "FILE: words".
        const bool position = !error.empty() && std::isdigit(static_cast<unsigned char>(error[0]));
        std::cerr << path << (position ? ":" : ": ") << error << '\n';
    }
    return root;
}

std::unique_ptr<vorParameterOpenRoot> read_tree(const ConvertOptions& options) {
    if (options.from == "json")
        return read_json_tree(options.file);
    FileTree tree = load_file_tree(options.file, std::cerr);
    if (!tree.complete())
        return nullptr;
    return std::move(tree.root);
}

/// Writes `root` in the form `to` names. A failing stream is not reported
/// here: whoever closes the stream finds it and says why.
bool write_tree(const vorParameterOpenRoot& root, const std::string& to, const std::string& file,
                std::ostream& out, std::ostream& err) {
    if (to == "json") {
        std::string error;
        if (write_tree_json(root, out, error))
            return true;
        err << file << ": " << error << '\n';
        return false;
    }
    vorParameterSerializer serializer;
    serializer.set_compact_mode(to == "compact");
    const vorParameterSerialError result = serializer.save(root, out);
    if (result == SERIAL_OK || result == SERIAL_STREAM_ERROR)
        return true;
    err << file << ": cannot write its tree in the saved form\n";
    return false;
}

int run_convert(const ConvertOptions& options) {
    const std::unique_ptr<vorParameterOpenRoot> root = read_tree(options);
    if (!root)
        return 1;
    const std::string to = !options.to.empty()      ? options.to
                           : options.from == "json" ? "text"
                                                    : "json";
    const StreamWriter write = [&](std::ostream& out, std::ostream& err) {
        return write_tree(*root, to, options.file, out, err);
    };
    // Standard output is flushed and checked as vorparam exits.
    const bool written = options.output.empty() ? write(std::cout, std::cerr)
                                                : write_file(options.output, write, std::cerr);
    return written ? 0 : 1;
}

} // namespace

void add_convert_command(CLI::App& app, int& status) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* command =
        app.add_subcommand("convert", "Convert a saved file to JSON, or JSON to a saved file.");
    command->add_option("FILE", options->file, "the file to convert")->required();
    command->add_option("--from", options->from, "the form of FILE")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    command
        ->add_option("--to", options->to,
                     "the form to write: json (from text), text (from json), or compact "
                     "(the saved form on one line)")
        ->check(CLI::IsMember({"text", "compact", "json"}));
    command->add_option("-o,--output", options->output,
                        "write OUT, replacing it only once the whole output is written "
                        "(default: standard output)");
    command->callback([options, &status] { status = run_convert(*options); });
}

} // namespace vorparam

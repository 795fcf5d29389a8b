#include "file_tree.h"
#include "demo_tree.h"
#include "progress.h"

#include "vorparameter/expression/vorParameterError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <ostream>
#include <string_view>

#include <unistd.h>

namespace vorparam {

namespace fs = std::filesystem;

namespace {

const char* describe_result(vorParameterSerialError result) {
    switch (result) {
    case SERIAL_OK:
        return "ok";
    case SERIAL_SOME_FAILED:
        return "values refused";
    case SERIAL_WRONG_TYPE:
        return "wrong tree type";
    case SERIAL_STREAM_ERROR:
        return "input ended early";
    case SERIAL_SYNTAX_ERROR:
        return "syntax error";
    case SERIAL_NEWER_VERSION:
        return "newer version";
    }
    return "load failed";
}

struct TextPosition {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// The line and column of byte `offset` of `in`, read again from its start.
TextPosition position_of(std::istream& in, std::size_t offset) {
    in.clear();
    in.seekg(0);
    TextPosition position;
    char buffer[4096];
    for (std::size_t left = offset; left > 0;) {
        in.read(buffer, static_cast<std::streamsize>(std::min(sizeof buffer, left)));
        const auto got = static_cast<std::size_t>(in.gcount());
        if (got == 0)
            break;
        for (const char c : std::string_view(buffer, got)) {
            if (c == '\n') {
                ++position.line;
                position.column = 1;
            } else {
                ++position.column;
            }
        }
        left -= got;
    }
    return position;
}

void report_load(const std::string& path, std::istream& in,
                 const vorParameterSerializer& serializer, vorParameterSerialError result,
                 std::ostream& report) {
    for (const utString& key : serializer.failed_pars())
        report << path << ": value refused for '" << key << "'\n";
    if (result == SERIAL_OK || result == SERIAL_SOME_FAILED)
        return;
    report << path;
    if (result == SERIAL_SYNTAX_ERROR || result == SERIAL_STREAM_ERROR) {
        const TextPosition at = position_of(in, serializer.error_offset());
        report << ':' << at.line << ':' << at.column;
    }
    report << ": " << describe_result(result) << '\n';
}

/// Loads the file open in `in` into a new open root, through a
/// CountingReader, so that a large file shows on a terminal how far its load
/// has got.
std::unique_ptr<vorParameterOpenRoot> load_with_progress(const std::string& path, std::ifstream& in,
                                                         vorParameterSerializer& serializer,
                                                         vorParameterSerialError& result) {
    std::error_code unknown_size;
    const std::uintmax_t size = fs::file_size(path, unknown_size);
    ProgressLine progress(std::cerr, path, size,
                          !unknown_size && progress_wanted(size, isatty(STDERR_FILENO)));
    CountingReader counted(*in.rdbuf(), progress);
    std::istream counted_in(&counted);
    return vorParameterOpenRoot::load(counted_in, serializer, result);
}

/// Where a save of `target` is written before it replaces `target`: a hidden
/// name in the same directory, so that the rename stays on one file system.
fs::path temporary_beside(const fs::path& target) {
    const std::string name =
        "." + target.filename().string() + ".vorparam-" + std::to_string(getpid()) + ".tmp";
    return target.parent_path() / name;
}

bool write_and_close(std::ofstream& out, const std::string& path, const StreamWriter& write,
                     std::ostream& err) {
    if (!write(out, err))
        return false;
    out.close();
    if (out.fail()) {
        err << path << ": cannot write (" << std::strerror(errno) << ")\n";
        return false;
    }
    return true;
}

/// Runs `write` on a new file at `file` (`path` is what the user named, for
/// the messages).
bool write_new_file(const fs::path& file, const std::string& path, const StreamWriter& write,
                    std::ostream& err) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (!out) {
        err << path << ": cannot write beside it (" << std::strerror(errno) << ")\n";
        return false;
    }
    return write_and_close(out, path, write, err);
}

} // namespace

FileTree load_file_tree(const std::string& path, std::ostream& report) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
        report << path << ": cannot open (is a directory)\n";
        return {};
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        report << path << ": cannot open (" << std::strerror(errno) << ")\n";
        return {};
    }
    FileTree tree;
    vorParameterSerializer serializer;
    tree.root = load_with_progress(path, in, serializer, tree.result);
    report_load(path, in, serializer, tree.result, report);
    return tree;
}

CommandTree open_command_tree(const std::string& path, std::ostream& report) {
    CommandTree tree;
    if (path.empty()) {
        tree.root = build_demo_tree();
        return tree;
    }
    tree.file = load_file_tree(path, report);
    if (tree.file.complete())
        tree.root = vorParameterPtr::share(tree.file.root.get());
    return tree;
}

vorParameterPtr find_value(vorParameterOpenRoot& root, const std::string& path, const char* command,
                           std::ostream& err) {
    vorParameterPtr par = root[vorParameterKey(utString(path))];
    if (par->is_error()) {
        err << "vorparam " << command << ": no parameter '" << path << "'\n";
        return par;
    }
    const vorParameterType type = par->type();
    if (type == TYPE_MAP || type == TYPE_ARRAY) {
        err << "vorparam " << command << ": '" << path << "' holds "
            << (type == TYPE_MAP ? "a map" : "an array") << ", not a single value\n";
        return vorParameterError::create(ERR_TYPE);
    }
    return par;
}

bool save_file_tree(const vorParameterRoot& root, const std::string& path, std::ostream& err) {
    return write_file(
        path,
        [&root, &path](std::ostream& out, std::ostream& report) {
            vorParameterSerializer serializer;
            const vorParameterSerialError result = serializer.save(root, out);
            if (result == SERIAL_OK || result == SERIAL_STREAM_ERROR)
                return true; // a stream error is reported with its reason once closed
            report << path << ": cannot save (" << describe_result(result) << ")\n";
            return false;
        },
        err);
}

bool write_file(const std::string& path, const StreamWriter& write, std::ostream& err) {
    const fs::path target(path);
    std::error_code ec;
    const fs::file_status old = fs::status(target, ec);
    if (fs::exists(old) && !fs::is_regular_file(old)) {
        // A device or a pipe is written where it is: it cannot be replaced.
        std::ofstream out(target, std::ios::binary);
        if (!out) {
            err << path << ": cannot write (" << std::strerror(errno) << ")\n";
            return false;
        }
        return write_and_close(out, path, write, err);
    }
    const fs::path temporary = temporary_beside(target);
    if (!write_new_file(temporary, path, write, err)) {
        fs::remove(temporary, ec);
        return false;
    }
    // A file replaced in place keeps who may read and write it.
    if (fs::exists(old))
        fs::permissions(temporary, old.permissions(), ec);
    fs::rename(temporary, target, ec);
    if (ec) {
        err << path << ": cannot replace (" << ec.message() << ")\n";
        fs::remove(temporary, ec);
        return false;
    }
    return true;
}

} // namespace vorparam

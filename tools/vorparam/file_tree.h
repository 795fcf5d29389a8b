// Saved files as the file commands see them: loaded into a root that needs
// no host classes, with every problem reported as "FILE:LINE:COL: words".
#ifndef VORPARAM_FILE_TREE_H
#define VORPARAM_FILE_TREE_H

#include "vorparameter/persistence/vorParameterOpenRoot.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

namespace vorparam {

struct FileTree {
    /// What was loaded, even after an error; null when the file could not be
    /// opened.
    std::unique_ptr<vorParameterOpenRoot> root;
    /// SERIAL_OK when the whole file loaded and every value was accepted.
    vorParameterSerialError result = SERIAL_STREAM_ERROR;

    bool complete() const { return root && result == SERIAL_OK; }
};

/// Loads the file at `path`. Anything short of a complete load is reported
/// on `report`: "PATH: cannot open (reason)", "PATH:LINE:COL: syntax error"
/// (line and column of the token at which the load stopped, counted from 1
/// in bytes), "PATH: newer version", and one "PATH: refused 'KEY'" line per
/// value the loader refused.
FileTree load_file_tree(const std::string& path, std::ostream& report);

/// The tree a command works on: the tree of a saved file, or the sample
/// tree when no file is given. `root` is null when the file did not load
/// completely (the load's messages are then on the report stream).
struct CommandTree {
    FileTree file;
    vorParameterPtr root;
};

/// The tree of `path`, or the sample tree when `path` is empty.
CommandTree open_command_tree(const std::string& path, std::ostream& report);

/// The single value (not a map or array) at `path` below `root`; an error
/// parameter, after a message naming the path on `err`, when there is none.
vorParameterPtr find_value(vorParameterOpenRoot& root, const std::string& path, const char* command,
                           std::ostream& err);

/// Writes `root` in the saved form to `path` as write_file does.
bool save_file_tree(const vorParameterRoot& root, const std::string& path, std::ostream& err);

/// Puts output on a stream; false, after a message on its second stream,
/// when it could not make the output (a failing stream is found afterwards).
using StreamWriter = std::function<bool(std::ostream& out, std::ostream& err)>;

/// Writes `path` with `write`. A regular file (or a new one) is written as a
/// temporary file beside it that replaces `path` only once it is complete,
/// so that a failure leaves `path` as it was; a device such as /dev/full, or
/// a pipe, cannot be replaced and is written in place. False, after a
/// message on `err`, when `write` or the stream failed.
bool write_file(const std::string& path, const StreamWriter& write, std::ostream& err);

} // namespace vorparam

#endif // VORPARAM_FILE_TREE_H

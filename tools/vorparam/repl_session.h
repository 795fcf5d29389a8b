// What vorparam repl does with each line, apart from how lines are read: a
// tree to work on, the file it came from, and the commands.
//
// A line that begins with ":" is a command (":help" lists them); any other
// line is an expression evaluated against the root of the tree. Results go
// to `out`: a number or text as its value text ("3" for "1+2"), a map or an
// array as the library prints it. Failures go to `err`, one line each,
// naming what failed ("tool.nosuch: Invalid name").
#ifndef VORPARAM_REPL_SESSION_H
#define VORPARAM_REPL_SESSION_H

#include "vorparameter/parameter/vorParameterRoot.h"

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace vorparam {

class ReplSession {
public:
    /// A session on the sample machining tree, with no file.
    ReplSession(std::ostream& out, std::ostream& err);

    /// Replaces the tree by the one the file at `path` holds, and makes
    /// `path` the file that ":save" writes. Nothing changes unless the file
    /// loads completely; false, after the load's report on `err`, then.
    bool load(const std::string& path);

    /// Runs one line (surrounding blanks are ignored; a blank line does
    /// nothing). False when it failed: an expression gave an error, or a
    /// command could not do what it was asked.
    bool run_line(std::string_view line);

    /// True once ":quit" ran.
    bool finished() const { return m_finished; }

    /// The root of the tree, which completion walks.
    const vorParameterPtr& root() const { return m_root; }

private:
    struct Command {
        const char* name;
        const char* operands;
        const char* summary;
        bool (ReplSession::*run)(std::string_view operand);
    };
    /// Every command, in the order ":help" lists them.
    static const std::vector<Command>& commands();

    bool evaluate(std::string_view expression);
    bool run_command(std::string_view name, std::string_view operand);
    bool help(std::string_view);
    bool load_command(std::string_view operand);
    bool save(std::string_view operand);
    bool set(std::string_view operand);
    bool set_existing(const std::string& path, vorParameter& par, const std::string& value);
    bool add_new(const vorParameterKey& key, const std::string& value);
    bool print(std::string_view operand);
    bool quit(std::string_view);

    std::ostream& m_out;
    std::ostream& m_err;
    vorParameterPtr m_root;
    /// The file ":save" writes without an operand; empty for the sample tree.
    std::string m_file;
    bool m_finished = false;
};

} // namespace vorparam

#endif // VORPARAM_REPL_SESSION_H

// Reading lines from a terminal for vorparam repl, through libedit: a
// prompt, emacs-style line editing (or what ~/.editrc asks for), a history
// kept across sessions, and tab completion.
//
// The history lives in $HOME/.vorparam_history and holds the last
// max_history_lines distinct lines entered; it is written after every line,
// so a session that is killed loses nothing. Without HOME, or when the file
// cannot be read or written, the session simply has no history.
#ifndef VORPARAM_REPL_EDITOR_H
#define VORPARAM_REPL_EDITOR_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// libedit's types (EditLine and History in <histedit.h>).
struct editline;
struct history;

namespace vorparam {

class LineEditor {
public:
    static constexpr int max_history_lines = 1000;

    /// Gives the candidates for the word before the cursor.
    using Completer = std::function<std::vector<std::string>(std::string_view word)>;

    /// An editor on standard input and output showing `prompt`.
    LineEditor(const char* prompt, Completer completer);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    /// The next line, without its line feed; none at the end of input (^D)
    /// or when the terminal can no longer be read.
    std::optional<std::string> read_line();
    /// Adds `line` to the history and writes the history file.
    void remember(const std::string& line);

private:
    static unsigned char complete(struct editline* editor, int key);
    static char* prompt_of(struct editline* editor);
    unsigned char complete_word();
    void list(const std::vector<std::string>& candidates);

    std::string m_prompt;
    Completer m_completer;
    std::string m_history_file;
    struct editline* m_editor;
    struct history* m_history;
};

} // namespace vorparam

#endif // VORPARAM_REPL_EDITOR_H

#include "repl_editor.h"
#include "repl_completion.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <histedit.h>

namespace vorparam {

namespace {

/// $HOME/.vorparam_history, or nothing without a HOME.
std::string history_file() {
    const char* home = std::getenv("HOME");
    if (!home || !*home)
        return {};
    return std::string(home) + "/.vorparam_history";
}

LineEditor& editor_of(EditLine* editor) {
    void* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *static_cast<LineEditor*>(self);
}

} // namespace

LineEditor::LineEditor(const char* prompt, Completer completer)
    : m_prompt(prompt)
    , m_completer(std::move(completer))
    , m_history_file(history_file())
    , m_editor(el_init("vorparam", stdin, stdout, stderr))
    , m_history(history_init()) {
    HistEvent event;
    history(m_history, &event, H_SETSIZE, max_history_lines);
    history(m_history, &event, H_SETUNIQUE, 1);
    if (!m_history_file.empty())
        history(m_history, &event, H_LOAD, m_history_file.c_str());

    el_set(m_editor, EL_CLIENTDATA, this);
    el_set(m_editor, EL_EDITOR, "emacs");
    el_set(m_editor, EL_SIGNAL, 1);
    el_set(m_editor, EL_PROMPT, &LineEditor::prompt_of);
    el_set(m_editor, EL_HIST, history, m_history);
    el_set(m_editor, EL_ADDFN, "vorparam-complete", "complete a path or function name",
           &LineEditor::complete);
    el_set(m_editor, EL_BIND, "^I", "vorparam-complete", nullptr);
    // The user's ~/.editrc comes last, so that it can change any of this.
    el_source(m_editor, nullptr);
}

LineEditor::~LineEditor() {
    el_end(m_editor);
    history_end(m_history);
}

std::optional<std::string> LineEditor::read_line() {
    std::cout.flush();
    int length = 0;
    const char* line = el_gets(m_editor, &length);
    if (!line || length <= 0)
        return std::nullopt;
    std::string text(line, static_cast<std::size_t>(length));
    if (text.back() == '\n')
        text.pop_back();
    return text;
}

void LineEditor::remember(const std::string& line) {
    HistEvent event;
    history(m_history, &event, H_ENTER, line.c_str());
    if (!m_history_file.empty())
        history(m_history, &event, H_SAVE, m_history_file.c_str());
}

char* LineEditor::prompt_of(EditLine* editor) {
    return editor_of(editor).m_prompt.data();
}

unsigned char LineEditor::complete(EditLine* editor, int) {
    return editor_of(editor).complete_word();
}

/// Replaces the word before the cursor by the one candidate there is, or by
/// the text all candidates share; when that adds nothing, lists them.
unsigned char LineEditor::complete_word() {
    const LineInfo* line = el_line(m_editor);
    const std::string_view before(line->buffer,
                                  static_cast<std::size_t>(line->cursor - line->buffer));
    const std::string_view word = before.substr(completion_word_start(before));
    const std::vector<std::string> candidates = m_completer(word);
    if (candidates.empty())
        return CC_REFRESH_BEEP;
    const std::string shared =
        candidates.size() == 1 ? candidates.front() : common_prefix(candidates);
    if (shared.size() > word.size()) {
        el_deletestr(m_editor, static_cast<int>(word.size()));
        el_insertstr(m_editor, shared.c_str());
        return CC_REFRESH;
    }
    list(candidates);
    return CC_REDISPLAY;
}

/// Writes the candidates below the line being edited, in columns that fit
/// 80 characters.
void LineEditor::list(const std::vector<std::string>& candidates) {
    std::size_t widest = 0;
    for (const std::string& candidate : candidates)
        widest = std::max(widest, candidate.size());
    const std::size_t width = widest + 2;
    const std::size_t columns = std::max<std::size_t>(1, 80 / width);
    std::string text = "\n";
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        text += candidates[i];
        const bool row_ends = (i + 1) % columns == 0 || i + 1 == candidates.size();
        text += row_ends ? std::string("\n") : std::string(width - candidates[i].size(), ' ');
    }
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

} // namespace vorparam

// Text inside a Graphviz DOT file: every label and id the graph command
// writes goes through dot_quoted, so that whatever a tree holds (quotes,
// backslashes, newlines, any bytes at all) reads back as the same text.
#ifndef VORPARAM_GRAPH_DOT_TEXT_H
#define VORPARAM_GRAPH_DOT_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace vorparam {

/// `text` as a DOT double-quoted string, quotes included, in plain ASCII:
///   - '"' and '\' are escaped with a backslash, a newline becomes "\n" (a
///     line break in a label);
///   - '&' becomes "&amp;" and every other character outside printable ASCII
///     becomes a decimal character entity ("&#945;"), which Graphviz turns
///     back into the character whatever the output's encoding;
///   - control characters show as their visible pictures (U+2400 on), and
///     bytes that are not UTF-8 as U+FFFD, so that no output format (SVG is
///     XML) receives a character it cannot hold.
std::string dot_quoted(std::string_view text);

/// At most `max_characters` characters of UTF-8 `text` (an invalid byte
/// counts as one), with "..." in place of the rest when it is longer.
std::string shortened(std::string_view text, std::size_t max_characters);

} // namespace vorparam

#endif // VORPARAM_GRAPH_DOT_TEXT_H

// Tab completion for vorparam repl: what a word typed so far can become.
// The word is a path into the tree ("tool.di", "passes[", "strategy.cutter.")
// or, before any "." or "[", a name visible from the root: a member of the
// root or a standard function.
//
// Candidates are whole words that begin with the typed word, compared without
// regard to ASCII case (lookups ignore case too): the path before the last
// component stays as typed and the member's name is spelled as in the tree,
// so "TOOL.DI" completes to "TOOL.diameter". A candidate that can be continued says how: a map ends
// in
// ".", an array in "[", a function in "(". A reference completes as what it
// designates, so "strategy.cutter." lists the tool's members.
#ifndef VORPARAM_REPL_COMPLETION_H
#define VORPARAM_REPL_COMPLETION_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorparam {

/// At most this many candidates are given for one word, so that a tab in a
/// container of a million members still answers at once; the rest are left
/// out.
constexpr std::size_t max_completion_candidates = 1000;

/// Where the word that completion works on begins in `before_cursor` (the
/// line up to the cursor): after the last character that cannot be part of
/// a path. Letters, digits, "_", ".", "[", "]" and every byte of a non-ASCII
/// character can.
std::size_t completion_word_start(std::string_view before_cursor);

/// The candidates for `word` in the tree below `root`: the members of the
/// container that the path before the word's last "." or "[" names (in the
/// container's order), or, for a word without either, the root's members and
/// then the standard functions (in alphabetical order). None when the path
/// names no container.
std::vector<std::string> completion_candidates(const vorParameterPtr& root, std::string_view word);

/// The longest text that every candidate begins with (exactly, case and all).
std::string common_prefix(const std::vector<std::string>& candidates);

} // namespace vorparam

#endif // VORPARAM_REPL_COMPLETION_H

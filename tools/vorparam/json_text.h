// The contents of a saved file written in the saved form, so that the
// library's own reader builds the tree they describe.
#ifndef VORPARAM_JSON_TEXT_H
#define VORPARAM_JSON_TEXT_H

#include "json_saved.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vorparam {

/// `file` in the saved form, on one line, with the time 0 in its header.
/// `starts` receives the offset at which each member and each array slot
/// begins, in the order they are written, so that a load that stops at an
/// offset can be traced back to the member it stopped in.
std::string saved_text(const SavedFile& file, std::vector<std::size_t>& starts);

/// The JSON pointer of the member or slot written `index`th by saved_text.
std::string pointer_of(const SavedFile& file, std::size_t index);

} // namespace vorparam

#endif // VORPARAM_JSON_TEXT_H

// The contents of a saved file written as JSON, in the form docs/json.md
// describes, laid out with two spaces a level and ending with a line break.
#ifndef VORPARAM_JSON_WRITE_H
#define VORPARAM_JSON_WRITE_H

#include "json_saved.h"

#include <iosfwd>
#include <string>

namespace vorparam {

/// Writes `file` to `out`. False when a text is not UTF-8, which JSON cannot
/// hold, with `error` as "POINTER: words"; nothing is written then.
bool write_saved_json(const SavedFile& file, std::ostream& out, std::string& error);

} // namespace vorparam

#endif // VORPARAM_JSON_WRITE_H

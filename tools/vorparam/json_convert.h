// Trees to JSON and back. A tree goes to JSON as its saved form holds it;
// JSON comes back into a tree through the saved form, read by the library's
// schema-less root, and only when the tree then holds exactly what the
// JSON says: a document that the saved form cannot hold as it stands (an
// empty slot at the end of an array, a value the library reads differently)
// is refused, never changed. docs/json.md describes the JSON.
#ifndef VORPARAM_JSON_CONVERT_H
#define VORPARAM_JSON_CONVERT_H

#include "vorparameter/persistence/vorParameterOpenRoot.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace vorparam {

/// The tree the JSON document `json` describes. Null when it cannot be had,
/// with `error` naming where: "LINE:COL: words" for malformed JSON,
/// "POINTER: words" for a value out of the form or one the saved form
/// cannot hold ("/body/tool: a definition needs a \"type\"").
std::unique_ptr<vorParameterOpenRoot> tree_from_json(std::string_view json, std::string& error);

/// Writes `root` to `out` as a JSON document. False, with `error` naming
/// where, when the tree holds a text that is not UTF-8 (nothing is written).
bool write_tree_json(const vorParameterOpenRoot& root, std::ostream& out, std::string& error);

} // namespace vorparam

#endif // VORPARAM_JSON_CONVERT_H

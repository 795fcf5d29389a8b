// The JSON form of a saved file, read into its contents. docs/json.md
// describes the form; every departure from it is refused with a message
// that names where, as a JSON pointer.
#ifndef VORPARAM_JSON_READ_H
#define VORPARAM_JSON_READ_H

#include "json_saved.h"
#include "json_value.h"

#include <string>

namespace vorparam {

/// Reads `document` into `file`. False on a document that is not in the
/// form, with `error` as "POINTER: words" ("/body/tool: a definition needs
/// a \"type\""), or words alone when the document as a whole is wrong.
bool read_saved_json(const JsonValue& document, SavedFile& file, std::string& error);

} // namespace vorparam

#endif // VORPARAM_JSON_READ_H

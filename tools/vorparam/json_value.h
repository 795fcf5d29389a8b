// JSON documents as vorparam convert reads them. Objects keep their members in
// the order the text gives them, and reading is bounded in depth, so that no
// document can exhaust the stack of the code that walks it.
//
// (nlohmann's ordered objects find a name by a linear search, which would
// make reading a large object quadratic; this value looks nothing up.)
#ifndef VORPARAM_JSON_VALUE_H
#define VORPARAM_JSON_VALUE_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorparam {

struct JsonValue {
    enum class Kind { null, boolean, number, string, object, array };

    Kind kind = Kind::null;
    /// A string's contents; the literal text of a number or boolean.
    std::string text;
    /// An object's members, in document order (duplicates kept).
    std::vector<std::pair<std::string, JsonValue>> members;
    /// An array's elements.
    std::vector<JsonValue> elements;
};

/// Deepest nesting of objects and arrays read. A saved file nests its blocks
/// at most 64 deep, and each block costs at most two levels of JSON (a
/// defined member's object around its value), plus the document and its
/// "body".
constexpr int max_json_depth = 130;

/// Parses the whole of `text` as one JSON document (RFC 8259, UTF-8). False
/// on a malformed document, with `error` as "LINE:COL: words" (counted from
/// 1, in bytes), or on one nested deeper than max_json_depth.
bool parse_json(std::string_view text, JsonValue& document, std::string& error);

} // namespace vorparam

#endif // VORPARAM_JSON_VALUE_H

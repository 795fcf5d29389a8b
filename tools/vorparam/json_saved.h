// What a saved file holds, apart from its syntax: the part that converting
// between the saved text and JSON keeps. The header's time is not part of
// it, since every save writes the time of that save.
#ifndef VORPARAM_JSON_SAVED_H
#define VORPARAM_JSON_SAVED_H

#include "vorparameter/persistence/vorParameterOpenRoot.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorparam {

/// The words that define a member in a file, so that loading creates it.
struct Definition {
    std::string type;        ///< the type word: "I", "R[L]", "LS", "V3R[L]", ...
    std::string description; ///< empty when the member has none
    std::string lock_id;     ///< 32 hexadecimal digits, or empty for none
};

struct SavedMember;

struct SavedValue {
    enum class Kind { text, map, array, empty_slot };

    Kind kind = Kind::text;
    /// A text value as it stands (references included: "&tool", "*:&tool").
    std::string text;
    std::vector<SavedMember> members; ///< a map's, in order
    std::vector<SavedValue> slots;    ///< an array's
};

struct SavedMember {
    std::string name;
    std::optional<Definition> definition;
    SavedValue value;
};

struct SavedFile {
    std::string type;
    int version = 0;
    SavedValue body; ///< a map
};

/// What saving `root` with default settings writes. Only for trees the
/// saved form can hold (a loaded root is one): nesting is not checked.
SavedFile saved_contents(const vorParameterOpenRoot& root);

/// Where two files' contents first differ, as a JSON pointer into the JSON
/// form of `wanted` and what `got` holds there; both empty when they agree.
struct Difference {
    std::string path;
    std::string found;
};
Difference first_difference(const SavedFile& wanted, const SavedFile& got);

/// `name` as one step of a JSON pointer: "/" then the name with "~" and "/"
/// escaped.
std::string pointer_step(std::string_view name);

} // namespace vorparam

#endif // VORPARAM_JSON_SAVED_H

#include "json_convert.h"

#include "json_read.h"
#include "json_saved.h"
#include "json_text.h"
#include "json_value.h"
#include "json_write.h"

#include <algorithm>
#include <sstream>

namespace vorparam {

namespace {

bool read_contents(std::string_view json, SavedFile& contents, std::string& error) {
    JsonValue document;
    return parse_json(json, document, error) && read_saved_json(document, contents, error);
}

/// Where in `contents` a load of its saved text stopped at byte `offset`.
std::string pointer_at(const SavedFile& contents, const std::vector<std::size_t>& starts,
                       std::size_t offset) {
    const auto after = std::upper_bound(starts.begin(), starts.end(), offset);
    if (after == starts.begin())
        return "/body";
    return pointer_of(contents, static_cast<std::size_t>(after - starts.begin() - 1));
}

} // namespace

std::unique_ptr<vorParameterOpenRoot> tree_from_json(std::string_view json, std::string& error) {
    SavedFile wanted;
    if (!read_contents(json, wanted, error))
        return nullptr;
    std::vector<std::size_t> starts;
    std::istringstream text(saved_text(wanted, starts));
    vorParameterSerializer serializer;
    vorParameterSerialError result = SERIAL_OK;
    std::unique_ptr<vorParameterOpenRoot> root =
        vorParameterOpenRoot::load(text, serializer, result);
    if (result == SERIAL_SYNTAX_ERROR || result == SERIAL_STREAM_ERROR) {
        error = pointer_at(wanted, starts, serializer.error_offset()) +
                ": the saved form cannot hold this (the library does not read it back)";
        return nullptr;
    }
    // Anything else the load changed or refused shows as a difference.
    const Difference difference = first_difference(wanted, saved_contents(*root));
    if (!difference.path.empty()) {
        error = difference.path +
                ": the saved form cannot hold this as it stands (it reads back as " +
                difference.found + ')';
        return nullptr;
    }
    return root;
}

bool write_tree_json(const vorParameterOpenRoot& root, std::ostream& out, std::string& error) {
    return write_saved_json(saved_contents(root), out, error);
}

} // namespace vorparam

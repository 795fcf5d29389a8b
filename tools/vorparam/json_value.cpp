#include "json_value.h"

#include <nlohmann/json.hpp>

#include <cstdint>

namespace vorparam {

namespace {

using Json = nlohmann::json;

/// Builds a JsonValue from nlohmann's parsing events, refusing to open a
/// container beyond max_json_depth.
class DocumentBuilder final : public nlohmann::json_sax<Json> {
public:
    explicit DocumentBuilder(JsonValue& document)
        : m_document(document) {}

    bool null() override { return place(JsonValue::Kind::null, std::string()); }
    bool boolean(bool value) override {
        return place(JsonValue::Kind::boolean, value ? "true" : "false");
    }
    bool number_integer(number_integer_t value) override {
        return place(JsonValue::Kind::number, std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return place(JsonValue::Kind::number, std::to_string(value));
    }
    bool number_float(number_float_t, const string_t& literal) override {
        return place(JsonValue::Kind::number, literal);
    }
    bool string(string_t& value) override {
        return place(JsonValue::Kind::string, std::move(value));
    }
    bool binary(binary_t&) override { return false; } // never produced by JSON text

    bool start_object(std::size_t) override { return open(JsonValue::Kind::object); }
    bool key(string_t& name) override {
        m_open.back()->members.emplace_back(std::move(name), JsonValue());
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(JsonValue::Kind::array); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& failure) override {
        m_error_position = position;
        m_error = failure.what();
        return false;
    }

    /// Offset of the byte after which the document was found malformed.
    std::size_t error_position() const { return m_error_position; }
    /// nlohmann's description; empty when the depth limit stopped the read.
    const std::string& error() const { return m_error; }

private:
    /// The value the next event fills: the document itself, the member whose
    /// name was just read, or a new element.
    JsonValue& next_slot() {
        if (m_open.empty())
            return m_document;
        JsonValue& container = *m_open.back();
        if (container.kind == JsonValue::Kind::object)
            return container.members.back().second;
        return container.elements.emplace_back();
    }

    bool place(JsonValue::Kind kind, std::string text) {
        JsonValue& value = next_slot();
        value.kind = kind;
        value.text = std::move(text);
        return true;
    }

    // The open containers stay where they are while they are open: only the
    // innermost one grows.
    bool open(JsonValue::Kind kind) {
        if (m_open.size() >= static_cast<std::size_t>(max_json_depth))
            return false;
        JsonValue& value = next_slot();
        value.kind = kind;
        m_open.push_back(&value);
        return true;
    }

    bool close() {
        m_open.pop_back();
        return true;
    }

    JsonValue& m_document;
    std::vector<JsonValue*> m_open;
    std::size_t m_error_position = 0;
    std::string m_error;
};

/// "LINE:COL" of the byte at `offset` of `text`.
std::string position_of(std::string_view text, std::size_t offset) {
    std::size_t line = 1;
    std::size_t column = 1;
    for (const char c : text.substr(0, offset)) {
        if (c == '\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    return std::to_string(line) + ':' + std::to_string(column);
}

/// nlohmann's words without its prefixes ("[json.exception.parse_error.101]
/// parse error at line 1, column 2: "): the position is given in ours.
std::string plain_words(std::string what) {
    const std::size_t tag_end = what.find("] ");
    if (tag_end != std::string::npos)
        what.erase(0, tag_end + 2);
    const std::string position_prefix = "parse error at line ";
    const std::size_t colon = what.find(": ");
    if (what.compare(0, position_prefix.size(), position_prefix) == 0 && colon != std::string::npos)
        what.erase(0, colon + 2);
    return what;
}

} // namespace

bool parse_json(std::string_view text, JsonValue& document, std::string& error) {
    document = JsonValue();
    DocumentBuilder builder(document);
    if (Json::sax_parse(text.begin(), text.end(), &builder))
        return true;
    if (builder.error().empty()) {
        error = "nested deeper than " + std::to_string(max_json_depth) + " levels";
        return false;
    }
    // nlohmann counts the offending byte as read.
    const std::size_t at = builder.error_position() > 0 ? builder.error_position() - 1 : 0;
    error = position_of(text, at) + ": " + plain_words(builder.error());
    return false;
}

} // namespace vorparam

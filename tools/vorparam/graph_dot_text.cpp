#include "graph_dot_text.h"

namespace vorparam {

namespace {

constexpr char32_t replacement_character = 0xFFFD;

/// The code point of the UTF-8 sequence at `text[at]` and its length in
/// bytes; a byte that does not start a well-formed sequence is one
/// replacement character.
struct Decoded {
    char32_t code_point;
    std::size_t length;
};

/// How many bytes the sequence led by `lead` has: 1 to 4, or 0 for a byte
/// that cannot lead one.
std::size_t sequence_length(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if ((lead & 0xE0) == 0xC0)
        return 2;
    if ((lead & 0xF0) == 0xE0)
        return 3;
    if ((lead & 0xF8) == 0xF0)
        return 4;
    return 0;
}

Decoded decode_at(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = sequence_length(lead);
    if (length == 1)
        return {lead, 1};
    if (length == 0)
        return {replacement_character, 1};
    // The lead byte keeps 7 - length bits of the code point.
    char32_t code_point = lead & (0x7F >> length);
    if (at + length > text.size())
        return {replacement_character, 1};
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80)
            return {replacement_character, 1};
        code_point = (code_point << 6) | (next & 0x3F);
    }
    // Overlong forms, surrogates and values past Unicode are not characters.
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code_point < smallest[length] || code_point > 0x10FFFF ||
        (code_point >= 0xD800 && code_point <= 0xDFFF))
        return {replacement_character, 1};
    return {code_point, length};
}

void append_entity(std::string& out, char32_t code_point) {
    out += "&#";
    out += std::to_string(static_cast<unsigned long>(code_point));
    out += ';';
}

} // namespace

std::string dot_quoted(std::string_view text) {
    std::string out = "\"";
    out.reserve(text.size() + 2);
    for (std::size_t at = 0; at < text.size();) {
        const Decoded c = decode_at(text, at);
        at += c.length;
        if (c.code_point == '"' || c.code_point == '\\') {
            out += '\\';
            out += static_cast<char>(c.code_point);
        } else if (c.code_point == '\n') {
            out += "\\n";
        } else if (c.code_point == '&') {
            out += "&amp;";
        } else if (c.code_point < 0x20) {
            append_entity(out, 0x2400 + c.code_point);
        } else if (c.code_point == 0x7F) {
            append_entity(out, 0x2421);
        } else if (c.code_point < 0x80) {
            out += static_cast<char>(c.code_point);
        } else {
            append_entity(out, c.code_point);
        }
    }
    out += '"';
    return out;
}

std::string shortened(std::string_view text, std::size_t max_characters) {
    std::size_t at = 0;
    for (std::size_t count = 0; at < text.size() && count < max_characters; ++count)
        at += decode_at(text, at).length;
    if (at == text.size())
        return std::string(text);
    return std::string(text.substr(0, at)) + "...";
}

} // namespace vorparam

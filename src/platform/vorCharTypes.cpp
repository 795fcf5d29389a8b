//===- vorCharTypes.cpp - Character classes over code points --------------===//

#include "vorparameter/platform/vorCharTypes.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Number of continuation bytes announced by a UTF-8 lead byte, or -1.
int continuation_count(unsigned char lead) {
    if (lead < 0x80)
        return 0;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 1;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 2;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 3;
    return -1;
}

} // namespace

vorWideString vorMultiByteToWideChar::convert(std::string_view utf8) {
    vorWideString wide;
    wide.reserve(utf8.size());
    std::size_t i = 0;
    while (i < utf8.size()) {
        unsigned char lead = static_cast<unsigned char>(utf8[i]);
        int more = continuation_count(lead);
        if (more == 0) {
            wide.push_back(lead);
            ++i;
            continue;
        }
        if (more < 0 || i + static_cast<std::size_t>(more) >= utf8.size()) {
            wide.push_back(kReplacement);
            ++i;
            continue;
        }
        char32_t c = lead & (0x3F >> more);
        bool ok = true;
        for (int k = 1; k <= more; ++k) {
            unsigned char next = static_cast<unsigned char>(utf8[i + k]);
            if ((next & 0xC0) != 0x80) {
                ok = false;
                break;
            }
            c = (c << 6) | (next & 0x3F);
        }
        bool overlong = (more == 2 && c < 0x800) || (more == 3 && c < 0x10000);
        if (!ok || overlong || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
            wide.push_back(kReplacement);
            ++i;
            continue;
        }
        wide.push_back(c);
        i += static_cast<std::size_t>(more) + 1;
    }
    return wide;
}

void vorMultiByteToWideChar::append_utf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

std::string vorMultiByteToWideChar::convert_back(std::u32string_view wide) {
    std::string out;
    out.reserve(wide.size());
    for (char32_t c : wide)
        append_utf8(out, c);
    return out;
}

vorCharTypes::vorCharTypes(const utString& text)
    : m_owned(vorMultiByteToWideChar::convert(text.view()))
    , m_text(m_owned) {}

bool vorCharTypes::is_space(char32_t c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

bool vorCharTypes::is_alpha(char32_t c) {
    if (c < 0x80)
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    // Latin-1 holds symbols below U+00C0 and the signs x and / among the letters.
    if (c < 0xC0)
        return c == 0xAA || c == 0xB5 || c == 0xBA;
    if (c == 0xD7 || c == 0xF7)
        return false;
    // Blocks of punctuation, symbols and spaces that are never part of a name.
    if ((c >= 0x2000 && c <= 0x2BFF) || (c >= 0x3000 && c <= 0x303F) ||
        (c >= 0xD800 && c <= 0xDFFF) || (c >= 0xE000 && c <= 0xF8FF) ||
        (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF20) || c >= 0xFFF0)
        return false;
    return true;
}

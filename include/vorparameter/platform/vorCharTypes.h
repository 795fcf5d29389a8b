//===- vorCharTypes.h - Character classes over code points ------*- C++ -*-===//
//
// The tokenizer and the key parser read text one code point at a time.
// vorMultiByteToWideChar converts between UTF-8 and a wide string of code
// points (malformed bytes become U+FFFD, so any input converts), and
// vorCharTypes answers the character classes of a text by position.
//
// Classes: ASCII letters and digits as usual; every non-ASCII code point that
// is a letter of the Latin, Greek, Cyrillic or any later script counts as a
// letter (so a parameter may be named "Länge"), except the punctuation, symbol
// and space blocks listed in vorCharTypes.cpp. Only ASCII "0"-"9" are digits.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VORCHARTYPES_H
#define VORPARAMETER_PLATFORM_VORCHARTYPES_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <string>

/// A wide string holds one code point per position.
using vorWideString = std::u32string;

class VOR_API vorMultiByteToWideChar {
public:
    static vorWideString convert(std::string_view utf8);
    static std::string convert_back(std::u32string_view wide);
    static void append_utf8(std::string& out, char32_t c);
};

class VOR_API vorCharTypes {
public:
    explicit vorCharTypes(const utString& text);
    /// Classifies `wide` in place, without a copy; it must outlive this object.
    explicit vorCharTypes(std::u32string_view wide)
        : m_text(wide) {}
    vorCharTypes(const vorCharTypes&) = delete;
    vorCharTypes& operator=(const vorCharTypes&) = delete;

    std::size_t size() const { return m_text.size(); }
    char32_t at(std::size_t pos) const { return pos < m_text.size() ? m_text[pos] : 0; }

    bool isspace(std::size_t pos) const { return is_space(at(pos)); }
    bool isblank(std::size_t pos) const { return is_blank(at(pos)); }
    bool isdigit(std::size_t pos) const { return is_digit(at(pos)); }
    bool isalpha(std::size_t pos) const { return is_alpha(at(pos)); }
    bool isalnum(std::size_t pos) const { return is_alnum(at(pos)); }

    /// The same classes of one code point.
    static bool is_space(char32_t c);
    static bool is_blank(char32_t c) { return c == ' ' || c == '\t'; }
    static bool is_digit(char32_t c) { return c >= '0' && c <= '9'; }
    static bool is_alpha(char32_t c);
    static bool is_alnum(char32_t c) { return is_digit(c) || is_alpha(c); }

private:
    vorWideString m_owned;
    std::u32string_view m_text;
};

#endif // VORPARAMETER_PLATFORM_VORCHARTYPES_H

//===- utString.h - UTF-8 text of the parameter library ---------*- C++ -*-===//
//
// utString holds the names, value texts and messages that the library takes
// and hands out (a tree stores its names as utCompactString): UTF-8 text in a
// std::string, plus one extra state, "invalid", which scalars use to mark
// a missing alternative default. An invalid string reads as empty text; it is
// distinct only through is_invalid().
//
// Copies are plain value copies (move semantics and the small-string buffer of
// std::string make copy-on-write unnecessary).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_UTSTRING_H
#define VORPARAMETER_PLATFORM_UTSTRING_H

#include "vorparameter/platform/vorExport.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

class VOR_API utString {
public:
    static constexpr std::size_t npos = std::string::npos;

    utString() = default;
    utString(const char* text)
        : m_text(text ? text : "") {}
    utString(std::string text)
        : m_text(std::move(text)) {}
    utString(std::string_view text)
        : m_text(text) {}
    utString(const char* text, std::size_t length)
        : m_text(text, length) {}

    /// The "invalid" state: empty text that remembers it was never set.
    static utString invalid();
    bool is_invalid() const { return m_invalid; }
    void set_invalid();

    const char* c_str() const { return m_text.c_str(); }
    const std::string& str() const { return m_text; }
    std::string_view view() const { return m_text; }
    std::size_t length() const { return m_text.size(); }
    std::size_t size() const { return m_text.size(); }
    bool empty() const { return m_text.empty(); }
    char operator[](std::size_t i) const { return m_text[i]; }
    operator std::string_view() const { return m_text; }

    /// Appending makes the string valid again.
    utString& operator+=(std::string_view more);
    utString& operator+=(char c);
    void clear();

    /// Three-way byte comparison: negative, zero or positive.
    int compare(std::string_view other) const;
    /// Byte offset of the first occurrence of `what` at or after `from`, or npos.
    std::size_t find(std::string_view what, std::size_t from = 0) const;
    bool contains(std::string_view what) const { return find(what) != npos; }
    bool starts_with(std::string_view prefix) const;
    utString substr(std::size_t from, std::size_t count = npos) const;

    /// Lower- and upper-case copies; see vordowncase for the letters folded.
    utString downcase() const;
    utString upcase() const;
    /// A copy without leading and trailing white space.
    utString trimmed() const;
    /// Removes every leading character that occurs in `set`.
    utString& remove_leading(std::string_view set);

    /// Reads a decimal number at the start of the text in the locale's form
    /// (the decimal point of nlsUtils). Leading white space and a sign are
    /// accepted; "inf" and "nan" are not numbers. On success `value` holds the
    /// number and `used` the count of bytes read; on failure both are left 0.
    bool parse(double& value, std::size_t& used) const;
    /// The same with `point` as the decimal point.
    bool parse(double& value, std::size_t& used, char point) const;
    /// parse() that succeeds only when the whole text (bar surrounding white
    /// space) is one number.
    bool parse(double& value) const;
    /// Whole-text integer parse with overflow detection (decimal, optional sign).
    bool parse_int(long long& value) const;

    friend bool operator==(const utString& a, const utString& b) {
        return same_text(a.m_text, b.m_text);
    }
    friend bool operator!=(const utString& a, const utString& b) {
        return !same_text(a.m_text, b.m_text);
    }
    friend bool operator==(const utString& a, const char* b) { return same_text(a.m_text, b); }
    friend bool operator!=(const utString& a, const char* b) { return !same_text(a.m_text, b); }
    friend bool operator==(const char* a, const utString& b) { return same_text(b.m_text, a); }
    friend bool operator!=(const char* a, const utString& b) { return !same_text(b.m_text, a); }
    friend bool operator<(const utString& a, const utString& b) { return a.m_text < b.m_text; }

    friend utString operator+(utString a, std::string_view b) { return a += b; }
    friend utString operator+(const char* a, const utString& b) { return utString(a) += b; }

    /// Byte equality of two texts. Names and operators, the texts compared
    /// most often (every lookup in a map compares a name, every step of the
    /// parser an operator), are short: comparing those in line beats a call
    /// to memcmp.
    static bool same_text(std::string_view a, std::string_view b) {
        const std::size_t size = a.size();
        if (size != b.size())
            return false;
        if (size > 16)
            return a == b;
        // Two words that overlap in the middle cover a text of 8 to 16
        // bytes, two half words one of 4 to 7.
        const char* x = a.data();
        const char* y = b.data();
        if (size >= 8)
            return word<std::uint64_t>(x) == word<std::uint64_t>(y) &&
                   word<std::uint64_t>(x + size - 8) == word<std::uint64_t>(y + size - 8);
        if (size >= 4)
            return word<std::uint32_t>(x) == word<std::uint32_t>(y) &&
                   word<std::uint32_t>(x + size - 4) == word<std::uint32_t>(y + size - 4);
        for (std::size_t i = 0; i < size; ++i)
            if (x[i] != y[i])
                return false;
        return true;
    }

private:
    template <class Word>
    static Word word(const char* bytes) {
        Word value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

    std::string m_text;
    bool m_invalid = false;
};

VOR_API std::ostream& operator<<(std::ostream& out, const utString& text);

template <>
struct std::hash<utString> {
    std::size_t operator()(const utString& s) const noexcept {
        return std::hash<std::string_view>()(s.view());
    }
};

#endif // VORPARAMETER_PLATFORM_UTSTRING_H

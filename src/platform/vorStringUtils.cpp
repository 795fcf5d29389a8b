//===- vorStringUtils.cpp - Text helpers of the toolbox -------------------===//

#include "vorparameter/platform/vorStringUtils.h"

#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/vorCharTypes.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

bool is_ascii(std::string_view text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

char32_t lower(char32_t c) {
    if (c >= 'A' && c <= 'Z')
        return c + 32;
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB && c != 0x3A2) ||
        (c >= 0x410 && c <= 0x42F))
        return c + 32;
    if (c >= 0x400 && c <= 0x40F)
        return c + 80;
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x138 && c != 0x149 && c != 0x17F) {
        // Latin Extended-A pairs: even upper/odd lower, except 0x139-0x148 and
        // 0x179-0x17E where the upper case letter is odd.
        bool odd_upper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        return ((c % 2 == 1) == odd_upper) ? c + 1 : c;
    }
    return c;
}

char32_t upper(char32_t c) {
    if (c >= 'a' && c <= 'z')
        return c - 32;
    if ((c >= 0xE0 && c <= 0xFE && c != 0xF7) || (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) ||
        (c >= 0x430 && c <= 0x44F))
        return c - 32;
    if (c >= 0x450 && c <= 0x45F)
        return c - 80;
    if (c >= 0x100 && c <= 0x17F && c != 0x131 && c != 0x138 && c != 0x149 && c != 0x17F) {
        bool odd_upper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        return ((c % 2 == 1) != odd_upper) ? c - 1 : c;
    }
    return c;
}

template <class Fold, class AsciiFold>
utString fold(std::string_view text, Fold fold_code_point, AsciiFold fold_ascii) {
    std::string out(text);
    if (is_ascii(text)) {
        for (char& c : out)
            c = fold_ascii(c);
        return utString(std::move(out));
    }
    vorWideString wide = vorMultiByteToWideChar::convert(text);
    for (char32_t& c : wide)
        c = fold_code_point(c);
    return utString(vorMultiByteToWideChar::convert_back(wide));
}

bool is_trim_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

utString vordowncase(std::string_view text) {
    return fold(text, lower, [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
}

utString vorupcase(std::string_view text) {
    return fold(text, upper, [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
}

bool vorequal_nocase(std::string_view a, std::string_view b) {
    if (is_ascii(a) && is_ascii(b)) {
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            char x = a[i] >= 'A' && a[i] <= 'Z' ? char(a[i] + 32) : a[i];
            char y = b[i] >= 'A' && b[i] <= 'Z' ? char(b[i] + 32) : b[i];
            if (x != y)
                return false;
        }
        return true;
    }
    return vordowncase(a) == vordowncase(b);
}

int vorcompare(std::string_view a, std::string_view b) {
    int c = a.compare(b);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

utString vorltrim(std::string_view text) {
    std::size_t first = 0;
    while (first < text.size() && is_trim_space(text[first]))
        ++first;
    return utString(text.substr(first));
}

utString vorrtrim(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && is_trim_space(text[end - 1]))
        --end;
    return utString(text.substr(0, end));
}

utString vortrim(std::string_view text) {
    return vorltrim(vorrtrim(text).view());
}

std::vector<utString> vortokens(std::string_view text, std::string_view delimiters) {
    std::vector<utString> tokens;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t start = text.find_first_not_of(delimiters, pos);
        if (start == std::string_view::npos)
            break;
        std::size_t end = text.find_first_of(delimiters, start);
        if (end == std::string_view::npos)
            end = text.size();
        tokens.emplace_back(text.substr(start, end - start));
        pos = end;
    }
    return tokens;
}

int vorindex(std::string_view text, std::string_view what, int from) {
    if (from < 0 || static_cast<std::size_t>(from) > text.size())
        return -1;
    std::size_t at = text.find(what, static_cast<std::size_t>(from));
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

namespace {

utString with_locale_point(char* begin, char* end) {
    const char point = nlsUtils::decimal_point();
    if (point != '.')
        for (char* p = begin; p != end; ++p)
            if (*p == '.')
                *p = point;
    return utString(begin, static_cast<std::size_t>(end - begin));
}

} // namespace

utString vorformat_double(double value, int places) {
    if (places < 0)
        places = 0;
    if (places > 17)
        places = 17;
    if (!std::isfinite(value))
        return vorformat_double_exact(value);
    char buffer[400];
    int n = std::snprintf(buffer, sizeof buffer, "%.*f", places, value);
    if (n < 0 || static_cast<std::size_t>(n) >= sizeof buffer)
        return vorformat_double_exact(value);
    return with_locale_point(buffer, buffer + n);
}

utString vorformat_double_exact(double value) {
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return with_locale_point(buffer, result.ptr);
}

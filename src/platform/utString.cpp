//===- utString.cpp - UTF-8 text of the parameter library -----------------===//

#include "vorparameter/platform/utString.h"

#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <charconv>
#include <limits>
#include <ostream>
#include <system_error>

utString utString::invalid() {
    utString s;
    s.m_invalid = true;
    return s;
}

void utString::set_invalid() {
    m_text.clear();
    m_invalid = true;
}

utString& utString::operator+=(std::string_view more) {
    m_text.append(more);
    m_invalid = false;
    return *this;
}

utString& utString::operator+=(char c) {
    m_text.push_back(c);
    m_invalid = false;
    return *this;
}

void utString::clear() {
    m_text.clear();
    m_invalid = false;
}

int utString::compare(std::string_view other) const {
    int c = std::string_view(m_text).compare(other);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

std::size_t utString::find(std::string_view what, std::size_t from) const {
    return m_text.find(what, from);
}

bool utString::starts_with(std::string_view prefix) const {
    return m_text.size() >= prefix.size() && m_text.compare(0, prefix.size(), prefix) == 0;
}

utString utString::substr(std::size_t from, std::size_t count) const {
    if (from >= m_text.size())
        return utString();
    return utString(m_text.substr(from, count));
}

utString utString::downcase() const {
    return vordowncase(*this);
}
utString utString::upcase() const {
    return vorupcase(*this);
}
utString utString::trimmed() const {
    return vortrim(*this);
}

utString& utString::remove_leading(std::string_view set) {
    std::size_t first = m_text.find_first_not_of(set);
    m_text.erase(0, first == std::string::npos ? m_text.size() : first);
    return *this;
}

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Length of the number at `text[from]` in the form [+-]digits[.digits][e[+-]digits]
// with `point` as the decimal point; 0 when no number starts there.
std::size_t scan_number(std::string_view text, std::size_t from, char point) {
    std::size_t i = from;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        ++i;
    std::size_t digits = 0;
    while (i < text.size() && is_digit(text[i]))
        ++i, ++digits;
    if (i < text.size() && text[i] == point) {
        std::size_t after = i + 1;
        std::size_t fraction = 0;
        while (after < text.size() && is_digit(text[after]))
            ++after, ++fraction;
        if (digits + fraction > 0) {
            i = after;
            digits += fraction;
        }
    }
    if (digits == 0)
        return 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t e = i + 1;
        if (e < text.size() && (text[e] == '+' || text[e] == '-'))
            ++e;
        std::size_t exponent_digits = 0;
        while (e < text.size() && is_digit(text[e]))
            ++e, ++exponent_digits;
        if (exponent_digits > 0)
            i = e;
    }
    return i - from;
}

} // namespace

bool utString::parse(double& value, std::size_t& used) const {
    return parse(value, used, nlsUtils::decimal_point());
}

bool utString::parse(double& value, std::size_t& used, char point) const {
    value = 0.0;
    used = 0;
    std::string_view text = m_text;
    std::size_t start = 0;
    while (start < text.size() && is_space(text[start]))
        ++start;
    std::size_t length = scan_number(text, start, point);
    if (length == 0)
        return false;

    // from_chars knows neither a leading "+" nor another decimal point.
    std::string number(text.substr(start, length));
    if (number[0] == '+')
        number.erase(0, 1);
    if (point != '.')
        for (char& c : number)
            if (c == point)
                c = '.';
    double result = 0.0;
    auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), result);
    if (error != std::errc() || end != number.data() + number.size())
        return false;
    value = result;
    used = start + length;
    return true;
}

bool utString::parse(double& value) const {
    std::size_t used = 0;
    if (!parse(value, used))
        return false;
    while (used < m_text.size() && is_space(m_text[used]))
        ++used;
    if (used == m_text.size())
        return true;
    value = 0.0;
    return false;
}

bool utString::parse_int(long long& value) const {
    value = 0;
    std::string_view text = m_text;
    while (!text.empty() && is_space(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_space(text.back()))
        text.remove_suffix(1);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    if (text.empty())
        return false;
    long long result = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    value = result;
    return true;
}

std::ostream& operator<<(std::ostream& out, const utString& text) {
    return out << text.str();
}

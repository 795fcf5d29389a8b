//===- vorUniqueId.cpp - 128-bit object identifiers -----------------------===//

#include "vorparameter/platform/vorUniqueId.h"

#include <random>

vorUniqueId vorUniqueId::generate() {
    static std::mt19937_64 engine{std::random_device{}()};
    return vorUniqueId(engine(), engine());
}

namespace {

int hex_digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

vorUniqueId vorUniqueId::from_hex(std::string_view text) {
    if (text.size() != 32)
        return vorUniqueId();
    std::uint64_t half[2] = {0, 0};
    for (std::size_t i = 0; i < 32; ++i) {
        int digit = hex_digit(text[i]);
        if (digit < 0)
            return vorUniqueId();
        half[i / 16] = (half[i / 16] << 4) | static_cast<std::uint64_t>(digit);
    }
    return vorUniqueId(half[0], half[1]);
}

utString vorUniqueId::hex_string() const {
    if (!m_valid)
        return utString();
    static const char digits[] = "0123456789abcdef";
    std::string text(32, '0');
    for (int i = 0; i < 16; ++i) {
        text[15 - i] = digits[(m_high >> (4 * i)) & 0xF];
        text[31 - i] = digits[(m_low >> (4 * i)) & 0xF];
    }
    return utString(std::move(text));
}

vorRefToObjectId::vorRefToObjectId(const vorUniqueId& id)
    : m_id(std::make_shared<const vorUniqueId>(id)) {}

const vorRefToObjectId& vorRefToObjectId::empty() {
    static const vorRefToObjectId none;
    return none;
}

const vorUniqueId& vorRefToObjectId::get_uid() const {
    static const vorUniqueId invalid;
    return m_id ? *m_id : invalid;
}

void vorRefToObjectId::set_uid(const vorUniqueId& id) {
    m_id = std::make_shared<const vorUniqueId>(id);
}

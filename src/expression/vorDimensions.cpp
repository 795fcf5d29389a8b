//===- vorDimensions.cpp - Physical dimensions of numbers -----------------===//

#include "vorparameter/expression/vorDimensions.h"

#include <string>
#include <utility>

namespace {

static_assert(vorDimensions::max_exponent <= INT8_MAX, "an exponent is kept in one byte");

bool fits_int(std::int64_t value) {
    return value >= -vorDimensions::max_exponent && value <= vorDimensions::max_exponent;
}

// Appends `letter` |exponent| times when the exponent has the wanted sign.
void append_repeated(std::string& out, char letter, std::int32_t exponent, bool positive) {
    if (positive ? exponent > 0 : exponent < 0) {
        // Negated in 64 bits: the exponent may be the most negative int.
        std::int64_t count = exponent;
        out.append(static_cast<std::size_t>(count < 0 ? -count : count), letter);
    }
}

} // namespace

vorDimensions::vorDimensions(int mass, int length, int time) {
    set_dimensions(mass, length, time);
}

vorDimensions::vorDimensions(vorDimStandard standard) {
    // (M, L, T) of each standard dimension, indexed by its value; row 0
    // names no dimension and is never read.
    static const int table[][3] = {
        {0, 0, 0},   // unused
        {0, 0, 0},   // DIM_NONE
        {1, 0, 0},   // DIM_MASS
        {0, 1, 0},   // DIM_LENGTH
        {0, 0, 1},   // DIM_TIME
        {0, 2, 0},   // DIM_AREA
        {0, 3, 0},   // DIM_VOLUME
        {0, 1, -1},  // DIM_VELOCITY
        {0, 1, -2},  // DIM_ACCELERATION
        {0, 0, -1},  // DIM_INVERSE_TIME
        {0, 0, -1},  // DIM_INVERSE_TIME_2
        {1, -3, 0},  // DIM_DENSITY
        {1, 1, -1},  // DIM_MOMENTUM
        {1, 1, -2},  // DIM_FORCE
        {1, -1, -2}, // DIM_PRESSURE
        {1, 2, -2},  // DIM_ENERGY
        {1, 2, -3},  // DIM_POWER
    };
    if (standard < DIM_NONE || standard > DIM_POWER) {
        set_invalid();
        return;
    }
    const int* e = table[standard];
    set_dimensions(e[0], e[1], e[2]);
}

vorDimensions::vorDimensions(const utString& text) {
    // Counts are kept in 64 bits and checked at every step, so that a text
    // longer than the int range cannot wrap an exponent.
    std::int64_t mass = 0;
    std::int64_t length = 0;
    std::int64_t time = 0;
    std::int64_t sign = 1;
    for (char c : text.view()) {
        std::int64_t* exponent = nullptr;
        switch (c) {
        case ' ':
        case '1':
        case '[':
        case ']':
            continue;
        case '/':
            sign = -1;
            continue;
        case 'M':
            exponent = &mass;
            break;
        case 'L':
            exponent = &length;
            break;
        case 'T':
            exponent = &time;
            break;
        default:
            set_invalid();
            return;
        }
        *exponent += sign;
        if (!fits_int(*exponent)) {
            set_invalid();
            return;
        }
    }
    set_dimensions(static_cast<int>(mass), static_cast<int>(length), static_cast<int>(time));
}

vorDimensions vorDimensions::checked(std::int64_t mass, std::int64_t length, std::int64_t time) {
    if (!fits_int(mass) || !fits_int(length) || !fits_int(time))
        return vorDimensions();
    return vorDimensions(static_cast<int>(mass), static_cast<int>(length), static_cast<int>(time));
}

vorDimensions vorDimensions::pow(int n) const {
    if (m_invalid)
        return vorDimensions();
    // A product of two 32-bit values always fits in 64 bits.
    return checked(std::int64_t{m_M} * n, std::int64_t{m_L} * n, std::int64_t{m_T} * n);
}

utString vorDimensions::get_string() const {
    if (m_invalid)
        return "[!]";
    if (m_M == 0 && m_L == 0 && m_T == 0)
        return "";
    std::string out = "[";
    append_repeated(out, 'M', m_M, true);
    append_repeated(out, 'L', m_L, true);
    append_repeated(out, 'T', m_T, true);
    if (out.size() == 1)
        out += '1';
    if (m_M < 0 || m_L < 0 || m_T < 0) {
        out += '/';
        append_repeated(out, 'M', m_M, false);
        append_repeated(out, 'L', m_L, false);
        append_repeated(out, 'T', m_T, false);
    }
    out += ']';
    return utString(std::move(out));
}

void vorDimensions::set_dimensions(int mass, int length, int time) {
    if (!fits_int(mass) || !fits_int(length) || !fits_int(time)) {
        set_invalid();
        return;
    }
    m_invalid = 0;
    m_M = static_cast<std::int8_t>(mass);
    m_L = static_cast<std::int8_t>(length);
    m_T = static_cast<std::int8_t>(time);
}

void vorDimensions::set_invalid() {
    m_invalid = 1;
    m_M = 0;
    m_L = 0;
    m_T = 0;
}

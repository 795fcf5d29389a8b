//===- vorDimensions.h - Physical dimensions of numbers ---------*- C++ -*-===//
//
// Every number of the parameter tree carries a physical dimension: the
// exponents of mass (M), length (L) and time (T) of the quantity it measures.
// A speed is L/T, so its exponents are (0, 1, -1); a plain count is
// dimensionless (0, 0, 0). Arithmetic on numbers combines their dimensions
// (a length times a length is an area), and a sum of a length and a time has
// no meaningful dimension: such results are marked invalid rather than
// reported as errors, so that the value still computes.
//
// The default-constructed dimension is invalid on purpose: a number whose
// dimension was never set must not pass as dimensionless.
//
// Printed form (get_string), read back by the text constructor:
//   invalid        "[!]"
//   dimensionless  ""
//   otherwise      "[" numerator ["/" denominator] "]", where the numerator
//                  repeats "M", "L", "T" by their positive exponents ("1" when
//                  none is positive) and the denominator repeats them by the
//                  magnitudes of the negative ones: "[L]", "[LL]", "[L/TT]",
//                  "[1/T]", "[ML/TT]".
//
// Bounds: an exponent's magnitude is at most max_exponent (100). A
// construction, product, quotient, power or text that would go beyond it
// gives an invalid dimension instead, so no dimension prints as a huge text
// ("(1mm)^1e9" is a number with an invalid dimension, not a gigabyte of "L").
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORDIMENSIONS_H
#define VORPARAMETER_EXPRESSION_VORDIMENSIONS_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <cstdint>

/// The named dimensions of everyday quantities, as (M, L, T).
/// Any value outside 1..16 constructs an invalid dimension; the underlying
/// type is fixed so that every int is a defined value of the enum.
enum vorDimStandard : int {
    DIM_NONE = 1,            // (0, 0, 0)
    DIM_MASS = 2,            // (1, 0, 0)
    DIM_LENGTH = 3,          // (0, 1, 0)
    DIM_TIME = 4,            // (0, 0, 1)
    DIM_AREA = 5,            // (0, 2, 0)
    DIM_VOLUME = 6,          // (0, 3, 0)
    DIM_VELOCITY = 7,        // (0, 1, -1)
    DIM_ACCELERATION = 8,    // (0, 1, -2)
    DIM_INVERSE_TIME = 9,    // (0, 0, -1)
    DIM_INVERSE_TIME_2 = 10, // (0, 0, -1), a second name for the same dimension
    DIM_DENSITY = 11,        // (1, -3, 0)
    DIM_MOMENTUM = 12,       // (1, 1, -1)
    DIM_FORCE = 13,          // (1, 1, -2)
    DIM_PRESSURE = 14,       // (1, -1, -2)
    DIM_ENERGY = 15,         // (1, 2, -2)
    DIM_POWER = 16           // (1, 2, -3)
};

class VOR_API vorDimensions {
public:
    /// Invalid.
    vorDimensions() = default;
    /// The largest magnitude of an exponent.
    static constexpr int max_exponent = 100;

    /// Valid, with the given exponents of mass, length and time; invalid when
    /// one of them is beyond max_exponent.
    vorDimensions(int mass, int length, int time);
    /// The standard dimension; invalid for a value that names none.
    vorDimensions(vorDimStandard standard);
    /// Reads the printed form. " ", "1", "[" and "]" are skipped; "M", "L"
    /// and "T" count +1 towards their exponent, or -1 once a "/" has been
    /// seen (further "/" change nothing). Any other character, or a count
    /// beyond max_exponent, makes the dimension invalid. The empty text
    /// is dimensionless. Runs in time linear in the text's length.
    explicit vorDimensions(const utString& text);

    vorDimensions(const vorDimensions&) = default;
    vorDimensions& operator=(const vorDimensions&) = default;
    ~vorDimensions() = default;

    /// All four fields agree; so two invalid dimensions are equal.
    friend bool operator==(const vorDimensions& a, const vorDimensions& b) {
        return a.m_invalid == b.m_invalid && a.m_M == b.m_M && a.m_L == b.m_L && a.m_T == b.m_T;
    }
    friend bool operator!=(const vorDimensions& a, const vorDimensions& b) { return !(a == b); }

    // Every arithmetic operator of numbers combines dimensions, so these are
    // inline.

    /// Dimension of a product: exponents add. Invalid if either is invalid.
    vorDimensions operator*(const vorDimensions& rhs) const {
        if (m_invalid || rhs.m_invalid)
            return vorDimensions();
        return of_exponents(m_M + rhs.m_M, m_L + rhs.m_L, m_T + rhs.m_T);
    }
    /// Dimension of a quotient: exponents subtract. Invalid if either is.
    vorDimensions operator/(const vorDimensions& rhs) const {
        if (m_invalid || rhs.m_invalid)
            return vorDimensions();
        return of_exponents(m_M - rhs.m_M, m_L - rhs.m_L, m_T - rhs.m_T);
    }
    /// Dimension of a sum or difference: the common dimension when both are
    /// valid and equal, otherwise invalid (a length plus a time).
    vorDimensions operator+(const vorDimensions& rhs) const {
        if (m_invalid || *this != rhs)
            return vorDimensions();
        return *this;
    }
    /// Dimension of a power: exponents times n; pow(0) is dimensionless.
    vorDimensions pow(int n) const;

    int M() const { return m_M; }
    int L() const { return m_L; }
    int T() const { return m_T; }
    /// 1 when invalid, 0 when valid.
    int invalid() const { return m_invalid; }

    /// The printed form (see the top of this file). Its length is the sum of
    /// the exponents' magnitudes plus a few characters.
    utString get_string() const;

protected:
    void set_dimensions(int mass, int length, int time);
    void set_invalid();

private:
    // Exponents of a sum or difference of two dimensions, which int holds;
    // invalid when one exceeds max_exponent.
    static vorDimensions of_exponents(int mass, int length, int time) {
        vorDimensions result;
        if (fits(mass) && fits(length) && fits(time)) {
            result.m_invalid = 0;
            result.m_M = static_cast<std::int8_t>(mass);
            result.m_L = static_cast<std::int8_t>(length);
            result.m_T = static_cast<std::int8_t>(time);
        }
        return result;
    }
    static bool fits(int exponent) { return exponent >= -max_exponent && exponent <= max_exponent; }
    // Exponents combined in 64 bits; invalid when any falls outside int.
    static vorDimensions checked(std::int64_t mass, std::int64_t length, std::int64_t time);

    // Every number carries a dimension, so it is kept small: exponents never
    // exceed max_exponent in magnitude, which one byte holds.
    std::int8_t m_invalid = 1;
    std::int8_t m_M = 0;
    std::int8_t m_L = 0;
    std::int8_t m_T = 0;
};

#endif // VORPARAMETER_EXPRESSION_VORDIMENSIONS_H

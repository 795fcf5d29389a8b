//===- vorRange.h - Bounds of a numeric value -------------------*- C++ -*-===//
//
// A numeric parameter may restrict its value to the closed interval
// [low, high]: a value read from it is moved to the nearer bound, and
// check_range reports values outside.
//
// A range need not be set. It restricts nothing when
//   - its low bound is vorRange::no_bound (the largest finite double), which
//     is what a default-constructed range holds, or
//   - its low bound is greater than its high bound, or
//   - either bound is NaN (NaN compares false, so it never counts as set).
// Infinite bounds are ordinary bounds: (-inf, 10) limits values from above
// only.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_EXPRESSION_VORRANGE_H
#define VORPARAMETER_EXPRESSION_VORRANGE_H

#include <cmath>
#include <limits>

class vorRange {
public:
    /// The low bound that means "no range".
    static constexpr double no_bound = std::numeric_limits<double>::max();

    /// No range.
    constexpr vorRange() = default;
    constexpr vorRange(double low, double high)
        : m_low(low)
        , m_high(high) {}

    constexpr double low() const { return m_low; }
    constexpr double high() const { return m_high; }

    /// True when the range restricts values (see the top of this file).
    constexpr bool is_set() const { return m_low != no_bound && m_low <= m_high; }

    /// Moves `value` into [low, high] when the range is set, and answers
    /// whether it lay outside. NaN lies outside every set range and is left
    /// as it is, since no bound is nearer to it than the other.
    bool clamp(double& value) const {
        if (!is_set())
            return false;
        if (value < m_low) {
            value = m_low;
            return true;
        }
        if (value > m_high) {
            value = m_high;
            return true;
        }
        return std::isnan(value);
    }

private:
    double m_low = no_bound;
    double m_high = no_bound;
};

#endif // VORPARAMETER_EXPRESSION_VORRANGE_H

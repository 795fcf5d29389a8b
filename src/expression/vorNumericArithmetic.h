//===- vorNumericArithmetic.h - The numeric operators on plain values -*- C++ -*-===//
//
// The rules of the numeric operators (vorNumericOperators.cpp has them in
// words) as functions of plain values: a number's value, kind and dimension
// in, a number or an error kind out. vorParameterNumeric's operators read
// their operands and apply these; the compiled plans of expressions
// (vorPlan.h) apply the very same functions to values they never put into a
// parameter, so the two cannot differ.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_EXPRESSION_VORNUMERICARITHMETIC_H
#define VORPARAMETER_SRC_EXPRESSION_VORNUMERICARITHMETIC_H

#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/platform/vorUnitsUtils.h"

#include <cmath>

/// The number a new vorParameterNumeric(kind, dim, value) would hold.
struct vorNumericValue {
    double value = 0.0;
    vorParameterSubType kind = SUB_NUMBER;
    vorDimensions dim;
};

/// A number, or the error an operator made instead. An error is kept as its
/// kind in the number's kind (no number has an error's kind), so that an
/// outcome is sixteen bytes and comes back from a call in registers.
struct vorNumericOutcome {
    vorNumericValue number;

    bool failed() const { return number.kind <= ERR_INVALID_DATA; }
    /// The error's kind, when failed.
    vorParameterSubType error() const { return number.kind; }

    static vorNumericOutcome fail(vorParameterSubType kind) {
        vorNumericOutcome outcome;
        outcome.number.kind = kind;
        return outcome;
    }
    /// The number, or ERR_DOMAIN when the value overflowed or is undefined.
    static vorNumericOutcome of(vorParameterSubType kind, const vorDimensions& dim, double value) {
        if (!std::isfinite(value))
            return fail(ERR_DOMAIN);
        return {{value, kind, dim}};
    }
    static vorNumericOutcome truth(bool value) { return of(SUB_BOOL, DIM_NONE, value ? 1.0 : 0.0); }
    /// The outcome as a parameter: a new numeric, or the error.
    vorParameterPtr to_parameter() const;
};
static_assert(ERR_UNKNOWN == 0 && ERR_INVALID_DATA < SUB_NUMBER,
              "error kinds come before the kinds of numbers");
static_assert(sizeof(vorNumericOutcome) == 16, "an outcome fits in two registers");

/// The binary operators a number carries out, by their text.
enum vorNumericOp {
    NUMERIC_ADD,
    NUMERIC_SUB,
    NUMERIC_MUL,
    NUMERIC_DIV,
    NUMERIC_MOD,
    NUMERIC_POW,
    NUMERIC_EQ,
    NUMERIC_NE,
    NUMERIC_LT,
    NUMERIC_LE,
    NUMERIC_GT,
    NUMERIC_GE,
    NUMERIC_AND,
    NUMERIC_OR,
    NUMERIC_XOR,
    NUMERIC_OTHER
};

vorNumericOp vorFindNumericOp(const utString& text);
inline bool vorIsLogicalOp(vorNumericOp op) {
    return op >= NUMERIC_AND && op <= NUMERIC_XOR;
}

/// `a op b` for an arithmetic or comparison operator (not logic, which tests
/// its left operand before it reads the right one).
vorNumericOutcome vorApplyNumericOp(vorNumericOp op, const vorNumericValue& a,
                                    const vorNumericValue& b);

/// A length unit suffix ("mm", "in", ...): its size in its own system.
struct vorLengthUnit {
    const char* suffix;
    double factor;
    vorUnitsType system;
};
/// The unit named `suffix`, or null.
const vorLengthUnit* vorFindLengthUnit(const utString& suffix);
/// `a` with the unit suffix: a length in the current units.
vorNumericOutcome vorApplyLengthUnit(const vorLengthUnit& unit, const vorNumericValue& a);

/// Prefix "-" (negate) or "+" of `a`; prefix "!" of a truth value.
vorNumericOutcome vorApplySign(bool negate, const vorNumericValue& a);
/// True when `a` may take part in logic: a whole SUB_NUMBER or SUB_BOOL.
bool vorIsTruthValue(const vorNumericValue& a);

#endif // VORPARAMETER_SRC_EXPRESSION_VORNUMERICARITHMETIC_H

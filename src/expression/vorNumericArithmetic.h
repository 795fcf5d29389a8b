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

/// The number a new vorParameterNumeric(kind, dim, value) would hold.
struct vorNumericValue {
    double value = 0.0;
    vorParameterSubType kind = SUB_NUMBER;
    vorDimensions dim;
};

/// A number, or the error an operator made instead.
struct vorNumericOutcome {
    bool failed = false;
    /// The error's kind, when failed.
    vorParameterSubType error = ERR_UNKNOWN;
    vorNumericValue number;

    static vorNumericOutcome fail(vorParameterSubType kind) { return {true, kind, {}}; }
    /// The number, or ERR_DOMAIN when the value overflowed or is undefined.
    static vorNumericOutcome of(vorParameterSubType kind, const vorDimensions& dim, double value);
    static vorNumericOutcome truth(bool value) { return of(SUB_BOOL, DIM_NONE, value ? 1.0 : 0.0); }
    /// The outcome as a parameter: a new numeric, or the error.
    vorParameterPtr to_parameter() const;
};

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

//===- vorNumericOperators.cpp - Arithmetic, comparison and logic on numbers ===//
//
// The operators of the expression language whose left (or only) operand is a
// number. The evaluator hands every operator to that operand; what follows
// are the rules, which docs/expressions.md repeats for users.
//
// Operands are read as get_double reads them: the on-read callback runs, an
// expression is evaluated, the value is moved into the operand's range. An
// operand whose evaluation fails passes its error through unchanged; one that
// evaluates to something other than a number gives ERR_TYPE. A right operand
// that is itself an error is the result. A right operand that is no number (a
// string, an enumeration) goes to the scalar rules: "==" and "!=" compare
// texts, "+" concatenates them.
//
// Values are never truncated: the subtype of a result names its kind, it does
// not round it. "7/2" is 3.5 whatever the operands' subtypes.
//
// Result subtypes. In arithmetic a BOOL counts as an INT. Two SUB_NUMBER
// operands (literals, or results of literals) give SUB_NUMBER, so that a unit
// suffix still applies to "(2*3)mm". Otherwise a SUB_NUMBER operand takes no
// part and the stronger kind wins, ANGLE over REAL over INT:
//
//   left \ right   NUMBER  INT     REAL    ANGLE      ("+", "-", "%", "*")
//   NUMBER         NUMBER  INT     REAL    ANGLE
//   INT, BOOL      INT     INT     REAL    ANGLE
//   REAL           REAL    REAL    REAL    ANGLE
//   ANGLE          ANGLE   ANGLE   ANGLE   ANGLE (REAL for "*")
//
//   "/"   NUMBER / NUMBER is NUMBER; ANGLE / anything but ANGLE is ANGLE;
//         everything else is REAL (INT / INT too, as its value need not be
//         whole).
//   "^"   NUMBER ^ NUMBER is NUMBER; everything else is REAL.
//   prefix "+" and "-"   the operand's kind, BOOL becoming INT.
//   comparisons, "&", "|", "xor", prefix "!"   BOOL (create_bool).
//   unit suffixes   SUB_NUMBER; they apply to SUB_NUMBER operands only.
//
// Dimensions. "+", "-" and "%" take the sum rule (the common dimension, or an
// invalid one when the two differ: a value, not an error); "*" the product;
// "/" the quotient; "^" the base's dimension to the power of the exponent
// truncated to an integer; a unit suffix multiplies by length; prefix "+" and
// "-" keep the dimension; booleans are dimensionless. Comparisons compare
// values and ignore dimensions.
//
// Comparisons use comparison_tol(): a == b when |a - b| <= tol; a < b when a
// is below b by more than tol; a <= b when a < b or a == b. So exactly one of
// <, == and > holds for any two numbers.
//
// Logic. "&", "|", "xor" and prefix "!" take truth values (is_bool_value:
// SUB_NUMBER or SUB_BOOL holding a whole number; non-zero is true). Both
// operands are tested, so "1 | x" with an integer or real x is a type error
// whatever x holds; only the evaluator short-circuits, before it evaluates x.
//
// Errors made here:
//   "/" or "%" by zero                                    ERR_DIVIDE_BY_ZERO
//   "^" with a negative base and a fractional exponent,
//   or with a zero base and a negative exponent           ERR_DOMAIN
//   an infinite or NaN result (overflow)                  ERR_DOMAIN
//   logic on a value that is no truth value               ERR_TYPE
//   postfix "!" (there is no factorial)                   ERR_SYNTAX
// Unknown operators, and unit suffixes after a typed number, go to the base
// class, which answers ERR_TYPE.
//
//===----------------------------------------------------------------------===//

#include "vorNumericArithmetic.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"

#include <climits>
#include <cmath>

namespace {

struct NumericOpName {
    const char* text;
    vorNumericOp op;
};

constexpr NumericOpName binary_ops[] = {
    {"+", NUMERIC_ADD}, {"-", NUMERIC_SUB}, {"*", NUMERIC_MUL},  {"/", NUMERIC_DIV},
    {"%", NUMERIC_MOD}, {"^", NUMERIC_POW}, {"==", NUMERIC_EQ},  {"!=", NUMERIC_NE},
    {"<", NUMERIC_LT},  {"<=", NUMERIC_LE}, {">", NUMERIC_GT},   {">=", NUMERIC_GE},
    {"&", NUMERIC_AND}, {"|", NUMERIC_OR},  {"xor", NUMERIC_XOR}};

constexpr vorLengthUnit length_units[] = {{"m", 1000.0, UNITS_MM},  {"cm", 10.0, UNITS_MM},
                                          {"mm", 1.0, UNITS_MM},    {"um", 0.001, UNITS_MM},
                                          {"yd", 36.0, UNITS_INCH}, {"ft", 12.0, UNITS_INCH},
                                          {"in", 1.0, UNITS_INCH},  {"th", 0.001, UNITS_INCH}};

bool is_comparison(vorNumericOp op) {
    return op >= NUMERIC_EQ && op <= NUMERIC_GE;
}

vorParameterPtr error(vorParameterSubType kind) {
    return vorParameterError::create(kind);
}

// In arithmetic a boolean counts as an integer.
vorParameterSubType arithmetic_kind(vorParameterSubType kind) {
    return kind == SUB_BOOL ? SUB_INT : kind;
}

int strength(vorParameterSubType kind) {
    switch (kind) {
    case SUB_INT:
        return 1;
    case SUB_REAL:
        return 2;
    case SUB_ANGLE:
        return 3;
    default:
        return 0;
    }
}

// The subtype of `left op right` for an arithmetic operator (see the top of
// this file).
vorParameterSubType result_kind(vorNumericOp op, vorParameterSubType left,
                                vorParameterSubType right) {
    left = arithmetic_kind(left);
    right = arithmetic_kind(right);
    if (left == SUB_NUMBER && right == SUB_NUMBER)
        return SUB_NUMBER;
    const bool both_angles = left == SUB_ANGLE && right == SUB_ANGLE;
    if (op == NUMERIC_DIV)
        return left == SUB_ANGLE && !both_angles ? SUB_ANGLE : SUB_REAL;
    if (op == NUMERIC_POW || (op == NUMERIC_MUL && both_angles))
        return SUB_REAL;
    return strength(left) >= strength(right) ? left : right;
}

// Truncates towards zero, saturating outside int; NaN gives 0.
int truncate_to_int(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= static_cast<double>(INT_MAX))
        return INT_MAX;
    if (value <= static_cast<double>(INT_MIN))
        return INT_MIN;
    return static_cast<int>(value);
}

vorNumericOutcome power(vorParameterSubType kind, const vorDimensions& dim, double base,
                        double exponent) {
    const bool whole = exponent == std::trunc(exponent);
    if ((base < 0.0 && !whole) || (base == 0.0 && exponent < 0.0))
        return vorNumericOutcome::fail(ERR_DOMAIN);
    return vorNumericOutcome::of(kind, dim.pow(truncate_to_int(exponent)),
                                 std::pow(base, exponent));
}

vorNumericOutcome arithmetic(vorNumericOp op, const vorNumericValue& lhs,
                             const vorNumericValue& rhs) {
    const vorParameterSubType kind = result_kind(op, lhs.kind, rhs.kind);
    const double a = lhs.value;
    const double b = rhs.value;
    switch (op) {
    case NUMERIC_ADD:
        return vorNumericOutcome::of(kind, lhs.dim + rhs.dim, a + b);
    case NUMERIC_SUB:
        return vorNumericOutcome::of(kind, lhs.dim + rhs.dim, a - b);
    case NUMERIC_MUL:
        return vorNumericOutcome::of(kind, lhs.dim * rhs.dim, a * b);
    case NUMERIC_DIV:
        return b == 0.0 ? vorNumericOutcome::fail(ERR_DIVIDE_BY_ZERO)
                        : vorNumericOutcome::of(kind, lhs.dim / rhs.dim, a / b);
    case NUMERIC_MOD:
        return b == 0.0 ? vorNumericOutcome::fail(ERR_DIVIDE_BY_ZERO)
                        : vorNumericOutcome::of(kind, lhs.dim + rhs.dim, std::fmod(a, b));
    default:
        return power(kind, lhs.dim, a, b);
    }
}

bool compare(vorNumericOp op, double a, double b) {
    const bool equal = std::fabs(a - b) <= vorParameterNumeric::comparison_tol();
    switch (op) {
    case NUMERIC_EQ:
        return equal;
    case NUMERIC_NE:
        return !equal;
    case NUMERIC_LT:
        return a < b && !equal;
    case NUMERIC_LE:
        return a < b || equal;
    case NUMERIC_GT:
        return a > b && !equal;
    default:
        return a > b || equal;
    }
}

bool logic(vorNumericOp op, bool a, bool b) {
    switch (op) {
    case NUMERIC_AND:
        return a && b;
    case NUMERIC_OR:
        return a || b;
    default:
        return a != b;
    }
}

vorNumericValue value_of(const vorParameterNumeric& number, double value) {
    return {value, number.subtype(), number.get_dim()};
}

} // namespace

//===----------------------------------------------------------------------===//
// The rules on plain values
//===----------------------------------------------------------------------===//

vorParameterPtr vorNumericOutcome::to_parameter() const {
    if (failed())
        return vorParameterError::create(error());
    return vorParameterPtr(new vorParameterNumeric(number.kind, number.dim, number.value));
}

vorNumericOp vorFindNumericOp(const utString& text) {
    for (const NumericOpName& entry : binary_ops)
        if (text == entry.text)
            return entry.op;
    return NUMERIC_OTHER;
}

vorNumericOutcome vorApplyNumericOp(vorNumericOp op, const vorNumericValue& a,
                                    const vorNumericValue& b) {
    if (is_comparison(op))
        return vorNumericOutcome::truth(compare(op, a.value, b.value));
    return arithmetic(op, a, b);
}

const vorLengthUnit* vorFindLengthUnit(const utString& suffix) {
    for (const vorLengthUnit& unit : length_units)
        if (suffix == unit.suffix)
            return &unit;
    return nullptr;
}

vorNumericOutcome vorApplyLengthUnit(const vorLengthUnit& unit, const vorNumericValue& a) {
    const double factor = unit.factor * vorUnitsUtils::get_scale_from(unit.system);
    return vorNumericOutcome::of(SUB_NUMBER, a.dim * vorDimensions(DIM_LENGTH), a.value * factor);
}

vorNumericOutcome vorApplySign(bool negate, const vorNumericValue& a) {
    return vorNumericOutcome::of(arithmetic_kind(a.kind), a.dim, negate ? -a.value : a.value);
}

bool vorIsTruthValue(const vorNumericValue& a) {
    return (a.kind == SUB_NUMBER || a.kind == SUB_BOOL) && std::fmod(a.value, 1.0) < 1e-15;
}

//===----------------------------------------------------------------------===//
// The operators of vorParameterNumeric
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameterNumeric::read_operand(double& value) const {
    vorParameterPtr failure = read_number(value);
    if (failure.is_null() || failure->is_error())
        return failure;
    return error(ERR_TYPE);
}

vorParameterPtr vorParameterNumeric::operate_binary(const utString& op,
                                                    const vorParameterPtr& rhs) const {
    const vorNumericOp kind = vorFindNumericOp(op);
    if (kind == NUMERIC_OTHER) // "(", "[", "." and unknown operators
        return vorParameter::operate_binary(op, rhs);
    const bool logical = vorIsLogicalOp(kind);
    if (!logical && !rhs->is_error() && rhs->type() != TYPE_NUMERIC)
        return vorParameterScalar::operate_binary(op, rhs);

    double a = 0.0;
    if (vorParameterPtr failure = read_operand(a); !failure.is_null())
        return failure;
    const vorNumericValue left = value_of(*this, a);
    if (logical && !vorIsTruthValue(left))
        return error(ERR_TYPE);

    if (rhs->is_error())
        return rhs;
    const vorParameterNumeric* right = ut_dynamic_cast(rhs.par());
    if (!right)
        return error(ERR_TYPE);
    double b = 0.0;
    if (vorParameterPtr failure = right->read_operand(b); !failure.is_null())
        return failure;

    if (logical)
        return vorIsTruthValue(value_of(*right, b)) ? create_bool(logic(kind, a != 0.0, b != 0.0))
                                                    : error(ERR_TYPE);
    return vorApplyNumericOp(kind, left, value_of(*right, b)).to_parameter();
}

vorParameterPtr vorParameterNumeric::operate_prefix(const utString& op) const {
    const bool negate = op == "-";
    const bool logical_not = op == "!";
    if (!negate && !logical_not && op != "+")
        return vorParameter::operate_prefix(op);
    double value = 0.0;
    if (vorParameterPtr failure = read_operand(value); !failure.is_null())
        return failure;
    const vorNumericValue operand = value_of(*this, value);
    if (logical_not)
        return vorIsTruthValue(operand) ? create_bool(value == 0.0) : error(ERR_TYPE);
    return vorApplySign(negate, operand).to_parameter();
}

vorParameterPtr vorParameterNumeric::operate_postfix(const utString& op) const {
    if (op == "!")
        return error(ERR_SYNTAX);
    const vorLengthUnit* unit = vorFindLengthUnit(op);
    if (!unit || m_subtype != SUB_NUMBER)
        return vorParameter::operate_postfix(op);
    double value = 0.0;
    if (vorParameterPtr failure = read_operand(value); !failure.is_null())
        return failure;
    return vorApplyLengthUnit(*unit, value_of(*this, value)).to_parameter();
}

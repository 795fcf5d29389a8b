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

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/platform/vorUnitsUtils.h"

#include <climits>
#include <cmath>

namespace {

enum NumericOp {
    OP_ADD,
    OP_SUB,
    OP_MUL,
    OP_DIV,
    OP_MOD,
    OP_POW,
    OP_EQ,
    OP_NE,
    OP_LT,
    OP_LE,
    OP_GT,
    OP_GE,
    OP_AND,
    OP_OR,
    OP_XOR,
    OP_OTHER
};

struct NumericOpName {
    const char* text;
    NumericOp op;
};

constexpr NumericOpName binary_ops[] = {{"+", OP_ADD}, {"-", OP_SUB}, {"*", OP_MUL},  {"/", OP_DIV},
                                        {"%", OP_MOD}, {"^", OP_POW}, {"==", OP_EQ},  {"!=", OP_NE},
                                        {"<", OP_LT},  {"<=", OP_LE}, {">", OP_GT},   {">=", OP_GE},
                                        {"&", OP_AND}, {"|", OP_OR},  {"xor", OP_XOR}};

struct LengthUnit {
    const char* suffix;
    double factor;
    vorUnitsType system;
};

constexpr LengthUnit length_units[] = {{"m", 1000.0, UNITS_MM},  {"cm", 10.0, UNITS_MM},
                                       {"mm", 1.0, UNITS_MM},    {"um", 0.001, UNITS_MM},
                                       {"yd", 36.0, UNITS_INCH}, {"ft", 12.0, UNITS_INCH},
                                       {"in", 1.0, UNITS_INCH},  {"th", 0.001, UNITS_INCH}};

NumericOp find_binary_op(const utString& text) {
    for (const NumericOpName& entry : binary_ops)
        if (text == entry.text)
            return entry.op;
    return OP_OTHER;
}

const LengthUnit* find_unit(const utString& suffix) {
    for (const LengthUnit& unit : length_units)
        if (suffix == unit.suffix)
            return &unit;
    return nullptr;
}

bool is_comparison(NumericOp op) {
    return op >= OP_EQ && op <= OP_GE;
}
bool is_logical(NumericOp op) {
    return op >= OP_AND && op <= OP_XOR;
}

vorParameterPtr error(vorParameterSubType kind) {
    return vorParameterError::create(kind);
}

// A new number, or ERR_DOMAIN when the value overflowed or is undefined.
vorParameterPtr number(vorParameterSubType kind, const vorDimensions& dim, double value) {
    if (!std::isfinite(value))
        return error(ERR_DOMAIN);
    return vorParameterPtr(new vorParameterNumeric(kind, dim, value));
}

bool is_truth_value(const vorParameterNumeric& operand, double value) {
    const vorParameterSubType kind = operand.subtype();
    return (kind == SUB_NUMBER || kind == SUB_BOOL) && std::fmod(value, 1.0) < 1e-15;
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
vorParameterSubType result_kind(NumericOp op, vorParameterSubType left, vorParameterSubType right) {
    left = arithmetic_kind(left);
    right = arithmetic_kind(right);
    if (left == SUB_NUMBER && right == SUB_NUMBER)
        return SUB_NUMBER;
    const bool both_angles = left == SUB_ANGLE && right == SUB_ANGLE;
    if (op == OP_DIV)
        return left == SUB_ANGLE && !both_angles ? SUB_ANGLE : SUB_REAL;
    if (op == OP_POW || (op == OP_MUL && both_angles))
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

vorParameterPtr power(vorParameterSubType kind, const vorDimensions& dim, double base,
                      double exponent) {
    const bool whole = exponent == std::trunc(exponent);
    if ((base < 0.0 && !whole) || (base == 0.0 && exponent < 0.0))
        return error(ERR_DOMAIN);
    return number(kind, dim.pow(truncate_to_int(exponent)), std::pow(base, exponent));
}

vorParameterPtr arithmetic(NumericOp op, const vorParameterNumeric& lhs, double a,
                           const vorParameterNumeric& rhs, double b) {
    const vorParameterSubType kind = result_kind(op, lhs.subtype(), rhs.subtype());
    const vorDimensions& left = lhs.get_dim();
    const vorDimensions& right = rhs.get_dim();
    switch (op) {
    case OP_ADD:
        return number(kind, left + right, a + b);
    case OP_SUB:
        return number(kind, left + right, a - b);
    case OP_MUL:
        return number(kind, left * right, a * b);
    case OP_DIV:
        return b == 0.0 ? error(ERR_DIVIDE_BY_ZERO) : number(kind, left / right, a / b);
    case OP_MOD:
        return b == 0.0 ? error(ERR_DIVIDE_BY_ZERO) : number(kind, left + right, std::fmod(a, b));
    default:
        return power(kind, left, a, b);
    }
}

bool compare(NumericOp op, double a, double b) {
    const bool equal = std::fabs(a - b) <= vorParameterNumeric::comparison_tol();
    switch (op) {
    case OP_EQ:
        return equal;
    case OP_NE:
        return !equal;
    case OP_LT:
        return a < b && !equal;
    case OP_LE:
        return a < b || equal;
    case OP_GT:
        return a > b && !equal;
    default:
        return a > b || equal;
    }
}

bool logic(NumericOp op, bool a, bool b) {
    switch (op) {
    case OP_AND:
        return a && b;
    case OP_OR:
        return a || b;
    default:
        return a != b;
    }
}

} // namespace

vorParameterPtr vorParameterNumeric::read_operand(double& value) const {
    vorParameterPtr failure = read_number(value);
    if (failure.is_null() || failure->is_error())
        return failure;
    return error(ERR_TYPE);
}

vorParameterPtr vorParameterNumeric::operate_binary(const utString& op,
                                                    const vorParameterPtr& rhs) const {
    const NumericOp kind = find_binary_op(op);
    if (kind == OP_OTHER) // "(", "[", "." and unknown operators
        return vorParameter::operate_binary(op, rhs);
    const bool logical = is_logical(kind);
    if (!logical && !rhs->is_error() && rhs->type() != TYPE_NUMERIC)
        return vorParameterScalar::operate_binary(op, rhs);

    double a = 0.0;
    if (vorParameterPtr failure = read_operand(a); !failure.is_null())
        return failure;
    if (logical && !is_truth_value(*this, a))
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
        return is_truth_value(*right, b) ? create_bool(logic(kind, a != 0.0, b != 0.0))
                                         : error(ERR_TYPE);
    if (is_comparison(kind))
        return create_bool(compare(kind, a, b));
    return arithmetic(kind, *this, a, *right, b);
}

vorParameterPtr vorParameterNumeric::operate_prefix(const utString& op) const {
    const bool negate = op == "-";
    const bool logical_not = op == "!";
    if (!negate && !logical_not && op != "+")
        return vorParameter::operate_prefix(op);
    double value = 0.0;
    if (vorParameterPtr failure = read_operand(value); !failure.is_null())
        return failure;
    if (logical_not)
        return is_truth_value(*this, value) ? create_bool(value == 0.0) : error(ERR_TYPE);
    return number(arithmetic_kind(m_subtype), m_dim, negate ? -value : value);
}

vorParameterPtr vorParameterNumeric::operate_postfix(const utString& op) const {
    if (op == "!")
        return error(ERR_SYNTAX);
    const LengthUnit* unit = find_unit(op);
    if (!unit || m_subtype != SUB_NUMBER)
        return vorParameter::operate_postfix(op);
    double value = 0.0;
    if (vorParameterPtr failure = read_operand(value); !failure.is_null())
        return failure;
    const double factor = unit->factor * vorUnitsUtils::get_scale_from(unit->system);
    return number(SUB_NUMBER, m_dim * vorDimensions(DIM_LENGTH), value * factor);
}

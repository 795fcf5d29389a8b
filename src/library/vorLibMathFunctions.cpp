//===- vorLibMathFunctions.cpp - The mathematical functions ---------------===//
//
// sin, cos, tan, asin, acos, atan, atan2, exp, ln, log, sqrt, abs, sign and
// compare. Each takes a fixed number of numbers (else ERR_INVALID_ARGUMENTS),
// checks its domain (else ERR_DOMAIN) and answers a new dimensionless
// numeric: a real, an angle for the inverse trigonometric functions, a
// boolean for compare. A result too large for a number (exp(1000)) is
// ERR_DOMAIN as well.
//
// Angles are read and written in the library's angle unit, looked up at each
// call, so a host can switch between degrees and radians at any time.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/platform/giAngle.h"

#include <cmath>

using vorLibSupport::make_number;

namespace {

giAngle library_angle(double value) {
    return giAngle(vorParameterLib::get_angle_unit(), value);
}

vorParameterPtr real(double value) {
    return make_number(SUB_REAL, value);
}

vorParameterPtr angle_result(const giAngle& angle) {
    return make_number(SUB_ANGLE, angle.value(vorParameterLib::get_angle_unit()));
}

vorParameterPtr domain_error() {
    return vorParameterLib::error(ERR_DOMAIN);
}

bool in_unit_range(double x) {
    return x >= -1.0 && x <= 1.0;
}

template <std::size_t N, class Compute>
vorParameterPtr with_numbers(const vorParameterPtr& args, Compute compute) {
    std::array<double, N> x{};
    if (!vorLibSupport::read_numbers(args, x))
        return vorLibSupport::invalid_arguments();
    return compute(x);
}

using One = std::array<double, 1>;

} // namespace

vorParameterPtr vorParameterLibFunctions::sin(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) { return real(library_angle(x[0]).sin()); });
}

vorParameterPtr vorParameterLibFunctions::cos(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) { return real(library_angle(x[0]).cos()); });
}

vorParameterPtr vorParameterLibFunctions::tan(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) {
        int status = 0;
        double tangent = library_angle(x[0]).tan(status);
        return status == 0 ? real(tangent) : domain_error();
    });
}

vorParameterPtr vorParameterLibFunctions::asin(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) {
        return in_unit_range(x[0]) ? angle_result(giAngle::from_sine(x[0])) : domain_error();
    });
}

vorParameterPtr vorParameterLibFunctions::acos(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) {
        return in_unit_range(x[0]) ? angle_result(giAngle::from_cosine(x[0])) : domain_error();
    });
}

vorParameterPtr vorParameterLibFunctions::atan(const vorParameterPtr& args) {
    return with_numbers<1>(args,
                           [](const One& x) { return angle_result(giAngle::from_tangent(x[0])); });
}

/// atan2(y; x): the direction of the point (x, y).
vorParameterPtr vorParameterLibFunctions::atan2(const vorParameterPtr& args) {
    return with_numbers<2>(args, [](const std::array<double, 2>& v) {
        return angle_result(giAngle::from_sine_cosine(v[0], v[1]));
    });
}

vorParameterPtr vorParameterLibFunctions::exp(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) { return real(std::exp(x[0])); });
}

vorParameterPtr vorParameterLibFunctions::ln(const vorParameterPtr& args) {
    return with_numbers<1>(
        args, [](const One& x) { return x[0] > 0 ? real(std::log(x[0])) : domain_error(); });
}

vorParameterPtr vorParameterLibFunctions::log(const vorParameterPtr& args) {
    return with_numbers<1>(
        args, [](const One& x) { return x[0] > 0 ? real(std::log10(x[0])) : domain_error(); });
}

vorParameterPtr vorParameterLibFunctions::sqrt(const vorParameterPtr& args) {
    return with_numbers<1>(
        args, [](const One& x) { return x[0] >= 0 ? real(std::sqrt(x[0])) : domain_error(); });
}

vorParameterPtr vorParameterLibFunctions::abs(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) { return real(std::fabs(x[0])); });
}

vorParameterPtr vorParameterLibFunctions::sign(const vorParameterPtr& args) {
    return with_numbers<1>(args, [](const One& x) {
        return real(x[0] > 0 ? 1.0 : x[0] < 0 ? -1.0 : 0.0);
    });
}

/// compare(a; b; tolerance): true when a and b lie strictly closer than the
/// tolerance.
vorParameterPtr vorParameterLibFunctions::compare(const vorParameterPtr& args) {
    return with_numbers<3>(args, [](const std::array<double, 3>& v) {
        return vorParameterNumeric::create_bool(v[2] > std::fabs(v[0] - v[1]));
    });
}

namespace {

namespace lib = vorParameterLibFunctions;

const vorLibSupport::Registration registrations[] = {
    {"sin", lib::sin, "Trigonometric sine."},
    {"cos", lib::cos, "Trigonometric cosine."},
    {"tan", lib::tan, "Trigonometric tangent."},
    {"asin", lib::asin, "Trigonometric arcsine."},
    {"acos", lib::acos, "Trigonometric arccosine."},
    {"atan", lib::atan, "Trigonometric arctangent."},
    {"atan2", lib::atan2, "Trigonometric arctangent with quadrant determination."},
    {"exp", lib::exp, "Exponential."},
    {"ln", lib::ln, "Natural logarithm."},
    {"log", lib::log, "Common (base 10) logarithm."},
    {"sqrt", lib::sqrt, "Square root."},
    {"abs", lib::abs, "Absolute (positive value)."},
    {"sign", lib::sign, "Sign of value."},
    {"compare", lib::compare, "Compare the equality of two values to a tolerance."},
};

} // namespace

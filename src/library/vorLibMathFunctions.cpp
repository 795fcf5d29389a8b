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
// Each function is a kernel over plain numbers (vorLibKernels.h), which the
// library entry applies to the numbers of its argument array and a compiled
// expression applies to its own.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibKernels.h"
#include "library/vorLibSupport.h"

#include "vorparameter/platform/giAngle.h"

#include <array>
#include <cmath>
#include <iterator>

namespace {

// The kernels: each takes its numbers and gives a number or an error.

giAngle library_angle(double value) {
    return giAngle(vorParameterLib::get_angle_unit(), value);
}

vorNumericOutcome real(double value) {
    return vorNumericOutcome::of(SUB_REAL, DIM_NONE, value);
}

vorNumericOutcome angle_result(const giAngle& angle) {
    return vorNumericOutcome::of(SUB_ANGLE, DIM_NONE,
                                 angle.value(vorParameterLib::get_angle_unit()));
}

vorNumericOutcome domain_error() {
    return vorNumericOutcome::fail(ERR_DOMAIN);
}

bool in_unit_range(double x) {
    return x >= -1.0 && x <= 1.0;
}

vorNumericOutcome sine(const double* x) {
    return real(library_angle(x[0]).sin());
}

vorNumericOutcome cosine(const double* x) {
    return real(library_angle(x[0]).cos());
}

vorNumericOutcome tangent(const double* x) {
    int status = 0;
    const double value = library_angle(x[0]).tan(status);
    return status == 0 ? real(value) : domain_error();
}

vorNumericOutcome arcsine(const double* x) {
    return in_unit_range(x[0]) ? angle_result(giAngle::from_sine(x[0])) : domain_error();
}

vorNumericOutcome arccosine(const double* x) {
    return in_unit_range(x[0]) ? angle_result(giAngle::from_cosine(x[0])) : domain_error();
}

vorNumericOutcome arctangent(const double* x) {
    return angle_result(giAngle::from_tangent(x[0]));
}

/// atan2(y; x): the direction of the point (x, y).
vorNumericOutcome direction(const double* v) {
    return angle_result(giAngle::from_sine_cosine(v[0], v[1]));
}

vorNumericOutcome exponential(const double* x) {
    return real(std::exp(x[0]));
}

vorNumericOutcome natural_log(const double* x) {
    return x[0] > 0 ? real(std::log(x[0])) : domain_error();
}

vorNumericOutcome common_log(const double* x) {
    return x[0] > 0 ? real(std::log10(x[0])) : domain_error();
}

vorNumericOutcome square_root(const double* x) {
    return x[0] >= 0 ? real(std::sqrt(x[0])) : domain_error();
}

vorNumericOutcome absolute(const double* x) {
    return real(std::fabs(x[0]));
}

vorNumericOutcome signum(const double* x) {
    return real(x[0] > 0 ? 1.0 : x[0] < 0 ? -1.0 : 0.0);
}

/// compare(a; b; tolerance): true when a and b lie strictly closer than the
/// tolerance.
vorNumericOutcome within_tolerance(const double* v) {
    return vorNumericOutcome::truth(v[2] > std::fabs(v[0] - v[1]));
}

/// A library function: its kernel applied to the numbers of `args`.
template <std::size_t N>
vorParameterPtr with_numbers(const vorParameterPtr& args,
                             vorNumericOutcome (*kernel)(const double*)) {
    std::array<double, N> x{};
    if (!vorLibSupport::read_numbers(args, x))
        return vorLibSupport::invalid_arguments();
    return kernel(x.data()).to_parameter();
}

} // namespace

vorParameterPtr vorParameterLibFunctions::sin(const vorParameterPtr& args) {
    return with_numbers<1>(args, sine);
}

vorParameterPtr vorParameterLibFunctions::cos(const vorParameterPtr& args) {
    return with_numbers<1>(args, cosine);
}

vorParameterPtr vorParameterLibFunctions::tan(const vorParameterPtr& args) {
    return with_numbers<1>(args, tangent);
}

vorParameterPtr vorParameterLibFunctions::asin(const vorParameterPtr& args) {
    return with_numbers<1>(args, arcsine);
}

vorParameterPtr vorParameterLibFunctions::acos(const vorParameterPtr& args) {
    return with_numbers<1>(args, arccosine);
}

vorParameterPtr vorParameterLibFunctions::atan(const vorParameterPtr& args) {
    return with_numbers<1>(args, arctangent);
}

vorParameterPtr vorParameterLibFunctions::atan2(const vorParameterPtr& args) {
    return with_numbers<2>(args, direction);
}

vorParameterPtr vorParameterLibFunctions::exp(const vorParameterPtr& args) {
    return with_numbers<1>(args, exponential);
}

vorParameterPtr vorParameterLibFunctions::ln(const vorParameterPtr& args) {
    return with_numbers<1>(args, natural_log);
}

vorParameterPtr vorParameterLibFunctions::log(const vorParameterPtr& args) {
    return with_numbers<1>(args, common_log);
}

vorParameterPtr vorParameterLibFunctions::sqrt(const vorParameterPtr& args) {
    return with_numbers<1>(args, square_root);
}

vorParameterPtr vorParameterLibFunctions::abs(const vorParameterPtr& args) {
    return with_numbers<1>(args, absolute);
}

vorParameterPtr vorParameterLibFunctions::sign(const vorParameterPtr& args) {
    return with_numbers<1>(args, signum);
}

vorParameterPtr vorParameterLibFunctions::compare(const vorParameterPtr& args) {
    return with_numbers<3>(args, within_tolerance);
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

namespace {

struct KernelOf {
    vorParameterLibFn fn;
    vorLibKernel kernel;
};

const KernelOf kernels[] = {
    {lib::sin, {1, sine}},         {lib::cos, {1, cosine}},
    {lib::tan, {1, tangent}},      {lib::asin, {1, arcsine}},
    {lib::acos, {1, arccosine}},   {lib::atan, {1, arctangent}},
    {lib::atan2, {2, direction}},  {lib::exp, {1, exponential}},
    {lib::ln, {1, natural_log}},   {lib::log, {1, common_log}},
    {lib::sqrt, {1, square_root}}, {lib::abs, {1, absolute}},
    {lib::sign, {1, signum}},      {lib::compare, {3, within_tolerance}},
};

} // namespace

const vorLibKernel* vorLibKernelOf(const vorParameter& function) {
    if (&function.ut_dynamic_type() != &vorParameterLib::ut_static_type())
        return nullptr;
    const utString& name = static_cast<const vorParameterLib&>(function).name();
    const vorParameterLibEntry* entry = name.empty() ? nullptr : vorParameterLib::find_entry(name);
    if (!entry)
        return nullptr;
    for (const KernelOf& known : kernels)
        if (known.fn == entry->fn)
            return &known.kernel;
    return nullptr;
}

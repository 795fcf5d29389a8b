//===- vorParameterNumeric.cpp - Numbers with dimensions ------------------===//
//
// Values, evaluation and the cache. The operators are in
// vorNumericOperators.cpp.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/expression/vorParameterNumeric.h"

#include "vorNumericArithmetic.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/platform/giTolerance.h"
#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <climits>
#include <cmath>
#include <string>

UT_DEFINE_TYPE(vorParameterNumeric, vorParameterScalar)

namespace {

// Reads `text` as one plain number, taking both "." and "," for the locale's
// decimal point, so that a text typed in either convention is a literal.
bool parse_plain_number(const utString& text, double& value) {
    // Most expressions begin with a name, and no number begins with a
    // letter: such texts are told apart without copying them.
    const char first = text.empty() ? '\0' : text[0];
    if ((first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z')) {
        value = 0.0;
        return false;
    }
    const char point = nlsUtils::decimal_point();
    std::string number = text.str();
    for (char& c : number)
        if (c == '.' || c == ',')
            c = point;
    return utString(std::move(number)).parse(value);
}

struct KindNames {
    const char* xml;
    const char* print;
};

// By subtype, from SUB_NUMBER to SUB_ANGLE.
constexpr KindNames kind_names[] = {
    {"", "NUMERIC"}, {"real", "REAL"}, {"int", "INT"}, {"bool", "BOOL"}, {"angle", "ANGLE"}};

// The constructor stores only numeric kinds, so the index is always valid.
const KindNames& names_of(vorParameterSubType kind) {
    return kind_names[kind - SUB_NUMBER];
}

bool is_whole(double value) {
    return std::fmod(value, 1.0) < 1e-15;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}
bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Rounds half away from zero; saturates outside int and maps NaN to 0, so
// that the conversion to int is always defined.
int round_to_int(double value) {
    if (std::isnan(value))
        return 0;
    const double rounded = std::round(value);
    if (rounded >= static_cast<double>(INT_MAX))
        return INT_MAX;
    if (rounded <= static_cast<double>(INT_MIN))
        return INT_MIN;
    return static_cast<int>(rounded);
}

// The tidy form of a plain number with an optional sign, or an invalid
// string when `text` is not one.
utString normalized_number(const utString& text) {
    std::string_view rest = text.view();
    while (!rest.empty() && is_blank(rest.front()))
        rest.remove_prefix(1);
    while (!rest.empty() && is_blank(rest.back()))
        rest.remove_suffix(1);
    const bool negative = !rest.empty() && rest.front() == '-';
    if (!rest.empty() && (rest.front() == '-' || rest.front() == '+'))
        rest.remove_prefix(1);
    while (!rest.empty() && is_blank(rest.front()))
        rest.remove_prefix(1);

    double ignored = 0.0;
    const bool unsigned_number =
        !rest.empty() && (is_digit(rest.front()) || rest.front() == '.' || rest.front() == ',');
    if (!unsigned_number || !parse_plain_number(utString(rest), ignored))
        return utString::invalid();
    while (rest.size() > 1 && rest[0] == '0' && is_digit(rest[1]))
        rest.remove_prefix(1);

    utString result(negative ? "-" : "");
    if (!is_digit(rest.front()))
        result += '0';
    result += rest;
    return result;
}

} // namespace

vorParameterNumeric::vorParameterNumeric(vorParameterSubType subtype, const vorDimensions& dim,
                                         double value)
    : vorParameterScalar(std::isfinite(value) ? utString() : vorformat_double_exact(value))
    , m_subtype(static_cast<std::uint8_t>(valid_subtype(subtype) ? subtype : SUB_NUMBER))
    , m_literal(std::isfinite(value))
    // The exact text of a finite number reads back to that very number, so
    // the cache can be filled without parsing it, and the text can wait for
    // a reader: formatting it is most of the cost of a new number.
    , m_text_deferred(std::isfinite(value))
    , m_dim(dim)
    , m_cache(std::isfinite(value) ? value : empty_cache) {}

// The base copies the text as written, so the copy has no text to defer.
vorParameterNumeric::vorParameterNumeric(const vorParameterNumeric& other)
    : vorParameterScalar(other)
    , m_subtype(other.m_subtype)
    , m_literal(other.m_literal)
    , m_dim(other.m_dim)
    , m_cache(other.m_cache)
    , m_range(other.m_range ? std::make_unique<const vorRange>(*other.m_range) : nullptr) {}

void vorParameterNumeric::write_deferred_value() const {
    if (!m_text_deferred)
        return;
    m_text_deferred = false;
    write_value(vorformat_double_exact(m_cache));
}

const vorRange& vorParameterNumeric::get_range() const {
    static const vorRange none;
    return m_range ? *m_range : none;
}

vorParameterPtr vorParameterNumeric::create_bool(int truth) {
    return vorParameterPtr(new vorParameterNumeric(SUB_BOOL, DIM_NONE, truth ? 1.0 : 0.0));
}

utString vorParameterNumeric::get_xml_typename() const {
    return names_of(subtype()).xml;
}

utString vorParameterNumeric::print(int) const {
    utString line = utString("(") + names_of(subtype()).print;
    if (!is_valid())
        line += " !";
    line += ") ";
    line += get_value();
    const utString evaluated = get_string();
    if (evaluated != get_value())
        line += " = " + evaluated;
    line += " ";
    line += m_dim.get_string();
    line += '\n';
    return line;
}

vorParameterPtr vorParameterNumeric::evaluate_expression() const {
    vorParameterPtr result = evaluate();
    if (result->type() == TYPE_NUMERIC)
        m_cache = result->get_double();
    return result;
}

vorParameterPtr vorParameterNumeric::evaluate_number(double& value) const {
    if (m_literal) {
        if (m_cache == empty_cache)
            parse_plain_number(get_value(), m_cache);
        value = m_cache;
        return vorParameterPtr();
    }
    value = 0.0;
    // A host's subclass may evaluate otherwise: only the library's own
    // numeric takes the way that spares the result's parameter.
    if (&ut_dynamic_type() != &ut_static_type()) {
        vorParameterPtr result = evaluate_expression();
        if (result->type() != TYPE_NUMERIC)
            return result;
        value = m_cache;
        return vorParameterPtr();
    }
    vorNumericValue number;
    vorParameterPtr result = evaluate_to_number(number);
    if (result.is_null())
        m_cache = number.value;
    else if (result->type() == TYPE_NUMERIC)
        m_cache = result->get_double();
    else
        return result;
    value = m_cache;
    return vorParameterPtr();
}

vorParameterPtr vorParameterNumeric::read_number(double& value) const {
    onread_callback();
    vorParameterPtr failure = evaluate_number(value);
    if (failure.is_null())
        get_range().clamp(value);
    return failure;
}

bool vorParameterNumeric::get_evaluated_double(double& value) const {
    return evaluate_number(value).is_null();
}

bool vorParameterNumeric::get_cached_evaluation(double& value) const {
    value = m_cache == empty_cache ? 0.0 : m_cache;
    return m_cache != empty_cache;
}

double vorParameterNumeric::read_double() const {
    double value = 0.0;
    read_number(value);
    return value;
}

int vorParameterNumeric::get_int() const {
    return round_to_int(get_double());
}

utString vorParameterNumeric::get_string() const {
    onread_callback();
    if (m_literal) {
        double value = 0.0;
        evaluate_number(value);
        return vorformat_double_exact(value);
    }
    if (get_value().empty())
        return utString();
    const vorParameterPtr result = evaluate_expression();
    const vorParameterScalar* scalar = vorParameterScalar::ut_dynamic_cast(result.par());
    return scalar ? scalar->get_string() : utString();
}

void vorParameterNumeric::set_double(double value) {
    set_string(vorformat_double_exact(value));
}

void vorParameterNumeric::set_int(int value) {
    set_string(utString(std::to_string(value)));
}

void vorParameterNumeric::set_value(const utString& text) {
    vorParameterScalar::set_value(text);
    double ignored = 0.0;
    m_literal = parse_plain_number(text, ignored);
    m_cache = empty_cache;
}

void vorParameterNumeric::set_normalized_value(const utString& text) {
    const utString number = normalized_number(text);
    set_string(number.is_invalid() ? text : number);
}

bool vorParameterNumeric::is_valid() const {
    double ignored = 0.0;
    return evaluate_number(ignored).is_null() && vorParameter::is_valid();
}

bool vorParameterNumeric::check_range() const {
    const vorRange& range = get_range();
    if (!range.is_set())
        return true;
    double value = 0.0;
    return get_evaluated_double(value) && !range.clamp(value);
}

bool vorParameterNumeric::is_equal(const vorParameter& other) const {
    const vorParameterNumeric* rhs = ut_dynamic_cast(other.get_ref());
    double value = 0.0;
    return rhs && read_number(value).is_null() && rhs->expression_equivalent(value);
}

bool vorParameterNumeric::is_int_value() const {
    double value = 0.0;
    return (m_subtype == SUB_NUMBER || m_subtype == SUB_INT) && get_evaluated_double(value) &&
           is_whole(value);
}

bool vorParameterNumeric::is_bool_value() const {
    double value = 0.0;
    return (m_subtype == SUB_NUMBER || m_subtype == SUB_BOOL) && get_evaluated_double(value) &&
           is_whole(value);
}

bool vorParameterNumeric::expression_equivalent(double value) const {
    double own = 0.0;
    return read_number(own).is_null() && std::fabs(own - value) <= comparison_tol();
}

double vorParameterNumeric::comparison_tol() {
    return giKernelResources::point_tolerance();
}

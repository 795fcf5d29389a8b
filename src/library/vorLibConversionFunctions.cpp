//===- vorLibConversionFunctions.cpp - Conversion and numeric functions ---===//
//
// int, real, bool, string, sum, max, min, mean, select (if), active,
// evaluate, size, locked, error, round, convert, translate, desc and
// get_func_args. docs/functions.md describes each for users.
//
// Common rules: a wrong number of arguments, or an argument of the wrong
// kind (an error value included, except for "error"), answers
// ERR_INVALID_ARGUMENTS; numbers of different dimensions where one is needed
// answer ERR_DIMENSIONS; a result that no number can hold answers ERR_DOMAIN.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/platform/vorStringUtils.h"
#include "vorparameter/platform/vorTranslate.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <vector>

using namespace vorLibSupport;

namespace {

// The most decimals that round and string write.
constexpr int max_places = 16;

// The count of decimals that a number asks for: rounded, then clamped to
// 0 ... max_places.
int decimal_places(double places) {
    return places > 0 ? static_cast<int>(std::min(std::round(places), double(max_places))) : 0;
}

// The only argument of a call that takes one parameter of any kind but an
// error; null otherwise. References count as their referents.
const vorParameter* single_parameter(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return nullptr;
    vorParameterPtr arg = decoder.next_argument();
    return arg->is_error() ? nullptr : arg.par();
}

// A scalar (text, number, enumeration) whose value evaluates; null otherwise.
const vorParameterScalar* as_text(const vorParameterPtr& arg) {
    const vorParameterScalar* scalar = vorParameterScalar::ut_dynamic_cast(arg.par());
    return scalar && scalar->is_valid() ? scalar : nullptr;
}

// A text that is one number, with the user's decimal point or with ".".
bool parse_number(const utString& text, double& value) {
    const utString trimmed = vortrim(text.view());
    std::size_t used = 0;
    return trimmed.parse(value) || (trimmed.parse(value, used, '.') && used == trimmed.size());
}

// The only argument of a conversion: a number (with its dimension) or a text
// that reads as a number (dimensionless).
bool read_convertible(const vorParameterPtr& args, double& value, vorDimensions& dim) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return false;
    vorParameterPtr arg = decoder.next_argument();
    if (const vorParameterNumeric* number = as_number(arg)) {
        value = number->get_double();
        dim = number->get_dim();
        return true;
    }
    const vorParameterString* text = vorParameterString::ut_dynamic_cast(arg.par());
    dim = vorDimensions(DIM_NONE);
    return text && parse_number(text->get_string(), value);
}

// The numbers of sum, max, min and mean: the arguments, or the elements of a
// single array argument, all of one valid dimension. The kind of the result
// is the kind they share when that is integer or angle, real otherwise.
struct Numbers {
    std::vector<double> values;
    vorDimensions dim{DIM_NONE};
    vorParameterSubType kind = SUB_REAL;
};

vorParameterSubType aggregate_kind(vorParameterSubType kind) {
    return kind == SUB_INT || kind == SUB_ANGLE ? kind : SUB_REAL;
}

// An empty handle when `out` was filled, else the error to answer.
vorParameterPtr gather_numbers(const vorParameterPtr& args, Numbers& out) {
    const vorParameterArray* items = vorParameterArray::ut_dynamic_cast(args.get());
    if (!items || items->size() == 0)
        return invalid_arguments();
    if (items->size() == 1)
        if (const vorParameterArray* inner = vorParameterArray::ut_dynamic_cast(items->at(0).par()))
            items = inner;
    for (const vorParameterPtr& item : items->elements()) {
        const vorParameterNumeric* number = as_number(item);
        if (!number)
            return invalid_arguments();
        const bool first = out.values.empty();
        if (number->get_dim().invalid() || (!first && number->get_dim() != out.dim))
            return vorParameterLib::error(ERR_DIMENSIONS);
        const vorParameterSubType kind = aggregate_kind(number->subtype());
        out.kind = first || kind == out.kind ? kind : SUB_REAL;
        out.dim = number->get_dim();
        out.values.push_back(number->get_double());
    }
    return vorParameterPtr();
}

// `value` rounded to `places` decimals: with none, halves upwards to a whole
// number; with some, held as the text of the number with that many decimals.
vorParameterPtr rounded(double value, int places) {
    vorParameterPtr result = make_number(SUB_REAL, value);
    if (result->is_error())
        return result;
    if (places > 0) {
        result->set_string(vorformat_double(value, places));
        return result;
    }
    const double whole = std::floor(value + 0.5);
    if (whole >= INT_MIN && whole <= INT_MAX)
        result->set_int(static_cast<int>(whole));
    else
        result->set_double(whole);
    return result;
}

// The factor that turns one `unit` ("mm", "in" ...) into the current length
// unit: the language's own unit suffix applied to 1. False for a text that
// is no length unit.
bool length_unit_factor(const utString& unit, double& factor) {
    vorParameterPtr one =
        vorParameterNumeric(SUB_NUMBER, vorDimensions(DIM_NONE), 1.0).operate_postfix(unit);
    const vorParameterNumeric* length = vorParameterNumeric::ut_dynamic_cast(one.get());
    if (!length || length->get_dim() != vorDimensions(DIM_LENGTH))
        return false;
    factor = length->get_double();
    return factor > 0;
}

} // namespace

vorParameterPtr vorParameterLib::to_int(const vorParameterPtr& args) {
    double value = 0;
    vorDimensions dim;
    if (!read_convertible(args, value, dim))
        return invalid_arguments();
    const double whole = std::trunc(value) + 0.0; // + 0.0 turns -0 into 0
    if (!(whole >= INT_MIN && whole <= INT_MAX))
        return error(ERR_DOMAIN);
    return make_number(SUB_INT, whole, dim);
}

vorParameterPtr vorParameterLib::to_real(const vorParameterPtr& args) {
    double value = 0;
    vorDimensions dim;
    if (!read_convertible(args, value, dim))
        return invalid_arguments();
    return make_number(SUB_REAL, value, dim);
}

vorParameterPtr vorParameterLib::to_bool(const vorParameterPtr& args) {
    double value = 0;
    vorDimensions dim;
    if (!read_convertible(args, value, dim))
        return invalid_arguments();
    return vorParameterNumeric::create_bool(value != 0.0);
}

vorParameterPtr vorParameterLib::to_string(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() < 1 || decoder.count() > 2)
        return invalid_arguments();
    vorParameterPtr value = decoder.next_argument();
    const vorParameterScalar* text = as_text(value);
    if (!text)
        return invalid_arguments();
    if (decoder.all_arguments_used())
        return make_string(text->get_string());
    const vorParameterNumeric* number = as_number(value);
    const vorParameterNumeric* places = as_number(decoder.next_argument());
    if (!number || !places)
        return invalid_arguments();
    return make_string(
        vorformat_double(number->get_double(), decimal_places(places->get_double())));
}

namespace {

// Gathers the numbers of a call (several numbers, or one list of them) and
// hands them to `reduce`; an empty list is refused unless `allow_empty`.
template <class Reduce>
vorParameterPtr reduce_numbers(const vorParameterPtr& args, bool allow_empty, Reduce reduce) {
    Numbers numbers;
    vorParameterPtr failure = gather_numbers(args, numbers);
    if (!failure.is_null())
        return failure;
    if (numbers.values.empty() && !allow_empty)
        return invalid_arguments();
    return reduce(numbers);
}

double total_of(const Numbers& numbers) {
    return std::accumulate(numbers.values.begin(), numbers.values.end(), 0.0);
}

} // namespace

vorParameterPtr vorParameterLib::sum(const vorParameterPtr& args) {
    return reduce_numbers(args, true, [](const Numbers& numbers) {
        return make_number(numbers.kind, total_of(numbers), numbers.dim);
    });
}

vorParameterPtr vorParameterLib::max(const vorParameterPtr& args) {
    return reduce_numbers(args, false, [](const Numbers& numbers) {
        const double largest = *std::max_element(numbers.values.begin(), numbers.values.end());
        return make_number(numbers.kind, largest, numbers.dim);
    });
}

vorParameterPtr vorParameterLib::min(const vorParameterPtr& args) {
    return reduce_numbers(args, false, [](const Numbers& numbers) {
        const double smallest = *std::min_element(numbers.values.begin(), numbers.values.end());
        return make_number(numbers.kind, smallest, numbers.dim);
    });
}

vorParameterPtr vorParameterLib::mean(const vorParameterPtr& args) {
    return reduce_numbers(args, false, [](const Numbers& numbers) {
        const vorParameterSubType kind = numbers.kind == SUB_ANGLE ? SUB_ANGLE : SUB_REAL;
        const double count = static_cast<double>(numbers.values.size());
        return make_number(kind, total_of(numbers) / count, numbers.dim);
    });
}

vorParameterPtr vorParameterLib::select(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 3)
        return invalid_arguments();
    const vorParameterNumeric* condition = as_number(decoder.next_argument());
    vorParameterPtr when_true = decoder.next_argument();
    vorParameterPtr when_false = decoder.next_argument();
    if (!condition || when_true->type() != when_false->type())
        return invalid_arguments();
    return condition->get_int() != 0 ? when_true : when_false;
}

vorParameterPtr vorParameterLib::active(const vorParameterPtr& args) {
    const vorParameter* par = single_parameter(args);
    return par ? vorParameterNumeric::create_bool(par->is_active()) : invalid_arguments();
}

/// evaluate(text[; scope]): the text evaluated in `scope`, by default in the
/// library's evaluation scope.
vorParameterPtr vorParameterLib::eval(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() < 1 || decoder.count() > 2)
        return invalid_arguments();
    const vorParameterString* text = decoder.next_argument_as<vorParameterString>();
    if (!text)
        return invalid_arguments();
    const vorParameter* scope = get_eval_scope().get();
    if (!decoder.all_arguments_used()) {
        vorParameterPtr given = decoder.next_argument();
        if (given->is_error())
            return invalid_arguments();
        scope = given.par();
    }
    return vorEvaluator(scope).evaluate(text->get_string());
}

vorParameterPtr vorParameterLib::size(const vorParameterPtr& args) {
    const vorParameter* par = single_parameter(args);
    return par ? make_number(SUB_INT, par->size()) : invalid_arguments();
}

vorParameterPtr vorParameterLib::locked(const vorParameterPtr& args) {
    const vorParameter* par = single_parameter(args);
    return par ? vorParameterNumeric::create_bool(par->is_locked()) : invalid_arguments();
}

vorParameterPtr vorParameterLibFunctions::is_error(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return invalid_arguments();
    return vorParameterNumeric::create_bool(decoder.next_argument()->is_error());
}

/// round(value; places): places is clamped to 0 ... 16; halves round up.
vorParameterPtr vorParameterLib::round(const vorParameterPtr& args) {
    std::array<double, 2> numbers{};
    if (!read_numbers(args, numbers))
        return invalid_arguments();
    return rounded(numbers[0], decimal_places(numbers[1]));
}

/// convert(value; unit): the value measured in a length unit ("mm", "in"
/// ...; areas and volumes in its square and cube) or, for a dimensionless
/// angle, in "deg" or "rad". The result is a plain number.
vorParameterPtr vorParameterLib::convert(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 2)
        return invalid_arguments();
    const vorParameterNumeric* number = as_number(decoder.next_argument());
    const vorParameterString* unit_text = decoder.next_argument_as<vorParameterString>();
    if (!number || !unit_text)
        return invalid_arguments();
    const utString unit = vordowncase(vortrim(unit_text->get_string().view()).view());
    const double value = number->get_double();
    const vorDimensions& dim = number->get_dim();
    if (unit == "deg" || unit == "rad") {
        if (dim != vorDimensions(DIM_NONE))
            return error(ERR_DIMENSIONS);
        const giAngleType to = unit == "rad" ? GI_RADIANS : GI_DEGREES;
        return make_number(SUB_REAL, giAngle(get_angle_unit(), value).value(to));
    }
    double factor = 1.0;
    if (!length_unit_factor(unit, factor))
        return invalid_arguments();
    if (dim.invalid() || dim.L() == 0)
        return error(ERR_DIMENSIONS);
    return make_number(SUB_REAL, value / std::pow(factor, dim.L()));
}

vorParameterPtr vorParameterLib::translate(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return invalid_arguments();
    const vorParameterScalar* text = as_text(decoder.next_argument());
    return text ? make_string(vortranslate(text->get_string())) : invalid_arguments();
}

vorParameterPtr vorParameterLib::desc(const vorParameterPtr& args) {
    const vorParameter* par = single_parameter(args);
    return par ? make_string(par->get_desc()) : invalid_arguments();
}

/// get_func_args(...): a new array of copies of the arguments, which, unlike
/// the argument list itself, owns what it holds.
vorParameterPtr vorParameterLib::get_func_args(const vorParameterPtr& args) {
    auto* array = new vorParameterArray();
    vorParameterPtr result(array);
    if (const vorParameterArray* list = vorParameterArray::ut_dynamic_cast(args.get()))
        for (const vorParameterPtr& arg : list->elements())
            array->append(arg.copy());
    return result;
}

//===- vorLibTimeFunctions.cpp - Time and sequence functions --------------===//
//
// The clock and the counters of the standard library: time, local_time,
// utc_time, time_to_string, make_sequence and next_in_sequence.
//
// A calendar time is a number of seconds since 1970-01-01 00:00:00 UTC, as
// time() gives it; a fraction is rounded down to the whole second before it.
// The functions take calendar times from 0001-01-01 00:00:00 to
// 9999-12-31 23:59:59 UTC (earliest_time to latest_time), so every year they
// show has four digits and 2038 is no boundary; other times are ERR_DOMAIN.
// They use 64-bit time and the reentrant gmtime_r and localtime_r, never a
// buffer shared by the whole process.
//
// A time object is a map of typename "time" with the whole numbers year,
// month (1 to 12), day (1 to 31), hour (0 to 23), minute (0 to 59), second
// (0 to 59, 60 in a leap second of a zone that counts them), weekday (0 for
// Sunday to 6 for Saturday) and day_of_year (1 to 366).
//
// A sequence object is a map of typename "sequence" with the whole numbers
// start, increment, padding and count: the values it hands out are start,
// start + increment, start + 2 * increment and so on, count being how many
// it handed out. Everything is a 32-bit int, like the arguments of
// make_sequence, and computed in 64 bits, so a sequence that would leave the
// range of int answers ERR_DOMAIN instead of wrapping around.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <chrono>
#include <climits>
#include <cmath>
#include <ctime>
#include <limits>
#include <string>
#include <utility>

namespace {

constexpr long long earliest_time = -62135596800LL; // 0001-01-01 00:00:00 UTC
constexpr long long latest_time = 253402300799LL;   // 9999-12-31 23:59:59 UTC
constexpr long long seconds_per_day = 24 * 60 * 60;

/// The widest zero padding of a sequence: enough for any int, and a bound
/// on the text that one call builds.
constexpr long long max_padding = 64;

using vorLibSupport::invalid_arguments;

vorParameterPtr make_int(long long value) {
    return vorLibSupport::make_number(SUB_INT, static_cast<double>(value));
}

/// `value` rounded to the nearest whole number (halves away from zero), when
/// that lies in the range of int.
bool whole_int(double value, long long& whole) {
    const double rounded = std::round(value);
    if (!(rounded >= INT_MIN && rounded <= INT_MAX))
        return false;
    whole = static_cast<long long>(rounded);
    return true;
}

//===----------------------------------------------------------------------===//
// Calendar time
//===----------------------------------------------------------------------===//

/// Reads the only argument as a calendar time. An empty handle when it is
/// one, otherwise the error to answer.
vorParameterPtr read_time(const vorParameterPtr& args, std::time_t& time) {
    vorParameterArgDecoder decoder(args);
    const vorParameterNumeric* number =
        decoder.count() == 1 ? vorLibSupport::as_number(decoder.next_argument()) : nullptr;
    if (!number)
        return invalid_arguments();
    const double seconds = std::floor(number->get_double());
    if (!(seconds >= earliest_time && seconds <= latest_time))
        return vorParameterLib::error(ERR_DOMAIN);
    // Only a platform whose time_t has 32 bits cannot hold the whole range.
    using time_limits = std::numeric_limits<std::time_t>;
    if (seconds < static_cast<double>(time_limits::min()) ||
        seconds > static_cast<double>(time_limits::max()))
        return vorParameterLib::error(ERR_DOMAIN);
    time = static_cast<std::time_t>(seconds);
    return vorParameterPtr();
}

vorParameterPtr time_object(const std::tm& fields) {
    const std::pair<const char*, int> members[] = {
        {"year", fields.tm_year + 1900}, {"month", fields.tm_mon + 1},
        {"day", fields.tm_mday},         {"hour", fields.tm_hour},
        {"minute", fields.tm_min},       {"second", fields.tm_sec},
        {"weekday", fields.tm_wday},     {"day_of_year", fields.tm_yday + 1},
    };
    vorParameterPtr object(new vorParameterMap());
    object->set_typename("time");
    for (const auto& [name, value] : members)
        object->add(name, make_int(value));
    return object;
}

/// The time object of the argument, broken down by `breakdown`: gmtime_r or
/// localtime_r.
vorParameterPtr broken_down_time(const vorParameterPtr& args,
                                 std::tm* (*breakdown)(const std::time_t*, std::tm*)) {
    std::time_t time = 0;
    vorParameterPtr failure = read_time(args, time);
    if (!failure.is_null())
        return failure;
    std::tm fields{};
    if (!breakdown(&time, &fields))
        return vorParameterLib::error(ERR_DOMAIN);
    return time_object(fields);
}

std::string two_digits(long long value) {
    return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
}

//===----------------------------------------------------------------------===//
// Sequences
//===----------------------------------------------------------------------===//

struct Sequence {
    long long start = 0;
    long long increment = 1;
    long long padding = 0;
    long long count = 0;
};

/// Reads an argument of make_sequence or a member of a sequence into
/// `whole`. An empty handle when it is a number whose nearest whole number
/// lies in the range of int, otherwise the error to answer.
vorParameterPtr read_whole(const vorParameterPtr& value, long long& whole) {
    const vorParameterNumeric* number = vorLibSupport::as_number(value);
    if (!number)
        return invalid_arguments();
    if (!whole_int(number->get_double(), whole))
        return vorParameterLib::error(ERR_DOMAIN);
    return vorParameterPtr();
}

vorParameterPtr check_padding(long long padding) {
    return padding >= 0 && padding <= max_padding ? vorParameterPtr()
                                                  : vorParameterLib::error(ERR_DOMAIN);
}

/// Reads the members of `object` into `sequence`, with the errors of
/// read_whole and check_padding; a member that is missing is no number.
vorParameterPtr read_sequence(const vorParameterPtr& object, Sequence& sequence) {
    const std::pair<const char*, long long*> members[] = {
        {"start", &sequence.start},
        {"increment", &sequence.increment},
        {"padding", &sequence.padding},
        {"count", &sequence.count},
    };
    for (const auto& [name, whole] : members) {
        vorParameterPtr failure = read_whole(object[name], *whole);
        if (!failure.is_null())
            return failure;
    }
    return check_padding(sequence.padding);
}

vorParameterPtr sequence_object(const Sequence& sequence) {
    const std::pair<const char*, long long> members[] = {
        {"start", sequence.start},
        {"increment", sequence.increment},
        {"padding", sequence.padding},
        {"count", sequence.count},
    };
    vorParameterPtr object(new vorParameterMap());
    object->set_typename("sequence");
    for (const auto& [name, value] : members)
        object->add(name, make_int(value));
    return object;
}

/// `value` in decimal with at least `padding` digits: zeros fill in after
/// the sign ("-007").
utString padded(long long value, long long padding) {
    std::string digits = std::to_string(value < 0 ? -value : value);
    const auto width = static_cast<std::size_t>(padding);
    if (digits.size() < width)
        digits.insert(0, width - digits.size(), '0');
    return utString(value < 0 ? "-" + digits : digits);
}

} // namespace

namespace vorParameterLibFunctions {

vorParameterPtr time(const vorParameterPtr& args) {
    if (vorParameterArgDecoder(args).count() != 0)
        return invalid_arguments();
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return make_int(now.time_since_epoch().count());
}

vorParameterPtr utc_time(const vorParameterPtr& args) {
    return broken_down_time(args, gmtime_r);
}

vorParameterPtr local_time(const vorParameterPtr& args) {
    // localtime_r need not look at TZ again; tzset makes a zone that the
    // host changed take effect.
    tzset();
    return broken_down_time(args, localtime_r);
}

vorParameterPtr time_to_string(const vorParameterPtr& args) {
    std::time_t time = 0;
    vorParameterPtr failure = read_time(args, time);
    if (!failure.is_null())
        return failure;
    // The time of day in UTC, so that the same number gives the same text
    // on every machine; earlier than 1970 counts back from midnight.
    long long of_day = static_cast<long long>(time) % seconds_per_day;
    if (of_day < 0)
        of_day += seconds_per_day;
    return vorLibSupport::make_string(utString(two_digits(of_day / 3600) + ":" +
                                               two_digits(of_day / 60 % 60) + ":" +
                                               two_digits(of_day % 60)));
}

vorParameterPtr make_sequence(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() < 1 || decoder.count() > 3)
        return invalid_arguments();
    Sequence sequence;
    long long* const given[] = {&sequence.start, &sequence.increment, &sequence.padding};
    for (int i = 0; i < decoder.count(); ++i) {
        vorParameterPtr failure = read_whole(decoder.next_argument(), *given[i]);
        if (!failure.is_null())
            return failure;
    }
    vorParameterPtr failure = check_padding(sequence.padding);
    return failure.is_null() ? sequence_object(sequence) : failure;
}

vorParameterPtr next_in_sequence(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return invalid_arguments();
    vorParameterPtr object = vorParameterPtr::share(decoder.next_argument().par());
    if (object->type() != TYPE_MAP)
        return invalid_arguments();
    Sequence sequence;
    vorParameterPtr failure = read_sequence(object, sequence);
    if (!failure.is_null())
        return failure;
    // At most 2^31 * 2^31 + 2^31 in magnitude: no overflow in 64 bits.
    const long long value = sequence.start + sequence.count * sequence.increment;
    if (value < INT_MIN || value > INT_MAX || sequence.count == INT_MAX)
        return vorParameterLib::error(ERR_DOMAIN);
    vorParameterPtr count = object["count"];
    if (count->is_locked())
        return vorParameterLib::error(ERR_UNKNOWN);
    count->set_int(static_cast<int>(sequence.count + 1));
    return vorLibSupport::make_string(padded(value, sequence.padding));
}

} // namespace vorParameterLibFunctions

// The system, time and sequence functions at their limits: a directory of
// 100 000 files and one past the listing limit, sequences run into the ends
// of int, and calendar times over the whole range from year 1 to 9999.

#include "../support/prelude.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <random>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

vorParameterPtr call(vorParameterLibFn fn, std::initializer_list<vorParameterPtr> values) {
    vorParameterPtr list(new vorParameterTempArray());
    for (const vorParameterPtr& value : values)
        list->add(vorParameterKey(), value);
    return fn(list);
}

vorParameterPtr number(double v) {
    return real(v, vorDimensions(), SUB_NUMBER);
}

/// Where to make the scratch directory: a RAM file system when the machine
/// has one, since 131 073 files cost a fraction of a second there and many
/// seconds on a journalling disk; otherwise the temporary directory.
fs::path scratch_parent() {
    std::error_code error;
    return fs::is_directory("/dev/shm", error) ? fs::path("/dev/shm") : fs::temp_directory_path();
}

/// A new directory for the test's files, removed with them at the end, also
/// when an assertion fails.
struct ScratchDirectory {
    ScratchDirectory() { fs::create_directory(path); }
    ~ScratchDirectory() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    const fs::path path =
        scratch_parent() /
        ("vorparameter-stress-" + std::to_string(getpid()) + "-" +
         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
};

/// Empty files f0000000, f0000001, ... up to `count` in `dir`, made with
/// open(2) because a stream per file would dominate the test's time.
void fill_directory(const fs::path& dir, int from, int count) {
    char name[16];
    for (int i = from; i < count; ++i) {
        std::snprintf(name, sizeof name, "f%07d", i);
        const int fd = ::open((dir / name).c_str(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(fd, 0) << name;
        ::close(fd);
    }
}

/// Year, month and day of `days` since 1970-01-01 in the proleptic Gregorian
/// calendar, counted in 400-year eras without the C library.
void civil_from_days(long long days, long long& year, long long& month, long long& day) {
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const long long of_era = days - era * 146097;
    const long long year_of_era = (of_era - of_era / 1460 + of_era / 36524 - of_era / 146096) / 365;
    const long long day_of_year =
        of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const long long shifted_month = (5 * day_of_year + 2) / 153;
    day = day_of_year - (153 * shifted_month + 2) / 5 + 1;
    month = shifted_month < 10 ? shifted_month + 3 : shifted_month - 9;
    year = year_of_era + era * 400 + (month <= 2);
}

} // namespace

TEST(StressSystem, DirectoryOfAHundredThousandFilesAndOnePastTheLimit) {
    const ScratchDirectory dir;
    const vorParameterPtr path(new vorParameterString(dir.path.string()));

    fill_directory(dir.path, 0, 100000);
    vorParameterPtr names = call(vorParameterLibFunctions::ls, {path});
    ASSERT_EQ(names->size(), 100000);
    const auto& elements = static_cast<const vorParameterArray&>(*names).elements();
    for (int i = 0; i < 100000; i += 9973) {
        char expected[16];
        std::snprintf(expected, sizeof expected, "f%07d", i);
        EXPECT_EQ(elements[static_cast<std::size_t>(i)]->get_string(), expected) << "sorted";
    }

    fill_directory(dir.path, 100000, (1 << 17) + 1);
    EXPECT_EQ(call(vorParameterLibFunctions::ls, {path})->subtype(), ERR_DOMAIN);
}

TEST(StressSystem, SequencesStopAtTheEndsOfInt) {
    std::mt19937_64 random(13);
    std::uniform_int_distribution<long long> any_int(INT_MIN, INT_MAX);
    const long long chosen_increments[] = {0, 1, -1, INT_MIN, INT_MAX};
    for (int round = 0; round < 4000; ++round) {
        const long long start = any_int(random);
        const long long increment = round < 5 ? chosen_increments[round] : any_int(random);
        vorParameterPtr sequence = call(vorParameterLibFunctions::make_sequence,
                                        {number(start), number(increment), number(10)});
        // The number of steps that stay in range; counting there one by one
        // would take billions of calls, so the count starts just before.
        const long long room = increment > 0   ? (INT_MAX - start) / increment
                               : increment < 0 ? (start - INT_MIN) / -increment
                                               : INT_MAX;
        const long long first = std::max(0LL, std::min(room, INT_MAX - 1LL) - 2);
        sequence["count"]->set_int(static_cast<int>(first));
        for (long long k = first; k <= first + 4; ++k) {
            const long long expected = start + k * increment;
            vorParameterPtr value = call(vorParameterLibFunctions::next_in_sequence, {sequence});
            if (expected < INT_MIN || expected > INT_MAX || k == INT_MAX) {
                ASSERT_EQ(value->subtype(), ERR_DOMAIN)
                    << start << " + " << k << " * " << increment;
                EXPECT_EQ(sequence["count"]->get_int(), k) << "an exhausted sequence stays";
                break;
            }
            ASSERT_LE(k, room);
            ASSERT_EQ(std::stoll(value->get_string().str()), expected);
        }
    }
}

TEST(StressSystem, CalendarTimesOverTheWholeRange) {
    constexpr long long earliest = -62135596800LL;
    constexpr long long latest = 253402300799LL;
    std::mt19937_64 random(2038);
    std::uniform_int_distribution<long long> any_time(earliest, latest);
    for (int i = 0; i < 4000; ++i) {
        const long long t = i == 0 ? earliest : i == 1 ? latest : any_time(random);
        vorParameterPtr utc = call(vorParameterLibFunctions::utc_time, {number(double(t))});
        long long days = t / 86400;
        long long seconds = t % 86400;
        if (seconds < 0)
            seconds += 86400, --days;
        long long year = 0, month = 0, day = 0;
        civil_from_days(days, year, month, day);
        ASSERT_EQ(utc["year"]->get_int(), year) << t;
        ASSERT_EQ(utc["month"]->get_int(), month) << t;
        ASSERT_EQ(utc["day"]->get_int(), day) << t;
        ASSERT_EQ(utc["weekday"]->get_int(), ((days % 7) + 11) % 7) << t;
        ASSERT_EQ(utc["hour"]->get_int() * 3600 + utc["minute"]->get_int() * 60 +
                      utc["second"]->get_int(),
                  seconds)
            << t;
        EXPECT_EQ(call(vorParameterLibFunctions::local_time, {number(double(t))})->size(), 8) << t;
    }
    for (double beyond : {earliest - 1.0, latest + 1.0, 1e300, -1e300, 9.3e18}) {
        EXPECT_EQ(call(vorParameterLibFunctions::utc_time, {number(beyond)})->subtype(),
                  ERR_DOMAIN);
        EXPECT_EQ(call(vorParameterLibFunctions::local_time, {number(beyond)})->subtype(),
                  ERR_DOMAIN);
        EXPECT_EQ(call(vorParameterLibFunctions::time_to_string, {number(beyond)})->subtype(),
                  ERR_DOMAIN);
    }
}

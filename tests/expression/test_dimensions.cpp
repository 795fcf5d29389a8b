#include "../support/prelude.h"

#include <climits>

namespace {

void expect_exponents(const vorDimensions& d, int m, int l, int t) {
    EXPECT_EQ(d.invalid(), 0) << d.get_string();
    EXPECT_EQ(d.M(), m) << d.get_string();
    EXPECT_EQ(d.L(), l) << d.get_string();
    EXPECT_EQ(d.T(), t) << d.get_string();
}

vorDimensions read(const char* text) {
    return vorDimensions(utString(text));
}

} // namespace

TEST(Dimensions, PrintedFormsReadBackAndReadingRules) {
    const char* printed[] = {"",        "[M]",     "[L]",      "[T]",      "[LL]",    "[LLL]",
                             "[L/T]",   "[L/TT]",  "[1/T]",    "[1/T]",    "[M/LLL]", "[ML/T]",
                             "[ML/TT]", "[M/LTT]", "[MLL/TT]", "[MLL/TTT]"};
    for (int v = DIM_NONE; v <= DIM_POWER; ++v) {
        vorDimensions d(static_cast<vorDimStandard>(v));
        EXPECT_EQ(d.get_string(), printed[v - 1]) << "standard " << v;
        EXPECT_EQ(vorDimensions(d.get_string()), d) << "standard " << v;
    }
    EXPECT_EQ(vorDimensions(DIM_INVERSE_TIME), vorDimensions(DIM_INVERSE_TIME_2));
    expect_exponents(DIM_PRESSURE, 1, -1, -2);

    // Unset and unknown dimensions are invalid, never dimensionless.
    for (vorDimensions bad : {vorDimensions(), vorDimensions(static_cast<vorDimStandard>(0)),
                              vorDimensions(static_cast<vorDimStandard>(17)),
                              vorDimensions(static_cast<vorDimStandard>(1000))}) {
        EXPECT_EQ(bad.invalid(), 1);
        EXPECT_EQ(bad.get_string(), "[!]");
        EXPECT_NE(bad, vorDimensions(DIM_NONE));
        EXPECT_EQ(vorDimensions(bad.get_string()), bad);
    }

    for (int m = -4; m <= 4; ++m)
        for (int l = -4; l <= 4; ++l)
            for (int t = -4; t <= 4; ++t) {
                vorDimensions d(m, l, t);
                expect_exponents(vorDimensions(d.get_string()), m, l, t);
            }

    expect_exponents(read("[L/T]"), 0, 1, -1);
    expect_exponents(read("L/TT"), 0, 1, -2);
    expect_exponents(read("1/T"), 0, 0, -1);
    expect_exponents(read("[L/T/T]"), 0, 1, -2); // a second "/" changes nothing
    expect_exponents(read(" [ T L M ] "), 1, 1, 1);
    expect_exponents(read("L/L"), 0, 0, 0);
    expect_exponents(read(""), 0, 0, 0);
    for (const char* bad : {"[l]", "[L]x", "[L\t]", "[2L]", "[L]\xC3\xA9", "-L"})
        EXPECT_EQ(read(bad).invalid(), 1) << bad;
    // An invalid text leaves no partial exponents behind.
    EXPECT_EQ(read("MM?"), vorDimensions());

    // Long texts read in linear time, and stop counting at the bound.
    const std::string n(1000000, 'L'), d(1000000, 'T');
    EXPECT_EQ(vorDimensions(utString("[" + n + "/" + d + "]")).invalid(), 1);
    EXPECT_EQ(vorDimensions(utString("[" + n + "/" + n + "]")).invalid(), 1);
}

TEST(Dimensions, CombinationRulesAndTheExponentBound) {
    const vorDimensions length(DIM_LENGTH), area(DIM_AREA), invalid;
    EXPECT_EQ(length * length, area);
    EXPECT_EQ(area / length, length);
    EXPECT_EQ((length / length).get_string(), "");
    EXPECT_EQ(vorDimensions(DIM_FORCE) / vorDimensions(DIM_MASS), DIM_ACCELERATION);
    EXPECT_EQ(area + area, area);
    EXPECT_EQ((length + area).invalid(), 1);
    EXPECT_EQ((length + vorDimensions(DIM_TIME)).invalid(), 1);
    EXPECT_EQ(length.pow(0), DIM_NONE);
    EXPECT_EQ(vorDimensions(DIM_VELOCITY).pow(2), vorDimensions(0, 2, -2));
    EXPECT_EQ(vorDimensions(DIM_TIME).pow(-1), DIM_INVERSE_TIME);

    for (const vorDimensions& other : {length, vorDimensions(DIM_NONE), invalid}) {
        EXPECT_EQ((invalid * other).invalid(), 1);
        EXPECT_EQ((other * invalid).invalid(), 1);
        EXPECT_EQ((invalid / other).invalid(), 1);
        EXPECT_EQ((other / invalid).invalid(), 1);
        EXPECT_EQ((invalid + other).invalid(), 1);
        EXPECT_EQ((other + invalid).invalid(), 1);
    }
    EXPECT_EQ(invalid.pow(0).invalid(), 1);

    const int bound = vorDimensions::max_exponent;
    const vorDimensions top(bound, 0, 0), bottom(0, 0, -bound), mass(DIM_MASS);
    EXPECT_EQ(vorDimensions(INT_MAX, 0, 0).invalid(), 1);
    EXPECT_EQ(vorDimensions(0, 0, INT_MIN).invalid(), 1);
    EXPECT_EQ((top * mass).invalid(), 1);
    EXPECT_EQ((top / vorDimensions(-1, 0, 0)).invalid(), 1);
    EXPECT_EQ((bottom / vorDimensions(DIM_TIME)).invalid(), 1);
    EXPECT_EQ(vorDimensions(0, 2, 0).pow(INT_MAX).invalid(), 1);
    EXPECT_EQ(vorDimensions(0, -2, 0).pow(INT_MIN).invalid(), 1);
    EXPECT_EQ(vorDimensions(utString(std::string(bound + 1, 'L'))).invalid(), 1);

    // Results at the very edge of the range are still valid, and print short.
    expect_exponents(top / mass * mass, bound, 0, 0);
    expect_exponents(vorDimensions(0, 0, -1).pow(bound), 0, 0, -bound);
    expect_exponents(bottom * vorDimensions(DIM_TIME), 0, 0, -bound + 1);
    EXPECT_EQ(vorDimensions(bound, bound, -bound).get_string().size(), 3u * bound + 3);
}

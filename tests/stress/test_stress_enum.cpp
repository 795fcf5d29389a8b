// Enumerations against huge state lists, malformed state texts, conditions
// that read their own enumeration and writes that name nothing: each ends in
// a value or the documented result, never in a crash, a hang or a stack
// overflow. The lookups are sized so that a linear search per call would not
// finish in time.

#include "../support/prelude.h"

namespace {

constexpr int kStates = 100000;

std::string state_name(int i) {
    return "s" + std::to_string(i);
}

std::string states_text(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i ? "|" : "") + state_name(i);
    return text;
}

} // namespace

TEST(StressEnum, HundredThousandStatesAreFoundInConstantTime) {
    vorParameterEnum e(utString(states_text(kStates)), utString());
    ASSERT_EQ(e.num_states(), kStates);
    EXPECT_EQ(e.get_string(), "s0");
    // A million lookups: a linear search would compare 5 * 10^10 names.
    std::vector<utString> names;
    for (int i = 0; i < kStates; ++i)
        names.emplace_back(state_name(i));
    long found = 0;
    for (int round = 0; round < 10; ++round)
        for (int i = 0; i < kStates; ++i)
            found += e.find_index(names[i]) == i;
    EXPECT_EQ(found, 10L * kStates);
    // Writing and validating the far end, each time.
    for (int i = kStates - 1000; i < kStates; ++i) {
        e.set_string(utString(state_name(i)));
        ASSERT_TRUE(e.is_valid());
        ASSERT_EQ(e.get_int(), i);
    }
    e.set_string(utString(std::to_string(kStates - 1)));
    EXPECT_EQ(e.get_string(), utString(state_name(kStates - 1)));
    EXPECT_TRUE(e.is_state_active(-kStates));
    EXPECT_FALSE(e.is_state_active(-kStates - 1));

    vorParameterPtr copy(e.create_new());
    EXPECT_EQ(static_cast<vorParameterEnum&>(*copy).find_index(utString(state_name(kStates / 2))),
              kStates / 2);
}

TEST(StressEnum, EmptyPiecesHugeTextsAndSelfReadingConditionsEnd) {
    vorParameterEnum bars(utString(std::string(kStates, '|')), utString());
    EXPECT_EQ(bars.num_states(), kStates + 1);
    EXPECT_EQ(bars.get_string(), "");
    EXPECT_FALSE(bars.is_valid());
    EXPECT_EQ(bars.find_index(""), -1);

    vorParameterEnum e("a|b", "");
    const utString huge(std::string(1 << 20, 'x'));
    e.set_string(huge);
    EXPECT_EQ(e.get_string(), huge);
    EXPECT_FALSE(e.is_valid());
    EXPECT_EQ(e.get_int(), 0);
    e.set_string(utString(std::string(1 << 20, '7'))); // too big for an integer
    EXPECT_EQ(e.get_string().size(), std::size_t(1) << 20);

    vorParameterRoot root("machining");
    auto* method = new vorParameterEnum("raster|offset", "");
    vorParameterPtr handle = root.add("method", vorParameterPtr(method));
    method->add_state("self", "", "", "method == 'self'");
    method->add_state("valid", "", "", "method == 'raster' & method != 'rastr'");
    method->add_state("deep", "", "", std::string(100000, '(') + "1" + std::string(100000, ')'));
    EXPECT_FALSE(method->is_state_active(2));
    method->set_string("self");
    EXPECT_TRUE(method->is_state_active(2));
    EXPECT_FALSE(method->is_state_active(3)); // 'rastr' names no state: an error
    EXPECT_FALSE(method->is_state_active(4)); // past the nesting limit

    // The value interpolates itself: the recursion guard answers.
    method->set_string("${method}");
    EXPECT_FALSE(method->is_valid());
    EXPECT_TRUE(root.add("probe", text("x"))->operate_binary("==", handle)->is_error());
}

// The PATH=VALUE arguments of `eval --set` and `set`.
#include "settings.h"

#include "../support/prelude.h"

namespace {

TEST(ToolSettings, SyntaxSplitAndEveryValueThatFails) {
    EXPECT_EQ(vorparam::check_setting_syntax("a.b=1"), "");
    EXPECT_EQ(vorparam::check_setting_syntax("a=b=c"), "");
    EXPECT_NE(vorparam::check_setting_syntax("=1"), "");
    EXPECT_NE(vorparam::check_setting_syntax("a"), "");

    const vorparam::Setting setting = vorparam::split_setting("note=x=y");
    EXPECT_EQ(setting.path, "note");
    EXPECT_EQ(setting.value, "x=y");

    vorParameterPtr good(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0.0));
    vorParameterPtr bad(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0.0));
    good->set_string("1+2");
    bad->set_string("1/0");
    std::ostringstream err;
    EXPECT_TRUE(vorparam::values_evaluate({{good, "a=1+2"}}, "set", err));
    EXPECT_FALSE(vorparam::values_evaluate({{good, "a=1+2"}, {bad, "b=1/0"}}, "set", err));
    EXPECT_EQ(err.str(), "vorparam set: b=1/0: Divide by zero\n");
}

} // namespace

// Interpolation of texts as long as an expression may be, made of nothing but
// forms: each must expand completely, in time linear in the text's length, so
// that a quadratic path would run for minutes here under the sanitizers.

#include "../support/prelude.h"

namespace {

/// `unit` repeated to fill the longest text an expression may have.
std::string longest_text_of(const std::string& unit) {
    std::string text;
    while (text.size() + unit.size() <= vorEvaluator::max_expression_length)
        text += unit;
    return text;
}

class StressInterpolation : public ::testing::Test {
protected:
    StressInterpolation()
        : root(new vorParameterRoot("machining")) {
        root->add("a", text("xyz"));
    }

    /// Expands `unit` repeated as often as fits, and expects `expansion`
    /// repeated as often.
    void expect_expansion(const std::string& unit, const std::string& expansion) {
        const std::string text = longest_text_of(unit);
        std::string expected;
        for (std::size_t i = 0; i < text.size() / unit.size(); ++i)
            expected += expansion;
        const utString result = vorEvaluator(root.get()).interpolate_string(utString(text));
        EXPECT_EQ(result.size(), expected.size()) << unit;
        EXPECT_TRUE(result == utString(expected)) << unit;
    }

    vorParameterPtr root;
};

} // namespace

TEST_F(StressInterpolation, FormsExpandAndJoinInLinearTimeAndStopAtTheLengthLimit) {
    expect_expansion("$a ", "xyz ");
    expect_expansion("$a}", "xyz}");
    expect_expansion("${a} ", "xyz ");
    expect_expansion("%[a] ", "xyz ");
    expect_expansion("$a,${a} %[a] $$ ", "xyz,xyz xyz $ ");
    expect_expansion("$$", "$");

    // "a + a + ... + a" as long as an expression may be: each join appends
    // to the result so far instead of copying it.
    std::string sum = "a";
    while (sum.size() + 4 <= vorEvaluator::max_expression_length)
        sum += " + a";
    const std::size_t terms = (sum.size() + 3) / 4;
    const vorParameterPtr joined = vorEvaluator(root.get()).evaluate(utString(sum));
    ASSERT_EQ(joined->type(), TYPE_STRING);
    EXPECT_EQ(joined->get_string().size(), 3 * terms);
    EXPECT_EQ((*root)["a"]->get_string(), "xyz") << "the tree's own text is never appended to";
    EXPECT_EQ(vorEvaluator(root.get()).evaluate("'<' + a + 1 + '>'")->get_string(), "<xyz1>");

    // A 256 KiB text read through many short forms would expand to gigabytes:
    // the expansion stops at the limit with the error in brackets.
    root->add("s", vorParameterPtr(new vorParameterString(
                       utString(std::string(vorEvaluator::max_expression_length - 16, 's')))));
    const utString huge =
        vorEvaluator(root.get()).interpolate_string(utString(longest_text_of("$s ")));
    EXPECT_LE(huge.size(), vorParameterString::max_text_length + 64);
    EXPECT_NE(huge.view().rfind("[#ERROR: Domain error]"), std::string_view::npos);

    // Doubling a text with "+" reaches the limit after a few steps.
    root->add("d0", text(""))->set_string("${s}");
    vorParameterPtr last;
    for (int i = 1; i <= 10; ++i) {
        const std::string previous = "d" + std::to_string(i - 1);
        last = vorEvaluator(root.get()).evaluate(utString(previous + " + " + previous));
        root->add(utString("d" + std::to_string(i)),
                  vorParameterString::create_verbatim(last->get_string()));
        if (last->is_error())
            break;
    }
    ASSERT_TRUE(last->is_error());
    EXPECT_EQ(last->subtype(), ERR_DOMAIN);
}

// vorReadDouble: a true number (0 included) against each way a read fails,
// with the error it reports; the value always equals get_double().

#include "../support/prelude.h"

namespace {

/// A root with a = 4, b = 0, name = 'mill' and one numeric per expression.
struct Tree {
    vorParameterLibRoot root{"machining"};

    Tree() {
        add("a", "4");
        add("b", "0");
        root.add("name", text("mill"));
    }

    vorParameterPtr add(const char* name, const char* text) {
        vorParameterPtr par = root.add(name, real(0.0));
        par->set_string(text);
        return par;
    }
};

} // namespace

TEST(CheckedRead, NumbersReadAsGetDoubleAndFailuresReportTheirError) {
    Tree t;
    struct Case {
        const char* text;
        double value;
    } cases[] = {{"sqrt(a) + 1", 3}, {"0", 0}, {"a - a", 0}, {"-0", 0}};
    for (const Case& c : cases) {
        vorParameterPtr par = t.add("x", c.text); // the same member, given each text
        vorCheckedDouble read = vorReadDouble(par);
        EXPECT_TRUE(read.ok()) << c.text << ": " << read.message().str();
        EXPECT_EQ(read.value(), c.value) << c.text;
        EXPECT_TRUE(read.error().is_null());
        EXPECT_TRUE(read.message().empty());
    }
    // The range applies, as for get_double(); a reference reads its referent.
    vorParameterPtr clamped = t.add("clamped", "a * 10");
    static_cast<vorParameterNumeric*>(clamped.get())->set_range(vorRange(0, 5));
    EXPECT_EQ(vorReadDouble(clamped).value(), 5.0);
    EXPECT_EQ(vorReadDouble(t.root.add("ref", reference("a"))).value(), 4.0);

    // Each failure reports the error that stood in its place.
    struct Failure {
        vorParameterPtr par;
        vorParameterSubType kind;
        const char* message;
    } failures[] = {
        {t.add("div", "1 + a / b"), ERR_DIVIDE_BY_ZERO, "Divide by zero"},
        {t.add("unknown", "a + nosuch"), ERR_INVALID_NAME, "Invalid name"},
        {t.add("text", "name"), ERR_TYPE, "Type error"},
        {t.add("empty", ""), ERR_TYPE, "Type error"},
        {t.root["nosuch"], ERR_INVALID_NAME, "Invalid name"},
        {t.root["name"], ERR_TYPE, "Type error"},
        {t.root.add("bad_ref", reference("div")), ERR_DIVIDE_BY_ZERO, "Divide by zero"},
        {t.root.add("dangling", reference("nosuch")), ERR_EXPRESSION, "Expression/Reference error"},
    };
    for (const Failure& c : failures) {
        vorCheckedDouble read = vorReadDouble(c.par);
        EXPECT_FALSE(read) << c.message;
        EXPECT_EQ(read.value(), 0.0) << c.message;
        EXPECT_EQ(read.value(), c.par->get_double()) << c.message;
        ASSERT_FALSE(read.error().is_null()) << c.message;
        EXPECT_TRUE(read.error()->is_error());
        EXPECT_EQ(read.error()->subtype(), c.kind) << c.message;
        EXPECT_EQ(read.message().str(), c.message);
    }
    vorParameterPtr none;
    EXPECT_EQ(vorReadDouble(none).error()->subtype(), ERR_UNKNOWN);
    EXPECT_TRUE(none.is_null()) << "the handle itself is left as it was";
}

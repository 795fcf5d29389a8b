// References against long chains, cycles and malformed texts: each ends in
// a value or an error, never in a crash, a hang or a stack overflow.

#include "../support/prelude.h"

namespace {

std::string name(int i) {
    return "r" + std::to_string(i);
}

} // namespace

TEST(StressReferences, LongChainsCyclesAndHugeOrMalformedTextsEndInErrors) {
    vorParameterRoot root("machining");
    root.add("r0", real(7.0, vorDimensions()));
    constexpr int kLinks = 100000;
    for (int i = 1; i <= kLinks; ++i)
        root.add(utString(name(i)), reference(name(i - 1)));
    // A link near the start reads through; the far end is past the nesting
    // limit and reads the error.
    EXPECT_DOUBLE_EQ(root["r50"]->get_double(), 7.0);
    vorParameterPtr far = root[utString(name(kLinks))];
    EXPECT_TRUE(far->is_error());
    EXPECT_EQ(far->subtype(), ERR_EXPRESSION);

    // Close the chain into one long cycle: every link is the error.
    root["r0"]; // still the number
    root.remove("r0");
    root.add("r0", reference(name(kLinks)));
    EXPECT_EQ(root["r1"]->subtype(), ERR_EXPRESSION);
    EXPECT_EQ(root[utString(name(kLinks / 2))]->subtype(), ERR_EXPRESSION);
    EXPECT_NE(root["r1"]->print(0).find("NULL REFERENCE"), utString::npos);

    root.add("a", real(1.0, vorDimensions()));
    vorParameterPtr huge = root.add("huge", reference(std::string(1 << 20, 'a')));
    EXPECT_EQ(huge->subtype(), ERR_EXPRESSION);
    vorParameterPtr path = root.add("path", reference("a" + std::string(1 << 20, '.')));
    EXPECT_TRUE(path->is_error());
    for (const char* text : {"'a", "\"a", "a'", "curve:'", "curve:\"'", "excl:zz:a", "id:", ":"}) {
        vorParameterRef r{utString(text)};
        EXPECT_TRUE(r.is_error()) << text;
        EXPECT_FALSE(r.print(0).empty());
    }
}

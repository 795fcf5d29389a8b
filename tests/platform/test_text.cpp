// Text helpers: number parsing and formatting, case folding, code points.

#include "../support/prelude.h"
#include "vorparameter/platform/utCompactString.h"

#include <cmath>
#include <limits>

namespace {

struct DecimalComma {
    DecimalComma() { nlsUtils::set_decimal_point(','); }
    ~DecimalComma() { nlsUtils::set_decimal_point('.'); }
};

} // namespace

TEST(Text, NumbersParseAndFormatInTheLocaleForm) {
    double v = 0;
    std::size_t used = 0;
    EXPECT_TRUE(utString(" -2.5e3mm").parse(v, used));
    EXPECT_EQ(v, -2500.0);
    EXPECT_EQ(used, 7u);
    EXPECT_TRUE(utString("+.5").parse(v));
    EXPECT_EQ(v, 0.5);
    EXPECT_FALSE(utString("5mm").parse(v)) << "a whole-text parse rejects trailing text";
    EXPECT_FALSE(utString("nan").parse(v));
    EXPECT_FALSE(utString("inf").parse(v));
    EXPECT_FALSE(utString("1e999").parse(v)) << "out of range is no number";
    EXPECT_FALSE(utString(".").parse(v));
    EXPECT_FALSE(utString("").parse(v));
    {
        DecimalComma comma;
        EXPECT_TRUE(utString("1,25").parse(v));
        EXPECT_EQ(v, 1.25);
        EXPECT_FALSE(utString("1.25").parse(v));
    }
    long long i = 0;
    EXPECT_TRUE(utString(" 42 ").parse_int(i));
    EXPECT_EQ(i, 42);
    EXPECT_FALSE(utString("99999999999999999999").parse_int(i));
    EXPECT_FALSE(utString("4x").parse_int(i));

    for (double d : {0.1, 1.0 / 3.0, -2.5, 1e300, 5e-324, 123456789.125, 0.0}) {
        double back = 0;
        ASSERT_TRUE(vorformat_double_exact(d).parse(back)) << vorformat_double_exact(d);
        EXPECT_EQ(back, d);
    }
    EXPECT_EQ(vorformat_double_exact(0.1), "0.1");
    EXPECT_EQ(vorformat_double_exact(std::nan("")), "nan");
    EXPECT_EQ(vorformat_double(2.346, 2), "2.35");
    EXPECT_EQ(vorformat_double(-1.5, 0), "-2");
    DecimalComma comma;
    EXPECT_EQ(vorformat_double(0.5, 1), "0,5");
    EXPECT_EQ(vorformat_double_exact(0.25), "0,25");
}

TEST(Text, CaseFoldingCodePointsIdsAndCompactStrings) {
    EXPECT_EQ(vordowncase("LÄNGE Ø"), "länge ø");
    EXPECT_EQ(vorupcase("straße ñ"), "STRAßE Ñ");
    EXPECT_EQ(vordowncase("ŁÓDŹ ΑΒΓ ДЖ"), "łódź αβγ дж");
    EXPECT_TRUE(vorequal_nocase("Diameter", "dIAMETER"));
    EXPECT_FALSE(vorequal_nocase("Diameter", "Diamete"));
    EXPECT_EQ(vorcompare("abc", "abd"), -1);
    EXPECT_EQ(vorindex("tool.diameter", "dia"), 5);
    EXPECT_EQ(vorindex("tool", "x"), -1);
    EXPECT_EQ(vortrim("  a b \n"), "a b");
    std::vector<utString> parts = vortokens("a  b,c", " ,");
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[2], "c");

    vorWideString wide = vorMultiByteToWideChar::convert("L\xC3\xA4nge");
    ASSERT_EQ(wide.size(), 5u);
    EXPECT_EQ(wide[1], U'\u00E4');
    EXPECT_EQ(vorMultiByteToWideChar::convert_back(wide), "L\xC3\xA4nge");
    // A truncated sequence, a stray continuation byte and an overlong form.
    vorWideString bad = vorMultiByteToWideChar::convert("a\xC3");
    EXPECT_EQ(bad, (vorWideString{U'a', 0xFFFD}));
    EXPECT_EQ(vorMultiByteToWideChar::convert("\x80\xC0\xAF").size(), 3u);

    vorCharTypes types(utString("a\xC3\xA4"
                                "1_ \xE2\x80\x94"));
    EXPECT_TRUE(types.isalpha(1)) << "a non-ASCII letter is a letter";
    EXPECT_TRUE(types.isdigit(2));
    EXPECT_FALSE(types.isalnum(3));
    EXPECT_TRUE(types.isspace(4));
    EXPECT_FALSE(types.isalpha(5)) << "an em dash is punctuation";
    EXPECT_FALSE(types.isalpha(99));

    vorUniqueId id = vorUniqueId::generate();
    ASSERT_TRUE(id.is_valid());
    utString hex = id.hex_string();
    EXPECT_EQ(hex.size(), 32u);
    EXPECT_EQ(vorUniqueId::from_hex(hex.view()), id);
    EXPECT_FALSE(vorUniqueId::from_hex("xyz").is_valid());
    EXPECT_FALSE(vorUniqueId::from_hex(std::string(32, 'g')).is_valid());
    EXPECT_EQ(vorUniqueId().hex_string(), "");
    vorRefToObjectId ref;
    EXPECT_FALSE(ref.is_valid());
    ref.set_uid(id);
    EXPECT_TRUE(ref.is_valid());
    EXPECT_EQ(ref.get_uid(), id);

    // Lengths around the fifteen bytes kept in place, an embedded zero byte
    // and a long text: each survives copy, move and assignment, and compares
    // and hashes like its utString twin.
    const std::string zero_inside("a\0b", 3);
    for (const std::string& text :
         {std::string(), std::string("p45"), std::string(14, 'x'), std::string(15, 'y'),
          std::string(16, 'z'), zero_inside, std::string(100000, 'w')}) {
        const utCompactString name(text);
        EXPECT_EQ(name.view(), text);
        EXPECT_EQ(name.empty(), text.empty());
        EXPECT_EQ(std::hash<utCompactString>()(name), std::hash<utString>()(utString(text)));

        utCompactString copy = name;
        utCompactString moved = std::move(copy);
        EXPECT_TRUE(moved == name);
        EXPECT_TRUE(copy.empty()); // a moved-from name is empty, not dangling
        copy = moved;
        const utCompactString& same = copy;
        copy = same; // assigning a name to itself keeps it
        EXPECT_TRUE(copy == name);
        EXPECT_EQ(copy.str(), utString(text));
    }
    // A short text never equals a long one that starts with it, nor a text
    // of the same length with other bytes.
    EXPECT_FALSE(utCompactString(std::string(15, 'y')) == utCompactString(std::string(16, 'y')));
    EXPECT_FALSE(utCompactString("ab") == utCompactString("ac"));
    EXPECT_TRUE(utCompactString(std::string(40, 'q')) == utCompactString(std::string(40, 'q')));
    EXPECT_FALSE(utCompactString(std::string(40, 'q')) == utCompactString(std::string(41, 'q')));
}

TEST(Text, HashAndCompareSeeEveryByteAndTheLength) {
    // Names are hashed a word at a time with a tail of one to seven bytes,
    // and short texts compare as two overlapping words; a byte left out
    // would make names that differ only there collide or compare equal.
    for (std::size_t length = 0; length <= 24; ++length) {
        const std::string text(length, 'a');
        const std::size_t hash = utTextHash()(text);
        EXPECT_TRUE(utString::same_text(text, std::string(text)));
        EXPECT_NE(hash, utTextHash()(text + 'a')) << length;
        EXPECT_FALSE(utString::same_text(text, text + 'a'));
        for (std::size_t at = 0; at < length; ++at) {
            std::string changed = text;
            changed[at] = 'b';
            EXPECT_NE(hash, utTextHash()(changed)) << length << " " << at;
            EXPECT_FALSE(utString::same_text(text, changed)) << length << " " << at;
        }
    }
}

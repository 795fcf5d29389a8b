// The string and path functions, and the examples of their documentation.

#include "../support/doc_examples.h"
#include "shown_value.h"

#include "../support/prelude.h"

namespace {

vorParameterPtr eval(const char* text) {
    static vorParameterPtr root(new vorParameterLibRoot());
    return vorEvaluator(root.get()).evaluate(text);
}

/// A call with arguments that expressions cannot spell (malformed UTF-8).
vorParameterPtr call(vorParameterLibFn fn, std::initializer_list<vorParameterPtr> args) {
    vorParameterPtr list(new vorParameterTempArray());
    for (const vorParameterPtr& arg : args)
        list->add(vorParameterKey(), arg);
    return fn(list);
}

vorParameterPtr number(double v) {
    return real(v, DIM_NONE, SUB_NUMBER);
}

} // namespace

TEST(LibStringGeometryDocs, EveryExampleGivesTheDocumentedResult) {
    expect_doc_examples("docs/functions-string-geometry.md", 80, [](const std::string& expression) {
        return shown(eval(expression.c_str()));
    });
}

TEST(LibString, PositionsCountCharactersAndNeverSplitBytes) {
    // Two-, three- and four-byte characters, a stray continuation byte and an
    // invalid lead byte: every cut of the text must reassemble it exactly.
    const std::string s = "aé€\xF0\x9D\x84\x9E\x80z\xFF";
    ASSERT_EQ(call(vorParameterLib::length, {text(s)})->get_int(), 6);
    for (int k = -2; k <= 8; ++k) {
        std::string head =
            call(vorParameterLib::slice, {text(s), number(0), number(k)})->get_string().str();
        std::string tail = call(vorParameterLib::slice, {text(s), number(k)})->get_string().str();
        EXPECT_EQ(head + tail, s) << k;
    }
    EXPECT_EQ(call(vorParameterLib::position, {text(s), text("z")})->get_int(), 4);
    EXPECT_EQ(call(vorParameterLib::substring, {text(s), number(2), number(2)})->get_string(),
              "€\xF0\x9D\x84\x9E\x80");

    // A delimiter sharing its lead byte with another character cuts only itself.
    EXPECT_EQ(shown(eval("tokens('xãyéz'; 'é')")), "{xãy; z}");
}

TEST(LibString, PositionsArgumentsSizesPathsAndMapKeys) {
    EXPECT_EQ(eval("substring('abc'; 2147483647; 2147483647)")->get_string(), "");
    EXPECT_EQ(eval("substring('abc'; -2147483648; 2147483647)")->get_string(), "");
    EXPECT_EQ(eval("substring('abc'; -1e300; 1e300)")->get_string(), "");
    EXPECT_EQ(eval("substring('abc'; 1; 1e300)")->get_string(), "bc");
    EXPECT_EQ(eval("slice('abc'; 1; 1e300)")->get_string(), "bc");
    EXPECT_EQ(shown(eval("slice({1; 2; 3}; -1e300; 1e300)")), "{1; 2; 3}");
    EXPECT_EQ(eval("position('abc'; ''; 1e20)")->get_int(), -1);
    EXPECT_EQ(eval("position('abc'; 'a'; -5)")->get_int(), 0);

    for (const char* bad :
         {"length()", "length('a'; 'b')", "ucase()", "lcase(5)", "trim({})", "position('a')",
          "position('a'; 'b'; 'c')", "replace('a'; 'b'; 3)", "substring('abc'; 'a'; 1)",
          "slice(5; 1)", "slice('abc'; 1; 2; 3)", "tokens('a'; 1)", "join({1; 2})", "join(5; ',')",
          "map_key(1)", "basename({})", "strip_new_lines()"})
        EXPECT_EQ(eval(bad)->subtype(), ERR_INVALID_ARGUMENTS) << bad;

    // Results that would exhaust memory are refused.
    const std::string many(1 << 16, 'a');
    const std::string big(1 << 12, 'b');
    EXPECT_EQ(call(vorParameterLib::replace, {text(many), text("a"), text(big)})->subtype(),
              ERR_DOMAIN);
    vorParameterPtr list(new vorParameterTempArray());
    for (int i = 0; i < 1 << 11; ++i)
        list->add(vorParameterKey(), text(big));
    EXPECT_EQ(
        call(vorParameterLibFunctions::join, {list, text(std::string(1 << 16, '-'))})->subtype(),
        ERR_DOMAIN);

    EXPECT_EQ(call(vorParameterLibFunctions::strip_new_lines, {text("a\r\nb\nc\r")})->get_string(),
              "abc");
    const struct {
        const char *path, *base, *dir;
    } paths[] = {{"", "", "."},           {"//", "/", "/"},     {"a/b//", "b", "a"},
                 {"a\\b/c", "c", "a\\b"}, {"C:", "C:", "C:"},   {"C:\\", "C:\\", "C:\\"},
                 {"C:x", "x", "C:"},      {"/a//b", "b", "/a"}, {"rel/", "rel", "."}};
    for (const auto& p : paths) {
        EXPECT_EQ(call(vorParameterLib::basename, {text(p.path)})->get_string(), p.base) << p.path;
        EXPECT_EQ(call(vorParameterLib::dirname, {text(p.path)})->get_string(), p.dir) << p.path;
    }

    for (const std::string& s :
         {std::string(""), std::string("-1"), std::string("7abc"), std::string("a.b[2]"),
          std::string("$x"), std::string("  "), std::string("é-ü"), std::string("\xFF\x80"),
          std::string(5000, 'x'), std::string(4095, 'a') + "€"}) {
        utString name = call(vorParameterLibFunctions::map_key, {text(s)})->get_string();
        vorParameterKey key(name);
        EXPECT_EQ(key.type(), TYPE_MAP) << s;
        EXPECT_EQ(key.first(), name) << s;
        EXPECT_TRUE(key.remainder_str().empty()) << s;
        EXPECT_LE(name.size(), vorParameterKeyImpl::max_cached_length) << s;
        EXPECT_EQ(call(vorParameterLibFunctions::map_key, {text(name.str())})->get_string(), name);
    }
}

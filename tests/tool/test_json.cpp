// vorparam convert's JSON: saved files survive the trip to JSON and back
// byte for byte, JSON survives the trip through the saved form unchanged,
// and JSON the saved form cannot hold is refused with the place named.
#include "json_convert.h"

#include "../support/random_tree.h"
#include "../support/saved_file.h"

#include "../support/prelude.h"

namespace {

std::string json_of(const vorParameterOpenRoot& root) {
    std::ostringstream out;
    std::string error;
    EXPECT_TRUE(vorparam::write_tree_json(root, out, error)) << error;
    return out.str();
}

/// The error that converting `json` to a tree gives ("" when it converts).
std::string refusal(const std::string& json) {
    std::string error;
    const std::unique_ptr<vorParameterOpenRoot> root = vorparam::tree_from_json(json, error);
    EXPECT_EQ(root == nullptr, !error.empty());
    return error;
}

std::string document(const std::string& body) {
    return R"({"type": "machining", "version": 4, "body": )" + body + "}";
}

TEST(ToolJson, RandomTreesSurviveBothWays) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TreeMaker maker(seed);
        vorParameterOpenRoot original("machining", 7);
        maker.fill(original, 0);
        std::ostringstream saved;
        vorParameterSerializer serializer;
        ASSERT_EQ(serializer.save(original, saved), SERIAL_OK);
        const std::unique_ptr<vorParameterOpenRoot> loaded = open_saved(saved.str(), SERIAL_OK);

        const std::string json = json_of(*loaded);
        std::string error;
        const std::unique_ptr<vorParameterOpenRoot> back = vorparam::tree_from_json(json, error);
        ASSERT_TRUE(back) << error << '\n' << json;
        EXPECT_EQ(saved_body(*back), saved_body(original));
        EXPECT_EQ(back->version(), 7);
        EXPECT_EQ(json_of(*back), json);
    }
}

TEST(ToolJson, TheFormAsDocumented) {
    // Definitions with every field, an empty slot, references, an escape.
    const std::string json = document(R"({
    "passes": ["1", null, "3"],
    "depths": {"$value": ["2"], "$definition": {"type": "LI", "description": "Step depths"}},
    "base": {"$definition": {"type": "&"}, "$value": "machining:&passes"},
    "lk": {"$definition": {"type": "R[L]", "lock": "000000000000000000000000000000ab"},
           "$value": "5"},
    "name": "Flat \"6 mm\"\n\u00e9"
  })");
    std::string error;
    const std::unique_ptr<vorParameterOpenRoot> root = vorparam::tree_from_json(json, error);
    ASSERT_TRUE(root) << error;
    EXPECT_EQ(saved_body(*root),
              "\n{\n\t\"passes\" : (\n\t\t\"1\",\n\t\t,\n\t\t\"3\"\n\t),"
              "\n\t\"depths\" \"LI\" \"Step depths\" : (\n\t\t\"2\"\n\t),"
              "\n\t\"base\" \"&\" \"\" : \"machining:&passes\","
              "\n\t\"lk\" \"R[L]\" \"\" \"000000000000000000000000000000ab\" : \"5\","
              "\n\t\"name\" : \"Flat \\\"6 mm\\\"\n\xc3\xa9\"\n}");
    EXPECT_TRUE(root->lookup_member(vorParameterKey("lk"))->is_locked());
}

TEST(ToolJson, WordsOfAnyUnicodeTextSurvive) {
    // Quotes, backslashes and control characters (NUL too) are escaped
    // differently by the saved form and by JSON; both must give them back.
    const std::string odd =
        std::string("\\\"q\"b\\t\tn\nz") + std::string(1, '\0') + "\x01\xe2\x86\x92";
    std::string escaped;
    for (const char c : odd) {
        if (c == '"' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    const std::string saved = "{\"type\":\"m\\\"x\",\"version\":\"-3\",\"time\":\"0\"}"
                              "{\"\xc3\xa9\" \"S\" \"" +
                              escaped + "\" : \"" + escaped + "\"}";
    const std::unique_ptr<vorParameterOpenRoot> root = open_saved(saved, SERIAL_OK);
    const std::string json = json_of(*root);
    std::string error;
    const std::unique_ptr<vorParameterOpenRoot> back = vorparam::tree_from_json(json, error);
    ASSERT_TRUE(back) << error << json;
    EXPECT_EQ(saved_body(*back), saved_body(*root));
    EXPECT_EQ(back->get_root_type().str(), "m\"x");
    EXPECT_EQ(back->version(), -3);
}

TEST(ToolJson, MalformedOrUnholdableJsonNamesWhere) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "1:1: syntax error"},
        {document(R"({"a": "1",})"), "1:55: syntax error while parsing object key"},
        {R"({"type": "m", "version": 1e400, "body": {}})", "1:30: number overflow parsing '1e400'"},
        {std::string(100000, '['), "nested deeper than 130 levels"},
        {"[]", "the document must be an object"},
        {R"({"type": "m", "body": {}})", "the document needs a \"version\""},
        {R"({"type": "m", "version": 4, "body": {}, "time": "0"})", "/time: the document has only"},
        {R"({"type": 1, "version": 4, "body": {}})", "/type: the tree's type is a string"},
        {R"({"type": "m", "version": 2147483648, "body": {}})", "/version: the version is a whole"},
        {R"({"type": "m", "version": 1.5, "body": {}})", "/version: the version is a whole"},
        {R"({"type": "m", "version": 4, "body": []})", "/body: the body is an object"},
        {document(R"({"tool": {"d": 6}})"), "/body/tool/d: a value is a string"},
        {document(R"({"a": null})"), "/body/a: null stands only for an empty slot"},
        {document(R"({"a": "1", "a": "2"})"), "/body/a: appears twice"},
        {document(R"({"a": "1", "A": "2"})"), "/body/A: differs from \"a\" only in letter case"},
        {document(R"({"$a": "1"})"), "/body/$a: a name does not begin with \"$\""},
        {document(R"({"a/b~": {"$definition": {"description": "x"}, "$value": "1"}})"),
         "/body/a~1b~0/$definition: a definition needs a \"type\""},
        {document(R"({"a": {"$definition": "I", "$value": "1"}})"),
         "/body/a/$definition: a definition is an object"},
        {document(R"({"a": {"$definition": {"type": "I"}}})"), "/body/a: a defined member needs"},
        {document(R"({"a": {"$definition": {"type": "I"}, "$value": "1", "x": "2"}})"),
         "/body/a/x: a defined member has only"},
        {document(R"({"a": {"$definition": {"type": "Q"}, "$value": "1"}})"),
         "/body/a/$definition/type: no parameter is made from the type word \"Q\""},
        {document(R"({"a": {"$definition": {"type": "I", "lock": "12"}, "$value": "1"}})"),
         "/body/a/$definition/lock: a lock id is 32 hexadecimal digits"},
        {document(R"({"a": ["x", {"$definition": {"type": "I"}, "$value": "1"}]})"),
         "/body/a/1: an array's slots hold values"},
        // What the saved form reads differently, or not at all.
        {document(R"({"a": ["1", null]})"),
         "/body/a/1: the saved form cannot hold this as it stands"},
        {document(R"({"a": ["x", ",", "y"]})"), "/body/a/1: the saved form cannot"},
        {document(R"({"a": {"$definition": {"type": "M"}, "$value": "7"}})"),
         "/body/a/$value: the saved form cannot hold this as it stands (it reads back as a map"},
        {document(R"({"a": "x", "b": "{"})"), "/body/b: the saved form cannot hold this"},
    };
    for (const auto& [json, expected] : cases) {
        SCOPED_TRACE(json.substr(0, 120));
        const std::string error = refusal(json);
        if (expected.empty())
            EXPECT_EQ(error, "");
        else
            EXPECT_NE(error.find(expected), std::string::npos) << error;
    }
}

TEST(ToolJson, BlocksNestAsDeepAsASavedFileAllows) {
    auto nested = [](int depth) {
        std::string body = R"("1")";
        for (int i = 1; i < depth; ++i)
            body = R"({"a": )" + body + "}";
        return document(R"({"a": )" + body + "}");
    };
    EXPECT_EQ(refusal(nested(64)), "");
    EXPECT_NE(refusal(nested(65)).find("nested deeper than the 64 levels"), std::string::npos);

    // A text JSON cannot hold: the saved form keeps bytes, JSON only UTF-8.
    const std::unique_ptr<vorParameterOpenRoot> root = open_saved(
        "{\"type\":\"m\",\"version\":\"1\",\"time\":\"0\"}{\"t\":{\"a\":\"\xff\"}}", SERIAL_OK);
    std::ostringstream out;
    std::string error;
    EXPECT_FALSE(vorparam::write_tree_json(*root, out, error));
    EXPECT_EQ(error, "/body/t/a: a text that is not UTF-8, which JSON cannot hold");
    EXPECT_EQ(out.str(), "");
}

} // namespace

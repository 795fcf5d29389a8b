// Saving and loading trees as text: the layout written, the reader's grammar,
// definitions and references, inclusion rules, results and errors.

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterRef.h"
#include "vorparameter/persistence/vorParameterOpenRoot.h"
#include "vorparameter/persistence/vorParameterSerializer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// A host root of version 4 with an updater that records its calls.
class MachiningRoot : public vorParameterRoot {
public:
    struct Updater : vorParameterUpdater {
        void update(int version, vorParameterRoot&) override { updated_from = version; }
        void clear_unrecognised_pars() override { ++cleared; }
        int updated_from = -1;
        int cleared = 0;
    };

    MachiningRoot()
        : vorParameterRoot("machining") {}
    int version() const override { return 4; }
    vorParameterUpdater* get_updater() override { return &updater; }
    Updater updater;
};

vorParameterPtr number(const char* text, vorParameterSubType subtype = SUB_REAL) {
    vorParameterPtr par(new vorParameterNumeric(subtype, vorDimensions(0, 0, 0), 0.0));
    par->set_string(text);
    return par;
}

vorParameterPtr text(const char* value) {
    return vorParameterPtr(new vorParameterString(value));
}

/// The body of a saved file: everything after the header block.
std::string body_of(const std::string& file) {
    const std::size_t end = file.find('}');
    return end == std::string::npos ? file : file.substr(end + 1);
}

std::string save(vorParameterSerializer& serializer, const vorParameterRoot& root,
                 vorParameterSerialError expected = SERIAL_OK) {
    std::ostringstream out;
    EXPECT_EQ(serializer.save(root, out), expected);
    return out.str();
}

vorParameterSerialError load(vorParameterSerializer& serializer, vorParameterRoot& root,
                             const std::string& text, int new_only = 0) {
    std::istringstream in(text);
    return serializer.load(root, in, new_only);
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

const char* const machining_header =
    "{\n\t\"type\" : \"machining\",\n\t\"version\" : \"4\",\n\t\"time\" : \"1\"\n}";

TEST(Serializer, WritesTheLayoutByteForByte) {
    MachiningRoot root;
    root.add("tolerance", number("0.01"));
    vorParameterPtr passes = root.add("passes", vorParameterPtr(new vorParameterArray()));
    passes->add(vorParameterKey(), number("1", SUB_INT));
    passes->add(vorParameterKey(), number("2", SUB_INT))->set_active("0");
    passes->add(vorParameterKey(), number("3", SUB_INT));
    vorParameterPtr depths =
        root.add("depths", vorParameterSerializer::get_par_from_type("LI", "Step depths"));
    depths->set_defined_from_file(true);
    depths->add(vorParameterKey(), number("2"));
    depths->add(vorParameterKey(), number("4"));
    vorParameterPtr base = root.add("base", vorParameterPtr(new vorParameterRef("tolerance")));
    base->set_defined_from_file(true);
    static_cast<vorParameterRef&>(*base).set_ref_root_type("process");
    root.add("note", text("say \"hi\" \\ bye"));
    root.add("empty", vorParameterPtr(new vorParameterMap()));

    vorParameterSerializer serializer;
    const std::string file = save(serializer, root);
    EXPECT_EQ(file.substr(0, file.find("\"time\"")),
              "{\n\t\"type\" : \"machining\",\n\t\"version\" : \"4\",\n\t");
    EXPECT_EQ(body_of(file),
              "\n{\n"
              "\t\"tolerance\" : \"0.01\",\n"
              "\t\"passes\" : (\n\t\t\"1\",\n\t\t,\n\t\t\"3\"\n\t),\n"
              "\t\"depths\" \"LI\" \"Step depths\" : (\n\t\t\"2\",\n\t\t\"4\"\n\t),\n"
              "\t\"base\" \"&\" \"\" : \"process:&tolerance\",\n"
              "\t\"note\" : \"say \\\"hi\\\" \\\\ bye\",\n"
              "\t\"empty\" : {\n\t}\n"
              "}");

    serializer.set_compact_mode(1);
    EXPECT_EQ(body_of(save(serializer, root)),
              "{\"tolerance\":\"0.01\",\"passes\":(\"1\",,\"3\"),\"depths\"\"LI\"\"Step depths\":("
              "\"2\",\"4\"),\"base\"\"&\"\"\":\"process:&tolerance\",\"note\":\"say \\\"hi\\\" "
              "\\\\ bye\",\"empty\":{}}");
}

TEST(Serializer, LoadsDefinitionsValuesAndReferences) {
    MachiningRoot root;
    root.add("tolerance", number("0"));
    vorParameterPtr passes = root.add("passes", vorParameterPtr(new vorParameterArray()));
    for (int i = 0; i < 3; ++i)
        passes->add(vorParameterKey(), number("0", SUB_INT));
    vorParameterSerializer serializer;
    const std::string file = std::string(machining_header) +
                             "\n{ \"tolerance\" : \"0.02\", \"passes\" : ( \"7\" , , \"9\" , ),"
                             "\"depths\" \"LI\" \"Step depths\" : (\"2\", \"4\"),"
                             "\"base\" \"&\" \"\" : \"process:&tolerance\","
                             "\"quote\" \"S\" \"a \\\"b\\\"\" : \"x\\\\y\\\"\","
                             "\"feed\" \"R[L/T]\" : \"1200\", \"nosuch\" : \"5\" }";
    EXPECT_EQ(load(serializer, root, file), SERIAL_SOME_FAILED);
    EXPECT_EQ(serializer.failed_pars(), utStringcoSList{"nosuch"});
    EXPECT_EQ(root["tolerance"]->get_string(), "0.02");
    EXPECT_EQ(root["passes[0]"]->get_string(), "7");
    EXPECT_EQ(root["passes[1]"]->get_string(), "0"); // an empty slot keeps its element
    EXPECT_EQ(root["passes[2]"]->get_string(), "9");
    vorParameterPtr depths = root["depths"];
    EXPECT_EQ(depths->subtype(), SUB_LIST);
    EXPECT_EQ(depths->get_desc(), "Step depths");
    EXPECT_TRUE(depths->is_defined_from_file());
    EXPECT_EQ(depths->size(), 2);
    EXPECT_EQ(root["depths[1]"]->get_int(), 4);
    const vorParameter* base = root["base"].get();
    ASSERT_TRUE(base->is_ref());
    EXPECT_EQ(static_cast<const vorParameterRef*>(base)->get_ref_root_type(), "process");
    EXPECT_EQ(static_cast<const vorParameterRef*>(base)->get_ref_string(), "tolerance");
    EXPECT_EQ(root["quote"]->get_desc(), "a \"b\"");
    EXPECT_EQ(root["quote"]->get_string(), "x\\y\"");
    EXPECT_EQ(root["feed"]->subtype(), SUB_REAL);
    EXPECT_EQ(static_cast<const vorParameterNumeric&>(*root["feed"]).get_dim(),
              vorDimensions(0, 1, -1));
    EXPECT_EQ(serializer.loaded_pars().front(), "tolerance");
    EXPECT_EQ(root.updater.updated_from, -1); // same version: no update

    // Saved again, the defined members come back with their definitions.
    const std::string again = body_of(save(serializer, root));
    EXPECT_NE(again.find("\"depths\" \"LI\" \"Step depths\" : ("), std::string::npos);
    EXPECT_NE(again.find("\"quote\" \"S\" \"a \\\"b\\\"\" : \"x\\\\y\\\"\""), std::string::npos);
    EXPECT_NE(again.find("\"feed\" \"R[L/T]\" \"\" : \"1200\""), std::string::npos);
}

TEST(Serializer, HeaderDecidesTypeVersionAndUpdate) {
    vorParameterSerializer serializer;
    const auto file = [](const char* type, const char* version) {
        return std::string("{\"type\":\"") + type + "\",\"version\":\"" + version +
               "\",\"time\":\"0\"}{\"a\":\"1\"}";
    };
    MachiningRoot root;
    root.add("a", number("0"));
    EXPECT_EQ(load(serializer, root, file("turning", "4")), SERIAL_WRONG_TYPE);
    EXPECT_EQ(load(serializer, root, file("machining", "5")), SERIAL_NEWER_VERSION);
    EXPECT_EQ(root["a"]->get_string(), "0"); // neither changed anything
    EXPECT_EQ(load(serializer, root, file("machining", "x")), SERIAL_SYNTAX_ERROR);
    EXPECT_EQ(load(serializer, root, file("machining", "2")), SERIAL_OK);
    EXPECT_EQ(root["a"]->get_string(), "1");
    EXPECT_EQ(root.updater.updated_from, 2);
    EXPECT_EQ(root.updater.cleared, 1);

    vorParameterFileHeader header;
    std::istringstream in(file("turning", "7"));
    EXPECT_EQ(vorParameterSerializer::read_header(in, header), SERIAL_OK);
    EXPECT_EQ(header.type, "turning");
    EXPECT_EQ(header.version, 7);
}

TEST(Serializer, MalformedInputStopsWithItsErrorAndOffset) {
    vorParameterSerializer serializer;
    MachiningRoot root;
    root.add("a", number("0"));
    const std::string start = std::string(machining_header);
    struct Case {
        std::string text;
        vorParameterSerialError error;
        std::size_t offset;
    };
    const Case cases[] = {
        {"", SERIAL_STREAM_ERROR, 0},
        {std::string(64, '\0'), SERIAL_SYNTAX_ERROR, 0},
        {start + "{\"a\" : \"1", SERIAL_STREAM_ERROR, start.size() + 7},
        {start + "{\"a\" : \"1\"", SERIAL_STREAM_ERROR, start.size() + 10},
        {start + "{\"a\" = \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 5},
        {start + "{\"a\" : \"1\" \"b\"}", SERIAL_SYNTAX_ERROR, start.size() + 11},
        {start + "{\"b\" \"Q\" : \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 5},
        {start + "{\"b\" \"\" : (\"1\")}", SERIAL_SYNTAX_ERROR, start.size() + 5},
        {start + "{\"b\" \"V0I\" : \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 5},
        {start + "{\"b\" \"V999999999I\" : \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 5},
        {start + "{\"a\" \"I\" \"\" \"zz\" : \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 12},
        {start + "{\"x.y\" \"I\" : \"1\"}", SERIAL_SYNTAX_ERROR, start.size() + 1},
        {start + repeated("{\"k\":", 200000), SERIAL_SYNTAX_ERROR,
         start.size() + 5 * vorParameterSerializer::max_nesting},
        {start + std::string(200000, '('), SERIAL_SYNTAX_ERROR,
         start.size() + vorParameterSerializer::max_nesting},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text.substr(start.size() < c.text.size() ? start.size() : 0, 40));
        EXPECT_EQ(load(serializer, root, c.text), c.error);
        EXPECT_EQ(serializer.error_offset(), c.offset);
    }
    std::istringstream failed;
    failed.setstate(std::ios::failbit);
    EXPECT_EQ(serializer.load(root, failed), SERIAL_STREAM_ERROR);
}

TEST(Serializer, MembersNamedLikeFunctionsOrBuiltInsAreMembers) {
    const std::string body = "{\"angle\":\"30\",\"sqrt\":\"2\",\"name\":\"x\",\"roottype\":\"z\","
                             "\"rootpar\" \"I\" : \"3\"}";
    std::istringstream in("{\"type\":\"machining\",\"version\":\"0\",\"time\":\"0\"}" + body);
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    vorParameterSerialError error = SERIAL_STREAM_ERROR;
    std::unique_ptr<vorParameterOpenRoot> loaded =
        vorParameterOpenRoot::load(in, serializer, error);
    EXPECT_EQ(error, SERIAL_OK);
    EXPECT_EQ(body_of(save(serializer, *loaded)),
              "{\"angle\":\"30\",\"sqrt\":\"2\",\"name\":\"x\",\"roottype\":\"z\","
              "\"rootpar\"\"I\"\"\":\"3\"}");
}

TEST(Serializer, InclusionRulesPickKeysByTheirDeepestNamedPrefix) {
    vorParameterSerializer serializer;
    const auto included = [&](const char* key) { return serializer.should_include(key); };
    serializer.exclude_pars().insert("a.b");
    serializer.exclude_pars().insert("p[1]");
    EXPECT_TRUE(included("a"));
    EXPECT_FALSE(included("a.b"));
    EXPECT_FALSE(included("a.b.c"));
    EXPECT_TRUE(included("a.bc"));
    EXPECT_FALSE(included("p[1].x"));
    EXPECT_TRUE(included("p[10]"));

    serializer.include_pars().insert("a.b.c");
    EXPECT_TRUE(included("a"));       // an ancestor of something included
    EXPECT_TRUE(included("a.b"));     // likewise, though excluded itself
    EXPECT_TRUE(included("a.b.c.d")); // the deepest prefix named decides
    EXPECT_FALSE(included("a.b.x"));
    EXPECT_FALSE(included("x"));
    serializer.global_exclude_pars().insert("a");
    EXPECT_FALSE(included("a"));
    EXPECT_TRUE(included("a.b"));

    vorParameterSerializer all;
    all.set_exclude_all(1);
    EXPECT_FALSE(all.should_include("a"));
    all.include_pars().insert("a");
    all.exclude_pars().insert("a");
    EXPECT_TRUE(all.should_include("a")); // an include wins at the same depth
    // exclude_all excludes anew at every level: each one must be included.
    EXPECT_FALSE(all.should_include("a.b"));
}

TEST(Serializer, ExcludedMembersAndElementsAreNeitherSavedNorLoaded) {
    MachiningRoot root;
    root.add("keep", number("1"));
    root.add("drop", number("2"));
    vorParameterPtr array = root.add("array", vorParameterPtr(new vorParameterArray()));
    vorParameterPtr list = root.add("list", vorParameterSerializer::get_par_from_type("LI", ""));
    for (const char* value : {"1", "2", "3"}) {
        array->add(vorParameterKey(), number(value, SUB_INT));
        list->add(vorParameterKey(), number(value, SUB_INT));
    }
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    for (const char* key : {"drop", "array[1]", "list[1]"})
        serializer.exclude_pars().insert(key);
    const std::string file = save(serializer, root);
    EXPECT_EQ(body_of(file), "{\"keep\":\"1\",\"array\":(\"1\",,\"3\"),\"list\":(\"1\",\"3\")}");

    root["keep"]->set_string("5");
    root["drop"]->set_string("5");
    const std::string changed =
        std::string(machining_header) + "{\"keep\":\"7\",\"drop\":\"7\",\"array\":(\"7\",\"7\")}";
    EXPECT_EQ(load(serializer, root, changed), SERIAL_OK);
    EXPECT_EQ(root["keep"]->get_string(), "7");
    EXPECT_EQ(root["drop"]->get_string(), "5");
    EXPECT_EQ(root["array[0]"]->get_string(), "7");
    EXPECT_EQ(root["array[1]"]->get_string(), "2");
}

TEST(Serializer, SettingsChangeWhatIsWritten) {
    MachiningRoot root;
    root.add("a", number("2"));
    root.add("twice", number("a*2"));
    root.add("hidden", number("1"))->set_active("0");
    root.add("bad", number("nosuch"));
    root.add("r", vorParameterPtr(new vorParameterRef("a")));
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    EXPECT_EQ(body_of(save(serializer, root)),
              "{\"a\":\"2\",\"twice\":\"a*2\",\"bad\":\"nosuch\",\"r\":\"&a\"}");
    serializer.set_evaluate(1);
    serializer.set_save_inactive(1);
    serializer.set_save_invalid(0);
    serializer.set_follow_refs(1);
    EXPECT_EQ(body_of(save(serializer, root)),
              "{\"a\":\"2\",\"twice\":\"4\",\"hidden\":\"1\",\"r\":\"2\"}");
}

TEST(Serializer, NewOnlyKeepsTheValuesOfDefinedMembersThatExist) {
    // Only defined members are skipped when they exist: bare values always
    // name parameters that exist, and are loaded as usual.
    MachiningRoot root;
    vorParameterPtr old = root.add("old", vorParameterSerializer::get_par_from_type("I", ""));
    old->set_string("1");
    root.add("plain", number("1"));
    vorParameterSerializer serializer;
    const std::string file = std::string(machining_header) +
                             "{\"old\" \"I\" : \"9\", \"new\" \"I\" : \"9\", \"plain\" : \"9\"}";
    EXPECT_EQ(load(serializer, root, file, 1), SERIAL_OK);
    EXPECT_EQ(root["old"]->get_int(), 1);
    EXPECT_EQ(root["new"]->get_int(), 9);
    EXPECT_EQ(root["plain"]->get_int(), 9);
}

TEST(Serializer, LockedParametersThatDifferReportTheirLockIds) {
    MachiningRoot root;
    const vorUniqueId id = vorUniqueId::generate();
    root.set_id(vorRefToObjectId(id));
    vorParameterPtr same = root.add("same", vorParameterSerializer::get_par_from_type("I", ""));
    vorParameterPtr other = root.add("other", vorParameterSerializer::get_par_from_type("I", ""));
    for (vorParameterPtr par : {same, other}) {
        par->set_defined_from_file(true);
        par->set_string("3");
        par->lock(1);
    }
    vorParameterSerializer serializer;
    const std::string file = save(serializer, root);
    EXPECT_NE(file.find("\"same\" \"I\" \"\" \"" + id.hex_string().str() + "\" : \"3\""),
              std::string::npos);

    std::string changed = file;
    changed.replace(changed.rfind("\"3\""), 3, "\"4\"");
    EXPECT_EQ(load(serializer, root, changed), SERIAL_OK);
    ASSERT_EQ(serializer.get_locked_items().size(), 1u);
    EXPECT_EQ(*serializer.get_locked_items().begin(), vorRefToObjectId(id));
    EXPECT_EQ(other->get_int(), 3); // a locked parameter keeps its value
}

TEST(Serializer, ArchiveRefusesALengthBeyondItsLimit) {
    std::istringstream huge(std::string("\xff\xff\xff\xff\xff\xff\xff\x7f", 8));
    CArchive lying(huge);
    EXPECT_EQ(lying.read_string(), "");
    EXPECT_TRUE(lying.failed());
    MachiningRoot root;
    vorParameterSerializer serializer;
    EXPECT_EQ(serializer.load(root, lying), SERIAL_STREAM_ERROR);
}

/// Records whether a load was marked while it handed over a value.
struct WatchingLoader : vorParameterLoader {
    using vorParameterLoader::vorParameterLoader;
    int load_par(const vorParameterKey&, const utString&) override {
        seen = vorParameterSerializerCtrl::serializing_parameters();
        return 0;
    }
    static inline int seen = 0;
};

struct WatchedRoot : MachiningRoot {
    std::unique_ptr<vorParameterLoader> create_loader(int) override {
        return std::make_unique<WatchingLoader>(*this);
    }
};

TEST(Serializer, LoadMarksItsDurationAndTheTemplateIsShared) {
    WatchedRoot root;
    EXPECT_EQ(load(vorParameterSerializer::get_template_serializer(), root,
                   std::string(machining_header) + "{\"a\":\"1\"}"),
              SERIAL_OK);
    EXPECT_EQ(WatchingLoader::seen, 1);
    EXPECT_EQ(vorParameterSerializerCtrl::serializing_parameters(), 0);
    EXPECT_EQ(&vorParameterSerializer::get_template_serializer(),
              &vorParameterSerializer::get_template_serializer());
}

} // namespace

// Saving and loading trees as text: the layout written, the reader's grammar,
// definitions and references, inclusion rules, results and errors.

#include "../support/saved_file.h"

#include "../support/prelude.h"

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

TEST(Serializer, LoadsDefinitionsValuesAndReferences) {
    MachiningRoot root;
    root.add("tolerance", numeric("0"));
    vorParameterPtr passes = root.add("passes", vorParameterPtr(new vorParameterArray()));
    for (int i = 0; i < 3; ++i)
        passes->add(vorParameterKey(), numeric("0", SUB_INT));
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
    const std::string again = saved_body(save(serializer, root));
    EXPECT_NE(again.find("\"depths\" \"LI\" \"Step depths\" : ("), std::string::npos);
    EXPECT_NE(again.find("\"quote\" \"S\" \"a \\\"b\\\"\" : \"x\\\\y\\\"\""), std::string::npos);
    EXPECT_NE(again.find("\"feed\" \"R[L/T]\" \"\" : \"1200\""), std::string::npos);
}

TEST(Serializer, HeaderDecidesTypeVersionAndUpdateAndMalformedInputStopsAtItsError) {
    vorParameterSerializer serializer;
    const auto file = [](const char* type, const char* version) {
        return std::string("{\"type\":\"") + type + "\",\"version\":\"" + version +
               "\",\"time\":\"0\"}{\"a\":\"1\"}";
    };
    MachiningRoot root;
    root.add("a", numeric("0"));
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

    // Malformed input stops with its error and offset.
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

TEST(Serializer, ReadBackBodiesSaveAsRead) {
    // Members named like functions or built-ins are members. A value position
    // reads any word but "{" and "(" as text, so a member whose value is "}"
    // or "," reads back unchanged; only in an array does a "," or ")" word act
    // as punctuation. (A value of exactly "}" or "," is sometimes said never
    // to read back; the reading rules say otherwise, and they decide.)
    const struct {
        const char* body;
        vorParameterSerialError error;
        const char* saved; // compact; null where only the load's result counts
    } cases[] = {
        {R"({"angle":"30","sqrt":"2","name":"x","roottype":"z","rootpar" "I" : "3"})", SERIAL_OK,
         R"({"angle":"30","sqrt":"2","name":"x","roottype":"z","rootpar""I""":"3"})"},
        {R"({"a":"}","b":","})", SERIAL_OK, R"({"a":"}","b":","})"},
        {R"({"a":("x",",","y")})", SERIAL_OK, R"({"a":("x",,,"y")})"},
        {R"({"a":"1","}":"2","b":"3"})", SERIAL_OK, R"({"a":"1"})"},
        {R"({"a" "S" ":" : "v"})", SERIAL_SYNTAX_ERROR, nullptr},
    };
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    for (const auto& c : cases) {
        const std::unique_ptr<vorParameterOpenRoot> root =
            open_saved(R"({"type":"t","version":"0","time":"0"})" + std::string(c.body), c.error);
        const std::string body = saved_body(save(serializer, *root));
        if (c.saved) {
            EXPECT_EQ(body, c.saved);
        }
    }
}

TEST(Serializer, InclusionRulesPickKeysByTheirDeepestNamedPrefix) {
    struct Case {
        std::vector<const char*> include, exclude, global;
        int exclude_all;
        std::vector<const char*> saved, left_out;
    };
    const std::vector<Case> cases = {
        // The worked examples of docs/file-format.md.
        {{}, {"tool"}, {}, 0, {"tolerance", "passes", "passes[1]"}, {"tool", "tool.name"}},
        {{"tool.diameter"}, {}, {}, 0, {"tool", "tool.diameter"}, {"tool.name", "tolerance"}},
        {{"tool"}, {"tool.name"}, {}, 0, {"tool", "tool.library"}, {"tool.name", "passes"}},
        {{"tool.diameter"}, {"tool"}, {}, 0, {"tool", "tool.diameter"}, {"tool.name", "holder"}},
        {{"tool.diameter"}, {}, {"tool"}, 0, {}, {"tool", "tolerance"}},
        {{"tool"}, {}, {}, 1, {"tool"}, {"tool.name", "tool.diameter", "tolerance"}},
        {{"tool", "tool.name"}, {}, {}, 1, {"tool", "tool.name"}, {"tool.library", "passes"}},
        // Prefixes are whole names and indices.
        {{}, {"a.b", "p[1]"}, {}, 0, {"a", "a.bc", "p[10]"}, {"a.b", "a.b.c", "p[1].x"}},
        // An ancestor of something included is included, though excluded
        // itself; below that, the deepest prefix named decides.
        {{"a.b.c"}, {"a.b", "p[1]"}, {}, 0, {"a", "a.b", "a.b.c.d"}, {"a.b.x", "x"}},
        {{"a.b.c"}, {"a.b", "p[1]"}, {"a"}, 0, {"a.b"}, {"a"}},
        {{}, {}, {}, 1, {}, {"a"}},
        // An include wins at the same depth; exclude_all excludes anew at
        // every level, so each one must be included.
        {{"a"}, {"a"}, {}, 1, {"a"}, {"a.b"}},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const Case& c = cases[i];
        vorParameterSerializer serializer;
        for (const char* key : c.include)
            serializer.include_pars().insert(key);
        for (const char* key : c.exclude)
            serializer.exclude_pars().insert(key);
        for (const char* key : c.global)
            serializer.global_exclude_pars().insert(key);
        serializer.set_exclude_all(c.exclude_all);
        for (const char* key : c.saved)
            EXPECT_TRUE(serializer.should_include(key)) << "row " << i << ": " << key;
        for (const char* key : c.left_out)
            EXPECT_FALSE(serializer.should_include(key)) << "row " << i << ": " << key;
    }
}

TEST(Serializer, ExcludedMembersAndElementsAreNeitherSavedNorLoaded) {
    MachiningRoot root;
    root.add("keep", numeric("1"));
    root.add("drop", numeric("2"));
    vorParameterPtr array = root.add("array", vorParameterPtr(new vorParameterArray()));
    vorParameterPtr list = root.add("list", vorParameterSerializer::get_par_from_type("LI", ""));
    for (const char* value : {"1", "2", "3"}) {
        array->add(vorParameterKey(), numeric(value, SUB_INT));
        list->add(vorParameterKey(), numeric(value, SUB_INT));
    }
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    for (const char* key : {"drop", "array[1]", "list[1]"})
        serializer.exclude_pars().insert(key);
    const std::string file = save(serializer, root);
    EXPECT_EQ(saved_body(file), "{\"keep\":\"1\",\"array\":(\"1\",,\"3\"),\"list\":(\"1\",\"3\")}");

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
    root.add("a", numeric("2"));
    root.add("twice", numeric("a*2"));
    root.add("hidden", numeric("1"))->set_active("0");
    root.add("bad", numeric("nosuch"));
    root.add("r", reference("a"));
    vorParameterSerializer serializer;
    serializer.set_compact_mode(1);
    EXPECT_EQ(saved_body(save(serializer, root)),
              "{\"a\":\"2\",\"twice\":\"a*2\",\"bad\":\"nosuch\",\"r\":\"&a\"}");
    serializer.set_evaluate(1);
    serializer.set_save_inactive(1);
    serializer.set_save_invalid(0);
    serializer.set_follow_refs(1);
    EXPECT_EQ(saved_body(save(serializer, root)),
              "{\"a\":\"2\",\"twice\":\"4\",\"hidden\":\"1\",\"r\":\"2\"}");
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

// Keeps docs/file-format.md true: loads every example file it links with the
// host root it describes and checks the result its table states, and checks
// that saving that tree gives the page's main example byte for byte.

#include "../support/doc_examples.h"

#include "../support/prelude.h"

#include <map>

namespace {

const std::string examples_dir = "docs/examples/file-format/";

// The example host of the page's section "Saving and loading from C++", as
// the page shows it.
class MachiningLoader : public vorParameterLoader {
public:
    MachiningLoader(vorParameterRoot& root, int version)
        : vorParameterLoader(root)
        , m_version(version) {}
    int load_par(const vorParameterKey& key, const utString& text) override {
        if (m_version < 3 && key.str() == "stepdown")
            return vorParameterLoader::load_par(vorParameterKey("stepover"), text);
        return vorParameterLoader::load_par(key, text);
    }

private:
    int m_version;
};

class MachiningUpdater : public vorParameterUpdater {
public:
    void update(int file_version, vorParameterRoot&) override { updated_from = file_version; }
    int updated_from = -1;
};

class MachiningRoot : public vorParameterRoot {
public:
    MachiningRoot()
        : vorParameterRoot("machining") {
        auto length = [](const char* text) {
            vorParameterPtr p(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 0.0));
            p->set_string(text);
            return p;
        };
        add("tolerance", length("0.01"));
        add("stepover", length("tool.diameter * 0.4"));
        vorParameterPtr tool(new vorParameterMap());
        tool->add("name", text("Flat \"6 mm\" mill"));
        tool->add("library", text("C:\\tools\\mills"));
        tool->add("diameter", length("6"));
        add("tool", tool);
        add("holder", reference("tool"));
        vorParameterPtr passes(new vorParameterArray());
        for (const char* text : {"1", "2", "3"}) {
            vorParameterPtr pass(new vorParameterNumeric(SUB_INT, DIM_NONE, 0.0));
            pass->set_string(text);
            passes->add("", pass);
        }
        passes["1"]->set_active("0"); // not saved: an empty slot
        add("passes", passes);
    }
    vorParameter* create_new() const override { return new MachiningRoot(*this); }
    int version() const override { return 4; }
    std::unique_ptr<vorParameterLoader> create_loader(int version) override {
        return std::make_unique<MachiningLoader>(*this, version);
    }
    vorParameterUpdater* get_updater() override { return &updater; }

    MachiningUpdater updater;
};

vorParameterSerialError load_example(vorParameterRoot& root, vorParameterSerializer& serializer,
                                     const std::string& file) {
    std::istringstream in(read_source_file(examples_dir + file));
    return serializer.load(root, in);
}

std::string save_text(const vorParameterRoot& root, vorParameterSerializer& serializer) {
    std::ostringstream out;
    EXPECT_EQ(serializer.save(root, out), SERIAL_OK);
    return out.str();
}

// The header's time is that of the save: blank its digits out.
std::string without_time(std::string text) {
    std::size_t at = text.find("\"time\"");
    if (at == std::string::npos)
        return text;
    std::size_t digits = text.find('"', text.find(':', at)) + 1;
    text.erase(digits, text.find('"', digits) - digits);
    return text;
}

std::vector<std::string> keys_of(const utStringcoSList& list) {
    std::vector<std::string> keys;
    for (const utString& key : list)
        keys.push_back(key.str());
    return keys;
}

} // namespace

TEST(FileFormatDocs, PageQuotesTheMainExampleAndItsCompactForm) {
    const std::string page = read_source_file("docs/file-format.md");
    const std::string ok = read_source_file(examples_dir + "ok.vor");
    ASSERT_FALSE(ok.empty());
    EXPECT_NE(page.find("```\n" + ok + "\n```"), std::string::npos);

    // Loading the main example into a fresh host root and saving it again
    // gives the same file; the compact form is the page's, bar its wrap.
    MachiningRoot root;
    vorParameterSerializer serializer;
    ASSERT_EQ(load_example(root, serializer, "ok.vor"), SERIAL_OK);
    EXPECT_TRUE(root["depths"]->is_defined_from_file());
    EXPECT_EQ(root["base"]->get_ref()->get_string().str(), root["tolerance"]->get_string().str());
    EXPECT_EQ(without_time(save_text(root, serializer)), without_time(ok));

    vorParameterSerializer following;
    following.set_follow_refs(1);
    EXPECT_NE(save_text(root, following).find("\"base\" \"R[L]\" \"\" : \"0.01\""),
              std::string::npos);

    serializer.set_compact_mode(1);
    const std::string compact = save_text(root, serializer);
    EXPECT_EQ(compact.find_first_of("\n\t"), std::string::npos);
    std::size_t shown = page.find("\n{\"type\":");
    ASSERT_NE(shown, std::string::npos);
    std::string shown_text = page.substr(shown + 1, page.find("\n```", shown) - shown - 1);
    shown_text.erase(shown_text.find('\n'), 1);
    EXPECT_EQ(without_time(compact), without_time(shown_text));

    // A root built by the host alone writes the same body without the
    // members only the file defines.
    MachiningRoot fresh;
    const std::string text = save_text(fresh, serializer);
    EXPECT_EQ(text.find("depths"), std::string::npos);
    EXPECT_NE(text.find("\"passes\":(\"1\",,\"3\")"), std::string::npos);
}

TEST(FileFormatDocs, EveryExampleFileGivesTheResultInThePagesTable) {
    const std::map<std::string, vorParameterSerialError> names = {
        {"SERIAL_OK", SERIAL_OK},
        {"SERIAL_SOME_FAILED", SERIAL_SOME_FAILED},
        {"SERIAL_WRONG_TYPE", SERIAL_WRONG_TYPE},
        {"SERIAL_STREAM_ERROR", SERIAL_STREAM_ERROR},
        {"SERIAL_SYNTAX_ERROR", SERIAL_SYNTAX_ERROR},
        {"SERIAL_NEWER_VERSION", SERIAL_NEWER_VERSION}};
    // Rows like: | [`ok.vor`](examples/file-format/ok.vor) | `SERIAL_OK` | ...
    std::istringstream page(read_source_file("docs/file-format.md"));
    int rows = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| [`", 0) != 0 || line.find(".vor`]") == std::string::npos)
            continue;
        const std::string file = line.substr(4, line.find('`', 4) - 4);
        std::size_t code = line.find("| `SERIAL_") + 3;
        const std::string result = line.substr(code, line.find('`', code) - code);
        ++rows;
        ASSERT_FALSE(read_source_file(examples_dir + file).empty()) << file;
        ASSERT_EQ(names.count(result), 1u) << file << ": " << result;
        MachiningRoot root;
        vorParameterSerializer serializer;
        EXPECT_EQ(load_example(root, serializer, file), names.at(result)) << file;
    }
    EXPECT_EQ(rows, 9);
}

TEST(FileFormatDocs, ExampleFilesLeaveTheTreeAsThePageSays) {
    vorParameterSerializer serializer;
    {
        MachiningRoot root;
        EXPECT_EQ(load_example(root, serializer, "some-failed.vor"), SERIAL_SOME_FAILED);
        EXPECT_EQ(keys_of(serializer.failed_pars()),
                  (std::vector<std::string>{"feedrate", "tool.flutes"}));
        EXPECT_EQ(root["tolerance"]->get_string().str(), "0.02");
        EXPECT_EQ(root["tool.diameter"]->get_string().str(), "8");
    }
    {
        MachiningRoot root;
        root["tolerance"]->set_string("0.05");
        EXPECT_EQ(load_example(root, serializer, "wrong-type.vor"), SERIAL_WRONG_TYPE);
        EXPECT_EQ(root["tolerance"]->get_string().str(), "0.05");
    }
    {
        MachiningRoot root;
        root["tolerance"]->set_string("0.05");
        EXPECT_EQ(load_example(root, serializer, "truncated.vor"), SERIAL_STREAM_ERROR);
        EXPECT_EQ(root["tolerance"]->get_string().str(), "0.01");
    }
    {
        MachiningRoot root;
        EXPECT_EQ(load_example(root, serializer, "syntax.vor"), SERIAL_SYNTAX_ERROR);
        EXPECT_EQ(serializer.error_offset(), 85u);
    }
    {
        MachiningRoot root;
        EXPECT_EQ(load_example(root, serializer, "older-version.vor"), SERIAL_OK);
        EXPECT_EQ(root["stepover"]->get_string().str(), "1.5");
        EXPECT_EQ(root.updater.updated_from, 2);
    }
    {
        // New-only keeps the values of defined members that exist, not of
        // bare values, and still makes the defined members that do not.
        MachiningRoot root;
        ASSERT_EQ(load_example(root, serializer, "ok.vor"), SERIAL_OK);
        root["clearance"]->set_string("9");
        root["tolerance"]->set_string("0.05");
        root.remove(vorParameterKey("depths"));
        std::istringstream again(read_source_file(examples_dir + "ok.vor"));
        EXPECT_EQ(serializer.load(root, again, 1), SERIAL_OK);
        EXPECT_EQ(root["clearance"]->get_string().str(), "9");
        EXPECT_EQ(root["tolerance"]->get_string().str(), "0.01");
        EXPECT_EQ(root["depths[1]"]->get_int(), 4);
    }
    {
        std::istringstream empty("  \n");
        MachiningRoot root;
        EXPECT_EQ(serializer.load(root, empty), SERIAL_STREAM_ERROR);
    }
}

TEST(FileFormatDocs, ExcludeAllAndTypeWordsAsThePageSays) {
    MachiningRoot root;
    vorParameterSerializer serializer;
    serializer.set_exclude_all(1);
    serializer.include_pars().insert("tool");
    const std::string text = save_text(root, serializer);
    EXPECT_EQ(text.substr(text.find("}\n{")), "}\n{\n\t\"tool\" : {\n\t}\n}");

    vorParameterPtr velocity = vorParameterSerializer::get_par_from_type("RL/TT", "");
    EXPECT_EQ(velocity->subtype(), SUB_REAL);
    EXPECT_EQ(serializer.get_type_from_par(*velocity), "R[L/TT]");
    for (const char* word : {"LI", "LR[L]", "LLS", "V3R[L]", "HM", "R", "R[ML/TT]", "&", "E"}) {
        vorParameterPtr par = vorParameterSerializer::get_par_from_type(word, "a description");
        EXPECT_TRUE(!par->is_error() || par->is_ref()) << word; // "&" has no target yet
        EXPECT_EQ(serializer.get_type_from_par(*par), word);
        EXPECT_EQ(par->get_desc(), "a description") << word;
    }
    for (const char* word : {"", "Q", "i", "X1", "V0I", "VI", "LQ", "L", "V100V100I"})
        EXPECT_TRUE(vorParameterSerializer::get_par_from_type(word, "")->is_error()) << word;
}

TEST(FileFormatDocs, ArchiveFormCarriesTheFileAsOneString) {
    MachiningRoot root;
    vorParameterSerializer serializer;
    std::ostringstream bytes;
    CArchive out(bytes);
    ASSERT_EQ(serializer.save(root, out), SERIAL_OK);
    const std::string stored = bytes.str();
    ASSERT_GE(stored.size(), 8u);
    std::uint64_t length = 0;
    for (int i = 7; i >= 0; --i)
        length = length << 8 | static_cast<unsigned char>(stored[i]);
    EXPECT_EQ(length, stored.size() - 8);
    std::ostringstream text;
    serializer.save(root, text);
    EXPECT_EQ(without_time(stored.substr(8)), without_time(text.str()));

    root["tolerance"]->set_string("0.5");
    std::istringstream back(stored);
    CArchive in(back);
    EXPECT_EQ(serializer.load(root, in), SERIAL_OK);
    EXPECT_EQ(root["tolerance"]->get_string().str(), "0.01");

    std::istringstream cut(stored.substr(0, stored.size() / 2));
    CArchive short_archive(cut);
    EXPECT_EQ(serializer.load(root, short_archive), SERIAL_STREAM_ERROR);
}

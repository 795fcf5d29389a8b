// Loading malformed, huge and deep files, and saving deep trees: every case
// ends in a result code, never in a crash, a hang or a stack overflow.

#include "../support/prelude.h"

namespace {

const std::string header = "{\"type\":\"job\",\"version\":\"0\",\"time\":\"0\"}\n";

/// A file that uses every part of the grammar.
const std::string rich_file =
    header +
    "{\n\t\"a\" : \"1\",\n\t\"list\" \"LR[L]\" \"Depths \\\"mm\\\"\" : (\n\t\t\"2\",\n"
    "\t\t\"3\"\n\t),\n\t\"gaps\" : (\n\t\t\"x\",\n\t\t,\n\t\t{\n\t\t\t\"k\" : \"v\"\n"
    "\t\t}\n\t),\n\t\"r\" \"&\" \"\" : \"job:&a\",\n\t\"v\" \"V2I\" \"\" "
    "\"0123456789abcdef0123456789abcdef\" : (\n\t\t\"4\",\n\t\t\"5\"\n\t),\n"
    "\t\"e\" \"E\" \"\" : \"offset\",\n\t\"m\" : {\n\t\t\"s\" \"S\" \"\" : \"a\\\\b\"\n\t}\n}";

vorParameterSerialError load_open(const std::string& text, std::string* saved = nullptr) {
    std::istringstream in(text);
    vorParameterSerializer serializer;
    vorParameterSerialError error = SERIAL_OK;
    std::unique_ptr<vorParameterOpenRoot> root = vorParameterOpenRoot::load(in, serializer, error);
    if (saved) {
        std::ostringstream out;
        serializer.save(*root, out);
        *saved = out.str();
    }
    return error;
}

vorParameterSerialError load_into_host(const std::string& text) {
    vorParameterLibRoot root("job");
    root.add("a", real(0, vorDimensions(0, 0, 0)));
    root.add("m", map());
    std::istringstream in(text);
    vorParameterSerializer serializer;
    return serializer.load(root, in);
}

} // namespace

TEST(StressSerializer, DamagedHugeDeepAndWideFilesEndInACode) {
    ASSERT_EQ(load_open(rich_file), SERIAL_OK);
    for (std::size_t length = 0; length < rich_file.size(); ++length) {
        const vorParameterSerialError error = load_open(rich_file.substr(0, length));
        ASSERT_TRUE(error == SERIAL_STREAM_ERROR || error == SERIAL_SYNTAX_ERROR) << length;
    }
    const char replacements[] = {'"', '{', '}', '(', ')', ',', ':', '\\', '\0', 'x', ' ', '&'};
    for (std::size_t at = 0; at < rich_file.size(); ++at) {
        for (char replacement : replacements) {
            std::string flipped = rich_file;
            flipped[at] = replacement;
            const vorParameterSerialError open = load_open(flipped);
            const vorParameterSerialError host = load_into_host(flipped);
            ASSERT_LE(open, SERIAL_NEWER_VERSION);
            ASSERT_LE(host, SERIAL_NEWER_VERSION);
        }
    }

    // A 50 MB value loads and saves back whole.
    const std::string value(50u << 20, 'v');
    std::string saved;
    ASSERT_EQ(load_open(header + "{\"big\":\"" + value + "\"}", &saved), SERIAL_OK);
    EXPECT_EQ(saved.substr(saved.find('}') + 1), "\n{\n\t\"big\" : \"" + value + "\"\n}");
    // A key longer than any path is refused where it stands.
    EXPECT_EQ(load_open(header + "{\"" + std::string(1u << 20, 'k') + "\":\"1\"}"),
              SERIAL_SYNTAX_ERROR);
    // Vector words may not ask for more than a bounded number of elements.
    EXPECT_EQ(load_open(header + "{\"v\" \"V64V65I\" : ()}"), SERIAL_SYNTAX_ERROR);
    EXPECT_EQ(load_open(header + "{\"v\" \"V99999999999999999999999I\" : ()}"),
              SERIAL_SYNTAX_ERROR);
    EXPECT_EQ(load_open(header + "{\"v\" \"" + std::string(100000, 'L') + "I\" : ()}"),
              SERIAL_SYNTAX_ERROR);
    // Nesting past the limit in the header (the body's: Serializer tests).
    EXPECT_EQ(load_open(std::string(200000, '{')), SERIAL_SYNTAX_ERROR);

    vorParameterRoot root("job");
    vorParameterPtr at(coPrfExtern(), &root);
    for (int i = 0; i < 100000; ++i)
        at = at->add("n", map());
    std::ostringstream deep;
    vorParameterSerializer serializer;
    EXPECT_EQ(serializer.save(root, deep), SERIAL_SYNTAX_ERROR);

    vorParameterOpenRoot wide("job");
    for (int i = 0; i < 50000; ++i)
        wide.add(utString("p" + std::to_string(i)), text("1"));
    std::ostringstream out;
    ASSERT_EQ(serializer.save(wide, out), SERIAL_OK);
    std::string again;
    ASSERT_EQ(load_open(out.str(), &again), SERIAL_OK);
    EXPECT_EQ(again.substr(again.find('}')), out.str().substr(out.str().find('}')));
}

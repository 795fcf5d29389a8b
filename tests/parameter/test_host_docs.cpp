// The README and the pages on errors and threads quote example programs that
// the test suite builds and runs (tests/examples); this checks that the
// quotes are the programs as they are.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string read_source_file(const std::string& relative_path) {
    std::ifstream in(std::string(VORPARAMETER_SOURCE_DIR) + "/" + relative_path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

TEST(HostDocs, QuoteTheExampleProgramsVerbatim) {
    const std::pair<const char*, const char*> quotes[] = {
        {"README.md", "examples/quickstart.cpp"},
        {"docs/errors.md", "examples/errors.cpp"},
        {"docs/threads.md", "examples/threads.cpp"},
    };
    for (const auto& [page, program] : quotes) {
        const std::string text = read_source_file(program);
        ASSERT_FALSE(text.empty()) << program;
        EXPECT_NE(read_source_file(page).find("```cpp\n" + text + "```"), std::string::npos)
            << page << " does not quote " << program << " as it is";
    }
}

// Output files of the tool: a regular file is replaced only by a complete
// output, and what cannot be replaced is written in place.
#include "file_tree.h"

#include "../support/prelude.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(ToolFileOutput, ReplacesOnlyWhenComplete) {
    const fs::path folder = fs::temp_directory_path() / "vorparam_file_output";
    fs::remove_all(folder);
    fs::create_directories(folder);
    const fs::path target = folder / "out.txt";
    std::ofstream(target) << "old";
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    std::ostringstream err;

    const auto failing = [](std::ostream& out, std::ostream& report) {
        out << "half";
        report << "gave up\n";
        return false;
    };
    EXPECT_FALSE(vorparam::write_file(target.string(), failing, err));
    EXPECT_EQ(contents(target), "old");
    EXPECT_EQ(err.str(), "gave up\n");

    const auto complete = [](std::ostream& out, std::ostream&) {
        out << "new";
        return true;
    };
    EXPECT_TRUE(vorparam::write_file(target.string(), complete, err));
    EXPECT_EQ(contents(target), "new");
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write);
    // No temporary file is left beside it, whichever way it went.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);

    // A device is written where it is, never replaced by a file.
    if (fs::exists("/dev/full")) {
        err.str("");
        EXPECT_FALSE(vorparam::write_file("/dev/full", complete, err));
        EXPECT_NE(err.str().find("/dev/full: cannot write"), std::string::npos) << err.str();
        EXPECT_TRUE(fs::is_character_file("/dev/full"));
    }
    EXPECT_FALSE(vorparam::write_file((folder / "no" / "such.txt").string(), complete, err));
    fs::remove_all(folder);
}

} // namespace

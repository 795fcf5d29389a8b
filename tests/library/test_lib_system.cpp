// The system, time and sequence functions, and the examples of their
// documentation.

#include "../support/doc_examples.h"
#include "lib_test_tree.h"
#include "shown_value.h"

#include "../support/prelude.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Sets an environment variable for the life of the object, then puts back
/// what was there (or unsets it).
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value)
        : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~ScopedEnv() { m_old ? setenv(m_name, m_old->c_str(), 1) : unsetenv(m_name); }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

/// A new empty directory under the system's temporary directory, removed
/// with everything in it at the end.
class TempDir {
public:
    TempDir()
        : m_path(fs::temp_directory_path() /
                 ("vorparameter-system-" + std::to_string(getpid()) + "-" +
                  std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {
        fs::create_directory(m_path);
    }
    ~TempDir() {
        std::error_code ignored;
        fs::permissions(m_path, fs::perms::owner_all, ignored);
        fs::remove_all(m_path, ignored);
    }
    const fs::path& path() const { return m_path; }
    std::string operator/(const char* name) const { return (m_path / name).string(); }

private:
    fs::path m_path;
};

/// A call with an argument that expressions cannot spell (a NUL byte).
vorParameterPtr call(vorParameterLibFn fn, const std::string& arg) {
    return fn(arguments({text(arg)}));
}

} // namespace

TEST(LibSystemDocs, EveryExampleGivesTheDocumentedResult) {
    ScopedEnv home("HOME", "/home/machinist");
    vorParameterPtr root(new vorParameterLibRoot());
    root->add("seq", eval(root, "make_sequence(1; 10; 4)"));
    root->add("last", eval(root, "make_sequence(2147483646)"));
    expect_doc_examples("docs/functions-system.md", 60, [&](const std::string& expression) {
        return shown(eval(root, expression.c_str()));
    });
}

TEST(LibSystem, DirectoriesHostSettingsTimeObjectsAndSequences) {
    TempDir dir;
    for (const char* name : {"b.txt", "a.txt", ".hidden", "é", "${x}"})
        std::ofstream(dir / name).put('x');
    fs::create_directory(dir / "c");
    fs::create_symlink(dir / "nowhere", dir / "broken");
    const std::string path = dir.path().string();

    EXPECT_EQ(shown(call(vorParameterLibFunctions::ls, path)),
              "{${x}; .hidden; a.txt; b.txt; broken; c; é}");
    EXPECT_EQ(call(vorParameterLibFunctions::ls, dir / "a.txt")->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(call(vorParameterLibFunctions::file_exists, dir / "é")->get_int(), 1);
    EXPECT_EQ(call(vorParameterLibFunctions::file_exists, dir / "c")->get_int(), 0);
    EXPECT_EQ(call(vorParameterLibFunctions::dir_exists, dir / "c")->get_int(), 1);
    EXPECT_EQ(call(vorParameterLibFunctions::file_exists, dir / "broken")->get_int(), 0);

    // The system would read these paths only up to the NUL and find the
    // directory; they name nothing.
    EXPECT_EQ(call(vorParameterLibFunctions::dir_exists, path + '\0' + "x")->get_int(), 0);
    EXPECT_EQ(call(vorParameterLibFunctions::file_exists, dir / "a.txt" + '\0')->get_int(), 0);
    EXPECT_EQ(call(vorParameterLibFunctions::ls, path + '\0')->subtype(), ERR_INVALID_NAME);

    // Without read permission (which root has anyway) the listing fails.
    fs::permissions(dir.path(), fs::perms::owner_write | fs::perms::owner_exec);
    if (access(path.c_str(), R_OK) != 0) {
        EXPECT_EQ(call(vorParameterLibFunctions::ls, path)->subtype(), ERR_INVALID_DATA);
    }
    EXPECT_EQ(call(vorParameterLibFunctions::file_exists, dir / "a.txt")->get_int(), 1);

    vorParameterPtr root(new vorParameterLibRoot());
    {
        ScopedEnv unset("HOME", nullptr);
        EXPECT_EQ(eval(root, "home()")->subtype(), ERR_INVALID_NAME);
    }
    {
        ScopedEnv empty("HOME", "");
        EXPECT_EQ(eval(root, "home()")->type(), TYPE_STRING);
        EXPECT_EQ(eval(root, "home()")->get_string(), "");
    }
    vorParameterLib::set_port_machining(true);
    EXPECT_EQ(eval(root, "port_machining()")->subtype(), SUB_BOOL);
    EXPECT_EQ(eval(root, "port_machining()")->get_int(), 1);
    vorParameterLib::set_port_machining(false);
    EXPECT_EQ(eval(root, "port_machining()")->get_int(), 0);

    const auto now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    EXPECT_NEAR(eval(root, "time()")->get_double(), static_cast<double>(now), 2.0);

    // A fraction belongs to the second before it, also before 1970.
    EXPECT_EQ(eval(root, "utc_time(-0.5).second")->get_int(), 59);
    EXPECT_EQ(eval(root, "time_to_string(59.9)")->get_string(), "00:00:59");
    EXPECT_EQ(eval(root, "utc_time(1735603200).day_of_year")->get_int(), 366) << "2024-12-31";
    EXPECT_EQ(eval(root, "utc_time(0)")->get_typename(), "time");

    ScopedEnv zone("TZ", "EST5");
    vorParameterPtr local = eval(root, "local_time(0)");
    EXPECT_EQ(shown(local["year"]) + "-" + shown(local["month"]) + "-" + shown(local["day"]) + " " +
                  shown(local["hour"]) + " " + shown(local["weekday"]),
              "1969-12-31 19 3");
    setenv("TZ", "UTC0", 1);
    EXPECT_EQ(eval(root, "local_time(2^31).hour")->get_int(), 3) << "TZ is read at each call";

    vorParameterPtr seq = root->add("seq", eval(root, "make_sequence(-1; -2)"));
    EXPECT_EQ(eval(root, "next_in_sequence(seq) + next_in_sequence(seq)")->get_string(), "-1-3");
    seq->lock(1);
    EXPECT_EQ(eval(root, "next_in_sequence(seq)")->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(seq["count"]->get_int(), 2) << "a locked sequence does not count";
    seq->lock(0);

    // A sequence of the host's own making, at the end of its range.
    vorParameterPtr own = root->add("own", map());
    for (const char* name : {"start", "increment", "padding", "count"})
        own->add(name, real(0, DIM_NONE, SUB_INT));
    own["count"]->set_int(2147483646);
    EXPECT_EQ(eval(root, "next_in_sequence(own)")->get_string(), "0");
    EXPECT_EQ(eval(root, "next_in_sequence(own)")->subtype(), ERR_DOMAIN) << "count is at INT_MAX";
    own["padding"]->set_string("2147483648");
    EXPECT_EQ(eval(root, "next_in_sequence(own)")->subtype(), ERR_DOMAIN);
    own->remove("padding");
    EXPECT_EQ(eval(root, "next_in_sequence(own)")->subtype(), ERR_INVALID_ARGUMENTS);
}

//===- vorLibSystemFunctions.cpp - The host system's functions ------------===//
//
// The functions that ask the machine rather than the tree: home, pwd,
// list_files, file_exists, dir_exists and port_machining.
//
// Paths are UTF-8 strings; a relative path is taken from the current working
// directory. Every file-system question is asked anew at each call (nothing
// is cached) through the non-throwing std::filesystem calls, so a path that
// is missing, unreadable or malformed is an answer, never an exception. A
// path holding a NUL byte names nothing: the operating system would read it
// only up to that byte and answer for another path.
//
// list_files reads at most max_listed_entries entries, so that a huge
// directory costs bounded time and memory.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterLib.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// The most entries that list_files answers; a directory with more is
/// ERR_DOMAIN. Well below the element limit of lists, and small enough that
/// the names of a full listing fit in memory.
constexpr std::size_t max_listed_entries = 1 << 17;

bool port_machining_on = false;

using vorLibSupport::invalid_arguments;

bool has_no_arguments(const vorParameterPtr& args) {
    return vorParameterArgDecoder(args).count() == 0;
}

/// The path of the call's one argument, a string; false for other
/// arguments. `path` is left empty when the text cannot name a file (it is
/// empty or holds a NUL byte).
bool read_path(const vorParameterPtr& args, std::optional<fs::path>& path) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return false;
    vorParameterPtr arg = decoder.next_argument();
    if (arg->type() != TYPE_STRING)
        return false;
    const utString text = arg->get_string();
    if (text.empty() || text.view().find('\0') != std::string_view::npos)
        path.reset();
    else
        path = fs::u8path(text.view().begin(), text.view().end());
    return true;
}

/// The kind of the existing entry at `path` (symbolic links followed), or
/// not_found when there is none or it cannot be reached.
fs::file_type kind_of(const std::optional<fs::path>& path) {
    if (!path)
        return fs::file_type::not_found;
    std::error_code error;
    return fs::status(*path, error).type();
}

bool exists(fs::file_type kind) {
    return kind != fs::file_type::not_found && kind != fs::file_type::none;
}

vorParameterPtr path_string(const fs::path& path) {
    return vorLibSupport::make_string(utString(path.u8string()));
}

/// A list of `names` as final texts: a file name holding "${" is a name, not
/// an expression to interpolate.
vorParameterPtr list_of_names(const std::vector<utString>& names) {
    vorParameterPtr list(new vorParameterList(vorLibSupport::make_string(utString())));
    for (const utString& name : names)
        list->add(vorParameterKey(), vorLibSupport::make_string(name));
    return list;
}

/// The names in `dir`, sorted; ERR_INVALID_DATA when it cannot be read and
/// ERR_DOMAIN when it holds more than max_listed_entries.
vorParameterPtr list_directory(const fs::path& dir) {
    std::error_code error;
    fs::directory_iterator entry(dir, error);
    std::vector<utString> names;
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (names.size() == max_listed_entries)
            return vorParameterLib::error(ERR_DOMAIN);
        names.emplace_back(entry->path().filename().u8string());
    }
    if (error)
        return vorParameterLib::error(ERR_INVALID_DATA);
    std::sort(names.begin(), names.end());
    return list_of_names(names);
}

} // namespace

void vorParameterLib::set_port_machining(bool on) {
    port_machining_on = on;
}

bool vorParameterLib::get_port_machining() {
    return port_machining_on;
}

namespace vorParameterLibFunctions {

vorParameterPtr home(const vorParameterPtr& args) {
    if (!has_no_arguments(args))
        return invalid_arguments();
    const char* value = std::getenv("HOME");
    if (!value)
        return vorParameterLib::error(ERR_INVALID_NAME);
    return vorLibSupport::make_string(value);
}

vorParameterPtr pwd(const vorParameterPtr& args) {
    if (!has_no_arguments(args))
        return invalid_arguments();
    std::error_code error;
    const fs::path dir = fs::current_path(error);
    if (error)
        return vorParameterLib::error(ERR_INVALID_DATA);
    return path_string(dir);
}

vorParameterPtr ls(const vorParameterPtr& args) {
    std::optional<fs::path> dir;
    if (has_no_arguments(args)) {
        std::error_code error;
        dir = fs::current_path(error);
        if (error)
            return vorParameterLib::error(ERR_INVALID_DATA);
    } else if (!read_path(args, dir)) {
        return invalid_arguments();
    }
    if (kind_of(dir) != fs::file_type::directory)
        return vorParameterLib::error(ERR_INVALID_NAME);
    return list_directory(*dir);
}

vorParameterPtr file_exists(const vorParameterPtr& args) {
    std::optional<fs::path> path;
    if (!read_path(args, path))
        return invalid_arguments();
    const fs::file_type kind = kind_of(path);
    return vorParameterNumeric::create_bool(exists(kind) && kind != fs::file_type::directory);
}

vorParameterPtr dir_exists(const vorParameterPtr& args) {
    std::optional<fs::path> path;
    if (!read_path(args, path))
        return invalid_arguments();
    return vorParameterNumeric::create_bool(kind_of(path) == fs::file_type::directory);
}

vorParameterPtr port_machining(const vorParameterPtr& args) {
    if (!has_no_arguments(args))
        return invalid_arguments();
    return vorParameterNumeric::create_bool(vorParameterLib::get_port_machining());
}

} // namespace vorParameterLibFunctions

//===- vorLibStringFunctions.cpp - String and path functions --------------===//
//
// The text functions of the standard library: length, slice, position,
// replace, ucase, lcase, substring, trim, ltrim, rtrim, tokens, sanitize,
// strip_new_lines, basename, dirname, join and map_key.
//
// Positions and lengths count characters (code points of the UTF-8 text),
// never bytes. A byte that cannot begin a character (a stray continuation
// byte) belongs to the character before it, so no function ever splits a
// byte sequence or loses a byte of its input. A range of positions is cut
// to the text: position -2 to 2 of "abc" is "ab", 2 to 10 is "c".
//
// Arguments are checked first; a wrong count, a string where a number is
// needed or the like gives ERR_INVALID_ARGUMENTS. Results that would grow
// beyond max_result_bytes give ERR_DOMAIN instead of exhausting memory.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"
#include "vorparameter/expression/vorParameterString.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorParameterScalar.h"
#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/platform/vorCharTypes.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>
#include <climits>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

/// The largest text that replace() and join() build; their results can be
/// far larger than their arguments.
constexpr std::size_t max_result_bytes = vorParameterString::max_text_length;

using vorLibSupport::invalid_arguments;
using vorLibSupport::make_string;

vorParameterPtr make_int(long long value) {
    return vorLibSupport::make_number(SUB_INT, static_cast<double>(value));
}

//===----------------------------------------------------------------------===//
// Arguments
//===----------------------------------------------------------------------===//

bool arg_count_in(const vorParameterArgDecoder& args, int lowest, int highest) {
    return args.count() >= lowest && args.count() <= highest;
}

/// The text of the next argument, which must be a string.
bool next_text(vorParameterArgDecoder& args, utString& text) {
    vorParameterPtr arg = args.next_argument();
    const vorParameter& value = *arg.par();
    if (value.type() != TYPE_STRING)
        return false;
    text = value.get_string();
    return true;
}

/// The next argument as a whole number: a valid number, rounded to the
/// nearest integer and cut to the range of int.
bool next_int(vorParameterArgDecoder& args, long long& number) {
    const vorParameterNumeric* value = vorLibSupport::as_number(args.next_argument());
    if (!value)
        return false;
    number = value->get_int();
    return true;
}

/// An optional trailing whole number; `number` keeps its default when the
/// argument was not given.
bool next_optional_int(vorParameterArgDecoder& args, long long& number) {
    return args.all_arguments_used() || next_int(args, number);
}

const vorParameterArray* as_array(const vorParameter& value) {
    return value.type() == TYPE_ARRAY ? vorParameterArray::ut_dynamic_cast(&value) : nullptr;
}

//===----------------------------------------------------------------------===//
// Characters of UTF-8 text
//===----------------------------------------------------------------------===//

bool is_continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The byte just past the character that begins at byte `i`.
std::size_t char_end(std::string_view text, std::size_t i) {
    do
        ++i;
    while (i < text.size() && is_continuation(text[i]));
    return i;
}

long long char_count(std::string_view text) {
    long long count = 0;
    for (std::size_t i = 0; i < text.size(); i = char_end(text, i))
        ++count;
    return count;
}

/// The byte offset of character `n`: 0 for n <= 0, the text's size for n at
/// or past its end.
std::size_t byte_offset(std::string_view text, long long n) {
    std::size_t i = 0;
    for (; n > 0 && i < text.size(); --n)
        i = char_end(text, i);
    return i;
}

/// The number of characters that begin before byte `offset`.
long long char_index(std::string_view text, std::size_t offset) {
    long long index = 0;
    for (std::size_t i = 0; i < offset; i = char_end(text, i))
        ++index;
    return index;
}

/// The characters from position `from` up to, not including, `to`, cut to
/// the text.
utString char_range(std::string_view text, long long from, long long to) {
    if (from >= to)
        return utString();
    const std::size_t begin = byte_offset(text, from);
    return utString(text.substr(begin, byte_offset(text, to) - begin));
}

/// Each character of `text` as its own byte sequence.
std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> chars;
    for (std::size_t i = 0, end = 0; i < text.size(); i = end) {
        end = char_end(text, i);
        chars.push_back(text.substr(i, end - i));
    }
    return chars;
}

/// The runs of `text` between characters of `delimiters`; runs of
/// delimiters give no empty tokens. Compared by whole characters, so a
/// delimiter such as "·" never cuts another character apart.
std::vector<utString> split(std::string_view text, std::string_view delimiters) {
    const std::vector<std::string_view> chars = characters(delimiters);
    const std::unordered_set<std::string_view> is_delimiter(chars.begin(), chars.end());
    std::vector<utString> tokens;
    std::size_t start = 0;
    for (std::size_t i = 0, end = 0; i < text.size(); i = end) {
        end = char_end(text, i);
        if (!is_delimiter.count(text.substr(i, end - i)))
            continue;
        if (i > start)
            tokens.emplace_back(text.substr(start, i - start));
        start = end;
    }
    if (start < text.size())
        tokens.emplace_back(text.substr(start));
    return tokens;
}

/// Appends `piece` unless the text would grow beyond max_result_bytes.
bool append_bounded(std::string& text, std::string_view piece) {
    if (piece.size() > max_result_bytes - text.size())
        return false;
    text += piece;
    return true;
}

//===----------------------------------------------------------------------===//
// Text rewriting
//===----------------------------------------------------------------------===//

/// Applies `rewrite` to the one string argument.
vorParameterPtr rewrite_text(const vorParameterPtr& args, utString (*rewrite)(std::string_view)) {
    vorParameterArgDecoder decoder(args);
    utString text;
    if (!arg_count_in(decoder, 1, 1) || !next_text(decoder, text))
        return invalid_arguments();
    return make_string(rewrite(text.view()));
}

bool is_ascii_alnum(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

utString sanitized(std::string_view text) {
    std::string safe;
    for (std::string_view c : characters(text)) {
        const bool keep =
            c.size() == 1 && (is_ascii_alnum(c[0]) || c[0] == '_' || c[0] == '-' || c[0] == '.');
        safe += keep ? c[0] : '_';
    }
    return utString(std::move(safe));
}

utString without_new_lines(std::string_view text) {
    std::string kept;
    for (char c : text)
        if (c != '\r' && c != '\n')
            kept += c;
    return utString(std::move(kept));
}

utString as_map_key(std::string_view text) {
    // The key parser reads a name as one run of letters, digits, "_" and "-"
    // that starts with neither a digit nor "-" (those start an index). Names
    // up to the key cache's length limit compare equal by identity, so the
    // key is cut to that length at a character boundary.
    constexpr std::size_t max_bytes = vorParameterKeyImpl::max_cached_length;
    // Every character gives at least one byte of key and takes at most four
    // of the text, so a longer text adds nothing but work. The character
    // that the cut may split lies beyond what is kept.
    const vorWideString wide = vorMultiByteToWideChar::convert(text.substr(0, 4 * max_bytes + 4));
    std::string key;
    if (wide.empty() || vorCharTypes::is_digit(wide[0]) || wide[0] == '-')
        key += '_';
    for (char32_t c : wide) {
        const bool keep = vorCharTypes::is_alnum(c) || c == '_' || c == '-';
        std::string piece;
        vorMultiByteToWideChar::append_utf8(piece, keep ? c : U'_');
        if (key.size() + piece.size() > max_bytes)
            break;
        key += piece;
    }
    return utString(std::move(key));
}

//===----------------------------------------------------------------------===//
// File paths
//===----------------------------------------------------------------------===//

bool is_separator(char c) {
    return c == '/' || c == '\\';
}

/// The length of the path's root: a drive ("C:"), then one separator.
/// "/usr" has the root "/", "C:\dir" "C:\", "C:dir" "C:" and "dir" none.
std::size_t root_length(std::string_view path) {
    const bool drive = path.size() >= 2 && path[1] == ':' &&
                       ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
    std::size_t root = drive ? 2 : 0;
    if (root < path.size() && is_separator(path[root]))
        ++root;
    return root;
}

/// `path` without trailing separators, but never shorter than `root`.
std::string_view strip_trailing_separators(std::string_view path, std::size_t root) {
    while (path.size() > root && is_separator(path.back()))
        path.remove_suffix(1);
    return path;
}

/// The position of the last separator after the root, or npos.
std::size_t last_separator(std::string_view path, std::size_t root) {
    for (std::size_t i = path.size(); i > root; --i)
        if (is_separator(path[i - 1]))
            return i - 1;
    return std::string_view::npos;
}

utString base_name(std::string_view path) {
    const std::size_t root = root_length(path);
    path = strip_trailing_separators(path, root);
    if (path.size() == root)
        return utString(path);
    const std::size_t sep = last_separator(path, root);
    return utString(path.substr(sep == std::string_view::npos ? root : sep + 1));
}

utString dir_name(std::string_view path) {
    const std::size_t root = root_length(path);
    path = strip_trailing_separators(path, root);
    const std::size_t sep = last_separator(path, root);
    if (sep == std::string_view::npos)
        return root ? utString(path.substr(0, root)) : utString(".");
    return utString(strip_trailing_separators(path.substr(0, sep), root));
}

} // namespace

//===----------------------------------------------------------------------===//
// Registered functions
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameterLib::length(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (!arg_count_in(decoder, 1, 1))
        return invalid_arguments();
    vorParameterPtr arg = decoder.next_argument();
    const vorParameter& value = *arg.par();
    if (value.type() == TYPE_STRING)
        return make_int(char_count(value.get_string().view()));
    if (as_array(value))
        return make_int(value.size());
    return invalid_arguments();
}

vorParameterPtr vorParameterLib::slice(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (!arg_count_in(decoder, 2, 3))
        return invalid_arguments();
    vorParameterPtr subject = decoder.next_argument();
    long long from = 0;
    long long to = LLONG_MAX;
    if (!next_int(decoder, from) || !next_optional_int(decoder, to))
        return invalid_arguments();
    const vorParameter& value = *subject.par();
    if (value.type() == TYPE_STRING)
        return make_string(char_range(value.get_string().view(), from, to));
    const vorParameterArray* array = as_array(value);
    if (!array)
        return invalid_arguments();
    // Cut both ends to the array first, so that slice(a; 3; 10) of five
    // elements keeps the last two, as it does for a string.
    const long long size = array->size();
    return array->slice(static_cast<int>(std::clamp(from, 0LL, size)),
                        static_cast<int>(std::clamp(to, 0LL, size)));
}

vorParameterPtr vorParameterLib::position(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    utString text;
    utString target;
    long long start = 0;
    if (!arg_count_in(decoder, 2, 3) || !next_text(decoder, text) || !next_text(decoder, target) ||
        !next_optional_int(decoder, start))
        return invalid_arguments();
    start = std::max(start, 0LL);
    if (start > char_count(text.view()))
        return make_int(-1);
    const std::size_t found = text.find(target.view(), byte_offset(text.view(), start));
    return make_int(found == utString::npos ? -1 : char_index(text.view(), found));
}

vorParameterPtr vorParameterLib::replace(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    utString text;
    utString pattern;
    utString replacement;
    if (!arg_count_in(decoder, 3, 3) || !next_text(decoder, text) || !next_text(decoder, pattern) ||
        !next_text(decoder, replacement) || pattern.empty())
        return invalid_arguments();
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = text.find(pattern.view()); at != utString::npos;
         at = text.find(pattern.view(), done)) {
        if (!append_bounded(result, text.view().substr(done, at - done)) ||
            !append_bounded(result, replacement.view()))
            return error(ERR_DOMAIN);
        done = at + pattern.size();
    }
    if (!append_bounded(result, text.view().substr(done)))
        return error(ERR_DOMAIN);
    return make_string(utString(std::move(result)));
}

vorParameterPtr vorParameterLib::ucase(const vorParameterPtr& args) {
    return rewrite_text(args, vorupcase);
}

vorParameterPtr vorParameterLib::lcase(const vorParameterPtr& args) {
    return rewrite_text(args, vordowncase);
}

vorParameterPtr vorParameterLib::substring(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    utString text;
    long long start = 0;
    long long count = 0;
    if (!arg_count_in(decoder, 3, 3) || !next_text(decoder, text) || !next_int(decoder, start) ||
        !next_int(decoder, count))
        return invalid_arguments();
    // Both are ints, so their sum cannot overflow a long long.
    return make_string(char_range(text.view(), start, start + count));
}

vorParameterPtr vorParameterLib::trim(const vorParameterPtr& args) {
    return rewrite_text(args, vortrim);
}

vorParameterPtr vorParameterLib::ltrim(const vorParameterPtr& args) {
    return rewrite_text(args, vorltrim);
}

vorParameterPtr vorParameterLib::rtrim(const vorParameterPtr& args) {
    return rewrite_text(args, vorrtrim);
}

vorParameterPtr vorParameterLib::tokens(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    utString text;
    utString delimiters(" \t");
    if (!arg_count_in(decoder, 1, 2) || !next_text(decoder, text) ||
        (!decoder.all_arguments_used() && !next_text(decoder, delimiters)))
        return invalid_arguments();
    return vorParameterList::of_strings(split(text.view(), delimiters.view()));
}

vorParameterPtr vorParameterLib::basename(const vorParameterPtr& args) {
    return rewrite_text(args, base_name);
}

vorParameterPtr vorParameterLib::dirname(const vorParameterPtr& args) {
    return rewrite_text(args, dir_name);
}

namespace vorParameterLibFunctions {

vorParameterPtr sanitize(const vorParameterPtr& args) {
    return rewrite_text(args, sanitized);
}

vorParameterPtr strip_new_lines(const vorParameterPtr& args) {
    return rewrite_text(args, without_new_lines);
}

vorParameterPtr join(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (!arg_count_in(decoder, 2, 2))
        return invalid_arguments();
    vorParameterPtr list = decoder.next_argument();
    const vorParameterArray* array = as_array(*list.par());
    utString delimiter;
    if (!array || !next_text(decoder, delimiter))
        return invalid_arguments();
    std::string joined;
    bool first = true;
    for (const vorParameterPtr& element : array->elements()) {
        // Only single values have a string form; a nested array or an error
        // would join as an error message.
        const vorParameter* value = vorParameterScalar::ut_dynamic_cast(element.par());
        if (!value)
            return invalid_arguments();
        if ((!first && !append_bounded(joined, delimiter.view())) ||
            !append_bounded(joined, value->get_string().view()))
            return vorParameterLib::error(ERR_DOMAIN);
        first = false;
    }
    return make_string(utString(std::move(joined)));
}

vorParameterPtr map_key(const vorParameterPtr& args) {
    return rewrite_text(args, as_map_key);
}

} // namespace vorParameterLibFunctions

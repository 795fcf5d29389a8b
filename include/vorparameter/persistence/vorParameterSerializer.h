//===- vorParameterSerializer.h - Saving and loading trees as text -*- C++ -*-===//
//
// A serializer writes a whole tree (a vorParameterRoot) as text and reads such
// text back. A file is a header block ("type", "version" and "time" of the
// tree) followed by the root's own block; every word is a double-quoted
// string:
//
//   {
//   	"type" : "machining",
//   	"version" : "4",
//   	"time" : "1700000000"
//   }
//   {
//   	"tolerance" : "0.01",
//   	"passes" : (
//   		"1",
//   		,
//   		"3"
//   	),
//   	"depths" "LI" "Step depths" : (
//   		"2",
//   		"4"
//   	)
//   }
//
// Maps are "{...}" blocks of members, arrays "(...)" blocks of slots (an
// empty slot keeps the later elements' indices). A member that a file defined
// (vorParameter::is_defined_from_file) is written with its type word,
// description and lock id, so that loading it again creates it; any other
// member is written as a bare value that the root's loader sets on the
// parameter the host already made. docs/file-format.md describes the grammar,
// the type words and every error code with an example.
//
// Reading never builds the tree itself: it hands definitions and value texts
// to the vorParameterLoader of the target root, and collects the keys whose
// values the loader refused (failed_pars). A load stops at the first syntax or
// stream error, leaving what it loaded so far in the tree.
//
// Limits (each a SERIAL_SYNTAX_ERROR at the offending token):
//   - blocks nest at most max_nesting levels deep, on reading and writing;
//   - a single quoted word is at most max_token_length bytes.
// error_offset() tells the byte offset, from the start of the stream, of the
// token at which a load stopped.
//
// A serializer is used by one thread at a time; the settings and the include
// and exclude sets persist between calls, the results are those of the last
// call.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PERSISTENCE_VORPARAMETERSERIALIZER_H
#define VORPARAMETER_PERSISTENCE_VORPARAMETERSERIALIZER_H

#include "vorparameter/parameter/vorParameterRoot.h"
#include "vorparameter/platform/CArchive.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string_view>

enum vorParameterSerialError {
    SERIAL_OK = 0,           ///< success
    SERIAL_SOME_FAILED = 1,  ///< loaded, but the loader refused some values (failed_pars)
    SERIAL_WRONG_TYPE = 2,   ///< the file's "type" is not the root's root type
    SERIAL_STREAM_ERROR = 3, ///< no usable stream, or the text ended early
    SERIAL_SYNTAX_ERROR = 4, ///< an unexpected character or token, a bad type word or lock id,
                             ///< a refused definition, or a limit passed
    SERIAL_NEWER_VERSION = 5 ///< the file's "version" is above the root's version()
};

/// The three words of a file's header.
struct vorParameterFileHeader {
    utString type;
    int version = 0;
    int time = 0; ///< seconds since 1970-01-01 UTC when the file was saved
};

using vorRefToObjectIdcoSet = coSet<vorRefToObjectId>;

/// Marks the time during which a load is running (parameters may ask, for
/// example to stay quiet while their values arrive). The constructor sets a
/// process-wide flag, the destructor clears it: a plain flag, not a count.
class VOR_API vorParameterSerializerCtrl {
public:
    vorParameterSerializerCtrl();
    ~vorParameterSerializerCtrl();
    vorParameterSerializerCtrl(const vorParameterSerializerCtrl&) = delete;
    vorParameterSerializerCtrl& operator=(const vorParameterSerializerCtrl&) = delete;

    static int serializing_parameters();
};

class VOR_API vorParameterSerializer {
public:
    /// Deepest nesting of "{" and "(" blocks read or written. Every value is
    /// found by its full key from the root, at a cost that grows with the
    /// square of its depth, so the limit keeps the cost of any file linear
    /// in its size; parameter trees of machining data are far shallower.
    static constexpr int max_nesting = 64;
    /// Longest quoted word read (128 MiB).
    static constexpr std::size_t max_token_length = std::size_t(1) << 27;

    vorParameterSerializer();
    ~vorParameterSerializer();
    vorParameterSerializer(const vorParameterSerializer&) = delete;
    vorParameterSerializer& operator=(const vorParameterSerializer&) = delete;

    /// Writes `root`'s header and body to `out`.
    vorParameterSerialError save(const vorParameterRoot& root, std::ostream& out);
    /// Writes the text as one string into `archive` when the save succeeds
    /// (SERIAL_OK or SERIAL_SOME_FAILED); writes nothing otherwise.
    vorParameterSerialError save(const vorParameterRoot& root, CArchive& archive);
    /// Reads a file into `root`. With `new_only` set, the defined members
    /// (those written with a type word) that already exist in `root` keep
    /// their values; bare values are loaded as always, and definitions are
    /// still passed to the loader.
    vorParameterSerialError load(vorParameterRoot& root, std::istream& in, int new_only = 0);
    /// Reads one string from `archive` and loads it (new_only 0).
    vorParameterSerialError load(vorParameterRoot& root, CArchive& archive);

    /// Reads only the header block of `in` into `header`: what a tool needs to
    /// pick or build the root a file belongs to.
    static vorParameterSerialError read_header(std::istream& in, vorParameterFileHeader& header);

    /// 1 writes references as what they designate instead of as references.
    void set_follow_refs(int on) { m_follow_refs = on; }
    /// 1 writes scalars as their evaluated texts instead of their expressions.
    void set_evaluate(int on) { m_evaluate = on; }
    /// 1 also writes members and elements that are not active.
    void set_save_inactive(int on) { m_save_inactive = on; }
    /// 0 leaves out members and elements that are not valid.
    void set_save_invalid(int on) { m_save_invalid = on; }
    /// 1 writes no line breaks, tabs or spaces.
    void set_compact_mode(int on) { m_compact_mode = on; }
    /// 1 counts every key as excluded unless include_pars covers it.
    void set_exclude_all(int on) { m_exclude_all = on; }
    int get_follow_refs() const { return m_follow_refs; }
    int get_evaluate() const { return m_evaluate; }
    int get_save_inactive() const { return m_save_inactive; }
    int get_save_invalid() const { return m_save_invalid; }
    int get_compact_mode() const { return m_compact_mode; }
    int get_exclude_all() const { return m_exclude_all; }

    /// Keys (and their subtrees) to save and load even when excluded.
    utStringcoSet& include_pars() { return m_include_pars; }
    /// Keys (and their subtrees) to leave out.
    utStringcoSet& exclude_pars() { return m_exclude_pars; }
    /// Keys that stay excluded even when something below them is included.
    utStringcoSet& global_exclude_pars() { return m_global_exclude_pars; }

    /// The keys whose values the last load set, as the root names them.
    const utStringcoSList& loaded_pars() const { return m_loaded_pars; }
    /// The keys whose values the loader refused in the last load.
    const utStringcoSList& failed_pars() const { return m_failed_pars; }
    /// Lock ids of locked parameters whose values differ from the file's.
    const vorRefToObjectIdcoSet& get_locked_items() const { return m_locked_items; }
    /// The byte offset of the token at which the last load stopped with a
    /// stream or syntax error; 0 otherwise.
    std::size_t error_offset() const { return m_error_offset; }

    /// Whether `key` (a full key such as "a.b[2]") is saved and loaded under
    /// the current include and exclude sets.
    bool should_include(std::string_view key) const;

    /// The type word that defines `par` in a file ("I", "R[L/T]", "LS", "V3R[L]", ...).
    utString get_type_from_par(const vorParameter& par) const;
    /// A new parameter for a type word, with `desc` as its description; an
    /// error parameter for a word no parameter can be made from.
    static vorParameterPtr get_par_from_type(const utString& word, const utString& desc);

    /// A serializer with default settings shared by the whole process.
    static vorParameterSerializer& get_template_serializer();

private:
    class Reader;
    class Writer;

    /// Reads the header block into the header tree.
    vorParameterSerialError read_header_block(std::istream& in);

    int m_follow_refs = 0;
    int m_evaluate = 0;
    int m_save_inactive = 0;
    int m_save_invalid = 1;
    int m_compact_mode = 0;
    int m_exclude_all = 0;
    bool m_header_mode = false;

    utStringcoSet m_include_pars;
    utStringcoSet m_exclude_pars;
    utStringcoSet m_global_exclude_pars;
    utStringcoSList m_loaded_pars;
    utStringcoSList m_failed_pars;
    vorRefToObjectIdcoSet m_locked_items;
    std::size_t m_error_offset = 0;
    /// Where the header block ended, for the offsets of the body's tokens.
    std::size_t m_read_offset = 0;
    /// The header tree: "type", "version" and "time".
    std::unique_ptr<vorParameterRoot> m_header;
};

#endif // VORPARAMETER_PERSISTENCE_VORPARAMETERSERIALIZER_H

//===- vorParameterSerializerImpl.h - Writer and reader of the text form --===//
//
// The two halves of vorParameterSerializer: Writer turns a tree into text,
// Reader turns text into loader calls. Each lives for one save or load and
// borrows the serializer's settings and result lists.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_PERSISTENCE_VORPARAMETERSERIALIZERIMPL_H
#define VORPARAMETER_SRC_PERSISTENCE_VORPARAMETERSERIALIZERIMPL_H

#include "vorparameter/persistence/vorParameterSerializer.h"

#include <ostream>
#include <streambuf>
#include <string>

class vorParameterArray;
class vorParameterMap;

class vorParameterSerializer::Writer {
public:
    Writer(vorParameterSerializer& settings, std::ostream& out);
    ~Writer() { flush(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Writes `par` as a value; `key` is its full key, used by the inclusion
    /// rules (the empty key for the header and the body).
    void write_value(const vorParameter& par, std::string& key);
    /// Writes the line break that separates the header from the body.
    void write_separator_line() { indent(); }
    /// The first error met, SERIAL_OK when none.
    vorParameterSerialError error();

private:
    void write_map(const vorParameter& map, std::string& key);
    void write_array(const vorParameterArray& array, std::string& key);
    void write_reference(const vorParameter& ref);
    void write_definition(const vorParameter& member);
    void write_quoted(std::string_view text);
    void write_escaped(std::string_view text);
    bool skipped(const vorParameter& member, const std::string& key) const;
    void indent();
    void space() {
        if (!m_settings.m_compact_mode)
            m_buffer += ' ';
    }
    bool enter();
    void leave() { --m_depth; }
    void flush();
    void fail(vorParameterSerialError error) {
        if (m_error == SERIAL_OK)
            m_error = error;
    }

    vorParameterSerializer& m_settings;
    std::ostream& m_out;
    std::string m_buffer;
    int m_depth = 0;
    vorParameterSerialError m_error = SERIAL_OK;
};

class vorParameterSerializer::Reader {
public:
    Reader(vorParameterSerializer& settings, std::istream& in, vorParameterRoot& root,
           vorParameterLoader& loader, int new_only);
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Reads the next token into the current one; false at a stream or
    /// syntax error.
    bool next_token();
    /// Reads one value whose first token is the current one; false at an
    /// error, which error() then tells.
    bool read_value(std::string& key, bool skip);
    vorParameterSerialError error() const { return m_error; }
    /// The byte offset of the current token.
    std::size_t token_offset() const { return m_token_offset; }
    /// The byte offset of the next character to read.
    std::size_t offset() const { return m_offset; }
    /// Counts offsets from `offset` (the stream was read up to there before).
    void start_at(std::size_t offset) { m_offset = offset; }

private:
    bool read_map(std::string& key, bool skip);
    bool read_array(std::string& key, bool skip);
    bool read_member(std::string& key, bool skip, std::size_t key_offset);
    bool read_definition(std::string& key, bool skip, std::size_t key_offset);
    bool read_quoted();
    void load_text(const std::string& key, bool skip);
    void note_locked(const std::string& key, const vorUniqueIdPtr& lock_id);
    bool is(char punctuation) const { return m_token.size() == 1 && m_token[0] == punctuation; }
    bool fail(vorParameterSerialError error) {
        if (m_error == SERIAL_OK)
            m_error = error;
        return false;
    }
    /// Fails pointing at the token that began at `offset` rather than the
    /// current one (the type word or lock id that a definition could not use).
    bool fail_at(vorParameterSerialError error, std::size_t offset) {
        m_token_offset = offset;
        return fail(error);
    }

    vorParameterSerializer& m_settings;
    std::streambuf* m_in;
    vorParameterRoot& m_root;
    vorParameterLoader& m_loader;
    int m_new_only;
    std::string m_token;
    std::size_t m_offset = 0;
    std::size_t m_token_offset = 0;
    int m_depth = 0;
    vorParameterSerialError m_error = SERIAL_OK;
};

/// Appends to `key` the key of member `name`; the caller truncates it back.
inline void append_member_key(std::string& key, std::string_view name) {
    if (!key.empty())
        key += '.';
    key += name;
}

/// Appends to `key` the key of element `index`.
inline void append_index_key(std::string& key, int index) {
    key += '[';
    key += std::to_string(index);
    key += ']';
}

#endif // VORPARAMETER_SRC_PERSISTENCE_VORPARAMETERSERIALIZERIMPL_H

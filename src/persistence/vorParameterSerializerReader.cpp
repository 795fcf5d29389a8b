//===- vorParameterSerializerReader.cpp - Text to loader calls ------------===//
//
// A recursive-descent reader over the stream's buffer, one character at a
// time (the buffer's inline fast path: no virtual call per character). Blocks
// nest at most max_nesting deep, so the recursion is bounded.
//
//===----------------------------------------------------------------------===//

#include "vorParameterSerializerImpl.h"

#include "vorparameter/parameter/vorParameterRef.h"

#include <istream>
#include <limits>

namespace {

bool is_space(int c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool is_punctuation(int c) {
    return c == '{' || c == '}' || c == '(' || c == ')' || c == ',' || c == ':';
}

/// The text a locked parameter holds, to compare with the file's: a
/// scalar's value, a reference's target, nothing for anything else.
utString current_text(const vorParameter& par) {
    if (const vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(&par))
        return ref->get_ref_string();
    switch (par.type()) {
    case TYPE_STRING:
    case TYPE_NUMERIC:
    case TYPE_ENUM:
        return par.get_string();
    default:
        return utString();
    }
}

} // namespace

vorParameterSerializer::Reader::Reader(vorParameterSerializer& settings, std::istream& in,
                                       vorParameterRoot& root, vorParameterLoader& loader,
                                       int new_only)
    : m_settings(settings)
    , m_in(in.rdbuf())
    , m_root(root)
    , m_loader(loader)
    , m_new_only(new_only) {}

bool vorParameterSerializer::Reader::next_token() {
    constexpr int eof = std::char_traits<char>::eof();
    int c = m_in->sgetc();
    while (c != eof && is_space(c)) {
        ++m_offset;
        c = m_in->snextc();
    }
    m_token_offset = m_offset;
    m_token.clear();
    if (c == eof)
        return fail(SERIAL_STREAM_ERROR);
    m_in->sbumpc();
    ++m_offset;
    if (c == '"')
        return read_quoted();
    m_token += static_cast<char>(c);
    return is_punctuation(c) || fail(SERIAL_SYNTAX_ERROR);
}

bool vorParameterSerializer::Reader::read_quoted() {
    constexpr int eof = std::char_traits<char>::eof();
    for (;;) {
        int c = m_in->sbumpc();
        if (c == eof)
            return fail(SERIAL_STREAM_ERROR);
        ++m_offset;
        if (c == '"')
            return true;
        if (c == '\\') {
            c = m_in->sbumpc();
            if (c == eof)
                return fail(SERIAL_STREAM_ERROR);
            ++m_offset;
        }
        if (m_token.size() >= max_token_length)
            return fail(SERIAL_SYNTAX_ERROR);
        m_token += static_cast<char>(c);
    }
}

bool vorParameterSerializer::Reader::read_value(std::string& key, bool skip) {
    if (!skip && !m_settings.should_include(key))
        skip = true;
    const bool map = is('{');
    if (!map && !is('(')) {
        load_text(key, skip);
        return true;
    }
    if (m_depth >= max_nesting)
        return fail(SERIAL_SYNTAX_ERROR);
    if (!skip && !m_settings.m_header_mode)
        m_loader.open_block(vorParameterKey(key), map ? TYPE_MAP : TYPE_ARRAY);
    ++m_depth;
    const bool read = map ? read_map(key, skip) : read_array(key, skip);
    --m_depth;
    return read;
}

void vorParameterSerializer::Reader::load_text(const std::string& key, bool skip) {
    if (skip)
        return;
    if (m_loader.load_par(vorParameterKey(key), m_token) != 0)
        m_settings.m_failed_pars.push_back(key);
}

bool vorParameterSerializer::Reader::read_map(std::string& key, bool skip) {
    if (!next_token())
        return false;
    if (is('}'))
        return true;
    const std::size_t key_length = key.size();
    for (;;) {
        const std::size_t key_offset = m_token_offset;
        append_member_key(key, m_token);
        if (key.size() > vorParameterKeyImpl::max_path_length)
            return fail(SERIAL_SYNTAX_ERROR);
        const bool read = read_member(key, skip, key_offset);
        key.resize(key_length);
        if (!read || !next_token())
            return false;
        if (is('}'))
            return true;
        if (!is(','))
            return fail(SERIAL_SYNTAX_ERROR);
        if (!next_token())
            return false;
        if (is('}'))
            return true;
    }
}

bool vorParameterSerializer::Reader::read_member(std::string& key, bool skip,
                                                 std::size_t key_offset) {
    if (!next_token())
        return fail(SERIAL_SYNTAX_ERROR);
    if (!is(':'))
        return read_definition(key, skip, key_offset);
    return next_token() && read_value(key, skip);
}

bool vorParameterSerializer::Reader::read_definition(std::string& key, bool skip,
                                                     std::size_t key_offset) {
    const utString type_word(m_token);
    const std::size_t word_offset = m_token_offset;
    std::size_t lock_offset = 0;
    utString desc;
    utString lock_text;
    bool has_lock = false;
    if (!next_token())
        return false;
    if (!is(':')) {
        desc = m_token;
        if (!next_token())
            return false;
        if (!is(':')) {
            lock_text = m_token;
            lock_offset = m_token_offset;
            has_lock = true;
            if (!next_token())
                return false;
            if (!is(':'))
                return fail(SERIAL_SYNTAX_ERROR);
        }
    }
    if (m_settings.m_header_mode)
        return next_token() && read_value(key, skip);

    const vorParameterKey full_key(key);
    const vorParameterPtr existing = m_root.lookup_member(full_key);
    const bool exists = existing->is_ref() || !existing->is_error();
    vorUniqueIdPtr lock_id;
    if (has_lock) {
        const vorUniqueId id = vorUniqueId::from_hex(lock_text.view());
        if (exists) {
            if (!id.is_valid())
                return fail_at(SERIAL_SYNTAX_ERROR, lock_offset);
            vorRefToObjectId ref(id);
            lock_id = m_root.get_lock_uid(existing, ref);
        } else if (id.is_valid()) {
            lock_id = std::make_shared<const vorUniqueId>(id);
        }
    }

    vorParameterPtr par = get_par_from_type(type_word, desc);
    if (par->type() == TYPE_ERROR && !par->is_ref())
        return fail_at(SERIAL_SYNTAX_ERROR, word_offset);
    par->set_defined_from_file(true);
    if (exists && m_new_only)
        skip = true;
    if (m_loader.define_par(full_key, par) != 0)
        return fail_at(SERIAL_SYNTAX_ERROR, key_offset);

    if (!next_token())
        return false;
    if (lock_id)
        m_loader.associate(full_key, lock_id);
    note_locked(key, lock_id);
    if (vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(par.get())) {
        const std::size_t split = m_token.find(":&");
        if (split != std::string::npos) {
            ref->set_ref_root_type(m_token.substr(0, split));
            m_token.erase(0, split + 1);
        }
    }
    return read_value(key, skip);
}

void vorParameterSerializer::Reader::note_locked(const std::string& key,
                                                 const vorUniqueIdPtr& lock_id) {
    if (!lock_id)
        return;
    const vorParameterPtr now = m_root.lookup_member(vorParameterKey(key));
    if (!now->is_locked())
        return;
    const utString text = current_text(*now);
    if (text.empty() || text.view() != m_token)
        m_settings.m_locked_items.insert(vorRefToObjectId(lock_id));
}

bool vorParameterSerializer::Reader::read_array(std::string& key, bool skip) {
    if (!next_token())
        return false;
    const std::size_t key_length = key.size();
    for (int index = 0;; ++index) {
        if (is(')'))
            return true;
        if (index == std::numeric_limits<int>::max())
            return fail(SERIAL_SYNTAX_ERROR);
        if (is(',')) {
            if (!next_token())
                return false;
            continue;
        }
        append_index_key(key, index);
        const bool read = read_value(key, skip);
        key.resize(key_length);
        if (!read || !next_token())
            return false;
        if (is(')'))
            return true;
        if (!is(','))
            return fail(SERIAL_SYNTAX_ERROR);
        if (!next_token())
            return false;
    }
}

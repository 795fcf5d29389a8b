//===- vorParameterSerializerWriter.cpp - Trees to text -------------------===//

#include "vorParameterSerializerImpl.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

namespace {

/// Output gathers in a buffer and goes to the stream in pieces of this size:
/// one stream call per piece instead of one per word.
constexpr std::size_t flush_size = std::size_t(1) << 16;

} // namespace

vorParameterSerializer::Writer::Writer(vorParameterSerializer& settings, std::ostream& out)
    : m_settings(settings)
    , m_out(out) {
    m_buffer.reserve(flush_size + 1024);
}

vorParameterSerialError vorParameterSerializer::Writer::error() {
    flush();
    if (!m_out)
        fail(SERIAL_STREAM_ERROR);
    return m_error;
}

void vorParameterSerializer::Writer::flush() {
    if (!m_buffer.empty() && m_out)
        m_out.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    m_buffer.clear();
}

void vorParameterSerializer::Writer::indent() {
    if (m_settings.m_compact_mode)
        return;
    m_buffer += '\n';
    m_buffer.append(static_cast<std::size_t>(m_depth), '\t');
}

bool vorParameterSerializer::Writer::enter() {
    if (m_depth >= max_nesting) {
        fail(SERIAL_SYNTAX_ERROR);
        return false;
    }
    ++m_depth;
    return true;
}

void vorParameterSerializer::Writer::write_escaped(std::string_view text) {
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '"' && text[i] != '\\')
            continue;
        m_buffer.append(text, from, i - from);
        m_buffer += '\\';
        from = i;
    }
    m_buffer.append(text, from, std::string_view::npos);
}

void vorParameterSerializer::Writer::write_quoted(std::string_view text) {
    m_buffer += '"';
    write_escaped(text);
    m_buffer += '"';
}

void vorParameterSerializer::Writer::write_value(const vorParameter& par, std::string& key) {
    if (m_error != SERIAL_OK)
        return;
    if (m_buffer.size() >= flush_size)
        flush();
    if (!m_out) {
        fail(SERIAL_STREAM_ERROR);
        return;
    }
    if (par.is_ref() && !m_settings.m_follow_refs) {
        write_reference(par);
        return;
    }
    const vorParameter& value = *par.get_ref();
    switch (value.type()) {
    case TYPE_ERROR:
        m_buffer += "\"\"";
        return;
    case TYPE_MAP:
        write_map(value, key);
        return;
    case TYPE_ARRAY:
        if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(&value)) {
            write_array(*array, key);
            return;
        }
        break;
    default:
        break;
    }
    const bool evaluated = m_settings.m_evaluate != 0;
    utString text = evaluated ? value.get_string() : value.get_expr();
    if (value.type() == TYPE_NUMERIC || (!evaluated && value.is_expr()))
        text = vorEvaluator::neutralize(text);
    write_quoted(text.view());
}

void vorParameterSerializer::Writer::write_reference(const vorParameter& ref) {
    const vorParameterRef* reference = vorParameterRef::ut_dynamic_cast(&ref);
    const utString target = reference ? reference->get_ref_string() : utString();
    m_buffer += '"';
    if (ref.is_defined_from_file() && reference) {
        write_escaped(reference->get_ref_root_type().view());
        m_buffer += ':';
    }
    m_buffer += '&';
    write_escaped(target.view());
    m_buffer += '"';
}

bool vorParameterSerializer::Writer::skipped(const vorParameter& member,
                                             const std::string& key) const {
    return (!m_settings.m_save_inactive && !member.is_active()) ||
           (!m_settings.m_save_invalid && !member.is_valid()) || !m_settings.should_include(key);
}

void vorParameterSerializer::Writer::write_definition(const vorParameter& member) {
    space();
    write_quoted(m_settings.get_type_from_par(member).view());
    space();
    write_quoted(member.get_desc().view());
    const vorRefToObjectId lock_id = member.get_lock_id();
    if (lock_id.is_valid()) {
        space();
        write_quoted(lock_id.get_uid().hex_string().view());
    }
}

void vorParameterSerializer::Writer::write_map(const vorParameter& map, std::string& key) {
    if (!enter())
        return;
    m_buffer += '{';
    const std::size_t key_length = key.size();
    bool first = true;
    const vorParameterMap* members = vorParameterMap::ut_dynamic_cast(&map);
    if (members) {
        for (const auto& [name, member] : members->members()) {
            if (m_error != SERIAL_OK)
                break;
            append_member_key(key, name.view());
            if (!member.is_null() && !skipped(*member, key)) {
                if (!first)
                    m_buffer += ',';
                first = false;
                indent();
                write_quoted(name.view());
                if (!m_settings.m_header_mode && member->is_defined_from_file())
                    write_definition(*member);
                space();
                m_buffer += ':';
                space();
                write_value(*member, key);
            }
            key.resize(key_length);
        }
    }
    leave();
    indent();
    m_buffer += '}';
}

void vorParameterSerializer::Writer::write_array(const vorParameterArray& array, std::string& key) {
    if (!enter())
        return;
    m_buffer += '(';
    const std::size_t key_length = key.size();
    const bool list = array.subtype() == SUB_LIST;
    bool first = true;
    const int size = array.size();
    for (int i = 0; i < size && m_error == SERIAL_OK; ++i) {
        const vorParameterPtr& element = array.elements()[static_cast<std::size_t>(i)];
        append_index_key(key, i);
        const bool written = !element.is_null() && !skipped(*element, key);
        if (written || !list) {
            if (!first)
                m_buffer += ',';
            first = false;
            indent();
            if (written)
                write_value(*element, key);
        }
        key.resize(key_length);
    }
    leave();
    indent();
    m_buffer += ')';
}

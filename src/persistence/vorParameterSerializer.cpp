//===- vorParameterSerializer.cpp - Saving and loading trees as text ------===//

#include "vorparameter/persistence/vorParameterSerializer.h"

#include "vorParameterSerializerImpl.h"

#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"

#include <atomic>
#include <ctime>
#include <sstream>

namespace {

std::atomic<int> serializing{0};

/// Switches the serializer's header mode on for a scope.
class HeaderMode {
public:
    explicit HeaderMode(bool& flag)
        : m_flag(flag) {
        m_flag = true;
    }
    ~HeaderMode() { m_flag = false; }
    HeaderMode(const HeaderMode&) = delete;
    HeaderMode& operator=(const HeaderMode&) = delete;

private:
    bool& m_flag;
};

bool stream_ok(const std::ios& stream) {
    return stream.good();
}

/// Whether `prefix` is `key` itself or a whole-component beginning of it.
bool is_key_prefix(std::string_view prefix, std::string_view key) {
    if (prefix.size() > key.size() || key.compare(0, prefix.size(), prefix) != 0)
        return false;
    return prefix.size() == key.size() || key[prefix.size()] == '.' || key[prefix.size()] == '[';
}

} // namespace

vorParameterSerializerCtrl::vorParameterSerializerCtrl() {
    serializing = 1;
}

vorParameterSerializerCtrl::~vorParameterSerializerCtrl() {
    serializing = 0;
}

int vorParameterSerializerCtrl::serializing_parameters() {
    return serializing;
}

vorParameterSerializer::vorParameterSerializer()
    : m_header(std::make_unique<vorParameterRoot>()) {
    m_header->add("type", vorParameterPtr(new vorParameterString()));
    m_header->add("version",
                  vorParameterPtr(new vorParameterNumeric(SUB_INT, vorDimensions(0, 0, 0), 0.0)));
    m_header->add("time", vorParameterPtr(new vorParameterNumeric(
                              SUB_INT, vorDimensions(vorDimStandard::DIM_TIME), 0.0)));
}

vorParameterSerializer::~vorParameterSerializer() = default;

vorParameterSerializer& vorParameterSerializer::get_template_serializer() {
    static vorParameterSerializer serializer;
    return serializer;
}

bool vorParameterSerializer::should_include(std::string_view key) const {
    if (m_header_mode)
        return true;
    if (m_include_pars.empty() && m_exclude_pars.empty() && !m_exclude_all)
        return true;
    // Walk the key's prefixes that end at a component ("a", "a.b", "a.b[2]",
    // "a.b[2].c"): the deepest one named in a set decides, an include
    // winning over an exclude at the same depth.
    const std::string_view text = key;
    bool included = m_include_pars.empty();
    int brackets = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const bool end = i == text.size();
        if (end || (brackets == 0 && i > 0 && (text[i] == '.' || text[i] == '['))) {
            const utString prefix(text.substr(0, i));
            if (m_exclude_all || m_exclude_pars.contains(prefix))
                included = false;
            if (m_include_pars.contains(prefix))
                included = true;
        }
        if (end)
            break;
        if (text[i] == '[')
            ++brackets;
        else if (text[i] == ']' && brackets > 0)
            --brackets;
    }
    // An excluded key still opens the way to something included below it.
    if (included || m_include_pars.empty())
        return included;
    if (m_global_exclude_pars.contains(utString(key)))
        return false;
    for (const utString& entry : m_include_pars)
        if (is_key_prefix(text, entry.view()))
            return true;
    return false;
}

vorParameterSerialError vorParameterSerializer::save(const vorParameterRoot& root,
                                                     std::ostream& out) {
    if (!stream_ok(out))
        return SERIAL_STREAM_ERROR;
    (*m_header)["type"]->set_string(root.get_root_type());
    (*m_header)["version"]->set_string(std::to_string(root.version()));
    const auto now = static_cast<std::int32_t>(std::time(nullptr));
    (*m_header)["time"]->set_string(std::to_string(now));

    Writer writer(*this, out);
    std::string key;
    {
        HeaderMode header(m_header_mode);
        writer.write_value(*m_header, key);
    }
    if (vorParameterSerialError error = writer.error())
        return error;
    writer.write_separator_line();
    writer.write_value(root, key);
    return writer.error();
}

vorParameterSerialError vorParameterSerializer::save(const vorParameterRoot& root,
                                                     CArchive& archive) {
    std::ostringstream text;
    const vorParameterSerialError error = save(root, text);
    if (error == SERIAL_OK || error == SERIAL_SOME_FAILED) {
        archive.write_string(text.str());
        if (archive.failed())
            return SERIAL_STREAM_ERROR;
    }
    return error;
}

vorParameterSerialError vorParameterSerializer::load(vorParameterRoot& root, CArchive& archive) {
    const utString text = archive.read_string();
    if (archive.failed())
        return SERIAL_STREAM_ERROR;
    std::istringstream in(text.str());
    return load(root, in, 0);
}

vorParameterSerialError vorParameterSerializer::read_header_block(std::istream& in) {
    (*m_header)["type"]->set_string(utString());
    (*m_header)["version"]->set_string("0");
    (*m_header)["time"]->set_string("0");
    std::unique_ptr<vorParameterLoader> loader = m_header->create_loader(0);
    HeaderMode header(m_header_mode);
    Reader reader(*this, in, *m_header, *loader, 0);
    std::string key;
    if (!reader.next_token() || !reader.read_value(key, false)) {
        m_error_offset = reader.token_offset();
        return reader.error();
    }
    // A version that is no whole number cannot be compared with the root's.
    vorParameterPtr version = (*m_header)["version"]->evaluate();
    if (version->type() != TYPE_NUMERIC) {
        m_error_offset = reader.token_offset();
        return SERIAL_SYNTAX_ERROR;
    }
    m_read_offset = reader.offset();
    return SERIAL_OK;
}

vorParameterSerialError vorParameterSerializer::read_header(std::istream& in,
                                                            vorParameterFileHeader& header) {
    if (!in.good())
        return SERIAL_STREAM_ERROR;
    vorParameterSerializer serializer;
    const vorParameterSerialError error = serializer.read_header_block(in);
    if (error != SERIAL_OK)
        return error;
    header.type = (*serializer.m_header)["type"]->get_expr();
    header.version = (*serializer.m_header)["version"]->get_int();
    header.time = (*serializer.m_header)["time"]->get_int();
    return SERIAL_OK;
}

vorParameterSerialError vorParameterSerializer::load(vorParameterRoot& root, std::istream& in,
                                                     int new_only) {
    vorParameterSerializerCtrl serializing_now;
    m_failed_pars.clear();
    m_loaded_pars.clear();
    m_locked_items.clear();
    m_error_offset = 0;
    if (!in.good())
        return SERIAL_STREAM_ERROR;

    if (vorParameterSerialError error = read_header_block(in))
        return error;
    if ((*m_header)["type"]->get_expr() != root.get_root_type())
        return SERIAL_WRONG_TYPE;
    const int file_version = (*m_header)["version"]->get_int();
    if (file_version > root.version())
        return SERIAL_NEWER_VERSION;

    m_failed_pars.clear();
    m_loaded_pars.clear();
    {
        std::unique_ptr<vorParameterLoader> loader = root.create_loader(file_version);
        Reader reader(*this, in, root, *loader, new_only);
        reader.start_at(m_read_offset);
        std::string key;
        if (!reader.next_token() || !reader.read_value(key, false)) {
            m_error_offset = reader.token_offset();
            return reader.error();
        }
        for (const utString& loaded : loader->loaded_pars())
            m_loaded_pars.push_back(root.translate_key(loaded));
    }

    if (root.version() != file_version) {
        if (vorParameterUpdater* updater = root.get_updater()) {
            updater->update(file_version, root);
            updater->clear_unrecognised_pars();
        }
    }
    return m_failed_pars.empty() ? SERIAL_OK : SERIAL_SOME_FAILED;
}

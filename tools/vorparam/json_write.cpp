#include "json_write.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace vorparam {

namespace {

class JsonWriter {
public:
    /// The document, built whole so that a text JSON cannot hold leaves
    /// nothing half written.
    bool document(const SavedFile& file) {
        m_text += "{\n  \"type\": ";
        if (!string(file.type, "/type"))
            return false;
        m_text += ",\n  \"version\": " + std::to_string(file.version) + ",\n  \"body\": ";
        m_depth = 1;
        if (!value(file.body, "/body"))
            return false;
        m_text += "\n}\n";
        return true;
    }

    const std::string& text() const { return m_text; }
    std::string error;

private:
    void indent() {
        m_text += '\n';
        m_text.append(2 * static_cast<std::size_t>(m_depth), ' ');
    }

    // A failure builds its pointer on the way back up, so the way down pays
    // nothing for it.
    bool string(const std::string& text, std::string_view step) {
        try {
            m_text +=
                nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::strict);
            return true;
        } catch (const nlohmann::json::type_error&) {
            error = ": a text that is not UTF-8, which JSON cannot hold";
            return failed(step);
        }
    }

    bool failed(std::string_view step) {
        error.insert(0, step);
        return false;
    }

    bool value(const SavedValue& value, std::string_view step) {
        switch (value.kind) {
        case SavedValue::Kind::text:
            return string(value.text, step);
        case SavedValue::Kind::empty_slot:
            m_text += "null";
            return true;
        case SavedValue::Kind::map:
            return map(value.members) || failed(step);
        case SavedValue::Kind::array:
            return array(value.slots) || failed(step);
        }
        return true;
    }

    bool map(const std::vector<SavedMember>& members) {
        if (members.empty()) {
            m_text += "{}";
            return true;
        }
        m_text += '{';
        ++m_depth;
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (i > 0)
                m_text += ',';
            indent();
            if (!member(members[i]))
                return failed(pointer_step(members[i].name));
        }
        --m_depth;
        indent();
        m_text += '}';
        return true;
    }

    bool member(const SavedMember& member) {
        if (!string(member.name, ""))
            return false;
        m_text += ": ";
        if (!member.definition)
            return value(member.value, "");
        m_text += '{';
        ++m_depth;
        indent();
        m_text += "\"$definition\": ";
        if (!definition(*member.definition))
            return failed("/$definition");
        m_text += ',';
        indent();
        m_text += "\"$value\": ";
        if (!value(member.value, "/$value"))
            return false;
        --m_depth;
        indent();
        m_text += '}';
        return true;
    }

    // The description and the lock id are left out when empty: an empty
    // description and none read back alike.
    bool definition(const Definition& definition) {
        m_text += '{';
        ++m_depth;
        indent();
        m_text += "\"type\": ";
        if (!string(definition.type, "/type"))
            return false;
        if (!definition.description.empty()) {
            m_text += ',';
            indent();
            m_text += "\"description\": ";
            if (!string(definition.description, "/description"))
                return false;
        }
        if (!definition.lock_id.empty()) {
            m_text += ',';
            indent();
            m_text += "\"lock\": ";
            if (!string(definition.lock_id, "/lock"))
                return false;
        }
        --m_depth;
        indent();
        m_text += '}';
        return true;
    }

    bool array(const std::vector<SavedValue>& slots) {
        if (slots.empty()) {
            m_text += "[]";
            return true;
        }
        m_text += '[';
        ++m_depth;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (i > 0)
                m_text += ',';
            indent();
            if (!value(slots[i], ""))
                return failed('/' + std::to_string(i));
        }
        --m_depth;
        indent();
        m_text += ']';
        return true;
    }

    std::string m_text;
    int m_depth = 0;
};

} // namespace

bool write_saved_json(const SavedFile& file, std::ostream& out, std::string& error) {
    JsonWriter writer;
    if (!writer.document(file)) {
        error = writer.error;
        return false;
    }
    out << writer.text();
    return true;
}

} // namespace vorparam

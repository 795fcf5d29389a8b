#include "json_text.h"

namespace vorparam {

namespace {

class SavedTextWriter {
public:
    explicit SavedTextWriter(std::vector<std::size_t>& starts)
        : m_starts(starts) {}

    std::string file(const SavedFile& file) {
        m_text += "{\"type\":";
        quoted(file.type);
        m_text += ",\"version\":\"" + std::to_string(file.version) + "\",\"time\":\"0\"}";
        value(file.body);
        return std::move(m_text);
    }

private:
    // Only the quote and the backslash are escaped in the saved form.
    void quoted(const std::string& word) {
        m_text += '"';
        for (const char c : word) {
            if (c == '"' || c == '\\')
                m_text += '\\';
            m_text += c;
        }
        m_text += '"';
    }

    void value(const SavedValue& value) {
        switch (value.kind) {
        case SavedValue::Kind::text:
            quoted(value.text);
            return;
        case SavedValue::Kind::empty_slot:
            return;
        case SavedValue::Kind::map:
            m_text += '{';
            for (std::size_t i = 0; i < value.members.size(); ++i) {
                begin_item(i);
                member(value.members[i]);
            }
            m_text += '}';
            return;
        case SavedValue::Kind::array:
            m_text += '(';
            for (std::size_t i = 0; i < value.slots.size(); ++i) {
                begin_item(i);
                this->value(value.slots[i]);
            }
            m_text += ')';
            return;
        }
    }

    void begin_item(std::size_t index) {
        if (index > 0)
            m_text += ',';
        m_starts.push_back(m_text.size());
    }

    void member(const SavedMember& member) {
        quoted(member.name);
        if (member.definition) {
            quoted(member.definition->type);
            quoted(member.definition->description);
            if (!member.definition->lock_id.empty())
                quoted(member.definition->lock_id);
        }
        m_text += ':';
        value(member.value);
    }

    std::string m_text;
    std::vector<std::size_t>& m_starts;
};

/// Counts members and slots in the writer's order down to the one wanted,
/// keeping the JSON pointer of the value at hand.
class PointerFinder {
public:
    explicit PointerFinder(std::size_t index)
        : m_left(index) {}

    /// True once the item wanted was reached, with `path` leading to it.
    bool value(const SavedValue& value) {
        if (value.kind == SavedValue::Kind::map) {
            for (const SavedMember& member : value.members)
                if (item(pointer_step(member.name), member.definition ? "/$value" : "",
                         member.value))
                    return true;
        } else if (value.kind == SavedValue::Kind::array) {
            for (std::size_t i = 0; i < value.slots.size(); ++i)
                if (item('/' + std::to_string(i), "", value.slots[i]))
                    return true;
        }
        return false;
    }

    std::string path = "/body";

private:
    bool item(const std::string& step, const char* value_step, const SavedValue& value) {
        const std::size_t length = path.size();
        path += step;
        if (m_left-- == 0)
            return true;
        path += value_step;
        if (this->value(value))
            return true;
        path.resize(length);
        return false;
    }

    std::size_t m_left;
};

} // namespace

std::string saved_text(const SavedFile& file, std::vector<std::size_t>& starts) {
    return SavedTextWriter(starts).file(file);
}

std::string pointer_of(const SavedFile& file, std::size_t index) {
    PointerFinder finder(index);
    finder.value(file.body);
    return finder.path;
}

} // namespace vorparam

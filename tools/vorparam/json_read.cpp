#include "json_read.h"

#include "vorparameter/platform/vorStringUtils.h"
#include "vorparameter/platform/vorUniqueId.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

namespace vorparam {

namespace {

using Kind = JsonValue::Kind;

/// Adds one step to a JSON pointer for as long as it lives.
class Step {
public:
    Step(std::string& path, std::string_view name)
        : m_path(path)
        , m_length(path.size()) {
        path += pointer_step(name);
    }
    ~Step() { m_path.resize(m_length); }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

private:
    std::string& m_path;
    std::size_t m_length;
};

/// Walks a document, keeping the JSON pointer of the value at hand for the
/// messages.
class DocumentReader {
public:
    bool document(const JsonValue& document, SavedFile& file) {
        if (document.kind != Kind::object)
            return fail("the document must be an object with \"type\", \"version\" and \"body\"");
        const JsonValue* type = nullptr;
        const JsonValue* version = nullptr;
        const JsonValue* body = nullptr;
        if (!fields(document, {{"type", &type}, {"version", &version}, {"body", &body}},
                    "the document has only \"type\", \"version\" and \"body\""))
            return false;
        if (!type || !version || !body)
            return fail(std::string("the document needs a \"") +
                        (!type      ? "type"
                         : !version ? "version"
                                    : "body") +
                        '"');
        if (!root_type(*type, file.type) || !root_version(*version, file.version))
            return false;
        const Step step(m_path, "body");
        if (body->kind != Kind::object)
            return fail("the body is an object of members");
        return map(*body, file.body, 1);
    }

    std::string error;

private:
    using Field = std::pair<const char*, const JsonValue**>;

    bool fail(std::string words) {
        error = m_path.empty() ? std::move(words) : m_path + ": " + words;
        return false;
    }

    /// Points each known field of `object` at its value; refuses a field
    /// given twice and one not known (with `known_words`).
    bool fields(const JsonValue& object, std::initializer_list<Field> known,
                const char* known_words) {
        for (const auto& member : object.members) {
            const Field* field =
                std::find_if(known.begin(), known.end(),
                             [&member](const Field& f) { return member.first == f.first; });
            if (field == known.end() || *field->second) {
                const Step step(m_path, member.first);
                return fail(field == known.end() ? known_words : "appears twice");
            }
            *field->second = &member.second;
        }
        return true;
    }

    bool root_type(const JsonValue& value, std::string& type) {
        if (value.kind != Kind::string) {
            const Step step(m_path, "type");
            return fail("the tree's type is a string");
        }
        type = value.text;
        return true;
    }

    bool root_version(const JsonValue& value, int& version) {
        const char* end = value.text.data() + value.text.size();
        const auto [stop, problem] = std::from_chars(value.text.data(), end, version);
        if (value.kind == Kind::number && problem == std::errc() && stop == end)
            return true;
        const Step step(m_path, "version");
        return fail("the version is a whole number from -2147483648 to 2147483647");
    }

    /// Maps and arrays nest as deep as blocks may in a saved file.
    bool too_deep(int depth) {
        if (depth <= vorParameterSerializer::max_nesting)
            return false;
        fail("nested deeper than the " + std::to_string(vorParameterSerializer::max_nesting) +
             " levels of blocks a saved file holds");
        return true;
    }

    static bool is_defined_member(const JsonValue& value) {
        return value.kind == Kind::object &&
               std::any_of(value.members.begin(), value.members.end(),
                           [](const auto& member) { return member.first == "$definition"; });
    }

    bool map(const JsonValue& object, SavedValue& map, int depth) {
        if (too_deep(depth))
            return false;
        map.kind = SavedValue::Kind::map;
        map.members.reserve(object.members.size());
        // A map finds its members regardless of letter case.
        std::unordered_map<std::string, const std::string*> names;
        for (const auto& [name, value] : object.members) {
            const Step step(m_path, name);
            const auto [seen, added] = names.emplace(vordowncase(name).str(), &name);
            if (!added && *seen->second == name)
                return fail("appears twice");
            if (!added)
                return fail("differs from \"" + *seen->second +
                            "\" only in letter case, which a map's names do not tell apart");
            SavedMember& saved = map.members.emplace_back();
            saved.name = name;
            if (!member(value, saved, depth))
                return false;
        }
        return true;
    }

    bool member(const JsonValue& value, SavedMember& member, int depth) {
        if (!member.name.empty() && member.name[0] == '$')
            return fail(member.name == "$value"
                            ? "a \"$value\" stands beside a \"$definition\""
                            : "a name does not begin with \"$\" (the library drops it)");
        if (!is_defined_member(value))
            return this->value(value, member.value, depth, false);
        const JsonValue* definition = nullptr;
        const JsonValue* defined_value = nullptr;
        if (!fields(value, {{"$definition", &definition}, {"$value", &defined_value}},
                    "a defined member has only \"$definition\" and \"$value\""))
            return false;
        if (!defined_value)
            return fail("a defined member needs a \"$value\" beside its \"$definition\"");
        member.definition.emplace();
        {
            const Step step(m_path, "$definition");
            if (!this->definition(*definition, *member.definition))
                return false;
        }
        const Step step(m_path, "$value");
        return this->value(*defined_value, member.value, depth, false);
    }

    bool definition(const JsonValue& object, Definition& definition) {
        const char* const form =
            "a definition is an object of a \"type\", a \"description\" and a \"lock\"";
        if (object.kind != Kind::object)
            return fail(form);
        const JsonValue* type = nullptr;
        const JsonValue* description = nullptr;
        const JsonValue* lock = nullptr;
        if (!fields(object, {{"type", &type}, {"description", &description}, {"lock", &lock}},
                    form))
            return false;
        if (!type)
            return fail("a definition needs a \"type\"");
        return word("type", type, definition.type) &&
               word("description", description, definition.description) &&
               word("lock", lock, definition.lock_id) && usable(definition);
    }

    /// Copies the string `value` of the field `name`, when there is one.
    bool word(const char* name, const JsonValue* value, std::string& text) {
        if (!value)
            return true;
        if (value->kind != Kind::string) {
            const Step step(m_path, name);
            return fail("is a string");
        }
        text = value->text;
        return true;
    }

    bool usable(const Definition& definition) {
        const vorParameterPtr made =
            vorParameterSerializer::get_par_from_type(utString(definition.type), utString());
        if (made->type() == TYPE_ERROR && !made->is_ref()) {
            const Step step(m_path, "type");
            return fail("no parameter is made from the type word \"" + definition.type + '"');
        }
        if (!definition.lock_id.empty() && !vorUniqueId::from_hex(definition.lock_id).is_valid()) {
            const Step step(m_path, "lock");
            return fail("a lock id is 32 hexadecimal digits");
        }
        return true;
    }

    bool value(const JsonValue& json, SavedValue& value, int depth, bool in_array) {
        switch (json.kind) {
        case Kind::string:
            value.text = json.text;
            return true;
        case Kind::object:
            if (in_array && is_defined_member(json))
                return fail("an array's slots hold values: only a map's members have definitions");
            return map(json, value, depth + 1);
        case Kind::array:
            return array(json, value, depth + 1);
        case Kind::null:
            if (!in_array)
                return fail("null stands only for an empty slot of an array");
            value.kind = SavedValue::Kind::empty_slot;
            return true;
        default:
            return fail("a value is a string (numbers too: \"6\", not 6), an object or an array");
        }
    }

    bool array(const JsonValue& json, SavedValue& array, int depth) {
        if (too_deep(depth))
            return false;
        array.kind = SavedValue::Kind::array;
        array.slots.resize(json.elements.size());
        for (std::size_t i = 0; i < json.elements.size(); ++i) {
            const Step step(m_path, std::to_string(i));
            if (!value(json.elements[i], array.slots[i], depth, true))
                return false;
        }
        return true;
    }

    std::string m_path;
};

} // namespace

bool read_saved_json(const JsonValue& document, SavedFile& file, std::string& error) {
    DocumentReader reader;
    file = SavedFile();
    if (reader.document(document, file))
        return true;
    error = reader.error;
    return false;
}

} // namespace vorparam

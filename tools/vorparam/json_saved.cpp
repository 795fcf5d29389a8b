#include "json_saved.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vorparam {

namespace {

/// Reads a tree the way a save with default settings writes it: members that
/// are not active are left out (an empty slot in an array), references are
/// written as their targets' paths, expressions as their neutral texts.
class ContentsReader {
public:
    SavedValue value_of(const vorParameter& par) const {
        if (par.is_ref())
            return text_value(reference_text(par));
        const vorParameter& value = *par.get_ref();
        switch (value.type()) {
        case TYPE_ERROR:
            return text_value(std::string());
        case TYPE_MAP:
            return map_of(value);
        case TYPE_ARRAY:
            if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(&value))
                return array_of(*array);
            break;
        default:
            break;
        }
        utString text = value.get_expr();
        if (value.type() == TYPE_NUMERIC || value.is_expr())
            text = vorEvaluator::neutralize(text);
        return text_value(text.str());
    }

private:
    static SavedValue text_value(std::string text) {
        SavedValue value;
        value.text = std::move(text);
        return value;
    }

    /// "&target"; a reference a file defined also names the root type it
    /// requires: "machining:&target".
    static std::string reference_text(const vorParameter& par) {
        const vorParameterRef* reference = vorParameterRef::ut_dynamic_cast(&par);
        if (!reference)
            return "&";
        std::string text;
        if (par.is_defined_from_file())
            text = reference->get_ref_root_type().str() + ':';
        return text + '&' + reference->get_ref_string().str();
    }

    Definition definition_of(const vorParameter& member) const {
        Definition definition;
        definition.type = m_words.get_type_from_par(member).str();
        definition.description = member.get_desc().str();
        const vorRefToObjectId lock_id = member.get_lock_id();
        if (lock_id.is_valid())
            definition.lock_id = lock_id.get_uid().hex_string().str();
        return definition;
    }

    SavedValue map_of(const vorParameter& map) const {
        SavedValue value;
        value.kind = SavedValue::Kind::map;
        const vorParameterMap* members = vorParameterMap::ut_dynamic_cast(&map);
        if (!members)
            return value;
        for (const auto& [name, member] : members->members()) {
            if (member.is_null() || !member->is_active())
                continue;
            SavedMember& saved = value.members.emplace_back();
            saved.name = name.str();
            if (member->is_defined_from_file())
                saved.definition = definition_of(*member);
            saved.value = value_of(*member);
        }
        return value;
    }

    // A list closes up over an element it leaves out; other containers keep
    // its index with an empty slot.
    SavedValue array_of(const vorParameterArray& array) const {
        SavedValue value;
        value.kind = SavedValue::Kind::array;
        const bool list = array.subtype() == SUB_LIST;
        for (const vorParameterPtr& element : array.elements()) {
            if (!element.is_null() && element->is_active())
                value.slots.push_back(value_of(*element));
            else if (!list)
                value.slots.emplace_back().kind = SavedValue::Kind::empty_slot;
        }
        return value;
    }

    vorParameterSerializer m_words;
};

std::string quoted(const std::string& text) {
    constexpr std::size_t shown = 60;
    const nlohmann::json json(text.size() > shown ? text.substr(0, shown) + "..." : text);
    return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string describe(const SavedValue& value) {
    switch (value.kind) {
    case SavedValue::Kind::text:
        return quoted(value.text);
    case SavedValue::Kind::map:
        return "a map of " + std::to_string(value.members.size()) + " members";
    case SavedValue::Kind::array:
        return "an array of " + std::to_string(value.slots.size()) + " slots";
    case SavedValue::Kind::empty_slot:
        return "an empty slot";
    }
    return std::string();
}

std::string describe(const std::optional<Definition>& definition) {
    if (!definition)
        return "no definition";
    std::string words =
        "type " + quoted(definition->type) + ", description " + quoted(definition->description);
    if (!definition->lock_id.empty())
        words += ", lock " + quoted(definition->lock_id);
    return words;
}

bool same(const std::optional<Definition>& a, const std::optional<Definition>& b) {
    if (!a || !b)
        return !a && !b;
    return a->type == b->type && a->description == b->description && a->lock_id == b->lock_id;
}

/// Compares two values below `path` (a JSON pointer that grows and shrinks
/// on the way down); false, with `found` filled, at the first difference.
class Comparison {
public:
    bool values(const SavedValue& wanted, const SavedValue& got) {
        if (wanted.kind != got.kind ||
            (wanted.kind == SavedValue::Kind::text && wanted.text != got.text))
            return differ(describe(got));
        if (wanted.kind == SavedValue::Kind::map)
            return members(wanted.members, got.members);
        if (wanted.kind == SavedValue::Kind::array)
            return slots(wanted.slots, got.slots);
        return true;
    }

    Difference found;
    std::string path;

private:
    bool differ(std::string what) {
        found = {path, std::move(what)};
        return false;
    }

    bool members(const std::vector<SavedMember>& wanted, const std::vector<SavedMember>& got) {
        const std::size_t common = std::min(wanted.size(), got.size());
        for (std::size_t i = 0; i < common; ++i)
            if (!member(wanted[i], got[i]))
                return false;
        if (wanted.size() > got.size()) {
            path += pointer_step(wanted[common].name);
            return differ("nothing");
        }
        if (got.size() > wanted.size())
            return differ("a map with a further member " + quoted(got[common].name));
        return true;
    }

    bool member(const SavedMember& wanted, const SavedMember& got) {
        const std::size_t length = path.size();
        path += pointer_step(wanted.name);
        if (wanted.name != got.name)
            return differ("a member named " + quoted(got.name));
        if (!same(wanted.definition, got.definition)) {
            if (wanted.definition)
                path += "/$definition";
            return differ(describe(got.definition));
        }
        if (wanted.definition)
            path += "/$value";
        if (!values(wanted.value, got.value))
            return false;
        path.resize(length);
        return true;
    }

    bool slots(const std::vector<SavedValue>& wanted, const std::vector<SavedValue>& got) {
        const std::size_t common = std::min(wanted.size(), got.size());
        const std::size_t length = path.size();
        for (std::size_t i = 0; i < common; ++i) {
            path += '/' + std::to_string(i);
            if (!values(wanted[i], got[i]))
                return false;
            path.resize(length);
        }
        if (wanted.size() == got.size())
            return true;
        path += '/' + std::to_string(common);
        return differ(common < got.size() ? describe(got[common]) : "nothing");
    }
};

} // namespace

SavedFile saved_contents(const vorParameterOpenRoot& root) {
    SavedFile file;
    file.type = root.get_root_type().str();
    file.version = root.version();
    file.body = ContentsReader().value_of(root);
    return file;
}

Difference first_difference(const SavedFile& wanted, const SavedFile& got) {
    if (wanted.type != got.type)
        return {"/type", quoted(got.type)};
    if (wanted.version != got.version)
        return {"/version", std::to_string(got.version)};
    Comparison comparison;
    comparison.path = "/body";
    comparison.values(wanted.body, got.body);
    return comparison.found;
}

std::string pointer_step(std::string_view name) {
    std::string step = "/";
    for (const char c : name) {
        if (c == '~')
            step += "~0";
        else if (c == '/')
            step += "~1";
        else
            step += c;
    }
    return step;
}

} // namespace vorparam

//===- vorParameterRoot.cpp - The top of a parameter tree -----------------===//

#include "vorparameter/parameter/vorParameterRoot.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <typeinfo>
#include <utility>

UT_DEFINE_TYPE(vorParameterRoot, vorParameterMap)

vorParameterRoot::vorParameterRoot(const utString& root_type, int created,
                                   const utString& root_name)
    : m_created(created)
    , m_root_type(root_type)
    , m_root_name(root_name) {
    set_typename(root_type);
}

void vorParameterRoot::reset() {
    vorParameterMap::reset();
    m_modified = 0;
}

void vorParameterRoot::set_onmodify_param_name(const utString& name) {
    vorParameter::set_onmodify_param_name(name);
    for (const auto& member : members())
        member.second->set_onmodify_param_name(name);
}

utString vorParameterRoot::print(int indent) const {
    utString header = "(ROOT:" + m_root_type + (is_valid() ? ") \n" : " !) \n");
    return header + print_members(indent).view();
}

vorRefToObjectId vorParameterRoot::get_lock_id_imp(const vorParameter& node) const {
    return node.is_locked() ? m_id : vorRefToObjectId();
}

const utString& vorParameterRoot::lookup_key_synonym(const utString& name) const {
    // Three entries: comparing is cheaper than hashing, and this runs for
    // every lookup in a root.
    static const std::pair<utString, utString> synonyms[] = {
        {"id", "ID"}, {"root_type", "RootType"}, {"name", "Name"}};
    for (const auto& [synonym, replacement] : synonyms)
        if (name == synonym)
            return replacement;
    return name;
}

utString vorParameterRoot::translate_key(const utString& text) const {
    if (!text.contains("["))
        return lookup_key_synonym(text);
    utString result;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t open = text.find("[", pos);
        if (open == utString::npos)
            open = text.size();
        if (open > pos)
            result += lookup_key_synonym(text.substr(pos, open - pos));
        if (open == text.size())
            break;
        std::size_t close = text.find("]", open);
        std::size_t end = close == utString::npos ? text.size() : close + 1;
        result += text.view().substr(open, end - open);
        pos = end;
    }
    return result;
}

vorParameterKey vorParameterRoot::translated(const vorParameterKey& key) const {
    // Most paths have no brackets: their synonym is found without a copy.
    const utString& text = key.str();
    if (!text.contains("[")) {
        const utString& synonym = lookup_key_synonym(text);
        return &synonym == &text ? key : vorParameterKey(synonym);
    }
    utString translation = translate_key(text);
    return translation == text ? key : vorParameterKey(translation);
}

vorParameterPtr vorParameterRoot::lookup_text(std::string_view path, bool as_const) const {
    // A host's root may have synonyms and lookups of its own.
    return lookup_text_walking(typeid(*this) == typeid(vorParameterRoot), path, as_const);
}

vorParameterPtr vorParameterRoot::lookup_text_walking(bool walk, std::string_view path,
                                                      bool as_const) const {
    if (walk) {
        vorParameterPtr found = find_plain_text(path);
        if (!found.is_null())
            return found;
    }
    return vorParameter::lookup_text(path, as_const);
}

vorParameterPtr vorParameterRoot::lookup_member(const vorParameterKey& key) {
    return lookup(translated(key), false);
}

vorParameterPtr vorParameterRoot::lookup_translated(const vorParameterKey& key,
                                                    bool as_const) const {
    const vorParameterKey k = translated(key);
    vorParameterPtr found = lookup(k, as_const);
    if (found->is_ref() || !found->is_error())
        return found;
    vorParameterPtr method = lookup_method(k);
    if (!method.is_null() && (method->is_ref() || !method->is_error()))
        return method;
    return found;
}

vorParameterPtr vorParameterRoot::operator[](const vorParameterKey& key) const {
    return lookup_translated(key, true);
}

vorParameterPtr vorParameterRoot::operator[](const vorParameterKey& key) {
    return lookup_translated(key, false);
}

vorParameterPtr vorParameterRoot::lookup_method(const vorParameterKey& key) const {
    if (key.type() != TYPE_MAP)
        return vorParameterPtr();
    const utString& name = key.impl().first_lower();
    if (name == "rootpar" ||
        (!m_root_type.empty() && vorequal_nocase(name.view(), m_root_type.view()))) {
        vorParameterPtr self(coPrfExtern(), const_cast<vorParameterRoot*>(this));
        if (key.remainder_str().empty())
            return self;
        return static_cast<const vorParameter&>(*this)[key.remainder()];
    }
    if (name == "roottype")
        return vorParameterString::create_verbatim(m_root_type);
    if (name == "name")
        return vorParameterString::create_verbatim(m_root_name);
    if (name == "id")
        return vorParameterString::create_verbatim(m_id.get_uid().hex_string());
    return vorParameterPtr();
}

vorUniqueIdPtr vorParameterRoot::get_lock_uid(vorParameterPtr, vorRefToObjectId& ref) {
    return ref.get_uid_ptr();
}

std::unique_ptr<vorParameterLoader> vorParameterRoot::create_loader(int) {
    return std::make_unique<vorParameterLoader>(*this);
}

const vorParameterRoot* vorParameterRoot::get_root(const vorParameter* node) {
    if (!node)
        return nullptr;
    while (node->parent())
        node = node->parent();
    return ut_dynamic_cast(node);
}

void vorParameterRoot::reset_nonpersistent_pars() {
    for (const utString& name : m_nonpersistent) {
        vorParameterPtr member = lookup(vorParameterKey(name), false);
        if (!member->is_error())
            member->reset();
    }
}

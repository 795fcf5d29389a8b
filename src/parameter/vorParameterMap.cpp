//===- vorParameterMap.cpp - Named members --------------------------------===//

#include "vorparameter/parameter/vorParameterMap.h"

#include "parameter/vorTreeDepth.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>
#include <typeinfo>

#include <vector>

UT_DEFINE_TYPE(vorParameterMap, vorParameter)

vorParameterMap::vorParameterMap(const vorParameterMap& other)
    : vorParameter(other)
    , m_fixed(other.m_fixed)
    , m_copy_active_expr(other.m_copy_active_expr)
    , m_subtype(other.m_subtype)
    , m_typename(other.m_typename) {
    // The members are shared for a moment, then cloned without recursion.
    m_members = other.m_members;
    m_other_case = other.m_other_case;
    clone_members_of(*this);
}

void vorParameterMap::clone_members() {
    for (auto& member : m_members) {
        member.second = member.second.copy();
        link_par(member.second);
    }
}

void vorParameterMap::release_members() {
    vorParameterMap::unlink_all();
    m_members.clear();
    m_other_case.clear();
}

vorParameterMap& vorParameterMap::operator=(const vorParameterMap& other) {
    if (this == &other)
        return *this;
    vorParameterMap copy(other);
    remove_all();
    vorParameter::operator=(other);
    m_members = std::move(copy.m_members);
    m_other_case = std::move(copy.m_other_case);
    for (const auto& member : m_members)
        link_par(member.second);
    m_fixed = other.m_fixed;
    m_copy_active_expr = other.m_copy_active_expr;
    m_subtype = other.m_subtype;
    m_typename = other.m_typename;
    return *this;
}

vorParameterMap::~vorParameterMap() {
    unlink_all();
}

void vorParameterMap::reset() {
    vorTreeDepth depth;
    if (depth.too_deep())
        return;
    for (const auto& member : m_members)
        member.second->reset();
}

bool vorParameterMap::is_valid() const {
    vorTreeDepth depth;
    if (depth.too_deep())
        return false;
    for (const auto& member : m_members)
        if (member.second->is_active() && !member.second->is_valid())
            return false;
    return vorParameter::is_valid();
}

vorParameterOnReadFn vorParameterMap::set_onread_callback(vorParameterOnReadFn fn) {
    vorTreeDepth depth;
    if (!depth.too_deep())
        for (const auto& member : m_members)
            member.second->set_onread_callback(fn);
    return vorParameter::set_onread_callback(fn);
}

utString vorParameterMap::print(int indent) const {
    utString header = is_valid() ? "(MAP) \n" : "(MAP !) \n";
    return header + print_members(indent).view();
}

utString vorParameterMap::print_members(int indent) const {
    vorTreeDepth depth;
    if (depth.too_deep())
        return vorTreeDepth::too_deep_mark;
    utString text;
    for (const auto& [name, member] : m_members) {
        text += std::string(static_cast<std::size_t>(std::max(indent, 0)), '\t');
        text += name;
        text += ": ";
        text += member->print(indent + 1);
    }
    return text;
}

void vorParameterMap::copy_value_from(const vorParameter& source) {
    const vorParameterMap* other = ut_dynamic_cast(&source);
    vorTreeDepth depth;
    if (!other || other == this || depth.too_deep())
        return;
    for (const auto& [name, member] : other->m_members)
        if (vorParameterPtr* mine = m_members.find(name))
            (*mine)->copy_value_from(*member);
}

const vorParameterPtr*
vorParameterMap::find_member_in_other_case(const vorParameterKeyImpl& key) const {
    const utString* name = other_case_name(key.first_lower());
    return name ? m_members.find(*name) : nullptr;
}

const utString* vorParameterMap::other_case_name(const utString& lower) const {
    if (const utString* indexed = m_other_case.find(lower))
        return indexed->is_invalid() ? nullptr : indexed;
    return &lower;
}

void vorParameterMap::index_letter_case(const utString& name, const utString& lower) {
    if (name == lower)
        m_other_case.erase(lower);
    else
        m_other_case.set(lower, name);
}

void vorParameterMap::unindex_letter_case(const utString& name) {
    const utString lower = vordowncase(name.view());
    const utString* indexed = m_other_case.find(lower);
    if (!indexed)
        return;
    if (name == lower) {
        // The mark that a member of this spelling finds nothing goes with it.
        if (indexed->is_invalid())
            m_other_case.erase(lower);
    } else if (!indexed->is_invalid() && *indexed == name) {
        if (m_members.contains(lower))
            m_other_case.set(lower, utString::invalid());
        else
            m_other_case.erase(lower);
    }
}

vorParameterPtr vorParameterMap::keys_list() const {
    std::vector<utString> names;
    names.reserve(m_members.size());
    for (const auto& member : m_members)
        names.push_back(member.first.str());
    return vorParameterList::of_strings(names);
}

vorParameterPtr vorParameterMap::find_path(const vorParameterKey& key, bool as_const) const {
    // A member that is a plain map would run this very lookup on the
    // remainder and apply the same final checks, so the walk descends into it
    // here without a handle or key for each level; any other member looks the
    // remainder up itself.
    const vorParameterMap* map = this;
    const vorParameterKeyImpl* path = &key.impl();
    vorParameterKeyImplPtr held_path;
    for (;;) {
        if (path->type() != TYPE_MAP)
            return vorParameterPtr();
        if (path->first().view() == std::string_view("_keys"))
            return map->keys_list();
        const vorParameterPtr* member = map->find_member(*path);
        if (!member)
            return vorParameterPtr();
        if (path->remainder().empty())
            return *member;
        vorParameter& node = **member;
        if (typeid(node) != typeid(vorParameterMap)) {
            const vorParameterKey rest_key(path->remainder_impl());
            return as_const ? static_cast<const vorParameter&>(node)[rest_key] : node[rest_key];
        }
        map = static_cast<const vorParameterMap*>(&node);
        // Nothing below changes the key cache, so a remembered record stays
        // alive for the rest of the walk without a share of it.
        if (const vorParameterKeyImpl* rest = path->remembered_remainder()) {
            path = rest;
        } else {
            vorParameterKeyImplPtr rest_held = path->remainder_impl();
            held_path = std::move(rest_held);
            path = held_path.get();
        }
    }
}

vorParameterPtr vorParameterMap::find_plain_path(const vorParameterKeyImpl* path) const {
    const vorParameterMap* map = this;
    for (;;) {
        if (!path || path->type() != TYPE_MAP || path->first().view() == std::string_view("_keys"))
            return vorParameterPtr();
        const vorParameterPtr* member = map->find_member(*path);
        const vorParameter* node = member ? member->get() : nullptr;
        if (!node)
            return vorParameterPtr();
        if (path->remainder().empty()) {
            // Held before it is asked anything (a host's node may change the
            // tree when asked), and returned by name so that it moves: a copy
            // would cost two more atomic steps.
            vorParameterPtr found = *member;
            if (!lookup_finds(*found))
                return vorParameterPtr();
            return found;
        }
        if (typeid(*node) != typeid(vorParameterMap))
            return vorParameterPtr();
        map = static_cast<const vorParameterMap*>(node);
        path = path->remembered_remainder();
    }
}

vorParameterPtr vorParameterMap::lookup_text(std::string_view path, bool as_const) const {
    // A subclass may answer lookups its own way.
    if (typeid(*this) == typeid(vorParameterMap)) {
        vorParameterPtr found = find_plain_path(vorParameterKeyImpl::find_cached(path));
        if (!found.is_null())
            return found;
    }
    return vorParameter::lookup_text(path, as_const);
}

bool vorParameterMap::lookup_finds(const vorParameter& node) {
    if (node.is_error() && !node.is_ref())
        return false;
    return !vorEvalFunction::functions_only() || node.type() == TYPE_FUNCTION;
}

vorParameterPtr vorParameterMap::lookup(const vorParameterKey& key, bool as_const) const {
    vorParameterPtr result = find_path(key, as_const);
    if (result.is_null() || !lookup_finds(*result))
        return vorParameterError::create(ERR_INVALID_NAME);
    return result;
}

vorParameterPtr vorParameterMap::operator[](const vorParameterKey& key) const {
    return lookup(key, true);
}

vorParameterPtr vorParameterMap::operator[](const vorParameterKey& key) {
    return lookup(key, false);
}

vorParameterPtr vorParameterMap::add(const vorParameterKey& key, vorParameterPtr par) {
    // The map's own lookup, not a root's: a root's synonyms and built-in names
    // must not stop a member of that name from being added. A key without a
    // remainder is its own first component and needs no new key.
    vorParameterPtr existing = lookup(key.remainder_str().empty() ? key : key.first_key(), true);
    if (!existing->is_ref() && !existing->is_error())
        return existing;
    if (is_locked())
        return vorParameterError::create(ERR_UNKNOWN);
    if (key.type() != TYPE_MAP)
        return vorParameterError::create(ERR_INVALID_NAME);
    // A map cannot hold itself or an ancestor: that would make the tree a
    // cycle. Like a locked map, it refuses the change.
    if (par.is_null() || is_descendent(par.get()))
        return vorParameterError::create(ERR_UNKNOWN);

    link_par(par);
    m_members.set(utCompactString(key.first()), par);
    index_letter_case(key.first(), key.impl().first_lower());
    par->set_name(key.str());
    return par;
}

vorParameterPtr vorParameterMap::remove(const vorParameterKey& key) {
    if (is_locked())
        return vorParameterError::create(ERR_UNKNOWN);
    if (key.type() != TYPE_MAP)
        return vorParameterError::create(ERR_INVALID_NAME);
    const vorParameterPtr* member = find_member(key.impl());
    if (!member)
        return vorParameterError::create(ERR_INVALID_NAME);
    vorParameterPtr removed = *member;
    // The member's exact name: the key's own, or the one the letter-case
    // index gave find_member.
    const utString name =
        m_members.contains(key.first()) ? key.first() : *other_case_name(key.impl().first_lower());
    unlink_par(removed);
    m_members.erase(name);
    // After a reference was replaced, two members may differ in letter case
    // alone; the other one is not found in another case until it is added
    // again.
    unindex_letter_case(name);
    return removed;
}

void vorParameterMap::remove_all() {
    unlink_all();
    m_members.clear();
    m_other_case.clear();
}

void vorParameterMap::unlink_all() {
    for (const auto& member : m_members)
        unlink_par(member.second);
}

bool vorParameterMap::is_equal(const vorParameter& other) const {
    const vorParameterMap* map = ut_dynamic_cast(&other);
    if (!map)
        return false;
    if (map == this)
        return true;
    vorTreeDepth depth;
    if (depth.too_deep() || map->m_members.size() != m_members.size())
        return false;
    for (const auto& [name, member] : m_members) {
        const vorParameterPtr* theirs = map->m_members.find(name);
        if (!theirs || *member != **theirs)
            return false;
    }
    return true;
}

namespace {

/// Gives `top` and every node below it a record of its own without an active
/// expression. Iterative, so that the depth of the tree does not matter.
void strip_active_expressions(vorParameter& top) {
    std::vector<vorParameter*> pending{&top};
    while (!pending.empty()) {
        vorParameter& node = *pending.back();
        pending.pop_back();
        node.set_impl(vorParameterImplPtr::clone_of(*node.get_impl()));
        node.set_active(utString());
        if (const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(&node)) {
            for (const auto& member : map->members())
                pending.push_back(member.second.get());
        } else if (node.type() == TYPE_ARRAY && !node.is_ref()) {
            for (int i = 0, n = node.size(); i < n; ++i)
                pending.push_back(node[vorParameterKey(i, utString())].get());
        }
    }
}

} // namespace

vorParameter* vorParameterMap::create_object() const {
    vorParameter* clone = create_new();
    if (!m_copy_active_expr)
        strip_active_expressions(*clone);
    return clone;
}

bool vorParameterMap::equivalent(const vorParameterMap& other) const {
    if (other.m_members.size() != m_members.size())
        return false;
    for (const auto& [name, member] : m_members) {
        const vorParameterPtr* theirs = other.m_members.find(name);
        if (!theirs || (*theirs)->type() != member->type() ||
            (*theirs)->subtype() != member->subtype())
            return false;
    }
    return true;
}

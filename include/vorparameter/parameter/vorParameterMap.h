//===- vorParameterMap.h - Named members ------------------------*- C++ -*-===//
//
// A map is the named-members container of the tree. Members are found by
// name, case-insensitively (an exact match wins), and iterate in the order
// they were added. A map owns its members and is their parent.
//
// The reserved name "_keys" answers a new list of the members' exact names;
// a member actually named "_keys" is never reachable by name. A failed lookup
// is always an error of kind ERR_INVALID_NAME, whatever went wrong deeper in
// the path. add() never replaces an existing member (except a reference).
//
// Adding, finding and removing a member by name take amortised O(1) time in
// any order; remove_all() is linear. A map has no limit on its members.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERMAP_H
#define VORPARAMETER_PARAMETER_VORPARAMETERMAP_H

#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/platform/utCompactString.h"

class VOR_API vorParameterMap : public vorParameter {
    UT_DECLARE_TYPE(vorParameterMap, vorParameter)
public:
    /// Members by name. The names are compact: a large tree holds one per
    /// member.
    using Members = coTable<utCompactString, vorParameterPtr, utTextHash>;

    vorParameterMap() = default;
    /// A map reporting `subtype` (SUB_MAP_OTHER or a host's own value).
    explicit vorParameterMap(vorParameterSubType subtype)
        : m_subtype(subtype) {}
    /// Deep copy: every member is cloned and the clones are linked to the copy.
    vorParameterMap(const vorParameterMap& other);
    vorParameterMap& operator=(const vorParameterMap& other);
    ~vorParameterMap() override;

    vorParameter* create_new() const override { return new vorParameterMap(*this); }
    /// Resets every member.
    void reset() override;
    /// Valid when every active member is valid.
    bool is_valid() const override;
    const utString& get_typename() const override { return m_typename; }
    void set_typename(const utString& name) override { m_typename = name; }
    /// Sets the read callback on the map and every member below it.
    vorParameterOnReadFn set_onread_callback(vorParameterOnReadFn fn) override;
    utString print(int indent) const override;
    /// Copies the values of the members that both maps have, by name.
    void copy_value_from(const vorParameter& source) override;
    int size() const override { return static_cast<int>(m_members.size()); }
    using vorParameter::operator[];
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    /// Removes and unlinks the member named by the key's first component.
    vorParameterPtr remove(const vorParameterKey& key) override;
    void remove_all() override;
    vorParameterSubType subtype() const override { return m_subtype; }
    vorParameterType type() const override { return TYPE_MAP; }
    utString get_xml_typename() const override { return "map"; }
    /// Same member names (in any order) with equal members.
    bool is_equal(const vorParameter& other) const override;
    virtual void unlink_all();

    /// A clone without active expressions (unless set_copy_active_expr_on()).
    vorParameter* create_object() const;
    /// Same member names and member types, values aside.
    bool equivalent(const vorParameterMap& other) const;
    bool is_fixed() const { return m_fixed != 0; }
    void not_fixed() { m_fixed = 0; }
    void set_copy_active_expr_on() { m_copy_active_expr = 1; }

    /// The members in insertion order.
    const Members& members() const { return m_members; }
    /// The member of exactly or case-insensitively `name`, or null.
    const vorParameterPtr* find_member(const vorParameterKeyImpl& key) const {
        if (const vorParameterPtr* exact = m_members.find(key.first_name(), key.first_hash()))
            return exact;
        return find_member_in_other_case(key);
    }

protected:
    void clone_members() override;
    void release_members() override;
    /// One line per member: tabs, name, ": " and the member's own print.
    utString print_members(int indent) const;
    /// A plain map finds a path the key cache knows by walking it (see
    /// find_plain_path), without making a key.
    vorParameterPtr lookup_text(std::string_view path, bool as_const) const override;
    vorParameterPtr lookup(const vorParameterKey& key, bool as_const) const;
    /// What `key` names below this map before lookup's checks: null when no
    /// member matches.
    vorParameterPtr find_path(const vorParameterKey& key, bool as_const) const;
    /// What lookup() answers for the key record `path` when the path leads
    /// through plain maps only, its remainders are remembered (see
    /// vorParameterKeyImpl::remembered_remainder) and lookup() finds a
    /// member; otherwise (also for a null `path`) an empty handle, and
    /// lookup() must be asked. It changes nothing, not even the key cache,
    /// so asking lookup() after it has the same effects as asking it alone.
    vorParameterPtr find_plain_path(const vorParameterKeyImpl* path) const;
    /// Whether lookup() answers `node` when it finds it, rather than an
    /// Invalid name error.
    static bool lookup_finds(const vorParameter& node);
    vorParameterPtr keys_list() const;

private:
    /// find_member when no member is spelt exactly as the key's first name.
    const vorParameterPtr* find_member_in_other_case(const vorParameterKeyImpl& key) const;
    /// The exact name that a lookup of `lower` in another letter case finds:
    /// the indexed name, `lower` itself when the index has none, or null.
    const utString* other_case_name(const utString& lower) const;
    /// Makes lookups of `name` in any letter case find it.
    void index_letter_case(const utString& name, const utString& lower);
    /// Called after `name` was removed: lookups in another letter case that
    /// found it now find nothing.
    void unindex_letter_case(const utString& name);

    Members m_members;
    /// Lower-case name to the exact name that lookups in another letter case
    /// find (the member last added under that lower-case name). Names are
    /// nearly always written in lower case, so a name that finds the member
    /// spelt exactly like its lower-case form has no entry, and a plain map
    /// carries no index at all. An invalid exact name marks a lower-case name
    /// that finds nothing although a member of that spelling exists: the
    /// member it found last was removed.
    coTable<utString, utString> m_other_case;
    int m_fixed = 1;
    int m_copy_active_expr = 0;
    vorParameterSubType m_subtype = SUB_MAP;
    utString m_typename;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERMAP_H

//===- vorParameterRoot.h - The top of a parameter tree ---------*- C++ -*-===//
//
// A root is the map at the top of a tree. It carries the tree's type (for
// example "machining"), a display name and an object id, and adds two kinds
// of names to the map's lookup:
//
//   synonyms        "id", "root_type" and "name" stand for the members "ID",
//                   "RootType" and "Name" (lookup_key_synonym; exact case);
//   built-in names  the root's own type name and "rootpar" (the root itself),
//                   "roottype", "name" and "id" (new strings), answered when
//                   no member matches (lookup_method; any case).
//
// Host roots override lookup_key_synonym, lookup_method, create_loader,
// get_updater and build_tree to add their own.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERROOT_H
#define VORPARAMETER_PARAMETER_VORPARAMETERROOT_H

#include "vorparameter/parameter/vorParameterLoader.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <algorithm>
#include <memory>
#include <string_view>

class VOR_API vorParameterRoot : public vorParameterMap {
    UT_DECLARE_TYPE(vorParameterRoot, vorParameter)
public:
    explicit vorParameterRoot(const utString& root_type = utString(), int created = 0,
                              const utString& root_name = utString());
    vorParameterRoot(const vorParameterRoot& other) = default;

    vorParameter* create_new() const override { return new vorParameterRoot(*this); }
    /// Resets every member and clears the modified flag.
    void reset() override;
    int get_precedence() const override { return 0; }
    /// Stores the name on the root and on every member (the parameter that
    /// hears about changes anywhere in the tree).
    void set_onmodify_param_name(const utString& name) override;
    utString print(int indent) const override;
    const vorRefToObjectId& get_ref_id() const override { return m_id; }
    using vorParameterMap::operator[];
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    vorParameterSubType subtype() const override { return SUB_ROOT; }
    /// The root's id for a locked node, an empty id otherwise.
    vorRefToObjectId get_lock_id_imp(const vorParameter& node) const override;

    /// The version of the tree's layout that this root writes; files of a
    /// higher version are refused, older ones go to the updater after
    /// loading. 0 here; host roots override it.
    virtual int version() const { return 0; }
    /// A loader for a file of `version`; the default adds and sets by key.
    virtual std::unique_ptr<vorParameterLoader> create_loader(int version);
    /// The updater for files of older versions; none here.
    virtual vorParameterUpdater* get_updater() { return nullptr; }
    virtual int get_modified() const { return m_modified; }
    virtual void set_modified(int modified) { m_modified = modified; }
    /// The replacement of a synonym, or `name` itself.
    virtual const utString& lookup_key_synonym(const utString& name) const;
    /// The built-in names; an empty handle for any other name.
    virtual vorParameterPtr lookup_method(const vorParameterKey& key) const;
    /// Lets a host root create its members; nothing here.
    virtual void build_tree(vorParameter*) {}
    /// The id to lock `par` with; the default gives `ref`'s own id.
    virtual vorUniqueIdPtr get_lock_uid(vorParameterPtr par, vorRefToObjectId& ref);

    /// The parameter at `key` among the tree's own members, under the root's
    /// synonyms, but never one of the built-in names or functions: what a
    /// loader needs, for a file's member "angle" is not the function angle().
    vorParameterPtr lookup_member(const vorParameterKey& key);

    /// Replaces synonyms in every stretch of `text` outside "[...]" groups
    /// ("name[2].name" becomes "Name[2].name").
    utString translate_key(const utString& text) const;
    /// The root above `node` (or `node` itself), null when the top is no root.
    static const vorParameterRoot* get_root(const vorParameter* node);
    /// Fills `table` with, for each parameter below `root` (and `root`
    /// itself) that has an active expression, keyed by its full display name,
    /// the names its expression mentions: dotted names whose every component
    /// begins with a capital letter ("Depth", "Tool.Diameter"), the naming
    /// rule of parameters that conditions read. Names longer than
    /// max_table_name_length bytes are passed over.
    static void build_active_expr_pars_table(const vorParameter& root,
                                             utStringutStringcoSetcoTable& table);
    /// The same relation inverted: for each name that an active expression
    /// mentions, the full names of the parameters whose active state depends
    /// on it.
    static void build_par_dependency_table(const vorParameter& root,
                                           utStringutStringcoSetcoTable& table);
    static constexpr std::size_t max_table_name_length = 1024;

    /// Resets the members registered with add_nonpersistent_par.
    void reset_nonpersistent_pars();
    void add_nonpersistent_par(const utString& name) { m_nonpersistent.push_back(name); }

    int created() const { return m_created; }
    const vorRefToObjectId& get_id() const { return m_id; }
    void set_id(const vorRefToObjectId& id) { m_id = id; }
    const utString& get_root_type() const { return m_root_type; }
    const utString& get_root_name() const { return m_root_name; }
    void set_root_name(const utString& name) { m_root_name = name; }

protected:
    /// A plain root answers a text by find_plain_text when it can.
    vorParameterPtr lookup_text(std::string_view path, bool as_const) const override;
    /// find_plain_text when `walk` (the caller's lookups are this class's,
    /// but for lookup_method), then the key lookup: lookup_text of a root.
    vorParameterPtr lookup_text_walking(bool walk, std::string_view path, bool as_const) const;
    /// The member that the root's lookup finds for `path` when the key cache
    /// knows the text, no synonym applies to it and it leads through plain
    /// maps (see vorParameterMap::find_plain_path); otherwise an empty handle,
    /// and operator[] must be asked. A host's root whose synonyms and
    /// operator[] are this class's may answer its own lookup_text with it
    /// first: lookup_method is only asked for names that no member has.
    vorParameterPtr find_plain_text(std::string_view path) const {
        const vorParameterKeyImpl* record = vorParameterKeyImpl::find_cached(path);
        if (!record || may_translate(*record))
            return vorParameterPtr();
        return find_plain_path(record);
    }

private:
    /// Whether the root's synonyms may change the path of `key`. Synonyms
    /// replace a whole path without brackets, or a stretch between brackets,
    /// and none of them has a "." in it.
    bool may_translate(const vorParameterKeyImpl& key) const {
        // Remainders are a few bytes: a loop beats a call of memchr.
        const std::string_view rest = key.remainder().view();
        if (std::find(rest.begin(), rest.end(), '[') != rest.end())
            return true;
        return rest.empty() && &lookup_key_synonym(key.first()) != &key.first();
    }
    /// `key` with the root's synonyms replaced.
    vorParameterKey translated(const vorParameterKey& key) const;
    vorParameterPtr lookup_translated(const vorParameterKey& key, bool as_const) const;

    int m_modified = 0;
    int m_created;
    vorRefToObjectId m_id;
    utString m_root_type;
    utString m_root_name;
    utStringcoSList m_nonpersistent;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERROOT_H

//===- vorParameterLoader.h - Receiving a tree from a file ------*- C++ -*-===//
//
// A loader is what a root hands to the text reader: the reader passes it the
// parameters a file defines and the value texts it holds, and the loader
// decides what to do with them. The default loader of vorParameterRoot adds
// defined parameters where the file puts them and sets value texts on the
// parameters found at their keys. Hosts derive their own to rename or refuse.
//
// vorParameterUpdater brings a tree saved by an older version up to date.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERLOADER_H
#define VORPARAMETER_PARAMETER_VORPARAMETERLOADER_H

#include "vorparameter/parameter/vorParameter.h"

class vorParameterRoot;

class VOR_API vorParameterLoader {
public:
    explicit vorParameterLoader(vorParameterRoot& root)
        : m_root(root) {}
    virtual ~vorParameterLoader() = default;
    vorParameterLoader(const vorParameterLoader&) = delete;
    vorParameterLoader& operator=(const vorParameterLoader&) = delete;

    /// Adds `par` at `key` unless a parameter is there already; non-zero
    /// refuses the definition (no container at the key's parent).
    virtual int define_par(const vorParameterKey& key, vorParameterPtr par);
    /// Sets `text` on the parameter at `key`; non-zero refuses the value (no
    /// such parameter).
    virtual int load_par(const vorParameterKey& key, const utString& text);
    /// Ties the object `id` to the parameter at `key`; the default does nothing.
    virtual void associate(const vorParameterKey& key, vorUniqueIdPtr id);
    /// Told when the file opens a "{...}" block (`type` TYPE_MAP) or a
    /// "(...)" block (TYPE_ARRAY) at `key`, before its contents arrive; the
    /// default does nothing. A loader that builds trees without a schema
    /// creates the container here.
    virtual void open_block(const vorParameterKey& key, vorParameterType type);
    /// The keys whose values were loaded, in order.
    const utStringcoSList& loaded_pars() const { return m_loaded; }

protected:
    vorParameterRoot& root() { return m_root; }
    /// Records `key` as loaded (what load_par does when it sets a value).
    void record_loaded(const utString& key) { m_loaded.push_back(key); }
    /// What load_par does with the parameter `target` found at `key`: sets
    /// `text` and records the key; non-zero, changing nothing, when `target`
    /// is an error.
    int load_into(const vorParameterPtr& target, const vorParameterKey& key, const utString& text);

private:
    vorParameterRoot& m_root;
    utStringcoSList m_loaded;
};

class VOR_API vorParameterUpdater {
public:
    virtual ~vorParameterUpdater() = default;
    /// Brings `root`, just loaded from a file of `file_version`, up to date.
    virtual void update(int file_version, vorParameterRoot& root) = 0;
    /// Forgets the parameters the update did not recognise.
    virtual void clear_unrecognised_pars() {}
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERLOADER_H

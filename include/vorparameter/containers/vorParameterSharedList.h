//===- vorParameterSharedList.h - Lists of foreign parameters ---*- C++ -*-===//
//
// A shared list gathers parameters that belong to other containers (for
// example the tools chosen for a toolpath). It checks that each one has the
// type of its element type and already has a parent, and it never changes
// that parent: adding, removing and copying leave the members where they
// live. A copy of a shared list holds the same members.
//
// Like a list it grows on demand: looking up index size() or -1 appends a
// fresh clone of the element type, which is also what an error or an empty
// handle given to add() becomes.
//
// Failures:
//   - a key that is neither empty nor an index without remainder, or an
//     index out of range:                                    ERR_INVALID_NAME
//   - a locked list; a parameter of another type, without a parent, or that
//     would make the list part of itself; a list whose prototype was an
//     error:                                                 ERR_UNKNOWN
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERSHAREDLIST_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERSHAREDLIST_H

#include "vorparameter/containers/vorParameterArray.h"

class VOR_API vorParameterSharedList : public vorParameterArray {
    UT_DECLARE_TYPE(vorParameterSharedList, vorParameter)
public:
    /// An empty list whose element type is a clone of `prototype`.
    explicit vorParameterSharedList(vorParameterPtr prototype);
    /// Copies the element type and holds the same members.
    vorParameterSharedList(const vorParameterSharedList& other);
    vorParameterSharedList& operator=(const vorParameterSharedList& other);
    ~vorParameterSharedList() override;

    vorParameter* create_new() const override { return new vorParameterSharedList(*this); }
    vorParameterSubType subtype() const override { return SUB_SHARED_LIST; }
    /// As for arrays, except that index size() or -1 first appends an element.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// Inserts `par` itself, unchanged (see above for the checks), and
    /// returns it.
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    /// Takes out the element of an index key, leaving its parent alone.
    vorParameterPtr remove(const vorParameterKey& key) override;
    /// Takes the element type and the members of another shared list; the
    /// list keeps its own name and settings. Other sources are ignored.
    void copy_value_from(const vorParameter& source) override;

    const vorParameter& get_element_type() const { return *m_element_type; }

private:
    /// The type and parent checks of add().
    bool accepts(const vorParameter& par) const;

    vorParameterPtr m_element_type;
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERSHAREDLIST_H

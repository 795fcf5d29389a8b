//===- vorParameterList.h - Arrays of one element type ----------*- C++ -*-===//
//
// A list is an array whose elements are all made from one prototype, its
// element type. It owns its elements and grows on demand: looking up index
// size() or -1 appends a fresh element and answers it, so "list[-1].name"
// fills a new element at the end.
//
// What add() stores is decided by the element type, never by the caller:
//   (a) an element type that is a map not fixed (vorParameterMap::is_fixed)
//       takes a clone of the given parameter, unless that is an error;
//   (b) a scalar element type (number, string, enumeration) takes a fresh
//       clone of itself that then copies the given parameter's value;
//   (c) any other element type takes a fresh clone of itself.
// An empty handle or an error always gives a fresh clone of the element type.
// A list whose prototype was an error refuses every add (ERR_UNKNOWN); the
// other failures are those of vorParameterArray.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERLIST_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERLIST_H

#include "vorparameter/containers/vorParameterArray.h"

#include <vector>

class VOR_API vorParameterList : public vorParameterArray {
    UT_DECLARE_TYPE(vorParameterList, vorParameter)
public:
    /// An empty list whose element type is a clone of `prototype`.
    explicit vorParameterList(vorParameterPtr prototype);
    /// Copies the element type as well as the elements.
    vorParameterList(const vorParameterList& other);
    vorParameterList& operator=(const vorParameterList& other);
    ~vorParameterList() override;

    /// A list whose element type is an empty string, with one string element
    /// per name: the answer to "_keys". More than max_elements names give
    /// ERR_UNKNOWN.
    static vorParameterPtr of_strings(const std::vector<utString>& names);

    vorParameter* create_new() const override { return new vorParameterList(*this); }
    vorParameterSubType subtype() const override { return SUB_LIST; }
    /// As for arrays, except that index size() or -1 first appends an element.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// Adds the element that the element type decides (see above) where an
    /// array would add `par`, and returns it.
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    /// The number of elements.
    int get_int() const override { return size(); }
    /// Resizes to `n` (negative counts as 0): appends fresh elements or removes
    /// from the end. Ignored when locked; at most max_elements elements.
    void set_int(int n) override;
    /// Takes the size of another array and copies each element's value by
    /// index. Other sources are ignored.
    void copy_value_from(const vorParameter& source) override;

    const vorParameter& get_element_type() const { return *m_element_type; }

private:
    /// The element add() stores for `par`; sets `copy_value` for rule (b).
    vorParameterPtr make_element(const vorParameterPtr& par, bool& copy_value) const;

    vorParameterPtr m_element_type;
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERLIST_H

//===- vorParameterTempArray.h - Working arrays of evaluation ---*- C++ -*-===//
//
// A temporary array carries parameters that belong elsewhere while an
// expression is evaluated: the arguments of a call, the items of a brace
// list "{a; b}". It never changes a parent, and copying it copies handles,
// not parameters.
//
// Elements may be added under names ("radius", "angle"); the names become the
// array's accessor names (see vorParameterVector), so t["Radius"] finds the
// element added as "radius" and t["_keys"] lists the names. Names are given
// in order, one per element: an array that has names takes no index keys.
//
// add() with the empty key appends and add() with vorParameterKey(0, "")
// inserts at the front; both are cheap. Positions past the end append and
// positions before -1 insert at the front. Failures are ERR_INVALID_NAME (a
// name given twice, a name for an array with unnamed elements, an index key
// for a named array, an unknown key to remove()) and ERR_UNKNOWN (adding the
// array to itself, or to an array of vorParameterArray::max_elements).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERTEMPARRAY_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERTEMPARRAY_H

#include "vorparameter/containers/vorParameterVector.h"

class VOR_API vorParameterTempArray : public vorParameterVector {
    UT_DECLARE_TYPE(vorParameterTempArray, vorParameter)
public:
    /// An empty array without names.
    vorParameterTempArray()
        : vorParameterVector(SHARES_ELEMENTS) {}
    /// Copies the names and holds the same elements.
    vorParameterTempArray(const vorParameterTempArray& other) = default;
    vorParameterTempArray& operator=(const vorParameterTempArray& other) = default;

    vorParameter* create_new() const override { return new vorParameterTempArray(*this); }
    /// Appends, inserts at an index, or appends under a name (see above).
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    /// Takes out the element of an index or a name, and its name.
    vorParameterPtr remove(const vorParameterKey& key) override;
    /// Holds the elements of another array, and its names when it has any.
    void copy_value_from(const vorParameter& source) override;

protected:
    void erase_elements(int from, int to) override;

private:
    vorParameterPtr add_named(const utString& name, vorParameterPtr par);
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERTEMPARRAY_H

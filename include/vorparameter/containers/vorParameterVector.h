//===- vorParameterVector.h - Arrays with named accessors -------*- C++ -*-===//
//
// A vector is a fixed-length array whose elements can also be addressed by
// accessor names: on an "X,Y,Z" vector the keys "y", "Y", "[1]" and "1" all
// name element 1. Names are matched case-insensitively, name i standing for
// element i; a name beyond the vector's size addresses nothing, and a key
// that matches no name is handled as by vorParameterArray (and so fails as a
// name, with ERR_INVALID_NAME).
//
// The reserved key "_keys" answers a list of the accessor names (at most one
// per element); the same list is answered until the names or the size change.
//
// Writing a vector writes its elements: set_string("{1;2;3}") evaluates the
// text in the vector's scope and, when the result is an array of the
// vector's size, copies each element's value. Copying from another array
// copies the values the same way. The vector keeps its own elements, so their
// kinds (a length, an angle) and names stay as they were.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERVECTOR_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERVECTOR_H

#include "vorparameter/containers/vorParameterArray.h"

#include <vector>

/// Which accessor names a vector has. Values from outside the table may be
/// stored (files carry them as numbers); they install no names.
enum vorParameterVectorAccessType : int {
    VECTOR_ACCESS_NONE = 0,    ///< no names
    VECTOR_ACCESS_XYZ = 1,     ///< "X,Y,Z"
    VECTOR_ACCESS_ORDINAL = 2, ///< "First,Second, ... ,Tenth"
    VECTOR_ACCESS_CUSTOM = 3,  ///< the names given to set_access_type(const utString&)
    VECTOR_ACCESS_PLANES = 4,  ///< "XY,YZ,ZX"
    VECTOR_ACCESS_RGB = 5      ///< "R,G,B"
};

class VOR_API vorParameterVector : public vorParameterArray {
    UT_DECLARE_TYPE(vorParameterVector, vorParameter)
public:
    /// `n` clones of `prototype` (n is cut to 0 ... max_elements), no names.
    vorParameterVector(int n, vorParameterPtr prototype);
    /// Clones the elements and keeps the access type and names.
    vorParameterVector(const vorParameterVector& other);
    vorParameterVector& operator=(const vorParameterVector& other);

    vorParameter* create_new() const override { return new vorParameterVector(*this); }
    vorParameterSubType subtype() const override { return SUB_VECTOR; }
    /// "_keys", an accessor name, or an index as for arrays.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// As for arrays, with accessor names standing for their indices.
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    vorParameterPtr remove(const vorParameterKey& key) override;
    /// Ignored when locked. Evaluates `text` here; an array result of this
    /// vector's size (at least 1) gives each element its value.
    void set_string(const utString& text) override;
    /// Evaluates both texts as arrays of this vector's size and gives element
    /// i the i-th values as its defaults (an alternative that is no such
    /// array gives none). Defaults live in the descriptive record, so an
    /// element that shares its record with others gets a copy of its own.
    void set_defaults(const utString& value, const utString& alternative) override;
    /// Copies element values, index by index, from an array of the same size.
    void copy_value_from(const vorParameter& source) override;

    /// Stores `type` and installs its names; VECTOR_ACCESS_CUSTOM and values
    /// outside the table keep the names there are.
    void set_access_type(vorParameterVectorAccessType type);
    /// VECTOR_ACCESS_CUSTOM with `names`, separated by "," (blanks around a
    /// name are ignored).
    void set_access_type(const utString& names);
    vorParameterVectorAccessType access_type() const { return m_access_type; }
    /// The accessor names as one text, separated by ",".
    const utString& get_access_names() const { return m_names; }

    /// The index that `key`'s first component names as an accessor, or -1.
    int accessor_index(const vorParameterKey& key) const;
    /// `key` with an accessor name turned into its index key; any other key
    /// unchanged.
    vorParameterKey apply_accessors(const vorParameterKey& key) const;
    /// The list of accessor names (one string per element at most).
    vorParameterPtr get_keys() const;

protected:
    /// An empty vector holding its elements as `holding` says.
    explicit vorParameterVector(Holding holding)
        : vorParameterArray(holding) {}

    int name_count() const { return static_cast<int>(m_name_list.size()); }
    /// True when `name` is one of the names, in any letter case.
    bool has_name(const utString& name) const;
    void append_name(const utString& name);
    /// Drops the names from index `from` to `to` - 1 (those that exist).
    void erase_names(int from, int to);
    /// Takes `other`'s names; the access type stays.
    void copy_names_from(const vorParameterVector& other);

private:
    void install_names(const utString& names);
    /// Adds a name to the lists, leaving the names text as it is.
    void push_name(const utString& name);
    /// Makes the names text follow the list of names.
    void rebuild_names_text();
    /// Copies the values of `source`'s elements when it has this size (> 0).
    void copy_elements_from(const vorParameter& source);
    vorParameterPtr lookup(const vorParameterKey& key, bool as_const) const;

    vorParameterVectorAccessType m_access_type = VECTOR_ACCESS_NONE;
    utString m_names;
    std::vector<utString> m_name_list;
    /// The names in lower case, for matching keys without allocating.
    std::vector<utString> m_lower_names;
    mutable vorParameterPtr m_keys;
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERVECTOR_H

//===- vorParameterArray.h - Indexed containers -----------------*- C++ -*-===//
//
// An array is the indexed container of the tree: an ordered sequence of
// parameters addressed by zero-based integer keys ("[2]", "2", "2.name"). It
// is the base of lists, shared lists, vectors and temporary arrays.
//
// A plain array owns its elements: add() makes itself their parent, and
// remove(), remove_all() and the destructor take that back. A copy clones
// every element and parents the clones. Sharing arrays (temporary arrays and
// shared lists) hold parameters that belong to other containers: they never
// change a parent, and their copies hold the same nodes. No array ever
// leaves an element with a parent pointer to itself after letting it go.
//
// Failures are error values, never exceptions:
//   - a key that is not an index of an element:              ERR_INVALID_NAME
//   - add() or remove() on a locked array:                   ERR_UNKNOWN
//   - add() of the array itself, of one of its ancestors, or of a temporary
//     array that holds one of them:                          ERR_UNKNOWN
//     (the tree would own itself)
//   - growing an array past max_elements (add(), a list's lookup one past
//     the end, "+" of two arrays that together hold more):  ERR_UNKNOWN
// Only the first component of a key places an element for add() and
// remove(); a lookup hands the rest of the key to the element found.
//
// Elements are kept in a vector: indexing is O(1), appending amortised O(1),
// inserting or removing elsewhere O(n).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_CONTAINERS_VORPARAMETERARRAY_H
#define VORPARAMETER_CONTAINERS_VORPARAMETERARRAY_H

#include "vorparameter/parameter/vorParameter.h"

class VOR_API vorParameterArray : public vorParameter {
    UT_DECLARE_TYPE(vorParameterArray, vorParameter)
public:
    /// The most elements an array holds, so that no expression or file can
    /// ask for unbounded memory. Requests for a size (a list's set_int, a
    /// vector's constructor) are cut to it; every other way of growing an
    /// array past it is refused with ERR_UNKNOWN, as for a locked array.
    static constexpr int max_elements = 1 << 20;

    vorParameterArray() = default;
    /// Clones every element and parents the clones; a sharing array's copy
    /// holds the same nodes instead.
    vorParameterArray(const vorParameterArray& other);
    /// Takes `other`'s descriptive record and, like the copy constructor, its
    /// elements.
    vorParameterArray& operator=(const vorParameterArray& other);
    ~vorParameterArray() override;

    vorParameter* create_new() const override { return new vorParameterArray(*this); }
    /// Resets every element.
    void reset() override;
    /// False when an active element is invalid; inactive elements do not count.
    bool is_valid() const override;
    /// "(ARRAY", " !" when invalid, ") " and a line feed, then one line per
    /// active element: tabs, "[index] " and the element's own print.
    utString print(int indent) const override;
    /// Takes the elements of another array as the copy constructor would; the
    /// array keeps its own name and settings. Other sources are ignored.
    void copy_value_from(const vorParameter& source) override;
    /// "+" concatenates with another array into a new plain array of clones;
    /// "==" and "!=" compare element by element (elements that cannot be
    /// compared differ). Other operators are the base class's.
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& rhs) const override;
    /// A new plain array of each element's own prefix or postfix result.
    vorParameterPtr operate_prefix(const utString& op) const override;
    vorParameterPtr operate_postfix(const utString& op) const override;
    int size() const override { return static_cast<int>(m_elements.size()); }
    /// The element of an index key from 0 to size() - 1, or its own lookup of
    /// the rest of the key.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// An empty key, -1 or size() appends; an index from 0 to size() - 1
    /// inserts before that element. Returns the added parameter.
    vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par) override;
    /// Takes out the element of an index key and returns it.
    vorParameterPtr remove(const vorParameterKey& key) override;
    void remove_all() override;
    vorParameterSubType subtype() const override { return SUB_ARRAY; }
    vorParameterType type() const override { return TYPE_ARRAY; }
    /// Same size and equal elements, index by index.
    bool is_equal(const vorParameter& other) const override;

    /// Appends `par` through add() with the empty key.
    vorParameterPtr append(vorParameterPtr par) { return add(vorParameterKey(), std::move(par)); }
    /// Element `i` without building a key; an index out of range gives an
    /// error of kind ERR_INVALID_NAME.
    const vorParameterPtr& at(int i) const;
    /// The elements in index order.
    const vorParameterPtrcoDList& elements() const { return m_elements; }
    /// Clears the parent of every element that has this array as parent,
    /// keeping the elements.
    void unlink_all();
    /// A clone (same class, without parent) from which elements are removed
    /// from the end until at most `to` remain, then from the front until at
    /// most `to - from` remain. With 0 <= from <= to <= size() it keeps the
    /// indices `from` to `to` - 1; `from` > `to` leaves it empty.
    vorParameterPtr slice(int from, int to) const;

protected:
    /// Whether the array owns and parents what it holds.
    enum Holding { OWNS_ELEMENTS, SHARES_ELEMENTS };

    explicit vorParameterArray(Holding holding)
        : m_holding(holding) {}

    /// Where add() puts an element for `key`: sets `pos` and returns an empty
    /// handle, or returns the error add() answers (locked, bad key).
    vorParameterPtr insert_position(const vorParameterKey& key, int& pos) const;
    /// True when the key's first component is an integer from `lowest` to
    /// `highest`, which it stores in `index`.
    static bool index_in(const vorParameterKey& key, int lowest, int highest, int& index);
    /// True when holding `par` would make the array part of its own contents:
    /// `par` is the array or an ancestor, or a sharing array without parent
    /// (a temporary array) that holds one of those, directly or through
    /// further such arrays. Parents tell the rest of the tree.
    bool would_own_itself(const vorParameter& par) const;
    /// Stores `par` before index `pos` (parenting it when the array owns its
    /// elements) and returns it; an array of max_elements answers ERR_UNKNOWN.
    vorParameterPtr insert_element(int pos, vorParameterPtr par);
    /// Takes out the elements from `from` to `to` - 1. Derived arrays that
    /// keep data per element override it to keep that data in step.
    virtual void erase_elements(int from, int to);
    /// `element` when `key` has no remainder, else the element's lookup of the
    /// remainder (its const or non-const form, by `as_const`).
    static vorParameterPtr lookup_rest(const vorParameterPtr& element, const vorParameterKey& key,
                                       bool as_const);
    /// The array lookup of `key`.
    vorParameterPtr index_lookup(const vorParameterKey& key, bool as_const) const;
    /// The lookup of lists: an index of -1 or size() first appends an element
    /// through add() with an empty handle, then looks in it.
    vorParameterPtr growing_lookup(const vorParameterKey& key, bool as_const) const;
    void reserve(int n) { m_elements.reserve(static_cast<std::size_t>(n)); }
    /// Replaces the elements by those of `other` as the copy constructor
    /// would take them. False, changing nothing, when a sharing array would
    /// come to hold itself.
    bool assign_elements(const vorParameterArray& other);
    /// A clone of `prototype` parented to this array (unless it is an error),
    /// for the element type of lists: neither it nor the elements cloned from
    /// it then point at a foreign parent.
    vorParameterPtr parented_clone(const vorParameterPtr& prototype);
    void clone_members() override;
    void release_members() override;

private:
    /// The elements of `other` as this array holds them: clones parented to
    /// it, or the same nodes.
    vorParameterPtrcoDList copies_of(const vorParameterArray& other);
    /// Clears the parent of those of `elements` whose parent is this array.
    void release(const vorParameterPtrcoDList& elements);
    /// `node` as an array that holds without parenting and has no parent
    /// itself (a temporary array), or null.
    static const vorParameterArray* parentless_sharer(const vorParameter* node);
    bool equals(const vorParameterPtr& rhs) const;
    vorParameterPtr concatenate(const vorParameterPtr& rhs) const;
    vorParameterPtr element_wise(const utString& op, bool prefix) const;

    vorParameterPtrcoDList m_elements;
    Holding m_holding = OWNS_ELEMENTS;
};

#endif // VORPARAMETER_CONTAINERS_VORPARAMETERARRAY_H

//===- vorLibItemIndex.h - Equal items of lists without pairwise search -*- C++ -*-===//
//
// When the list and set functions (member, remove, remove_duplicates,
// set_union, subtract, intersection) call two items equal:
//   - two numbers when they differ by at most the comparison tolerance of
//     the language's "==" (vorParameterNumeric::comparison_tol); dimensions
//     are ignored, as "==" ignores them;
//   - two texts (strings, enumeration values) when they are the same text;
//   - two arrays of the same size whose elements are equal index by index,
//     and two maps with the same member names (exact, in any order) whose
//     members are equal name by name;
//   - anything else (functions, data, numbers whose expression fails) as the
//     parameters' own operator== says.
// A number never equals a text here, although "5 == '5'" compares the texts
// in an expression: a set of mixed items would otherwise depend on how
// numbers happen to be written. Containers nested deeper than max_depth
// equal only themselves.
//
// vorLibItemIndex finds, among the items added to it, one equal to a given
// item without comparing it with every one. Each item gets a shape (a hash
// of its structure and texts) and a projection of its numbers onto one
// weighted sum; equal items have the same shape and sums no further apart
// than the tolerance times the sum of the weights. Items are kept in cells
// of that width, and a lookup compares with the items of the item's cell and
// its two neighbours only. So numbers within tolerance are found even across
// a cell boundary, and the cost of a lookup does not grow with the number of
// items unless many items share a shape and nearly the same sum without
// being equal (maps that differ only in a host data member, say).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORLIBITEMINDEX_H
#define VORPARAMETER_LIBRARY_VORLIBITEMINDEX_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

/// True when the list functions take `a` and `b` for the same item.
bool vorLibItemsEqual(const vorParameter& a, const vorParameter& b);

class vorLibItemIndex {
public:
    /// How deep the equality and the shapes descend into nested containers.
    static constexpr int max_depth = 64;

    /// Adds `item`; it must stay alive as long as the index.
    void add(const vorParameter& item);
    /// An added item equal to `item`, or null.
    const vorParameter* find(const vorParameter& item) const;

private:
    struct Cell {
        std::size_t shape;
        double position;
        bool operator==(const Cell& other) const {
            return shape == other.shape && position == other.position;
        }
    };
    struct CellHash {
        std::size_t operator()(const Cell& cell) const;
    };
    /// The cell of `item` and, when its numbers may lie within tolerance of
    /// a neighbouring cell, whether to look there too.
    static Cell cell_of(const vorParameter& item, bool& has_neighbours);

    std::unordered_map<Cell, std::vector<const vorParameter*>, CellHash> m_cells;
};

#endif // VORPARAMETER_LIBRARY_VORLIBITEMINDEX_H

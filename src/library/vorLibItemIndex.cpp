//===- vorLibItemIndex.cpp - Equal items of lists without pairwise search -===//

#include "library/vorLibItemIndex.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterMap.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string_view>

namespace {

enum class ItemKind { Number, Text, Array, Map, Other };

/// What kind of item `item` is; a number's value goes to `value`.
ItemKind kind_of(const vorParameter& item, double& value) {
    switch (item.type()) {
    case TYPE_NUMERIC: {
        const vorParameterNumeric* number = vorParameterNumeric::ut_dynamic_cast(&item);
        if (!number || !number->is_valid())
            return ItemKind::Other;
        value = number->get_double();
        return ItemKind::Number;
    }
    case TYPE_STRING:
    case TYPE_ENUM:
        return ItemKind::Text;
    case TYPE_ARRAY:
        return vorParameterArray::ut_dynamic_cast(&item) ? ItemKind::Array : ItemKind::Other;
    case TYPE_MAP:
        return vorParameterMap::ut_dynamic_cast(&item) ? ItemKind::Map : ItemKind::Other;
    default:
        return ItemKind::Other;
    }
}

bool equal_at(const vorParameter& a, const vorParameter& b, int depth);

bool arrays_equal(const vorParameterArray& a, const vorParameterArray& b, int depth) {
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i)
        if (!equal_at(*a.at(i).par(), *b.at(i).par(), depth + 1))
            return false;
    return true;
}

bool maps_equal(const vorParameterMap& a, const vorParameterMap& b, int depth) {
    if (a.size() != b.size())
        return false;
    for (const auto& [name, member] : a.members()) {
        const vorParameterPtr* theirs = b.members().find(name);
        if (!theirs || !equal_at(*member.par(), *theirs->par(), depth + 1))
            return false;
    }
    return true;
}

bool equal_at(const vorParameter& a, const vorParameter& b, int depth) {
    if (&a == &b)
        return true;
    double x = 0;
    double y = 0;
    const ItemKind kind = kind_of(a, x);
    if (kind != kind_of(b, y))
        return false;
    const bool too_deep = depth >= vorLibItemIndex::max_depth;
    switch (kind) {
    case ItemKind::Number:
        return std::fabs(x - y) <= vorParameterNumeric::comparison_tol();
    case ItemKind::Text:
        return a.get_string() == b.get_string();
    case ItemKind::Array:
        return !too_deep && arrays_equal(*vorParameterArray::ut_dynamic_cast(&a),
                                         *vorParameterArray::ut_dynamic_cast(&b), depth);
    case ItemKind::Map:
        return !too_deep && maps_equal(*vorParameterMap::ut_dynamic_cast(&a),
                                       *vorParameterMap::ut_dynamic_cast(&b), depth);
    case ItemKind::Other:
        break;
    }
    return a == b;
}

//===----------------------------------------------------------------------===//
// Shapes
//===----------------------------------------------------------------------===//

std::size_t mix(std::size_t seed, std::size_t value) {
    return seed ^ (value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

/// The numbers of an item projected onto one sum: each number times a weight
/// from 1 to 2 taken from its place in the item, so that {1; 2} and {2; 1}
/// fall apart while equal items, whose numbers sit at the same places, stay
/// within `weights` times the tolerance of each other.
struct Projection {
    double sum = 0;
    double weights = 0;
};

double weight_of(std::size_t place) {
    return 1.0 + static_cast<double>(place % 1024) / 1024.0;
}

/// The hash of the item's structure and texts (numbers aside, which go to
/// `numbers`). Map members are combined in any order, as maps compare.
std::size_t shape_of(const vorParameter& item, std::size_t place, int depth, Projection& numbers) {
    double value = 0;
    switch (kind_of(item, value)) {
    case ItemKind::Number:
        numbers.sum += weight_of(place) * value;
        numbers.weights += weight_of(place);
        return 1;
    case ItemKind::Text:
        return mix(2, utTextHash()(item.get_string()));
    case ItemKind::Array: {
        const auto& array = *vorParameterArray::ut_dynamic_cast(&item);
        std::size_t hash = mix(3, static_cast<std::size_t>(array.size()));
        if (depth >= vorLibItemIndex::max_depth)
            return hash;
        for (int i = 0; i < array.size(); ++i) {
            const std::size_t at = mix(place, static_cast<std::size_t>(i));
            hash = mix(hash, shape_of(*array.at(i).par(), at, depth + 1, numbers));
        }
        return hash;
    }
    case ItemKind::Map: {
        const auto& map = *vorParameterMap::ut_dynamic_cast(&item);
        const std::size_t hash = mix(4, static_cast<std::size_t>(map.size()));
        if (depth >= vorLibItemIndex::max_depth)
            return hash;
        std::size_t members = 0;
        for (const auto& [name, member] : map.members()) {
            const std::size_t at = mix(place, utTextHash()(name));
            members += mix(utTextHash()(name), shape_of(*member.par(), at, depth + 1, numbers));
        }
        return mix(hash, members);
    }
    case ItemKind::Other:
        break;
    }
    return mix(5, static_cast<std::size_t>(item.type()));
}

} // namespace

bool vorLibItemsEqual(const vorParameter& a, const vorParameter& b) {
    return equal_at(a, b, 0);
}

std::size_t vorLibItemIndex::CellHash::operator()(const Cell& cell) const {
    return mix(cell.shape, std::hash<double>()(cell.position));
}

vorLibItemIndex::Cell vorLibItemIndex::cell_of(const vorParameter& item, bool& has_neighbours) {
    Projection numbers;
    Cell cell{shape_of(item, 0, 0, numbers), 0.0};
    has_neighbours = false;
    if (numbers.weights == 0)
        return cell;
    // Twice the widest gap between equal items, so that the rounding of the
    // weighted sums cannot carry two equal items two cells apart.
    const double width = 2 * numbers.weights * vorParameterNumeric::comparison_tol();
    const double position = width > 0 ? std::floor(numbers.sum / width) : numbers.sum;
    if (!std::isfinite(position)) {
        cell.position = std::numeric_limits<double>::infinity();
        return cell;
    }
    cell.position = position + 0.0; // one cell for -0 and 0
    has_neighbours = width > 0;
    return cell;
}

void vorLibItemIndex::add(const vorParameter& item) {
    bool has_neighbours = false;
    m_cells[cell_of(item, has_neighbours)].push_back(&item);
}

const vorParameter* vorLibItemIndex::find(const vorParameter& item) const {
    bool has_neighbours = false;
    const Cell cell = cell_of(item, has_neighbours);
    const double positions[] = {cell.position, cell.position - 1, cell.position + 1};
    const int count = has_neighbours ? 3 : 1;
    for (int i = 0; i < count; ++i) {
        // Far from zero a cell's neighbour can be the cell itself.
        if (i > 0 && positions[i] == cell.position)
            continue;
        auto found = m_cells.find(Cell{cell.shape, positions[i]});
        if (found == m_cells.end())
            continue;
        for (const vorParameter* candidate : found->second)
            if (vorLibItemsEqual(*candidate, item))
                return candidate;
    }
    return nullptr;
}

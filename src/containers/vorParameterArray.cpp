//===- vorParameterArray.cpp - Indexed containers -------------------------===//

#include "vorparameter/containers/vorParameterArray.h"

#include "parameter/vorTreeDepth.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"

#include <algorithm>
#include <string>
#include <vector>

UT_DEFINE_TYPE(vorParameterArray, vorParameter)

namespace {

vorParameterPtr invalid_name() {
    return vorParameterError::create(ERR_INVALID_NAME);
}
vorParameterPtr refused() {
    return vorParameterError::create(ERR_UNKNOWN);
}

/// Print depth is clamped so that a wild indent can neither overflow nor ask
/// for an absurd amount of memory.
constexpr int max_print_indent = 1000;

int clamp_indent(int indent) {
    return std::clamp(indent, 0, max_print_indent);
}

} // namespace

//===----------------------------------------------------------------------===//
// Construction and copying
//===----------------------------------------------------------------------===//

vorParameterArray::vorParameterArray(const vorParameterArray& other)
    : vorParameter(other)
    , m_elements(other.m_elements)
    , m_holding(other.m_holding) {
    // An owning array shares the elements for a moment; they are then cloned
    // without recursion.
    if (m_holding == OWNS_ELEMENTS)
        clone_members_of(*this);
}

void vorParameterArray::clone_members() {
    for (vorParameterPtr& element : m_elements) {
        element = element.copy();
        if (!element->is_error())
            link_par(element);
    }
}

void vorParameterArray::release_members() {
    release(m_elements);
    m_elements.clear();
}

vorParameterArray& vorParameterArray::operator=(const vorParameterArray& other) {
    if (this != &other) {
        vorParameter::operator=(other);
        assign_elements(other);
    }
    return *this;
}

vorParameterArray::~vorParameterArray() {
    release(m_elements);
}

vorParameterPtrcoDList vorParameterArray::copies_of(const vorParameterArray& other) {
    if (m_holding == SHARES_ELEMENTS)
        return other.m_elements;
    vorParameterPtrcoDList copies;
    copies.reserve(other.m_elements.size());
    for (const vorParameterPtr& element : other.m_elements) {
        copies.push_back(element.copy());
        if (!copies.back()->is_error())
            link_par(copies.back());
    }
    return copies;
}

bool vorParameterArray::assign_elements(const vorParameterArray& other) {
    // A sharing array would hold itself if `other` holds it or an ancestor.
    if (m_holding == SHARES_ELEMENTS &&
        std::any_of(other.m_elements.begin(), other.m_elements.end(),
                    [this](const vorParameterPtr& element) { return would_own_itself(*element); }))
        return false;
    // The copies are complete before anything is let go: `other` may live
    // inside one of the elements being replaced.
    vorParameterPtrcoDList old = copies_of(other);
    m_elements.swap(old);
    release(old);
    return true;
}

void vorParameterArray::release(const vorParameterPtrcoDList& elements) {
    for (const vorParameterPtr& element : elements)
        unlink_par(element);
}

void vorParameterArray::copy_value_from(const vorParameter& source) {
    const vorParameterArray* other = ut_dynamic_cast(source.get_ref());
    if (other && other != this)
        assign_elements(*other);
}

//===----------------------------------------------------------------------===//
// Elements
//===----------------------------------------------------------------------===//

const vorParameterPtr& vorParameterArray::at(int i) const {
    static const vorParameterPtr out_of_range = invalid_name();
    return i >= 0 && i < size() ? m_elements[static_cast<std::size_t>(i)] : out_of_range;
}

bool vorParameterArray::index_in(const vorParameterKey& key, int lowest, int highest, int& index) {
    int value = 0;
    if (!key.index(value) || value < lowest || value > highest)
        return false;
    index = value;
    return true;
}

vorParameterPtr vorParameterArray::insert_position(const vorParameterKey& key, int& pos) const {
    if (is_locked())
        return refused();
    int index = -1;
    if (!key.empty() && !index_in(key, -1, size(), index))
        return invalid_name();
    pos = index == -1 ? size() : index;
    return vorParameterPtr();
}

const vorParameterArray* vorParameterArray::parentless_sharer(const vorParameter* node) {
    const vorParameterArray* array = ut_dynamic_cast(node);
    return array && array->m_holding == SHARES_ELEMENTS && !array->parent() ? array : nullptr;
}

bool vorParameterArray::would_own_itself(const vorParameter& par) const {
    if (is_descendent(&par))
        return true;
    const vorParameterArray* holder = parentless_sharer(&par);
    if (!holder)
        return false;
    // Nested brace lists are small, so the search is cheap; it is iterative
    // because a host may nest temporary arrays deeply.
    std::vector<const vorParameterArray*> pending{holder};
    while (!pending.empty()) {
        const vorParameterArray* array = pending.back();
        pending.pop_back();
        for (const vorParameterPtr& element : array->m_elements) {
            if (is_descendent(element.get()))
                return true;
            if (const vorParameterArray* inner = parentless_sharer(element.get()))
                pending.push_back(inner);
        }
    }
    return false;
}

vorParameterPtr vorParameterArray::insert_element(int pos, vorParameterPtr par) {
    if (size() >= max_elements)
        return refused();
    par.check();
    // Errors are shared values: parenting one would tie it to this array.
    if (m_holding == OWNS_ELEMENTS && !par->is_error())
        link_par(par);
    return *m_elements.insert(m_elements.begin() + pos, std::move(par));
}

void vorParameterArray::erase_elements(int from, int to) {
    auto first = m_elements.begin() + from;
    auto last = m_elements.begin() + to;
    vorParameterPtrcoDList taken(std::make_move_iterator(first), std::make_move_iterator(last));
    m_elements.erase(first, last);
    release(taken);
}

vorParameterPtr vorParameterArray::add(const vorParameterKey& key, vorParameterPtr par) {
    int pos = 0;
    vorParameterPtr error = insert_position(key, pos);
    if (!error.is_null())
        return error;
    if (would_own_itself(*par))
        return refused();
    return insert_element(pos, std::move(par));
}

vorParameterPtr vorParameterArray::remove(const vorParameterKey& key) {
    if (is_locked())
        return refused();
    int i = 0;
    if (!index_in(key, 0, size() - 1, i))
        return invalid_name();
    vorParameterPtr removed = m_elements[static_cast<std::size_t>(i)];
    erase_elements(i, i + 1);
    return removed;
}

void vorParameterArray::remove_all() {
    erase_elements(0, size());
}

vorParameterPtr vorParameterArray::parented_clone(const vorParameterPtr& prototype) {
    vorParameterPtr clone = prototype.copy();
    if (!clone->is_error())
        link_par(clone);
    return clone;
}

void vorParameterArray::unlink_all() {
    release(m_elements);
}

vorParameterPtr vorParameterArray::lookup_rest(const vorParameterPtr& element,
                                               const vorParameterKey& key, bool as_const) {
    if (key.remainder_str().empty())
        return element;
    if (as_const)
        return static_cast<const vorParameter&>(*element)[key.remainder()];
    return (*element)[key.remainder()];
}

vorParameterPtr vorParameterArray::index_lookup(const vorParameterKey& key, bool as_const) const {
    int i = 0;
    if (!index_in(key, 0, size() - 1, i))
        return invalid_name();
    return lookup_rest(m_elements[static_cast<std::size_t>(i)], key, as_const);
}

vorParameterPtr vorParameterArray::growing_lookup(const vorParameterKey& key, bool as_const) const {
    int i = 0;
    if (!index_in(key, -1, size(), i) || (i != -1 && i != size()))
        return index_lookup(key, as_const);
    // Reading one past the end grows the list, also through the const lookup
    // that expressions use. Parameters are made to be changed through their
    // handles and are never defined const, so the cast is sound.
    vorParameterPtr grown =
        const_cast<vorParameterArray*>(this)->add(vorParameterKey(), vorParameterPtr());
    return grown->is_error() ? grown : lookup_rest(grown, key, as_const);
}

vorParameterPtr vorParameterArray::operator[](const vorParameterKey& key) const {
    return index_lookup(key, true);
}

vorParameterPtr vorParameterArray::operator[](const vorParameterKey& key) {
    return index_lookup(key, false);
}

vorParameterPtr vorParameterArray::slice(int from, int to) const {
    vorParameterPtr copy(create_new());
    auto& part = static_cast<vorParameterArray&>(*copy);
    part.set_parent(nullptr);
    // Bounds in long long: `to - from` may not fit an int.
    const long long end = std::clamp<long long>(to, 0, part.size());
    const long long begin =
        std::clamp<long long>(end - (static_cast<long long>(to) - from), 0, end);
    part.erase_elements(static_cast<int>(end), part.size());
    part.erase_elements(0, static_cast<int>(begin));
    return copy;
}

//===----------------------------------------------------------------------===//
// Values
//===----------------------------------------------------------------------===//

void vorParameterArray::reset() {
    vorTreeDepth depth;
    if (depth.too_deep())
        return;
    for (const vorParameterPtr& element : m_elements)
        element->reset();
}

bool vorParameterArray::is_valid() const {
    vorTreeDepth depth;
    if (depth.too_deep())
        return false;
    for (const vorParameterPtr& element : m_elements)
        if (element->is_active() && !element->is_valid())
            return false;
    return vorParameter::is_valid();
}

bool vorParameterArray::is_equal(const vorParameter& other) const {
    const vorParameterArray* rhs = ut_dynamic_cast(other.get_ref());
    if (rhs == this)
        return true;
    vorTreeDepth depth;
    if (!rhs || rhs->size() != size() || depth.too_deep())
        return false;
    for (std::size_t i = 0; i < m_elements.size(); ++i)
        if (*m_elements[i] != *rhs->m_elements[i])
            return false;
    return true;
}

utString vorParameterArray::print(int indent) const {
    utString out = "(ARRAY";
    if (!is_valid())
        out += " !";
    out += ") \n";
    vorTreeDepth level;
    if (level.too_deep())
        return out + vorTreeDepth::too_deep_mark;
    const int depth = clamp_indent(indent) + 1;
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        if (!m_elements[i]->is_active())
            continue;
        out += std::string(static_cast<std::size_t>(depth), '\t');
        out += "[" + std::to_string(i) + "] ";
        out += m_elements[i]->print(depth);
    }
    return out;
}

//===----------------------------------------------------------------------===//
// Operators
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameterArray::operate_binary(const utString& op,
                                                  const vorParameterPtr& rhs) const {
    if (op == "+")
        return concatenate(rhs);
    if (op == "==")
        return vorParameterNumeric::create_bool(equals(rhs));
    if (op == "!=")
        return vorParameterNumeric::create_bool(!equals(rhs));
    return vorParameter::operate_binary(op, rhs);
}

bool vorParameterArray::equals(const vorParameterPtr& rhs) const {
    const vorParameterArray* other = ut_dynamic_cast(rhs.par());
    if (!other || other->size() != size())
        return false;
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        vorParameterPtr differs = m_elements[i]->operate_binary("!=", other->m_elements[i]);
        if (differs->is_error() || differs->get_int() != 0)
            return false;
    }
    return true;
}

vorParameterPtr vorParameterArray::concatenate(const vorParameterPtr& rhs) const {
    if (rhs->is_error())
        return rhs;
    const vorParameterArray* other = ut_dynamic_cast(rhs.par());
    if (!other)
        return vorParameterError::create(ERR_TYPE);
    // Refused before any clone is made, so that a long sum of long lists
    // fails at once instead of filling memory.
    if (static_cast<long long>(size()) + other->size() > max_elements)
        return refused();
    auto* joined = new vorParameterArray();
    vorParameterPtr result(joined);
    joined->reserve(size() + other->size());
    for (const vorParameterArray* part : {this, other})
        for (const vorParameterPtr& element : part->m_elements)
            joined->insert_element(joined->size(), element.copy());
    return result;
}

vorParameterPtr vorParameterArray::element_wise(const utString& op, bool prefix) const {
    auto* mapped = new vorParameterArray();
    vorParameterPtr result(mapped);
    mapped->reserve(size());
    for (const vorParameterPtr& element : m_elements) {
        vorParameterPtr value = prefix ? element->operate_prefix(op) : element->operate_postfix(op);
        // An operator that answers the element itself must not move it here.
        if (value.get() == element.get())
            value = value.copy();
        mapped->insert_element(mapped->size(), value);
    }
    return result;
}

vorParameterPtr vorParameterArray::operate_prefix(const utString& op) const {
    return element_wise(op, true);
}

vorParameterPtr vorParameterArray::operate_postfix(const utString& op) const {
    return element_wise(op, false);
}

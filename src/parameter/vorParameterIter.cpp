//===- vorParameterIter.cpp - Walking a parameter tree --------------------===//

#include "vorparameter/parameter/vorParameterIter.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

//===----------------------------------------------------------------------===//
// One-level iterators
//===----------------------------------------------------------------------===//

const vorParameterPtr& vorBaseParIter::member() const {
    static const vorParameterPtr none;
    return none;
}

vorBaseParIter* vorBaseParIter::create(const vorParameterPtr& container) {
    const vorParameter* node = container.get();
    if (const vorParameterMap* map = vorParameterMap::ut_dynamic_cast(node))
        return new vorMapParIter(*map);
    if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(node))
        return new vorArrayParIter(*array);
    return new vorBaseParIter();
}

vorMapParIter::vorMapParIter(const vorParameterMap& map) {
    // Taking a handle counts in the node with an atomic step, which waits for
    // the node's memory before the next step can start. Asking for all the
    // nodes first lets those waits overlap: a walk over nodes scattered in
    // memory is a third faster.
    for (const auto& [name, par] : map.members())
        __builtin_prefetch(par.get());
    m_members.reserve(map.members().size());
    for (const auto& [name, par] : map.members())
        m_members.push_back({name.str(), par});
}

int vorMapParIter::operator++() {
    if (m_at <= m_members.size())
        ++m_at;
    return !undefined();
}

vorParameterKey vorMapParIter::index() const {
    return undefined() ? vorParameterKey() : vorParameterKey(m_members[m_at - 1].name);
}

const vorParameterPtr& vorMapParIter::member() const {
    return undefined() ? vorBaseParIter::member() : m_members[m_at - 1].par;
}

bool vorMapParIter::reserved() const {
    return !undefined() && m_members[m_at - 1].name.starts_with("_");
}

vorArrayParIter::vorArrayParIter(const vorParameterArray& array)
    : m_elements(array.elements()) {}

int vorArrayParIter::operator++() {
    if (m_at <= m_elements.size())
        ++m_at;
    return !undefined();
}

vorParameterKey vorArrayParIter::index() const {
    if (undefined())
        return vorParameterKey();
    return vorParameterKey(vorParameterKeyImpl::get_index_impl(static_cast<long long>(m_at - 1)));
}

const vorParameterPtr& vorArrayParIter::member() const {
    return undefined() ? vorBaseParIter::member() : m_elements[m_at - 1];
}

vorSingleParIter::vorSingleParIter(vorParameterPtr node)
    : m_node(std::move(node)) {
    m_key = vorParameterKey(m_node.is_null() ? utString() : m_node.get()->get_name());
}

vorSingleParIter::vorSingleParIter(vorParameterPtr node, vorParameterKey key)
    : m_node(std::move(node))
    , m_key(std::move(key)) {}

int vorSingleParIter::operator++() {
    if (m_at < 2)
        ++m_at;
    return !undefined();
}

vorParameterKey vorSingleParIter::index() const {
    return undefined() ? vorParameterKey() : m_key;
}

const vorParameterPtr& vorSingleParIter::member() const {
    return undefined() ? vorBaseParIter::member() : m_node;
}

bool vorSingleParIter::reserved() const {
    return !undefined() && m_key.type() == TYPE_MAP && m_key.first().starts_with("_");
}

//===----------------------------------------------------------------------===//
// The walk
//===----------------------------------------------------------------------===//

vorParameterIter::vorParameterIter(vorParameterPtr start)
    : m_start(std::move(start)) {}

vorParameterIter::vorParameterIter(const vorParameter* start)
    // The walk only reads the start node; the handle is not const because
    // the members it hands out are the caller's to change.
    : m_start(vorParameterPtr::share(const_cast<vorParameter*>(start))) {}

vorParameterIter::vorParameterIter(const vorParameterIter& other)
    : m_start(other.m_start)
    , m_started(other.m_started)
    , m_next_container(other.m_next_container)
    , m_leaf(other.m_leaf)
    , m_type(other.m_type)
    , m_entered(other.m_entered)
    , m_tracking(other.m_tracking)
    , m_max_depth(other.m_max_depth)
    , m_follow_refs(other.m_follow_refs)
    , m_leaf_only(other.m_leaf_only)
    , m_active_only(other.m_active_only)
    , m_exclude_functions(other.m_exclude_functions)
    , m_exclude_reserved(other.m_exclude_reserved) {
    m_levels.reserve(other.m_levels.size());
    for (const Level& level : other.m_levels)
        m_levels.push_back({std::unique_ptr<vorBaseParIter>(level.members->clone()),
                            level.container, level.depth, level.prefix, level.prefix_state});
}

vorParameterIter::vorParameterIter(vorParameterIter&& other) noexcept = default;

vorParameterIter& vorParameterIter::operator=(const vorParameterIter& other) {
    if (this != &other)
        *this = vorParameterIter(other);
    return *this;
}

vorParameterIter& vorParameterIter::operator=(vorParameterIter&& other) noexcept = default;

vorParameterIter::~vorParameterIter() = default;

void vorParameterIter::reset() {
    m_levels.clear();
    m_started = false;
    m_next_container.reset();
    m_entered.clear();
    m_tracking = false;
}

int vorParameterIter::operator++() {
    while (step())
        if (accepted(m_levels.back()))
            return 1;
    return 0;
}

vorParameterPtr vorParameterIter::operator()() const {
    return m_levels.empty() ? vorParameterPtr() : m_levels.back().members->member();
}

bool vorParameterIter::step() {
    if (!m_started) {
        m_started = true;
        vorParameter* start = m_start->get_ref();
        const bool container = start->type() == TYPE_MAP || start->type() == TYPE_ARRAY;
        if (container && (start == m_start.get() || may_follow(*m_start)))
            enter(start == m_start.get() ? m_start : vorParameterPtr::share(start));
    } else if (!m_next_container.is_null()) {
        enter(std::move(m_next_container));
        m_next_container.reset();
    }
    while (!m_levels.empty()) {
        const Level& level = m_levels.back();
        if (++*level.members) {
            arrive(level);
            return true;
        }
        leave();
    }
    return false;
}

void vorParameterIter::arrive(const Level& level) {
    m_next_container.reset();
    m_leaf = true;
    m_type = TYPE_ERROR;
    const bool depth_allows = m_max_depth == 0 || level.depth < m_max_depth;
    // A walk of direct members without filters needs to know nothing about
    // them: it neither asks a reference to resolve nor evaluates anything.
    if (!depth_allows && !m_leaf_only && !m_exclude_functions)
        return;

    const vorParameterPtr& node = level.members->member();
    vorParameter* target = node->get_ref();
    m_type = target->type();
    if (m_type != TYPE_MAP && m_type != TYPE_ARRAY)
        return;
    const bool is_reference = target != node.get();
    if (is_reference && !may_follow(*node))
        return;
    if (is_entered(target, level)) {
        m_leaf = is_reference;
        return;
    }
    m_leaf = false;
    if (depth_allows && target->size() > 0 && (!m_active_only || node->is_active()))
        m_next_container = is_reference ? vorParameterPtr::share(target) : node;
}

bool vorParameterIter::accepted(const Level& level) const {
    if (m_leaf_only && !m_leaf)
        return false;
    if (m_active_only && !level.members->member()->is_active())
        return false;
    if (m_exclude_functions && m_type == TYPE_FUNCTION)
        return false;
    return !(m_exclude_reserved && level.members->reserved());
}

bool vorParameterIter::may_follow(const vorParameter& node) const {
    if (!m_follow_refs)
        return false;
    const vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(&node);
    return !ref || !ref->nofollow();
}

bool vorParameterIter::is_entered(const vorParameter* container, const Level& level) {
    // Parents form a tree, so a walk that went down only from containers to
    // the members they parent cannot meet a container it is inside. Only a
    // step elsewhere (through a reference, or to a member of a shared list)
    // can close a cycle: from the first such step on, the walk keeps the set
    // of containers it is inside.
    if (!m_tracking) {
        if (container->parent() == level.container.get())
            return false;
        m_tracking = true;
        for (const Level& entered : m_levels)
            m_entered.insert(entered.container.get());
    }
    return m_entered.count(container) != 0;
}

void vorParameterIter::enter(vorParameterPtr container) {
    const bool first = m_levels.empty();
    if (m_tracking)
        m_entered.insert(container.get());
    std::unique_ptr<vorBaseParIter> members(vorBaseParIter::create(container));
    m_levels.push_back({std::move(members), std::move(container),
                        first ? 1 : m_levels.back().depth + 1, vorParameterKey(),
                        first ? PREFIX_KNOWN : PREFIX_UNKNOWN});
}

void vorParameterIter::leave() {
    if (m_tracking)
        m_entered.erase(m_levels.back().container.get());
    m_levels.pop_back();
}

//===----------------------------------------------------------------------===//
// Keys relative to the start
//===----------------------------------------------------------------------===//

bool vorParameterIter::prefix_of(std::size_t level) const {
    // Each level's key is made once, from its parent level's key and the
    // parent's current member, so a walk that asks index() at every node
    // makes each key once. The first level's key is the empty key.
    std::size_t known = level;
    while (m_levels[known].prefix_state == PREFIX_UNKNOWN)
        --known;
    for (std::size_t i = known + 1; i <= level; ++i) {
        const Level& parent = m_levels[i - 1];
        const Level& child = m_levels[i];
        if (parent.prefix_state == PREFIX_TOO_LONG) {
            child.prefix_state = PREFIX_TOO_LONG;
            continue;
        }
        child.prefix = parent.prefix + parent.members->index();
        child.prefix_state = child.prefix.type() == TYPE_ERROR ? PREFIX_TOO_LONG : PREFIX_KNOWN;
    }
    return m_levels[level].prefix_state == PREFIX_KNOWN;
}

vorParameterKey vorParameterIter::index() const {
    if (m_levels.empty() || !prefix_of(m_levels.size() - 1))
        return vorParameterKey();
    const Level& level = m_levels.back();
    const vorParameterKey key = level.prefix + level.members->index();
    return key.type() == TYPE_ERROR ? vorParameterKey() : key;
}

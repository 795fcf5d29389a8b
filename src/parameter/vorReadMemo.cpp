//===- vorReadMemo.cpp - Values shared within one read --------------------===//

#include "parameter/vorReadMemo.h"

#include "parameter/vorTreeGeneration.h"
#include "vorparameter/expression/vorParameterNumeric.h"

#include <atomic>
#include <unordered_map>

namespace {

std::atomic<std::uint64_t> g_disturbances{0};

struct KeptValue {
    /// Keeps the parameter alive for the rest of the read, so that no other
    /// node can take its address and be mistaken for it.
    vorParameterPtr node;
    std::uint64_t stamp;
    vorParameterPtr value;
};

thread_local int t_evaluations = 0;

std::unordered_map<const vorParameter*, KeptValue>& kept_values() {
    thread_local std::unordered_map<const vorParameter*, KeptValue> kept;
    return kept;
}

/// Both counters only ever grow, so their sum moves whenever either does.
std::uint64_t stamp_now() {
    return vorTreeGeneration::current() + g_disturbances.load(std::memory_order_relaxed);
}

/// A numeric value equal to `value` in everything but identity, with a
/// record of its own, so that naming one copy does not name the others.
vorParameterPtr copy_of(const vorParameterPtr& value) {
    vorParameterPtr copy(value->create_new());
    copy->set_impl(vorParameterImplPtr::clone_of(*copy->get_impl()));
    return copy;
}

/// A fresh numeric that only the evaluation holds: nothing else can see or
/// change the node, so a copy of it is as good as evaluating again.
bool is_plain_result(const vorParameterPtr& result) {
    return result.unique() && !result->parent() &&
           &result->ut_dynamic_type() == &vorParameterNumeric::ut_static_type();
}

} // namespace

void vorReadMemo::disturb() {
    g_disturbances.fetch_add(1, std::memory_order_relaxed);
}

vorReadMemo::Evaluation::Evaluation(const vorParameter& node)
    : m_node(node)
    , m_eligible(node.type() == TYPE_NUMERIC && !node.is_ref())
    , m_stamp(stamp_now()) {
    ++t_evaluations;
}

vorReadMemo::Evaluation::~Evaluation() {
    // The copies are values that only the memo holds: releasing them
    // releases nothing else.
    if (--t_evaluations == 0 && !kept_values().empty())
        kept_values().clear();
}

vorParameterPtr vorReadMemo::Evaluation::reuse() const {
    if (!m_eligible)
        return vorParameterPtr();
    const auto& values = kept_values();
    auto kept = values.find(&m_node);
    if (kept == values.end() || kept->second.stamp != m_stamp)
        return vorParameterPtr();
    return copy_of(kept->second.value);
}

bool vorReadMemo::Evaluation::may_keep() const {
    // The outermost evaluation ends the read: nothing could reuse its value.
    return m_eligible && t_evaluations != 1 && stamp_now() == m_stamp;
}

void vorReadMemo::Evaluation::keep(const vorParameterPtr& result) const {
    if (!may_keep() || !is_plain_result(result))
        return;
    // Only a node that handles own can be held until the read ends.
    vorParameterPtr node = vorParameterPtr::share(const_cast<vorParameter*>(&m_node));
    if (!node.is_owning())
        return;
    kept_values()[&m_node] = KeptValue{std::move(node), m_stamp, copy_of(result)};
}

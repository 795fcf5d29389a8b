//===- vorParameter.cpp - Base of every parameter and its handle ----------===//

#include "vorparameter/parameter/vorParameter.h"

#include "expression/vorPlan.h"
#include "parameter/vorNameCache.h"
#include "parameter/vorReadMemo.h"
#include "parameter/vorTreeDepth.h"
#include "parameter/vorTreeGeneration.h"
#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterSharedList.h"
#include "vorparameter/containers/vorParameterTempArray.h"
#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/parameter/vorParameterGuards.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRoot.h"
#include "vorparameter/parameter/vorParameterUpdateTrack.h"

#include <algorithm>
#include <iterator>
#include <vector>

//===----------------------------------------------------------------------===//
// The handle
//===----------------------------------------------------------------------===//

void vorParameterPtr::replace_empty() const {
    // The shared error outlives every handle, so the handle may refer to it
    // without owning it; threads racing here all store the same node.
    vorParameter* error = vorParameterError::create(ERR_UNKNOWN).get();
    std::uintptr_t expected = 0;
    m_bits.compare_exchange_strong(expected, bits_of(error, false), std::memory_order_acq_rel);
}

vorParameterPtr vorParameterPtr::share(vorParameter* node) {
    if (node && node->m_refs.load(std::memory_order_acquire) > 0)
        return vorParameterPtr(node);
    return vorParameterPtr(coPrfExtern(), node);
}

vorParameter* vorParameterPtr::par() const {
    check();
    return node()->get_ref();
}

vorParameterPtr vorParameterPtr::operator[](const vorParameterKey& key) const {
    check();
    return (*node())[key];
}

vorParameterPtr vorParameterPtr::operator[](const char* path) const {
    check();
    return (*node())[path];
}

vorParameterPtr vorParameterPtr::copy() const {
    check();
    vorParameterPtr clone(node()->create_new());
    clone->m_parent = nullptr;
    return clone;
}

thread_local int vorTreeDepth::s_depth = 0;

namespace {

/// The nodes whose deletion is pending while a deletion is under way on this
/// thread; null when none is. A raw pointer, so that it stays usable while
/// the thread's other objects are destroyed.
thread_local std::vector<vorParameter*>* t_pending_deletes = nullptr;

} // namespace

void vorParameterPtr::destroy(vorParameter* node) {
    // Deleting a container releases its members, whose deletion releases
    // theirs: a recursion as deep as the tree. Instead the first deletion
    // drains a work list, and every node released meanwhile joins it.
    if (t_pending_deletes) {
        t_pending_deletes->push_back(node);
        return;
    }
    if (node->size() == 0) {
        delete node;
        return;
    }
    std::vector<vorParameter*> pending{node};
    t_pending_deletes = &pending;
    while (!pending.empty()) {
        vorParameter* next = pending.back();
        pending.pop_back();
        next->release_members();
        delete next;
    }
    t_pending_deletes = nullptr;
}

namespace {

/// The copies whose members still wait to be cloned while a copy is under way
/// on this thread; null when none is.
thread_local std::vector<vorParameter*>* t_pending_clones = nullptr;

} // namespace

void vorParameter::clone_members_of(vorParameter& copy) {
    // Cloning a member that is a container clones its members in turn: the
    // first copy drains a work list instead of recursing as deep as the tree.
    if (t_pending_clones) {
        t_pending_clones->push_back(&copy);
        return;
    }
    std::vector<vorParameter*> pending{&copy};
    t_pending_clones = &pending;
    while (!pending.empty()) {
        vorParameter* next = pending.back();
        pending.pop_back();
        next->clone_members();
    }
    t_pending_clones = nullptr;
}

bool operator==(const vorParameterPtr& a, const vorParameterPtr& b) {
    if (a.get() == b.get())
        return true;
    return a->type() == b->type() && a->is_error() && a->subtype() == b->subtype() &&
           a->subtype() == ERR_UNKNOWN;
}

//===----------------------------------------------------------------------===//
// Construction
//===----------------------------------------------------------------------===//

const utTypeID& vorParameter::ut_static_type() {
    static const utTypeID id("vorParameter", nullptr);
    return id;
}

namespace {

/// How many nodes of the process have their lock flag set. While there are
/// none, is_locked() answers without walking up the tree.
std::atomic<long> s_locked_nodes{0};

} // namespace

vorParameter::vorParameter(const vorParameter& other)
    : m_measure_mode(other.m_measure_mode)
    , m_lock(other.m_lock)
    , m_evaluating(false)
    , m_active_known(false)
    , m_active(other.m_active)
    , m_defined_from_file(false)
    , m_impl(other.get_impl())
    , m_parent(other.m_parent) {
    copy_functions_of(other);
    if (m_lock)
        s_locked_nodes.fetch_add(1, std::memory_order_relaxed);
}

vorParameter& vorParameter::operator=(const vorParameter& other) {
    if (this == &other)
        return *this;
    m_impl = other.get_impl();
    m_evaluating = false;
    m_active_known = false;
    m_measure_mode = other.m_measure_mode;
    m_active = other.m_active;
    copy_functions_of(other);
    return *this;
}

vorParameter::~vorParameter() {
    lock(0);
    vorParameterUpdateTrack::untrack_parameter(this);
    teardown_callbacks();
}

void vorParameter::lock(int on) {
    const bool flag = on != 0;
    if (flag != m_lock)
        s_locked_nodes.fetch_add(flag ? 1 : -1, std::memory_order_relaxed);
    m_lock = flag;
}

vorParameter::Links& vorParameter::links() const {
    if (!m_links)
        m_links = std::make_unique<Links>();
    return *m_links;
}

void vorParameter::copy_functions_of(const vorParameter& other) {
    // A copy takes the functions but not the dependency lists, which tie the
    // original, not the copy, to the nodes its active expression read.
    const Links* theirs = other.m_links.get();
    const bool has_functions =
        theirs && (theirs->onread || theirs->onmodify || theirs->mirror_mode_fn);
    if (!has_functions && !m_links)
        return;
    links().onread = has_functions ? theirs->onread : nullptr;
    links().onmodify = has_functions ? theirs->onmodify : nullptr;
    links().mirror_mode_fn = has_functions ? theirs->mirror_mode_fn : nullptr;
}

namespace {

const vorParameterPtrcoDList& no_nodes() {
    static const vorParameterPtrcoDList none;
    return none;
}

} // namespace

const vorParameterPtrcoDList& vorParameter::get_dependencies() const {
    return m_links ? m_links->dependencies : no_nodes();
}

const vorParameterPtrcoDList& vorParameter::get_callbacks() const {
    return m_links ? m_links->callbacks : no_nodes();
}

//===----------------------------------------------------------------------===//
// Neutral answers of the base class
//===----------------------------------------------------------------------===//

const utString& vorParameter::get_typename() const {
    static const utString invalid_typename("Invalid typename");
    return invalid_typename;
}

namespace {

/// True when `node` is one of the library's own containers other than the
/// root (or a value, which is never a parent): those keep the base class's
/// answers for precedence and lock ids, which defer to the parent. A root
/// and a host's class, with a type of its own (UT_DECLARE_TYPE), may answer
/// for themselves and are asked.
bool defers_to_parent(const vorParameter& node) {
    static const utTypeID* const deferring[] = {
        &vorParameterMap::ut_static_type(),     &vorParameterArray::ut_static_type(),
        &vorParameterList::ut_static_type(),    &vorParameterSharedList::ut_static_type(),
        &vorParameterVector::ut_static_type(),  &vorParameterTempArray::ut_static_type(),
        &vorParameterNumeric::ut_static_type(), &vorParameterString::ut_static_type(),
        &vorParameterError::ut_static_type()};
    const utTypeID* type = &node.ut_dynamic_type();
    return std::find(std::begin(deferring), std::end(deferring), type) != std::end(deferring);
}

/// The nearest proper ancestor of `node` that answers for itself, or null.
const vorParameter* first_answering_ancestor(const vorParameter& node) {
    const vorParameter* up = node.parent();
    while (up && defers_to_parent(*up))
        up = up->parent();
    return up;
}

} // namespace

int vorParameter::get_precedence() const {
    // Iterative, so that the depth of the tree does not matter: the nodes
    // that only inherit their precedence are passed over.
    const vorParameter* up = first_answering_ancestor(*this);
    return up ? up->get_precedence() : 0;
}

void vorParameter::set_onmodify_param_name(const utString& name) {
    write_record().edit_details().onmodify_param_name = name;
}

const vorParameterImplPtr& vorParameter::get_impl() const {
    if (!m_impl)
        m_impl = vorParameterImplPtr();
    return m_impl;
}

const vorParameterImpl& vorParameter::read_record() const {
    static const vorParameterImpl empty;
    return m_impl ? *m_impl : empty;
}

vorParameterOnModifyFn vorParameter::set_onmodify_callback(vorParameterOnModifyFn fn) {
    if (!fn && !m_links)
        return nullptr;
    std::swap(links().onmodify, fn);
    return fn;
}

vorParameterOnReadFn vorParameter::set_onread_callback(vorParameterOnReadFn fn) {
    if (!fn && !m_links)
        return nullptr;
    std::swap(links().onread, fn);
    return fn;
}

vorParameterMirrorModeFn vorParameter::set_mirror_mode_callback(vorParameterMirrorModeFn fn) {
    if (!fn && !m_links)
        return nullptr;
    std::swap(links().mirror_mode_fn, fn);
    return fn;
}

utString vorParameter::print(int) const {
    return "(UNKNOWN)\n";
}

utString vorParameter::get_string() const {
    return "#ERROR: Parameter cannot be represented by a string";
}

void vorParameter::copy_value_from(const vorParameter& source) {
    if (&source != this)
        set_string(source.get_string());
}

vorParameterPtr vorParameter::operate_prefix(const utString&) const {
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameter::operate_postfix(const utString&) const {
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameter::operator[](const vorParameterKey&) const {
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameter::operator[](const vorParameterKey&) {
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameter::lookup_text(std::string_view path, bool as_const) const {
    const vorParameterKey key(vorParameterKeyImpl::get_impl(path));
    if (as_const)
        return (*this)[key];
    // Only the non-const operator[] asks for the non-const lookup.
    return (*const_cast<vorParameter*>(this))[key];
}

vorParameterPtr vorParameter::add(const vorParameterKey&, vorParameterPtr) {
    return vorParameterError::create(ERR_TYPE);
}

vorParameterPtr vorParameter::remove(const vorParameterKey&) {
    return vorParameterError::create(ERR_TYPE);
}

bool vorParameter::operator==(const vorParameter& other) const {
    return type() == other.type() && is_equal(other);
}

//===----------------------------------------------------------------------===//
// Operators and evaluation
//===----------------------------------------------------------------------===//

vorParameterPtr vorParameter::operate_binary(const utString& op, const vorParameterPtr& rhs) const {
    if (op == "==")
        return vorParameterNumeric::create_bool(*this == *rhs);
    if (op == "!=")
        return vorParameterNumeric::create_bool(*this != *rhs);
    if (op == "[") {
        if (!rhs->is_valid())
            return vorParameterError::create(ERR_INVALID_ARGUMENTS);
        if (rhs->type() == TYPE_NUMERIC)
            return (*this)[vorParameterKey(rhs->get_int(), utString())];
        if (rhs->type() == TYPE_STRING)
            return (*this)[vorParameterKey(rhs->get_string())];
        return vorParameterError::create(ERR_TYPE);
    }
    if (op == ".") {
        if (rhs->type() != TYPE_STRING)
            return vorParameterError::create(ERR_TYPE);
        if (!rhs->is_valid())
            return vorParameterError::create(ERR_INVALID_ARGUMENTS);
        return (*this)[vorParameterKey(rhs->get_string())];
    }
    return vorParameterError::create(ERR_TYPE);
}

namespace {

/// Holds a node's evaluating flag set for the lifetime of a scope, so that it
/// is clear again however the evaluation ends.
class EvaluatingFlag {
public:
    explicit EvaluatingFlag(const vorParameter& node, void (vorParameter::*set)(bool) const)
        : m_node(node)
        , m_set(set) {
        (m_node.*m_set)(true);
    }
    ~EvaluatingFlag() { (m_node.*m_set)(false); }
    EvaluatingFlag(const EvaluatingFlag&) = delete;
    EvaluatingFlag& operator=(const EvaluatingFlag&) = delete;

private:
    const vorParameter& m_node;
    void (vorParameter::*m_set)(bool) const;
};

} // namespace

vorParameterPtr vorParameter::evaluate() const {
    return evaluate_value(nullptr);
}

vorParameterPtr vorParameter::evaluate_to_number(vorNumericValue& number) const {
    return evaluate_value(&number);
}

vorParameterPtr vorParameter::evaluate_value(vorNumericValue* number) const {
    if (m_evaluating) {
        // What a cycle answers depends on where it was entered.
        vorReadMemo::disturb();
        return vorParameterError::create(ERR_EXPRESSION);
    }
    // The text. The library's number reads its own in place, after the
    // on-read callback that its get_expr() runs, until something could
    // change it.
    utString expr;
    const utString* text = &expr;
    if (number && &ut_dynamic_type() == &vorParameterNumeric::ut_static_type()) {
        onread_callback();
        text = &static_cast<const vorParameterScalar&>(*this).get_value();
    } else {
        expr = get_expr();
    }
    if (text->empty())
        return vorParameterError::create(ERR_TYPE);

    // One level of nesting and one evaluation of the read's budget, however
    // this parameter was reached (an operand, a chain, an interpolation).
    vorEvalLevel level(EVAL_EXPRESSION);
    if (level.refused())
        return vorParameterError::create(ERR_EXPRESSION);
    const bool interpolated = !number && (type() == TYPE_STRING || type() == TYPE_ENUM);
    const vorTextLookup lookup = interpolated ? vorTextLookup() : vorLookUpText(*this, *text);
    // Arithmetic over numbers that read quietly: nothing to remember for
    // other paths, no cycle to watch for.
    if (vorNumericValue quick; vorComputeQuietly(*this, lookup, quick)) {
        if (!number)
            return vorPlanResult{vorParameterPtr(), quick}.to_parameter();
        *number = quick;
        return vorParameterPtr();
    }
    if (text != &expr)
        expr = *text;
    // Another path of this read may have evaluated this parameter already.
    vorReadMemo::Evaluation memo(*this);
    if (vorParameterPtr reused = memo.reuse(); !reused.is_null())
        return vorEvalLevel::settle(std::move(reused));
    EvaluatingFlag flag(*this, &vorParameter::set_evaluating);
    vorParameterPtr result;
    if (interpolated) {
        vorEvaluator evaluator(this);
        result = vorParameterString::create_verbatim(evaluator.interpolate_string(expr));
    } else if (vorPlanResult planned = vorEvaluateText(*this, expr, lookup);
               number && planned.node.is_null()) {
        // A plan's new number has no text to interpolate and passed the
        // limits: only the memo may want it as a parameter.
        if (memo.may_keep())
            memo.keep(planned.to_parameter());
        *number = planned.number;
        return vorParameterPtr();
    } else {
        result = planned.to_parameter();
    }
    while (result->is_expr())
        result = result->evaluate();
    result = vorEvalLevel::settle(std::move(result));
    memo.keep(result);
    return result;
}

//===----------------------------------------------------------------------===//
// Names and scoping
//===----------------------------------------------------------------------===//

namespace {

/// The enclosing node in which a name not found in `node` is searched next:
/// the first ancestor of no higher precedence. A node that inherits its
/// precedence has its parent's, so the parent always qualifies.
template <class Node>
Node* enclosing_scope(Node& node) {
    if (defers_to_parent(node))
        return node.parent();
    const int precedence = node.get_precedence();
    for (Node* up = node.parent(); up; up = up->parent())
        if (up->get_precedence() <= precedence)
            return up;
    return nullptr;
}

/// `visit` sees every node asked for the key, in order.
template <class Node, class Visit>
vorParameterPtr resolve_in(Node& start, const vorParameterKey& key, Visit&& visit) {
    if (key.type() == TYPE_ERROR)
        return vorParameterError::create(ERR_SYNTAX);
    // Iterative, so that a name can be searched up a tree of any depth.
    for (Node* node = &start;;) {
        visit(*node);
        vorParameterPtr found = (*node)[key];
        if (!found->is_error() || found->is_ref() || !node->parent())
            return found;
        Node* up = enclosing_scope(*node);
        if (!up)
            return found;
        node = up;
    }
}

} // namespace

vorParameterPtr vorParameter::resolve(const vorParameterKey& key) const {
    return resolve_in(*this, key, [](const vorParameter&) {});
}

vorParameterPtr vorParameter::resolve(const vorParameterKey& key) {
    return resolve_in(*this, key, [](vorParameter&) {});
}

namespace {

/// The library's own node types, whose lookups and scoping depend on nothing
/// but the shape of the tree. A host's subclass may answer otherwise, so its
/// exact type is not among them.
bool answers_by_shape(const vorParameter& node) {
    static const utTypeID* const types[] = {
        &vorParameterMap::ut_static_type(),     &vorParameterRoot::ut_static_type(),
        &vorParameterLibRoot::ut_static_type(), &vorParameterArray::ut_static_type(),
        &vorParameterList::ut_static_type(),    &vorParameterSharedList::ut_static_type(),
        &vorParameterVector::ut_static_type(),  &vorParameterTempArray::ut_static_type(),
        &vorParameterNumeric::ut_static_type(), &vorParameterString::ut_static_type()};
    const utTypeID* type = &node.ut_dynamic_type();
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

} // namespace

vorParameterPtr vorResolveForCache(const vorParameter& scope, const vorParameterKey& key,
                                   bool& by_shape) {
    by_shape = true;
    return resolve_in(
        scope, key, [&by_shape](const vorParameter& node) { by_shape &= answers_by_shape(node); });
}

namespace {

/// The key under which `node` stands in `parent`, or the empty text.
utString key_in_parent(const vorParameter& parent, const vorParameter& node) {
    // The direct members, functions included; with no filter on, the walk
    // asks nothing of the members, so no reference among them resolves.
    vorParameterIter members(&parent);
    members.set_max_depth(1);
    members.exclude_functions(0);
    while (++members)
        if (members().get() == &node)
            return members.index().str();
    return utString();
}

} // namespace

utString vorParameter::get_name(const vorParameter& node, int full) {
    // Each level up gives one piece: a name (joined with "."), or for a
    // nameless member its key in the parent ("[2]"). Iterative, so that the
    // depth of the tree does not matter; the pieces are joined top first.
    struct Piece {
        utString text;
        bool dotted;
    };
    std::vector<Piece> pieces;
    for (const vorParameter* level = &node; level;) {
        const auto* root = vorParameterRoot::ut_dynamic_cast(level);
        utString name = level->get_name();
        if (name.empty() && root)
            name = root->get_root_type();
        const vorParameter* parent = level->parent();
        if (!name.empty()) {
            const bool last = !full || !parent || root;
            pieces.push_back({std::move(name), !last});
            level = last ? nullptr : parent;
            continue;
        }
        if (!parent || (parent->type() != TYPE_MAP && parent->type() != TYPE_ARRAY))
            break;
        utString key = key_in_parent(*parent, *level);
        if (key.empty())
            break;
        pieces.push_back({std::move(key), false});
        level = full ? parent : nullptr;
    }
    utString path;
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
        if (piece->dotted && !path.empty())
            path += '.';
        path += piece->text;
    }
    return path;
}

namespace {

/// True when `node` may be some node's parent: only maps and arrays are, and
/// only while they hold a member.
bool may_be_parent(const vorParameter* node) {
    if (const auto* map = vorParameterMap::ut_dynamic_cast(node))
        return map->size() > 0;
    if (const auto* array = vorParameterArray::ut_dynamic_cast(node))
        return array->size() > 0;
    return false;
}

} // namespace

bool vorParameter::is_descendent(const vorParameter* p) const {
    if (p == this)
        return true;
    // Adding a new member is the common case: it holds nothing, so it cannot
    // be an ancestor, and the walk up a deep tree is spared.
    if (!may_be_parent(p))
        return false;
    for (const vorParameter* node = m_parent; node; node = node->parent())
        if (node == p)
            return true;
    return false;
}

void vorParameter::set_measure_mode(vorParameterMeasureMode mode) {
    if (mode == MEASURE_NONE)
        return;
    vorParameterSubType sub = subtype();
    if (sub == SUB_REAL || sub == SUB_ANGLE)
        m_measure_mode = static_cast<std::uint8_t>(mode);
}

vorParameterMirrorMode vorParameter::get_mirror_mode() const {
    if (m_links && m_links->mirror_mode_fn)
        return m_links->mirror_mode_fn(this);
    return static_cast<vorParameterMirrorMode>(read_record().mirror_mode);
}

void vorParameter::set_impl(vorParameterImplPtr impl) {
    // The record holds descriptions, not the shape of the tree: a member is
    // found by the key its container stores, so no resolution changes here.
    m_impl = std::move(impl);
    invalidate_active();
}

//===----------------------------------------------------------------------===//
// Structure, callbacks, active state and locking
//===----------------------------------------------------------------------===//

void vorParameter::link_par(vorParameterPtr child) {
    // Errors are shared, immutable values: they never belong to a container.
    if (!child.is_null() && !(child->is_error() && !child->is_ref())) {
        child->m_parent = this;
        vorTreeGeneration::advance();
    }
}

void vorParameter::set_parent(vorParameter* parent) {
    m_parent = parent;
    vorTreeGeneration::advance();
}

void vorParameter::unlink_par(vorParameterPtr child) {
    if (!child.is_null() && child->m_parent == this) {
        child->m_parent = nullptr;
        vorTreeGeneration::advance();
    }
}

bool vorParameter::is_locked() const {
    if (vorParameterNoLock::no_lock() || s_locked_nodes.load(std::memory_order_relaxed) == 0)
        return false;
    for (const vorParameter* node = this; node; node = node->m_parent)
        if (node->m_lock && node->is_active())
            return true;
    return false;
}

vorRefToObjectId vorParameter::get_lock_id_imp(const vorParameter& node) const {
    // The nearest enclosing root (or host class) decides: the root answers
    // its own id for a locked node. Iterative, like get_precedence().
    const vorParameter* up = first_answering_ancestor(*this);
    return up ? up->get_lock_id_imp(node) : vorRefToObjectId();
}

vorRefToObjectId vorParameter::get_lock_id() const {
    return get_lock_id_imp(*this);
}

void vorParameter::set_active(const utString& expr) {
    // Clearing an expression that was never set (as copies without active
    // expressions do for every node) must not make the record's details.
    const utString localized = vorEvaluator::localize(expr);
    if (read_record().details().active_expr != localized)
        write_record().edit_details().active_expr = localized;
    invalidate_active();
}

bool vorParameter::is_active() const {
    // Most states are known: then the answer is a walk up without evaluating.
    bool all_known = true;
    for (const vorParameter* node = this; node; node = node->m_parent) {
        if (!node->m_active_known)
            all_known = false;
        else if (!node->m_active && all_known)
            return false;
    }
    if (all_known)
        return true;
    // Otherwise the enclosing nodes are asked first, from the top down, so a
    // node's own active expression is not evaluated while an enclosing node is
    // inactive.
    std::vector<const vorParameter*> chain;
    for (const vorParameter* node = this; node; node = node->m_parent)
        chain.push_back(node);
    for (auto node = chain.rbegin(); node != chain.rend(); ++node)
        if (!(*node)->own_active())
            return false;
    return true;
}

bool vorParameter::own_active() const {
    if (!m_active_known)
        update_active();
    return m_active;
}

namespace {

bool contains(const vorParameterPtrcoDList& list, const vorParameter* node) {
    return std::any_of(list.begin(), list.end(),
                       [node](const vorParameterPtr& p) { return p.get() == node; });
}

void erase_node(vorParameterPtrcoDList& list, const vorParameter* node) {
    list.erase(std::remove_if(list.begin(), list.end(),
                              [node](const vorParameterPtr& p) { return p.get() == node; }),
               list.end());
}

} // namespace

void vorParameter::update_active() const {
    m_active_known = true;
    const utString& expr = get_active_expr();
    if (expr.empty()) {
        m_active = true;
        if (m_links) {
            for (const vorParameterPtr& dependency : m_links->dependencies)
                dependency->remove_callback(
                    vorParameterPtr(coPrfExtern(), const_cast<vorParameter*>(this)));
            m_links->dependencies.clear();
        }
        return;
    }

    // Active conditions may read other nodes' active state: they count
    // against the same nesting and evaluation budgets as values.
    vorEvalLevel level(EVAL_EXPRESSION);
    vorEvaluator evaluator(m_parent);
    vorParameterPtr result =
        level.refused() ? vorParameterError::create(ERR_EXPRESSION) : evaluator.evaluate(expr);
    if (result->type() != TYPE_NUMERIC) {
        m_active = false;
        m_active_known = false;
    } else {
        m_active = result->get_int() != 0;
    }
    if (evaluator.has_function_param())
        m_active_known = false;

    // The lists refer without owning, so that two nodes whose expressions read
    // each other cannot keep each other alive; a node that only the evaluator
    // held (a temporary of the expression) is gone and is no dependency.
    vorParameterPtrcoDList read;
    for (const vorParameterPtr& p : evaluator.paramset())
        if (!p.unique())
            read.emplace_back(coPrfExtern(), p.get());
    vorParameterPtr self(coPrfExtern(), const_cast<vorParameter*>(this));
    for (const vorParameterPtr& p : read)
        if (!contains(get_dependencies(), p.get()))
            p->add_callback(self);
    for (const vorParameterPtr& old : get_dependencies())
        if (!contains(read, old.get()))
            old->remove_callback(self);
    if (m_links || !read.empty())
        links().dependencies = std::move(read);
}

void vorParameter::add_callback(vorParameterPtr dependant) const {
    vorParameterPtrcoDList& callbacks = links().callbacks;
    if (!contains(callbacks, dependant.get()))
        callbacks.emplace_back(coPrfExtern(), dependant.get());
}

void vorParameter::remove_callback(const vorParameterPtr& dependant) const {
    if (m_links)
        erase_node(m_links->callbacks, dependant.get());
}

void vorParameter::remove_dependency(const vorParameterPtr& dependency) const {
    if (m_links)
        erase_node(m_links->dependencies, dependency.get());
}

void vorParameter::teardown_callbacks() {
    if (!m_links)
        return;
    vorParameterPtr self(coPrfExtern(), this);
    for (const vorParameterPtr& dependency : m_links->dependencies)
        dependency->remove_callback(self);
    for (const vorParameterPtr& dependant : m_links->callbacks)
        dependant->remove_dependency(self);
    m_links->dependencies.clear();
    m_links->callbacks.clear();
}

void vorParameter::onmodify_callback() {
    vorReadMemo::disturb();
    for (const vorParameterPtr& dependant : get_callbacks())
        dependant->invalidate_active();
    if (vorBlockParUpdateCallbacks::block_parameter_update_callbacks())
        return;
    if (m_links && m_links->onmodify)
        m_links->onmodify(this);
    else if (m_parent)
        m_parent->call_onmodify();
}

void vorParameter::call_onmodify() {
    for (vorParameter* node = this; node; node = node->m_parent) {
        if (vorBlockParUpdateCallbacks::block_parameter_update_callbacks())
            return;
        if (node->m_links && node->m_links->onmodify) {
            node->m_links->onmodify(node);
            return;
        }
    }
}

void vorParameter::onread_callback() const {
    // The callback may refresh values, or count its calls: values kept
    // before it and during it are not reused.
    if (m_links && m_links->onread) {
        vorReadMemo::disturb();
        m_links->onread(this);
        vorReadMemo::disturb();
    }
}

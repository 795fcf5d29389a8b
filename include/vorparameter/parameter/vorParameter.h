//===- vorParameter.h - Base of every parameter and its handle --*- C++ -*-===//
//
// Every node of a parameter tree is a vorParameter: a named, typed value
// (number, string, enumeration, error, map, array, list, reference, function,
// data) with a label, a description, a group, an optional active expression,
// change callbacks and a parent.
//
// Nodes are held by vorParameterPtr handles, which count references in the
// node itself. Nothing in the library hands out a null parameter: an empty
// handle that is dereferenced turns itself into the error value of kind
// ERR_UNKNOWN, and every failed lookup, operator or evaluation returns an error
// parameter (type TYPE_ERROR) instead of throwing.
//
// The virtual interface below is declared in its fixed slot order; derived
// classes override what they support and inherit neutral answers for the rest.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETER_H
#define VORPARAMETER_PARAMETER_VORPARAMETER_H

#include "vorparameter/parameter/vorParameterImpl.h"
#include "vorparameter/parameter/vorParameterKey.h"
#include "vorparameter/parameter/vorParameterTypes.h"
#include "vorparameter/platform/coContainers.h"
#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/utTypeID.h"
#include "vorparameter/platform/vorExport.h"
#include "vorparameter/platform/vorUniqueId.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

class vorParameter;
struct vorNumericValue;

/// A counted, shared handle to a parameter (atomic counts kept in the node).
/// Handles made with coPrfExtern refer to a node without owning it.
///
/// Dereferencing (->, *, check(), par(), copy()) never yields null: an empty
/// handle is first assigned the shared error of kind ERR_UNKNOWN, in place,
/// even through a const handle. That replacement is atomic and refers to the
/// error without owning it (the shared errors live as long as the process),
/// so several threads may dereference one shared empty handle at once.
/// Constness of a handle does not propagate to the node, as with
/// std::shared_ptr.
///
/// Releasing the last handle of a container releases its members without
/// recursing on the machine stack, so a chain of any depth is freed in time
/// linear in its size.
class VOR_API vorParameterPtr {
public:
    vorParameterPtr() = default;
    /// Takes ownership of `node` (which may already be owned by other handles).
    vorParameterPtr(vorParameter* node);
    /// Refers to `node` without owning it: the node is never deleted through it.
    vorParameterPtr(coPrfExtern, vorParameter* node)
        : m_bits(bits_of(node, false)) {}
    vorParameterPtr(const vorParameterPtr& other);
    vorParameterPtr(vorParameterPtr&& other) noexcept;
    /// A handle to `node` that shares ownership when handles already own it,
    /// and only refers to it otherwise (a node that lives on the stack, such
    /// as a host's root). Null gives the empty handle.
    static vorParameterPtr share(vorParameter* node);
    vorParameterPtr& operator=(const vorParameterPtr& other);
    vorParameterPtr& operator=(vorParameterPtr&& other) noexcept;
    ~vorParameterPtr();

    /// True when this handle is the only owner of its node.
    bool unique() const;
    /// True when the handle holds no node (does not replace it by an error).
    bool is_null() const { return node() == nullptr; }
    /// The node or null, without replacement.
    vorParameter* get() const { return node(); }
    bool is_owning() const { return owning(m_bits.load(std::memory_order_relaxed)); }

    vorParameter* operator->() const;
    vorParameter& operator*() const;
    /// Replaces an empty handle by the ERR_UNKNOWN error.
    void check() const {
        if (!node())
            replace_empty();
    }
    /// The node's get_ref(): a reference's referent, otherwise the node itself.
    vorParameter* par() const;
    /// The node's lookup of `key`.
    vorParameterPtr operator[](const vorParameterKey& key) const;
    /// The node's lookup of the key made from `path`.
    vorParameterPtr operator[](const char* path) const;
    /// A new handle owning a clone of the node (create_new()). The clone
    /// stands alone: its parent is none, so it can outlive the tree it came
    /// from.
    vorParameterPtr copy() const;
    /// Hash of the node's address, so handles can key hash tables.
    std::size_t co_hash() const { return std::hash<const void*>()(node()); }

    void reset();
    void swap(vorParameterPtr& other) noexcept;

private:
    void replace_empty() const;
    vorParameter* node() const { return node_of(m_bits.load(std::memory_order_acquire)); }
    /// Deletes a node whose last owner let go (see vorParameter::destroy).
    static void destroy(vorParameter* node);

    // One word: the node's address, with the lowest bit (always clear in the
    // address of a node) set when the handle owns the node. Maps and arrays
    // hold a handle per member, so its size counts.
    static constexpr std::uintptr_t owning_bit = 1;
    static std::uintptr_t bits_of(vorParameter* node, bool owning) {
        return reinterpret_cast<std::uintptr_t>(node) | (node && owning ? owning_bit : 0);
    }
    static vorParameter* node_of(std::uintptr_t bits) {
        return reinterpret_cast<vorParameter*>(bits & ~owning_bit);
    }
    static bool owning(std::uintptr_t bits) { return (bits & owning_bit) != 0; }

    // Atomic only for the in-place replacement of an empty handle, which may
    // happen through a const handle shared by threads; every other change
    // happens through a non-const handle that one thread owns.
    mutable std::atomic<std::uintptr_t> m_bits{0};
};

/// True for the same node; two distinct nodes are equal only when both are
/// errors of kind ERR_UNKNOWN (the "nothing there" value).
VOR_API bool operator==(const vorParameterPtr& a, const vorParameterPtr& b);
inline bool operator!=(const vorParameterPtr& a, const vorParameterPtr& b) {
    return !(a == b);
}

template <>
struct std::hash<vorParameterPtr> {
    std::size_t operator()(const vorParameterPtr& p) const noexcept { return p.co_hash(); }
};

using vorParameterPtrcoDList = coDList<vorParameterPtr>;
using vorParameterPtrcoStack = coStack<vorParameterPtr>;

class VOR_API vorParameter {
public:
    /// The walks that descend into nested containers recursively (print,
    /// is_valid, is_equal, reset, copy_value_from, set_onread_callback) go at
    /// most this many containers deep. Below that a container prints as
    /// "(TOO DEEP)", is not valid, equals nothing but itself, and is left as
    /// it is by the others. Releasing and copying have no such limit: they are
    /// iterative.
    static constexpr int max_tree_depth = 1000;

    // Slots 0 and 1: class identity.
    virtual const utTypeID& ut_dynamic_type() const { return ut_static_type(); }
    virtual bool ut_is_kind_of(const utTypeID& id) const {
        return ut_dynamic_type().is_kind_of(id);
    }
    static const utTypeID& ut_static_type();
    static vorParameter* ut_dynamic_cast(vorParameter* p) { return p; }
    static const vorParameter* ut_dynamic_cast(const vorParameter* p) { return p; }

    virtual ~vorParameter();
    /// A new heap clone made with the class's copy constructor.
    virtual vorParameter* create_new() const = 0;
    virtual void reset() {}
    virtual bool is_valid() const { return true; }
    /// False when the parent is inactive; otherwise the cached result of the
    /// active expression, computed first when not known.
    virtual bool is_active() const;
    virtual bool is_error() const { return false; }
    virtual const utString& get_typename() const;
    virtual void set_typename(const utString&) {}
    /// The parent's precedence; 0 without a parent. Names not found in a node
    /// are searched in enclosing nodes of no higher precedence.
    virtual int get_precedence() const;
    virtual void set_onmodify_param_name(const utString& name);
    virtual vorParameterOnModifyFn set_onmodify_callback(vorParameterOnModifyFn fn);
    virtual vorParameterOnReadFn set_onread_callback(vorParameterOnReadFn fn);
    virtual utString print(int indent) const;
    virtual int get_int() const { return 0; }
    virtual double get_double() const { return 0.0; }
    virtual utString get_string() const;
    virtual const vorRefToObjectId& get_ref_id() const { return vorRefToObjectId::empty(); }
    virtual utString get_translated_string() const { return get_string(); }
    virtual void set_int(int) {}
    virtual void set_double(double) {}
    virtual void set_string(const utString&) {}
    virtual void set_ref_from_id(const vorRefToObjectId&) {}
    virtual void set_defaults(const utString&, const utString&) {}
    virtual void copy_value_from(const vorParameter& source);
    virtual bool is_locked() const;
    virtual bool check_range() const { return true; }
    virtual bool is_expr() const { return false; }
    /// The text that evaluate() parses; empty for nodes without an expression.
    virtual utString get_expr() const { return utString(); }
    virtual vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& rhs) const;
    virtual vorParameterPtr operate_prefix(const utString& op) const;
    virtual vorParameterPtr operate_postfix(const utString& op) const;
    virtual int size() const { return 0; }
    virtual vorParameterPtr operator[](const vorParameterKey& key) const;
    virtual vorParameterPtr operator[](const vorParameterKey& key);
    /// The lookup of the key made from `path` (null is the empty text). The
    /// same answer as operator[](vorParameterKey(path)); a map finds a path
    /// the key cache knows without making a key of it.
    vorParameterPtr operator[](const char* path) const { return lookup_text(text_of(path), true); }
    vorParameterPtr operator[](const char* path) { return lookup_text(text_of(path), false); }
    virtual vorParameterPtr add(const vorParameterKey& key, vorParameterPtr par);
    virtual vorParameterPtr remove(const vorParameterKey& key);
    virtual void remove_all() {}
    virtual const vorParameter* get_ref() const { return this; }
    virtual vorParameter* get_ref() { return this; }
    virtual vorParameterSubType subtype() const = 0;
    virtual vorParameterType type() const = 0;
    /// The type word of the XML rendering; empty here.
    virtual utString get_xml_typename() const { return utString(); }
    /// Evaluates get_expr() in this node's scope; see vorParameter.cpp.
    virtual vorParameterPtr evaluate() const;
    /// Identity here; value equality in the value classes.
    virtual bool is_equal(const vorParameter& other) const { return this == &other; }
    virtual vorRefToObjectId get_lock_id_imp(const vorParameter& node) const;

    // Descriptive record (shared by copies of the node).
    utString get_name() const { return read_record().name.str(); }
    void set_name(const utString& name) { write_record().name = utCompactString(name); }
    const utString& get_label() const { return read_record().details().label; }
    void set_label(const utString& label) { write_record().edit_details().label = label; }
    const utString& get_desc() const { return read_record().details().desc; }
    void set_desc(const utString& desc) { write_record().edit_details().desc = desc; }
    const utString& get_group_name() const { return read_record().details().group_name; }
    void set_group_name(const utString& group) { write_record().edit_details().group_name = group; }
    const utString& get_active_expr() const { return read_record().details().active_expr; }
    /// Stores the (localized) active expression and marks the state unknown.
    void set_active(const utString& expr);
    /// The shared record (made now if the node had none yet).
    const vorParameterImplPtr& get_impl() const;
    /// Replaces the record and marks the active state unknown.
    void set_impl(vorParameterImplPtr impl);

    /// Looks `key` up here and, when not found, in the enclosing nodes of no
    /// higher precedence: the scoping rule of names. A malformed (empty-kind)
    /// key gives ERR_SYNTAX.
    vorParameterPtr resolve(const vorParameterKey& key) const;
    vorParameterPtr resolve(const vorParameterKey& key);

    /// The name for display and messages: with `full`, the dotted path from the
    /// top of the tree (array members by their index, "list[2]").
    static utString get_name(const vorParameter& node, int full);
    static vorParameterType get_type(const vorParameter& node) { return node.type(); }

    const vorParameter* parent() const { return m_parent; }
    vorParameter* parent() { return m_parent; }
    /// True when `p` is this node or one of its ancestors.
    bool is_descendent(const vorParameter* p) const;
    bool is_ref() const { return get_ref() != this; }

    vorParameterMeasureMode get_measure_mode() const {
        return static_cast<vorParameterMeasureMode>(m_measure_mode);
    }
    /// Stored only on real and angle numbers; a zero mode is ignored.
    void set_measure_mode(vorParameterMeasureMode mode);
    vorParameterMirrorMode get_mirror_mode() const;
    void set_mirror_mode(vorParameterMirrorMode mode) { write_record().mirror_mode = mode; }
    vorParameterMirrorModeFn set_mirror_mode_callback(vorParameterMirrorModeFn fn);

    // Structure, callbacks, active state and locking.
    void link_par(vorParameterPtr child);
    void unlink_par(vorParameterPtr child);
    void lock(int on);
    vorRefToObjectId get_lock_id() const;
    void invalidate_active() const { m_active_known = false; }
    void add_callback(vorParameterPtr dependant) const;
    void remove_callback(const vorParameterPtr& dependant) const;
    void remove_dependency(const vorParameterPtr& dependency) const;
    /// Called by every setter after a value changed: marks dependants' active
    /// state unknown and calls the nearest on-modify function up the tree.
    void onmodify_callback();
    void call_onmodify();
    void onread_callback() const;
    /// True when an on-read function is set: readers may skip
    /// onread_callback() when it is not.
    bool has_onread_callback() const { return m_links && m_links->onread; }
    void teardown_callbacks();
    const vorParameterPtrcoDList& get_dependencies() const;
    const vorParameterPtrcoDList& get_callbacks() const;

    /// Set on parameters that the text loader created from a type word.
    bool is_defined_from_file() const { return m_defined_from_file; }
    void set_defined_from_file(bool on) { m_defined_from_file = on; }

    /// True while evaluate() runs on this node (the recursion guard).
    bool is_evaluating() const { return m_evaluating; }

    bool operator==(const vorParameter& other) const;
    bool operator!=(const vorParameter& other) const { return !(*this == other); }

protected:
    vorParameter()
        : m_lock(false)
        , m_evaluating(false)
        , m_active_known(false)
        , m_active(true)
        , m_defined_from_file(false) {}
    vorParameter(const vorParameter& other);
    vorParameter& operator=(const vorParameter& other);

    /// operator[] of a path text: makes its key and calls operator[] of the
    /// key, the const one when `as_const`. Overridden by containers that can
    /// find a path faster and give the same answer.
    virtual vorParameterPtr lookup_text(std::string_view path, bool as_const) const;
    static std::string_view text_of(const char* path) {
        return path ? std::string_view(path) : std::string_view();
    }

    /// evaluate(), for a caller that wants a number: when the value is a new
    /// number that nothing holds, it is written to `number` and the handle is
    /// empty, which spares making a parameter of it.
    vorParameterPtr evaluate_to_number(vorNumericValue& number) const;

    /// Sets or clears the evaluating flag; for classes that evaluate themselves.
    void set_evaluating(bool on) const { m_evaluating = on; }
    void set_parent(vorParameter* parent);

    /// Containers let go of (and unlink) every member here, just before the
    /// node is deleted, so that releasing a deep tree never recurses.
    virtual void release_members() {}
    /// Containers replace every member by a clone here. A copy constructor
    /// that shares its source's members calls clone_members_of(*this); the
    /// members are then cloned level by level without recursion.
    virtual void clone_members() {}
    static void clone_members_of(vorParameter& copy);

private:
    friend class vorParameterPtr;
    /// evaluate(), or evaluate_to_number() when `number` is given.
    vorParameterPtr evaluate_value(vorNumericValue* number) const;
    void update_active() const;
    /// The node's own active state, made known first.
    bool own_active() const;
    // The record is made on first need: most nodes an expression creates
    // (numbers, results) are never named, and reading an absent record reads
    // the empty one. A copy makes it first, so that both share it.
    const vorParameterImpl& read_record() const;
    vorParameterImpl& write_record() const { return *get_impl(); }

    /// What only some nodes have: on-read, on-modify and mirror-mode
    /// functions, and the lists that tie active expressions to the nodes they
    /// read. Made on first need, so that a plain member carries one pointer
    /// for all five.
    struct Links {
        vorParameterOnReadFn onread = nullptr;
        vorParameterOnModifyFn onmodify = nullptr;
        vorParameterMirrorModeFn mirror_mode_fn = nullptr;
        vorParameterPtrcoDList dependencies;
        vorParameterPtrcoDList callbacks;
    };
    Links& links() const;
    /// Takes `other`'s on-modify and mirror-mode functions.
    void copy_functions_of(const vorParameter& other);

    // Every node of a tree carries these fields, so they are packed: the
    // flags share one byte, and with the measure mode they fill the word the
    // count leaves.
    mutable std::atomic<int> m_refs{0};
    std::uint8_t m_measure_mode = MEASURE_NONE;
    bool m_lock : 1;
    mutable bool m_evaluating : 1;
    mutable bool m_active_known : 1;
    mutable bool m_active : 1;
    bool m_defined_from_file : 1;
    mutable vorParameterImplPtr m_impl{nullptr};
    vorParameter* m_parent = nullptr;
    mutable std::unique_ptr<Links> m_links;
};

// The handle's hot operations are inline: copying and releasing handles is
// the most frequent thing the library does.

inline vorParameterPtr::vorParameterPtr(vorParameter* node)
    : m_bits(bits_of(node, true)) {
    if (node)
        node->m_refs.fetch_add(1, std::memory_order_relaxed);
}

inline vorParameterPtr::vorParameterPtr(const vorParameterPtr& other)
    : m_bits(other.m_bits.load(std::memory_order_acquire)) {
    const std::uintptr_t bits = m_bits.load(std::memory_order_relaxed);
    if (owning(bits))
        node_of(bits)->m_refs.fetch_add(1, std::memory_order_relaxed);
}

// Moves and resets change handles that one thread owns: a plain load and
// store, not an exchange, which would lock the bus.
inline vorParameterPtr::vorParameterPtr(vorParameterPtr&& other) noexcept
    : m_bits(other.m_bits.load(std::memory_order_relaxed)) {
    other.m_bits.store(0, std::memory_order_relaxed);
}

inline void vorParameterPtr::reset() {
    const std::uintptr_t bits = m_bits.load(std::memory_order_relaxed);
    m_bits.store(0, std::memory_order_relaxed);
    if (owning(bits) && node_of(bits)->m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        destroy(node_of(bits));
}

inline void vorParameterPtr::swap(vorParameterPtr& other) noexcept {
    const std::uintptr_t mine = m_bits.load(std::memory_order_relaxed);
    m_bits.store(other.m_bits.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.m_bits.store(mine, std::memory_order_relaxed);
}

inline vorParameterPtr& vorParameterPtr::operator=(const vorParameterPtr& other) {
    vorParameterPtr copy(other);
    swap(copy);
    return *this;
}

inline vorParameterPtr& vorParameterPtr::operator=(vorParameterPtr&& other) noexcept {
    vorParameterPtr moved(std::move(other));
    swap(moved);
    return *this;
}

inline vorParameterPtr::~vorParameterPtr() {
    reset();
}

inline bool vorParameterPtr::unique() const {
    const std::uintptr_t bits = m_bits.load(std::memory_order_acquire);
    return owning(bits) && node_of(bits)->m_refs.load(std::memory_order_acquire) == 1;
}

inline vorParameter* vorParameterPtr::operator->() const {
    check();
    return node();
}

inline vorParameter& vorParameterPtr::operator*() const {
    check();
    return *node();
}

#endif // VORPARAMETER_PARAMETER_VORPARAMETER_H

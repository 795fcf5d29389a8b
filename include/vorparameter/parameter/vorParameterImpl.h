//===- vorParameterImpl.h - The descriptive record of a node ----*- C++ -*-===//
//
// A node's name, label, description, group and active expression live in a
// vorParameterImpl that all copies of the node share: renaming a node renames
// its clones too. Only the name and mirror mode are held in the record itself;
// the other texts, which most nodes never set, are made on first write. vorParameterImplPtr is the
// counted handle to it; its external form wraps a record that somebody else owns and never deletes
// it.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERIMPL_H
#define VORPARAMETER_PARAMETER_VORPARAMETERIMPL_H

#include "vorparameter/parameter/vorParameterTypes.h"
#include "vorparameter/platform/coContainers.h"
#include "vorparameter/platform/utCompactString.h"
#include "vorparameter/platform/utString.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

/// The texts that few nodes carry. They live apart from the record so that a
/// plain named node pays for one pointer instead of seven empty strings.
struct vorParameterImplDetails {
    utString active_expr; ///< decides whether the node is active; empty: always
    utString group_name;
    utString label; ///< display text
    utString desc;  ///< description
    /// Name of the parameter to notify when this one changes.
    utString onmodify_param_name;
    /// A scalar's default text, applied by reset(); invalid until recorded.
    utString default_value = utString::invalid();
    /// A scalar's alternative default for non-metric units, or invalid for none.
    utString alt_default_value = utString::invalid();
};

struct vorParameterImpl {
    utCompactString name; ///< the node's own name within its parent
    int mirror_mode = MIRROR_NONE;

    vorParameterImpl() = default;
    /// A record with `other`'s texts, held by nobody yet.
    vorParameterImpl(const vorParameterImpl& other)
        : name(other.name)
        , mirror_mode(other.mirror_mode)
        , m_details(other.m_details ? std::make_unique<vorParameterImplDetails>(*other.m_details)
                                    : nullptr) {}
    /// Takes `other`'s texts; the handles that hold this record stay.
    vorParameterImpl& operator=(const vorParameterImpl& other) {
        if (this != &other) {
            name = other.name;
            mirror_mode = other.mirror_mode;
            m_details = other.m_details
                            ? std::make_unique<vorParameterImplDetails>(*other.m_details)
                            : nullptr;
        }
        return *this;
    }
    ~vorParameterImpl() = default;

    /// The rarely used texts; a record that never had them reads the
    /// defaults (empty texts, invalid default values).
    const vorParameterImplDetails& details() const {
        static const vorParameterImplDetails none;
        return m_details ? *m_details : none;
    }
    /// The rarely used texts for writing, made on first use.
    vorParameterImplDetails& edit_details() {
        if (!m_details)
            m_details = std::make_unique<vorParameterImplDetails>();
        return *m_details;
    }

private:
    friend class vorParameterImplPtr;

    // The count of the handles that hold the record lives in it, where the
    // padding after mirror_mode has room: every named node has a record.
    mutable std::atomic<int> m_handles{0};
    std::unique_ptr<vorParameterImplDetails> m_details;
};

/// The counted handle to a record (atomic counts, like a shared pointer).
/// Every node holds one, so it is one word: the record's address, whose
/// lowest bit (always clear in an address of a record) marks the external
/// form.
class vorParameterImplPtr {
public:
    /// A fresh record with every text empty.
    vorParameterImplPtr()
        : vorParameterImplPtr(new vorParameterImpl(), owned) {}
    /// No record yet.
    explicit vorParameterImplPtr(std::nullptr_t) {}
    /// Wraps a record owned elsewhere; it is never deleted through this handle.
    vorParameterImplPtr(coPrfExtern, vorParameterImpl* impl)
        : vorParameterImplPtr(impl, external) {}
    /// A private copy of `other`'s record.
    static vorParameterImplPtr clone_of(const vorParameterImpl& other) {
        return vorParameterImplPtr(new vorParameterImpl(other), owned);
    }

    vorParameterImplPtr(const vorParameterImplPtr& other)
        : m_bits(other.m_bits) {
        acquire();
    }
    vorParameterImplPtr(vorParameterImplPtr&& other) noexcept
        : m_bits(std::exchange(other.m_bits, 0)) {}
    vorParameterImplPtr& operator=(vorParameterImplPtr other) noexcept {
        std::swap(m_bits, other.m_bits);
        return *this;
    }
    ~vorParameterImplPtr() { release(); }

    vorParameterImpl* operator->() const { return get(); }
    vorParameterImpl& operator*() const { return *get(); }
    /// True when this is the only handle to the record.
    bool unique() const { return get() && get()->m_handles.load(std::memory_order_acquire) == 1; }
    explicit operator bool() const { return m_bits != 0; }

private:
    static constexpr std::uintptr_t owned = 0;
    static constexpr std::uintptr_t external = 1;
    static_assert(alignof(vorParameterImpl) > 1, "the lowest bit of a record's address is free");

    vorParameterImplPtr(vorParameterImpl* impl, std::uintptr_t form)
        : m_bits(impl ? reinterpret_cast<std::uintptr_t>(impl) | form : 0) {
        acquire();
    }
    vorParameterImpl* get() const {
        return reinterpret_cast<vorParameterImpl*>(m_bits & ~external);
    }
    void acquire() const {
        if (vorParameterImpl* impl = get())
            impl->m_handles.fetch_add(1, std::memory_order_relaxed);
    }
    void release() {
        vorParameterImpl* impl = get();
        if (impl && impl->m_handles.fetch_sub(1, std::memory_order_acq_rel) == 1 &&
            (m_bits & external) == 0)
            delete impl;
    }

    std::uintptr_t m_bits = 0;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERIMPL_H

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
#include "vorparameter/platform/utString.h"

#include <cstddef>
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
    utString name; ///< the node's own name within its parent
    int mirror_mode = MIRROR_NONE;

    vorParameterImpl() = default;
    vorParameterImpl(const vorParameterImpl& other)
        : name(other.name)
        , mirror_mode(other.mirror_mode)
        , m_details(other.m_details ? std::make_unique<vorParameterImplDetails>(*other.m_details)
                                    : nullptr) {}
    vorParameterImpl& operator=(const vorParameterImpl& other) {
        vorParameterImpl copy(other);
        std::swap(*this, copy);
        return *this;
    }
    vorParameterImpl(vorParameterImpl&&) noexcept = default;
    vorParameterImpl& operator=(vorParameterImpl&&) noexcept = default;
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
    std::unique_ptr<vorParameterImplDetails> m_details;
};

class vorParameterImplPtr {
public:
    /// A fresh record with every text empty.
    vorParameterImplPtr()
        : m_impl(std::make_shared<vorParameterImpl>()) {}
    /// No record yet.
    explicit vorParameterImplPtr(std::nullptr_t) {}
    /// Wraps a record owned elsewhere; it is never deleted through this handle.
    vorParameterImplPtr(coPrfExtern, vorParameterImpl* impl)
        : m_impl(impl, [](vorParameterImpl*) {}) {}
    /// A private copy of `other`'s record.
    static vorParameterImplPtr clone_of(const vorParameterImpl& other) {
        vorParameterImplPtr copy;
        *copy.m_impl = other;
        return copy;
    }

    vorParameterImpl* operator->() const { return m_impl.get(); }
    vorParameterImpl& operator*() const { return *m_impl; }
    bool unique() const { return m_impl.use_count() == 1; }
    explicit operator bool() const { return m_impl != nullptr; }

private:
    std::shared_ptr<vorParameterImpl> m_impl;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERIMPL_H

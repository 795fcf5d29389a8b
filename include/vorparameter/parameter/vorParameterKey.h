//===- vorParameterKey.h - Paths into a parameter tree ----------*- C++ -*-===//
//
// A vorParameterKey names a place in a tree: "tool.diameter", "list[3].name",
// "3". It is parsed once into a vorParameterKeyImpl: the kind of its first
// component (a name, an index, or malformed), the first component itself and
// the remainder of the path. Keys are cheap values holding a shared handle to
// their record.
//
// Name keys are cached process-wide by their text, so the same path text is
// parsed once and every key made from it shares one record; key equality is
// identity of the record. Index keys and malformed keys are parsed anew each
// time and never compare equal to another key. Leading "$" characters are
// dropped ("$tol" is "tol"), and a first component "current" is read as
// "toolpath". Names longer than vorParameterKeyImpl::max_cached_length bytes
// are parsed but not cached, so a flood of distinct huge names cannot grow the
// cache without bound; two such keys are never equal. The cache itself is
// bounded: past 65 536 texts or 16 MiB of text it drops the entries that no
// live key holds (keys alive keep sharing their record, so equality holds),
// and a dropped text is parsed again when next met. Synonyms stay. A text longer than
// max_path_length bytes, or with more than max_path_components separators
// ("." or "["), is a malformed key whose first component is its beginning.
//
// Keys are created from one thread at a time (the cache is not locked);
// existing keys may be copied and dropped on any thread.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERKEY_H
#define VORPARAMETER_PARAMETER_VORPARAMETERKEY_H

#include "vorparameter/parameter/vorParameterTypes.h"
#include "vorparameter/platform/coContainers.h"
#include "vorparameter/platform/utCompactString.h"
#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

class vorParameterKeyImpl;

/// The counted handle to a key record. The count lives in the record and is
/// atomic, so existing keys may be copied and dropped on any thread. A handle
/// made with coPrfExtern refers to a record without counting it: the record
/// belongs to someone else and is never deleted through that handle or its
/// copies (the shared record of the empty key is one).
class VOR_API vorParameterKeyImplPtr {
public:
    vorParameterKeyImplPtr() = default;
    /// Takes a share of `impl`, which was made with new or is held already.
    explicit vorParameterKeyImplPtr(const vorParameterKeyImpl* impl);
    /// Refers to `impl` without counting or ever deleting it.
    vorParameterKeyImplPtr(coPrfExtern, const vorParameterKeyImpl* impl)
        : m_bits(reinterpret_cast<std::uintptr_t>(impl) | (impl ? external_bit : 0)) {}
    vorParameterKeyImplPtr(const vorParameterKeyImplPtr& other)
        : m_bits(other.m_bits) {
        add_share();
    }
    vorParameterKeyImplPtr(vorParameterKeyImplPtr&& other) noexcept
        : m_bits(std::exchange(other.m_bits, 0)) {}
    vorParameterKeyImplPtr& operator=(vorParameterKeyImplPtr other) noexcept {
        std::swap(m_bits, other.m_bits);
        return *this;
    }
    ~vorParameterKeyImplPtr();

    const vorParameterKeyImpl* get() const {
        return reinterpret_cast<const vorParameterKeyImpl*>(m_bits & ~external_bit);
    }
    const vorParameterKeyImpl* operator->() const { return get(); }
    const vorParameterKeyImpl& operator*() const { return *get(); }
    explicit operator bool() const { return m_bits != 0; }
    /// True for a handle made with coPrfExtern (or copied from one).
    bool is_external() const { return (m_bits & external_bit) != 0; }
    /// How many counting handles share the record.
    int use_count() const;

    friend bool operator==(const vorParameterKeyImplPtr& a, const vorParameterKeyImplPtr& b) {
        return a.get() == b.get();
    }
    friend bool operator!=(const vorParameterKeyImplPtr& a, const vorParameterKeyImplPtr& b) {
        return a.get() != b.get();
    }

private:
    void add_share() const;

    // One word: the record's address, with the lowest bit (always clear in a
    // record's address) set for an external handle.
    static constexpr std::uintptr_t external_bit = 1;
    std::uintptr_t m_bits = 0;
};

/// The parsed form of one path text. Immutable but for lazily filled caches.
class VOR_API vorParameterKeyImpl {
public:
    static constexpr std::size_t max_cached_length = 4096;
    static constexpr std::size_t max_path_length = 16384;
    static constexpr std::size_t max_path_components = 256;

    /// The record for `text`, from the cache when it is a name key.
    static vorParameterKeyImplPtr get_impl(const utString& text);
    /// The same for a text not yet held as a utString: a text the cache
    /// knows is found without copying it.
    static vorParameterKeyImplPtr get_impl(std::string_view text);
    /// The record get_impl(text) gives when the cache holds it already (or
    /// the text is empty), without taking a share of it; null otherwise.
    /// Valid until the key cache or the synonyms next change: for a lookup
    /// that walks down the path and makes no key on the way.
    static const vorParameterKeyImpl* find_cached(std::string_view text);
    /// The record of an index key with no remainder, built without parsing.
    static vorParameterKeyImplPtr get_index_impl(long long index);
    /// Makes each synonym text (table key) stand for its replacement (value).
    static void initialize_synonyms(const utStringutStringcoTable& table);

    vorParameterType type() const { return m_type; }
    const utString& first() const { return m_first; }
    const utString& remainder() const { return m_remainder; }
    /// The record of the remainder, as get_impl(remainder()) gives it. A
    /// cached record is remembered (without keeping it alive), so that walking
    /// a path looks each remainder up in the cache once.
    vorParameterKeyImplPtr remainder_impl() const;
    /// The record remainder_impl() remembers, without taking a share of it,
    /// or null when remainder_impl() must be asked. Valid until the key cache
    /// or the synonyms next change: for a walk down a path that changes
    /// neither.
    const vorParameterKeyImpl* remembered_remainder() const;
    const utString& str() const;
    const utString& last() const;
    /// The first component in lower case (cached), for case-insensitive lookup.
    const utString& first_lower() const;
    /// utTextHash of first(), computed with the parse: tables of names look a
    /// parsed path up without hashing it again.
    std::size_t first_hash() const { return m_first_hash; }
    /// first() in the form maps keep their members' names, which compares
    /// with them in two words.
    const utCompactString& first_name() const { return m_first_name; }
    /// The first component as an integer; false unless it is a whole integer
    /// within the range of int.
    bool index(int& out) const;

    explicit vorParameterKeyImpl(const utString& text);
    vorParameterKeyImpl() { set_first(utString()); }

private:
    void parse(const utString& text);
    void set_first(utString first);

    vorParameterType m_type = TYPE_ERROR;
    utString m_first;
    utString m_remainder;
    std::size_t m_first_hash = 0;
    utCompactString m_first_name;
    mutable std::unique_ptr<utString> m_str;
    mutable std::unique_ptr<utString> m_last;
    mutable std::unique_ptr<utString> m_first_lower;
    /// remainder_impl's answer, valid while the key cache has dropped or
    /// replaced no record since m_rest_generation (new synonyms may change
    /// what a text stands for).
    mutable const vorParameterKeyImpl* m_rest_record = nullptr;
    mutable std::uint64_t m_rest_generation = 0;

    friend class vorParameterKeyImplPtr;
    mutable std::atomic<int> m_shares{0};
};

inline vorParameterKeyImplPtr::vorParameterKeyImplPtr(const vorParameterKeyImpl* impl)
    : m_bits(reinterpret_cast<std::uintptr_t>(impl)) {
    add_share();
}

inline void vorParameterKeyImplPtr::add_share() const {
    // A new share is made from one that is held, so nothing can order
    // against it: relaxed suffices, as for std::shared_ptr.
    if (m_bits != 0 && !is_external())
        get()->m_shares.fetch_add(1, std::memory_order_relaxed);
}

inline vorParameterKeyImplPtr::~vorParameterKeyImplPtr() {
    // The last release must see every write made through the other shares
    // before it deletes the record.
    if (m_bits != 0 && !is_external() &&
        get()->m_shares.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete get();
}

inline int vorParameterKeyImplPtr::use_count() const {
    return m_bits != 0 ? get()->m_shares.load(std::memory_order_relaxed) : 0;
}

class VOR_API vorParameterKey {
public:
    /// The empty key (type TYPE_ERROR).
    vorParameterKey();
    vorParameterKey(const utString& text)
        : m_impl(vorParameterKeyImpl::get_impl(text)) {}
    vorParameterKey(const char* text)
        : m_impl(vorParameterKeyImpl::get_impl(std::string_view(text ? text : ""))) {}
    /// The index key `index`, followed by "." and `rest` when rest is not empty.
    vorParameterKey(int index, const utString& rest);
    explicit vorParameterKey(vorParameterKeyImplPtr impl)
        : m_impl(std::move(impl)) {}

    vorParameterType type() const { return m_impl->type(); }
    const utString& first() const { return m_impl->first(); }
    vorParameterKey first_key() const;
    vorParameterKey remainder() const;
    const utString& remainder_str() const { return m_impl->remainder(); }
    const utString& last() const { return m_impl->last(); }
    vorParameterKey parent() const;
    const utString& str() const { return m_impl->str(); }
    bool empty() const { return m_impl->first().empty(); }
    const vorParameterKeyImpl& impl() const { return *m_impl; }
    /// See vorParameterKeyImpl::index.
    bool index(int& out) const { return m_impl->index(out); }

    vorParameterKey operator+(const vorParameterKey& other) const;
    bool operator==(const vorParameterKey& other) const { return m_impl == other.m_impl; }
    bool operator!=(const vorParameterKey& other) const { return m_impl != other.m_impl; }

private:
    vorParameterKeyImplPtr m_impl;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERKEY_H

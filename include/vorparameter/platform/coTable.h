//===- coTable.h - Hash tables that keep insertion order --------*- C++ -*-===//
//
// coTable maps keys to values and iterates its entries in the order they were
// first inserted, so that printing and saving a map is deterministic. coSet is
// the same structure without values.
//
// Both are built on coOrderedHash:
//   - the entries live in a vector, in insertion order; erasing one leaves a
//     hole there instead of moving the later entries up;
//   - an open-addressing index (linear probing, at most half full) maps each
//     key's hash to its entry; erasing shifts the probe run back, so the index
//     never holds markers of erased keys;
//   - when the holes outnumber the live entries, the entries are packed and
//     the index renumbered in one pass.
// Lookup, insertion and erasure are O(1) on average (amortised for insertion
// and erasure), and iteration skips at most as many holes as it visits
// entries. Erasing invalidates no iterator or reference except those to the
// erased entry, unless it packs the entries; inserting may move them all.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_COTABLE_H
#define VORPARAMETER_PLATFORM_COTABLE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

/// An insertion-ordered hash table of `Item`s, each identified by the key
/// that `KeyOf` reads from it. The building block of coTable and coSet.
template <class Item, class Key, class KeyOf, class Hash = std::hash<Key>>
class coOrderedHash {
    using Slots = std::vector<std::optional<Item>>;

    /// Walks the slots in order, stepping over holes.
    template <class SlotIt, class Ref>
    class Walker {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using reference = Ref;
        using pointer = std::remove_reference_t<Ref>*;

        Walker() = default;
        Walker(SlotIt at, SlotIt end)
            : m_at(at)
            , m_end(end) {
            skip_holes();
        }
        /// A const walker from a mutable one.
        template <class OtherIt, class OtherRef>
        Walker(const Walker<OtherIt, OtherRef>& other)
            : m_at(other.m_at)
            , m_end(other.m_end) {}

        reference operator*() const { return **m_at; }
        pointer operator->() const { return &**m_at; }
        Walker& operator++() {
            ++m_at;
            skip_holes();
            return *this;
        }
        Walker operator++(int) {
            Walker before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const Walker& a, const Walker& b) { return a.m_at == b.m_at; }
        friend bool operator!=(const Walker& a, const Walker& b) { return a.m_at != b.m_at; }

    private:
        template <class, class>
        friend class Walker;

        void skip_holes() {
            while (m_at != m_end && !m_at->has_value())
                ++m_at;
        }

        SlotIt m_at{};
        SlotIt m_end{};
    };

public:
    using iterator = Walker<typename Slots::iterator, Item&>;
    using const_iterator = Walker<typename Slots::const_iterator, const Item&>;

    std::size_t size() const { return m_live; }
    bool empty() const { return m_live == 0; }
    iterator begin() { return iterator(m_slots.begin(), m_slots.end()); }
    iterator end() { return iterator(m_slots.end(), m_slots.end()); }
    const_iterator begin() const { return const_iterator(m_slots.begin(), m_slots.end()); }
    const_iterator end() const { return const_iterator(m_slots.end(), m_slots.end()); }

    /// The item of `key`, or null.
    // A lookup takes any text or value that Hash hashes and that compares
    // with a Key, such as a utString for a table of compact names.
    template <class Probe>
    const Item* find(const Probe& key) const {
        return find(key, Hash()(key));
    }
    /// The same for a caller that already has the key's Hash() value.
    template <class Probe>
    const Item* find(const Probe& key, std::size_t key_hash) const {
        const std::size_t bucket = find_bucket(key, key_hash);
        return bucket == npos ? nullptr : &*m_slots[m_buckets[bucket].slot];
    }
    template <class Probe>
    Item* find(const Probe& key) {
        const std::size_t bucket = find_bucket(key, Hash()(key));
        return bucket == npos ? nullptr : &*m_slots[m_buckets[bucket].slot];
    }

    /// Appends `item`, whose key must not be in the table yet.
    Item& insert_new(Item item) {
        grow_index_for(m_live + 1);
        place({static_cast<std::uint32_t>(m_slots.size()), mixed(Hash()(KeyOf()(item)))});
        m_slots.emplace_back(std::move(item));
        ++m_live;
        return *m_slots.back();
    }

    /// Removes the item of `key`; false when there is none.
    template <class Probe>
    bool erase(const Probe& key) {
        const std::size_t bucket = find_bucket(key, Hash()(key));
        if (bucket == npos)
            return false;
        m_slots[m_buckets[bucket].slot].reset();
        --m_live;
        unplace(bucket);
        if (m_slots.size() - m_live > m_live)
            pack();
        return true;
    }

    void clear() {
        m_slots.clear();
        m_buckets.clear();
        m_live = 0;
    }

    /// Makes room for `n` items, so that inserting them rebuilds no index.
    void reserve(std::size_t n) {
        m_slots.reserve(n);
        grow_index_for(n);
    }

private:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    static constexpr std::size_t min_buckets = 8;

    /// Doubles the index until `n` keys fill at most half of it.
    void grow_index_for(std::size_t n) {
        std::size_t wanted = m_buckets.empty() ? min_buckets : m_buckets.size();
        while (wanted < 2 * n)
            wanted *= 2;
        if (wanted != m_buckets.size())
            rebuild_index(wanted);
    }

    /// A slot number and the low half of its key's mixed hash: probes
    /// compare hashes before they touch an entry, and growing needs no key
    /// rehashed. Eight bytes, since a table keeps two to four per entry; so a
    /// table addresses fewer than 2^32 - 1 slots (memory runs out long
    /// before), and no index is ever larger than 2^32 buckets.
    struct Bucket {
        std::uint32_t slot = empty_slot;
        std::uint32_t hash = 0;
    };
    static constexpr std::uint32_t empty_slot = UINT32_MAX;

    /// A key's hash, mixed so that keys with regular low bits (pointers,
    /// small integers) still spread over the buckets.
    static std::uint32_t mixed(std::size_t key_hash) {
        std::uint64_t h = key_hash;
        h ^= h >> 33;
        h *= 0xff51afd7ed558ccdULL;
        h ^= h >> 33;
        return static_cast<std::uint32_t>(h);
    }

    std::size_t mask() const { return m_buckets.size() - 1; }

    template <class Probe>
    std::size_t find_bucket(const Probe& key, std::size_t key_hash) const {
        if (m_live == 0)
            return npos;
        const std::uint32_t hash = mixed(key_hash);
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Bucket& bucket = m_buckets[i];
            if (bucket.slot == empty_slot)
                return npos;
            if (bucket.hash == hash && KeyOf()(*m_slots[bucket.slot]) == key)
                return i;
        }
    }

    /// Puts `bucket` into the first free place of its probe run.
    void place(Bucket bucket) {
        std::size_t i = bucket.hash & mask();
        while (m_buckets[i].slot != empty_slot)
            i = (i + 1) & mask();
        m_buckets[i] = bucket;
    }

    /// Empties the bucket at `hole` and moves later members of the probe run
    /// back, so that every key stays reachable from its home bucket.
    void unplace(std::size_t hole) {
        for (std::size_t next = (hole + 1) & mask(); m_buckets[next].slot != empty_slot;
             next = (next + 1) & mask()) {
            const std::size_t home = m_buckets[next].hash & mask();
            // The entry may fill the hole unless its home lies after the hole,
            // cyclically, up to its own place.
            if (((next - home) & mask()) >= ((next - hole) & mask())) {
                m_buckets[hole] = m_buckets[next];
                hole = next;
            }
        }
        m_buckets[hole] = Bucket();
    }

    void rebuild_index(std::size_t bucket_count) {
        std::vector<Bucket> old(bucket_count);
        old.swap(m_buckets);
        for (const Bucket& bucket : old)
            if (bucket.slot != empty_slot)
                place(bucket);
    }

    /// Closes the holes, keeping the order, and renumbers the index.
    void pack() {
        std::vector<std::uint32_t> moved_to(m_slots.size(), empty_slot);
        std::size_t next = 0;
        for (std::size_t i = 0; i < m_slots.size(); ++i) {
            if (!m_slots[i])
                continue;
            moved_to[i] = static_cast<std::uint32_t>(next);
            if (i != next)
                m_slots[next] = std::move(m_slots[i]);
            ++next;
        }
        m_slots.resize(next);
        for (Bucket& bucket : m_buckets)
            if (bucket.slot != empty_slot)
                bucket.slot = moved_to[bucket.slot];
    }

    Slots m_slots;
    std::vector<Bucket> m_buckets;
    std::size_t m_live = 0;
};

/// Reads the key of a table entry.
struct coFirstOf {
    template <class Pair>
    const auto& operator()(const Pair& entry) const {
        return entry.first;
    }
};

/// Reads the key of a set element: the element itself.
struct coItself {
    template <class Key>
    const Key& operator()(const Key& key) const {
        return key;
    }
};

template <class Key, class Value, class Hash = std::hash<Key>>
class coTable {
    using Storage = coOrderedHash<std::pair<Key, Value>, Key, coFirstOf, Hash>;

public:
    using value_type = std::pair<Key, Value>;
    using const_iterator = typename Storage::const_iterator;
    using iterator = typename Storage::iterator;

    std::size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }
    iterator begin() { return m_entries.begin(); }
    iterator end() { return m_entries.end(); }

    /// The value stored under `key`, or null.
    template <class Probe>
    const Value* find(const Probe& key) const {
        const value_type* entry = m_entries.find(key);
        return entry ? &entry->second : nullptr;
    }
    /// find() for a caller that already has std::hash<Key>()(key), such as a
    /// parsed path that hashed its name once.
    template <class Probe>
    const Value* find(const Probe& key, std::size_t key_hash) const {
        const value_type* entry = m_entries.find(key, key_hash);
        return entry ? &entry->second : nullptr;
    }
    template <class Probe>
    Value* find(const Probe& key) {
        value_type* entry = m_entries.find(key);
        return entry ? &entry->second : nullptr;
    }
    template <class Probe>
    bool contains(const Probe& key) const {
        return m_entries.find(key) != nullptr;
    }

    /// Stores `value` under `key`; an existing entry keeps its place and takes
    /// the new value.
    Value& set(const Key& key, Value value) {
        if (Value* existing = find(key)) {
            *existing = std::move(value);
            return *existing;
        }
        return m_entries.insert_new(value_type(key, std::move(value))).second;
    }

    /// Removes the entry of `key`; false when there is none.
    template <class Probe>
    bool erase(const Probe& key) {
        return m_entries.erase(key);
    }
    void clear() { m_entries.clear(); }
    void reserve(std::size_t n) { m_entries.reserve(n); }

private:
    Storage m_entries;
};

template <class Key>
class coSet {
    using Storage = coOrderedHash<Key, Key, coItself>;

public:
    using const_iterator = typename Storage::const_iterator;

    std::size_t size() const { return m_keys.size(); }
    bool empty() const { return m_keys.empty(); }
    const_iterator begin() const { return m_keys.begin(); }
    const_iterator end() const { return m_keys.end(); }
    bool contains(const Key& key) const { return m_keys.find(key) != nullptr; }

    /// Adds `key`; false when it was there already.
    bool insert(const Key& key) {
        if (contains(key))
            return false;
        m_keys.insert_new(key);
        return true;
    }

    bool erase(const Key& key) { return m_keys.erase(key); }
    void clear() { m_keys.clear(); }

private:
    Storage m_keys;
};

#endif // VORPARAMETER_PLATFORM_COTABLE_H

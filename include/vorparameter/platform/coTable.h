//===- coTable.h - Hash tables that keep insertion order --------*- C++ -*-===//
//
// coTable maps keys to values with O(1) average lookup and iterates its
// entries in the order they were first inserted, so that printing and saving
// a map is deterministic. Entries live in a vector; a hash index maps each key
// to its slot. Erasing is O(n) (the slots after it move up), which suits the
// parameter tree, where members are added often and removed rarely.
//
// coSet is the same structure without values.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_COTABLE_H
#define VORPARAMETER_PLATFORM_COTABLE_H

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

/// Erases the slot of `key` from an insertion-ordered sequence and its hash
/// index, moving the later slots up; false when the key is not there.
template <class Entries, class Index, class Key, class KeyOf>
bool coErase(Entries& entries, Index& index, const Key& key, KeyOf key_of) {
    auto it = index.find(key);
    if (it == index.end())
        return false;
    const std::size_t slot = it->second;
    index.erase(it);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(slot));
    for (std::size_t i = slot; i < entries.size(); ++i)
        index[key_of(entries[i])] = i;
    return true;
}

template <class Key, class Value>
class coTable {
public:
    using value_type = std::pair<Key, Value>;
    using const_iterator = typename std::vector<value_type>::const_iterator;
    using iterator = typename std::vector<value_type>::iterator;

    std::size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }
    iterator begin() { return m_entries.begin(); }
    iterator end() { return m_entries.end(); }
    const value_type& at_index(std::size_t i) const { return m_entries[i]; }

    /// The value stored under `key`, or null.
    const Value* find(const Key& key) const {
        auto it = m_index.find(key);
        return it == m_index.end() ? nullptr : &m_entries[it->second].second;
    }
    Value* find(const Key& key) {
        auto it = m_index.find(key);
        return it == m_index.end() ? nullptr : &m_entries[it->second].second;
    }
    bool contains(const Key& key) const { return m_index.count(key) != 0; }

    /// Stores `value` under `key`; an existing entry keeps its place and takes
    /// the new value.
    Value& set(const Key& key, Value value) {
        if (Value* existing = find(key)) {
            *existing = std::move(value);
            return *existing;
        }
        m_index.emplace(key, m_entries.size());
        m_entries.emplace_back(key, std::move(value));
        return m_entries.back().second;
    }

    /// Removes the entry of `key`; false when there is none.
    bool erase(const Key& key) {
        return coErase(m_entries, m_index, key,
                       [](const value_type& e) -> const Key& { return e.first; });
    }

    void clear() {
        m_entries.clear();
        m_index.clear();
    }

    void reserve(std::size_t n) {
        m_entries.reserve(n);
        m_index.reserve(n);
    }

private:
    std::vector<value_type> m_entries;
    std::unordered_map<Key, std::size_t> m_index;
};

template <class Key>
class coSet {
public:
    using const_iterator = typename std::vector<Key>::const_iterator;

    std::size_t size() const { return m_keys.size(); }
    bool empty() const { return m_keys.empty(); }
    const_iterator begin() const { return m_keys.begin(); }
    const_iterator end() const { return m_keys.end(); }
    bool contains(const Key& key) const { return m_index.count(key) != 0; }

    /// Adds `key`; false when it was there already.
    bool insert(const Key& key) {
        if (contains(key))
            return false;
        m_index.emplace(key, m_keys.size());
        m_keys.push_back(key);
        return true;
    }

    bool erase(const Key& key) {
        return coErase(m_keys, m_index, key, [](const Key& k) -> const Key& { return k; });
    }

    void clear() {
        m_keys.clear();
        m_index.clear();
    }

private:
    std::vector<Key> m_keys;
    std::unordered_map<Key, std::size_t> m_index;
};

#endif // VORPARAMETER_PLATFORM_COTABLE_H

//===- utCompactString.h - A name in sixteen bytes --------------*- C++ -*-===//
//
// utCompactString holds a text that is stored far more often than it is
// changed: the name of every member of a map and of every named node. It is
// half the size of a std::string: a text of up to fifteen bytes lives in
// place, zero-padded, and a longer one in a block on the heap that starts
// with its length. Two short texts are compared as two words.
//
// It is an immutable value: assign a new text to change it. It has no
// "invalid" state; utString does.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_UTCOMPACTSTRING_H
#define VORPARAMETER_PLATFORM_UTCOMPACTSTRING_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <utility>

class VOR_API utCompactString {
public:
    /// The longest text kept in place.
    static constexpr std::size_t inline_capacity = 15;

    utCompactString() { clear_bytes(); }
    explicit utCompactString(std::string_view text) { assign(text); }
    utCompactString(const utCompactString& other) { assign(other.view()); }
    utCompactString(utCompactString&& other) noexcept {
        std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
        other.clear_bytes();
    }
    utCompactString& operator=(const utCompactString& other) {
        if (this != &other)
            *this = utCompactString(other);
        return *this;
    }
    utCompactString& operator=(utCompactString&& other) noexcept {
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~utCompactString() { release(); }

    std::string_view view() const {
        if (is_inline())
            return std::string_view(m_bytes,
                                    inline_capacity - static_cast<unsigned char>(m_bytes[tag]));
        const char* block = heap_block();
        std::size_t size;
        std::memcpy(&size, block, sizeof size);
        return std::string_view(block + sizeof size, size);
    }
    operator std::string_view() const { return view(); }
    /// The text as a utString.
    utString str() const { return utString(view()); }
    std::size_t size() const { return view().size(); }
    bool empty() const { return m_bytes[tag] == static_cast<char>(inline_capacity); }

    friend bool operator==(const utCompactString& a, const utCompactString& b) {
        if (a.m_bytes[tag] != b.m_bytes[tag])
            return false; // different lengths, or one short and one long
        if (a.is_inline())
            return std::memcmp(a.m_bytes, b.m_bytes, sizeof a.m_bytes) == 0;
        return a.view() == b.view();
    }
    friend bool operator!=(const utCompactString& a, const utCompactString& b) { return !(a == b); }
    friend bool operator==(const utCompactString& a, std::string_view b) {
        return utString::same_text(a.view(), b);
    }
    friend bool operator!=(const utCompactString& a, std::string_view b) { return !(a == b); }

private:
    // The last byte tells the form: for a text in place, fifteen minus its
    // length (so a text of fifteen bytes ends in a zero byte); for a text on
    // the heap, heap_tag. The heap form keeps the block's address in the
    // first bytes.
    static constexpr std::size_t tag = sizeof(std::uint64_t) * 2 - 1;
    static constexpr char heap_tag = static_cast<char>(0xff);

    bool is_inline() const { return m_bytes[tag] != heap_tag; }
    const char* heap_block() const {
        const char* block;
        std::memcpy(&block, m_bytes, sizeof block);
        return block;
    }
    void clear_bytes() {
        std::memset(m_bytes, 0, sizeof m_bytes);
        m_bytes[tag] = static_cast<char>(inline_capacity);
    }
    void assign(std::string_view text);
    void release();

    alignas(std::uint64_t) char m_bytes[2 * sizeof(std::uint64_t)];
};

/// Hashes the text as std::hash<std::string_view> does, so a name hashed as a
/// utString finds its compact twin.
template <>
struct std::hash<utCompactString> {
    std::size_t operator()(const utCompactString& s) const noexcept {
        return std::hash<std::string_view>()(s.view());
    }
};

/// One hash for every form of a text (utString, utCompactString, string
/// views), so a table of compact names is searched with any of them. Names
/// and paths are short and every lookup hashes one, so it takes eight bytes
/// at a step, inline; tables mix the result further before they use it.
struct utTextHash {
    std::size_t operator()(std::string_view text) const noexcept {
        const char* bytes = text.data();
        std::size_t left = text.size();
        std::uint64_t hash = 0x9e3779b97f4a7c15ULL ^ left;
        for (; left >= 8; bytes += 8, left -= 8)
            hash = mix(hash ^ load(bytes, 8));
        if (left >= 4)
            hash = mix(hash ^ (load(bytes, 4) | load(bytes + left - 4, 4) << 32));
        else if (left > 0)
            hash = mix(hash ^ (load(bytes, 1) | load(bytes + left / 2, 1) << 8 |
                               load(bytes + left - 1, 1) << 16));
        return static_cast<std::size_t>(hash);
    }

private:
    /// `size` (1, 4 or 8) bytes from `bytes` as an unsigned number.
    static std::uint64_t load(const char* bytes, std::size_t size) {
        std::uint64_t word = 0;
        if (size == 8)
            std::memcpy(&word, bytes, 8);
        else if (size == 4) {
            std::uint32_t half = 0;
            std::memcpy(&half, bytes, 4);
            word = half;
        } else
            word = static_cast<unsigned char>(*bytes);
        return word;
    }
    static std::uint64_t mix(std::uint64_t hash) {
        hash *= 0xbf58476d1ce4e5b9ULL;
        return hash ^ (hash >> 32);
    }
};

#endif // VORPARAMETER_PLATFORM_UTCOMPACTSTRING_H

//===- vorUniqueId.h - 128-bit object identifiers ---------------*- C++ -*-===//
//
// Host objects (entities, toolpaths, roots) are known by a 128-bit unique id.
// vorUniqueId is the id value with a validity mark and a hexadecimal text of
// 32 lower-case digits that parses back; vorUniqueIdPtr shares one id between
// holders; vorRefToObjectId is what a parameter stores to refer to an object.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VORUNIQUEID_H
#define VORPARAMETER_PLATFORM_VORUNIQUEID_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <cstdint>
#include <functional>
#include <memory>

class VOR_API vorUniqueId {
public:
    /// An invalid id.
    vorUniqueId() = default;
    vorUniqueId(std::uint64_t high, std::uint64_t low)
        : m_high(high)
        , m_low(low)
        , m_valid(true) {}

    /// A fresh random id.
    static vorUniqueId generate();
    /// Reads 32 hexadecimal digits (either case); anything else gives an invalid id.
    static vorUniqueId from_hex(std::string_view text);

    bool is_valid() const { return m_valid; }
    std::uint64_t high() const { return m_high; }
    std::uint64_t low() const { return m_low; }
    /// 32 lower-case hexadecimal digits; the empty text for an invalid id.
    utString hex_string() const;

    friend bool operator==(const vorUniqueId& a, const vorUniqueId& b) {
        return a.m_valid == b.m_valid && a.m_high == b.m_high && a.m_low == b.m_low;
    }
    friend bool operator!=(const vorUniqueId& a, const vorUniqueId& b) { return !(a == b); }

private:
    std::uint64_t m_high = 0;
    std::uint64_t m_low = 0;
    bool m_valid = false;
};

using vorUniqueIdPtr = std::shared_ptr<const vorUniqueId>;

/// A parameter's link to a host object: an id that may be absent.
class VOR_API vorRefToObjectId {
public:
    vorRefToObjectId() = default;
    explicit vorRefToObjectId(const vorUniqueId& id);
    explicit vorRefToObjectId(vorUniqueIdPtr id)
        : m_id(std::move(id)) {}

    /// The shared empty (invalid) reference.
    static const vorRefToObjectId& empty();

    bool is_valid() const { return m_id && m_id->is_valid(); }
    /// The id; an invalid id when there is none.
    const vorUniqueId& get_uid() const;
    const vorUniqueIdPtr& get_uid_ptr() const { return m_id; }
    void set_uid(const vorUniqueId& id);
    void invalidate() { m_id.reset(); }

    friend bool operator==(const vorRefToObjectId& a, const vorRefToObjectId& b) {
        return a.get_uid() == b.get_uid();
    }
    friend bool operator!=(const vorRefToObjectId& a, const vorRefToObjectId& b) {
        return !(a == b);
    }

private:
    vorUniqueIdPtr m_id;
};

namespace std {
/// Ids key hash sets (the lock ids a load collects, for example).
template <>
struct hash<vorUniqueId> {
    std::size_t operator()(const vorUniqueId& id) const noexcept {
        return std::hash<std::uint64_t>()(id.high() ^ (id.low() * 0x9e3779b97f4a7c15ULL));
    }
};
template <>
struct hash<vorRefToObjectId> {
    std::size_t operator()(const vorRefToObjectId& ref) const noexcept {
        return std::hash<vorUniqueId>()(ref.get_uid());
    }
};
} // namespace std

#endif // VORPARAMETER_PLATFORM_VORUNIQUEID_H

//===- vorParameterKey.cpp - Paths into a parameter tree ------------------===//

#include "vorparameter/parameter/vorParameterKey.h"

#include "parameter/vorTreeGeneration.h"

#include "vorparameter/platform/vorCharTypes.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace {

/// Moves whenever a record leaves the key cache (dropped or replaced): until
/// then, every record the cache held is alive and stands for its text. A
/// plain variable, so that walking a path reads it without reaching the cache.
std::uint64_t key_cache_generation = 1;

/// The process-wide table from name-key text to its parsed record.
///
/// It is bounded: when it holds more than max_entries texts or max_bytes of
/// text, the entries that no key holds any more (the table's is the only
/// reference) are dropped. A key alive anywhere keeps its entry, so keys made
/// from the same text still share one record and compare equal; a dropped text
/// is simply parsed again when next met. Synonyms are kept for good. The next
/// sweep waits until the table has doubled past what survived, so sweeping
/// costs amortised O(1) per insertion.
class KeyCache {
public:
    static constexpr std::size_t max_entries = 1 << 16;
    static constexpr std::size_t max_bytes = 16 << 20;

    const vorParameterKeyImplPtr* find(std::string_view text) const {
        const Entry* found = m_entries.find(TextProbe{text});
        return found ? &found->impl : nullptr;
    }

    void insert(const utString& text, vorParameterKeyImplPtr impl, bool pinned = false) {
        if (Entry* existing = m_entries.find(text)) {
            *existing = Entry{std::move(impl), pinned || existing->pinned};
            ++key_cache_generation;
        } else {
            m_entries.set(text, Entry{std::move(impl), pinned});
            m_bytes += text.size();
        }
        if (m_entries.size() > m_entry_threshold || m_bytes > m_byte_threshold)
            sweep();
    }

private:
    struct Entry {
        vorParameterKeyImplPtr impl;
        bool pinned = false;
    };

    /// A text looked up as it stands, without copying it into a utString.
    struct TextProbe {
        std::string_view text;
        operator std::string_view() const { return text; }
        friend bool operator==(const utString& key, const TextProbe& probe) {
            return utString::same_text(key.view(), probe.text);
        }
    };

    void sweep() {
        std::vector<utString> unused;
        for (const auto& [text, entry] : m_entries)
            if (!entry.pinned && entry.impl.use_count() == 1)
                unused.push_back(text);
        for (const utString& text : unused) {
            m_bytes -= text.size();
            m_entries.erase(text);
        }
        if (!unused.empty())
            ++key_cache_generation;
        m_entry_threshold = std::max(max_entries, 2 * m_entries.size());
        m_byte_threshold = std::max(max_bytes, 2 * m_bytes);
    }

    // An insertion-ordered table probes without a division and compares
    // stored hashes before texts: a lookup costs little beside the hash.
    coTable<utString, Entry, utTextHash> m_entries;
    std::size_t m_bytes = 0;
    std::size_t m_entry_threshold = max_entries;
    std::size_t m_byte_threshold = max_bytes;
};

KeyCache& key_cache() {
    static KeyCache* cache = new KeyCache(); // lives until the process ends
    return *cache;
}

/// The one record of the empty key. It lives until the process ends, and
/// keys refer to it without counting.
const vorParameterKeyImpl* empty_record() {
    static const vorParameterKeyImpl* record = new vorParameterKeyImpl();
    return record;
}

vorParameterKeyImplPtr empty_impl() {
    return vorParameterKeyImplPtr(coPrfExtern(), empty_record());
}

/// `text` without its leading "$" characters, which are not part of a name.
std::string_view without_dollars(std::string_view text) {
    if (!text.empty() && text.front() == '$')
        text.remove_prefix(std::min(text.find_first_not_of('$'), text.size()));
    return text;
}

bool is_name_char(char32_t c) {
    return vorCharTypes::is_alnum(c) || c == '-' || c == '_';
}

utString utf8(const vorWideString& wide, std::size_t from, std::size_t to) {
    return utString(
        vorMultiByteToWideChar::convert_back(std::u32string_view(wide).substr(from, to - from)));
}

} // namespace

vorParameterKeyImpl::vorParameterKeyImpl(const utString& text) {
    parse(text);
}

void vorParameterKeyImpl::set_first(utString first) {
    m_first = std::move(first);
    m_first_hash = utTextHash()(m_first.view());
    m_first_name = utCompactString(m_first);
}

// A path is at most this long and has at most this many separators; longer
// texts are malformed keys. This bounds the work (and the recursion of nested
// lookups) that one key can cause.
static bool within_limits(const utString& text) {
    if (text.size() > vorParameterKeyImpl::max_path_length)
        return false;
    std::size_t separators = 0;
    for (char c : text.view())
        if (c == '.' || c == '[')
            ++separators;
    return separators <= vorParameterKeyImpl::max_path_components;
}

namespace {

/// The parts of a key text: its first component, its type and the rest.
struct KeyParts {
    utString first;
    utString remainder;
    vorParameterType type = TYPE_ERROR;
};

/// Splits `chars` (the key's characters, as bytes when all are ASCII or as
/// code points otherwise); `slice(from, to)` gives the UTF-8 text of a range.
template <class Chars, class Slice>
KeyParts split_key(const Chars& chars, const utString& text, Slice slice) {
    KeyParts parts;
    const std::size_t size = chars.size();
    auto at = [&](std::size_t i) { return static_cast<char32_t>(chars[i]); };
    std::size_t pos = 0;
    while (pos < size && vorCharTypes::is_space(at(pos)))
        ++pos;
    if (pos == size)
        return parts;

    if (at(pos) != '[') {
        std::size_t start = pos;
        while (pos < size && is_name_char(at(pos)))
            ++pos;
        if (pos == start)
            return parts;
        parts.first = slice(start, pos);
        parts.type =
            (vorCharTypes::is_digit(at(start)) || at(start) == '-') ? TYPE_ARRAY : TYPE_MAP;
    } else {
        std::size_t start = ++pos;
        while (pos < size && (vorCharTypes::is_digit(at(pos)) || at(pos) == ' '))
            ++pos;
        if (pos == size || at(pos) != ']') {
            parts.first = text;
            return parts;
        }
        parts.first = slice(start, pos);
        parts.type = TYPE_ARRAY;
        ++pos;
    }

    // The one fixed rename of the key syntax.
    if (parts.first == "current")
        parts.first = "toolpath";

    if (pos == size)
        return parts;
    if (at(pos) == '.')
        parts.remainder = slice(pos + 1, size);
    else if (at(pos) == '[')
        parts.remainder = slice(pos, size);
    else
        parts.type = TYPE_ERROR;
    return parts;
}

bool is_ascii(std::string_view text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

} // namespace

void vorParameterKeyImpl::parse(const utString& text) {
    if (!within_limits(text)) {
        set_first(text.substr(0, 64));
        return;
    }
    // Keys are nearly always ASCII: then bytes are characters, and the parts
    // are cut from the text without a round trip through code points.
    KeyParts parts;
    const std::string_view bytes = text.view();
    if (is_ascii(bytes)) {
        parts = split_key(bytes, text, [&](std::size_t from, std::size_t to) {
            return utString(bytes.substr(from, to - from));
        });
    } else {
        const vorWideString wide = vorMultiByteToWideChar::convert(bytes);
        parts = split_key(wide, text,
                          [&](std::size_t from, std::size_t to) { return utf8(wide, from, to); });
    }
    set_first(std::move(parts.first));
    m_remainder = std::move(parts.remainder);
    m_type = parts.type;
}

vorParameterKeyImplPtr vorParameterKeyImpl::get_impl(const utString& given) {
    return get_impl(given.view());
}

const vorParameterKeyImpl* vorParameterKeyImpl::find_cached(std::string_view text) {
    if (!text.empty() && text.front() == '$')
        text = without_dollars(text);
    if (text.empty())
        return empty_record();
    const vorParameterKeyImplPtr* found = key_cache().find(text);
    return found ? found->get() : nullptr;
}

vorParameterKeyImplPtr vorParameterKeyImpl::get_impl(std::string_view text) {
    text = without_dollars(text);
    if (text.empty())
        return empty_impl();

    KeyCache& cache = key_cache();
    if (const vorParameterKeyImplPtr* found = cache.find(text))
        return *found;

    const utString whole(text);
    vorParameterKeyImplPtr impl(new vorParameterKeyImpl(whole));
    if (impl->type() == TYPE_MAP && whole.size() <= max_cached_length)
        cache.insert(whole, impl);
    return impl;
}

vorParameterKeyImplPtr vorParameterKeyImpl::get_index_impl(long long index) {
    auto impl = std::make_unique<vorParameterKeyImpl>();
    impl->m_type = TYPE_ARRAY;
    impl->set_first(utString(std::to_string(index)));
    return vorParameterKeyImplPtr(impl.release());
}

void vorParameterKeyImpl::initialize_synonyms(const utStringutStringcoTable& table) {
    for (const auto& [synonym, replacement] : table)
        key_cache().insert(synonym, get_impl(replacement), true);
    // A name may now be looked up as another.
    vorTreeGeneration::advance();
}

vorParameterKeyImplPtr vorParameterKeyImpl::remainder_impl() const {
    if (const vorParameterKeyImpl* remembered = remembered_remainder())
        return vorParameterKeyImplPtr(remembered);
    const std::uint64_t generation = key_cache_generation;
    vorParameterKeyImplPtr rest = get_impl(m_remainder);
    // Only a record that the cache keeps is remembered: a text that is parsed
    // anew each time must keep giving a record of its own. When the cache
    // dropped records to make room for the remainder, this record may have
    // been one of them (a walk down a path holds no share of the records it
    // passes), so it is not touched again.
    if (generation != key_cache_generation)
        return rest;
    if (rest->type() == TYPE_MAP && m_remainder.size() <= max_cached_length) {
        m_rest_record = rest.get();
        m_rest_generation = key_cache_generation;
    }
    return rest;
}

const vorParameterKeyImpl* vorParameterKeyImpl::remembered_remainder() const {
    if (!m_rest_record || m_rest_generation != key_cache_generation)
        return nullptr;
    return m_rest_record;
}

const utString& vorParameterKeyImpl::str() const {
    if (!m_str) {
        utString text;
        if (m_type == TYPE_MAP)
            text = m_first;
        else if (m_type == TYPE_ARRAY)
            text = "[" + m_first + "]";
        if (!m_remainder.empty()) {
            if (m_remainder[0] != '[')
                text += '.';
            text += m_remainder;
        }
        m_str = std::make_unique<utString>(std::move(text));
    }
    return *m_str;
}

const utString& vorParameterKeyImpl::last() const {
    if (!m_last) {
        if (m_remainder.empty()) {
            m_last = std::make_unique<utString>(str());
        } else {
            vorParameterKey key(get_impl(m_remainder));
            while (!key.remainder_str().empty())
                key = key.remainder();
            m_last = std::make_unique<utString>(key.str());
        }
    }
    return *m_last;
}

const utString& vorParameterKeyImpl::first_lower() const {
    if (!m_first_lower)
        m_first_lower = std::make_unique<utString>(vordowncase(m_first.view()));
    return *m_first_lower;
}

bool vorParameterKeyImpl::index(int& out) const {
    long long value = 0;
    if (m_type != TYPE_ARRAY || !m_first.parse_int(value) || value < INT_MIN || value > INT_MAX)
        return false;
    out = static_cast<int>(value);
    return true;
}

vorParameterKey::vorParameterKey()
    : m_impl(empty_impl()) {}

vorParameterKey::vorParameterKey(int index, const utString& rest)
    : m_impl(rest.empty()
                 ? vorParameterKeyImpl::get_index_impl(index)
                 : vorParameterKeyImpl::get_impl(utString(std::to_string(index)) + "." + rest)) {}

vorParameterKey vorParameterKey::first_key() const {
    if (type() == TYPE_ARRAY)
        return vorParameterKey("[" + first() + "]");
    return vorParameterKey(first());
}

vorParameterKey vorParameterKey::remainder() const {
    return vorParameterKey(m_impl->remainder_impl());
}

vorParameterKey vorParameterKey::parent() const {
    vorParameterKey result;
    vorParameterKey current = *this;
    while (!current.remainder_str().empty()) {
        result = result + current.first_key();
        current = current.remainder();
    }
    return result;
}

vorParameterKey vorParameterKey::operator+(const vorParameterKey& other) const {
    if (str().empty())
        return other;
    utString text = str();
    if (other.type() != TYPE_ARRAY)
        text += '.';
    text += other.str();
    return vorParameterKey(text);
}

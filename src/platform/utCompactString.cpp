//===- utCompactString.cpp - A name in sixteen bytes ----------------------===//

#include "vorparameter/platform/utCompactString.h"

void utCompactString::assign(std::string_view text) {
    clear_bytes();
    const std::size_t size = text.size();
    if (size <= inline_capacity) {
        std::memcpy(m_bytes, text.data(), size);
        m_bytes[tag] = static_cast<char>(inline_capacity - size);
        return;
    }
    // The block is this string's own: it is freed by release() alone.
    char* block = new char[sizeof size + size];
    std::memcpy(block, &size, sizeof size);
    std::memcpy(block + sizeof size, text.data(), size);
    std::memcpy(m_bytes, &block, sizeof block);
    m_bytes[tag] = heap_tag;
}

void utCompactString::release() {
    if (!is_inline())
        delete[] heap_block();
}

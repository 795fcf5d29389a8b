//===- CArchive.cpp - A binary archive of strings -------------------------===//

#include "vorparameter/platform/CArchive.h"

#include <algorithm>
#include <istream>
#include <ostream>

CArchive::CArchive(std::ostream& out)
    : m_out(&out) {}

CArchive::CArchive(std::istream& in)
    : m_in(&in) {}

CArchive::CArchive(std::iostream& stream, Mode mode) {
    if (mode == store)
        m_out = &stream;
    else
        m_in = &stream;
}

void CArchive::write_string(const utString& text) {
    if (m_failed || !m_out || !*m_out) {
        m_failed = true;
        return;
    }
    std::uint64_t length = text.size();
    char prefix[8];
    for (char& byte : prefix) {
        byte = static_cast<char>(length & 0xff);
        length >>= 8;
    }
    m_out->write(prefix, sizeof prefix);
    m_out->write(text.c_str(), static_cast<std::streamsize>(text.size()));
    if (!*m_out)
        m_failed = true;
}

utString CArchive::read_string() {
    if (m_failed || !m_in || !*m_in) {
        m_failed = true;
        return utString();
    }
    unsigned char prefix[8];
    m_in->read(reinterpret_cast<char*>(prefix), sizeof prefix);
    if (m_in->gcount() != static_cast<std::streamsize>(sizeof prefix)) {
        m_failed = true;
        return utString();
    }
    std::uint64_t length = 0;
    for (int i = 7; i >= 0; --i)
        length = (length << 8) | prefix[i];
    if (length > max_string_length) {
        m_failed = true;
        return utString();
    }
    // Read in bounded pieces: a corrupt length below the limit must not
    // allocate more than the stream actually holds.
    std::string text;
    constexpr std::size_t piece = std::size_t(1) << 20;
    while (text.size() < length) {
        const std::size_t want = std::min<std::uint64_t>(piece, length - text.size());
        const std::size_t old_size = text.size();
        text.resize(old_size + want);
        m_in->read(&text[old_size], static_cast<std::streamsize>(want));
        if (m_in->gcount() != static_cast<std::streamsize>(want)) {
            m_failed = true;
            return utString();
        }
    }
    return utString(std::move(text));
}

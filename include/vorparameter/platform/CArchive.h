//===- CArchive.h - A binary archive of strings -----------------*- C++ -*-===//
//
// The archive a host saves its documents into. It carries strings over a byte
// stream: each string is an 8-byte little-endian length followed by that many
// bytes. An archive is either storing (writing) or loading (reading), never
// both.
//
// Failures are a state, not exceptions: a stream that fails, a string cut
// short, or a length beyond max_string_length puts the archive into its
// failed state, after which every operation does nothing, reads give empty
// strings, and failed() answers true.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_CARCHIVE_H
#define VORPARAMETER_PLATFORM_CARCHIVE_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <cstdint>
#include <istream>
#include <ostream>

class VOR_API CArchive {
public:
    /// The longest string a load accepts (1 GiB): a corrupt length must not
    /// make the reader ask for unbounded memory.
    static constexpr std::uint64_t max_string_length = std::uint64_t(1) << 30;

    enum Mode { store, load };

    /// An archive that writes to `out`.
    explicit CArchive(std::ostream& out);
    /// An archive that reads from `in`.
    explicit CArchive(std::istream& in);
    /// An archive over a stream that can do both, writing (`store`) or
    /// reading (`load`).
    CArchive(std::iostream& stream, Mode mode);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    bool is_storing() const { return m_out != nullptr; }
    bool is_loading() const { return m_in != nullptr; }
    bool failed() const { return m_failed; }

    /// Appends `text`; fails on a loading archive or a failing stream.
    void write_string(const utString& text);
    /// The next string; empty, and the archive failed, when none can be read
    /// whole.
    utString read_string();

    CArchive& operator<<(const utString& text) {
        write_string(text);
        return *this;
    }
    CArchive& operator>>(utString& text) {
        text = read_string();
        return *this;
    }

private:
    std::ostream* m_out = nullptr;
    std::istream* m_in = nullptr;
    bool m_failed = false;
};

#endif // VORPARAMETER_PLATFORM_CARCHIVE_H

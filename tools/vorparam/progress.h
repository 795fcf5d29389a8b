// Progress of reading a large file, for a user who watches a terminal.
//
// A CountingReader sits between a file and the code that reads it and tells
// a ProgressLine how far the reading has got; the line shows the percentage
// on standard error, rewritten in place, and erases itself at the end.
// Output that is not a terminal (a pipe, a log file, a test) never sees it.
#ifndef VORPARAM_PROGRESS_H
#define VORPARAM_PROGRESS_H

#include <array>
#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <streambuf>
#include <string>

namespace vorparam {

/// Files smaller than this (4 MiB) load in well under a second: no line.
constexpr std::uintmax_t progress_threshold_bytes = 4u << 20;

/// The shortest time between two rewrites of the line: at most five a second.
constexpr std::chrono::milliseconds progress_interval{200};

/// True when reading a file of `size` bytes deserves a progress line on an
/// output that `is_terminal` or not.
inline bool progress_wanted(std::uintmax_t size, bool is_terminal) {
    return is_terminal && size >= progress_threshold_bytes;
}

/// "NAME: 42%" on `out`, begun with "\r" so that each update overwrites the
/// last. A line that is not `shown` prints nothing at all.
class ProgressLine {
public:
    ProgressLine(std::ostream& out, std::string name, std::uintmax_t total, bool shown);
    /// Erases the line (finish()).
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// `done` of the total bytes have been read. Rewrites the line when its
    /// percentage changed and progress_interval has passed since the last
    /// rewrite (the first update always writes).
    void update(std::uintmax_t done);
    /// Overwrites the line with spaces and returns to its start, so that
    /// what is printed next begins on a clean line. Once is enough.
    void finish();

private:
    std::ostream& m_out;
    std::string m_name;
    std::uintmax_t m_total;
    bool m_shown;
    bool m_written = false;
    int m_percent = -1;
    std::size_t m_width = 0;
    std::chrono::steady_clock::time_point m_last_write;
};

/// A read-only stream buffer over `source` that reports to `line` how many
/// bytes its reader has taken. It reads ahead in blocks of its own, so
/// `source` is read sequentially and the line is updated once a block.
/// Seeking goes to `source` (a loader reads a file's header, then the file
/// again from its start); the count follows the position.
class CountingReader : public std::streambuf {
public:
    CountingReader(std::streambuf& source, ProgressLine& line);

    /// The bytes handed to the reader so far (not those read ahead).
    std::uintmax_t bytes_read() const;

protected:
    int_type underflow() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    std::streambuf& m_source;
    ProgressLine& m_line;
    /// Bytes taken from `source`, including the current block.
    std::uintmax_t m_fetched = 0;
    std::array<char, 64 * 1024> m_block;
};

} // namespace vorparam

#endif // VORPARAM_PROGRESS_H

#include "progress.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace vorparam {

ProgressLine::ProgressLine(std::ostream& out, std::string name, std::uintmax_t total, bool shown)
    : m_out(out)
    , m_name(std::move(name))
    , m_total(total)
    , m_shown(shown) {}

ProgressLine::~ProgressLine() {
    finish();
}

void ProgressLine::update(std::uintmax_t done) {
    if (!m_shown)
        return;
    const int percent =
        m_total == 0 ? 100 : static_cast<int>(std::min(done, m_total) * 100 / m_total);
    const auto now = std::chrono::steady_clock::now();
    if (m_written && (percent == m_percent || now - m_last_write < progress_interval))
        return;
    const std::string text = m_name + ": " + std::to_string(percent) + "%";
    // A shorter text than the last leaves none of it behind.
    const std::size_t padding = m_width > text.size() ? m_width - text.size() : 0;
    m_out << '\r' << text << std::string(padding, ' ') << std::flush;
    m_width = text.size() + padding;
    m_percent = percent;
    m_last_write = now;
    m_written = true;
}

void ProgressLine::finish() {
    if (!m_written)
        return;
    m_out << '\r' << std::string(m_width, ' ') << '\r' << std::flush;
    m_written = false;
}

CountingReader::CountingReader(std::streambuf& source, ProgressLine& line)
    : m_source(source)
    , m_line(line) {}

std::uintmax_t CountingReader::bytes_read() const {
    return m_fetched - static_cast<std::uintmax_t>(egptr() - gptr());
}

CountingReader::int_type CountingReader::underflow() {
    if (gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    const std::streamsize got =
        m_source.sgetn(m_block.data(), static_cast<std::streamsize>(m_block.size()));
    if (got <= 0)
        return traits_type::eof();
    m_fetched += static_cast<std::uintmax_t>(got);
    setg(m_block.data(), m_block.data(), m_block.data() + got);
    m_line.update(bytes_read());
    return traits_type::to_int_type(*gptr());
}

CountingReader::pos_type CountingReader::seekoff(off_type offset, std::ios_base::seekdir direction,
                                                 std::ios_base::openmode which) {
    // The source is ahead of the reader by what is left of the block.
    if (direction == std::ios_base::cur)
        offset -= egptr() - gptr();
    setg(nullptr, nullptr, nullptr);
    const pos_type position = m_source.pubseekoff(offset, direction, which);
    if (position != pos_type(off_type(-1)))
        m_fetched = static_cast<std::uintmax_t>(off_type(position));
    return position;
}

CountingReader::pos_type CountingReader::seekpos(pos_type position, std::ios_base::openmode which) {
    return seekoff(off_type(position), std::ios_base::beg, which);
}

} // namespace vorparam

// libFuzzer target: any bytes as a saved file, loaded twice: into an open root
// (which creates whatever the file holds) and into the fuzz tree, a host root
// whose default loader only sets the members it already has. A crash, a
// sanitizer report, an exception, a leak or a hang is a bug.
//
// Whatever loads cleanly must also survive a round trip: the tree is saved,
// the saved text loaded into a fresh open root and saved again, and the two
// bodies must be equal byte for byte (the header's time may differ). The
// compact form of the second save must be the indented form without its
// layout. A difference aborts, so libFuzzer keeps the input as a finding.
#include "fuzz_tree.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace {

// Large enough for files that nest blocks to the serializer's depth limit
// and for long quoted words; libFuzzer's -max_len decides what it tries.
constexpr std::size_t max_input = 1 << 16;

// Scans a saved text: `on_char(c, quoted)` sees every character with whether
// it lies inside a quoted word. Returns the offset just past the first block
// (the header), or npos when the text has no complete first block.
template <typename F>
std::size_t scan(std::string_view text, F on_char) {
    bool quoted = false;
    bool escaped = false;
    int depth = 0;
    std::size_t header_end = std::string_view::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool in_word = quoted;
        if (quoted) {
            if (escaped)
                escaped = false;
            else if (c == '\\')
                escaped = true;
            else if (c == '"')
                quoted = false;
        } else if (c == '"') {
            quoted = true;
        } else if (c == '{' || c == '(') {
            ++depth;
        } else if ((c == '}' || c == ')') && --depth == 0 && header_end == std::string_view::npos) {
            header_end = i + 1;
        }
        on_char(c, in_word || c == '"');
    }
    return header_end;
}

std::string_view body_of(std::string_view text) {
    const std::size_t end = scan(text, [](char, bool) {});
    return end == std::string_view::npos ? std::string_view() : text.substr(end);
}

std::string without_layout(std::string_view text) {
    std::string out;
    scan(text, [&](char c, bool quoted) {
        if (quoted || (c != ' ' && c != '\t' && c != '\n'))
            out += c;
    });
    return out;
}

// A quoted word that is exactly one punctuation character reads back as that
// punctuation, so a value such as "}" cannot make the round trip. The format
// keeps this quirk; such trees are not compared.
bool holds_punctuation_word(std::string_view text) {
    for (std::string_view word : {"\"{\"", "\"}\"", "\"(\"", "\")\"", "\",\"", "\":\""})
        if (text.find(word) != std::string_view::npos)
            return true;
    return false;
}

std::string save(vorParameterSerializer& serializer, const vorParameterRoot& root) {
    std::ostringstream out;
    const vorParameterSerialError error = serializer.save(root, out);
    if (error != SERIAL_OK)
        std::abort(); // a tree that loaded must save
    return out.str();
}

void check_round_trip(const vorParameterRoot& loaded) {
    vorParameterSerializer serializer;
    const std::string first = save(serializer, loaded);
    if (holds_punctuation_word(body_of(first)))
        return;

    std::istringstream in(first);
    vorParameterSerialError error = SERIAL_OK;
    std::unique_ptr<vorParameterOpenRoot> reopened =
        vorParameterOpenRoot::load(in, serializer, error);
    if (error != SERIAL_OK)
        std::abort(); // the library cannot read what it wrote
    const std::string second = save(serializer, *reopened);
    if (body_of(first) != body_of(second))
        std::abort();

    serializer.set_compact_mode(1);
    const std::string compact = save(serializer, *reopened);
    if (body_of(compact) != without_layout(body_of(second)))
        std::abort();
}

void check_failed_load(const vorParameterSerializer& serializer, vorParameterSerialError error,
                       std::size_t size) {
    // Where a load stopped must lie within the input.
    if ((error == SERIAL_SYNTAX_ERROR || error == SERIAL_STREAM_ERROR) &&
        serializer.error_offset() > size)
        std::abort();
}

vorParameterPtr fuzz_host_tree() {
    vorParameterPtr root = fuzz_build_tree();
    vorParameterPtr offsets = root->add("offsets", vorParameterPtr(new vorParameterArray()));
    for (double offset : {0.5, 1.5, 2.5})
        offsets->add(vorParameterKey(), fuzz_number(SUB_REAL, DIM_LENGTH, offset));
    root->add("method", vorParameterPtr(new vorParameterEnum("raster|offset|spiral", "offset")));
    root->add("target", vorParameterPtr(new vorParameterRef("tool.diameter")));
    return root;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (!fuzz_accept(data, size, max_input, text))
        return 0;

    {
        vorParameterSerializer serializer;
        std::istringstream in(text.str());
        vorParameterSerialError error = SERIAL_OK;
        std::unique_ptr<vorParameterOpenRoot> open =
            vorParameterOpenRoot::load(in, serializer, error);
        if (!open)
            std::abort(); // the open root exists even when the load fails
        check_failed_load(serializer, error, size);
        if (error == SERIAL_OK)
            check_round_trip(*open);
    }

    {
        vorParameterPtr host = fuzz_host_tree();
        auto& root = static_cast<vorParameterRoot&>(*host);
        vorParameterSerializer serializer;
        std::istringstream in(text.str());
        const vorParameterSerialError error = serializer.load(root, in);
        check_failed_load(serializer, error, size);
        if (error == SERIAL_OK)
            check_round_trip(root);
    }
    return 0;
}

// libFuzzer target: any bytes as the JSON form of a saved file, read the way
// `vorparam convert --from json` reads it. A crash, a sanitizer report, an
// exception, a leak or a hang is a bug.
//
// A document that is accepted must survive a round trip: the tree it gave is
// written as JSON, that JSON read back into a tree and written again, and the
// two JSON texts must be equal. A difference aborts, so libFuzzer keeps the
// input as a finding.
#include "json_convert.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

namespace {

// Large enough for documents that nest to the converter's depth limit;
// libFuzzer's -max_len decides what it tries.
constexpr std::size_t max_input = 1 << 16;

std::string json_of(const vorParameterOpenRoot& root) {
    std::ostringstream out;
    std::string error;
    if (!vorparam::write_tree_json(root, out, error))
        return "refused: " + error;
    return out.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > max_input)
        return 0;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::string error;
    const auto tree = vorparam::tree_from_json(input, error);
    if (!tree)
        return 0;
    const std::string first = json_of(*tree);
    const auto again = vorparam::tree_from_json(first, error);
    if (!again || json_of(*again) != first)
        std::abort();
    return 0;
}

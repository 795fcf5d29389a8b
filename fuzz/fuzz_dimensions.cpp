// libFuzzer target: any text as a printed dimension. Besides surviving every
// input, the printed form must read back to the same dimension, and the
// combination rules must keep working on whatever was read.
#include "fuzz_tree.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t max_input = 512;

void expect_round_trip(const vorDimensions& dim) {
    const utString printed = dim.get_string();
    if (vorDimensions(printed) != dim) {
        std::fprintf(stderr, "dimension printed as \"%s\" reads back differently\n",
                     printed.c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (!fuzz_accept(data, size, max_input, text))
        return 0;
    const vorDimensions dim(text);
    expect_round_trip(dim);
    const vorDimensions length(DIM_LENGTH);
    expect_round_trip(dim * dim);
    expect_round_trip(dim / length);
    expect_round_trip(dim + length);
    expect_round_trip(dim.pow(static_cast<int>(size % 7) - 3));
    return 0;
}

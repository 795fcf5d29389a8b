// libFuzzer target: any text as the value of a numeric parameter. The first
// two bytes choose the subtype and the dimension (so that unit suffixes and
// integer and boolean tests meet every kind), the third whether a range
// applies; the rest is the value text, read back every way a host reads it.
#include "fuzz_tree.h"

namespace {

constexpr std::size_t max_input = 4096;
constexpr std::size_t header_size = 3;

vorParameterSubType pick_subtype(std::uint8_t byte) {
    return static_cast<vorParameterSubType>(SUB_NUMBER + byte % (SUB_ANGLE - SUB_NUMBER + 1));
}

void read_every_way(const vorParameterNumeric& numeric) {
    numeric.get_double();
    numeric.get_int();
    numeric.get_string();
    numeric.is_expr();
    numeric.is_valid();
    numeric.check_range();
    numeric.is_int_value();
    numeric.is_bool_value();
    numeric.print(0);
    double cached = 0;
    numeric.get_cached_evaluation(cached);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (size < header_size || !fuzz_accept(data + header_size, size - header_size, max_input, text))
        return 0;
    // Any int is a defined value of the dimension enum; most give an invalid one.
    const vorDimensions dim(static_cast<vorDimStandard>(data[1] % 18));
    vorParameterPtr root = fuzz_build_tree();
    vorParameterPtr numeric =
        (*root)["tool"]->add("fuzzed", fuzz_number(pick_subtype(data[0]), dim, 0));
    auto& typed = static_cast<vorParameterNumeric&>(*numeric);
    if (data[2] & 1)
        typed.set_range(vorRange(-10, 10));
    numeric->set_string(text);
    read_every_way(typed);

    vorParameterPtr copy(numeric->create_new());
    copy->is_equal(*numeric);
    typed.set_normalized_value(text);
    read_every_way(typed);
    return 0;
}

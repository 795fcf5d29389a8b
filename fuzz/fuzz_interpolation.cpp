// libFuzzer target: any text as a string with embedded expressions ("${expr}",
// "%[expr]", "$name"), expanded by the evaluator and read through a string
// parameter of the fuzz tree, whose scope differs from the root's.
#include "fuzz_tree.h"

namespace {

constexpr std::size_t max_input = 4096;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (!fuzz_accept(data, size, max_input, text))
        return 0;
    vorParameterPtr root = fuzz_build_tree();
    vorEvaluator(root.get()).interpolate_string(text);

    vorParameterPtr string = (*root)["tool"]->add("fuzzed", fuzz_text(""));
    string->set_string(text);
    string->get_string();
    string->print(0);
    string->is_valid();
    return 0;
}

// libFuzzer target: any text as an expression, evaluated at the root of the
// fuzz tree and inside one of its maps, read as a member's value until its
// compiled plan runs, and translated between decimal conventions. Every input must give a value: a crash, a sanitizer report, an
// exception, a leak or a hang is a bug.
#include "fuzz_tree.h"

namespace {

constexpr std::size_t max_input = 4096;

void evaluate_in(const vorParameterPtr& scope, const utString& text) {
    vorEvaluator evaluator(scope.get());
    vorParameterPtr result = evaluator.evaluate(text);
    result->get_string();
    result->get_double();
    result->print(0);
    result->is_valid();
}

/// A text becomes a plan on its second sight: the third read runs it.
void read_as_value(const vorParameterPtr& scope, const utString& text) {
    vorParameterPtr probe = scope->add("probe", fuzz_number(SUB_REAL, DIM_LENGTH, 0));
    probe->set_string(text);
    for (int read = 0; read < 3; ++read) {
        probe->get_double();
        probe->evaluate()->get_string();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (!fuzz_accept(data, size, max_input, text))
        return 0;
    vorParameterPtr root = fuzz_build_tree();
    evaluate_in(root, text);
    evaluate_in((*root)["tool.holder"], text);
    read_as_value((*root)["tool.holder"], text);
    vorEvaluator::neutralize(text);
    vorEvaluator::localize(text);
    return 0;
}

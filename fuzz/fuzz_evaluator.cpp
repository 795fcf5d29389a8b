// libFuzzer target: any text as an expression, as a key path, as an
// interpolated string and as a numeric's value, against a small tree with
// functions, lists and self-referring expressions. Any crash, sanitizer
// report or exception is a bug: every input must give a value.
#include <vorparameter/vorparameter.h>

#include <cstddef>
#include <cstdint>

namespace {

vorParameterPtr build_tree() {
    vorParameterPtr root(new vorParameterLibRoot("machining"));
    vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));
    tool->add("name", vorParameterPtr(new vorParameterString("End mill")));
    vorParameterPtr list(
        new vorParameterList(vorParameterPtr(new vorParameterNumeric(SUB_INT, DIM_NONE, 0))));
    list->set_int(3);
    root->add("list", list);
    root->add("loop", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0)))
        ->set_string("loop + 1");
    root->add("f", vorParameterPtr(new vorParameterFunction("argv[0] * 2 + f(1)")));
    return root;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vorParameterPtr root = build_tree();
    const utString text(reinterpret_cast<const char*>(data), size);

    vorEvaluator evaluator(root.get());
    vorParameterPtr result = evaluator.evaluate(text);
    result->get_string();
    result->print(0);
    evaluator.interpolate_string(text);
    vorEvaluator::neutralize(text);
    (*root)[vorParameterKey(text)]->get_double();

    vorParameterPtr scratch(new vorParameterNumeric(SUB_REAL, DIM_NONE, 0));
    root->add("scratch", scratch);
    scratch->set_string(text);
    scratch->get_double();
    scratch->is_valid();
    root->remove("scratch");
    vorDimensions(text).get_string();
    return 0;
}

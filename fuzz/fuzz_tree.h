// What every fuzz target shares: the tree its inputs are evaluated against,
// and the input size each target accepts.
//
// The tree is small but holds one of each thing an expression can meet:
// numbers of every kind with dimensions, texts with and without
// interpolations, nested maps, a list, a vector, user functions (one of them
// recursive), an inactive and a locked parameter, and parameters whose
// expressions refer to themselves or to each other. Its names are those of the
// examples in docs/, so that the seed corpus reaches deep paths at once.
//
// Targets build a fresh tree for every input: library functions such as
// set_vector write into the tree, and a finding must reproduce from its one
// input, not from the history of the run.
#ifndef VORPARAMETER_FUZZ_FUZZ_TREE_H
#define VORPARAMETER_FUZZ_FUZZ_TREE_H

#include <vorparameter/vorparameter.h>

#include <cstddef>
#include <cstdint>

inline vorParameterPtr fuzz_number(vorParameterSubType kind, const vorDimensions& dim,
                                   double value) {
    return vorParameterPtr(new vorParameterNumeric(kind, dim, value));
}

inline vorParameterPtr fuzz_expression(vorParameterSubType kind, vorDimStandard dim,
                                       const char* text) {
    vorParameterPtr numeric = fuzz_number(kind, dim, 0);
    numeric->set_string(text);
    return numeric;
}

inline vorParameterPtr fuzz_text(const char* value) {
    return vorParameterPtr(new vorParameterString(value));
}

inline vorParameterPtr fuzz_map() {
    return vorParameterPtr(new vorParameterMap());
}

inline vorParameterPtr fuzz_build_tree() {
    vorParameterPtr root(new vorParameterLibRoot("machining"));
    root->add("a", fuzz_number(SUB_REAL, DIM_NONE, 2));
    root->add("b", fuzz_number(SUB_REAL, DIM_NONE, 3));
    root->add("n", fuzz_number(SUB_INT, DIM_NONE, 7));
    root->add("on", fuzz_number(SUB_BOOL, DIM_NONE, 1));
    root->add("angle", fuzz_number(SUB_ANGLE, DIM_NONE, 30));
    root->add("depth", fuzz_number(SUB_REAL, DIM_LENGTH, 12))->set_desc("Total depth");
    root->add("feed", fuzz_number(SUB_REAL, DIM_VELOCITY, 800))->lock(1);
    root->add("hidden", fuzz_number(SUB_REAL, DIM_NONE, 1))->set_active("0");

    vorParameterPtr tool = root->add("tool", fuzz_map());
    tool->add("diameter", fuzz_number(SUB_REAL, DIM_LENGTH, 6));
    tool->add("flutes", fuzz_number(SUB_INT, DIM_NONE, 4));
    tool->add("name", fuzz_text("End mill"));
    tool->add("label", fuzz_text("${name} D${diameter}"));
    tool->add("holder", fuzz_map())->add("length", fuzz_number(SUB_REAL, DIM_LENGTH, 40));

    vorParameterPtr strategy = root->add("strategy", fuzz_map());
    strategy->add("stepover", fuzz_expression(SUB_REAL, DIM_LENGTH, "tool.diameter * 0.5"));
    strategy->add("tolerance", fuzz_number(SUB_REAL, DIM_LENGTH, 0.01));

    vorParameterPtr passes = root->add(
        "passes", vorParameterPtr(new vorParameterList(fuzz_number(SUB_REAL, DIM_LENGTH, 0))));
    for (double pass : {1.0, 2.0, 3.0})
        passes->add(vorParameterKey(), fuzz_number(SUB_REAL, DIM_LENGTH, pass));
    root->add("origin",
              vorParameterPtr(new vorParameterVector(3, fuzz_number(SUB_REAL, DIM_LENGTH, 0))));

    // Cycles and recursion: each must end in an error value, never a hang.
    root->add("loop", fuzz_expression(SUB_REAL, DIM_NONE, "loop + 1"));
    root->add("ping", fuzz_expression(SUB_REAL, DIM_NONE, "pong * 2"));
    root->add("pong", fuzz_expression(SUB_REAL, DIM_NONE, "ping + 1"));
    root->add("echo", fuzz_text("${echo}!"));
    root->add("hypot", vorParameterPtr(new vorParameterFunction("sqrt(argv[0]^2 + argv[1]^2)")));
    root->add("f", vorParameterPtr(new vorParameterFunction("argv[0] * 2 + f(1)")));
    return root;
}

/// The input as text when it is at most `max_size` bytes. Longer inputs only
/// repeat what the limits of the library already bound, at a slower pace.
inline bool fuzz_accept(const std::uint8_t* data, std::size_t size, std::size_t max_size,
                        utString& out) {
    if (size > max_size)
        return false;
    out = utString(reinterpret_cast<const char*>(data), size);
    return true;
}

#endif // VORPARAMETER_FUZZ_FUZZ_TREE_H

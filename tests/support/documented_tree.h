// The tree that the examples of docs/expressions.md and docs/parameters.md
// are evaluated against, as those pages describe it.
#ifndef VORPARAMETER_TESTS_DOCUMENTED_TREE_H
#define VORPARAMETER_TESTS_DOCUMENTED_TREE_H

#include "prelude.h"

inline vorParameterPtr documented_number(vorParameterSubType kind, vorDimStandard dim,
                                         double value) {
    return vorParameterPtr(new vorParameterNumeric(kind, dim, value));
}

inline vorParameterPtr documented_tree() {
    vorParameterPtr root(new vorParameterLibRoot("machining"));
    root->add("a", documented_number(SUB_REAL, DIM_NONE, 2));
    root->add("b", documented_number(SUB_REAL, DIM_NONE, 3));
    vorParameterPtr tool = root->add("tool", map());
    tool->add("diameter", documented_number(SUB_REAL, DIM_LENGTH, 6));
    tool->add("flutes", documented_number(SUB_INT, DIM_NONE, 4));
    tool->add("name", text("End mill"));
    vorParameterPtr strategy = root->add("strategy", map());
    strategy->add("stepover", documented_number(SUB_REAL, DIM_LENGTH, 0))
        ->set_string("tool.diameter * 0.5");
    strategy->add("tolerance", documented_number(SUB_REAL, DIM_LENGTH, 0.01));
    return root;
}

#endif // VORPARAMETER_TESTS_DOCUMENTED_TREE_H

// The tree that the examples of docs/expressions.md and docs/parameters.md
// are evaluated against, as those pages describe it.
#ifndef VORPARAMETER_TESTS_DOCUMENTED_TREE_H
#define VORPARAMETER_TESTS_DOCUMENTED_TREE_H

#include "prelude.h"

inline vorParameterPtr documented_tree() {
    vorParameterPtr root(new vorParameterLibRoot("machining"));
    root->add("a", real(2));
    root->add("b", real(3));
    vorParameterPtr tool = root->add("tool", map());
    tool->add("diameter", real(6, DIM_LENGTH));
    tool->add("flutes", real(4, DIM_NONE, SUB_INT));
    tool->add("name", text("End mill"));
    vorParameterPtr strategy = root->add("strategy", map());
    strategy->add("stepover", real(0, DIM_LENGTH))->set_string("tool.diameter * 0.5");
    strategy->add("tolerance", real(0.01, DIM_LENGTH));
    return root;
}

#endif // VORPARAMETER_TESTS_DOCUMENTED_TREE_H

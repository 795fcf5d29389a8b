// Helpers of the function library's tests: values, argument lists, and the
// tree under which docs/functions.md evaluates its examples.
#ifndef VORPARAMETER_TESTS_LIB_TEST_TREE_H
#define VORPARAMETER_TESTS_LIB_TEST_TREE_H

#include "../support/prelude.h"

#include <initializer_list>

/// An argument list as the evaluator passes it.
inline vorParameterPtr arguments(std::initializer_list<vorParameterPtr> values) {
    vorParameterPtr list(new vorParameterTempArray());
    for (const vorParameterPtr& value : values)
        list->add(vorParameterKey(), value);
    return list;
}

/// The tree of the documented examples (see docs/functions.md).
inline vorParameterPtr example_tree() {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    root->add("depth", real(12, DIM_LENGTH))->set_desc("Total depth");
    vorParameterPtr passes =
        root->add("passes", vorParameterPtr(new vorParameterList(real(0, DIM_LENGTH))));
    for (double pass : {1.0, 2.0, 3.0})
        passes->add(vorParameterKey(), real(pass, DIM_LENGTH));
    root->add("feed", real(800))->lock(1);
    root->add("hidden", real(1))->set_active("0");
    root->add("hypot", vorParameterPtr(new vorParameterFunction("sqrt(argv[0]^2 + argv[1]^2)")));
    auto* mode = new vorParameterEnum("rough|finish", "finish");
    mode->add_state("spiral", "", "", "depth > 20");
    root->add("mode", vorParameterPtr(mode));
    return root;
}

#endif // VORPARAMETER_TESTS_LIB_TEST_TREE_H

// Runs every example of docs/expressions.md against the tree it describes.

#include "../support/doc_examples.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameterRoot.h"

#include <gtest/gtest.h>

namespace {

vorParameterPtr number(vorParameterSubType kind, vorDimStandard dim, double value) {
    return vorParameterPtr(new vorParameterNumeric(kind, dim, value));
}

vorParameterPtr documented_tree() {
    vorParameterPtr root(new vorParameterRoot("machining"));
    root->add("a", number(SUB_REAL, DIM_NONE, 2));
    root->add("b", number(SUB_REAL, DIM_NONE, 3));
    vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", number(SUB_REAL, DIM_LENGTH, 6));
    tool->add("flutes", number(SUB_INT, DIM_NONE, 4));
    tool->add("name", vorParameterPtr(new vorParameterString("End mill")));
    vorParameterPtr strategy = root->add("strategy", vorParameterPtr(new vorParameterMap()));
    strategy->add("stepover", number(SUB_REAL, DIM_LENGTH, 0))->set_string("tool.diameter * 0.5");
    strategy->add("tolerance", number(SUB_REAL, DIM_LENGTH, 0.01));
    return root;
}

} // namespace

TEST(ExpressionDocs, EveryExampleEvaluatesAsDocumented) {
    std::vector<DocExample> examples = read_doc_examples("docs/expressions.md");
    ASSERT_GE(examples.size(), 20u);
    vorParameterPtr root = documented_tree();
    for (const DocExample& example : examples) {
        vorParameterPtr result = vorEvaluator(root.get()).evaluate(example.expression);
        EXPECT_EQ(result->get_string().str(), example.expected)
            << "docs/expressions.md:" << example.line << ": " << example.expression;
    }
}

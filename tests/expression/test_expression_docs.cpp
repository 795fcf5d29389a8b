// Runs every example of docs/expressions.md against the tree it describes.

#include "../support/doc_examples.h"
#include "../support/documented_tree.h"

#include "vorparameter/expression/vorEvaluator.h"

#include <gtest/gtest.h>

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

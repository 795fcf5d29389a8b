// Runs every example of docs/expressions.md against the tree it describes.

#include "../support/doc_examples.h"
#include "../support/documented_tree.h"

#include "../support/prelude.h"

TEST(ExpressionDocs, EveryExampleEvaluatesAsDocumented) {
    vorParameterPtr root = documented_tree();
    expect_doc_examples("docs/expressions.md", 20, [&](const std::string& expression) {
        return vorEvaluator(root.get()).evaluate(expression)->get_string().str();
    });
}

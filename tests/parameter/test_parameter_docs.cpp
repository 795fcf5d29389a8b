// Runs the examples of docs/parameters.md: its expression examples against
// the tree it describes, and checks that it quotes the example programs as
// they are (the programs themselves run as ctests).

#include "../support/doc_examples.h"
#include "../support/documented_tree.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <gtest/gtest.h>

namespace {

std::string read_source_file(const std::string& relative_path) {
    std::ifstream in(std::string(VORPARAMETER_SOURCE_DIR) + "/" + relative_path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

TEST(ParameterDocs, ReferenceExamplesEvaluateAsDocumented) {
    std::vector<DocExample> examples = read_doc_examples("docs/parameters.md");
    ASSERT_GE(examples.size(), 7u);
    vorParameterPtr root = documented_tree();
    root->add("cut", vorParameterPtr(new vorParameterRef("tool.diameter")));
    root->add("holder", vorParameterPtr(new vorParameterRef("tool")));
    root->add("loop", vorParameterPtr(new vorParameterRef("loop")));
    auto* typed = new vorParameterRef("tool.name");
    typed->set_required_type(TYPE_NUMERIC);
    root->add("typed", vorParameterPtr(typed));
    for (const DocExample& example : examples) {
        vorParameterPtr result = vorEvaluator(root.get()).evaluate(example.expression);
        EXPECT_EQ(result->get_string().str(), example.expected)
            << "docs/parameters.md:" << example.line << ": " << example.expression;
    }
}

TEST(ParameterDocs, QuotesTheExampleProgramsVerbatim) {
    const std::string page = read_source_file("docs/parameters.md");
    const std::string program = read_source_file("examples/on_modify.cpp");
    ASSERT_FALSE(program.empty());
    EXPECT_NE(page.find(program), std::string::npos);
}

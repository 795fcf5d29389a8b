// Runs the expression examples of docs/parameters.md against the tree it
// describes, and checks that the README and the pages quote the example
// programs that the test suite builds and runs (tests/examples) as they are.

#include "../support/doc_examples.h"
#include "../support/documented_tree.h"

#include "../support/prelude.h"

TEST(ParameterDocs, ReferenceExamplesEvaluateAsDocumented) {
    vorParameterPtr root = documented_tree();
    root->add("cut", reference("tool.diameter"));
    root->add("holder", reference("tool"));
    root->add("loop", reference("loop"));
    auto* typed = new vorParameterRef("tool.name");
    typed->set_required_type(TYPE_NUMERIC);
    root->add("typed", vorParameterPtr(typed));
    expect_doc_examples("docs/parameters.md", 7, [&](const std::string& expression) {
        return vorEvaluator(root.get()).evaluate(expression)->get_string().str();
    });
}

TEST(HostDocs, QuoteTheExampleProgramsVerbatim) {
    const std::pair<const char*, const char*> quotes[] = {
        {"README.md", "examples/quickstart.cpp"},
        {"docs/parameters.md", "examples/on_modify.cpp"},
        {"docs/errors.md", "examples/errors.cpp"},
        {"docs/threads.md", "examples/threads.cpp"},
    };
    for (const auto& [page, program] : quotes) {
        const std::string text = read_source_file(program);
        ASSERT_FALSE(text.empty()) << program;
        EXPECT_NE(read_source_file(page).find("```cpp\n" + text + "```"), std::string::npos)
            << page << " does not quote " << program << " as it is";
    }
}

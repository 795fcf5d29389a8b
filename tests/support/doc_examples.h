// Reads the documentation and the example programs, so that tests run exactly
// what the documentation shows. Examples stand in fenced blocks whose info
// string is "vor-examples", one per line: `expression => expected text`.
#ifndef VORPARAMETER_TESTS_DOC_EXAMPLES_H
#define VORPARAMETER_TESTS_DOC_EXAMPLES_H

#include "prelude.h"

#include <fstream>

/// The bytes of `relative_path`, a file below the source tree ("" when absent).
inline std::string read_source_file(const std::string& relative_path) {
    std::ifstream in(std::string(VORPARAMETER_SOURCE_DIR) + "/" + relative_path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

struct DocExample {
    std::string expression;
    std::string expected;
    int line;
};

/// The examples of `relative_path`, a file below the source tree.
inline std::vector<DocExample> read_doc_examples(const std::string& relative_path) {
    std::istringstream in(read_source_file(relative_path));
    std::vector<DocExample> examples;
    std::string line;
    bool inside = false;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.rfind("```", 0) == 0) {
            inside = !inside && line == "```vor-examples";
            continue;
        }
        std::size_t arrow = line.find(" => ");
        if (!inside || arrow == std::string::npos)
            continue;
        examples.push_back({line.substr(0, arrow), line.substr(arrow + 4), number});
    }
    return examples;
}

/// Checks that each of the examples of `relative_path`, of which there are
/// at least `at_least`, gives its expected text as `shown(expression)`.
template <class Shown>
void expect_doc_examples(const std::string& relative_path, std::size_t at_least, Shown shown) {
    const std::vector<DocExample> examples = read_doc_examples(relative_path);
    ASSERT_GE(examples.size(), at_least) << relative_path;
    for (const DocExample& example : examples)
        EXPECT_EQ(shown(example.expression), example.expected)
            << relative_path << ":" << example.line << ": " << example.expression;
}

#endif // VORPARAMETER_TESTS_DOC_EXAMPLES_H

// Reads the examples of a documentation file, so that tests run exactly what
// the documentation shows. Examples stand in fenced blocks whose info string
// is "vor-examples", one per line: `expression => expected text`.
#ifndef VORPARAMETER_TESTS_DOC_EXAMPLES_H
#define VORPARAMETER_TESTS_DOC_EXAMPLES_H

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

struct DocExample {
    std::string expression;
    std::string expected;
    int line;
};

/// The examples of `relative_path`, a file below the source tree.
inline std::vector<DocExample> read_doc_examples(const std::string& relative_path) {
    std::ifstream in(std::string(VORPARAMETER_SOURCE_DIR) + "/" + relative_path);
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

#endif // VORPARAMETER_TESTS_DOC_EXAMPLES_H

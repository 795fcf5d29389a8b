// The graph command's DOT: which edges a tree gives, how labels are escaped,
// and the progress line of large loads.
#include "graph_dot_text.h"
#include "graph_writer.h"
#include "progress.h"

#include "../support/prelude.h"

#include <map>
#include <regex>
#include <set>
#include <tuple>

namespace vorparam {
namespace {

/// "from -> to (kind)" for every edge, nodes named by the first line of their
/// label (the path); kind is "value", "active" or "ref".
struct ParsedGraph {
    std::vector<std::string> paths;
    std::set<std::tuple<std::string, std::string, std::string>> edges;
};

ParsedGraph parse(const std::string& dot) {
    static const std::regex node_line(R"re(^"(n\d+)" \[label="((?:[^"\\]|\\.)*?)(\\n|")[^\n]*)re");
    static const std::regex edge_line(R"re(^"(n\d+)" -> "(n\d+)"(.*);$)re");
    ParsedGraph graph;
    std::map<std::string, std::string> path_of;
    std::istringstream lines(dot);
    for (std::string line; std::getline(lines, line);) {
        std::smatch m;
        if (std::regex_search(line, m, node_line)) {
            path_of[m[1]] = m[2];
            graph.paths.push_back(m[2]);
        } else if (std::regex_search(line, m, edge_line)) {
            const std::string attributes = m[3];
            const std::string kind = attributes.find("blue") != std::string::npos    ? "active"
                                     : attributes.find("empty") != std::string::npos ? "ref"
                                                                                     : "value";
            graph.edges.emplace(path_of.at(m[1]), path_of.at(m[2]), kind);
        }
    }
    return graph;
}

/// depth = 2, a.b reads depth and (only when depth > 1) a.c; a.c reads
/// itself; x and y read each other; show is active while depth > 0; cutter
/// refers to a.
vorParameterPtr sample_tree() {
    vorParameterPtr root(new vorParameterLibRoot("job"));
    root->add("depth", numeric("2"));
    vorParameterPtr a(new vorParameterMap());
    a->add("b", numeric("depth > 1 & c > 0"));
    a->add("c", numeric("c + 1"));
    root->add("a", a);
    root->add("x", numeric("y * 2"));
    root->add("y", numeric("x / 2"));
    vorParameterPtr show(new vorParameterString("on"));
    show->set_active("depth > 0");
    root->add("show", show);
    root->add("cutter", reference("a"));
    return root;
}

std::string graph_of(const vorParameterPtr& start, const std::string& path) {
    std::ostringstream out;
    write_graph(start, path, out);
    return out.str();
}

TEST(Graph, EdgesAreWhatEachEvaluationRead) {
    const vorParameterPtr root = sample_tree();
    const std::string dot = graph_of(root, "");
    const ParsedGraph graph = parse(dot);

    // Tree order, containers before their contents; the root is not drawn.
    EXPECT_EQ(graph.paths,
              (std::vector<std::string>{"depth", "a", "a.b", "a.c", "x", "y", "show", "cutter"}));
    using E = std::tuple<std::string, std::string, std::string>;
    EXPECT_EQ(graph.edges, (std::set<E>{{"a.b", "depth", "value"},
                                        {"a.b", "a.c", "value"},
                                        {"a.c", "a.c", "value"},
                                        {"x", "y", "value"},
                                        {"y", "x", "value"},
                                        {"show", "depth", "active"},
                                        {"cutter", "a", "ref"}}));
    // Writing is deterministic and leaves the values as they were.
    EXPECT_EQ(graph_of(root, ""), dot);
    // The map a is a cluster around its own node and its members.
    const std::size_t open = dot.find("subgraph \"cluster_n1\"");
    const std::string cluster = dot.substr(open, dot.find("}\n", open) - open);
    for (const char* id : {"\"n1\" [", "\"n2\" [", "\"n3\" ["})
        EXPECT_NE(cluster.find(id), std::string::npos) << id;
    EXPECT_EQ(cluster.find("\"n4\" ["), std::string::npos);

    // An operand that short-circuiting skipped reads nothing.
    (*root)[vorParameterKey("depth")]->set_string("1");
    (*root)[vorParameterKey("show")]->set_active("0");
    const ParsedGraph shallow = parse(graph_of(root, ""));
    EXPECT_EQ(shallow.edges.count({"a.b", "a.c", "value"}), 0u);
    EXPECT_EQ(shallow.edges.count({"a.b", "depth", "value"}), 1u);
}

TEST(Graph, PathDrawsTheSubtreeAndLabelsAreQuotedAscii) {
    const vorParameterPtr root = sample_tree();
    const ParsedGraph graph = parse(graph_of((*root)[vorParameterKey("a")], "a"));
    // depth lies outside a but a.b reads it; x, y, show and cutter are left out.
    EXPECT_EQ(graph.paths, (std::vector<std::string>{"a", "a.b", "a.c", "depth"}));
    EXPECT_EQ(graph.edges.size(), 3u);

    const ParsedGraph leaf = parse(graph_of((*root)[vorParameterKey("cutter")], "cutter"));
    EXPECT_EQ(leaf.paths, (std::vector<std::string>{"cutter", "a"}));

    EXPECT_EQ(dot_quoted("plain"), "\"plain\"");
    EXPECT_EQ(dot_quoted("say \"hi\" C:\\cam"), R"("say \"hi\" C:\\cam")");
    EXPECT_EQ(dot_quoted("two\nlines"), R"("two\nlines")");
    EXPECT_EQ(dot_quoted("a & b"), "\"a &amp; b\"");
    EXPECT_EQ(dot_quoted("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), "\"&#233;&#8364;&#128512;\"");
    // A tab and DEL show as their pictures; a stray, truncated or overlong
    // sequence, and an encoded surrogate, as the replacement character.
    EXPECT_EQ(dot_quoted("\t\x7F"), "\"&#9225;&#9249;\"");
    EXPECT_EQ(dot_quoted("\x80|\xE2\x82|\xC0\xAF|\xED\xA0\x80"),
              "\"&#65533;|&#65533;&#65533;|&#65533;&#65533;|&#65533;&#65533;&#65533;\"");
    EXPECT_EQ(dot_quoted(std::string("x\0y", 3)), "\"x&#9216;y\"");

    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdef", 3), "abc...");
    EXPECT_EQ(shortened("\xC3\xA9\xC3\xA9\xC3\xA9", 2), "\xC3\xA9\xC3\xA9...");

    // A value with every awkward character reaches the label escaped.
    vorParameterPtr named(new vorParameterLibRoot("job"));
    named->add("name", text("\"q\"\\\n"));
    const std::string dot = graph_of(named, "");
    EXPECT_NE(dot.find(R"x(label="name\n= \"\"q\"\\\n\" (text)")x"), std::string::npos) << dot;
}

TEST(Progress, CountsWhatTheReaderTookAndShowsOnlyOnATerminal) {
    const std::string file(progress_threshold_bytes + 100'000, 'x');
    for (const bool terminal : {true, false}) {
        std::istringstream source(file);
        std::ostringstream err;
        {
            ProgressLine line(err, "big.vor", file.size(), progress_wanted(file.size(), terminal));
            CountingReader counted(*source.rdbuf(), line);
            std::istream in(&counted);
            char first[10];
            in.read(first, sizeof first);
            EXPECT_EQ(counted.bytes_read(), 10u);
            std::string rest(file.size(), '\0');
            in.read(&rest[0], static_cast<std::streamsize>(rest.size()));
            EXPECT_EQ(static_cast<std::size_t>(in.gcount()) + 10, file.size());
            EXPECT_EQ(counted.bytes_read(), file.size());
        }
        if (!terminal) {
            EXPECT_EQ(err.str(), "");
            continue;
        }
        // Written in place from 0%, then wiped so the next output starts clean.
        const std::string shown = err.str();
        EXPECT_EQ(shown.rfind("\rbig.vor: 0%", 0), 0u) << shown;
        EXPECT_EQ(shown.find('\n'), std::string::npos);
        const std::size_t wipe = shown.rfind('\r', shown.size() - 2);
        EXPECT_EQ(shown.back(), '\r');
        EXPECT_GE(shown.size() - wipe - 2, std::string("big.vor: 0%").size());
        EXPECT_EQ(shown.find_first_not_of(' ', wipe + 1), shown.size() - 1);
    }
    EXPECT_FALSE(progress_wanted(progress_threshold_bytes - 1, true));
    EXPECT_TRUE(progress_wanted(progress_threshold_bytes, true));
}

} // namespace
} // namespace vorparam

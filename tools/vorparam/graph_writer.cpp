#include "graph_writer.h"

#include "describe.h"
#include "graph_dot_text.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <ostream>
#include <unordered_map>
#include <vector>

namespace vorparam {

namespace {

enum class EdgeKind { value, active, reference };

struct GraphNode {
    /// Held, so that a parameter only an expression reached stays alive
    /// until it is written.
    vorParameterPtr par;
    std::string path;
    /// The index of the drawn container that holds this node, or -1.
    int container;
    /// Set when evaluating the value expression gave an error.
    bool value_failed = false;
};

struct Edge {
    int from;
    int to;
    EdgeKind kind;
};

bool is_container(const vorParameter& par) {
    return !par.is_ref() && (par.type() == TYPE_MAP || par.type() == TYPE_ARRAY);
}

/// `index` (a key relative to the start) as a path from the top.
std::string joined_path(const std::string& start, const std::string& index) {
    if (start.empty() || index.empty())
        return start + index;
    return index.front() == '[' ? start + index : start + "." + index;
}

/// The graph as it is gathered: nodes in tree order, then the parameters
/// outside the subtree that it reads, then the edges.
class DependencyGraph {
public:
    void add_tree(const vorParameterPtr& start, const std::string& path);
    void add_edges();
    void write(std::ostream& out) const;

private:
    int add_node(const vorParameterPtr& par, std::string path, int container);
    /// The node of `par`, added outside the subtree when it is not drawn yet.
    int node_of(const vorParameterPtr& par);
    void add_reads(int reader, const vorEvaluator& evaluator, EdgeKind kind);
    void add_value_reads(int reader);
    void add_active_reads(int reader);
    void add_reference(int reader);

    void write_node(const GraphNode& node, int id, std::ostream& out) const;
    void write_edge(const Edge& edge, std::ostream& out) const;

    std::vector<GraphNode> m_nodes;
    std::unordered_map<const vorParameter*, int> m_ids;
    std::vector<Edge> m_edges;
    /// The nodes before this index are the subtree's own.
    int m_subtree_size = 0;
};

int DependencyGraph::add_node(const vorParameterPtr& par, std::string path, int container) {
    const int id = static_cast<int>(m_nodes.size());
    m_nodes.push_back({par, std::move(path), container});
    m_ids.emplace(par.get(), id);
    return id;
}

void DependencyGraph::add_tree(const vorParameterPtr& start, const std::string& path) {
    if (start->parent() || !is_container(*start))
        add_node(start, path, -1);
    vorParameterIter it(start);
    it.exclude_functions(0);
    while (++it) {
        const vorParameterPtr par = it();
        const auto holder = m_ids.find(par->parent());
        const int container = holder == m_ids.end() ? -1 : holder->second;
        add_node(par, joined_path(path, it.index().str().str()), container);
    }
    m_subtree_size = static_cast<int>(m_nodes.size());
}

/// The path of `par` from the top of its tree, as a user writes it: without
/// the root's type, which the library's full name begins with.
std::string path_from_top(const vorParameter& par) {
    const vorParameter* top = &par;
    while (top->parent())
        top = top->parent();
    if (top == &par && is_container(par))
        return std::string();
    const std::string path = vorParameter::get_name(par, 1).str();
    const std::string prefix = vorParameter::get_name(*top, 1).str() + ".";
    return path.compare(0, prefix.size(), prefix) == 0 ? path.substr(prefix.size()) : path;
}

int DependencyGraph::node_of(const vorParameterPtr& par) {
    const auto found = m_ids.find(par.get());
    if (found != m_ids.end())
        return found->second;
    return add_node(par, path_from_top(*par), -1);
}

void DependencyGraph::add_reads(int reader, const vorEvaluator& evaluator, EdgeKind kind) {
    for (const vorParameterPtr& read : evaluator.paramset()) {
        // Held by nothing but the evaluator: a value the expression made
        // (an element of a list it built), not a parameter of any tree.
        if (read.unique())
            continue;
        m_edges.push_back({reader, node_of(read), kind});
    }
}

void DependencyGraph::add_value_reads(int reader) {
    const vorParameter& par = *m_nodes[reader].par;
    if (par.is_ref() || par.type() == TYPE_FUNCTION || !par.is_expr())
        return;
    // Evaluated as the parameter evaluates itself: text and choices expand
    // their interpolations, everything else is one expression.
    // An interpolation that fails writes its error into the text, which
    // then stands as the value.
    vorEvaluator evaluator(&par);
    if (par.type() == TYPE_STRING || par.type() == TYPE_ENUM)
        evaluator.interpolate_string(par.get_expr());
    else
        m_nodes[reader].value_failed = evaluator.evaluate(par.get_expr())->is_error();
    add_reads(reader, evaluator, EdgeKind::value);
}

void DependencyGraph::add_active_reads(int reader) {
    const vorParameter& par = *m_nodes[reader].par;
    if (par.get_active_expr().empty())
        return;
    // An active expression is read in the scope of the parameter's parent.
    vorEvaluator evaluator(par.parent());
    evaluator.evaluate(par.get_active_expr());
    add_reads(reader, evaluator, EdgeKind::active);
}

void DependencyGraph::add_reference(int reader) {
    const vorParameter& par = *m_nodes[reader].par;
    if (!par.is_ref())
        return;
    // Null for a reference that reaches itself; an error when it reaches
    // nothing. Neither has a referent to point to.
    vorParameter* target = const_cast<vorParameter*>(par.get_ref());
    if (!target || target->is_error())
        return;
    m_edges.push_back({reader, node_of(vorParameterPtr::share(target)), EdgeKind::reference});
}

void DependencyGraph::add_edges() {
    // Parameters outside the subtree are drawn without their own edges.
    for (int id = 0; id < m_subtree_size; ++id) {
        add_value_reads(id);
        add_active_reads(id);
        add_reference(id);
    }
}

std::string node_id(int id) {
    return dot_quoted("n" + std::to_string(id));
}

std::string label_line(const std::string& text) {
    return shortened(text, graph_label_line_limit);
}

/// The path, then for a container its size, for a reference its text, for
/// an expression the expression, then the value and the active expression.
std::string label_of(const GraphNode& node) {
    const vorParameter& par = *node.par;
    std::string label = label_line(node.path.empty() ? "(root)" : node.path);
    if (is_container(par)) {
        const bool map = par.type() == TYPE_MAP;
        label += "\n" + std::to_string(par.size()) + (map ? " members" : " elements");
    } else if (const vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(&par)) {
        label += "\n" + label_line("&" + ref->get_ref_string().str());
        const vorParameterType type = par.type();
        if (type != TYPE_MAP && type != TYPE_ARRAY && type != TYPE_ERROR)
            label += "\n" + label_line("= " + describe(node.par));
    } else {
        if (par.is_expr() && par.type() != TYPE_FUNCTION)
            label += "\n" + label_line(par.get_expr().str());
        label += "\n" + label_line("= " + describe(node.par));
    }
    if (!par.get_active_expr().empty())
        label += "\n" + label_line("active if " + par.get_active_expr().str());
    return label;
}

const char* shape_of(const vorParameter& par) {
    if (par.is_ref())
        return "cds";
    switch (par.type()) {
    case TYPE_MAP:
        return "folder";
    case TYPE_ARRAY:
        return "tab";
    case TYPE_STRING:
        return "note";
    case TYPE_NUMERIC:
        return "box";
    case TYPE_ENUM:
        return "hexagon";
    case TYPE_FUNCTION:
        return "component";
    case TYPE_DATA:
        return "cylinder";
    case TYPE_ERROR:
        break;
    }
    return "octagon";
}

void DependencyGraph::write_node(const GraphNode& node, int id, std::ostream& out) const {
    out << node_id(id) << " [label=" << dot_quoted(label_of(node))
        << ", shape=" << shape_of(*node.par);
    if (node.value_failed || node.par->type() == TYPE_ERROR)
        out << ", color=red, fontcolor=red";
    if (!node.par->is_active())
        out << ", style=dashed";
    out << "];\n";
}

void DependencyGraph::write_edge(const Edge& edge, std::ostream& out) const {
    out << node_id(edge.from) << " -> " << node_id(edge.to);
    switch (edge.kind) {
    case EdgeKind::value:
        break;
    case EdgeKind::active:
        out << " [style=dashed, color=blue]";
        break;
    case EdgeKind::reference:
        out << " [style=bold, color=gray50, arrowhead=empty]";
        break;
    }
    out << ";\n";
}

void DependencyGraph::write(std::ostream& out) const {
    out << "digraph vorparam {\n"
           "graph [rankdir=LR, fontname=Helvetica, fontsize=10];\n"
           "node [fontname=Helvetica, fontsize=10];\n";
    // Tree order puts a container before its contents, so the clusters open
    // and close like brackets: a node closes every open cluster that does
    // not hold it.
    std::vector<int> open_clusters;
    for (int id = 0; id < static_cast<int>(m_nodes.size()); ++id) {
        const GraphNode& node = m_nodes[id];
        while (!open_clusters.empty() && open_clusters.back() != node.container) {
            out << "}\n";
            open_clusters.pop_back();
        }
        if (id < m_subtree_size && is_container(*node.par)) {
            out << "subgraph " << dot_quoted("cluster_n" + std::to_string(id))
                << " {\ngraph [style=rounded, color=gray60, label=\"\"];\n";
            open_clusters.push_back(id);
        }
        write_node(node, id, out);
    }
    out << std::string(open_clusters.size(), '}');
    if (!open_clusters.empty())
        out << '\n';
    for (const Edge& edge : m_edges)
        write_edge(edge, out);
    out << "}\n";
}

} // namespace

void write_graph(const vorParameterPtr& start, const std::string& path, std::ostream& out) {
    DependencyGraph graph;
    graph.add_tree(start, path);
    graph.add_edges();
    graph.write(out);
}

} // namespace vorparam

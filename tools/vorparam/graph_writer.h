// The dependency graph of a parameter tree as Graphviz DOT: which parameter's
// value or active expression reads which, and where references point.
//
// What an expression reads is what the library recorded while evaluating it
// (the evaluator's paramset, the record the active state is kept by): every
// parameter of the tree the expression named, each once, in the order met. An
// operand that the short-circuit "&" or "|" skipped reads nothing and so
// draws nothing (a call reads all its arguments, "if" too); a function
// parameter is never recorded. Each expression is evaluated once, as a read of the value
// would, so cycles and self-references are drawn as edges and stopped by the
// library's own recursion guard.
#ifndef VORPARAM_GRAPH_WRITER_H
#define VORPARAM_GRAPH_WRITER_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace vorparam {

/// Label lines longer than this many characters are cut short with "...".
constexpr std::size_t graph_label_line_limit = 80;

/// Writes `start`, everything below it and every parameter they read or
/// refer to as a DOT digraph on `out`, in tree order:
///   - a map or array is a cluster holding its members, with a node of its
///     own (shape folder for a map, tab for an array) for edges to reach;
///     a start without a parent (a root) is not drawn itself;
///   - every other parameter is a node labelled with its path, its
///     expression, its value and its active expression, shaped by kind: box
///     for a number, note for text, hexagon for an enumeration, cds for a
///     reference, component for a function, cylinder for host data, octagon
///     for an error; red when its value is an error, dashed when inactive;
///   - an edge from a parameter to each parameter its value expression read
///     (solid), to each its active expression read (dashed, blue), and from
///     a reference to its referent (bold, grey, hollow arrowhead).
/// Parameters outside the subtree are drawn, after it, only as far as the
/// subtree reads them. `path` names `start` in labels ("" for a root).
void write_graph(const vorParameterPtr& start, const std::string& path, std::ostream& out);

} // namespace vorparam

#endif // VORPARAM_GRAPH_WRITER_H

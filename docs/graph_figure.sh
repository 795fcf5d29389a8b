#!/bin/sh
# Draws docs/graph.svg: the dependency graph of vorparam's sample tree.
# Run from the repository root after building the tool (Debian: graphviz):
#   sh docs/graph_figure.sh [path/to/vorparam]
set -eu
vorparam=${1:-build/tools/vorparam/vorparam}
"$vorparam" graph | dot -Tsvg -o docs/graph.svg

#!/usr/bin/env python3
"""Turns the JSON output of vorparameter_bench into docs/performance.md's table
and chart.

    build/bench/vorparameter_bench --benchmark_filter='Read|SetNewText|Tree' \
        --benchmark_repetitions=3 --benchmark_report_aggregates_only=true \
        --benchmark_out=reads.json --benchmark_out_format=json
    python3 docs/performance_chart.py reads.json docs/performance.svg

prints the table of the read cases beside their yardsticks (the benchmark of
the same name with a "Yardstick" suffix) with the ratio of the two, and
writes an SVG chart of re-read cost against expression length for both
engines. Medians are used when the run has repetitions. Needs nothing beyond
python3's standard library.
"""

import json
import math
import sys

# (benchmark, what it measures, what the yardstick is, the figure compared)
CASES = [
    ("BM_ReadShortExpression", "re-read of a numeric whose value is `a*2+b`",
     "muParser compiled Eval", "time"),
    ("BM_ReadLongExpression", "re-read of `(a+b)*(a-b)/2+sqrt(a*a+b*b)`",
     "muParser compiled Eval", "time"),
    ("BM_SetNewTextThenRead", "first evaluation of a new text (`set_string` + `get_double`)",
     "muParser SetExpr+Eval", "time"),
    ("BM_ReadLiteral", "read of a literal numeric", "muParser Eval of `a`", "time"),
    ("BM_TreeHeapPerMember", "heap per named numeric member, 100 000 members",
     "`std::unordered_map<std::string,double>`", "bytes_per_member"),
    ("BM_TreeLookup", "`root[\"m123.p45\"]` in a 100 000-member tree",
     "unordered_map lookup", "time"),
]

SERIES = [("BM_ReadSumOfNames", "libvorparameter", "#1f77b4"),
          ("BM_ReadSumOfNamesYardstick", "muParser", "#d62728")]


def load_runs(path):
    """Maps each benchmark's base name to its median (or only) run."""
    with open(path, encoding="utf-8") as stream:
        report = json.load(stream)
    runs = {}
    for run in report["benchmarks"]:
        if run.get("run_type") == "aggregate" and run.get("aggregate_name") != "median":
            continue
        name = run["run_name"] if "run_name" in run else run["name"]
        runs[name.split("/iterations:")[0]] = run
    return report.get("context", {}), runs


def nanoseconds(run):
    scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}[run.get("time_unit", "ns")]
    return run["real_time"] * scale


def figure(run, measure):
    if measure == "time":
        return nanoseconds(run), "%.1f ns"
    return run[measure], "%.0f B"


def print_table(runs):
    print("| case | this library | yardstick | ratio |")
    print("|---|---|---|---|")
    for name, what, yardstick, measure in CASES:
        mine, theirs = runs.get(name), runs.get(name + "Yardstick")
        if mine is None or theirs is None:
            continue
        ours, form = figure(mine, measure)
        base, _ = figure(theirs, measure)
        print("| %s | %s | %s %s | %.2fx |"
              % (what, form % ours, yardstick, form % base, ours / base))


def series_points(runs, prefix):
    points = []
    for name, run in runs.items():
        if name.startswith(prefix + "/"):
            points.append((int(name.split("/")[1]), nanoseconds(run)))
    return sorted(points)


def write_chart(runs, path):
    """Log-log chart of read time against the number of names summed."""
    width, height, left, right, top, bottom = 640, 400, 70, 20, 30, 50
    lines = [(label, colour, series_points(runs, prefix)) for prefix, label, colour in SERIES]
    values = [p for _, _, points in lines for p in points]
    if not values:
        raise SystemExit("no BM_ReadSumOfNames runs in the input")
    x_low, x_high = math.log2(min(v[0] for v in values)), math.log2(max(v[0] for v in values))
    y_low = math.floor(math.log10(min(v[1] for v in values)))
    y_high = math.ceil(math.log10(max(v[1] for v in values)))

    def x_of(n):
        return left + (math.log2(n) - x_low) / max(x_high - x_low, 1) * (width - left - right)

    def y_of(ns):
        return top + (y_high - math.log10(ns)) / max(y_high - y_low, 1) * (height - top - bottom)

    svg = ['<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" '
           'font-family="sans-serif" font-size="12">' % (width, height),
           '<rect width="100%" height="100%" fill="white"/>',
           '<text x="%d" y="18" font-size="14">Re-read of a sum of n names</text>' % left]
    for exponent in range(y_low, y_high + 1):
        y = y_of(10 ** exponent)
        svg.append('<line x1="%d" x2="%d" y1="%.1f" y2="%.1f" stroke="#ddd"/>'
                   % (left, width - right, y, y))
        svg.append('<text x="%d" y="%.1f" text-anchor="end">%s ns</text>'
                   % (left - 6, y + 4, format(10 ** exponent, ",")))
    for n in sorted({v[0] for v in values}):
        x = x_of(n)
        svg.append('<line x1="%.1f" x2="%.1f" y1="%d" y2="%d" stroke="#ddd"/>'
                   % (x, x, top, height - bottom))
        svg.append('<text x="%.1f" y="%d" text-anchor="middle">%d</text>'
                   % (x, height - bottom + 16, n))
    svg.append('<text x="%d" y="%d" text-anchor="middle">names in the expression (n)</text>'
               % ((left + width - right) // 2, height - 12))
    for row, (label, colour, points) in enumerate(lines):
        path_points = " ".join("%.1f,%.1f" % (x_of(n), y_of(ns)) for n, ns in points)
        svg.append('<polyline points="%s" fill="none" stroke="%s" stroke-width="2"/>'
                   % (path_points, colour))
        for n, ns in points:
            svg.append('<circle cx="%.1f" cy="%.1f" r="3" fill="%s"/>' % (x_of(n), y_of(ns), colour))
        svg.append('<text x="%d" y="%d" fill="%s">%s</text>'
                   % (left + 10, top + 16 + 16 * row, colour, label))
    svg.append("</svg>")
    with open(path, "w", encoding="utf-8") as stream:
        stream.write("\n".join(svg) + "\n")


def main(argv):
    if len(argv) not in (2, 3):
        raise SystemExit("usage: performance_chart.py BENCH.json [CHART.svg]")
    context, runs = load_runs(argv[1])
    print("Machine: %s, %s CPUs at %s MHz; run %s"
          % (context.get("host_name", "?"), context.get("num_cpus", "?"),
             context.get("mhz_per_cpu", "?"), context.get("date", "?")))
    print()
    print_table(runs)
    if len(argv) == 3:
        write_chart(runs, argv[2])


if __name__ == "__main__":
    main(sys.argv)

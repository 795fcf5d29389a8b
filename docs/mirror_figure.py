#!/usr/bin/env python3
"""Draws docs/mirror.svg: a top view (looking down Z) of the mirror plane
x = 5 with a point, a direction and a workplane before and after mirroring.
Run from the repository root: python3 docs/mirror_figure.py"""

SCALE, WIDTH, HEIGHT = 40, 560, 360
OX, OY = 40, 320  # where (0, 0) is drawn; y grows upwards on the page


def at(x, y):
    return OX + x * SCALE, OY - y * SCALE


def mirror(x, y):
    return 10 - x, y  # the plane through (5, 0, 0) with normal (1, 0, 0)


def line(p, q, colour, width=2, dash="", arrow=False):
    (x1, y1), (x2, y2) = at(*p), at(*q)
    extra = f' stroke-dasharray="{dash}"' if dash else ""
    head = ' marker-end="url(#head)"' if arrow else ""
    return (f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="{colour}" '
            f'stroke-width="{width}"{extra}{head}/>')


def label(p, text, colour="black"):
    x, y = at(*p)
    return f'<text x="{x + 6}" y="{y - 6}" fill="{colour}">{text}</text>'


def dot(p, colour):
    x, y = at(*p)
    return f'<circle cx="{x}" cy="{y}" r="4" fill="{colour}"/>'


def figure(colour, point, direction_base, direction, origin, y_axis, x_axis, suffix):
    d_end = (direction_base[0] + direction[0], direction_base[1] + direction[1])
    parts = [dot(point, colour), label(point, "point" + suffix, colour),
             line(direction_base, d_end, colour, arrow=True),
             label(d_end, "direction" + suffix, colour),
             dot(origin, colour),
             line(origin, (origin[0] + y_axis[0], origin[1] + y_axis[1]), colour, arrow=True),
             label((origin[0] + y_axis[0], origin[1] + y_axis[1]), "Y" + suffix, colour),
             line(origin, (origin[0] + x_axis[0], origin[1] + x_axis[1]), colour, 1, "4 3", True),
             label((origin[0] + x_axis[0], origin[1] + x_axis[1]), "X" + suffix, colour)]
    return parts


def main():
    before = dict(point=(2, 6), direction_base=(1, 3), direction=(2, 1),
                  origin=(2, 1), y_axis=(1.4, 1.4), x_axis=(1.4, -1.4))
    after = dict(point=mirror(*before["point"]), direction_base=mirror(*before["direction_base"]),
                 direction=(-2, 1), origin=mirror(*before["origin"]), y_axis=(-1.4, 1.4),
                 # Z points out of the page on both sides, so X = Y x Z is the
                 # reverse of the mirror image of the old X.
                 x_axis=(1.4, 1.4))
    body = [line((5, -0.5), (5, 7.5), "grey", 3),
            label((5, 7.3), "mirror plane (normal along X)", "grey"),
            label((0.2, -0.3), "Z out of the page on both sides"),
            *figure("#1f5fbf", **before, suffix=""),
            *figure("#c0392b", **after, suffix="'")]
    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           'font-family="sans-serif" font-size="13">',
           '<defs><marker id="head" markerWidth="8" markerHeight="8" refX="7" refY="4" '
           'orient="auto"><path d="M0,0 L8,4 L0,8 z" fill="context-stroke"/></marker></defs>',
           '<rect width="100%" height="100%" fill="white"/>', *body, '</svg>']
    with open("docs/mirror.svg", "w") as out:
        out.write("\n".join(svg) + "\n")


if __name__ == "__main__":
    main()

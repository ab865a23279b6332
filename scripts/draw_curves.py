#!/usr/bin/env python3
"""Draws curve files of jobs, and formulas beside them, as an SVG picture.

usage: draw_curves.py PICTURE.svg JOB.AA=LABEL [JOB.BA=LABEL ...] [--formula LABEL=EXPRESSION ...] [--points LABEL=X,Y;X,Y;...]
                      [--x TEXT] [--y TEXT] [--title TEXT] [--scale-x S] [--scale-y S] [--log-x]

A curve file has two columns; lines with # are its head. A formula is written in x, with the functions of Python's math module, e.g.
"elastic=210000*x". It is drawn dashed over the range of the curves; points are drawn as rings. Scales multiply the values of the curve files.
"""

import argparse
import math

WIDTH, HEIGHT, LEFT, RIGHT, TOP, BOTTOM = 800, 460, 90, 20, 40, 60
COLOURS = ("#2c60b0", "#c8322f", "#34a08e", "#b07d10", "#7a3fa0", "#555555")


def read_curve(path, scale_x, scale_y):
    rows = [line for line in open(path, encoding="latin-1") if not line.startswith("#") and "*" not in line]
    return [(scale_x * float(row[:20]), scale_y * float(row[20:40])) for row in rows]


def ticks(low, high):
    """Round numbers from low to high, four to ten of them."""
    decade = 10.0 ** math.floor(math.log10((high - low) / 4))
    step = next(decade * m for m in (1, 2, 5, 10) if (high - low) / (decade * m) <= 10)
    first = math.ceil(low / step - 1e-9)
    return [i * step for i in range(first, math.floor(high / step + 1e-9) + 1)]


def axis(values, logarithmic):
    """Range, position 0..1 of a value, and ticks with their texts."""
    if logarithmic:
        low, high = (math.floor(math.log10(min(values))), math.ceil(math.log10(max(values))))
        return (lambda v: (math.log10(v) - low) / (high - low)), [(10.0 ** e, f"1e{e}") for e in range(low, high + 1)]
    low, high = min(values), max(values)
    high = high if high > low else low + 1.0
    margin = 0.03 * (high - low)
    low, high = (low if low == 0 else low - margin), high + margin
    return (lambda v: (v - low) / (high - low)), [(t, f"{t:.6g}") for t in ticks(low, high)]


def quiet_corner(drawn, height):
    """Where the key of the lines hides the least."""
    corners = [(x, y) for x in (WIDTH - 250, LEFT + 20) for y in (TOP + 14, HEIGHT - BOTTOM - height)]
    return min(corners, key=lambda c: sum(c[0] - 10 < x < c[0] + 230 and c[1] - 15 < y < c[1] + height for x, y in drawn))


def picture(curves, formulas, points, options):
    xs = [x for _, curve in curves + points for x, _ in curve if not options.log_x or x > 0]
    low, high = min(xs), max(xs)
    at = lambda i: low * (high / low) ** (i / 300) if options.log_x else low + (high - low) * i / 300
    lines = [(label, [(x, y) for x, y in curve if not options.log_x or x > 0], False) for label, curve in curves]
    for label, text in formulas:
        names = {name: getattr(math, name) for name in dir(math) if not name.startswith("_")}
        lines.append((label, [(at(i), eval(text, {"__builtins__": {}}, {**names, "x": at(i), "min": min, "max": max}))
                              for i in range(301)], True))
    to_x, x_ticks = axis(xs, options.log_x)
    to_y, y_ticks = axis([y for _, curve, _ in lines for _, y in curve] + [y for _, curve in points for _, y in curve], False)
    u = lambda x: LEFT + to_x(x) * (WIDTH - LEFT - RIGHT)
    v = lambda y: HEIGHT - BOTTOM - to_y(y) * (HEIGHT - TOP - BOTTOM)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="13">',
           f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>', f'<text x="20" y="24">{options.title}</text>']
    for t, text in x_ticks:
        out += [f'<path d="M{u(t):.1f} {TOP}V{HEIGHT - BOTTOM}" stroke="#ddd"/>',
                f'<text x="{u(t):.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">{text}</text>']
    for t, text in y_ticks:
        out += [f'<path d="M{LEFT} {v(t):.1f}H{WIDTH - RIGHT}" stroke="#ddd"/>',
                f'<text x="{LEFT - 6}" y="{v(t) + 4:.1f}" text-anchor="end">{text}</text>']
    out += [f'<path d="M{LEFT} {TOP}V{HEIGHT - BOTTOM}H{WIDTH - RIGHT}" fill="none" stroke="#333"/>',
            f'<text x="{(LEFT + WIDTH - RIGHT) / 2}" y="{HEIGHT - 16}" text-anchor="middle">{options.x}</text>',
            f'<text transform="translate(20 {(TOP + HEIGHT - BOTTOM) / 2}) rotate(-90)" text-anchor="middle">{options.y}</text>']
    drawn = [(u(x), v(y)) for curve in [line[1] for line in lines] + [point[1] for point in points] for x, y in curve]
    key_x, key_y = quiet_corner(drawn, 20 * (len(lines) + len(points)))
    for i, (label, curve, dashed) in enumerate(lines):
        style = f'stroke="{COLOURS[i % len(COLOURS)]}" stroke-width="{1.2 if dashed else 2}"' + (' stroke-dasharray="6 4"' if dashed else "")
        path = "L".join(f"{u(x):.1f} {v(y):.1f}" for x, y in curve)
        out += [f'<path d="M{path}" fill="none" {style}/>', f'<path d="M{key_x} {key_y + 20 * i}h30" {style}/>',
                f'<text x="{key_x + 38}" y="{key_y + 4 + 20 * i}">{label}</text>']
    for i, (label, curve) in enumerate(points, len(lines)):
        colour = COLOURS[i % len(COLOURS)]
        ring = lambda x, y: f'<circle cx="{x:.1f}" cy="{y:.1f}" r="4" fill="white" stroke="{colour}" stroke-width="1.5"/>'
        out += [ring(u(x), v(y)) for x, y in curve]
        out += [ring(key_x + 15, key_y + 20 * i), f'<text x="{key_x + 38}" y="{key_y + 4 + 20 * i}">{label}</text>']
    return "\n".join(out + ["</svg>"]) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("picture")
    parser.add_argument("curves", nargs="*", metavar="CURVE=LABEL")
    for name in ("--formula", "--points"):
        parser.add_argument(name, action="append", default=[])
    for name in ("--x", "--y", "--title"):
        parser.add_argument(name, default="")
    for name in ("--scale-x", "--scale-y"):
        parser.add_argument(name, type=float, default=1.0)
    parser.add_argument("--log-x", action="store_true")
    options = parser.parse_args()
    split = [item.partition("=") for item in options.curves]
    curves = [(label or path, read_curve(path, options.scale_x, options.scale_y)) for path, _, label in split]
    formulas = [tuple(item.split("=", 1)) for item in options.formula]
    points = [(label, [tuple(float(v) for v in pair.split(",")) for pair in values.split(";")])
              for label, values in (item.split("=", 1) for item in options.points)]
    with open(options.picture, "w", encoding="utf-8") as out:
        out.write(picture(curves, formulas, points, options))


if __name__ == "__main__":
    main()

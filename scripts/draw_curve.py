#!/usr/bin/env python3
"""Draws curve files of a job as an SVG picture: the first with dots at its points, the others as thin lines.

usage: draw_curve.py PICTURE.svg CURVE=LABEL [CURVE=LABEL ...] [--x TEXT] [--y TEXT] [--flip]

A curve file holds two values a line; lines that begin with # are skipped. --flip draws minus x.
"""

import argparse
import math

WIDTH, HEIGHT, LEFT, RIGHT, TOP, BOTTOM = 720, 420, 80, 20, 30, 50
COLOURS = ("#2c60b0", "#c8322f", "#34a08e", "#444444")


def read_curve(path, flip):
    points = []
    for line in open(path, encoding="latin-1"):
        if line.strip() and not line.startswith("#"):
            x, y = (float(v) for v in line.split()[:2])
            points.append((-x if flip else x, y))
    return points


def ticks(low, high):
    """About six round values from low to high."""
    step = 10.0 ** math.floor(math.log10((high - low) / 5.0))
    step *= min((f for f in (1, 2, 5, 10) if (high - low) / (f * step) <= 7), default=10)
    return [step * i for i in range(math.ceil(low / step - 1e-9), math.floor(high / step + 1e-9) + 1)]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("picture")
    parser.add_argument("curves", nargs="+")
    parser.add_argument("--x", default="")
    parser.add_argument("--y", default="")
    parser.add_argument("--flip", action="store_true")
    options = parser.parse_args()
    named = [one.partition("=") for one in options.curves]
    curves = [(read_curve(path, options.flip), label) for path, _, label in named]
    xs, ys = zip(*[point for points, _ in curves for point in points])
    (x0, x1), (y0, y1) = ((min(v), max(v) if max(v) > min(v) else min(v) + 1.0) for v in (xs, ys))

    def place(x, y):
        return (LEFT + (x - x0) / (x1 - x0) * (WIDTH - LEFT - RIGHT),
                HEIGHT - BOTTOM - (y - y0) / (y1 - y0) * (HEIGHT - TOP - BOTTOM))

    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" font-family="sans-serif" font-size="13">',
             f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>']
    for x in ticks(x0, x1):
        u = place(x, 0)[0]
        lines.append(f'<path d="M{u:.1f},{TOP} V{HEIGHT - BOTTOM}" stroke="#ddd"/>'
                     f'<text x="{u:.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">{x:.4g}</text>')
    for y in ticks(y0, y1):
        v = place(0, y)[1]
        lines.append(f'<path d="M{LEFT},{v:.1f} H{WIDTH - RIGHT}" stroke="{"#888" if abs(y) < 1e-12 else "#ddd"}"/>'
                     f'<text x="{LEFT - 8}" y="{v + 4:.1f}" text-anchor="end">{y:.4g}</text>')
    for number, (points, label) in enumerate(curves):
        colour = COLOURS[number % len(COLOURS)]
        path = " ".join(f"{u:.1f},{v:.1f}" for u, v in (place(*p) for p in points))
        lines.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="{1.6 if number == 0 else 1}"/>')
        if number == 0:
            lines += [f'<circle cx="{u:.1f}" cy="{v:.1f}" r="3" fill="{colour}"/>' for u, v in (place(*p) for p in points)]
        lines.append(f'<text x="{LEFT + 12 + 200 * number}" y="{TOP - 10}" fill="{colour}">{label}</text>')
    lines += [f'<text x="{(LEFT + WIDTH - RIGHT) / 2:.0f}" y="{HEIGHT - 12}" text-anchor="middle">{options.x}</text>',
              f'<text transform="translate(18,{(TOP + HEIGHT - BOTTOM) / 2:.0f}) rotate(-90)" text-anchor="middle">{options.y}</text>', "</svg>"]
    with open(options.picture, "w", encoding="utf-8") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Draws the deformed mesh of a job as an SVG picture, coloured by displacement or by a mean stress.

usage: draw_results.py JOB.post.msh JOB.post.res PICTURE.svg [--scale S] [--stress xx] [--turn DEGREES] [--title TEXT]

The last increment of the result file is drawn. Without --scale the largest displacement is drawn as a tenth of the model's size.
"""

import argparse
import math

BRICK_FACES = ((0, 3, 2, 1), (4, 5, 6, 7), (0, 1, 5, 4), (1, 2, 6, 5), (2, 3, 7, 6), (3, 0, 4, 7))
TETRA_FACES = ((0, 2, 1), (0, 1, 3), (1, 2, 3), (2, 0, 3))
COMPONENTS = ("xx", "yy", "zz", "xy", "xz", "yz")


def read_mesh(path):
    nodes, elements, section = {}, {}, None
    for line in open(path, encoding="latin-1"):
        word = line.strip()
        if word in ("Coordinates", "Elements"):
            section = word
        elif word.lower().startswith("end"):
            section = None
        elif section == "Coordinates":
            # The values touch each other, so they are found by their columns.
            nodes[int(line[:9])] = tuple(float(line[at:at + 12]) for at in (9, 21, 33))
        elif section == "Elements":
            fields = [int(v) for v in line.split()]
            elements[fields[0]] = fields[1:-1]
    return nodes, elements


def read_last_blocks(path):
    """The values of the last displacement and stress blocks: by node, and by element averaged over its points."""
    displacements, stresses, target = {}, {}, None
    inside = False
    for line in open(path, encoding="latin-1"):
        if line.startswith("Result"):
            target = displacements if '"DISPLACEMENTS"' in line else stresses if '"STRESSES//COMPOSITE"' in line else None
            if target is not None:
                target.clear()
        elif line.startswith(" Values"):
            inside = True
        elif line.startswith(" End Values"):
            inside = False
        elif inside and target is displacements:
            fields = line.split()
            target[int(fields[0])] = tuple(float(v) for v in fields[1:4])
        elif inside and target is stresses:
            fields = line.split()
            if not line.startswith("     "):
                element = int(fields.pop(0))
                target[element] = []
            target[element].append([float(v) for v in fields])
    means = {e: [sum(column) / len(rows) for column in zip(*rows)] for e, rows in stresses.items()}
    return displacements, means


def outer_faces(elements):
    seen = {}
    for element, nodes in elements.items():
        for face in BRICK_FACES if len(nodes) == 8 else TETRA_FACES:
            corners = [nodes[i] for i in face]
            key = tuple(sorted(corners))
            seen[key] = None if key in seen else (element, corners)
    return [face for face in seen.values() if face]


def colour(fraction):
    """From blue over green and yellow to red."""
    stops = ((0.0, (44, 96, 176)), (0.35, (52, 160, 142)), (0.65, (240, 210, 90)), (1.0, (200, 50, 47)))
    fraction = min(1.0, max(0.0, fraction))
    for (a, low), (b, high) in zip(stops, stops[1:]):
        if fraction <= b:
            t = (fraction - a) / (b - a)
            return "#" + "".join(f"{round(p + t * (q - p)):02x}" for p, q in zip(low, high))
    return "#c8322f"


def projector(turn):
    a, b = math.radians(turn), math.radians(25.0)

    def project(x):
        u = x[0] * math.cos(a) - x[1] * math.sin(a)
        v = x[0] * math.sin(a) + x[1] * math.cos(a)
        return u, v * math.sin(b) + x[2] * math.cos(b), v * math.cos(b) - x[2] * math.sin(b)

    return project


def picture(nodes, faces, displacements, value_of, scale, turn, title):
    project = projector(turn)
    moved = {n: project([c + scale * d for c, d in zip(x, displacements.get(n, (0, 0, 0)))]) for n, x in nodes.items()}
    values = [value_of(face) for face in faces]
    low, high = min(values), max(values)
    span = high - low or 1.0
    xs, ys = [p[0] for p in moved.values()], [p[1] for p in moved.values()]
    zoom = min(760 / (max(xs) - min(xs) or 1), 380 / (max(ys) - min(ys) or 1))
    height = (max(ys) - min(ys)) * zoom + 110
    left = (800 - (max(xs) - min(xs)) * zoom) / 2
    line_width = 0.5 if len(faces) < 1000 else 0.2

    def place(n):
        return f"{(moved[n][0] - min(xs)) * zoom + left:.1f},{(max(ys) - moved[n][1]) * zoom + 45:.1f}"

    drawn = sorted(zip(faces, values), key=lambda item: -sum(moved[n][2] for n in item[0][1]) / len(item[0][1]))
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 800 {height:.0f}" font-family="sans-serif" font-size="13">',
             f'<rect width="800" height="{height:.0f}" fill="white"/>', f'<text x="20" y="24">{title}</text>']
    for (_, corners), value in drawn:
        points = " ".join(place(n) for n in corners)
        lines.append(f'<polygon points="{points}" fill="{colour((value - low) / span)}" stroke="#333" stroke-width="{line_width}"/>')
    for i in range(60):
        lines.append(f'<rect x="{250 + 5 * i}" y="{height - 34:.0f}" width="5" height="12" fill="{colour(i / 59)}"/>')
    lines += [f'<text x="240" y="{height - 23:.0f}" text-anchor="end">{low:.4g}</text>',
              f'<text x="560" y="{height - 23:.0f}">{high:.4g}</text>', "</svg>"]
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("mesh", "results", "picture"):
        parser.add_argument(name)
    parser.add_argument("--scale", type=float)
    parser.add_argument("--stress", choices=COMPONENTS)
    parser.add_argument("--turn", type=float, default=-35.0)
    parser.add_argument("--title", default="")
    options = parser.parse_args()
    nodes, elements = read_mesh(options.mesh)
    displacements, stresses = read_last_blocks(options.results)
    size = {n: math.dist((0, 0, 0), d) for n, d in displacements.items()}
    if options.scale is None:
        extent = max(max(axis) - min(axis) for axis in zip(*nodes.values()))
        options.scale = 0.1 * extent / (max(size.values()) or 1.0)
    if options.stress:
        faces = [f for f in outer_faces({e: elements[e] for e in stresses})]
        component = COMPONENTS.index(options.stress)
        value_of, label = (lambda f: stresses[f[0]][component]), f"stress {options.stress}, mean of each element"
    else:
        faces = outer_faces(elements)
        value_of, label = (lambda f: sum(size[n] for n in f[1]) / len(f[1])), "displacement"
    title = f"{options.title + ': ' if options.title else ''}{label} (displacements drawn x {options.scale:.3g})"
    with open(options.picture, "w", encoding="utf-8") as out:
        out.write(picture(nodes, faces, displacements, value_of, options.scale, options.turn, title))


if __name__ == "__main__":
    main()

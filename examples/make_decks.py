#!/usr/bin/env python3
"""Writes the decks of the examples. A deck is plain text: change a number there, or a size here, and run again."""

import pathlib

HERE = pathlib.Path(__file__).parent


class Pieces:
    """Blocks that do not touch, side by side in y; places and numbers carry the number of the block in front."""

    def __init__(self, blocks, gap):
        self.blocks = blocks
        self.sizes = [len(list(block.places())) for block in blocks]
        self.gap = gap

    def node(self, piece, i, j, k):
        return sum(self.sizes[:piece]) + self.blocks[piece].node(i, j, k)

    def places(self):
        for piece, block in enumerate(self.blocks):
            for place in block.places():
                yield piece, *place

    def node_cards(self):
        y = 0.0
        for piece, block in enumerate(self.blocks):
            for card in block.node_cards():
                number, *x = card.split()
                yield f"{sum(self.sizes[:piece]) + int(number)} {x[0]} {float(x[1]) + y:.10g} {x[2]}"
            y += block.lengths[1] + self.gap

    def element_cards(self, composite=lambda i, j, k: 1, step=lambda i, j, k: 1):
        number = 0
        for piece, block in enumerate(self.blocks):
            for card in block.element_cards(composite, step):
                number += 1
                words = card.split()
                nodes = [str(sum(self.sizes[:piece]) + int(word)) for word in words[9:17]]
                yield " ".join([str(number), *words[1:9], *nodes, *words[17:]])


class Block:
    """A block of nx x ny x nz bricks; element numbers run along x, then y, then z.

    Node numbers run first along the direction with the fewest bricks and last along the one with the most: that keeps
    the numbers within a brick close together, and the band of the equations narrow.
    """

    def __init__(self, nx, ny, nz, lengths):
        self.n = (nx, ny, nz)
        self.lengths = lengths
        self.strides = [0, 0, 0]
        stride = 1
        for axis in sorted(range(3), key=lambda a: self.n[a]):
            self.strides[axis] = stride
            stride *= self.n[axis] + 1

    def node(self, i, j, k):
        return 1 + sum(place * stride for place, stride in zip((i, j, k), self.strides))

    def places(self):
        for k in range(self.n[2] + 1):
            for j in range(self.n[1] + 1):
                for i in range(self.n[0] + 1):
                    yield i, j, k

    def node_cards(self):
        for place in sorted(self.places(), key=lambda p: self.node(*p)):
            x = [p * length / n for p, length, n in zip(place, self.lengths, self.n)]
            yield f"{self.node(*place)} " + " ".join(f"{v:.10g}" for v in x)

    def element_cards(self, composite=lambda i, j, k: 1, step=lambda i, j, k: 1):
        number = 0
        for k in range(self.n[2]):
            for j in range(self.n[1]):
                for i in range(self.n[0]):
                    number += 1
                    low = ((i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1))
                    nodes = [self.node(x, y, z) for z in (k, k + 1) for x, y in low]
                    yield (f"{number} {composite(i, j, k)} 0 1.0 6 {step(i, j, k)} 8 2 1 "
                           + " ".join(map(str, nodes)) + " 3*0.0")


def values(numbers):
    """Numbers of a card; equal neighbours as a repeat count."""
    words = [f"{v:.10g}" for v in numbers]
    starts = [i for i, word in enumerate(words) if i == 0 or word != words[i - 1]] + [len(words)]
    return " ".join(words[a] if b - a == 1 else f"{b - a}*{words[a]}" for a, b in zip(starts, starts[1:]))


# Slots of the cards of a material that hold slots alone, in the order of the cards.
SLOT_CARDS = ([*range(1, 30)], [30, 31, 51, 52, 53, 54, *range(93, 101)], [32, 33, 34, *range(36, 44), 68, 69],
              [44, 72, 73, *range(74, 80), *range(45, 49), 70, 71], [49, 50], [*range(55, 65)])


def material(title, E, nu, G=(0, 0, 0), density=0.0, reference=0.0, young_curve=(), codes=(2, 2, 0, 2, 1, 1), slots=None):
    """E: Exx Eyy Ezz; nu: xy, xz, yz (the strain in the second direction under a stress in the first). codes: criterion,
    potential, law, flow, hardening variable, tangent; slots: {slot: value} on top of the elastic ones."""
    xy, xz, yz = nu
    yx, zx, zy = xy * E[1] / E[0], xz * E[2] / E[0], yz * E[2] / E[1]
    row = {1: E[0], 2: xy, 4: density, 20: 1, 26: 1, 36: yx, 37: E[1], 38: xz, 39: zx, 40: E[2], 41: yz, 42: zy, 43: G[0],
           68: G[1], 69: G[2], 64: reference, **{place: 1 for place in (45, 46, 47, 48, 70, 71)}, **(slots or {})}
    cards = [values(row.get(place, 0) for place in card) for card in SLOT_CARDS]
    return [title, "@", " ".join(map(str, codes)), *cards,
            str(len(young_curve)), *[values(point) for point in young_curve], "0", "0"]


def isotropic(title, E, nu, **more):
    return material(title, (E, E, E), (nu, nu, nu), **more)


def increment(repeat, factor, tolerance=1e-7, iterations=30, output=(0, 2, 0, 0), algorithm=2, post=(1, 1, 1, 0), time=1.0):
    codes = " ".join(map(str, output))
    return f"{repeat} {factor:.10g} {time} {tolerance:g} {iterations} {codes} {algorithm} 0 0.0 0 0 0 " \
           + " ".join(map(str, post)) + " 16*0"


def load_step(title, fixities, increments, repeats, active=(1,), point_loads=None, last_node=0, gravity=None, faces=(),
              temperature=0.0, keep=0, dynamic=False):
    lines = [title, f"{len(active)} " + " ".join(map(str, active)),
             f"{keep} {repeats} {int(bool(point_loads))} {int(gravity is not None)} {int(bool(faces))} "
             f"{'1 4*0' if dynamic else '5*0'} {temperature:g}"]
    if point_loads:
        loads = {**{last_node: (0, 0, 0)}, **point_loads}
        for node in sorted(loads):
            lines += [str(node), " ".join(f"{v:.10g}" for v in loads[node])]
    if gravity is not None:
        g, steps = gravity
        lines += [f"0 0 0 {g:g}", f"{len(steps)} " + " ".join(map(str, steps))]
    if faces:
        lines.append(str(len(faces)))
        for element, nodes, load in faces:
            one = " ".join(f"{v:.10g}" for v in load)
            lines += [str(element), " ".join(map(str, nodes)), f"{one} {one} {one}"]
    lines += ["end of loads", f"{len(fixities)} 0"]
    lines += [f"{node} {code:03d} " + " ".join(f"{v:g}" for v in values) for node, code, values in fixities]
    return lines + ["0", "0"] + increments


def curve(title, x, x_card, y, y_card):
    return [title, x, *x_card, y, *y_card]


def deck(name, block, materials, composites, steps, title, curves=(), large=0, push=1, tangent=0,
         composite=lambda i, j, k: 1, step=lambda i, j, k: 1, stages=1, NSOLV=4, home=HERE):
    nodes = list(block.node_cards())
    elements = list(block.element_cards(composite, step))
    lines = ["MEC3D", f"1 {large} {tangent} {push} 0", "START1", f'"{title}"',
             f"{len(nodes)} {len(elements)} {len(composites)} {max(map(len, composites))} {len(materials)} {stages} "
             f"1000 0 {NSOLV} 0 0 1 0 0", *elements]
    for number, layers in enumerate(composites, 1):
        lines.append(f"{number} {len(layers)}")
        for fraction, angle, mat in layers:
            kind, card = ("P", f"1 {mat} 1.0") if isinstance(mat, int) else mat
            lines += [f"{kind} {fraction:g} {angle:g} 0.0 0.0", card]
    lines += nodes
    for number, cards in enumerate(materials, 1):
        lines += [str(number) if card == "@" else card for card in cards]
    lines += ["end of materials", f"CURV,{len(curves):5d}"]
    for one in curves:
        lines += one
    lines.append(str(len(steps)))
    for one in steps:
        lines += one
    folder = home / name
    folder.mkdir(exist_ok=True)
    (folder / f"{name}.dts").write_text("\n".join(lines) + "\n")


def fibre_ply(matrix, fibre, fibre_share):
    """A serial-parallel layer of two materials, its fibres along x of the layer."""
    return "SP", f"{matrix} {1 - fibre_share:g} {fibre} {fibre_share:g} 1 0 0 0 0 0"


def clamped(block):
    return [(block.node(*p), 111, (0, 0, 0)) for p in block.places() if p[0] == 0]


def spread(block, total, where):
    """A force shared among the nodes of a rectangular face as a constant traction does it."""
    chosen = [p for p in block.places() if where(p)]
    weight = {p: 1.0 for p in chosen}
    for axis in range(3):
        values = sorted({p[axis] for p in chosen})
        if len(values) > 1:
            for p in chosen:
                weight[p] *= 0.5 if p[axis] in (values[0], values[-1]) else 1.0
    share = 1.0 / sum(weight.values())
    return {block.node(*p): tuple(v * weight[p] * share for v in total) for p in chosen}


def cantilever():
    block = Block(48, 2, 4, (8.0, 0.5, 1.0))
    last = block.node(*block.n)
    tip = block.node(48, 1, 2)
    step = load_step("end load", clamped(block), [increment(2, 0.5)], 2, last_node=last,
                     point_loads=spread(block, (0, 0, -50.0), lambda p: p[0] == 48))
    curves = [curve("tip deflection", "X-DISPL", [f"{tip} 3 1"], "Y-RCTOT", ["3"])]
    deck("cantilever", block, [isotropic("steel", 210000.0, 0.3)], [[(1.0, 0.0, 1)]], [step],
         "cantilever 8 x 0.5 x 1 under an end load of 50", curves)


def layered_plate():
    """A quarter of the plate: planes of symmetry at x = 0 and y = 0, supported edges at x = 60 and y = 60."""
    n, half, pressure = 12, 60.0, 0.05
    block = Block(n, n, 4, (half, half, 8.0))
    ply = material("carbon ply", (140000.0, 10000.0, 10000.0), (0.3, 0.3, 0.4), G=(5000.0, 5000.0, 3500.0))
    resin = isotropic("resin", 3500.0, 0.35)
    fixities = []
    for p in block.places():
        held_x, held_y = p[0] == 0 or p[1] == n, p[1] == 0 or p[0] == n
        held_z = p[0] == n or p[1] == n
        code = 100 * held_x + 10 * held_y + held_z
        if code:
            fixities.append((block.node(*p), code, (0, 0, 0)))
    faces = []
    first = 3 * n * n
    for e in range(first, first + n * n):
        j, i = divmod(e - first, n)
        at = [block.node(i, j, 4), block.node(i + 1, j, 4), block.node(i + 1, j + 1, 4), block.node(i, j + 1, 4)]
        faces += [(e + 1, (at[0], at[1], at[2]), (0, 0, -pressure)), (e + 1, (at[0], at[2], at[3]), (0, 0, -pressure))]
    step = load_step("pressure on the top", fixities, [increment(1, 1.0, output=(0, 2, 1, 0))], 1, faces=faces)
    composites = [[(1.0, 0.0, 1)], [(1.0, 90.0, 1)], [(0.45, 45.0, 1), (0.45, -45.0, 1), (0.1, 0.0, 2)]]
    order = {0: 1, 1: 2, 2: 3, 3: 1}
    deck("layered_plate", block, [ply, resin], composites, [step],
         "quarter of a plate of plies 0 / 90 / +-45 with resin / 0", composite=lambda i, j, k: order[k])


def construction_stages():
    """A wide fill: a column of ground of 1 x 1 that can only move up and down."""
    block = Block(1, 1, 12, (1.0, 1.0, 12.0))
    sides = [(block.node(*p), 111 if p[2] == 0 else 110, (0, 0, 0)) for p in block.places()]
    ground = isotropic("compacted fill", 20000.0, 0.3, density=2.0)
    steps = [load_step(f"lift {lift} is placed", sides, [increment(1, 1.0)], 1, active=range(1, lift + 1), keep=1,
                       gravity=(9.81, (lift,))) for lift in (1, 2, 3)]
    middle, top = block.node(0, 0, 8), block.node(0, 0, 12)
    curves = [curve("top of lift 2", "X-IINCS", [], "Y-DISPL", [f"{middle} 3 1"]),
              curve("top of lift 3", "X-IINCS", [], "Y-DISPL", [f"{top} 3 1"])]
    deck("construction_stages", block, [ground], [[(1.0, 0.0, 1)]], steps, "a wide fill placed in three lifts of 4",
         curves, step=lambda i, j, k: 1 + k // 4, stages=3)


def large_deflection():
    n, length, width, depth, E = 200, 10.0, 1.0, 0.4, 2.0e6
    block = Block(n, 1, 2, (length, width, depth))
    last = block.node(*block.n)
    force = 3.0 * E * width * depth ** 3 / 12 / length ** 2
    step = load_step("end load, dead", clamped(block), [increment(12, 1 / 12, tolerance=1e-7)], 12, last_node=last,
                     point_loads=spread(block, (0, 0, force), lambda p: p[0] == n))
    tip = block.node(n, 0, 1)
    curves = [curve("tip", "X-DISPL", [f"{tip} 3 1"], "Y-RCTOT", ["3"])]
    deck("large_deflection", block, [isotropic("spring steel", E, 0.0)], [[(1.0, 0.0, 1)]], [step],
         "a strip bent far out of its plane", curves, large=1, push=2, tangent=1)


def temperature():
    block = Block(4, 2, 2, (2.0, 1.0, 1.0))
    symmetric = [(block.node(*p), (100 if p[0] == 0 else 0) + (10 if p[1] == 0 else 0) + (1 if p[2] == 0 else 0), (0, 0, 0))
                 for p in block.places() if 0 in p]
    steel = isotropic("heated steel", 210000.0, 0.3, reference=20.0,
                      young_curve=((20, 210000), (100, 210000), (200, 189000), (400, 147000), (600, 65100)))
    last = block.node(*block.n)
    pull = spread(block, (100.0, 0, 0), lambda p: p[0] == 4)
    steps = [load_step(f"at {T} degrees", symmetric, [increment(1, 1.0 if T == 20 else 0.0)], 1, last_node=last,
                       point_loads=pull, temperature=T, keep=1) for T in (20, 200, 300, 500, 600)]
    end = block.node(4, 0, 0)
    curves = [curve("elongation", "X-IINCS", [], "Y-DISPL", [f"{end} 1 1"])]
    deck("temperature", block, [steel], [[(1.0, 0.0, 1)]], steps, "a loaded bar that is heated", curves)


def relaxing_polymer():
    """Two bars that do not touch: one is stretched and held, the other carries a constant pull."""
    bars = Pieces([Block(4, 1, 1, (4.0, 1.0, 1.0)) for _ in range(2)], 1.0)
    held, pulled = 0, 1
    fixities = []
    for p in bars.places():
        code = 100 * (p[1] == 0) + 10 * (p[2] == 0) + (p[3] == 0)
        if p[0] == held and p[1] == 4:
            fixities.append((bars.node(*p), 100 + code, (0.04, 0, 0)))
        elif code:
            fixities.append((bars.node(*p), code, (0, 0, 0)))
    pull = {bars.node(pulled, 4, j, k): (12.0 / 4, 0, 0) for j in range(2) for k in range(2)}
    last = bars.node(pulled, 4, 1, 1)
    polymer = isotropic("polymer", 3000.0, 0.35, codes=(2, 2, 6, 2, 1, 1), slots={49: 1800.0, 50: 100.0})
    step = load_step("stretched and pulled at once, then left alone", fixities,
                     [increment(1, 1.0, time=0.01), increment(50, 0.0, time=10.0)], 51, point_loads=pull, last_node=last)
    curves = [curve("stress, held", "X-IINCS", [], "Y-STRES", ["1 1 1 0 0"]),
              curve("end, pulled", "X-IINCS", [], "Y-DISPL", [f"{last} 1 1"])]
    deck("relaxing_polymer", bars, [polymer], [[(1.0, 0.0, 1)]], [step], "a polymer that relaxes and creeps", curves)


def fatigue_life():
    """Six bars of one brick, each stretched to another share of the strength and held while the cycles run."""
    E, strength, shares = 75000.0, 300.0, (0.99, 0.97, 0.94, 0.90, 0.85, 0.80)
    bars = Pieces([Block(1, 1, 1, (1.0, 1.0, 1.0)) for _ in shares], 0.5)
    fixities = []
    for p in bars.places():
        bar, x = p[0], p[1]
        code = 100 + 10 * (p[2] == 0) + (p[3] == 0)
        fixities.append((bars.node(*p), code, (shares[bar] * strength / E if x else 0, 0, 0)))
    alloy = isotropic("alloy", E, 0.3, codes=(2, 2, 4, 2, 1, 1), slots={30: strength, 31: 1.0, 51: 2, 54: 50.0})
    step = load_step("stretched, then cycled", fixities, [increment(1, 1.0, time=0.25)], 1, dynamic=True)
    curves = [curve(f"{share:g} of strength", "X-IINCS", [], "Y-STRES", [f"{bar} 1 1 0 0"]) for bar, share in enumerate(shares, 1)]
    deck("fatigue_life", bars, [alloy], [[(1.0, 0.0, 1)]], [step], "bars that fail after cycles", curves, NSOLV=2)
    (HERE / "fatigue_life" / "fatigue_life.din").write_text("0 0.25 1 400 0 0.0 0.0 0.25 0.5 1 10.0 1.0 0.0 7.0 1\n1.0 0.0\n")


if __name__ == "__main__":
    for example in (cantilever, layered_plate, construction_stages, large_deflection, temperature, relaxing_polymer, fatigue_life):
        example()

#!/usr/bin/env python3
"""Writes the decks of the examples. A deck is plain text: change a number there, or a size here, and run again."""

import math
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

    def element_cards(self, composite=lambda *place: 1, step=lambda *place: 1):
        number = 0
        for piece, block in enumerate(self.blocks):
            for card in block.element_cards(lambda *place: composite(piece, *place), lambda *place: step(piece, *place)):
                number += 1
                words = card.split()
                nodes = [str(sum(self.sizes[:piece]) + int(word)) for word in words[9:17]]
                yield " ".join([str(number), *words[1:9], *nodes, *words[17:]])


class Block:
    """A block of nx x ny x nz bricks; element numbers run along x, then y, then z.

    Node numbers run first along the direction with the fewest bricks and last along the one with the most: that keeps
    the numbers within a brick close together, and the band of the equations narrow.
    """

    def __init__(self, nx, ny, nz, lengths, fracture_length=1.0):
        self.n = (nx, ny, nz)
        self.lengths = lengths
        self.fracture_length = fracture_length
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

    def position(self, place):
        return [p * length / n for p, length, n in zip(place, self.lengths, self.n)]

    def node_cards(self):
        for place in sorted(self.places(), key=lambda p: self.node(*p)):
            yield f"{self.node(*place)} " + " ".join(f"{v:.10g}" for v in self.position(place))

    def element_cards(self, composite=lambda i, j, k: 1, step=lambda i, j, k: 1):
        number = 0
        for k in range(self.n[2]):
            for j in range(self.n[1]):
                for i in range(self.n[0]):
                    number += 1
                    low = ((i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1))
                    nodes = [self.node(x, y, z) for z in (k, k + 1) for x, y in low]
                    yield (f"{number} {composite(i, j, k)} 0 {self.fracture_length} 6 {step(i, j, k)} 8 2 1 "
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


def increment(repeat, factor, tolerance=1e-7, iterations=30, output=(0, 2, 0, 0), algorithm=2, post=(1, 1, 1, 0),
              arc="0 0.0 0 0", time=1.0):
    codes = " ".join(map(str, output))
    return f"{repeat} {factor:.10g} {time} {tolerance:g} {iterations} {codes} {algorithm} {arc} 0 " \
           + " ".join(map(str, post)) + " 16*0"


def load_step(title, fixities, increments, repeats, active=(1,), point_loads=None, last_node=0, gravity=None, faces=(),
              temperature=0.0, keep=0, dynamic=0):
    lines = [title, f"{len(active)} " + " ".join(map(str, active)),
             f"{keep} {repeats} {int(bool(point_loads))} {int(gravity is not None)} {int(bool(faces))} "
             + (f"1 {dynamic} 3*0" if dynamic else "5*0") + f" {temperature:g}"]
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
         composite=lambda *place: 1, step=lambda *place: 1, stages=1, NSOLV=4, most=1000, home=HERE):
    nodes = list(block.node_cards())
    elements = list(block.element_cards(composite, step))
    lines = ["MEC3D", f"1 {large} {tangent} {push} 0", "START1", f'"{title}"',
             f"{len(nodes)} {len(elements)} {len(composites)} {max(map(len, composites))} {len(materials)} {stages} "
             f"{most} 0 {NSOLV} 0 0 1 0 0", *elements]
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


def shallow_arch():
    """Half of the arch z = rise cos(pi x / span): the crown at x = 0, a pin in the middle of the depth at x = span / 2."""
    n, span, rise, depth, E = 50, 20.0, 0.5, 0.4, 1.0e6

    def shape(i):
        return math.cos(math.pi * i / 2 / n)

    class Arch(Block):
        def position(self, place):
            x, y, z = super().position(place)
            return x, y, z - depth / 2 + rise * shape(place[0])

    block = Arch(n, 1, 2, (span / 2, 1.0, depth))
    fixities = []
    for p in block.places():
        code = 100 * (p[0] == 0) + 10 * (p[1] == 0) + 101 * (p[0] == n and p[2] == 1)
        if code:
            fixities.append((block.node(*p), code, (0, 0, 0)))
    part = span / 2 / n
    loads = {block.node(i, j, 1): (0, 0, -part / 2 * shape(i) * (0.5 if i in (0, n) else 1.0))
             for i in range(n + 1) for j in (0, 1)}
    crown = block.node(0, 0, 1)
    step = load_step("a load of the arch's own shape", fixities,
                     [increment(25, 1.0, output=(0, 1, 0, 0), post=(1, 0, 0, 0), arc=f"4 -0.04 {crown} 3")], 25,
                     last_node=block.node(*block.n), point_loads=loads)
    curves = [curve("crown", "X-DISPL", [f"{crown} 3 1"], "Y-RCTOT", ["3"])]
    deck("shallow_arch", block, [isotropic("spring steel", E, 0.0)], [[(1.0, 0.0, 1)]], [step],
         "a shallow arch that snaps through", curves, large=1, NSOLV=2)

    def reaction(w):
        """Of half the arch by the closed form, with the stiffness of the bricks in bending."""
        bending = E * depth ** 3 / 12 * (1 + 0.5 * (part / depth) ** 2)
        c = rise - w
        return (math.pi / span) ** 4 * (bending * w + E * depth / 4 * (rise ** 2 - c ** 2) * c) * span / math.pi

    rows = [f"{-w / 100:.2f} {reaction(w / 100):.8f}" for w in range(101)]
    (HERE / "shallow_arch" / "closed_form.txt").write_text("\n".join(rows) + "\n")


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


def cyclic_metal_bar():
    """Two bars that do not touch, pulled and pushed by 1 % in turn: one hardens kinematically, one isotropically."""
    bars = Pieces([Block(2, 1, 1, (2.0, 1.0, 1.0)) for _ in range(2)], 1.0)
    supports = [(bars.node(*p), 100 * (p[1] in (0, 2)) + 10 * (p[2] == 0) + (p[3] == 0), p[1] == 2) for p in bars.places()]

    def half_cycle(way):
        fixities = [(node, code, (way if end else 0, 0, 0)) for node, code, end in supports if code]
        count = 10 if way == 0.02 else 20
        return load_step(f"the ends move by {way:g}", fixities, [increment(count, 1.0 / count)], count)

    kinematic = isotropic("metal that remembers", 200000.0, 0.3, codes=(2, 2, 3, 2, 3, 2),
                          slots={7: 200.0, 32: 8000.0, 33: 1000.0, 34: 0.05})
    plain = isotropic("metal that only gets harder", 200000.0, 0.3, codes=(2, 2, 8, 2, 3, 2),
                      slots={7: 200.0, 8: 1, 9: 1, 10: 1, 11: 9000.0 / (1 + 9000.0 / 200000.0), 12: 1})
    node = bars.node(0, 2, 0, 0)
    curves = [curve(name, "X-DISPL", [f"{node} 1 1"], "Y-STRES", [f"{element} 1 1 0 0"])
              for name, element in (("kinematic", 1), ("isotropic", 3))]
    deck("cyclic_metal_bar", bars, [kinematic, plain], [[(1.0, 0.0, 1)], [(1.0, 0.0, 2)]],
         [half_cycle(way) for way in (0.02, -0.04, 0.04, -0.04)], "two metals in cycles of 1 %", curves,
         composite=lambda piece, *place: 1 + piece, NSOLV=2)


def earthquake():
    """Level ground: a column of 1 x 1 that moves along x alone. Its .din holds a made-up record of 10 s."""
    depth, n = 30.0, 15
    block = Block(1, 1, n, (1.0, 1.0, depth))
    held = [(block.node(*p), 111 if p[2] == 0 else 11, (0, 0, 0)) for p in block.places()]
    shear = lambda density, speed: density * speed ** 2  # shear modulus, kPa
    ground = [isotropic(title, 2.6 * shear(density, speed), 0.3, density=density)
              for title, density, speed in (("gravel", 2.0, 300.0), ("clay", 1.7, 120.0))]
    steps = 1200
    step = load_step("the earthquake", held, [increment(1, 0.0, tolerance=1e-6, output=(0, 0, 0, 0), post=(1, 1, 0, 0),
                                                        time=0.01)], 1, dynamic=1)
    top, middle = block.node(0, 0, n), block.node(0, 0, 11)
    curves = [curve("surface", "X-IINCS", [], "Y-DISPL", [f"{top} 1 1"]),
              curve("foot of the clay", "X-IINCS", [], "Y-DISPL", [f"{middle} 1 1"])]
    deck("earthquake", block, ground, [[(1.0, 0.0, 1)], [(1.0, 0.0, 2)]], [step],
         "level ground of clay on gravel in an earthquake", curves, composite=lambda i, j, k: 2 if k >= 11 else 1, most=steps)
    alpha, beta = rayleigh(0.05, 1.5, 8.0)
    points = [(0.02 * i, math.sin(math.pi * i / 500) ** 2 * sum(a * math.sin(2 * math.pi * f * 0.02 * i) for a, f in
                                                              ((1.1, 1.1), (0.8, 2.3), (0.5, 3.7), (0.3, 6.1)))) for i in range(501)]
    lines = [f"1 0.01 1001 {steps} 0 {alpha:.6g} {beta:.6g} 0.25 0.5 0 0 0 0 0 100", "501 -1.0 1",
             "a made-up record: time s, acceleration of the rock along x and y, m/s^2"]
    lines += [f"{t:.2f} {a:.6f} 0" for t, a in points]
    (HERE / "earthquake" / "earthquake.din").write_text("\n".join(lines) + "\n")


def rayleigh(share, first, second):
    """Factors of mass and stiffness that damp two frequencies (Hz) by the same share of critical damping."""
    a, b = 2 * math.pi * first, 2 * math.pi * second
    return 2 * share * a * b / (a + b), 2 * share / (a + b)


def heated_column():
    """A column of two lifts, nu = 0: steel, then concrete on it; both get softer."""
    block = Block(1, 1, 8, (1.0, 1.0, 8.0))
    fixities = [(block.node(*p), (100 if p[0] == 0 else 0) + (10 if p[1] == 0 else 0) + (1 if p[2] == 0 else 0), (0, 0, 0))
                for p in block.places() if 0 in p]
    steel = isotropic("steel frame", 2.0e6, 0.0, density=4.0, reference=20.0,
                      young_curve=((20, 2.0e6), (100, 2.0e6), (400, 1.4e6), (700, 0.2e6)))
    concrete = isotropic("concrete", 3.0e5, 0.0, density=2.5, reference=20.0,
                         young_curve=((20, 3.0e5), (200, 2.7e5), (800, 0.6e5)))
    steps = []
    for title, active, T, loaded, factor in (("the lower half stands", (1,), 20, (1,), 1.0),
                                             ("the upper half is placed", (1, 2), 20, (2,), 1.0),
                                             ("fire, 300 degrees", (1, 2), 300, (2,), 0.0),
                                             ("fire, 600 degrees", (1, 2), 600, (2,), 0.0),
                                             ("cooled down", (1, 2), 20, (2,), 0.0)):
        steps.append(load_step(title, fixities, [increment(1, factor, time=600.0)], 1, active=active, keep=1,
                               gravity=(10.0, loaded), temperature=T))
    middle, top = block.node(0, 0, 4), block.node(0, 0, 8)
    curves = [curve("head of the steel", "X-IINCS", [], "Y-DISPL", [f"{middle} 3 1"]),
              curve("head of the column", "X-IINCS", [], "Y-DISPL", [f"{top} 3 1"])]
    deck("heated_column", block, [steel, concrete], [[(1.0, 0.0, 1)], [(1.0, 0.0, 2)]], steps,
         "a column that is built in two stages, then burns", curves, composite=lambda i, j, k: 1 if k < 4 else 2,
         step=lambda i, j, k: 1 if k < 4 else 2, stages=2)


def notched_beam():
    """Half of a beam on two supports: the plane of symmetry x = 0 is held above the notch alone."""
    nx, nz, length, depth, width, brick = 24, 10, 240.0, 100.0, 50.0, 10.0
    block = Block(nx, 1, nz, (length, width, depth), fracture_length=2 * brick)
    fixities = []
    for p in block.places():
        middle, support = p[0] == 0 and p[2] >= nz // 2, p[0] == nx and p[2] == 0
        driven = p[0] == 0 and p[2] == nz
        code = 100 * middle + 10 * (p[1] == 0) + (support or driven)
        if code:
            fixities.append((block.node(*p), code, (0, 0, -1.0 if driven else 0)))
    concrete = isotropic("concrete", 30000.0, 0.2, codes=(2, 2, 19, 2, 2, 1), slots={10: 3.0, 19: 50.0, 30: 30.0, 54: 0.1})
    step = load_step("the middle is pushed down", fixities,
                     [increment(24, 0.004, post=(0, 0, 0, 0)), increment(1, 0.004), increment(44, 0.02, post=(0, 0, 0, 0)),
                      increment(1, 0.02)], 70)
    top = block.node(0, 0, nz)
    curves = [curve("half of the load", "X-DISPL", [f"{top} 3 1"], "Y-RCTOT", ["3"])]
    deck("notched_beam", block, [concrete], [[(1.0, 0.0, 1)]], [step], "a notched concrete beam that is bent to separation",
         curves, NSOLV=6)


def damaging(title, E, nu, strength, ratio, energy):
    """Isotropic damage: strength in compression, its ratio to that in tension, fracture energy."""
    return isotropic(title, E, nu, codes=(6, 2, 4, 2, 1, 1), slots={30: strength, 31: ratio, 51: 2, 54: energy})


def bars_drawn_apart(bars, drawn, steps):
    """Fixities of bars that are drawn along x by the given lengths in equal steps and free in y and z."""
    fixities = []
    for p in bars.places():
        end = p[1] == bars.blocks[p[0]].n[0]
        code = 100 * (p[1] == 0 or end) + 10 * (p[1] == 0 and p[2] == 0) + (p[3] == 0)
        if code:
            fixities.append((bars.node(*p), code, (drawn[p[0]] / steps if end else 0, 0, 0)))
    return fixities


def one_brick_bars(name, drawn, steps, materials, composites, titles, title):
    """Single bricks of edge 1, each of a composite, drawn apart; a curve of stress over elongation for each."""
    bars = Pieces([Block(1, 1, 1, (1.0, 1.0, 1.0)) for _ in composites], 1.0)
    step = load_step("drawn apart", bars_drawn_apart(bars, drawn, steps),
                     [increment(steps, 1.0, tolerance=1e-8, output=(0, 1, 1, 0), post=(1, 1, 0, 0))], steps)
    curves = [curve(text, "X-DISPL", [f"{bars.node(number, 1, 0, 0)} 1 1"], "Y-STRES", [f"{number + 1} 1 1 0 0"])
              for number, text in enumerate(titles)]
    deck(name, bars, materials, composites, [step], title, curves, composite=lambda piece, *place: 1 + piece, NSOLV=2)


def off_axis_plies():
    angles = (0, 10, 20, 30, 45, 60, 90)
    epoxy = damaging("epoxy", 3500.0, 0.35, 120.0, 2.0, 2.0)
    glass = damaging("glass fibre", 72000.0, 0.22, 2000.0, 1.0, 60.0)
    one_brick_bars("off_axis_plies", (0.04,) + (0.02,) * 6, 40, [epoxy, glass],
                   [[(1.0, angle, fibre_ply(1, 2, 0.6))] for angle in angles], [f"ply at {angle}" for angle in angles],
                   "glass and epoxy plies, drawn at angles to their fibres")


def cross_ply_laminate():
    """Half of a laminate 0 / 90 / 90 / 0, cut at its middle surface; two layers of bricks for a ply."""
    nx, steps, strain = 10, 40, 0.02
    block = Block(nx, 5, 4, (10.0, 5.0, 2.0))
    fixities = [(block.node(*p), code, (strain * 10.0 / steps if p[0] == nx else 0, 0, 0)) for p in block.places()
                if (code := 100 * (p[0] in (0, nx)) + 10 * (p[1] == 0) + (p[2] == 0))]
    shown = dict(tolerance=1e-6, output=(0, 1, 0, 0), post=(1, 1, 0, 0))
    step = load_step("drawn", fixities, [increment(1, 1.0, **shown), increment(steps - 2, 1.0, tolerance=1e-6, output=(0, 1, 0, 0),
                                         post=(0, 0, 0, 0)), increment(1, 1.0, **shown)], steps)
    plies = [[(1.0, angle, fibre_ply(1, 2, 0.6))] for angle in (90.0, 0.0)]
    curves = [curve("force", "X-DISPL", [f"{block.node(nx, 0, 0)} 1 1"], "Y-RCTOT", ["1"])]
    deck("cross_ply_laminate", block, [damaging("epoxy", 3500.0, 0.35, 120.0, 2.0, 2.0), isotropic("glass fibre", 72000.0, 0.22)],
         plies, [step], "a cross-ply laminate whose transverse plies crack", curves, NSOLV=2,
         composite=lambda i, j, k: 1 if k < 2 else 2)


def short_fibre_bars():
    lengths = (0.08, 0.12, 0.25, 1.0)
    epoxy = damaging("epoxy", 3500.0, 0.35, 120.0, 2.0, 2.0)
    fibres = [isotropic(f"glass fibre of length {length:g}", 72000.0, 0.22, slots={32: 0.01, 33: length}) for length in lengths]
    filled = [[(1.0, 0.0, ("NT", f"1 0.4 {fibre} 0.2 1 0.4"))] for fibre in range(2, 2 + len(lengths))]
    one_brick_bars("short_fibre_bars", (0.03,) * 5, 40, [epoxy, *fibres], [[(1.0, 0.0, 1)], *filled],
                   ["epoxy alone", *(f"fibres of {length:g}" for length in lengths)],
                   "bars of epoxy with short fibres of four lengths")


if __name__ == "__main__":
    for example in (cantilever, layered_plate, construction_stages, large_deflection, shallow_arch, temperature,
                    relaxing_polymer, cyclic_metal_bar, earthquake, heated_column, notched_beam,
                    off_axis_plies, cross_ply_laminate, short_fibre_bars):
        example()

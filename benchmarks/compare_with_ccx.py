#!/usr/bin/env python3
"""Runs the same job of bricks with ZEMA and with the public solver ccx (Debian: calculix-ccx), and compares whole jobs:
wall time, largest memory, and the displacement of the loaded end. Nothing but this script needs ccx.

    compare_with_ccx.py [BRICKS_PER_EDGE] [RUNS] [mises]      31 bricks an edge are 95 000 free unknowns, 25 are 51 000

The job: a cube clamped at one face, a force across the other, linear; with "mises" a metal that yields and hardens, in 10
increments to a residual of 1e-5. Both programs use all cores, write displacements,
stresses and strains, and run in turns; the best run of each counts.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "examples"))
import make_decks as zema  # noqa: E402

E, NU, FORCE = 1000.0, 0.3, (0.0, 0.0, -1.0)


YIELD, PLASTIC_SLOPE, INCREMENTS = 1.5, 50.0, 10


def make_zema_deck(block, home, NSOLV=6, mises=False):
    n = block.n[0]
    count = INCREMENTS if mises else 1
    step = zema.load_step("end load", zema.clamped(block),
                          [zema.increment(count, 1.0 / count, tolerance=1e-3 if mises else 1e-7, output=(0, 0, 0, 0))], count,
                          last_node=block.node(*block.n), point_loads=zema.spread(block, FORCE, lambda p: p[0] == n))
    metal = {"codes": (2, 2, 8, 2, 3, 2),
             "slots": {7: YIELD, 8: 1, 9: 1, 10: 1, 11: PLASTIC_SLOPE / (1 + PLASTIC_SLOPE / E), 12: 1}} if mises else {}
    zema.deck("zema", block, [zema.isotropic("metal", E, NU, **metal)], [[(1.0, 0.0, 1)]], [step], "cube", NSOLV=NSOLV,
              home=home)


def make_ccx_deck(block, home, mises=False):
    lines = ["*NODE,NSET=NALL"]
    for card in block.node_cards():
        lines.append(",".join(card.split()))
    lines.append("*ELEMENT,TYPE=C3D8,ELSET=EALL")
    for card in block.element_cards():
        words = card.split()
        lines.append(",".join([words[0], *words[9:17]]))
    lines.append("*BOUNDARY")
    lines += [f"{node},1,3" for node, _, _ in zema.clamped(block)]
    lines += ["*MATERIAL,NAME=M", "*ELASTIC", f"{E},{NU}"]
    if mises:
        lines += ["*PLASTIC", f"{YIELD},0", f"{YIELD + PLASTIC_SLOPE},1"]
    lines += ["*SOLID SECTION,ELSET=EALL,MATERIAL=M", f"*STEP,INC={2 * INCREMENTS}"]
    lines += ["*STATIC,DIRECT", f"{1 / INCREMENTS},1", "*CONTROLS,PARAMETERS=FIELD", "1e-5,1e-2"] if mises else ["*STATIC"]
    lines.append("*CLOAD")
    loads = zema.spread(block, FORCE, lambda p: p[0] == block.n[0])
    lines += [f"{node},3,{load[2]:.10g}" for node, load in loads.items()]
    lines += ["*NODE FILE", "U", "*EL FILE", "S,E", "*END STEP"]
    (home / "ccx").mkdir()
    (home / "ccx" / "ccx.inp").write_text("\n".join(lines) + "\n")


def run(command, folder, **environment):
    """Wall seconds, peak memory in megabytes and processor seconds of one run."""
    before = time.perf_counter()
    child = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, env={**os.environ, **environment})
    _, status, usage = os.wait4(child.pid, 0)
    if status != 0:
        sys.exit(f"{command[0]} failed in {folder}")
    return time.perf_counter() - before, usage.ru_maxrss / 1024, usage.ru_utime + usage.ru_stime


def zema_displacement(home, node):
    """The last of the z displacements of a node in the result file."""
    inside, last = False, None
    for line in (home / "zema" / "zema.post.res").read_text().splitlines():
        if "DISPLACEMENTS" in line:
            inside = True
        elif inside and line.split()[:1] == [str(node)]:
            inside, last = False, float(line.split()[3])
    return last if last is not None else sys.exit("no displacement in the results of ZEMA")


def ccx_displacement(home, node):
    inside, last = False, None
    for line in (home / "ccx" / "ccx.frd").read_text().splitlines():
        if line.startswith(" -4  DISP"):
            inside = True
        elif inside and line.startswith(" -1") and int(line[3:13]) == node:
            inside, last = False, float(line[37:49])
    return last if last is not None else sys.exit("no displacement in the results of ccx")


def main():
    n = int(sys.argv[1]) if len(sys.argv) > 1 else 31
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    mises = sys.argv[3:] == ["mises"]
    cores = str(os.cpu_count())
    program = HERE.parent / "build" / "release" / "zema"
    block = zema.Block(n, n, n, (1.0, 1.0, 1.0))
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder)
        make_zema_deck(block, home, mises=mises)
        make_ccx_deck(block, home, mises)
        best = {"zema": (1e9, 0.0, 0.0), "ccx": (1e9, 0.0, 0.0)}
        for _ in range(runs):
            for old in (home / "zema").glob("zema.*[!s]"):
                if old.suffix != ".dts":
                    old.unlink()
            best["zema"] = min(best["zema"], run([str(program)], home / "zema", FOR005="zema.dts"))
            best["ccx"] = min(best["ccx"], run(["ccx", "-i", "ccx"], home / "ccx", OMP_NUM_THREADS=cores))
        tip = block.node(n, n // 2, n // 2)
        found = {"zema": zema_displacement(home, tip), "ccx": ccx_displacement(home, tip)}
        for name, (seconds, memory, _) in best.items():
            print(f"{name:5} {seconds:8.2f} s {memory:8.0f} MB   end moves by {found[name]:.6e}")
        print(f"ratio {best['zema'][0] / best['ccx'][0]:8.3f}   {best['zema'][1] / best['ccx'][1]:8.3f}")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Runs the same job of bricks with ZEMA and with the public solver ccx (Debian: calculix-ccx), and compares whole jobs:
wall time, largest memory, and the displacement of the loaded end. Nothing but this script needs ccx.

    compare_with_ccx.py [BRICKS_PER_EDGE] [RUNS]      31 bricks an edge are 95 000 free unknowns

The job: a cube clamped at one face, a force across the other, linear. Both programs use all cores, write displacements,
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


def make_zema_deck(block, home, NSOLV=6):
    n = block.n[0]
    step = zema.load_step("end load", zema.clamped(block),
                          [zema.increment(1, 1.0, output=(0, 0, 0, 0))], 1, last_node=block.node(*block.n),
                          point_loads=zema.spread(block, FORCE, lambda p: p[0] == n))
    zema.deck("zema", block, [zema.isotropic("elastic", E, NU)], [[(1.0, 0.0, 1)]], [step], "cube", NSOLV=NSOLV, home=home)


def make_ccx_deck(block, home):
    lines = ["*NODE,NSET=NALL"]
    for card in block.node_cards():
        lines.append(",".join(card.split()))
    lines.append("*ELEMENT,TYPE=C3D8,ELSET=EALL")
    for card in block.element_cards():
        words = card.split()
        lines.append(",".join([words[0], *words[9:17]]))
    lines.append("*BOUNDARY")
    lines += [f"{node},1,3" for node, _, _ in zema.clamped(block)]
    lines += ["*MATERIAL,NAME=M", "*ELASTIC", f"{E},{NU}", "*SOLID SECTION,ELSET=EALL,MATERIAL=M", "*STEP", "*STATIC",
              "*CLOAD"]
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
    inside = False
    for line in (home / "zema" / "zema.post.res").read_text().splitlines():
        if "DISPLACEMENTS" in line:
            inside = True
        elif inside and line.split()[:1] == [str(node)]:
            return float(line.split()[3])
    sys.exit("no displacement in the results of ZEMA")


def ccx_displacement(home, node):
    inside = False
    for line in (home / "ccx" / "ccx.frd").read_text().splitlines():
        if line.startswith(" -4  DISP"):
            inside = True
        elif inside and line.startswith(" -1") and int(line[3:13]) == node:
            return float(line[37:49])
    sys.exit("no displacement in the results of ccx")


def main():
    n = int(sys.argv[1]) if len(sys.argv) > 1 else 31
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    cores = str(os.cpu_count())
    program = HERE.parent / "build" / "release" / "zema"
    block = zema.Block(n, n, n, (1.0, 1.0, 1.0))
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder)
        make_zema_deck(block, home)
        make_ccx_deck(block, home)
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

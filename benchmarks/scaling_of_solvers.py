#!/usr/bin/env python3
"""Whole jobs with every solver on cubes of bricks of growing size: processor seconds and peak memory as a table.

    scaling_of_solvers.py [SECONDS]     no job that is likely to take longer (60)

The frontal solver takes part with long walls of 3 x 3 bricks instead, clamped along one side: its front holds no more
than a thin section.
"""

import pathlib
import sys
import tempfile

import compare_with_ccx as jobs

EDGES = (6, 10, 14, 20, 25, 31, 40)
CODES = {2: "band LU", 4: "band Cholesky", 5: "band LDL", 3: "GMRES", 6: "sparse", 1: "frontal, wall"}


def block_of(NSOLV, n):
    if NSOLV == 1:
        slices = (n + 1) ** 2 * n // 12 - 1
        return jobs.zema.Block(3, 3, slices, (0.3, 0.3, 0.1 * slices))
    return jobs.zema.Block(n, n, n, (1.0, 1.0, 1.0))


def run(NSOLV, n):
    block = block_of(NSOLV, n)
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder)
        jobs.make_zema_deck(block, home, NSOLV)
        deck = home / "zema" / "zema.dts"
        if NSOLV == 3:
            lines = deck.read_text().splitlines()
            deck.write_text("\n".join(lines[:5] + ["100 5000 1e-8 0"] + lines[5:]) + "\n")
        program = jobs.HERE.parent / "build" / "release" / "zema"
        _, memory, seconds = jobs.run([str(program)], home / "zema", FOR005="zema.dts")
        converged = "COD. DE CONVERG.=   0" in (home / "zema" / "zema.mec.sal").read_text(errors="replace")
        return (seconds, memory) if converged else None


def main():
    limit = float(sys.argv[1]) if len(sys.argv) > 1 else 60.0
    print("| solver | " + " | ".join(f"{3 * (n + 1) ** 2 * n}" for n in EDGES) + " |", flush=True)
    for NSOLV, name in CODES.items():
        cells = []
        for n in EDGES:
            found = run(NSOLV, n)
            cells.append(f"{found[0]:.1f} s, {found[1]:.0f} MB" if found else "failed")
            if not found or found[0] > limit / 6:
                break
        print(f"| {name} | " + " | ".join(cells) + " |", flush=True)


if __name__ == "__main__":
    main()

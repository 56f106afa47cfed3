#!/usr/bin/env python3
"""Makes a shrink formula smaller by solving small parts of it exactly.

A formula for n red drags is a set of sixes such that every six of the drags shares at least five
with one of them. Each round takes the formula's sixes that hold at least T of W random drags (a
"region" of some 10 to 30 sixes), finds the sixes that only they cover, and asks an integer
programming solver (CBC, Debian package coinor-cbc) for the fewest sixes that cover those again,
at most as many as the region had. A smaller answer shrinks the formula by the difference; an
answer of the same size is taken too, so the formula walks across equally small ones and reaches
regions the last one did not have. The variables are shuffled each round, so the solver's answers
differ.

    tools/improve_ssgs.py <n> <start formulas file> <out file> <seconds> [W,T] [solver seconds]
        [seed]

The start file has lines "<n>: <序号>..." as data/ssgs-formulas.txt (序号 counts the sixes of the
drags in lexicographic order from 1). The out file gets the formula each time it shrinks. The
solver is only a tool for making the data; the program never runs it.
"""
import itertools
import os
import random
import subprocess
import sys
import tempfile
import time


def sixes(n):
    masks = [sum(1 << v for v in c) for c in itertools.combinations(range(n), 6)]
    return masks, {m: r for r, m in enumerate(masks)}


def neighbourhoods(n, masks, rank):
    """rank -> itself and every six sharing five with it."""
    result = []
    for m in masks:
        inside = [v for v in range(n) if m >> v & 1]
        outside = [v for v in range(n) if not m >> v & 1]
        result.append([rank[m]] + [rank[(m & ~(1 << a)) | 1 << b] for a in inside for b in outside])
    return result


def read_formula(path, n):
    for line in open(path, encoding="utf-8"):
        if line.startswith(f"{n}:"):
            return {int(x) - 1 for x in line.split(":", 1)[1].split()}
    sys.exit(f"{path} has no formula for {n} drags")


def write_formula(path, n, formula):
    with open(path + ".part", "w", encoding="utf-8") as f:
        f.write(f"{n}: " + " ".join(str(r + 1) for r in sorted(formula)) + "\n")
    os.replace(path + ".part", path)


def solve_cover(rows, columns, at_most, seconds, seed, folder):
    """The fewest columns meeting every row (each row a list of columns), or None."""
    index = {c: i for i, c in enumerate(columns)}
    model, answer = os.path.join(folder, "region.lp"), os.path.join(folder, "region.sol")
    everything = " + ".join(f"x{i}" for i in range(len(columns)))
    with open(model, "w") as f:
        f.write(f"Minimize\n obj: {everything}\nSubject To\n")
        for k, row in enumerate(rows):
            f.write(f" r{k}: " + " + ".join(f"x{index[c]}" for c in row) + " >= 1\n")
        f.write(f" size: {everything} <= {at_most}\nBinary\n")
        f.write("\n".join(f" x{i}" for i in range(len(columns))) + "\nEnd\n")
    if os.path.exists(answer):
        os.remove(answer)
    subprocess.run(["cbc", model, "sec", str(seconds), "randomSeed", str(seed), "solve", "solu", answer],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    if not os.path.exists(answer):
        return None
    lines = open(answer, encoding="utf-8").read().splitlines()
    if not lines or not (lines[0].startswith("Optimal") or lines[0].startswith("Stopped")):
        return None
    chosen = []
    for line in lines[1:]:
        parts = line.split()
        if len(parts) >= 3 and parts[1].startswith("x") and float(parts[2]) > 0.5:
            chosen.append(columns[int(parts[1][1:])])
    # Trust nothing the solver says without checking it.
    picked = set(chosen)
    return chosen if all(any(c in picked for c in row) for row in rows) else None


def main():
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    n, start, out, budget = int(sys.argv[1]), sys.argv[2], sys.argv[3], float(sys.argv[4])
    drags, threshold = (int(x) for x in (sys.argv[5] if len(sys.argv) > 5 else "3,3").split(","))
    solver_seconds = float(sys.argv[6]) if len(sys.argv) > 6 else 20
    rng = random.Random(int(sys.argv[7]) if len(sys.argv) > 7 else os.getpid())
    masks, rank = sixes(n)
    near = neighbourhoods(n, masks, rank)
    formula = read_formula(start, n)
    cover = [0] * len(masks)
    for six in formula:
        for v in near[six]:
            cover[v] += 1
    if not all(cover):
        sys.exit("the start formula leaves sixes uncovered")
    print(f"start {len(formula)}", flush=True)
    began, rounds = time.time(), 0
    with tempfile.TemporaryDirectory() as folder:
        while time.time() - began < budget:
            rounds += 1
            chosen_drags = sum(1 << v for v in rng.sample(range(n), drags))
            region = [s for s in formula if bin(masks[s] & chosen_drags).count("1") >= threshold]
            for six in region:
                for v in near[six]:
                    cover[v] -= 1
            alone = list({v for six in region for v in near[six] if cover[v] == 0})
            columns = list({c for v in alone for c in near[v]})
            rng.shuffle(alone)
            rng.shuffle(columns)
            rows = [near[v] for v in alone]
            answer = solve_cover(rows, columns, len(region), solver_seconds, rng.randrange(1, 10**6), folder)
            if answer is None:
                answer = region
            formula.difference_update(region)
            formula.update(answer)
            for six in answer:
                for v in near[six]:
                    cover[v] += 1
            if len(answer) < len(region):
                write_formula(out, n, formula)
                print(f"{time.time() - began:.0f} s, round {rounds}: {len(formula)}", flush=True)
    assert all(cover)
    write_formula(out, n, formula)
    print(f"end {len(formula)} after {rounds} rounds", flush=True)


if __name__ == "__main__":
    main()

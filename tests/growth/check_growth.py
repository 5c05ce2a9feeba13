#!/usr/bin/env python3
"""Counts the instructions that texts of many shapes cost at a length and at twice that length.

usage: check_growth.py VALGRIND GROWTH layouts|documents [SHAPE...]

Prints the ratios, those that are too high last, and fails if there is one.
"""

import collections
import pathlib
import re
import subprocess
import sys
import tempfile

# Enough that a square shows beside what grows as it should, and few enough that the test is soon done.
UNITS = {"layouts": 200, "documents": 200}
# Twice the text may cost twice as much, and a little for tables that grow and for places where lines happen to break.
MOST = 2.5
# Less than this many instructions a unit decides nothing: half of a little is a little.
LEAST_PER_UNIT = 20


def count(valgrind, program, kind, wanted, folder):
    """The instructions by shape, work and length."""
    subprocess.run(
        [valgrind, "--tool=callgrind", "--quiet", "--instr-atstart=no", "--dump-line=no", "--combine-dumps=no",
         f"--callgrind-out-file={folder}/out", program, kind, str(UNITS[kind]), *wanted],
        check=True)
    counts = collections.defaultdict(dict)
    for dump in pathlib.Path(folder).glob("out.*"):
        text = dump.read_text()
        trigger = re.search(r"^desc: Trigger: Client Request: (.*)/(.*)/(\d+)$", text, re.MULTILINE)
        if trigger:
            shape, work, length = trigger.groups()
            counts[shape, work][int(length)] = int(re.search(r"^(?:summary|totals): (\d+)", text, re.MULTILINE)[1])
    return counts


def main(valgrind, program, kind, *wanted):
    with tempfile.TemporaryDirectory() as folder:
        counts = count(valgrind, program, kind, wanted, folder)
    ratios = collections.defaultdict(dict)
    for (shape, work), by_length in counts.items():
        lengths = sorted(length for length, instructions in by_length.items() if instructions > 0)[-2:]
        if len(lengths) == 2 and by_length[lengths[1]] >= LEAST_PER_UNIT * lengths[1]:
            short, long = lengths
            # Texts are not quite as long as they should be, since no repeated part is cut.
            ratios[shape][work] = by_length[long] / by_length[short] * 2 * short / long
    return report(ratios)


def report(ratios):
    """Prints the ratios as a table and says whether one is too high."""
    works = sorted({work for shape in ratios.values() for work in shape})
    print(f"| | {' | '.join(works)} |\n|---|{'---:|' * len(works)}")
    for shape in sorted(ratios, key=lambda name: max(ratios[name].values())):
        cells = [f"{ratios[shape][work]:.2f}" if work in ratios[shape] else "" for work in works]
        print(f"| {shape} | {' | '.join(cells)} |")
    bad = [f"{shape}, {work}: {ratio:.2f}" for shape, by_work in ratios.items() for work, ratio in by_work.items()
           if ratio > MOST]
    print(f"{len(ratios)} texts, {sum(map(len, ratios.values()))} ratios, {len(bad)} of them over {MOST}", *bad, sep="\n")
    return bool(bad) or not ratios


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))

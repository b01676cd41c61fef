#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Counts the instructions of gleigem_instruction_count under callgrind; prints JSON.

    count_instructions.py BUILD_FOLDER [growth]
    count_instructions.py BUILD_FOLDER --compare BASELINE      fails if a count is too far above the baseline
    count_instructions.py BUILD_FOLDER --update BASELINE       rewrites the baseline

Counts depend on the compiler but not on the load of the machine. With a different compiler than the baseline's,
they are only shown.
"""

import argparse
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

TOLERANCE = 1.10


def count(build, arguments):
    """The number of instructions by the name of the count."""
    counts = {}
    with tempfile.TemporaryDirectory() as folder:
        dump = Path(folder, "callgrind.out")
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", "--collect-atstart=no",
                        f"--callgrind-out-file={dump}", f"{build}/benchmarks/gleigem_instruction_count",
                        *arguments], check=True)
        for part in sorted(Path(folder).glob("callgrind.out.*"), key=lambda path: int(path.suffix[1:])):
            text = part.read_text()
            name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)[1]
            counts[name] = int(re.search(r"^totals: (\d+)$", text, re.MULTILINE)[1])
    return counts


def compiler_of(build):
    """The compiler's version, from the first line of its --version after the program name."""
    cache = (build / "CMakeCache.txt").read_text()
    program = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache, re.MULTILINE)[1]
    line = subprocess.run([program, "--version"], check=True, capture_output=True, text=True).stdout.splitlines()[0]
    return line.partition(" ")[2]


def compare(counts, compiler, baseline):
    """Prints each count and its difference from the baseline; returns whether all are within the limit."""
    expected = baseline["instructions"]
    if counts.keys() != expected.keys():
        sys.exit(f"only in one of counts and baseline: {counts.keys() ^ expected.keys()}")
    is_same_compiler = baseline["compiler"] == compiler
    if not is_same_compiler:
        print(f"not compared: the baseline is from {baseline['compiler']}, this is {compiler}")
    too_many = [name for name in counts if counts[name] > expected[name] * TOLERANCE]
    for name, number in counts.items():
        note = "  too many" if name in too_many else ""
        print(f"{name:32} {number:12,} {100 * (number / expected[name] - 1):+7.1f} %{note}")
    return not (is_same_compiler and too_many)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path)
    parser.add_argument("what", nargs="*")
    parser.add_argument("--compare", type=Path, metavar="BASELINE")
    parser.add_argument("--update", type=Path, metavar="BASELINE")
    options = parser.parse_args()

    counts = count(options.build, options.what)
    if options.update:
        baseline = {"compiler": compiler_of(options.build), "instructions": counts}
        options.update.write_text(json.dumps(baseline, indent=2) + "\n")
    elif options.compare:
        if not compare(counts, compiler_of(options.build), json.loads(options.compare.read_text())):
            sys.exit("Slower than the baseline allows. If this is intended: scripts/check_instructions.sh --update")
    else:
        print(json.dumps(counts, indent=2))


if __name__ == "__main__":
    main()

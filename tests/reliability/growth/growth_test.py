"""Counts the instructions of a program's subjects with callgrind and compares them.

    growth_test.py VALGRIND PROGRAM

Prints a line for each subject. Fails if the cost of a subject grows faster than its input, or if a flood of chosen
names costs more than random names.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

# Limits for the ratio of the instructions for 4n to those for n: 4 for linear growth, or 16 if each entry is checked
# against each list, plus a margin for containers that grow in between.
MOST_GROWTH = {"growth": 5.5, "square": 20.0}
# Limit for the ratio of the instructions for a flood to those for the same number of random names.
MOST_FOR_A_FLOOD = 2.0


def count(valgrind, program):
    """The number of instructions by name of the subject."""
    counts = {}
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([valgrind, "--quiet", "--tool=callgrind", "--collect-atstart=no",
                        f"--callgrind-out-file={folder}/out", program], check=True)  # fmt: skip
        for part in Path(folder).glob("out.*"):
            text = part.read_text()
            name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)[1]
            counts[name] = int(re.search(r"^totals: (\d+)$", text, re.MULTILINE)[1])
    return counts


def group(counts, kind):
    """The counts of the subjects of a kind, by subject and case."""
    groups = {}
    for name, instructions in counts.items():
        its_kind, subject, case = name.split(": ")
        if its_kind == kind:
            groups.setdefault(subject, {})[case] = instructions
    return groups


def growths(counts):
    """Each subject with the counts for n and 4n and the limit for their ratio."""
    for kind, most in MOST_GROWTH.items():
        for subject, cases in group(counts, kind).items():
            few, _, many = (cases[size] for size in sorted(cases, key=int))
            yield subject, few, many, most


def floods(counts):
    chosen = {"8 units of one standard hash": "8 units at random",
              "4 units of one hash without a key": "4 units at random"}  # fmt: skip
    for subject, cases in group(counts, "flood").items():
        for flood in chosen.keys() & cases.keys():
            yield f"{subject}: {flood}", cases[chosen[flood]], cases[flood], MOST_FOR_A_FLOOD


def main():
    counts = count(*sys.argv[1:])
    lines = [*growths(counts), *floods(counts)]
    failures = 0
    for subject, base, compared, most in lines:
        fails = compared > most * base
        failures += fails
        print(f"{subject:70} {base:12,} {compared:12,} {compared / base:6.2f}{'  too many' if fails else ''}")
    print(f"{len(lines) - failures} of {len(lines)} subjects keep to their bounds.")
    sys.exit(failures != 0 or len(lines) < 10)


if __name__ == "__main__":
    main()

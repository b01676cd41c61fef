#!/usr/bin/env python3
"""Compares the measurements of benchmark.sh with their targets; prints a table.

    benchmark_targets.py MEASUREMENTS_FOLDER

The folder has

- benchmarks.json: a run of the benchmark suite; again.json: another run of the benchmarks compared at every size;
- growth.json, flood.json: instruction counts for lists of growing size, and for lists whose names collide;
- build_costs.json: the size of the library and the cost of including it;
- optionally baseline/now-*.json and baseline/before-*.json: runs with this library and with that of another commit.

Exits with 1 if a benchmark is missing; a missed target is only reported.
"""

import argparse
import itertools
import json
import math
import re
import sys
from dataclasses import dataclass, replace
from pathlib import Path

LOOKUP_SIZES = (8, 32, 128, 1_024)
GROWTH_SIZES = (1_000, 10_000, 100_000, 1_000_000)
LOOKUP_GROWTH_SIZES = (1_024, 10_000, 100_000, 1_000_000)
ENTRIES = (15, 1_000, 100_000)
SHAPES = {"random": "random words", "alike": "alike names", "classes": "class names"}


class Results:
    """The minimum of each counter of each benchmark over all repetitions of some runs of the suite."""

    def __init__(self, *paths):
        self.least = {}
        for path in paths:
            run = json.loads(Path(path).read_text())
            self.context = run["context"]
            for benchmark in run["benchmarks"]:
                if benchmark["run_type"] == "iteration":
                    self._add(re.sub(r"/(iterations|repeats):\d+", "", benchmark["run_name"]), benchmark)

    def _add(self, name, benchmark):
        numbers = {key: value for key, value in benchmark.items() if isinstance(value, (int, float))}
        least = self.least.setdefault(name, numbers)
        least.update({key: min(value, least[key]) for key, value in numbers.items()})

    def __getitem__(self, name):
        if name not in self.least:
            sys.exit(f"missing in the run: {name}")
        return self.least[name]

    def time(self, name):
        """Processor seconds per item."""
        return self[name]["time_per_item"]

    def names(self, start):
        return [name for name in self.least if name.startswith(start)]


class Measurements:
    """All measurements of one run of benchmark.sh."""

    def __init__(self, folder):
        self.results = Results(folder / "again.json", folder / "benchmarks.json")
        self.growth = json.loads((folder / "growth.json").read_text())
        self.flood = json.loads((folder / "flood.json").read_text())
        self.build_costs = json.loads((folder / "build_costs.json").read_text())
        runs = {whose: sorted((folder / "baseline").glob(f"{whose}-*.json")) for whose in ("now", "before")}
        self.now, self.before = (Results(*runs[whose]) if runs[whose] else None for whose in ("now", "before"))


@dataclass
class Row:
    """A target, or a measurement without a limit."""

    target: str
    measured: str
    reference: str = ""
    value: float | None = None
    limit: float | None = None
    worst_at: str = ""

    @property
    def verdict(self):
        if self.limit is None:
            return ""
        return "met" if self.value <= self.limit + 1e-9 else "missed"

    def cells(self):
        def number(x):
            return "" if x is None else f"{x:.2f}"

        return [self.target, self.worst_at, self.measured, self.reference, number(self.value), number(self.limit),
                self.verdict]


def worst(rows):
    """The row with the highest ratio, labelled with its circumstance."""
    where, row = max(rows.items(), key=lambda item: item[1].value)
    return replace(row, worst_at=where)


def duration(seconds):
    for unit, factor in (("ns", 1e9), ("µs", 1e6), ("ms", 1e3)):
        if seconds * factor < 999.5:
            return f"{seconds * factor:.3g} {unit}"
    return f"{seconds:.3g} s"


def plain(name):
    return name.replace("_", " ")


# The format of each counter.
COUNTERS = {
    "time_per_item": duration,
    "allocations_per_item": "{:.3g} allocations".format,
    "allocations_per_iteration": "{:.3g} allocations".format,
    "bytes_per_entry": "{:.0f} bytes".format,
}


def against(results, target, subject, circumstance, reference, limit, counter="time_per_item"):
    """The ratio of the library's counter to a floor's."""
    own = results[f"{subject}/gleigem/{circumstance}"][counter]
    floor = results[f"{subject}/{reference}/{circumstance}"][counter]
    show = COUNTERS[counter]
    ratio = own / floor if floor else (0.0 if own == 0 else math.inf)
    return Row(target, show(own), f"{show(floor)}, {plain(reference)}", ratio, limit)


def exponent(sizes, total_cost):
    """The exponent of the total cost as a power of n, by least squares over logarithms."""
    points = [(math.log(n), math.log(total_cost(n))) for n in sizes]
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    return (sum((x - mean_x) * (y - mean_y) for x, y in points)
            / sum((x - mean_x) ** 2 for x, _ in points))


def growth(results, target, sizes, name, reference, limit):
    """The exponent of the time, which includes the effect of memory caches; compare it with the floor's."""
    def of(whose):
        return exponent(sizes, lambda n: n * results.time(name.format(whose, n)))

    own, floor = of("gleigem"), of(reference)
    return Row(target, f"{own:.2f}", f"{floor:.2f}, {plain(reference)}", own, limit)


def lookup_targets(results):
    limits = {"miss": {1: 0.9, 4: 0.35, 16: 0.25}, "hit": {1: 0.95, 4: 0.7, 16: 0.45}}
    for kind in ("package", "fully_qualified"):
        for outcome, by_depth in limits.items():
            for depth, limit in by_depth.items():
                target = f"find {plain(kind)}, {outcome}, depth {depth}"
                yield worst({f"{size:,} imports, {SHAPES[shape]}":
                             against(results, target, f"find_{kind}_{outcome}",
                                     f"depth:{depth}/imports:{size}/names:{shape}", "absl_maps", limit)
                             for size, shape in itertools.product(LOOKUP_SIZES, SHAPES)})
    finds = [name for name in results.names("find_") if "/gleigem/" in name]
    most = max(results[name]["allocations_per_item"] for name in finds)
    yield Row("find, allocations, at most", f"{most:.3g}", "", most, 0)
    for outcome in ("miss", "hit"):
        for depth in (1, 16):
            name = f"find_package_{outcome}_by_threads/gleigem/depth:{depth}/imports:8/names:random/threads:"
            one, two = results.time(name + "1"), results.time(name + "2")
            yield Row(f"find package, {outcome}, depth {depth}, 2 threads", duration(two),
                      f"{duration(one)}, 1 thread", two / one, 1.2)


def enumeration_targets(results):
    for kind in ("packages", "fully_qualified"):
        subject, what = f"enumerate_{kind}", f"enumerate {plain(kind)}, depth 16"
        at = "depth:16/imports:8"
        yield against(results, what, subject, at, "nested_views", 0.25)
        yield against(results, what, subject, at, "loop", 1.3)
        yield against(results, what + ", allocations", subject, at, "any_view_alone", 1.0,
                      "allocations_per_iteration")


def parsing_targets(results):
    for form in ("fully_qualified", "wildcard", "package", "versioned_package", "legacy_fully_qualified",
                 "legacy_wildcard"):
        for suffix, counter, limit in (("", "time_per_item", 1.25), (", allocations", "allocations_per_item", 1.0)):
            yield worst({f"{length} names":
                         against(results, f"parse {plain(form)}{suffix}", f"parse_{form}/{length}", "arguments:100",
                                 "copied_texts", limit, counter)
                         for length in ("short", "long")})


def by_entries(results, target, subject, shapes, limit, counter="time_per_item", entries=ENTRIES):
    """The worst case over list sizes and name shapes, compared with hand-written code."""
    return worst({f"{size:,} entries, {SHAPES[shape]}":
                  against(results, target, subject, f"entries:{size}/names:{shape}", "by_hand", limit, counter)
                  for size, shape in itertools.product(entries, shapes)})


def adding_targets(results):
    yield by_entries(results, "add package", "add_package", ["random"], 1.3, entries=(1_000, 100_000))
    yield by_entries(results, "add fully qualified", "add_fully_qualified", SHAPES, 0.75)
    yield by_entries(results, "add fully qualified of one root", "add_fully_qualified_of_one_root", ["random"], 0.75)
    yield by_entries(results, "add wildcard", "add_wildcard", ["random"], 0.75)


def memory_targets(results):
    for kind, limit in (("package", None), ("fully_qualified", 0.75), ("wildcard", 0.75)):
        yield by_entries(results, f"memory of a {plain(kind)} entry", f"memory_of_{kind}", SHAPES, limit,
                         "bytes_per_entry")


def baseline_targets(now, before):
    """Comparisons with the library of another commit, for benchmarks without a floor."""
    subjects = {"clone, 1,000 entries": ("clone/gleigem/entries:1000", 0.5)}
    for kind in ("packages", "fully_qualified"):
        subjects[f"enumerate {plain(kind)}, depth 16"] = (f"enumerate_{kind}/gleigem/depth:16/imports:8", 0.8)
    for target, (name, limit) in subjects.items():
        own, former = now.time(name), before.time(name)
        yield Row(target, duration(own), f"{duration(former)}, baseline", own / former, limit)


def growth_targets(results, instructions):
    for kind in ("package", "fully_qualified_of_one_root"):
        yield growth(results, f"add {plain(kind)}, exponent of time", GROWTH_SIZES,
                     f"add_{kind}/{{}}/entries:{{}}/names:random", "by_hand", 1.1)
    for outcome in ("miss", "hit"):
        yield growth(results, f"find package, {outcome}, exponent of time", LOOKUP_GROWTH_SIZES,
                     f"find_package_{outcome}/{{}}/depth:1/imports:{{}}/names:random", "absl_maps", 1.1)
    for operation in ("add", "find", "clone"):
        own = exponent(GROWTH_SIZES, lambda n, start=f"{operation}_names/entries:": instructions[start + str(n)])
        yield Row(f"{operation} fully qualified of one root, exponent of instructions", f"{own:.2f}", "", own, 1.05)


def flood_targets(instructions):
    """Instructions with names that collide under the standard hash, as a multiple of those with random names."""
    for index in dict.fromkeys(name.split("/")[0] for name in instructions):
        def row(operation, index=index):
            flooded, random = (instructions[f"{index}/{operation}/{names}"] for names in ("colliding", "random"))
            return Row(f"flood of {index}, instructions", f"{flooded:,}", f"{random:,}, random names",
                       flooded / random, 2)

        yield worst({operation: row(operation) for operation in ("add", "find", "enumerate", "clone")})


def build_targets(costs):
    seconds = costs["compile_seconds"]
    yield Row("compile import.hpp", duration(seconds["import.hpp"]),
              f"{duration(seconds['any_view.hpp'])}, any_view.hpp with <string>",
              seconds["import.hpp"] / seconds["any_view.hpp"], 1.3)
    yield Row("libgleigem.so, stripped", f"{costs['library']['bytes'] / 1024:.0f} KiB")
    yield Row("libgleigem.so, load-time relocations", str(costs["library"]["relocations"]))


def all_targets(measurements):
    """Every target, as rows of the table."""
    results = measurements.results
    rows = [*lookup_targets(results), *enumeration_targets(results), *parsing_targets(results),
            *adding_targets(results), *memory_targets(results), *flood_targets(measurements.flood),
            *growth_targets(results, measurements.growth)]
    if measurements.before:
        rows += baseline_targets(measurements.now, measurements.before)
    return [*rows, *build_targets(measurements.build_costs)]


HEADINGS = ["target", "worst at", "measured", "floor", "ratio", "limit", ""]


def as_table(rows):
    cells = [HEADINGS, *(row.cells() for row in rows)]
    widths = [max(len(line[column]) for line in cells) for column in range(len(HEADINGS))]
    lines = ["  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip() for line in cells]
    verdicts = [row.verdict for row in rows if row.verdict]
    return "\n".join([*lines, "", f"{verdicts.count('met')} of {len(verdicts)} targets met"])


def as_markdown(rows):
    lines = ["| " + " | ".join(cells) + " |" for cells in (HEADINGS, *(row.cells() for row in rows))]
    return "\n".join([lines[0], "| --- | --- | --- | --- | ---: | ---: | --- |", *lines[1:]])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("measurements", type=Path)
    print(as_table(all_targets(Measurements(parser.parse_args().measurements))))


if __name__ == "__main__":
    main()

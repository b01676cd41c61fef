#!/usr/bin/env python3
"""Compares a run of the benchmark suite with its targets; prints a table.

    benchmark_targets.py BENCHMARKS_JSON GROWTH_JSON BUILD_COSTS_JSON [--markdown]

GROWTH_JSON has the instructions that lists of growing size take, by `subject/entries:size`.

Exit status 1 when a benchmark is absent; a missed target is only reported.
"""

import argparse
import json
import math
import sys
from dataclasses import dataclass
from pathlib import Path

SIZES = (1_000, 10_000, 100_000, 1_000_000)


class Results:
    """The medians of a run, by name of benchmark."""

    def __init__(self, path):
        run = json.loads(Path(path).read_text())
        self.context = run["context"]
        self.medians = {b["run_name"]: b for b in run["benchmarks"] if b.get("aggregate_name") == "median"}

    def __getitem__(self, name):
        if name not in self.medians:
            sys.exit(f"absent from the run: {name}")
        return self.medians[name]

    def time(self, name):
        """Processor seconds per item."""
        return self[name]["time_per_item"]

    def names(self, start):
        return [name for name in self.medians if name.startswith(start)]


@dataclass
class Row:
    """A target, or a measurement without limit."""

    target: str
    measured: str
    reference: str = ""
    value: float | None = None
    limit: float | None = None

    @property
    def verdict(self):
        if self.limit is None:
            return ""
        return "met" if self.value <= self.limit + 1e-9 else "missed"

    def cells(self):
        def number(x):
            return "" if x is None else f"{x:.2f}"

        return [self.target, self.measured, self.reference, number(self.value), number(self.limit), self.verdict]


def duration(seconds):
    for unit, factor in (("ns", 1e9), ("µs", 1e6), ("ms", 1e3)):
        if seconds * factor < 999.5:
            return f"{seconds * factor:.3g} {unit}"
    return f"{seconds:.3g} s"


def contestant(benchmark):
    """The part of a benchmark's name that says whose way is measured."""
    return next(part for part in reversed(benchmark.split("/")) if ":" not in part)


def against(results, target, subject, circumstance, reference, limit, counter="time_per_item"):
    """The library's counter for a subject as a multiple of a floor's."""
    own = results[f"{subject}/gleigem/{circumstance}"][counter]
    floor = results[f"{subject}/{reference}/{circumstance}"][counter]
    show = duration if counter == "time_per_item" else "{:.3g} allocations".format
    ratio = own / floor if floor else (0.0 if own == 0 else math.inf)
    return Row(target, show(own), f"{show(floor)}, {reference.replace('_', ' ')}", ratio, limit)


def exponent(total_cost):
    """That of the total cost of n items in n, by least squares over logarithms."""
    points = [(math.log(n), math.log(total_cost(n))) for n in SIZES]
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    return (sum((x - mean_x) * (y - mean_y) for x, y in points)
            / sum((x - mean_x) ** 2 for x, _ in points))


def growth(results, target, subject, per_size, reference, limit):
    """The exponent of the time, which memory caches have a share in; the floor's shows how much."""
    def of(whose):
        return exponent(lambda n: n * results.time(f"{subject}/{whose}/{per_size.format(n)}"))

    own, floor = of("gleigem"), of(reference)
    return Row(target, f"{own:.2f}", f"{floor:.2f}, {reference.replace('_', ' ')}", own, limit)


def lookup_targets(results):
    limits = {"miss": {1: 1.0, 4: 0.5, 16: 0.4}, "hit": {1: 1.4, 4: 1.0, 16: 0.5}}
    for kind in ("package", "fully_qualified"):
        for outcome, by_depth in limits.items():
            for depth, limit in by_depth.items():
                yield against(results, f"find {kind.replace('_', ' ')}, {outcome}, depth {depth}",
                              f"find_{kind}_{outcome}", f"depth:{depth}/imports:8", "absl_maps", limit)
    finds = [name for name in results.names("find_") if contestant(name) == "gleigem" and "threads" not in name]
    most = max(results[name]["allocations_per_item"] for name in finds)
    yield Row("find, allocations, at most", f"{most:.3g}", "", most, 0)
    for outcome in ("miss", "hit"):
        for depth in (1, 16):
            name = f"find_package_{outcome}_by_threads/gleigem/depth:{depth}/imports:8/threads:"
            one, two = results.time(name + "1"), results.time(name + "2")
            yield Row(f"find package, {outcome}, depth {depth}, 2 threads", duration(two),
                      f"{duration(one)}, 1 thread", two / one, 1.2)


def enumeration_targets(results):
    for kind in ("packages", "fully_qualified"):
        subject, what = f"enumerate_{kind}", f"enumerate {kind.replace('_', ' ')}, depth 16"
        at = "depth:16/imports:8"
        yield against(results, what, subject, at, "nested_views", 0.25)
        yield against(results, what, subject, at, "loop", 1.3)
        yield against(results, what + ", allocations", subject, at, "any_view_alone", 1.0,
                      "allocations_per_iteration")


def parsing_targets(results):
    for form in ("fully_qualified", "wildcard", "package", "versioned_package", "legacy_fully_qualified",
                 "legacy_wildcard"):
        for length in ("short", "long"):
            what = f"parse {form.replace('_', ' ')}, {length}"
            subject = f"parse_{form}/{length}"
            at = "arguments:100"
            yield against(results, what, subject, at, "copied_texts", 1.25)
            yield against(results, what + ", allocations", subject, at, "copied_texts", 1.0,
                          "allocations_per_item")


def adding_targets(results):
    kinds = ("package", "fully_qualified", "fully_qualified_of_one_root", "wildcard")
    for kind in kinds:
        for size in (1_000, 100_000):
            yield against(results, f"add {kind.replace('_', ' ')}, to {size:,}", f"add_{kind}", f"entries:{size}",
                          "by_hand", 1.3)


def growth_targets(results, instructions):
    for kind in ("package", "fully_qualified_of_one_root"):
        yield growth(results, f"add {kind.replace('_', ' ')}, exponent of time", f"add_{kind}", "entries:{}",
                     "by_hand", 1.1)
    for outcome in ("miss", "hit"):
        yield growth(results, f"find package, {outcome}, exponent of time", f"find_package_{outcome}",
                     "depth:1/imports:{}", "absl_maps", 1.1)
    for operation in ("add", "find"):
        own = exponent(lambda n, start=f"{operation}_names/entries:": instructions[start + str(n)])
        yield Row(f"{operation} fully qualified of one root, exponent of instructions", f"{own:.2f}", "", own, 1.1)


def build_targets(costs):
    seconds = costs["compile_seconds"]
    yield Row("compile import.hpp", duration(seconds["import.hpp"]),
              f"{duration(seconds['any_view.hpp'])}, any_view.hpp with <string>",
              seconds["import.hpp"] / seconds["any_view.hpp"], 1.3)
    yield Row("libgleigem.so, stripped", f"{costs['library']['bytes'] / 1024:.0f} KiB")
    yield Row("libgleigem.so, load-time relocations", str(costs["library"]["relocations"]))


def all_targets(results, instructions, costs):
    """Every target, as rows of the table."""
    return [*lookup_targets(results), *enumeration_targets(results), *parsing_targets(results),
            *adding_targets(results), *growth_targets(results, instructions), *build_targets(costs)]


HEADINGS = ["target", "measured", "floor", "ratio", "limit", ""]


def as_table(rows):
    cells = [HEADINGS, *(row.cells() for row in rows)]
    widths = [max(len(line[column]) for line in cells) for column in range(len(HEADINGS))]
    lines = ["  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip() for line in cells]
    met = [row.verdict for row in rows if row.verdict]
    return "\n".join([*lines, "", f"{met.count('met')} of {len(met)} targets met"])


def as_markdown(rows):
    lines = ["| " + " | ".join(cells) + " |" for cells in (HEADINGS, *(row.cells() for row in rows))]
    return "\n".join([lines[0], "| --- | --- | --- | ---: | ---: | --- |", *lines[1:]])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("benchmarks", type=Path)
    parser.add_argument("growth", type=Path)
    parser.add_argument("costs", type=Path)
    parser.add_argument("--markdown", action="store_true")
    options = parser.parse_args()
    rows = all_targets(Results(options.benchmarks), json.loads(options.growth.read_text()),
                       json.loads(options.costs.read_text()))
    print(as_markdown(rows) if options.markdown else as_table(rows))


if __name__ == "__main__":
    main()

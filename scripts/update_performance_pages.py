#!/usr/bin/env python3
"""Fills the marked places of documents with the measurements of benchmark.sh.

    update_performance_pages.py MEASUREMENTS_FOLDER PAGE...

A place has the form `<!-- begin NAME -->`, lines, `<!-- end NAME -->`; the lines between are replaced.
"""

import argparse
import os
import platform
import re
from pathlib import Path

from benchmark_targets import Measurements, all_targets, as_markdown, duration

COSTS = [
    # An operation of a user, and the benchmarks for its cost, from the cheapest circumstances to the most expensive.
    ("look up a name that nobody imports", "1, 4, 16, 64 scopes",
     [f"find_package_miss/gleigem/depth:{depth}/imports:8/names:random" for depth in (1, 4, 16, 64)]),
    ("the same, in 4 scopes", "8, 128, 1,024 imports each",
     [f"find_package_miss/gleigem/depth:4/imports:{size}/names:random" for size in (8, 128, 1_024)]),
    ("look up a name that some scope imports", "1, 4, 16, 64 scopes",
     [f"find_package_hit/gleigem/depth:{depth}/imports:8/names:random" for depth in (1, 4, 16, 64)]),
    ("the same, in 4 scopes", "8, 128, 1,024 imports each",
     [f"find_package_hit/gleigem/depth:4/imports:{size}/names:random" for size in (8, 128, 1_024)]),
    ("enumerate the visible packages, per entry", "1, 4, 16, 64 scopes",
     [f"enumerate_packages/gleigem/depth:{depth}/imports:8" for depth in (1, 4, 16, 64)]),
    ("parse an argument `a.b.c`", "short, long names",
     [f"parse_fully_qualified/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("parse an argument `package`", "short, long names",
     [f"parse_package/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("parse an argument `package@range`", "short, long names",
     [f"parse_versioned_package/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("add a package", "to 15, 1,000, 100,000 others",
     [f"add_package/gleigem/entries:{size}/names:random" for size in (15, 1_000, 100_000)]),
    ("add a fully qualified name", "to 15, 1,000, 100,000 others",
     [f"add_fully_qualified/gleigem/entries:{size}/names:random" for size in (15, 1_000, 100_000)]),
    ("clone a list, per entry", "15, 1,000, 100,000 entries",
     [f"clone/gleigem/entries:{size}" for size in (15, 1_000, 100_000)]),
    ("destroy a list, per entry", "15, 1,000, 100,000 entries",
     [f"destroy/gleigem/entries:{size}" for size in (15, 1_000, 100_000)]),
]


def costs_table(results):
    def allocations(names):
        counts = [results[name]["allocations_per_item"] for name in names]
        low, high = (f"{count:.2g}" for count in (min(counts), max(counts)))
        return low if low == high else f"{low} to {high}"

    lines = ["| to | at | takes | allocations |", "| --- | --- | --- | --- |"]
    for what, where, names in COSTS:
        times = ", ".join(duration(results.time(name)) for name in names)
        lines.append(f"| {what} | {where} | {times} | {allocations(names)} |")
    return "\n".join(lines)


# The targets that README.md shows, by name, and the reference of their ratio.
HEADLINES = [
    ("find package, miss, depth 1", "a name that nobody imports, 1 scope", "one hash map per scope"),
    ("find package, miss, depth 16", "the same, 16 nested scopes", "one hash map per scope"),
    ("find package, hit, depth 16", "a name that some scope imports, 16 nested scopes", "one hash map per scope"),
    ("enumerate packages, depth 16", "what is visible, 16 nested scopes", "a view per scope nested in the next"),
    ("parse fully qualified", "an argument `a.b.c`", "copying the texts that its entry keeps"),
    ("add fully qualified", "an addition of `a.b.c`", "filling standard containers by hand"),
    ("memory of a fully qualified entry", "the memory of an entry `a.b.c`", "standard containers"),
]


def headline_table(rows):
    lines = ["| | takes | | of | at worst |", "| --- | ---: | ---: | --- | --- |"]
    for name, what, floor in HEADLINES:
        row = next(row for row in rows if row.target == name)  # the first, where there is another floor
        lines.append(f"| {what} | {row.measured} | {100 * row.value:.0f} % | {floor} | {row.worst_at} |")
    return "\n".join(lines)


def processor():
    for line in Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def machine_list(results, costs):
    context = results.context
    caches = ", ".join(f"L{cache['level']} {cache['type'].lower()} {cache['size'] // 1024} KiB"
                       for cache in context["caches"])
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    return "\n".join([
        f"- {processor()}, {context['num_cpus']} processors at {context['mhz_per_cpu']} MHz; {caches}",
        f"- {system}, Linux {os.uname().release.split('-')[0]}, {' '.join(platform.libc_ver())}",
        f"- {context['compiler']}, `{context['flags']}`, libstdc++",
        f"- {context['date'][:10]}; load of the machine at the start "
        + ", ".join(f"{load:.1f}" for load in context["load_avg"]),
        f"- `libgleigem.so`, stripped: {costs['library']['bytes'] / 1024:.0f} KiB, "
        f"{costs['library']['relocations']} load-time relocations",
    ])


def fill(page, places):
    pattern = re.compile(r"(<!-- begin (?P<name>\w+) -->\n).*?(<!-- end (?P=name) -->)", re.DOTALL)
    return pattern.sub(lambda place: f"{place[1]}{places[place['name']]}\n{place[3]}", page)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("measurements", type=Path)
    parser.add_argument("pages", type=Path, nargs="+")
    options = parser.parse_args()
    measurements = Measurements(options.measurements)
    rows = all_targets(measurements)
    places = {
        "costs": costs_table(measurements.results),
        "machine": machine_list(measurements.results, measurements.build_costs),
        "targets": as_markdown(rows),
        "headlines": headline_table(rows),
    }
    for page in options.pages:
        page.write_text(fill(page.read_text(), places))


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Fills the marked places of docs/performance.md with the figures of a run of the benchmark suite.

    update_performance_page.py BENCHMARKS_JSON GROWTH_JSON BUILD_COSTS_JSON PAGE

A place reads `<!-- begin NAME -->`, lines, `<!-- end NAME -->`; the lines between are replaced.
"""

import argparse
import json
import os
import platform
import re
from pathlib import Path

from benchmark_targets import Results, all_targets, as_markdown, duration

COSTS = [
    # What a user does, and the benchmarks that say what it costs, from the cheapest circumstances to the dearest.
    ("look up a name that nobody imports", "1, 4, 16, 64 scopes",
     [f"find_package_miss/gleigem/depth:{depth}/imports:8" for depth in (1, 4, 16, 64)]),
    ("look up a name that some scope imports", "1, 4, 16, 64 scopes",
     [f"find_package_hit/gleigem/depth:{depth}/imports:8" for depth in (1, 4, 16, 64)]),
    ("enumerate the visible packages, per entry", "1, 4, 16, 64 scopes",
     [f"enumerate_packages/gleigem/depth:{depth}/imports:8" for depth in (1, 4, 16, 64)]),
    ("parse an argument `a.b.c`", "short, long names",
     [f"parse_fully_qualified/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("parse an argument `package`", "short, long names",
     [f"parse_package/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("parse an argument `package@range`", "short, long names",
     [f"parse_versioned_package/{length}/gleigem/arguments:100" for length in ("short", "long")]),
    ("add a package", "to 10, 1,000, 100,000 others",
     [f"add_package/gleigem/entries:{size}" for size in (10, 1_000, 100_000)]),
    ("add a fully qualified name", "to 10, 1,000, 100,000 others",
     [f"add_fully_qualified/gleigem/entries:{size}" for size in (10, 1_000, 100_000)]),
    ("clone a list, per entry", "8, 1,000, 100,000 entries",
     [f"clone/gleigem/entries:{size}" for size in (8, 1_000, 100_000)]),
    ("destroy a list, per entry", "8, 1,000, 100,000 entries",
     [f"destroy/gleigem/entries:{size}" for size in (8, 1_000, 100_000)]),
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


def fill(page, name, text):
    pattern = re.compile(rf"(<!-- begin {name} -->\n).*?(<!-- end {name} -->)", re.DOTALL)
    filled, count = pattern.subn(lambda place: f"{place[1]}{text}\n{place[2]}", page)
    assert count == 1, f"the page has {count} places for {name}"
    return filled


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("benchmarks", type=Path)
    parser.add_argument("growth", type=Path)
    parser.add_argument("costs", type=Path)
    parser.add_argument("page", type=Path)
    options = parser.parse_args()
    results, costs = Results(options.benchmarks), json.loads(options.costs.read_text())
    page = options.page.read_text()
    page = fill(page, "costs", costs_table(results))
    page = fill(page, "machine", machine_list(results, costs))
    instructions = json.loads(options.growth.read_text())
    page = fill(page, "targets", as_markdown(all_targets(results, instructions, costs)))
    options.page.write_text(page)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Draws the plots of docs/performance.md from the measurements of benchmark.sh.

    plot_benchmarks.py MEASUREMENTS_FOLDER FOLDER

Each plot is a small SVG file of panels that share their axes, both logarithmic, and a legend. Its background is
transparent; its colours are readable on white and on black, and distinguishable without red and green.
"""

import argparse
import math
import re
from dataclasses import dataclass
from pathlib import Path
from xml.sax.saxutils import escape

from benchmark_targets import Measurements

WIDTH, HEIGHT = 760, 390
LEFT, RIGHT, TOP, BOTTOM, GAP = 62, 12, 26, 94, 22
INK, GRID = "#767676", "#76767640"


@dataclass
class Style:
    label: str
    colour: str
    dashes: str = ""
    width: float = 1.6


OWN = 2.8  # width of the library's own lines
STYLES = {
    "gleigem": Style("gleigem", "#0072b2", width=OWN),
    "gleigem/random": Style("gleigem, random words", "#0072b2", width=OWN),
    "gleigem/alike": Style("gleigem, alike names", "#0072b2", "2 5", OWN),
    "gleigem/classes": Style("gleigem, class names", "#0072b2", "9 5", OWN),
    "absl_maps": Style("absl::flat_hash_map per scope", "#e69f00"),
    "absl_maps/random": Style("absl map, random words", "#e69f00"),
    "absl_maps/alike": Style("absl map, alike names", "#e69f00", "2 4"),
    "absl_maps/classes": Style("absl map, class names", "#e69f00", "8 4"),
    "unordered_maps": Style("std::unordered_map per scope", "#cc79a7", "8 4"),
    "model": Style("literal model of the rules", "#999999", "2 3"),
    "hash": Style("std::hash of the name alone", INK, "1 3", 1.2),
    "loop": Style("hand-written loop", "#009e73", "8 4"),
    "nested_views": Style("nested any_views", "#d55e00", "8 3 2 3"),
    "any_view_alone": Style("any_view over one vector", "#56b4e9", "2 4"),
    "by_hand": Style("the same by hand", "#e69f00"),
}


@dataclass
class Panel:
    """Nanoseconds per item, by the value of the horizontal axis, for each line by its style."""

    title: str
    lines: dict[str, dict[int, float]]


@dataclass
class Plot:
    panels: list[Panel]
    x_label: str
    y_label: str


def times(results, pattern):
    """The times of the benchmarks whose names match, by the number in the name."""
    return {int(match[1]): results.time(name) * 1e9
            for name in results.least if (match := re.fullmatch(pattern, name))}


def find(results):
    def panel(title, outcome):
        lines = {whose: times(results, rf"find_package_{outcome}/{whose}/depth:(\d+)/imports:8/names:random")
                 for whose in ("gleigem", "absl_maps", "unordered_maps", "model")}
        lines["hash"] = dict.fromkeys(lines["gleigem"], results.time("hash_of_name/std") * 1e9)
        return Panel(title, lines)
    return Plot([panel("a name that nobody imports", "miss"), panel("a name that some scope imports", "hit")],
                "nested scopes, 8 imports each", "time per lookup [ns]")


def find_by_size(results):
    def panel(title, outcome):
        pattern = r"find_package_{}/{}/depth:1/imports:([1-9]\d*)/names:{}"
        return Panel(title, {
            f"{whose}/{names}": times(results, pattern.format(outcome, whose, names))
            for whose in ("gleigem", "absl_maps") for names in ("random", "alike", "classes")})
    return Plot([panel("a name that nobody imports", "miss"), panel("a name that the scope imports", "hit")],
                "imports of one scope", "time per lookup [ns]")


def enumeration(results):
    def panel(title, kind):
        return Panel(title, {whose: times(results, rf"enumerate_{kind}/{whose}/depth:(\d+)/imports:8")
                             for whose in ("gleigem", "loop", "nested_views", "any_view_alone", "model")})
    return Plot([panel("packages", "packages"), panel("fully qualified names", "fully_qualified")],
                "nested scopes, 8 imports each", "time per visible entry [ns]")


def adding(results):
    def panel(title, kind):
        return Panel(title, {whose: times(results, rf"add_{kind}/{whose}/entries:(\d+)/names:random")
                             for whose in ("gleigem", "by_hand", "model")})
    return Plot([panel("packages", "package"),
                 panel("fully qualified names of one root", "fully_qualified_of_one_root")],
                "entries added to one list", "time per added entry [ns]")


PLOTS = [find, find_by_size, enumeration, adding]


def scale(values, start, end):
    """The position of a value on a logarithmic axis from `start`, the position of the minimum, to `end`."""
    low, high = math.log(min(values)), math.log(max(values))
    return lambda value: start + (math.log(value) - low) / (high - low) * (end - start)


def number(value):
    if value < 1:
        return f"{value:g}"
    return f"{value:,.0f}" if value < 10_000 else f"{value / 1_000:,.0f}k" if value < 1e6 else f"{value / 1e6:,.0f}M"


def y_ticks(low, high):
    """Round numbers around and between the values; only powers of ten if there are many."""
    steps = (1,) if high / low > 1_000 else (1, 2, 5)
    ticks = [step * 10**power for power in range(-1, 10) for step in steps]
    first = max(tick for tick in ticks if tick <= low)
    last = min(tick for tick in ticks if tick >= high)
    return [tick for tick in ticks if first <= tick <= last]


def text(x, y, content, anchor="middle", more=""):
    return f'<text x="{x:.0f}" y="{y:.0f}" text-anchor="{anchor}"{more}>{escape(content)}</text>'


def rule(x1, y1, x2, y2):
    return f"M{x1:.0f} {y1:.0f}L{x2:.0f} {y2:.0f}"


def stroke(style):
    dashes = f' stroke-dasharray="{style.dashes}"' if style.dashes else ""
    return f'fill="none" stroke="{style.colour}" stroke-width="{style.width}"{dashes}'


def draw_line(style, points):
    """A line through the points and a dot at each, drawn as a line of no length with round ends."""
    line = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    dots = "".join(f"M{x:.1f} {y:.1f}h0" for x, y in points)
    yield f'<polyline points="{line}" {stroke(style)}/>'
    if style.label != STYLES["hash"].label:
        yield (f'<path d="{dots}" stroke="{style.colour}" stroke-width="{2 * style.width + 2}" '
               'stroke-linecap="round"/>')


def without_overlap(ticks, x):
    """The ticks whose labels fit, from the right."""
    kept = []
    for tick in reversed(ticks):
        if not kept or x(kept[-1]) - x(tick) > 7 * (len(number(tick)) + len(number(kept[-1]))) / 2 + 4:
            kept.append(tick)
    return kept


def draw_panel(panel, left, right, y, y_values):
    bottom = HEIGHT - BOTTOM
    x_values = sorted({x for points in panel.lines.values() for x in points})
    x = scale(x_values, left + 10, right - 10)
    grid = [rule(left, y(tick), right, y(tick)) for tick in y_values]
    grid += [rule(x(tick), TOP, x(tick), bottom) for tick in x_values]
    yield f'<path d="{"".join(grid)}" stroke="{GRID}"/>'
    yield text((left + right) / 2, TOP - 9, panel.title)
    for tick in without_overlap(x_values, x):
        yield text(x(tick), bottom + 16, number(tick))
    for name, points in reversed(panel.lines.items()):
        yield from draw_line(STYLES[name], [(x(value), y(points[value])) for value in sorted(points)])


def draw_legend(names):
    columns = 3
    column_width = (WIDTH - LEFT - RIGHT) / columns
    rows = math.ceil(len(names) / columns)
    for i, name in enumerate(names):
        x = LEFT + column_width * (i // rows)
        y = HEIGHT - BOTTOM + 60 + 18 * (i % rows)
        yield f'<path d="{rule(x, y - 4, x + 32, y - 4)}" {stroke(STYLES[name])}/>'
        yield text(x + 38, y, STYLES[name].label, "start")


def draw(plot):
    bottom = HEIGHT - BOTTOM
    all_times = [time for panel in plot.panels for points in panel.lines.values() for time in points.values()]
    y_values = y_ticks(min(all_times), max(all_times))
    y = scale(y_values, bottom, TOP)
    panel_width = (WIDTH - LEFT - RIGHT + GAP) / len(plot.panels) - GAP
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" '
           f'font-size="12" fill="{INK}">')
    for tick in y_values:
        yield text(LEFT - 6, y(tick) + 4, number(tick), "end")
    yield text(0, 0, plot.y_label, more=f' transform="translate(12 {(TOP + bottom) / 2}) rotate(-90)"')
    for i, panel in enumerate(plot.panels):
        left = LEFT + i * (panel_width + GAP)
        yield from draw_panel(panel, left, left + panel_width, y, y_values)
    yield text((LEFT + WIDTH - RIGHT) / 2, bottom + 36, plot.x_label)
    yield from draw_legend(list(plot.panels[0].lines))
    yield "</svg>\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("measurements", type=Path)
    parser.add_argument("folder", type=Path)
    options = parser.parse_args()
    results = Measurements(options.measurements).results
    options.folder.mkdir(parents=True, exist_ok=True)
    for plot in PLOTS:
        (options.folder / f"{plot.__name__}.svg").write_text("\n".join(draw(plot(results))))


if __name__ == "__main__":
    main()

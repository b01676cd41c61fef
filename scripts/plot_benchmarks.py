#!/usr/bin/env python3
"""Draws the plots of docs/performance.md from a run of the benchmark suite.

    plot_benchmarks.py BENCHMARKS_JSON FOLDER [--format svg]
"""

import argparse
import re
from pathlib import Path

import matplotlib

matplotlib.use("Agg")
matplotlib.rcParams.update({
    "svg.hashsalt": "gleigem", "font.size": 10, "axes.grid": True, "grid.color": "#e0e0e0",
    "axes.spines.top": False, "axes.spines.right": False, "axes.axisbelow": True,
    "savefig.facecolor": "white",
})
import matplotlib.pyplot as plt  # noqa: E402, after the choice of what draws
from benchmark_targets import Results  # noqa: E402
from matplotlib.ticker import FuncFormatter, LogLocator, NullFormatter  # noqa: E402

# By contestant: label, colour, marker. The colours can be told apart without red and green.
STYLES = {
    "gleigem": ("gleigem", "#0072b2", "o"),
    "absl_maps": ("absl::flat_hash_map per scope", "#e69f00", "s"),
    "unordered_maps": ("std::unordered_map per scope", "#cc79a7", "^"),
    "model": ("literal model of the rules", "#999999", "x"),
    "loop": ("hand-written loop", "#009e73", "s"),
    "nested_views": ("nested any_views", "#d55e00", "^"),
    "any_view_alone": ("any_view over one vector", "#56b4e9", "v"),
    "by_hand": ("the same containers by hand", "#e69f00", "s"),
}


def series(results, subject, contestant, variable, rest=""):
    """The times per item, by the value of a circumstance of the benchmark's name."""
    pattern = re.compile(rf"{subject}/{contestant}/{variable}:(\d+){rest}")
    points = {int(match[1]): results.time(name)
              for name in results.medians if (match := pattern.fullmatch(name))}
    return sorted(points), [points[x] * 1e9 for x in sorted(points)]


def plain(value, _):
    return f"{value:,.0f}" if value < 100_000 else f"{value / 1_000:,.0f}k" if value < 1e6 else f"{value / 1e6:,.0f}M"


def draw(axes, results, subject, contestants, variable, rest=""):
    for contestant in contestants:
        label, colour, marker = STYLES[contestant]
        axes.plot(*series(results, subject, contestant, variable, rest), label=label, color=colour, marker=marker,
                  markersize=5, linewidth=2.4 if contestant == "gleigem" else 1.4,
                  zorder=3 if contestant == "gleigem" else 2)
    axes.set_xscale("log")
    axes.set_yscale("log")
    ticks = series(results, subject, contestants[0], variable, rest)[0]
    axes.set_xticks(ticks, minor=False)
    for axis in (axes.xaxis, axes.yaxis):
        axis.set_major_formatter(FuncFormatter(plain))
        axis.set_minor_formatter(NullFormatter())
    axes.tick_params(which="minor", length=0)


def two_panels(panels, y_label, x_label):
    """A figure of panels that share their axes and one legend; `panels` are titles and drawing functions."""
    figure, all_axes = plt.subplots(1, len(panels), sharey=True, figsize=(9, 4.6), layout="constrained")
    for axes, (title, fill) in zip(all_axes, panels):
        fill(axes)
        axes.set_title(title, fontsize=10)
        axes.set_xlabel(x_label)
    all_axes[0].set_ylabel(y_label)
    handles, labels = all_axes[0].get_legend_handles_labels()
    figure.legend(handles, labels, loc="lower center", ncols=3, frameon=False)
    figure.get_layout_engine().set(rect=(0, 0.12, 1, 0.88))
    return figure


def plot_find(results):
    def panel(outcome):
        def fill(axes):
            draw(axes, results, f"find_package_{outcome}",
                 ("gleigem", "absl_maps", "unordered_maps", "model"), "depth", "/imports:8")
            hash_alone = results.time("hash_of_name/std") * 1e9
            axes.axhline(hash_alone, color="black", linewidth=1, linestyle=":", label="std::hash of the name alone")
        return fill
    return two_panels([("a name that nobody imports", panel("miss")), ("a name that some scope imports", panel("hit"))],
                      "time per lookup [ns]", "nested scopes, 8 imports each")


def plot_enumeration(results):
    def panel(kind):
        return lambda axes: draw(axes, results, f"enumerate_{kind}",
                                 ("gleigem", "loop", "nested_views", "any_view_alone", "model"), "depth", "/imports:8")
    return two_panels([("packages", panel("packages")), ("fully qualified names", panel("fully_qualified"))],
                      "time per visible entry [ns]", "nested scopes, 8 imports each")


def plot_adding(results):
    def panel(kind):
        def fill(axes):
            draw(axes, results, f"add_{kind}", ("gleigem", "by_hand", "model"), "entries")
            axes.yaxis.set_major_locator(LogLocator(subs=(1, 2, 5)))
        return fill
    return two_panels([("packages", panel("package")), ("fully qualified names of one root", panel("fully_qualified_of_one_root"))],
                      "time per added entry [ns]", "entries added to one list")


PLOTS = {"find": plot_find, "enumeration": plot_enumeration, "adding": plot_adding}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("benchmarks", type=Path)
    parser.add_argument("folder", type=Path)
    parser.add_argument("--format", default="svg")
    options = parser.parse_args()
    results = Results(options.benchmarks)
    options.folder.mkdir(parents=True, exist_ok=True)
    for name, plot in PLOTS.items():
        metadata = {"Date": None} if options.format == "svg" else None
        plot(results).savefig(options.folder / f"{name}.{options.format}", metadata=metadata)


if __name__ == "__main__":
    main()

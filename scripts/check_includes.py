#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Checks the direction of includes: each source file includes only what its layer may.

LAYERS is the table of layers and what they may include; docs/architecture.md shows it, with a picture of the actual
includes.

    check_includes.py [--write] [ROOT]

--write updates table and picture in ROOT/docs/architecture.md. ROOT defaults to the project's folder. Exit status 1 if
a file includes a header that it may not, or the document differs.
"""

import argparse
import posixpath
import re
import sys
from dataclasses import dataclass
from pathlib import Path, PurePosixPath

DOCUMENT = "docs/architecture.md"
PLACE = re.compile(r"(?s)(<!-- begin (layers|picture) -->\n).*?(<!-- end \2 -->)")

EVERYTHING = "everything"


@dataclass(frozen=True)
class Layer:
    name: str
    files: re.Pattern
    contents: str
    may_include: tuple = ()


def layer(name, files, contents, *may_include):
    return Layer(name, re.compile(files), contents, may_include)


# A file belongs to the first layer whose pattern matches its path. A layer may include itself and the layers it names,
# which precede it, so that there are no cycles.
LAYERS = (
    layer("platform headers", r"platform/.*\.hpp", "the reference implementation of the nine host services"),
    layer("platform sources", r"platform/.*\.cpp", "their implementation", "platform headers", "Boost", "ICU"),
    layer("import/platform.hpp", r"import/platform\.hpp", "the only header that includes the host's",
          "platform headers"),
    layer("import public headers", r"import/\w+\.hpp", "the installed headers: value model and interfaces",
          "import/platform.hpp", "range-v3"),
    layer("import sources", r"import/(diagnostics/)?\w+\.[ch]pp", "the value model, creation of messages, rendering",
          "import public headers", "import/platform.hpp", "Boost"),
    layer("import/parser", r"import/parser/.*", "classification, the parser, the command grammar",
          "import sources", "import public headers", "import/platform.hpp"),
    layer("import/list", r"import/list/.*", "the list, lookup, adding, enumeration",
          "import sources", "import public headers", "import/platform.hpp", "range-v3", "Boost", "xxHash"),
    layer("host kit", r"host/.*", "code that every host needs around the library; header-only",
          "import public headers", "import/platform.hpp"),
    layer("test kit", r"host_testing/\w+\.hpp", "printers and matchers for the tests of hosts; header-only",
          "host kit", "import public headers", "import/platform.hpp", "GoogleTest"),
    layer("recording platform", r"host_testing/recording/.*", "a platform whose answers are set by tests",
          "test kit", "platform headers"),
    layer("own platform", r"examples/own_platform/platform/.*", "the platform of another language, as an example"),
    layer("own platform's programs", r"examples/own_platform/.*", "a host of that language, and the test of a platform",
          "own platform", "test kit", "host kit", "import public headers"),
    layer("examples", r"examples/.*", "hosts of the library", "host kit", "import public headers"),
    layer("tools", r"tools/.*", "import_explorer, a host with reports for people and programs", "host kit",
          "import public headers", "platform headers", "range-v3", "ICU"),
    layer("tests", r"tests/.*", "tests, the reference model, other platforms", EVERYTHING),
    layer("fuzz", r"fuzz/.*", "fuzz targets", EVERYTHING),
    layer("benchmarks", r"benchmarks/.*", "benchmarks and their baselines", EVERYTHING),
)

LIBRARIES = {"unicode/": "ICU", "range/v3/": "range-v3", "boost/": "Boost", "xxhash.h": "xxHash",
             "gtest/": "GoogleTest", "gmock/": "GoogleTest"}

# Headers that must not be included, and why.
UNWANTED = {
    r"range/v3/all\.hpp": "all of range-v3 takes seconds to compile",
    r"bits/.*": "these are internal to the standard library",
}

# Folders to look for <...> in; another platform's own headers come first in its project.
ROOTS = (".", "platform", "tools", "tests")
OWN_PLATFORM = "examples/own_platform"


def layer_of(path):
    return next((each for each in LAYERS if each.files.fullmatch(path)), None)


def includes_of(text):
    """The headers that a source text includes, in <...> or "..."."""
    code = re.sub(r"(?s)/\*.*?\*/", "", text)
    return re.findall(r"""(?m)^[ \t]*#[ \t]*include[ \t]*([<"][^>"\n]+[>"])""", code)


def file_meant(root, path, include):
    """The project's file that an include in `path` refers to; none for a header of another project."""
    folders = [str(PurePosixPath(path).parent)] if include.startswith('"') else []
    folders += [f"{OWN_PLATFORM}/platform"] if path.startswith(OWN_PLATFORM) else []
    candidates = (posixpath.normpath(f"{folder}/{include[1:-1]}") for folder in (*folders, *ROOTS))
    return next((candidate for candidate in candidates if (root / candidate).is_file()), None)


def target_of(root, path, include):
    """The layer or library of an include; none for the standard library and similar headers."""
    if found := file_meant(root, path, include):
        return layer_of(found).name
    return next((library for prefix, library in LIBRARIES.items() if include[1:].startswith(prefix)), None)


def problems_of_file(root, path):
    if layer_of(path) is None:
        return [f"{path}: belongs to no layer of scripts/check_includes.py"]
    source = layer_of(path)
    problems = []
    for include in includes_of((root / path).read_text()):
        problems += [f"{path}: includes {include}: {reason}"
                     for pattern, reason in UNWANTED.items() if re.fullmatch(pattern, include[1:-1])]
        target = target_of(root, path, include)
        if target not in (None, source.name, *source.may_include) and EVERYTHING not in source.may_include:
            problems.append(f"{path}: includes {include}, but {source.name} may not include {target}")
    return problems


def problems_of_table():
    """Checks that layers only name earlier layers."""
    known = {EVERYTHING, *LIBRARIES.values()}
    problems = []
    for each in LAYERS:
        problems += [f"{each.name} may include {name}, which does not stand above it"
                     for name in each.may_include if name not in known]
        known.add(each.name)
    return problems


def table():
    rows = ["| layer | what is there | may include |", "| --- | --- | --- |"]
    rows += [f"| {each.name} | {each.contents} | {', '.join(each.may_include) or 'nothing else'} |" for each in LAYERS]
    return "".join(f"{row}\n" for row in rows)


def arrows(root):
    """The layers and libraries that each layer actually includes; without layers that may include everything."""
    return {(source.name, target)
            for path in source_files(root)
            if (source := layer_of(path)) and EVERYTHING not in source.may_include
            for include in includes_of((root / path).read_text())
            if (target := target_of(root, path, include)) not in (None, source.name)}  # fmt: skip


def is_detour(arrow, others):
    """Whether other arrows connect the ends of an arrow."""
    reached, pending = set(), [arrow[0]]
    while pending:
        layer = pending.pop()
        steps = {target for source, target in others - {arrow} if source == layer} - reached
        reached |= steps
        pending += steps
    return arrow[1] in reached


def node(name):
    identifier = re.sub(r"\W+", "_", name)
    return f'{identifier}["{name}"]'


def picture(root):
    """The arrows as a Mermaid flowchart, without those that others imply."""
    everything = arrows(root)
    drawn = sorted(arrow for arrow in everything if not is_detour(arrow, everything))
    lines = [f"    {node(source)} --> {node(target)}" for source, target in drawn]
    return "\n".join(["", "```mermaid", "flowchart TD", *lines, "```", ""])


def source_files(root):
    layers = {"platform", "import", "host", "host_testing", "examples", "tools", "tests", "fuzz", "benchmarks"}
    return sorted(path.relative_to(root).as_posix() for folder in layers for path in (root / folder).rglob("*.[ch]pp"))


def problems_of(root):
    files = source_files(root)
    problems = [] if files else [f"{root}: there are no source files"]
    return problems + problems_of_table() + [problem for path in files for problem in problems_of_file(root, path)]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("root", nargs="?", type=Path, default=Path(__file__).resolve().parent.parent)
    options = parser.parse_args()

    problems = problems_of(options.root)
    document = options.root / DOCUMENT
    shown = {"layers": table(), "picture": picture(options.root)}
    text = document.read_text()
    actual = PLACE.sub(lambda place: place[1] + shown[place[2]] + place[3], text)
    if options.write:
        document.write_text(actual)
    elif actual != text or set(shown) != {place[2] for place in PLACE.finditer(text)}:
        problems.append(f"{DOCUMENT}: table or picture of the layers is outdated: scripts/check_includes.py --write")
    print("\n".join(problems), end="\n" if problems else "")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()

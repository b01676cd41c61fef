#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Checks that includes point one way: each source file includes only what its room may.

ROOMS is the table of rooms and of what they may include; docs/architecture.md shows it, and a picture of what they
do include.

    check_includes.py [--write] [ROOT]

--write writes table and picture in ROOT/docs/architecture.md anew. ROOT is the project's folder if nothing else is
said. Exit status 1 when a file includes what it may not, or the document shows something else.
"""

import argparse
import posixpath
import re
import sys
from dataclasses import dataclass
from pathlib import Path, PurePosixPath

DOCUMENT = "docs/architecture.md"
PLACE = re.compile(r"(?s)(<!-- begin (rooms|picture) -->\n).*?(<!-- end \2 -->)")

EVERYTHING = "everything"


@dataclass(frozen=True)
class Room:
    name: str
    files: re.Pattern
    contents: str
    may_include: tuple = ()


def room(name, files, contents, *may_include):
    return Room(name, re.compile(files), contents, may_include)


# A file is in the first room whose pattern its path matches. A room may include itself and those it names, all of
# which stand above it, so that no two can include each other.
ROOMS = (
    room("platform headers", r"platform/.*\.hpp", "the nine services of the host language: the reference"),
    room("platform sources", r"platform/.*\.cpp", "what stands behind them", "platform headers", "Boost", "ICU"),
    room("import/platform.hpp", r"import/platform\.hpp", "the one door to the host's headers", "platform headers"),
    room("import public headers", r"import/\w+\.hpp", "what is installed: the value model, the interfaces",
         "import/platform.hpp", "range-v3"),
    room("import sources", r"import/(diagnostics/)?\w+\.[ch]pp", "the value model, the makers of messages, rendering",
         "import public headers", "import/platform.hpp", "Boost"),
    room("import/parser", r"import/parser/.*", "classification, the parser, the command grammar",
         "import sources", "import public headers", "import/platform.hpp"),
    room("import/list", r"import/list/.*", "the list, lookup, adding, enumeration",
         "import sources", "import public headers", "import/platform.hpp", "range-v3", "xxHash"),
    room("host kit", r"host/.*", "what every host writes around the library: headers alone",
         "import public headers", "import/platform.hpp"),
    room("own platform", r"examples/own_platform/platform/.*", "a platform of another language, for the porting guide"),
    room("own platform's programs", r"examples/own_platform/.*", "a host of that language, and the test of a platform",
         "own platform", "host kit", "import public headers"),
    room("examples", r"examples/.*", "hosts of the library", "host kit", "import public headers"),
    room("tools", r"tools/.*", "import_explorer, a host with reports for people and programs", "host kit",
         "import public headers", "platform headers", "range-v3", "ICU"),
    room("tests", r"tests/.*", "tests, the literal model, platforms that record or differ", EVERYTHING),
    room("fuzz", r"fuzz/.*", "fuzz targets", EVERYTHING),
    room("benchmarks", r"benchmarks/.*", "benchmarks, and what they compare with", EVERYTHING),
)

LIBRARIES = {"unicode/": "ICU", "range/v3/": "range-v3", "boost/": "Boost", "xxhash.h": "xxHash"}

# Headers that nobody includes, and why not.
UNWANTED = {
    r"range/v3/all\.hpp": "all of range-v3 takes seconds to compile",
    r"bits/.*": "these are the standard library's insides",
}

# Where <...> is looked for; another platform's own headers come first in its project.
ROOTS = (".", "platform", "tools", "tests")
OWN_PLATFORM = "examples/own_platform"


def room_of(path):
    return next((each for each in ROOMS if each.files.fullmatch(path)), None)


def includes_of(text):
    """The headers that a source text includes, in <...> or "..."."""
    code = re.sub(r"(?s)/\*.*?\*/", "", text)
    return re.findall(r"""(?m)^[ \t]*#[ \t]*include[ \t]*([<"][^>"\n]+[>"])""", code)


def file_meant(root, path, include):
    """The project's file that an include in `path` means; none for a header of somebody else's."""
    folders = [str(PurePosixPath(path).parent)] if include.startswith('"') else []
    folders += [f"{OWN_PLATFORM}/platform"] if path.startswith(OWN_PLATFORM) else []
    candidates = (posixpath.normpath(f"{folder}/{include[1:-1]}") for folder in (*folders, *ROOTS))
    return next((candidate for candidate in candidates if (root / candidate).is_file()), None)


def target_of(root, path, include):
    """The room or library that an include leads to; none for the standard library and the like."""
    if found := file_meant(root, path, include):
        return room_of(found).name
    return next((library for prefix, library in LIBRARIES.items() if include[1:].startswith(prefix)), None)


def problems_of_file(root, path):
    if room_of(path) is None:
        return [f"{path}: is in no room of scripts/check_includes.py"]
    source = room_of(path)
    problems = []
    for include in includes_of((root / path).read_text()):
        problems += [f"{path}: includes {include}: {reason}"
                     for pattern, reason in UNWANTED.items() if re.fullmatch(pattern, include[1:-1])]
        target = target_of(root, path, include)
        if target not in (None, source.name, *source.may_include) and EVERYTHING not in source.may_include:
            problems.append(f"{path}: includes {include}, but {source.name} may not include {target}")
    return problems


def problems_of_table():
    """Whatever a room includes stands above it."""
    known = {EVERYTHING, *LIBRARIES.values()}
    problems = []
    for each in ROOMS:
        problems += [f"{each.name} may include {name}, which does not stand above it"
                     for name in each.may_include if name not in known]
        known.add(each.name)
    return problems


def table():
    rows = ["| room | what is there | may include |", "| --- | --- | --- |"]
    rows += [f"| {each.name} | {each.contents} | {', '.join(each.may_include) or 'nothing else'} |" for each in ROOMS]
    return "".join(f"{row}\n" for row in rows)


def arrows(root):
    """Which room does include which, and which library; without those that may include everything."""
    return {(source.name, target)
            for path in source_files(root)
            if (source := room_of(path)) and EVERYTHING not in source.may_include
            for include in includes_of((root / path).read_text())
            if (target := target_of(root, path, include)) not in (None, source.name)}  # fmt: skip


def is_detour(arrow, others):
    """Whether other arrows lead from one end of an arrow to the other."""
    reached, pending = set(), [arrow[0]]
    while pending:
        room = pending.pop()
        steps = {target for source, target in others - {arrow} if source == room} - reached
        reached |= steps
        pending += steps
    return arrow[1] in reached


def node(name):
    identifier = re.sub(r"\W+", "_", name)
    return f'{identifier}["{name}"]'


def picture(root):
    """The arrows as a Mermaid flowchart, but those that others imply."""
    everything = arrows(root)
    drawn = sorted(arrow for arrow in everything if not is_detour(arrow, everything))
    lines = [f"    {node(source)} --> {node(target)}" for source, target in drawn]
    return "\n".join(["", "```mermaid", "flowchart TD", *lines, "```", ""])


def source_files(root):
    rooms = {"platform", "import", "host", "examples", "tools", "tests", "fuzz", "benchmarks"}
    return sorted(path.relative_to(root).as_posix() for folder in rooms for path in (root / folder).rglob("*.[ch]pp"))


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
    shown = {"rooms": table(), "picture": picture(options.root)}
    text = document.read_text()
    actual = PLACE.sub(lambda place: place[1] + shown[place[2]] + place[3], text)
    if options.write:
        document.write_text(actual)
    elif actual != text or set(shown) != {place[2] for place in PLACE.finditer(text)}:
        problems.append(f"{DOCUMENT}: table or picture of the rooms is another; scripts/check_includes.py --write")
    print("\n".join(problems), end="\n" if problems else "")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Measures the size of the built library and the cost of including its header; prints JSON.

    measure_build_costs.py BUILD_FOLDER

Size and load-time relocations are those of the stripped libgleigem.so. Compile times are processor times,
medians of runs that alternate between the headers, with the compiler and include folders of the build.
"""

import argparse
import json
import os
import shlex
import statistics
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
RUNS = 11
HEADERS = {
    "import.hpp": "#include <import/import.hpp>\n",
    "any_view.hpp": "#include <range/v3/view/any_view.hpp>\n#include <string>\n",
}


def compiler_command(build):
    """The command that compiles a source of the library, without its output and input."""
    commands = json.loads((build / "compile_commands.json").read_text())
    source = str(ROOT / "import/entries.cpp")
    words = shlex.split(next(c["command"] for c in commands
                             if c["file"] == source and "gleigem.dir" in c["command"]))
    words = [word for word in words if not word.endswith("ccache")]
    return words[:words.index("-o")]


def processor_time(command):
    before = os.times()
    subprocess.run(command, check=True)
    after = os.times()
    return (after.children_user + after.children_system) - (before.children_user + before.children_system)


def compile_times(build):
    times = {name: [] for name in HEADERS}
    with tempfile.TemporaryDirectory() as folder:
        sources = {name: Path(folder, name).with_suffix(".cpp") for name in HEADERS}
        for name, source in sources.items():
            source.write_text(HEADERS[name])
        for _ in range(RUNS):
            for name, source in sources.items():
                times[name].append(processor_time([*compiler_command(build), "-fsyntax-only", str(source)]))
    return {name: statistics.median(runs) for name, runs in times.items()}


def library_weight(library):
    with tempfile.TemporaryDirectory() as folder:
        stripped = Path(folder, library.name)
        subprocess.run(["strip", "-o", stripped, library], check=True)
        relocations = subprocess.run(["readelf", "--relocs", "--wide", stripped], check=True, text=True,
                                     stdout=subprocess.PIPE).stdout
        return {"bytes": stripped.stat().st_size,
                "relocations": sum(" R_" in line for line in relocations.splitlines())}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("build", type=Path)
    build = parser.parse_args().build.resolve()
    library = (build / "import/libgleigem.so").resolve()
    print(json.dumps({"library": library_weight(library), "compile_seconds": compile_times(build)}, indent=2))


if __name__ == "__main__":
    main()

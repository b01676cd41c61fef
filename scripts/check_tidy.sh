#!/usr/bin/env bash
# check_tidy.sh [PATTERN...]: runs clang-tidy on source files with the flags of preset dev: on all files, or on those
# whose path matches a regular expression (`scripts/check_tidy.sh import/list`). Any finding is a failure.
# Newer versions of clang-tidy have checks that .clang-tidy does not cover, so they are not used.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

version=14
build=build/tidy

require_packages "${test_packages[@]}" "${lint_packages[@]}"

if ! tidy=$(newest run-clang-tidy $version); then
    printf 'clang-tidy %s is not installed: not checked.\n' $version
    exit
fi

# Parsing the headers of other libraries takes most of the time. Sources compiled together parse them only once.
step "configuring $build"
unity=ON
(($# == 0)) || unity=OFF
cmake --preset dev -B $build -DCMAKE_UNITY_BUILD=$unity >/dev/null

# Check each source once, although some are compiled into several targets.
mkdir -p $build/each_once
python3 - $build <<'EOF'
import json
import re
import sys
from pathlib import Path

build = Path(sys.argv[1]).resolve()


def sources_of(file):
    """The project's sources that the compiler reads for a file."""
    if file.parent.name == "Unity":
        return set(re.findall(r'#include "(.*)"', file.read_text()))
    return {str(file)} if build not in file.parents else set()


once, seen = [], set()
commands = json.loads((build / "compile_commands.json").read_text())
commands = [(command, sources_of(Path(command["file"]))) for command in commands]
for command, sources in sorted(commands, key=lambda each: len(each[1]) == 1):
    if sources <= seen:
        continue
    seen |= sources
    if len(sources) == 1:  # use its own path, which determines its .clang-tidy
        source = next(iter(sources))
        command = {**command, "file": source, "command": command["command"].replace(command["file"], source)}
    once.append(command)
(build / "each_once/compile_commands.json").write_text(json.dumps(once, indent=1))
EOF
printf "Checks: '-bugprone-suspicious-include'\nInheritParentConfig: true\n" >$build/.clang-tidy

# The commands are for g++ and may name warnings that clang does not know.
step "running clang-tidy"
"$tidy" -quiet -p $build/each_once -j "$(nproc)" -extra-arg=-Wno-unknown-warning-option "$@" \
    2> >(grep -v 'warnings generated' >&2 || true)

#!/usr/bin/env bash
# check_tidy.sh [PATTERN...]: runs clang-tidy on source files as compiled under preset dev: on all of them, or on those
# whose path matches a regular expression (`scripts/check_tidy.sh import/list`). Any finding is a failure.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

version=14

require_packages "${test_packages[@]}" "${lint_packages[@]}"

if ! tidy=$(newest run-clang-tidy $version); then
    printf 'clang-tidy %s is not installed: not checked, since .clang-tidy does not cover the checks of other versions.\n' \
        $version
    exit
fi

step "configuring preset dev"
cmake --preset dev >/dev/null

# Each source once, although some are compiled into several targets.
mkdir -p build/tidy
python3 - <<'EOF'
import json
from pathlib import Path

build = Path("build").resolve()
commands = json.loads((build / "dev/compile_commands.json").read_text())
ours = {c["file"]: c for c in reversed(commands) if build not in Path(c["file"]).parents}
(build / "tidy/compile_commands.json").write_text(json.dumps(list(ours.values()), indent=1))
EOF

# The commands are g++'s and may contain warnings that clang does not support.
step "running clang-tidy"
"$tidy" -quiet -p build/tidy -j "$(nproc)" -extra-arg=-Wno-unknown-warning-option "$@" \
    2> >(grep -v 'warnings generated' >&2 || true)

#!/usr/bin/env bash
# check_instructions.sh [--update]: counts, under callgrind, the instructions that looking names up and parsing
# take, and fails when one of the counts is more than 10 % above benchmarks/instruction_baseline.json; or
# writes that file anew. The counts do not depend on the load of the machine, but on the compiler: under
# another one than the baseline's they are only shown.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/release
counts=$build/instructions.json
baseline=benchmarks/instruction_baseline.json

require_packages "${benchmark_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building what is counted"
cmake --build --preset release --target gleigem_instruction_count

step "counting instructions"
scripts/count_instructions.py $build >"$counts"
compiler=$("$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' $build/CMakeCache.txt)" --version | head -1)

step "comparing with $baseline"
python3 - "$counts" "$baseline" "${compiler#* }" "${1-}" <<'PYTHON'
import json
import sys
from pathlib import Path

counts_file, baseline_file, compiler, option = sys.argv[1:]
tolerance = 1.10

counts = json.loads(Path(counts_file).read_text())

if option == "--update":
    Path(baseline_file).write_text(json.dumps({"compiler": compiler, "instructions": counts}, indent=2) + "\n")

baseline = json.loads(Path(baseline_file).read_text())
same_compiler = baseline["compiler"] == compiler
if not same_compiler:
    print(f"not compared: the baseline is of {baseline['compiler']}, this is {compiler}")

failures = 0
for name in counts.keys() | baseline["instructions"].keys():
    if name not in counts or name not in baseline["instructions"]:
        sys.exit(f"{name} is only in one of counts and baseline: check_instructions.sh --update")
for name, count in counts.items():
    ratio = count / baseline["instructions"][name]
    fails = same_compiler and ratio > tolerance
    failures += fails
    print(f"{name:32} {count:12,} {100 * (ratio - 1):+7.1f} %{'  too many' if fails else ''}")
if failures:
    sys.exit("Slower than the baseline allows. Where that is wanted: scripts/check_instructions.sh --update")
PYTHON

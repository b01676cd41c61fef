#!/usr/bin/env bash
# check_instructions.sh [--update]: counts the instructions that lookups and parsing execute, and fails if a count is
# too far above benchmarks/instruction_baseline.json, or rewrites that file. Also counts those of the explorer for
# expensive scripts, and fails if they grow faster than the scripts.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/release
baseline=benchmarks/instruction_baseline.json

require_packages "${benchmark_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_TOOLS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building the programs"
cmake --build --preset release --target gleigem_instruction_count import_explorer_growth_subjects

step "counting instructions"
if [[ ${1-} == --update ]]; then
    scripts/count_instructions.py $build --update $baseline
else
    scripts/count_instructions.py $build --compare $baseline
fi

step "counting the explorer's instructions"
ctest --test-dir $build --tests-regex '^Growth[.]OfTheExplorer' --no-tests=error --output-on-failure

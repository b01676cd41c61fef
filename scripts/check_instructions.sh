#!/usr/bin/env bash
# check_instructions.sh [--update]: counts the instructions that looking names up and parsing take, and fails when
# one of the counts is too far above benchmarks/instruction_baseline.json; or writes that file anew. Counts those of
# the explorer for scripts that are made to be costly, and fails when they grow faster than the scripts.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/release
baseline=benchmarks/instruction_baseline.json

require_packages "${benchmark_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_TOOLS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building what is counted"
cmake --build --preset release --target gleigem_instruction_count import_explorer_growth_subjects

step "counting instructions"
if [[ ${1-} == --update ]]; then
    scripts/count_instructions.py $build --update $baseline
else
    scripts/count_instructions.py $build --compare $baseline
fi

step "counting the explorer's instructions"
ctest --test-dir $build --tests-regex '^Growth[.]OfTheExplorer' --no-tests=error --output-on-failure

#!/usr/bin/env bash
# check_instructions.sh [--update]: counts the instructions that looking names up and parsing take, and fails when
# one of the counts is too far above benchmarks/instruction_baseline.json; or writes that file anew.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/release
baseline=benchmarks/instruction_baseline.json

require_packages "${benchmark_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building what is counted"
cmake --build --preset release --target gleigem_instruction_count

step "counting instructions"
if [[ ${1-} == --update ]]; then
    scripts/count_instructions.py $build --update $baseline
else
    scripts/count_instructions.py $build --compare $baseline
fi

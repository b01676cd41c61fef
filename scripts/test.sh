#!/usr/bin/env bash
# Runs every check: formatting, clang-tidy, the demonstration, the installed library, coverage, short fuzzing,
# instruction counts, the binary interface, and all tests under each preset. Warnings are errors. On Debian 12 or 13, as
# root, it installs missing packages; elsewhere it lists them.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

presets=(tsan asan clang dev)
seconds_of_fuzzing=30

require_packages "${test_packages[@]}" "${lint_packages[@]}" "${fuzz_packages[@]}" "${benchmark_packages[@]}" \
    "${abi_packages[@]}"

scripts/check_format.sh || exit
scripts/check_tidy.sh || exit
scripts/demo.sh || exit
scripts/check_install.sh || exit
scripts/coverage.sh || exit
scripts/fuzz.sh "$seconds_of_fuzzing" || exit
scripts/check_instructions.sh || exit
scripts/check_abi.sh || exit

for preset in "${presets[@]}"; do
    step "configuring preset $preset"
    cmake --preset "$preset" >/dev/null

    step "building preset $preset"
    cmake --build --preset "$preset"

    step "testing preset $preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done

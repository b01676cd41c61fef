#!/usr/bin/env bash
# Everything that must hold: formatting, clang-tidy, the binary interface of the last tag, the instructions
# that lookups and parsing take, and all tests under each preset, warnings being errors.
# On Debian 12, as root, it installs what is missing; elsewhere it says what is.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

presets=(tsan asan dev)

require_packages "${test_packages[@]}" "${lint_packages[@]}" "${abi_packages[@]}"

scripts/check_format.sh || exit
scripts/check_tidy.sh || exit
scripts/fuzz.sh 20 || exit
scripts/check_abi.sh || exit
scripts/check_instructions.sh || exit

for preset in "${presets[@]}"; do
    step "configuring preset $preset"
    cmake --preset "$preset" >/dev/null

    step "building preset $preset"
    cmake --build --preset "$preset"

    step "testing preset $preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done

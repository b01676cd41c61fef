#!/usr/bin/env bash
# Writes the API reference from the comments in the public headers: build/reference/html/index.html. Any warning of
# Doxygen, such as an undocumented item, is a failure. On Debian 12 or 13, as root, it installs missing packages;
# elsewhere it lists them.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/reference

require_packages "${demo_packages[@]}" "${reference_packages[@]}"

step "configuring $build"
cmake --preset release -B "$build" -DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_EXAMPLES=OFF \
    -DGLEIGEM_BUILD_TOOLS=OFF -DGLEIGEM_BUILD_BENCHMARKS=OFF >/dev/null

step "writing the reference"
cmake --build "$build" --target gleigem_reference

printf '\nStart page: %s/html/index.html\n' "$build"

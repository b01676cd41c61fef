#!/usr/bin/env bash
# Builds the explorer and runs it on its two sample scripts. On Debian 12 or 13, as root, it installs missing packages;
# elsewhere it lists them.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/demo
explorer=$build/tools/import_explorer/import_explorer

# demonstrate WHAT ARGUMENT...: prints the command line and runs it. Exit status 1 means that the script contains
# errors, as the samples do intentionally.
demonstrate() {
    step "$1"
    shift
    printf '$ %s\n\n' "$explorer $*"
    "$explorer" "$@" || (($? == 1))
}

require_packages "${demo_packages[@]}"

step "configuring $build"
cmake --preset release -B "$build" -DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_BENCHMARKS=OFF >/dev/null

step "building import_explorer"
cmake --build "$build" --target import_explorer

demonstrate "reading a tour of import commands, wrong ones among them, and drawing its scopes" --scopes examples/tour.import
demonstrate "reading commands of the time before packages" --packages off examples/legacy.import

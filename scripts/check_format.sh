#!/usr/bin/env bash
# Checks that every source file is laid out as .clang-format says; `clang-format-14 -i FILE` mends one.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

require_packages "${lint_packages[@]}"

step "checking the formatting"
find . -name '*.[ch]pp' -not -path './build/*' -not -path './out/*' -print0 |
    xargs -0 clang-format-14 --dry-run --Werror

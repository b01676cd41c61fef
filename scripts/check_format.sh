#!/usr/bin/env bash
# Checks that every C++ file is laid out as .clang-format says, which `clang-format-14 -i FILE` does, and every Python
# file as .flake8 says.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

require_packages "${lint_packages[@]}"

step "checking the layout of the C++ files"
find . -name '*.[ch]pp' -not -path './build/*' -not -path './out/*' -print0 |
    xargs -0 clang-format-14 --dry-run --Werror

step "checking the Python files"
flake8

#!/usr/bin/env bash
# Checks that every C++ file is laid out as .clang-format says, which `clang-format-14 -i FILE` does, and every Python
# file as .flake8 says. Other versions of clang-format lay some lines out in another way, so they cannot judge.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

version=14

require_packages "${lint_packages[@]}"

step "checking the layout of the C++ files"
if formatter=$(newest clang-format $version); then
    find . -name '*.[ch]pp' -not -path './build/*' -not -path './out/*' -print0 |
        xargs -0 "$formatter" --dry-run --Werror
else
    printf 'clang-format %s is not here: not checked.\n' $version
fi

step "checking the Python files"
flake8

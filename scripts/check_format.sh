#!/usr/bin/env bash
# Checks that all C++ files have the layout of .clang-format, which `clang-format-14 -i FILE` applies, and all Python
# files that of .flake8. Other versions of clang-format produce a different layout, so they are not used.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

version=14

require_packages "${lint_packages[@]}"

step "checking the layout of the C++ files"
if formatter=$(newest clang-format $version); then
    find . -name '*.[ch]pp' -not -path './build/*' -not -path './out/*' -print0 |
        xargs -0 "$formatter" --dry-run --Werror
else
    printf 'clang-format %s is not installed: not checked.\n' $version
fi

step "checking the Python files"
flake8

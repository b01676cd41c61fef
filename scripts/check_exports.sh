#!/usr/bin/env bash
# check_exports.sh LIBRARY [--update]: compares the names that libgleigem.so, given by its absolute path, exports with
# tests/abi/exported_symbols.txt, or rewrites that list. They are the same in every build.
#
# Names are compared in demangled form. Differences between processors, such as the type behind std::size_t, and between
# standard libraries, such as inline namespaces, are normalized.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

library=$1
list=tests/abi/exported_symbols.txt

exported=$("${NM:-nm}" --dynamic --defined-only "$library" | sed 's/.* //' | c++filt |
    sed -E 's/, (18446744073709551615ul|4294967295u)>/, std::dynamic_extent>/
            s/std::(__cxx11|__1)::/std::/g' | LC_ALL=C sort -u)
if [[ ${2-} == --update ]]; then
    printf '%s\n' "$exported" >"$list"
fi

if [[ ! $exported ]] || ! diff --label "$list" --label "$library" --unified=0 "$list" - <<<"$exported"; then
    printf 'The exported names of the library differ from %s.\n' "$list"
    exit 1
fi

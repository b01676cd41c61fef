#!/usr/bin/env bash
# check_abi.sh [--update]: builds libgleigem.so below build/abi and compares its binary interface with the baseline in
# tests/abi, using abidiff. --update rewrites the baseline: use it for each release, or with a new SONAME.
#
# New symbols are allowed. Any other change that affects a host built against the release is a failure, unless there is
# a new SONAME. What abidiff reads depends on the compiler and its standard library, so each version of g++ has its own
# baseline; without one, nothing is compared.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

baseline=tests/abi/interface-$(uname -m)-g++-$(g++ -dumpversion).abi.xz
unpacked=build/abi/baseline.abi
library=build/abi/now/import/libgleigem.so

# soname_of LIBRARY, soname_in_baseline: the name by which programs load the library.
soname_of() {
    readelf --dynamic "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p'
}

soname_in_baseline() {
    sed -nE "s/.*<abi-corpus .*soname='([^']*)'.*/\1/p" "$unpacked"
}

require_packages "${demo_packages[@]}" "${abi_packages[@]}"

if [[ ! -e $baseline && ${1-} != --update ]]; then
    printf '%s does not exist: nothing was compared.\n' "$baseline"
    exit 0
fi

# abidiff needs debug information.
step "building the library"
cmake -S . -B build/abi/now -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_EXAMPLES=OFF -DGLEIGEM_BUILD_TOOLS=OFF \
    -DGLEIGEM_BUILD_BENCHMARKS=OFF -DGLEIGEM_INSTALL=OFF >/dev/null
cmake --build build/abi/now --target gleigem >/dev/null

if [[ ${1-} == --update ]]; then
    step "writing $baseline"
    abidw --headers-dir import --headers-dir platform --drop-private-types --no-show-locs --no-comp-dir-path \
        --no-corpus-path "$library" | xz >"$baseline"
    exit
fi

step "comparing it with the last release"
xz --decompress --stdout "$baseline" >"$unpacked"
if abidiff --no-added-syms "$unpacked" "$library"; then
    printf 'The binary interface is the same as in the last release.\n'
elif [[ $(soname_in_baseline) != "$(soname_of "$library")" ]]; then
    printf 'The binary interface differs from the last release, and so does the SONAME, %s.\n' \
        "$(soname_of "$library")"
else
    printf 'The binary interface differs from the last release, but the SONAME is still %s.\n' \
        "$(soname_of "$library")"
    exit 1
fi

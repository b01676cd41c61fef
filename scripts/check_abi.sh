#!/usr/bin/env bash
# check_abi.sh [--update]: compares the binary interface of libgleigem.so as it stands, built below build/abi, with
# the baseline in tests/abi, by abidiff. --update writes the baseline anew: at each release, or with a new SONAME.
#
# New symbols are welcome. Whatever else a host built against the release would notice is a failure, unless a new
# SONAME tells it to be built again. What abidiff reads depends on the compiler and its standard library, so each
# version of g++ has a baseline of its own, and without one nothing is compared.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

baseline=tests/abi/interface-$(uname -m)-g++-$(g++ -dumpversion).abi.xz
unpacked=build/abi/baseline.abi
library=build/abi/now/import/libgleigem.so

# soname_of LIBRARY, soname_in_baseline: what programs ask the loader for.
soname_of() {
    readelf --dynamic "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p'
}

soname_in_baseline() {
    sed -nE "s/.*<abi-corpus .*soname='([^']*)'.*/\1/p" "$unpacked"
}

require_packages "${demo_packages[@]}" "${abi_packages[@]}"

if [[ ! -e $baseline && ${1-} != --update ]]; then
    printf 'There is no %s: nothing to compare with.\n' "$baseline"
    exit 0
fi

# abidiff reads debug information.
step "building the library as it stands"
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
    printf 'The binary interface is that of the last release.\n'
elif [[ $(soname_in_baseline) != "$(soname_of "$library")" ]]; then
    printf 'The binary interface is another than that of the last release, as its new SONAME %s says.\n' \
        "$(soname_of "$library")"
else
    printf 'The binary interface is another than that of the last release, under the same SONAME %s.\n' \
        "$(soname_of "$library")"
    exit 1
fi

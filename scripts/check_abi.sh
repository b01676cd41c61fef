#!/usr/bin/env bash
# check_abi.sh [TAG]: compares the binary interface of libgleigem.so as it stands with that of the last tag, or
# of TAG, by abidiff. Both are built below build/abi.
#
# New symbols are welcome. Whatever else a host built against the tag would notice is a failure, unless a new
# SONAME tells it to be built again.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

# build_library SOURCE BUILD: builds libgleigem.so with the debug information that abidiff reads.
build_library() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGLEIGEM_BUILD_TESTS=OFF \
        -DGLEIGEM_BUILD_EXAMPLES=OFF -DGLEIGEM_BUILD_TOOLS=OFF -DGLEIGEM_BUILD_BENCHMARKS=OFF \
        -DGLEIGEM_INSTALL=OFF >/dev/null
    cmake --build "$2" --target gleigem >/dev/null
}

soname_of() {
    readelf --dynamic "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p'
}

require_packages "${demo_packages[@]}" "${abi_packages[@]}"

tag=${1-$(git describe --tags --abbrev=0 2>/dev/null || true)}
if [[ -z $tag ]]; then
    printf 'There is no tag yet: nothing to compare with.\n'
    exit 0
fi

step "building the library of $tag"
rm -rf build/abi/tag-source
mkdir -p build/abi/tag-source
git archive "$tag" | tar --extract --directory build/abi/tag-source
build_library build/abi/tag-source build/abi/tag

step "building the library as it stands"
build_library . build/abi/now

step "comparing the two"
old=build/abi/tag/import/libgleigem.so
new=build/abi/now/import/libgleigem.so
if abidiff --no-added-syms "$old" "$new"; then
    printf 'The binary interface is that of %s.\n' "$tag"
elif [[ $(soname_of "$old") != "$(soname_of "$new")" ]]; then
    printf 'The binary interface is another than that of %s, as its new SONAME %s says.\n' \
        "$tag" "$(soname_of "$new")"
else
    printf 'The binary interface is another than that of %s, under the same SONAME %s.\n' \
        "$tag" "$(soname_of "$new")"
    exit 1
fi

# The packages of Debian 12, 13 and the next release that the scripts need. Each line names a package and a probe for
# it: a command, a <header>, a /path or a Python import. Sourced, never run.

# Debian 12 and 13 both have this clang. The next release has newer ones and drops old ones.
clang_version=19
if is_debian development; then
    newest_clang=$(apt-cache search --names-only '^clang-[0-9]+$' | grep -oE '^clang-[0-9]+' | sort --version-sort |
        tail -n 1) || true
    [[ ! $newest_clang ]] || clang_version=${newest_clang#clang-}
fi

demo_packages=(
    "g++                 g++"
    "cmake               cmake"
    "ninja-build         ninja"
    "libboost-dev        <boost/version.hpp>"
    "librange-v3-dev     <range/v3/range_fwd.hpp>"
    "libicu-dev          <unicode/uchar.h>"
    "libxxhash-dev       <xxhash.h>"
    "libcli11-dev        <CLI/CLI.hpp>"
    "nlohmann-json3-dev  <nlohmann/json.hpp>"
    "python3             python3"
)

package_packages=(
    "help2man            help2man"
    "dpkg-dev            dpkg-shlibdeps"
    "file                file"
    "pkgconf             pkg-config"
    "gdb                 gdb"
    "lintian             lintian"
)

reference_packages=(
    "doxygen             doxygen"
)

test_packages=(
    "${demo_packages[@]}"
    "libgtest-dev        <gtest/gtest.h>"
    "libgmock-dev        <gmock/gmock.h>"
    "librapidcheck-dev   <rapidcheck.h>"
    "python3-jsonschema  import jsonschema"
    "clang-$clang_version            clang++-$clang_version"
    "libc++-$clang_version-dev       /usr/lib/llvm-$clang_version/include/c++/v1/version"
    "libc++abi-$clang_version-dev    /usr/lib/llvm-$clang_version/lib/libc++abi.so"
    "${package_packages[@]}"
    "${reference_packages[@]}"
)

abi_packages=(
    "abigail-tools       abidiff"
    "xz-utils            xz"
)

# clang-format and clang-tidy are listed below: the scripts require a version that only Debian 12 has.
lint_packages=(
    "flake8              flake8"
)

fuzz_packages=(
    "clang-$clang_version            clang++-$clang_version"
    "libclang-rt-$clang_version-dev  /usr/lib/llvm-$clang_version/lib/clang/$clang_version/include/fuzzer"
)

# Preset release includes the tests.
benchmark_packages=(
    "${test_packages[@]}"
    "libbenchmark-dev    <benchmark/benchmark.h>"
    "libabsl-dev         <absl/container/flat_hash_map.h>"
    "valgrind            valgrind"
    "python3             python3"
)

# Only in Debian 12: older compilers, and the tool versions that check the sources.
if is_debian 12; then
    test_packages+=(
        "clang-14            clang++-14"
        "clang-16            clang++-16"
    )
    lint_packages+=(
        "clang-format-14     clang-format-14"
        "clang-tidy-14       run-clang-tidy-14"
    )
fi

#!/usr/bin/env bash
# matrix.sh [NAME...]: builds, installs and tests the library as packagers do, and for other systems and processors.
# Runs all variants, or the named ones; `matrix.sh --list` lists them. Each variant writes its files and a log below
# build/matrix. All variants together take hours; docs/portability.md has the results.
#
# Other processors need Debian's cross compilers (g++-aarch64-linux-gnu etc.) and qemu-user; Windows needs
# g++-mingw-w64-x86-64-posix and wine; other releases of Debian need root and debootstrap. Variants whose tools are
# missing are skipped.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
source scripts/lib/foreign.sh

declare -A variants=(
    [release]="g++, -O3"
    [lto]="g++, -flto as a flag"
    [ipo]="CMAKE_INTERPROCEDURAL_OPTIMIZATION"
    [mold]="g++ with the linker mold"
    [clang-lto]="newest clang, -flto, lld"
    [static]="BUILD_SHARED_LIBS=OFF, with the unit tests"
    [static-own-platform]="BUILD_SHARED_LIBS=OFF on a host's own platform"
    [unity]="CMAKE_UNITY_BUILD=ON, with the tool"
    [debug-mode]="-D_GLIBCXX_DEBUG, with the unit tests"
    [makefiles]="Unix Makefiles"
    [dh]="Debian packages by dpkg-buildpackage with debhelper"
    [multi-config]="Ninja Multi-Config, Debug and Release installed side by side"
    [cxx23]="C++23 with -fvisibility=hidden"
    [parent]="add_subdirectory in a parent project with strict warnings as errors"
    [strange-path]="an exported tree in a folder with blanks and letters beyond ASCII, with the unit tests"
    [aarch64]="64 bits, arm, with the unit tests"
    [armhf]="32 bits, arm, with the unit tests"
    [i386]="32 bits, x86, with the unit tests"
    [riscv64]="64 bits, RISC-V, on a host's own platform"
    [s390x]="64 bits, big-endian, with the unit tests"
    [debian-13]="scripts/test.sh in a new root of Debian 13, as root, an hour"
    [debian-sid]="the same in Debian's development branch, with its newest g++ and clang"
    [windows]="x86-64 Windows, mingw-w64, on a host's own platform, with the unit tests that need no ICU"
    [windows-static]="the same as static libraries"
)

unit_tests=(gleigem_tests gleigem_internal_tests gleigem_platform_tests gleigem_abi_tests gleigem_host_tests)
bare=(-DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_EXAMPLES=OFF -DGLEIGEM_BUILD_TOOLS=OFF)
tested=(-DGLEIGEM_BUILD_EXAMPLES=OFF -DGLEIGEM_BUILD_TOOLS=OFF)

# skip REASON: ends a variant that cannot run on this machine.
skip() {
    printf '%s\n' "$1" >&3
    exit 77
}

# need COMMAND...: skips the variant if a command is missing.
need() {
    local command
    for command in "$@"; do
        command -v "$command" || skip "$command is not installed"
    done
}

# configure OPTION...: configures $tree from $source with warnings as errors.
configure() {
    rm -rf "$tree/CMakeCache.txt"
    cmake -S "$source" -B "$tree" -G "${generator-Ninja}" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON \
        -DCMAKE_BUILD_TYPE=Release "$@"
}

# export_sources FOLDER: the committed sources without .git, as in a tarball.
export_sources() {
    mkdir -p "$1"
    git archive HEAD | tar --extract --directory "$1"
}

check_exported_names() {
    scripts/check_exports.sh "$tree/import/libgleigem.so"
}

# use_installed OPTION...: installs $tree, then builds and runs a consumer that finds it with find_package.
use_installed() {
    local prefix=$tree/prefix
    cmake --install "$tree" --prefix "$prefix"
    cmake -S tests/packaging/consumer -B "$tree/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" "$@"
    cmake --build "$tree/consumer"
    "$tree/consumer/consumer"
}

use_by_pkg_config() {
    export PKG_CONFIG_PATH=$tree/prefix/lib/pkgconfig LD_LIBRARY_PATH=$tree/prefix/lib
    eval g++ -std=c++20 tests/packaging/consumer/main.cpp -o '"$tree/by_pkg_config"' \
        "$(pkg-config "$@" --cflags --libs gleigem)"
    "$tree/by_pkg_config"
}

# shared_library OPTION...: builds a shared library without tests, checks its exported names, and uses it installed.
shared_library() {
    configure "${bare[@]}" "$@"
    cmake --build "$tree"
    check_exported_names
    use_installed "$@"
    use_by_pkg_config
}

# unit_tested OPTION...: builds the unit tests and runs them with $emulator. Optimizes little, because most of the time
# is spent on compiling the tests.
unit_tested() {
    configure "${tested[@]}" -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" "$@"
    cmake --build "$tree" --target "${unit_tests[@]}"
    local test
    for test in "${unit_tests[@]}"; do
        "${emulator[@]}" "$(find "$tree/tests" -name "$test" -type f)" --gtest_brief=1
    done
}

variant_release() { shared_library; }
variant_lto() { shared_library -DCMAKE_CXX_FLAGS=-flto; }
variant_ipo() { shared_library -DCMAKE_INTERPROCEDURAL_OPTIMIZATION=ON; }
variant_makefiles() { generator="Unix Makefiles" shared_library; }
variant_cxx23() { shared_library -DCMAKE_CXX_STANDARD=23 -DCMAKE_CXX_FLAGS=-fvisibility=hidden; }

variant_mold() {
    need mold
    shared_library -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold
}

variant_unity() {
    shared_library -DCMAKE_UNITY_BUILD=ON -DGLEIGEM_BUILD_TOOLS=ON
    "$tree/prefix/bin/import_explorer" --version
}

# build_googletest OPTION...: builds GoogleTest from Debian's sources and sets $googletest to the option that finds it.
build_googletest() {
    [[ -e /usr/src/googletest ]] || skip "the sources of GoogleTest (package googletest) are not installed"
    local prefix=$tree/googletest/prefix
    cmake -S /usr/src/googletest -B "$tree/googletest" -G Ninja -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_INSTALL_LIBDIR=lib "$@"
    cmake --build "$tree/googletest" --target install
    googletest=-DGTest_DIR=$prefix/lib/cmake/GTest
}

# Debug mode changes the types of containers, so GoogleTest is built in this mode, too. The tests of the platform and
# the host kit are left out: they need RapidCheck, which Debian provides only without debug mode.
variant_debug-mode() {
    build_googletest -DCMAKE_CXX_FLAGS=-D_GLIBCXX_DEBUG
    unit_tests=(gleigem_tests gleigem_internal_tests gleigem_abi_tests)
    unit_tested -DCMAKE_CXX_FLAGS=-D_GLIBCXX_DEBUG "$googletest"
    check_exported_names
}

# The archiver must be able to read the compiler's objects, so both have the same version.
variant_clang-lto() {
    local clang version
    clang=$(newest clang++) || skip "clang++ is not installed"
    version=${clang#clang++}
    need "ld.lld$version" "llvm-ar$version" "llvm-ranlib$version"
    shared_library -DCMAKE_CXX_COMPILER="$clang" -DCMAKE_CXX_FLAGS=-flto -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld \
        -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld -DCMAKE_AR="$(command -v "llvm-ar$version")" \
        -DCMAKE_RANLIB="$(command -v "llvm-ranlib$version")"
}

# The second build has no tests: it builds only what is installed.
variant_static() {
    unit_tested -DBUILD_SHARED_LIBS=OFF
    configure "${bare[@]}" -DBUILD_SHARED_LIBS=OFF
    cmake --build "$tree"
    use_installed
    use_by_pkg_config --static
}

variant_static-own-platform() {
    source=examples/own_platform
    configure -DBUILD_SHARED_LIBS=OFF
    cmake --build "$tree"
    [[ -e $tree/gleigem/import/libgleigem.a ]]
    ctest --test-dir "$tree" --output-on-failure
}

variant_multi-config() {
    cmake -S . -B "$tree" -G "Ninja Multi-Config" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DCMAKE_DEBUG_POSTFIX=-debug \
        "${bare[@]}"
    local config
    for config in Debug Release; do
        cmake --build "$tree" --config $config
        cmake --install "$tree" --config $config --prefix "$tree/prefix"
        cmake -S tests/packaging/consumer -B "$tree/$config" -G Ninja -DCMAKE_BUILD_TYPE=$config \
            -DCMAKE_PREFIX_PATH="$tree/prefix"
        cmake --build "$tree/$config"
        "$tree/$config/consumer"
    done
    readelf --dynamic "$tree/Debug/consumer" | grep 'libgleigem-debug\.so'
}

# Checks that lintian finds no error, that the packages do not contain the path of the build folder, and that a consumer
# can use the unpacked files.
variant_dh() {
    need dpkg-buildpackage dh lintian
    source=$tree/gleigem-0.1.0
    rm -rf "$tree"
    export_sources "$source"
    cp -r tests/packaging/dh/debian "$source"
    { printf 'Copyright (C) The gleigem developers\n\n' && cat LICENSE; } >"$source/debian/copyright"
    /usr/bin/python3 cmake/package/debian_changelog.py CHANGELOG.md 0.1.0 \
        "$(sed -n 's/^Maintainer: //p' "$source/debian/control")" >"$source/debian/changelog"
    (cd "$source" && dpkg-buildpackage --build=binary --no-sign)
    lintian --allow-root --fail-on error --suppress-tags bogus-mail-host,bogus-mail-host-in-debian-changelog \
        "$tree"/*.deb

    local package
    for package in "$tree"/libgleigem*_*.deb; do
        dpkg-deb --extract "$package" "$tree/root"
    done
    if grep --recursive --fixed-strings "$source" "$tree/root"; then
        return 1
    fi
    cmake -S tests/packaging/consumer -B "$tree/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$tree/root/usr"
    cmake --build "$tree/consumer"
    LD_LIBRARY_PATH=$(dirname "$(find "$tree/root" -name libgleigem.so)") "$tree/consumer/consumer"
}

variant_parent() {
    source=tests/packaging/consumer
    configure -DGLEIGEM_SOURCE_DIR="$PWD" \
        -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wsign-conversion -Wold-style-cast \
-Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wundef -Wformat=2"
    cmake --build "$tree"
    "$tree/consumer"
}

variant_strange-path() {
    source="$tree/ein Ordner für alles"
    rm -rf "$source"
    export_sources "$source"
    tree=$source/build/dev
    cmake -S "$source" --preset dev
    cmake --build "$tree"
    ctest --test-dir "$tree" --output-on-failure --exclude-regex 'Random|Exhaustive|Hostile|Headers|Libcxx|SecondPlatform'
}

# set_cross COMPILER DEBIAN FOLDER EMULATOR: sets $cross_options and $emulator for a processor.
set_cross() {
    need "$1-g++" "$4"
    local libraries=$PWD/build/matrix/packages/$2/root/usr/lib/$3
    emulator=("$4" -L "/usr/$1" -E "LD_LIBRARY_PATH=$libraries")
    if [[ $2 == i386 ]]; then # qemu-i386 7.2 hangs in programs with threads, and x86-64 runs them itself
        emulator=("/usr/$1/lib/ld-linux.so.2" --library-path "/usr/$1/lib:$libraries")
    fi
    cross_options=(-DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/debian_cross.cmake" -DGLEIGEM_CROSS_COMPILER="$1"
        -DGLEIGEM_CROSS_FOLDER="$3" -DGLEIGEM_CROSS_EMULATOR="$4"
        -DGLEIGEM_CROSS_ROOT="$PWD/build/matrix/packages/$2/root")
    fetch_foreign_packages "$2" "build/matrix/packages/$2"
}

cross() {
    set_cross "$@"
    unit_tested "${cross_options[@]}" -DGLEIGEM_BUILD_EXAMPLES=ON
    cmake --build "$tree" --target front_end quick_start
    check_exported_names
}

variant_aarch64() { cross aarch64-linux-gnu arm64 aarch64-linux-gnu qemu-aarch64; }
variant_armhf() { cross arm-linux-gnueabihf armhf arm-linux-gnueabihf qemu-arm; }
variant_i386() { cross i686-linux-gnu i386 i386-linux-gnu qemu-i386; }
variant_s390x() { cross s390x-linux-gnu s390x s390x-linux-gnu qemu-s390x; }

# Debian 12 has a cross compiler for RISC-V but no packages, so the headers are those of another processor, and there
# is no ICU.
variant_riscv64() {
    set_cross riscv64-linux-gnu arm64 aarch64-linux-gnu qemu-riscv64
    source=examples/own_platform
    configure "${cross_options[@]}"
    cmake --build "$tree"
    ctest --test-dir "$tree" --output-on-failure
}

# debian SUITE: runs scripts/test.sh in a new root. The mounts end with the process.
debian() {
    need debootstrap unshare apt-config
    ((EUID == 0)) || skip "a root of its own needs root"
    local root=$tree/root
    rm -rf "$root"
    debootstrap --variant=minbase "$1" "$root"
    # How this machine reaches the archive.
    apt-config dump Acquire | grep -v IndexTargets >"$root/etc/apt/apt.conf.d/99acquire"
    chroot "$root" apt-get update
    export_sources "$root/gleigem"
    unshare --mount --pid --fork bash -ec '
        mount --types proc proc "$0/proc"
        mount --rbind /sys "$0/sys"
        mount --rbind /dev "$0/dev"
        mount --types devpts --options newinstance,ptmxmode=0666 devpts "$0/dev/pts"
        env --ignore-environment PATH="$PATH" HOME=/root LANG=C.UTF-8 chroot "$0" /gleigem/scripts/test.sh' "$root"
}

variant_debian-13() { debian trixie; }
variant_debian-sid() { debian sid; }

# in_wine PROGRAM ARGUMENT...: runs a program of Windows, which finds libraries in its own folder and the build tree's.
in_wine() {
    local folder
    folder=$(dirname "$1")
    WINEPREFIX=$tree/wine WINEDEBUG=-all \
        WINEPATH="$folder;$folder/gleigem/import;$compiler_libraries;/usr/x86_64-w64-mingw32/lib" wine "$@"
}

# Debian has no ICU for Windows; the example's platform and the second platform do not need it.
windows() {
    local compiler=x86_64-w64-mingw32-g++-posix
    need $compiler wine
    fetch_foreign_packages i386 build/matrix/packages/i386
    local options=(-DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/debian_mingw.cmake"
        -DGLEIGEM_CROSS_ROOT="$PWD/build/matrix/packages/i386/root" "$@")
    local compiler_libraries
    compiler_libraries=$(dirname "$($compiler -print-file-name=libstdc++-6.dll)")

    source=examples/own_platform
    configure "${options[@]}"
    cmake --build "$tree"
    in_wine "$tree/aviary.exe" | grep 'left-wing is birds.left-wing'
    in_wine "$tree/check_contract.exe" birds shapes@3+
    windows_unit_tests "${options[@]}"
}

# A program of Windows replaces new for itself alone, so what libraries allocate cannot be counted.
windows_unit_tests() {
    build_googletest "$@" -DBUILD_SHARED_LIBS=OFF
    cmake -S tests/second_platform/host -B "$tree/second_platform" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DGLEIGEM_SOURCE_DIR="$PWD" "$googletest" "$@"
    cmake --build "$tree/second_platform"
    in_wine "$tree/second_platform/name_tests.exe" --gtest_brief=1
    in_wine "$tree/second_platform/second_platform_tests.exe" --gtest_brief=1 \
        --gtest_filter=-ExceptionsOfEveryService.ComeOutUnchangedAndLeaveNothingBehind
}

# The table of exports must have every listed name, except for those that exist only in ELF.
variant_windows() {
    windows
    local missing
    missing=$(x86_64-w64-mingw32-objdump -p "$tree/gleigem/import/libgleigem.dll" | awk '{print $NF}' | c++filt |
        sed -E 's/, 18446744073709551615ull>/, std::dynamic_extent>/; s/std::__cxx11::/std::/g' | LC_ALL=C sort -u |
        LC_ALL=C comm -23 <(grep -vE 'typeinfo name|::get_lock\(\)::' tests/abi/exported_symbols.txt) -)
    [[ ! $missing ]] || {
        printf 'not exported:\n%s\n' "$missing"
        return 1
    }
}

variant_windows-static() { windows -DBUILD_SHARED_LIBS=OFF; }

if [[ ${1-} == --list ]]; then
    for name in "${!variants[@]}"; do
        printf '%-20s %s\n' "$name" "${variants[$name]}"
    done | sort
    exit
fi

# try NAME: runs a variant in its own process, which ends at the first failure, and prints one line.
try() {
    local name=$1 start=$SECONDS status=0 log=build/matrix/$1.log reason
    reason=$(scripts/matrix.sh --alone "$name" 3>&1 &>"$log") || status=$?
    case $status in
        0) printf 'ok       %-20s %5d s  %s\n' "$name" $((SECONDS - start)) "${variants[$name]}" ;;
        77) printf 'skipped  %-20s          %s\n' "$name" "$reason" ;;
        *)
            printf 'FAILED   %-20s %5d s  see %s\n' "$name" $((SECONDS - start)) "$log"
            failures=$((failures + 1))
            ;;
    esac
}

if [[ ${1-} == --alone ]]; then
    tree=$PWD/build/matrix/$2 source=. emulator=()
    "variant_$2"
    exit
fi

failures=0
mkdir -p build/matrix
names=("$@")
((${#names[@]})) || mapfile -t names < <(printf '%s\n' "${!variants[@]}" | sort)
for name in "${names[@]}"; do
    [[ ${variants[$name]-} ]] || {
        printf 'Unknown variant: %s. Run matrix.sh --list for a list.\n' "$name" >&2
        exit 2
    }
    try "$name"
done
((failures == 0))

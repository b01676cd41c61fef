#!/usr/bin/env bash
# Installs the library by the commands of README.md, into a folder and from the Debian packages; uses it each time by
# name only, removes it and looks for files left behind. The packages need root on Debian; elsewhere they are skipped.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

work=$(mktemp --directory)
names=()

# The machine is left unchanged, even after a failure.
clean_up() {
    ((!${#names[@]})) || apt-get -qq purge -y "${names[@]}" </dev/null &>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT

require_packages "${demo_packages[@]}" "${package_packages[@]}"

step "building the library"
cmake --preset release -DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_EXAMPLES=OFF -DGLEIGEM_BUILD_TOOLS=OFF -DGLEIGEM_BUILD_BENCHMARKS=OFF
cmake --build --preset release

step "installing it into a folder and using it"
rm -rf build/quick_start
(
    export HOME=$work
    cmake --install build/release --prefix "$HOME/.local"
    cmake -S examples/quick_start -B build/quick_start -G Ninja -DCMAKE_PREFIX_PATH="$HOME/.local"
    cmake --build build/quick_start
    build/quick_start/quick_start
)

if ! is_debian 12 13 || ((EUID != 0)); then
    printf '\nPackages are only tested on Debian, as root: skipped.\n'
    exit
fi
if dpkg-query --show 'libgleigem*' &>/dev/null; then
    printf 'Packages of gleigem are already installed: purge them first.\n' >&2
    exit 1
fi

export DEBIAN_FRONTEND=noninteractive APT_CONFIG=$work/apt.conf
printf 'APT::Get::Assume-Yes "true"; APT::Install-Recommends "false"; quiet "2";\n' >"$APT_CONFIG"

step "building the packages"
apt-get install dpkg-dev file pkgconf </dev/null >/dev/null
rm -rf build/release/packages
cpack --preset release
mapfile -t names < <(for package in build/release/packages/*.deb; do dpkg-deb --field "$package" Package; done)

step "installing ${names[*]}"
apt-get install ./build/release/packages/*.deb </dev/null >/dev/null
mapfile -t paths < <(dpkg-query --listfiles "${names[@]}" | grep --invert-match --line-regexp '/\.' | sort -u)

step "using them with find_package"
cmake -S examples/quick_start -B "$work/quick_start" -G Ninja >/dev/null
cmake --build "$work/quick_start"
"$work/quick_start/quick_start"

step "using them with pkg-config"
g++ -std=c++20 examples/quick_start/main.cpp $(pkg-config --cflags --libs gleigem) -o build/quick_start/by_pkg_config
build/quick_start/by_pkg_config

step "checking that gdb finds the printers"
library=$(ldconfig --print-cache | sed -n 's/.*libgleigem\.so\.[0-9].* => //p')
gdb -nx -batch -ex "info pretty-printer" "$library" | grep gleigem

step "removing ${names[*]}"
apt-get remove "${names[@]}" </dev/null >/dev/null

step "looking for files left behind"
left=$(
    dpkg-query --show "${names[@]}" 2>/dev/null
    ldconfig --print-cache | grep gleigem
    for path in "${paths[@]}"; do
        [[ ! -e $path ]] || dpkg-query --search "$path" &>/dev/null || printf '%s\n' "$path"
    done
) || true
if [[ $left ]]; then
    printf 'Files left behind:\n%s\n' "$left"
    exit 1
fi
printf 'None.\n'

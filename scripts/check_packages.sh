#!/usr/bin/env bash
# Makes the Debian packages, installs them on this machine, uses them as somebody who knows nothing but their names,
# removes them again and looks for what is left. For root on Debian 12.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/packages
consumer=tests/packaging/consumer

if ! is_debian_12 || ((EUID != 0)); then
    printf 'This installs packages of Debian 12, which only its root can do.\n' >&2
    exit 1
fi
if dpkg-query --show 'libgleigem*' &>/dev/null; then
    printf 'Packages of gleigem are known to this machine: purge them first.\n' >&2
    exit 1
fi
require_packages "${demo_packages[@]}" "${package_packages[@]}"

step "building the library"
cmake --preset release -B "$build" -DGLEIGEM_BUILD_TESTS=OFF -DGLEIGEM_BUILD_EXAMPLES=OFF \
    -DGLEIGEM_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build" >/dev/null

step "making the packages"
rm -rf "$build/packages"
cpack --config "$build/CPackConfig.cmake"
packages=("$PWD/$build"/packages/*.deb)
mapfile -t names < <(for package in "${packages[@]}"; do dpkg-deb --field "$package" Package; done)

work=$(mktemp --directory)
# However this ends, the machine is left as it was.
clean_up() {
    apt-get -qq purge -y "${names[@]}" </dev/null &>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT

step "installing ${names[*]}"
apt-get -qq install -y --no-install-recommends "${packages[@]}" </dev/null >/dev/null
mapfile -t paths < <(dpkg-query --listfiles "${names[@]}" | sort -u)

step "using them by find_package"
cmake -S "$consumer" -B "$work/find_package" -G Ninja >/dev/null
cmake --build "$work/find_package" >/dev/null
"$work/find_package/consumer"

step "using them by pkg-config"
read -ra flags < <(pkg-config --cflags --libs gleigem)
g++ -std=c++20 "$consumer/main.cpp" "${flags[@]}" -o "$work/consumer"
"$work/consumer"

step "letting gdb find the printers"
library=$(ldconfig --print-cache | sed -n 's/.*libgleigem\.so\.[0-9].* => //p')
gdb -nx -batch -ex "info pretty-printer" "$library" | grep gleigem

step "removing ${names[*]}"
apt-get -qq remove -y "${names[@]}" </dev/null >/dev/null

step "looking for what is left"
left=$(
    dpkg-query --show "${names[@]}" 2>/dev/null
    ldconfig --print-cache | grep gleigem
    for path in "${paths[@]}"; do
        [[ ! -e $path ]] || dpkg-query --search "$path" &>/dev/null || printf '%s\n' "$path"
    done
) || true
if [[ $left ]]; then
    printf 'Left behind:\n%s\n' "$left"
    exit 1
fi
printf 'Nothing.\n'

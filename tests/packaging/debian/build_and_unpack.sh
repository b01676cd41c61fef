#!/bin/sh
# build_and_unpack.sh CPACK BUILD_DIR PACKAGES UNPACKED: makes the packages of a build and unpacks them together.

set -eu
rm -rf "$3" "$4"
"$1" --config "$2/CPackConfig.cmake" -G DEB -B "$3"
for package in "$3"/*.deb; do
    dpkg-deb --extract "$package" "$4"
done

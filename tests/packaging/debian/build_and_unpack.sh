#!/bin/sh
# build_and_unpack.sh CPACK BUILD_DIR PACKAGES UNPACKED: builds the packages of a build tree, fails if there is any
# warning, and unpacks them into one folder.

set -eu
rm -rf "$3" "$4"
"$1" --config "$2/CPackConfig.cmake" -G DEB -B "$3" >"$2/cpack.log" 2>&1 || status=$?
cat "$2/cpack.log"
[ -z "${status-}" ]
if grep -i warning "$2/cpack.log"; then
    exit 1
fi
for package in "$3"/*.deb; do
    dpkg-deb --extract "$package" "$4"
done

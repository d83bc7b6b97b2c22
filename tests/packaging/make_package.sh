#!/usr/bin/env bash
# make_package.sh BUILD WORK: installs what was built below WORK/stage, makes the Debian package and unpacks it to WORK/unpacked.
set -euo pipefail
build=$1 work=$2
rm -rf "$work"
mkdir -p "$work"
DESTDIR=$work/stage cmake --install "$build" --prefix /usr --strip >/dev/null
cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work"
dpkg-deb -x "$work"/*.deb "$work/unpacked"

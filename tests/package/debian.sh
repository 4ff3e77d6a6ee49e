#!/usr/bin/env bash
# debian.sh BUILD: makes Debian packages of an optimised build, has lintian look at them, unpacks them and uses
# what is in them: the tool, and programs in C and C++ built against the development package.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
build=$(cd "$1" && pwd -P)
work=$build/debian-test
rm -rf "$work" "$build"/*.deb
mkdir -p "$work/system"

(cd "$build" && cpack -G DEB >"$work/cpack.log") || { cat "$work/cpack.log"; exit 1; }
lintian --allow-root --fail-on error "$build"/*.deb | sed '/^W: /d'
for package in "$build"/*.deb; do dpkg-deb -x "$package" "$work/system"; done
dpkg-deb -f "$build"/libvxprivacy-dev_*.deb Depends | grep -q "libvxprivacy-c0.1 (= "
dpkg-deb -f "$build"/vxprivacy_*.deb Depends | grep -q "libsqlite3-0"

usr=$work/system/usr
"$usr/bin/vxprivacy" lint "$root/samples/category.json"
gzip -dc "$usr/share/man/man1/vxprivacy.1.gz" | grep -q "^.TH"
export PKG_CONFIG_PATH=$usr/lib/pkgconfig LD_LIBRARY_PATH=$usr/lib
cc "$root/examples/c/main.c" -o "$work/in-c" $(pkg-config --cflags --libs vxprivacy-c)
cmake -DPROGRAM="$work/in-c" -DWORK="$work/in-c-run" -P "$root/examples/embedding/run.cmake"
cmake -S "$root/examples/consumer" -B "$work/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$usr" >/dev/null
cmake --build "$work/consumer" >/dev/null
(cd "$work" && consumer/consumer)

#!/usr/bin/env bash
# Builds the Debian package: a Release build in build-package/ with Debian's
# hardening flags, then CPack's DEB generator. Writes dist/tavrino_<version>_<arch>.deb.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

# dpkg-shlibdeps (in dpkg-dev) finds the libraries the program needs; CPack
# asks `file` which installed files are programs.
tavrino_install dpkg-dev file

BUILD_DIR=build-package
# Every hardening feature Debian offers, immediate binding included.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=Release -DTAVRINO_PACKAGE=ON -DTAVRINO_TESTS=OFF -DTAVRINO_BENCH=OFF
            "-DCMAKE_CXX_FLAGS=$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
            "-DCMAKE_EXE_LINKER_FLAGS=$(dpkg-buildflags --get LDFLAGS)")
tavrino_build

rm -rf "$BUILD_DIR/cpack"
cpack --config "$BUILD_DIR/CPackConfig.cmake" -B "$BUILD_DIR/cpack"
mkdir -p dist
for deb in "$BUILD_DIR"/cpack/tavrino_*.deb; do
    cp "$deb" dist/
    echo "Wrote dist/$(basename "$deb")"
done

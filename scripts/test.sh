#!/usr/bin/env bash
# Installs what is missing, builds Tavrino and runs every test.
#   scripts/test.sh             the normal build, in build/
#   scripts/test.sh --sanitize  with AddressSanitizer and UndefinedBehaviorSanitizer, in build-sanitize/
#   scripts/test.sh --windows   the core and its tests cross-built for Windows and run under Wine,
#                               in build-windows/
set -euo pipefail
cd "$(dirname "$0")/.."
if [ "${1:-}" = "--windows" ]; then
    exec scripts/test-windows.sh
fi
source scripts/setup.sh

BUILD_DIR=build
CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVRINO_SANITIZE=OFF)
if [ "${1:-}" = "--sanitize" ]; then
    BUILD_DIR=build-sanitize
    CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=Debug -DTAVRINO_SANITIZE=ON)
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi

tavrino_build
QT_QPA_PLATFORM=offscreen ctest --test-dir "$BUILD_DIR" --output-on-failure -j"$(nproc)"

#!/usr/bin/env bash
# Cross-builds the Qt-free core, the class lists and their tests for 64-bit
# Windows with MinGW-w64, runs them under Wine and prints their count. The
# program's resource file is compiled with the cross windres as well.
# Run by `scripts/test.sh --windows`.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

BUILD_DIR=build-windows
started=$(date +%s)

tavrino_install cmake libgtest-dev libsqlite3-dev "${TAVRINO_WINDOWS_PACKAGES[@]}"

# Debian has no SQLite built for Windows: the history is compiled against the
# system's sqlite3.h (a header alike on every system) but neither linked nor tested.
mkdir -p "$BUILD_DIR/sqlite-header"
cp /usr/include/sqlite3.h "$BUILD_DIR/sqlite-header/"

cmake -S . -B "$BUILD_DIR" -DCMAKE_TOOLCHAIN_FILE=cmake/WindowsCross.cmake \
    -DCMAKE_BUILD_TYPE=Release -DTAVRINO_CORE_ONLY=ON \
    -DTAVRINO_GTEST_SOURCE_DIR=/usr/src/googletest \
    -DTAVRINO_SQLITE_HEADER_DIR="$PWD/$BUILD_DIR/sqlite-header" >/dev/null
cmake --build "$BUILD_DIR" -j"$(nproc)"

# Debian puts the 64-bit loader beside Wine's libraries, not on PATH.
wine=$(dpkg -L wine64 | grep -m1 '/wine64$')
WINEPREFIX=$(mktemp -d)
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" DISPLAY=
trap 'wineserver=$(dirname "$wine")/wineserver; [ -x "$wineserver" ] && "$wineserver" -k 2>/dev/null; rm -rf "$WINEPREFIX"' EXIT

passed=0 failed=0 skipped=0
for test in "$BUILD_DIR"/src/*/*_tests.exe; do
    log="$BUILD_DIR/$(basename "$test" .exe).log"
    status=0
    "$wine" "$test" --gtest_color=no >"$log" 2>&1 || status=$?
    count() { sed -n "s/^\[  $1 *\] \([0-9]*\) tests\?.*/\1/p" "$log" | head -1; }
    p=$(count PASSED) s=$(count SKIPPED) f=$(count FAILED)
    passed=$((passed + ${p:-0})) skipped=$((skipped + ${s:-0})) failed=$((failed + ${f:-0}))
    echo "$(basename "$test"): ${p:-0} passed, ${f:-0} failed, ${s:-0} skipped"
    # Each skipped test with its reason, which gtest prints after "Skipped".
    # Wine's console ends lines with a carriage return.
    tr -d '\r' <"$log" | awk '/: Skipped$/ {
        getline reason; getline name; sub(/^\[  SKIPPED \] /, "", name); sub(/ \(.*/, "", name)
        print "    skipped " name ": " reason }'
    if [ "$status" -ne 0 ] || [ -z "$p" ]; then
        cat "$log"
        [ "${f:-0}" -gt 0 ] || failed=$((failed + 1))
    fi
done
echo "History tests not run: Debian packages no SQLite for Windows."
echo "Windows check took $(($(date +%s) - started)) s"
echo "Windows: $passed passed, $failed failed, $skipped skipped"
[ "$failed" -eq 0 ]

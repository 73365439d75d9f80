#!/usr/bin/env bash
# Builds the libFuzzer targets of the Tests and Students file loaders and of the
# class list reader with clang in build-fuzz/ and runs each in turn for the given
# number of seconds.
#   scripts/fuzz.sh [seconds per target, default 60] [target...]
# Targets: tests, students, classlist (all three unless named).
# Inputs that break a property are kept as build-fuzz/fuzz/crash-<target>-*; the
# corpus each run grows is kept in build-fuzz/fuzz/found/<target> for the next run.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

DURATION=${1:-60}
shift || true
TARGETS=("$@")
[ ${#TARGETS[@]} -gt 0 ] || TARGETS=(tests students classlist)
BUILD_DIR=build-fuzz
CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVRINO_FUZZ=ON -DTAVRINO_TESTS=OFF
            -DCMAKE_CXX_COMPILER=clang++)

tavrino_install clang libclang-rt-14-dev "${TAVRINO_PACKAGES[@]}"
CC=clang CXX=clang++ cmake -S . -B "$BUILD_DIR" "${CMAKE_ARGS[@]}"
cmake --build "$BUILD_DIR" -j"$(nproc)" \
    --target tavrino_tests_fuzz tavrino_students_fuzz tavrino_classlist_fuzz tavrino_fuzz_corpus

FUZZ_DIR="$BUILD_DIR/fuzz"
for target in "${TARGETS[@]}"; do
    mkdir -p "$FUZZ_DIR/found/$target"
    echo "== $target: $DURATION s"
    "$FUZZ_DIR/tavrino_${target}_fuzz" -max_total_time="$DURATION" -print_final_stats=1 \
        -artifact_prefix="$FUZZ_DIR/crash-$target-" \
        "$FUZZ_DIR/found/$target" "$FUZZ_DIR/corpus/$target"
done

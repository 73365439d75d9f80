#!/usr/bin/env bash
# Installs what is missing, builds Tavrino with its benchmarks and runs them.
#   scripts/bench.sh                      every benchmark, then the table of figures
#   scripts/bench.sh --benchmark_filter=Load   only some (any Google Benchmark flag)
#   scripts/bench.sh --make-data DIR [N]  writes the large data set into DIR/data
#                                         (N questions per level, 1000 unless given)
# The build goes to build-bench/ (BUILD_DIR overrides it); the data set of a run is
# written under $TAVRINO_BENCH_DIR, or the system's temporary directory, and removed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

BUILD_DIR=${BUILD_DIR:-build-bench}
CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVRINO_SANITIZE=OFF -DTAVRINO_BENCH=ON)
tavrino_build

if [ "${1:-}" = "--make-data" ]; then
    [ $# -eq 2 ] || [ $# -eq 3 ] || { echo "usage: $0 --make-data DIR [N]" >&2; exit 2; }
    shift
    exec "$BUILD_DIR/bench/tavrino_make_data" "$@"
fi

echo "Machine: $(nproc) cores, $(lscpu | sed -n 's/^Model name: *//p' | head -1); load: $(cut -d' ' -f1-3 /proc/loadavg)"
exec "$BUILD_DIR/bench/tavrino_bench" "$@"

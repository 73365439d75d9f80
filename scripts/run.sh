#!/usr/bin/env bash
# Installs what is missing, builds Tavrino and starts it. Its data is kept in
# build/src/app/data/, beside the program.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

BUILD_DIR=build
CMAKE_ARGS=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
tavrino_build
exec "$BUILD_DIR/src/app/tavrino" "$@"

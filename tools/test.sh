#!/usr/bin/env bash
# Configures, builds and tests with warnings as errors: tools/test.sh [BUILD_DIR [CMAKE_OPTION...]]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
[ $# -gt 0 ] && shift
cmake -S . -B "$build" -G Ninja -DVELTO_WERROR=ON -DVELTO_BUILD_TESTS=ON "$@"
cmake --build "$build" --parallel 2
ctest --test-dir "$build" --output-on-failure --parallel 2

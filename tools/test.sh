#!/usr/bin/env bash
# Configures, builds and tests with warnings as errors: tools/test.sh [BUILD_DIR [CMAKE_OPTION...]]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
[ $# -gt 0 ] && shift
# Debian's own Python is the one that has what the package's tests need.
cmake -S . -B "$build" -G Ninja -DVELTO_WERROR=ON -DVELTO_BUILD_TESTS=ON -DVELTO_BUILD_PYTHON=ON \
  -DPython3_EXECUTABLE=/usr/bin/python3 "$@"
cmake --build "$build" --parallel 2
ctest --test-dir "$build" --output-on-failure --parallel 2

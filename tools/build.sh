#!/usr/bin/env bash
# Builds both programs with warnings as errors, where the checks look for them: tools/build.sh [BUILD]
# Installs the Debian packages that are missing. A BUILD that is there keeps its options.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
tools/setup-debian.sh
cmake -S . -B "$build" -G Ninja -DVELTO_WERROR=ON >/dev/null
cmake --build "$build" --parallel 2 --target velto VELTO.exe

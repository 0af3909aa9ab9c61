#!/usr/bin/env bash
# Builds the browser page, a folder that any web server can serve and that works opened from disk:
#   tools/build-web.sh [BUILD]     # the folder is BUILD/site, by default build-web/site
# Installs Debian's emscripten and esbuild, and Node with npm where there is none.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-web}
tools/setup-debian.sh cmake ninja-build nlohmann-json3-dev emscripten esbuild
command -v npm >/dev/null || tools/setup-debian.sh nodejs npm
# Where Debian keeps the modules of Node that emcc uses.
export NODE_PATH=/usr/share/nodejs

emcmake cmake -S . -B "$build" -G Ninja -DVELTO_BUILD_WORKBENCH=OFF -DVELTO_BUILD_TESTS=OFF \
  -DVELTO_HIGHWAY=OFF -Dnlohmann_json_DIR="$PWD/cmake/emscripten" \
  -DCMAKE_CXX_FLAGS="-fwasm-exceptions -msimd128 -include $PWD/web/bit_cast.h"
cmake --build "$build" --target engine
node web/pack/pack.mjs "$build"

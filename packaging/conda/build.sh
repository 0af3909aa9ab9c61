#!/usr/bin/env bash
# Called by conda-build in the root of the sources. Untested, as meta.yaml.
set -euo pipefail
cmake -S . -B build-conda -G Ninja ${CMAKE_ARGS:-} -DCMAKE_INSTALL_PREFIX="$PREFIX" \
  -DCMAKE_INSTALL_LIBDIR=lib -DVELTO_BUILD_TESTS=OFF
cmake --build build-conda
cmake --install build-conda

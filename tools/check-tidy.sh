#!/usr/bin/env bash
# Runs clang-tidy and clang-format over the code: tools/check-tidy.sh [FILE...], by default all files.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build-tidy
tools/setup-debian.sh
tools/setup-debian.sh clang-format clang-tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DVELTO_BUILD_TESTS=ON \
  -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON > /dev/null
if [ $# -eq 0 ]; then
  mapfile -t sources < <(git ls-files '*.cpp' '*.h')
else
  sources=("$@")
fi
clang-format --dry-run --Werror "${sources[@]}"
# Headers are looked at where they are included; tests may waste time, and the other folders need
# builds of their own.
printf '%s\n' "${sources[@]}" | grep '\.cpp$' |
  grep -vE '^(fuzz|bench|python|web|tests|examples)/|_test\.cpp$' |
  xargs -P 2 -n 4 clang-tidy -p "$build" --quiet 2> >(grep -v ' warnings* generated' >&2)

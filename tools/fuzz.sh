#!/usr/bin/env bash
# Runs every fuzz target of a build for some seconds: tools/fuzz.sh BUILD_DIR SECONDS
set -euo pipefail

build=$1
seconds=$2
for target in "$build"/fuzz_*; do
  [ -x "$target" ] && [ -f "$target" ] || continue
  corpus=$(mktemp -d)
  seeds=$(dirname "$0")/../fuzz/corpus/$(basename "$target")
  [ -d "$seeds" ] && cp "$seeds"/* "$corpus"
  "$target" -max_total_time="$seconds" -print_final_stats=1 "$corpus"
  rm -rf "$corpus"
done

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
  # htslib asks for as many bytes as a BAM record says it has, up to 2 GB, before it reads any; what
  # counts is what is touched (-rss_limit_mb).
  "$target" -max_total_time="$seconds" -malloc_limit_mb=4096 -print_final_stats=1 "$corpus"
  rm -rf "$corpus"
done

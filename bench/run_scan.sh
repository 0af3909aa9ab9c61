#!/bin/bash
# Measures whole runs of velto scan on the reads of make_reads.sh: the best of five at one and at two
# threads, reads per CPU second and per second, largest memory.
# Usage: bench/run_scan.sh [VELTO [MODEL_DIRECTORY [READS.fa [further options of velto scan...]]]]
set -eu
velto=${1:-build/velto}
model=${2:-param-human}
reads=${3:-build/bench-reads.fa}
shift $(($# < 3 ? $# : 3))
count=$(grep -c '^>' "$reads")
times=$(mktemp)
trap 'rm -f "$times"' EXIT

for threads in 1 2; do
  : > "$times"
  for _ in 1 2 3 4 5; do
    /usr/bin/time -a -o "$times" -f '%e %U %S %M' \
      "$velto" scan --quiet -t "$threads" -d "$model" -o /dev/null "$@" "$reads"
  done
  awk -v threads="$threads" -v count="$count" '
    NR == 1 || $1 < wall { wall = $1 }
    NR == 1 || $2 + $3 < cpu { cpu = $2 + $3 }
    $4 > memory { memory = $4 }
    END {
      printf "%d thread(s): %.2f s, %.2f CPU s, %.0f reads/s, %.0f reads/CPU s, %.0f MB\n",
             threads, wall, cpu, count / wall, count / cpu, memory / 1024
    }' "$times"
done

#!/bin/sh
# Makes the reads of the whole-run benchmark: 20,000 est fragments of 300 to 800 bases.
# Usage: bench/make_reads.sh [VELTO [READS.fa]]
set -eu
velto=${1:-build/velto}
reads=${2:-build/bench-reads.fa}
root=$(dirname "$0")/..
"$velto" simulate --preset est --length 300-800 --read-count 20000 --seed 1 -o "$reads" \
  "$root/data/human-mrna-train.fa.gz"
echo "$reads"

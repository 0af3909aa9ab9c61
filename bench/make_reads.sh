#!/bin/sh
# Makes the reads of the whole-run benchmark: 20,000 est fragments of 300 to 800 bases, of the set
# human-mrna-train (data/README.md) for the figures of RESULTS.md.
# Usage: bench/make_reads.sh TRANSCRIPTS.fa [VELTO [READS.fa]]
set -eu
transcripts=${1:?usage: bench/make_reads.sh TRANSCRIPTS.fa [VELTO [READS.fa]]}
velto=${2:-build/velto}
reads=${3:-build/bench-reads.fa}
"$velto" simulate --preset est --length 300-800 --read-count 20000 --seed 1 -o "$reads" \
  "$transcripts"
echo "$reads"

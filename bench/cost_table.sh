#!/bin/bash
# Prints what a billion reads cost as the table of docs/cluster.md: both decoders with the default
# settings (both strands), one thread, the best of five runs.
# Usage: bench/cost_table.sh TRANSCRIPTS.fa [VELTO [MODEL_DIRECTORY]]
set -euo pipefail
transcripts=${1:?usage: bench/cost_table.sh TRANSCRIPTS.fa [VELTO [MODEL_DIRECTORY]]}
velto=${2:-build/velto}
model=${3:-param-human}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$velto" simulate --preset est --length 300-800 --read-count 20000 --seed 1 \
  -o "$work/fragments of 300 to 800 bases.fa" "$transcripts"
"$velto" simulate --preset nanopore-recent --full-length --read-count 5000 --seed 1 \
  -o "$work/whole transcripts.fa" "$transcripts"

echo "| reads | mean bases | decoder | reads per CPU second | CPU hours for 10^9 reads | memory |"
echo "|---|---|---|---|---|---|"
for reads in "$work"/*.fa; do
  count=$(grep -c '^>' "$reads")
  bases=$(grep -v '^>' "$reads" | tr -d '\n' | wc -c)
  for decoder in hmm vote; do
    for _ in 1 2 3 4 5; do
      /usr/bin/time -f '%U %S %M' "$velto" scan --quiet -t 1 -d "$model" --decoder "$decoder" \
        -o /dev/null "$reads" 2>&1
    done | awk -v name="$(basename "$reads" .fa)" -v count="$count" -v bases="$bases" \
      -v decoder="$decoder" '
        NR == 1 || $1 + $2 < cpu { cpu = $1 + $2 }
        $3 > memory { memory = $3 }
        END {
          printf "| %s | %.0f | `%s` | %.0f | %.0f | %.0f MB |\n", name, bases / count, decoder,
                 count / cpu, 1e9 * cpu / count / 3600, memory / 1024
        }'
  done
done

#!/usr/bin/env bash
# Runs the workflow and compares it with one run of velto scan, byte by byte:
#   tools/check-workflow.sh [BUILD [MODEL]]
# 1 and 7 pieces, a piece that is killed, a read that gets lost. Installs Debian's snakemake.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build}")
model=$(realpath "${2:-param-human}")
snakefile=$PWD/workflow/Snakefile
tools/setup-debian.sh snakemake
tools/build.sh "$build"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# More reads than the workflow learns from; most of them are cut short to save time.
awk -v copies=280 '{ line[NR] = $0 }
  END { for (c = 1; c <= copies; ++c)
          for (i = 1; i <= NR; ++i) {
            text = line[i]
            if (i % 4 == 1) sub(/^@[^ ]+/, "&." c, text)
            if (i % 2 == 0 && c > 20) text = substr(text, 1, 150)
            print text } }' examples/reads.fastq | gzip >"$work/reads.fq.gz"

# run FOLDER VELTO PIECES
run() {
  mkdir "$work/$1"
  snakemake --snakefile "$snakefile" --directory "$work/$1" --cores 2 --quiet all --config \
    "reads=$work/reads.fq.gz" "model=$model" "velto=$2" "pieces=$3" threads=1 \
    >"$work/$1.log" 2>&1
}

compare() {
  for kind in tsv gff3 cds protein bed; do cmp "$work/one.$kind" "$work/$1/found.$kind"; done
}

"$build/velto" scan --quiet -d "$model" -o "$work/one.tsv" --gff3 "$work/one.gff3" \
  --cds "$work/one.cds" --protein "$work/one.protein" --bed "$work/one.bed" "$work/reads.fq.gz"

for pieces in 1 7; do
  run "of$pieces" "$build/velto" "$pieces" || { cat "$work/of$pieces.log"; exit 1; }
  compare "of$pieces"
done
grep -q '"model.json": "[0-9a-f]\{64\}"' "$work/of7/run.json"

# The third piece is killed at its first attempt.
cat >"$work/kills.sh" <<END
#!/bin/bash
if [[ "\$*" == *pieces/3.reads ]] && mkdir "$work/was-killed" 2>/dev/null; then kill -KILL \$\$; fi
exec "$build/velto" "\$@"
END
# A row gets lost in the second piece.
cat >"$work/loses.sh" <<END
#!/bin/bash
"$build/velto" "\$@" && if [[ "\$*" == *pieces/2.reads ]]; then sed -i '\$d' pieces/2.tsv; fi
END
chmod +x "$work/kills.sh" "$work/loses.sh"
run killed "$work/kills.sh" 4 || { cat "$work/killed.log"; exit 1; }
[ -d "$work/was-killed" ]
compare killed
if run loses "$work/loses.sh" 3; then echo "a lost row was not noticed" >&2; exit 1; fi
grep -q 'gather.py: reads of the pieces' "$work/loses.log"
[ ! -e "$work/loses/found.tsv" ]
echo "1 and 7 pieces are as one run, a killed piece is redone, a lost row is noticed"

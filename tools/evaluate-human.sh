#!/bin/sh
# Prints the table of docs/human-model.md: a model directory judged on the human dev data.
#
#   tools/evaluate-human.sh DATA [MODEL_DIRECTORY [VELTO]]     (default: param-human build/velto)
#
# DATA holds human-mrna-dev.fa.gz and human-noncoding-dev.fa.gz, see data/README.md.
#
# Four fragments of each of 418 transcripts, each whole transcript once, and two fragments of each
# of 800 non-coding transcripts; seed 1. The same bytes on every run.
set -eu

data=${1:?usage: tools/evaluate-human.sh DATA [MODEL_DIRECTORY [VELTO]]}
model=${2:-param-human}
velto=${3:-build/velto}
coding=$data/human-mrna-dev.fa.gz
noncoding=$data/human-noncoding-dev.fa.gz

# One row: a name, then the options of the evaluation. The labels stand in columns 1 to 34 of the
# text table, the values in 35 to 44.
row() {
  name=$1
  shift
  text=$("$velto" evaluate -d "$model" --seed 1 "$@")
  printf '%s\n' "$text" | awk -v name="$name" '
    { label = substr($0, 1, 34); sub(/ +$/, "", label)
      value = substr($0, 35, 10); gsub(/ /, "", value)
      if (label != "" && !(label in of)) of[label] = value }
    END { printf "| %s | %s | %s | %s | %s | %s | %s | %s | %s |\n", name,
          of["nucleotide correlation CC"], of["coding bases in right frame FR"],
          of["called bases in right frame"], of["frame F1"],
          of["frameshift recall, 15 bases"], of["frameshift precision, 15 bases"],
          of["start and stop exact"], of["non-coding reads called"] }'
}

fragments() { row "$@" --coding "$coding" --length 300-800 --per-transcript 4; }
whole() { row "$@" --coding "$coding" --full-length; }

echo "| reads | CC | FR | in frame | frame F1 | shift recall | shift precision | both exact | non-coding called |"
echo "|---|---|---|---|---|---|---|---|---|"
fragments "est, 300 to 800" --preset est
fragments "est, a third of the indels" --preset est --indel-scale 0.3333333333333333
fragments "mild, 300 to 800" --preset mild
fragments "clean, 300 to 800" --preset clean
whole "est, full length" --preset est
whole "est, a third of the indels, full length" --preset est --indel-scale 0.3333333333333333
whole "mild, full length" --preset mild
whole "clean, full length" --preset clean
row "non-coding, est, 300 to 800" --noncoding "$noncoding" --length 300-800 --per-transcript 2 \
  --preset est

#!/usr/bin/env bash
# Tests the bash completion: velto_completion_test.bash PROGRAM COMPLETION
set -euo pipefail
program=$1
source "$2"
cd "$(dirname "$2")/.."  # where the models are

failures=0

# Completes the last of the words given and compares with the expected replies, separated by blanks.
expect() {  # EXPECTED WORD...
  local expected=$1
  shift
  COMP_WORDS=(velto "$@")
  COMP_CWORD=$#
  _velto "$program" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  local found="${COMPREPLY[*]}"
  if [[ $found != "$expected" ]]; then
    echo "velto $*: expected '$expected', found '$found'"
    failures=$((failures + 1))
  fi
}

expect "scan" sc
expect "simulate" si
expect "check-model" ch
expect "models" mo
expect "--version" --v
expect "" nosuch
expect "--gff3" scan --gf
expect "--full-length" simulate --full
expect "--noncoding" train --non
expect "vote hmm" train --decoder ""
expect "plus" scan --strand p
expect "plus minus both" scan --strand ""
expect "plus minus both" scan --strand =
expect "minus" scan --strand = m
expect "sanger-est" simulate --preset sa
expect "" scan --strand nosuch
expect "human" scan -d hum
expect "human" evaluate --compare = hum
expect "" scan --model nosuch
expect "" scan reads.f       # names of files are left to bash
expect "" scan -o out --quiet reads.f
expect "" nosuch --gf

complete -p velto > /dev/null || failures=$((failures + 1))
exit $((failures > 0))

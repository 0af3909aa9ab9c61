#!/usr/bin/env bash
# Tests tools/check-layers.sh: the project passes, and planted includes do not.
set -euo pipefail
cd "$(dirname "$0")/.."
check=$PWD/tools/check-layers.sh
"$check"

house=$(mktemp -d)
trap 'rm -rf "$house"' EXIT
cp CONTRIBUTING.md "$house"
mkdir "$house"/core "$house"/decoder "$house"/cellar

# refused FILE LINE: fails unless a file of this one line is refused by its name and line number.
refused() {
  echo "$2" >"$house/$1"
  if message=$("$check" "$house"); then
    echo "not refused: $2 in $1"
    exit 1
  fi
  [[ $message == "$1:"* ]] || { echo "unexpected message: $message"; exit 1; }
  rm "$house/$1"
}

refused core/planted.h '#include "model/model_tables.h"'
refused decoder/planted.cpp '#  include "predict/decoder_table.h"'
refused decoder/planted.cpp '#include <tbb/parallel_for.h>'
refused decoder/planted.cpp '#include <unistd.h>'
refused decoder/planted.cpp '#include <gtest/gtest.h>'
refused decoder/planted_test.cpp '#include "workbench/scan.h"'
refused cellar/planted.h '#include <vector>'

# allowed FILE LINE: fails unless a file of this one line passes.
allowed() {
  echo "$2" >"$house/$1"
  "$check" "$house"
  rm "$house/$1"
}

allowed decoder/planted.cpp '#include "model/model_tables.h"'
allowed decoder/planted.cpp '#include <vector>'
allowed decoder/planted_test.cpp '#include <gtest/gtest.h>'

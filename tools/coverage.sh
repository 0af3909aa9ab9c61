#!/usr/bin/env bash
# Measures which lines of the core its own tests run: tools/coverage.sh [BUILD_DIR]
# Prints the share of each file and writes the lines that no test runs; fails below 95 percent. The
# functions that llvm-cov calls mismatched are inline ones in programs that do not call them.
set -euo pipefail
cd "$(dirname "$0")/.."

build=$PWD/${1:-build-coverage}
least=95
rooms=(core model decoder hmm predict)
tools/setup-debian.sh
tools/setup-debian.sh clang libclang-rt-14-dev llvm
CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS="-O1 -fprofile-instr-generate -fcoverage-mapping"
cmake --build "$build" --parallel 2 --target "${rooms[@]/%//all}"

rm -rf "$build/profiles"
programs=()
for room in "${rooms[@]}"; do
  LLVM_PROFILE_FILE="$build/profiles/%p.profraw" \
    ctest --test-dir "$build/$room" --parallel 2 --output-on-failure
  mapfile -t tests < <(ctest --test-dir "$build/$room" -N | sed -n 's/.*Test *#[0-9]*: //p')
  programs+=("${tests[@]/#/$build/}")
done
llvm-profdata merge -sparse "$build"/profiles/*.profraw -o "$build/all.profdata"

objects=("${programs[0]}" "${programs[@]/#/-object=}" "-instr-profile=$build/all.profdata")
# What the core's tests link beside it.
others='_test\.cpp$|/toy_|/(tests|report|driver)/|^/usr/'
llvm-cov report "${objects[@]}" -ignore-filename-regex="$others" > "$build/coverage.txt"
cat "$build/coverage.txt"
llvm-cov show "${objects[@]}" -ignore-filename-regex="$others" |
  awk -F'|' '/^\// { file = $0 } $2 ~ /^ *0$/ { print file $1 "|" $3 }' > "$build/not-run.txt"
echo "$(wc -l < "$build/not-run.txt") lines that no test runs stand in $build/not-run.txt"
awk -v least="$least" '$1 == "TOTAL" { share = $10 } END { exit share + 0 < least }' "$build/coverage.txt"

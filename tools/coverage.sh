#!/usr/bin/env bash
# Measures which lines of the core the tests run: tools/coverage.sh [BUILD_DIR]
# Prints the share of each file and the lines that no test runs; fails below 95 percent.
set -euo pipefail
cd "$(dirname "$0")/.."

build=$PWD/${1:-build-coverage}
least=95
tools/setup-debian.sh clang libclang-rt-14-dev llvm
CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS="-O1 -fprofile-instr-generate -fcoverage-mapping"
cmake --build "$build" --parallel 2
rm -rf "$build/profiles"
LLVM_PROFILE_FILE="$build/profiles/%m-%p.profraw" ctest --test-dir "$build" --parallel 2 --output-on-failure
llvm-profdata merge -sparse "$build"/profiles/*.profraw -o "$build/all.profdata"

mapfile -t programs < <(find "$build" -maxdepth 1 -type f -perm -u+x \( -name '*_test' -o -name 'velto' -o -name 'VELTO.exe' \))
objects=()
for program in "${programs[@]}"; do objects+=(-object "$program"); done
mapfile -t core < <(git ls-files core model decoder hmm predict | grep -E '\.(cpp|h)$' | grep -v -e _test.cpp -e toy_)
llvm-cov report "${objects[@]:1}" -instr-profile="$build/all.profdata" "${core[@]}" | tee "$build/coverage.txt"
llvm-cov show "${objects[@]:1}" -instr-profile="$build/all.profdata" -show-line-counts "${core[@]}" |
  awk -F'|' '/^\// { file = $0 } $2 ~ /^ *0$/ { print file $1 "|" $3 }' > "$build/not-run.txt"
echo "lines that no test runs: $(wc -l < "$build/not-run.txt"), see $build/not-run.txt"
awk -v least="$least" '$1 == "TOTAL" { share = $10 + 0; exit !(share >= least) } END { exit !(share >= least) }' \
  "$build/coverage.txt"

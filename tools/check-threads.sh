#!/usr/bin/env bash
# Runs the tests that start threads under the thread sanitizer: tools/check-threads.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build-threads}
tests=(evaluate_test evaluation_test hmm_trainer_test matrix_search_test network_trainer_test
  predictor_test scan_learning_test scan_test vote_trainer_test)

tools/setup-debian.sh
tools/setup-debian.sh clang libclang-rt-14-dev
CXX=clang++ cmake -S . -B "$build" -G Ninja -DVELTO_WERROR=ON -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS_DEBUG=-g1 -DCMAKE_CXX_FLAGS=-O1 -DVELTO_SANITIZE=thread
cmake --build "$build" --parallel 2 --target velto VELTO.exe "${tests[@]}"
# The symbolizer prints to where the tests look for messages: take symbolize=1 to see where a race is.
export TSAN_OPTIONS="symbolize=0 suppressions=$PWD/tools/thread-suppressions.txt"
ctest --test-dir "$build" --output-on-failure -R "^($(IFS='|'; echo "${tests[*]}"))\$"

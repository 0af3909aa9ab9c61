#!/usr/bin/env bash
# Checks the library velto_predict as others get it: tools/check-library.sh BUILD_DIR
# It neither ends the process nor prints, starts no thread, writes no global variable; one header is
# installed; programs and shared objects link it. CXX and CXXFLAGS are to be those of the build.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "$1")
library=$build/libvelto_predict.a

fail() { echo "check-library: $1"; exit 1; }

called=$(nm -uC "$library" | sed -nE 's/^ +U //p' | grep -E \
  -e '^(exit|_exit|_Exit|quick_exit|abort|system|signal|fork)$' \
  -e '^(printf|puts|putchar|perror|vprintf|stdin|stdout|stderr|__printf_chk)$' \
  -e '^std::(__1::)?w?(cout|cerr|clog|cin)$' \
  -e '^(pthread_create|thrd_create)$|^std::(__1::)?(thread|jthread|async)' | sort -u || true)
[ -z "$called" ] || fail "the library calls $called"

# Constants that are made when first asked for are local to their function.
written=$(nm -C --format=sysv "$library" | awk -F'|' '
  $7 ~ /^\.(t?bss|t?data)/ && $7 !~ /rel\.ro|DW\.ref/ && $1 !~ /\)( const)?(\[abi:[a-z0-9]+\])?::|^guard variable for / {
    print $1 }' | sort -u)
[ -z "$written" ] || fail "the library has the global variables $written"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/usr" >"$work/install.log"
headers=$(cd "$work/usr/include" && find . -type f)
[ "$headers" = ./velto/velto.h ] || fail "the installed headers are $headers"

cmake -S tests/embedding -B "$work/build" -DCMAKE_PREFIX_PATH="$work/usr" \
  -DEXAMPLES="$PWD/examples" -DBASES="$(grep -v '>' sample.txt | tr -d '\r\n')" >"$work/cmake.log"
cmake --build "$work/build" >"$work/build.log" || { cat "$work/build.log"; fail "embedding"; }
ctest --test-dir "$work/build" --output-on-failure >"$work/test.log" ||
  { cat "$work/test.log"; fail "the embedding programs"; }

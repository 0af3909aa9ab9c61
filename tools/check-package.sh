#!/usr/bin/env bash
# Builds the Debian package and tries it in scratch roots: tools/check-package.sh [BUILD]
# Both programs run from where it is unpacked, with its model and its shared library; a program of a
# user is built with it; it installs and removes cleanly.
# BUILD is a folder of its own, without tests.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build-package}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { echo "check-package: $1" >&2; exit 1; }

tools/setup-debian.sh
tools/setup-debian.sh dpkg-dev file
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DVELTO_BUILD_TESTS=OFF -DVELTO_WERROR=ON -DBUILD_SHARED_LIBS=ON
cmake --build "$build" --parallel 2
(cd "$build" && cpack -G DEB -B "$work")
package=$(echo "$work"/velto_*.deb)

depends=$(dpkg-deb --field "$package" Depends)
for library in libc6 libstdc++6 libhts3 libtbb12; do
  [[ $depends == *$library* ]] || fail "the package does not depend on $library: $depends"
done

# Unpacked elsewhere, run from a folder without a model.
root=$work/unpacked
dpkg -x "$package" "$root"
for file in lib/*/libvelto_predict.so include/velto/velto.h share/doc/velto/copyright \
  share/velto/param-human/model.json share/velto/models/zebrafish/model.json \
  share/man/man1/VELTO.exe.1 share/man/man1/velto-scan.1 share/man/man1/velto-train.1 \
  share/bash-completion/completions/velto; do
  compgen -G "$root/usr/$file" >/dev/null || fail "the package lacks usr/$file"
done
version=$(sed -nE 's/^project\(velto VERSION ([0-9]+\.[0-9]+).*/\1/p' CMakeLists.txt)
library=$(echo "$root"/usr/lib/*/libvelto_predict.so)
[[ $(objdump -p "$library") == *SONAME*libvelto_predict.so."$version"* ]] || fail "no version of the library"
[[ $(ldd "$root/usr/bin/VELTO.exe") == *"$root"*libvelto_predict.so."$version"* ]] ||
  fail "VELTO.exe does not find its own library"

cp sample.txt examples/reads.fastq "$work"
(cd "$work" && "$root/usr/bin/velto" scan --quiet -o found.tsv reads.fastq)
"$build/velto" scan --quiet -d param-human -o "$work/expected.tsv" examples/reads.fastq
cmp "$work/found.tsv" "$work/expected.tsv"
(cd "$work" && "$root/usr/bin/velto" models) | grep -q "^zebrafish .*$root/usr/share/velto/models/zebrafish$"
(cd "$work" && "$root/usr/bin/VELTO.exe" -d "$root/usr/share/velto/param-human" -i sample.txt) \
  >"$work/found.txt"
"$build/VELTO.exe" -i sample.txt >"$work/expected.txt"
cmp "$work/found.txt" "$work/expected.txt"
grep -q '^START: 91 STOP: 702$' "$work/found.txt"

# A program of a user.
cmake -S tests/embedding -B "$work/embedding" -G Ninja -DCMAKE_PREFIX_PATH="$root/usr" \
  -DEXAMPLES="$PWD/examples" -DBASES="$(grep -v '>' sample.txt | tr -d '\r\n')"
cmake --build "$work/embedding"
ctest --test-dir "$work/embedding" --output-on-failure

# Installed and removed; its dependencies are not in the bare root, nor a shell and ldconfig, which the
# package's scripts call: they run outside, with an ldconfig that does nothing.
mkdir "$work/bin"
printf '#!/bin/sh\n' >"$work/bin/ldconfig"
chmod +x "$work/bin/ldconfig"
export PATH=$work/bin:$PATH
root=$work/bare
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
touch "$root/var/lib/dpkg/status"
on_root() { dpkg --root="$root" --log=/dev/null --force-not-root --force-depends \
  --force-script-chrootless "$@" >"$work/dpkg.log" 2>&1; }
on_root --install "$package" || fail "does not install: $(cat "$work/dpkg.log")"
[ -x "$root/usr/bin/velto" ] || fail "nothing was installed"
on_root --purge velto || fail "is not removed: $(cat "$work/dpkg.log")"
left=$(find "$root" -path "$root/var/lib/dpkg" -prune -o -type f -print)
[ -z "$left" ] || fail "left behind: $left"
echo "$(basename "$package") installs, runs and is removed; depends on $depends"

#!/usr/bin/env bash
# Cross-builds both programs for 64-bit ARM and compares what they write, run by QEMU, with those of this
# machine, byte by byte:
#   tools/check-arm.sh [BUILD [BUILD_ARM]]
# Installs Debian's cross compiler and QEMU. Headers and libraries of Debian's arm64 are unpacked below
# BUILD_ARM (100 MB of packages and files); the system does not change.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build}")
arm=$(realpath -m "${2:-build-arm}")
root=$arm/root
tools/setup-debian.sh g++-aarch64-linux-gnu qemu-user
tools/build.sh "$build"

# ---- Headers and libraries
if [ ! -e "$root/complete" ]; then
  apt=$arm/apt
  mkdir -p "$apt/state/lists/partial" "$apt/cache/archives/partial" "$root/usr/lib"
  ln -sfn usr/lib "$root/lib"
  : >"$apt/status"
  options=(-qq -o APT::Architecture=arm64 -o APT::Architectures::=arm64 -o Dir::State="$apt/state"
           -o Dir::State::status="$apt/status" -o Dir::Cache="$apt/cache")
  apt-get "${options[@]}" update
  apt-get "${options[@]}" install --download-only --yes --no-install-recommends \
    libstdc++-12-dev libhts-dev zlib1g-dev libtbb-dev libhwy-dev nlohmann-json3-dev libcli11-dev
  for package in "$apt"/cache/archives/*.deb; do dpkg-deb -x "$package" "$root"; done
  touch "$root/complete"
fi

# ---- Programs
export PKG_CONFIG_SYSROOT_DIR=$root
export PKG_CONFIG_LIBDIR=$root/usr/lib/aarch64-linux-gnu/pkgconfig:$root/usr/share/pkgconfig
cmake -S . -B "$arm" -G Ninja -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=aarch64 \
  -DCMAKE_CXX_COMPILER=aarch64-linux-gnu-g++ -DCMAKE_SYSROOT="$root" \
  -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY \
  -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=ONLY \
  -DVELTO_BUILD_TESTS=OFF -DVELTO_WERROR=ON
cmake --build "$arm" --parallel 2 --target velto VELTO.exe

# ---- Results
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# results FOLDER PROGRAM_FOLDER [QEMU...]
results() {
  local folder=$work/$1 programs=$2
  shift 2
  mkdir "$folder"
  for decoder in vote hmm; do
    "$@" "$programs/velto" scan --quiet -t 2 -d param-human --decoder "$decoder" \
      -o "$folder/$decoder.tsv" --gff3 "$folder/$decoder.gff3" --cds "$folder/$decoder.cds" \
      --scores "$folder/$decoder.scores" examples/reads.fastq
  done
  "$@" "$programs/VELTO.exe" -w 70 -h "$folder/out.html" -s "$folder/out.csv" -i sample.txt \
    >"$folder/report.txt"
}
results here "$build"
results arm "$arm" qemu-aarch64 -L "$root"
diff -rq "$work/here" "$work/arm"
echo "$(find "$work/arm" -type f | wc -l) files are the same on 64-bit ARM"

#!/usr/bin/env bash
# Installs the Debian packages that VELTO is built and tested with, those named as arguments or the
# usual ones; packages that are present are left alone.
set -euo pipefail

packages=("$@")
if [ ${#packages[@]} -eq 0 ]; then
  packages=(g++ cmake ninja-build pkg-config libgtest-dev libcli11-dev nlohmann-json3-dev
            libhts-dev libhwy-dev libtbb-dev libbenchmark-dev genometools bedtools gffread
            python3-dev python3-numpy python3-pip python3-pytest python3-venv pybind11-dev)
fi

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
  "${missing[@]}"

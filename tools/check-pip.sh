#!/usr/bin/env bash
# Installs the Python package by pip from a checkout into a new virtual environment, without a network,
# and predicts the sample read with it: tools/check-pip.sh
# Compiles the library anew, which takes some minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup-debian.sh
tools/setup-debian.sh python3-setuptools python3-wheel
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The files of the checkout alone, so that nothing built before helps.
mkdir "$work/checkout"
git ls-files -z --cached --others --exclude-standard | tar -c --null -T - | tar -x -C "$work/checkout"

# Debian's setuptools and wheel build the package; pip fetches its own otherwise.
/usr/bin/python3 -m venv --system-site-packages "$work/venv"
"$work/venv/bin/pip" install --no-index --no-build-isolation "$work/checkout/python"

cd "$work"
found=$(venv/bin/python - checkout/sample.txt <<'END'
import sys
import velto

assert velto.__file__.startswith(sys.prefix), velto.__file__
lines = open(sys.argv[1]).read().split("\n")
read = "".join(lines[1:])
found = velto.Model("human", decoder="vote").predict(read)
print(found.start + 1, found.stop + 1, *(f"{s.kind}:{s.position + 1}" for s in found.frameshifts))
END
)
expected="91 702 deletion:297 insertion:522"
[ "$found" = "$expected" ] || { echo "found '$found' instead of '$expected'" >&2; exit 1; }
echo "pip installs the package, which finds $found"

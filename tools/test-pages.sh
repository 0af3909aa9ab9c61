#!/usr/bin/env bash
# Drives the pages of velto in Chromium, and gives its figures to MultiQC:
#   tools/test-pages.sh [BUILD]
# Installs Debian's Chromium and MultiQC, and Node where there is none; npm fetches puppeteer-core.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build}")
tools/setup-debian.sh chromium multiqc
command -v npm >/dev/null || tools/setup-debian.sh nodejs npm
tools/build.sh "$build"
work=$build/browser
mkdir -p "$work/figures"

name='<script>document.title="broken"</script>'
{ echo ">$name"; tail -n +2 sample.txt; } >"$work/sample.fa"
# The sample and its parts: many lengths, with and without frameshifts and ends.
awk -v name="$name" '!/^>/ { seq = seq $0 }
  END { for (i = 0; i < 40; ++i)
          printf ">%s\n%s\n", i ? "part" i : name, substr(seq, 1 + 17 * i, 1000 - 24 * i) }' \
  sample.txt >"$work/parts.fa"
"$build/velto" show "$work/sample.fa" -d param-human -o "$work/show.html"
"$build/velto" scan "$work/parts.fa" -d param-human --error-rates mild --quiet -o "$work/parts.tsv" \
  --report "$work/report.html" --multiqc "$work/figures/parts_mqc.json"

rm -rf "$work/joined"
multiqc -q -o "$work/joined" "$work/figures"
grep -q '^parts	40	' "$work/joined/multiqc_data/multiqc_general_stats.txt"
echo "MultiQC took the figures"

cp tests/browser/* "$work"
[ -d "$work/node_modules" ] || (cd "$work" && npm install --loglevel=error --no-audit --no-fund)
export PAGES=$work CHROMIUM
CHROMIUM=$(command -v chromium)
node --test --test-reporter=tap "$work/pages.test.mjs"

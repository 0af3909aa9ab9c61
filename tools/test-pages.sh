#!/usr/bin/env bash
# Drives the pages of velto in Chromium, and gives its figures to MultiQC:
#   tools/test-pages.sh [BUILD]
# Needs node with npm, which fetches puppeteer-core, and Chromium; and multiqc. What is not there is
# skipped with a message.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "${1:-build}")
chromium=$(command -v chromium || command -v chromium-browser || true)
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

if command -v multiqc >/dev/null; then
  rm -rf "$work/joined"
  multiqc -q -o "$work/joined" "$work/figures"
  grep -q '^parts	40	' "$work/joined/multiqc_data/multiqc_general_stats.txt"
  echo "MultiQC took the figures"
else
  echo "skipped: multiqc is not installed"
fi

if [ -n "$chromium" ] && command -v node >/dev/null && command -v npm >/dev/null; then
  cp tests/browser/* "$work"
  [ -d "$work/node_modules" ] || (cd "$work" && npm install --silent --no-audit --no-fund)
  CHROMIUM=$chromium PAGES=$work node --test --test-reporter=tap "$work/pages.test.mjs"
else
  echo "skipped: chromium, node or npm is not installed"
fi

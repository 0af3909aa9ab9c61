#!/usr/bin/env bash
# Builds the browser page and drives it in Chromium; compares its files with those of velto scan:
#   tools/test-web.sh [BUILD [SITE_BUILD]]     # by default build and build-web
# Installs what tools/build-web.sh needs and Debian's Chromium; npm fetches puppeteer-core.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build}")
tools/setup-debian.sh chromium
tools/build.sh "$build"
tools/build-web.sh "${2:-build-web}"
site_build=$(realpath "${2:-build-web}")
work=$site_build/browser
mkdir -p "$work"
rm -rf "$work"/downloads-*

# ---- Inputs
cp sample.txt examples/reads.fastq "$work"
bases=$(tail -n +2 sample.txt)
name='<script>document.title="broken"</script>'
printf '>%s\n%s\n><img src=x onerror=alert(1)>\n%s\n>"\x27&\x1b[31m\xff\xe2\x80\xae\n%s\n>\n%s\n>%0300d\n%s\n' \
  "$name" "$bases" "$bases" "$bases" "$bases" 7 "$bases" >"$work/hostile.fa"
# The example reads again and again, under names of their own.
awk '{ line[NR] = $0 }
  END { for (read = 1; read <= 1000; ++read) { at = 4 * ((read - 1) % (NR / 4))
          print "@read" read; for (i = 2; i <= 4; ++i) print line[at + i] } }' \
  examples/reads.fastq >"$work/thousand.fastq"

# ---- What velto scan writes
for decoder in hmm vote; do
  for input in sample.txt reads.fastq hostile.fa thousand.fastq; do
    out=$work/$input.$decoder
    "$build/velto" scan -d param-human --decoder $decoder --quiet "$work/$input" -o "$out.tsv" \
      --gff3 "$out.gff3" --bed "$out.bed" --cds "$out.cds" --protein "$out.protein" \
      --json "$out.json"
  done
done

"$build/velto" scan -d models/celegans --quiet sample.txt -o "$work/sample.txt.celegans.tsv"

# ---- Tests
cp tests/browser/* "$work"
[ -d "$work/node_modules" ] || (cd "$work" && npm install --loglevel=error --no-audit --no-fund)
export CHROMIUM WORK=$work SITE=$site_build/site SITE_BUILD=$site_build PAGE=$PWD/web/page MODEL=$PWD/param-human
CHROMIUM=$(command -v chromium)
node --no-warnings --test --test-reporter=tap "$work/engine.test.mjs" "$work/web.test.mjs"

#!/usr/bin/env bash
# Builds the manual as a site and fails on any warning, or if the site leaves out a page:
#   tools/check-docs.sh [SITE]
# Installs Debian's mkdocs.
set -euo pipefail
cd "$(dirname "$0")/.."
site=$(realpath -m "${1:-build/site}")
tools/setup-debian.sh mkdocs

mkdocs build --quiet --strict --clean --site-dir "$site"
for page in docs/*.md; do
  grep -q ": ${page#docs/}\$" mkdocs.yml || { echo "mkdocs.yml: the site leaves out $page" >&2; exit 1; }
done

# Anchors, which mkdocs does not look after.
grep -oE '\]\([a-z-]*\.md#[^)]*\)' docs/*.md | sed -E 's/^[^:]*:\]\((.*)\.md#(.*)\)$/\1 \2/' |
  while read -r page anchor; do
    grep -q "id=\"$anchor\"" "$site/$page.html" ||
      { echo "docs/$page.md has no heading #$anchor" >&2; exit 1; }
  done
echo "the manual is built in $site"

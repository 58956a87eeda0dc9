#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes one HTML page, pictures included, of the user guide and the descriptions of the formats.
#
#   make-page.sh PAGE
set -euo pipefail
page=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The chapters in reading order: as the guide's first page links them.
mapfile -t chapters < <(grep -oE '\]\([a-z-]+\.md\)' docs/guide/README.md | tr -d '](){}' | awk '!seen[$0]++')
documents=(docs/guide/README.md "${chapters[@]/#/docs/guide/}" docs/formats/*.md docs/response.md
  docs/checks.md docs/survey-checks.md docs/scale.md)
missing=$(comm -3 <(printf '%s\n' docs/guide/*.md | sort) \
  <(printf '%s\n' "${documents[@]}" | grep '^docs/guide/' | sort))
[[ -z $missing ]] || { printf 'not linked by docs/guide/README.md: %s\n' "$missing" >&2; exit 1; }

# Of headings that are alike only the first has its own id in the page: a link would lead there.
slugs() {
  sed -nE '/^```/,/^```/d; s/^#+ +//p' "$@" | tr '[:upper:] ' '[:lower:]-' | sed 's/[^[:alnum:]_-]//g'
}
twice=$(slugs docs/guide/*.md | sort | uniq -d)
[[ -z $twice ]] || { printf 'headings of more than one place: %s\n' "$twice" >&2; exit 1; }
linked=$(cat "${documents[@]}" | grep -oE '\]\([^)]*#[^)]+\)' | sed 's/.*#//; s/)$//' | sort -u)
twice=$(comm -12 <(printf '%s\n' "$linked") <(slugs "${documents[@]}" | sort | uniq -d))
[[ -z $twice ]] || { printf 'linked headings of more than one place: %s\n' "$twice" >&2; exit 1; }

# Each document begins with an anchor that links from others lead to.
for document in "${documents[@]}"; do
  printf '<a id="document-%s"></a>\n\n' "$(basename "$document" .md)"
  cat "$document"
  printf '\n'
done |
  ORVANE_PAGE_DOCUMENTS="$(basename -s .md "${documents[@]}")" \
    pandoc --from gfm --to html5 --self-contained --resource-path docs/guide --toc --toc-depth 2 \
    --metadata title="Orvane User Guide" --metadata lang=en \
    --lua-filter packaging/single-page.lua --include-in-header packaging/page-style.html \
    --output "$page"

# A link into the page that leads nowhere is a fault of a document.
bad=$(comm -23 <(grep -oE 'href="#[^"]+"' "$page" | sed 's/.*#//; s/"$//' | sort -u) \
  <(grep -oE '\bid="[^"]+"' "$page" | sed 's/id="//; s/"$//' | sort -u))
[[ -z $bad ]] || { printf 'links to no place of the page: %s\n' "$bad" >&2; exit 1; }

#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Checks that each folder of src/ includes only what its floor may (see docs/architecture.md), and
# that paths become texts in one way.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.."

declare -A allowed=(
  [base]="base"
  [files]="base files"
  [table]="base files table"
  [forms]="base files table forms"
  [editors]="base files table forms stepping editors"
  [stepping]="base files table forms stepping"
  [timeseries]="base files table forms timeseries"
  [calibration]="base files table calibration"
  [response]="base files table forms timeseries calibration response"
  [spectra]="base files table forms stepping timeseries calibration response spectra"
  [check]="base files table forms stepping calibration editors check"
  [survey]="base files table forms stepping timeseries calibration response spectra editors check survey"
  [meaning]="base files table forms stepping timeseries editors meaning"
  [export]="base files table forms stepping timeseries calibration response spectra editors meaning export"
  [changes]="base files table forms stepping timeseries editors meaning changes"
  [ui]="base files table forms ui"
  [cli]="base files table forms stepping timeseries calibration response spectra editors check survey meaning export cli"
  [app]="base files table forms stepping timeseries calibration response spectra editors check survey meaning changes export ui app"
)
bad=0
complain() { printf '%s\n' "$*"; bad=1; }

while IFS=: read -r file line include; do
  path=${file#src/}
  folder=${path%%/*}
  included=${include#*\"}
  target=${included%%/*}
  may="${allowed[$folder]:-}"
  [[ $path == */widgets/* ]] && may+=" ui"
  [[ " $may " == *" $target "* ]] || complain "$file:$line: $folder may not include $included"
  [[ $included == */widgets/* && $path != */widgets/* && $folder != app ]] &&
    complain "$file:$line: only widgets and the program may include $included"
done < <(grep -rnoE '^#include "[^"]+"' src | grep -v 'generated')

while IFS=: read -r file line _; do
  case $file in
    src/ui/* | src/app/* | src/*/widgets/* | src/calibration/archive/*) ;;
    *) complain "$file:$line: Qt is not allowed here" ;;
  esac
done < <(grep -rnE '^#include <(Q[A-Z]|qcustomplot)' src)

# The standard's own conversion loses or refuses names on some systems: files/path_text.h has ours.
while IFS=: read -r file line _; do
  complain "$file:$line: PathText() makes a text of a path"
done < <(grep -rnE '\.(u8|generic_)?string\(\)' src)
exit $bad

#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Checks that each folder of src/ includes only what its floor may: see docs/architecture.md.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.."

declare -A allowed=(
  [core]="core"
  [forms]="core forms"
  [editors]="core forms stepping editors"
  [stepping]="core forms stepping"
  [timeseries]="core forms timeseries"
  [calibration]="core forms timeseries calibration"
  [ui]="core forms ui"
  [cli]="core forms stepping timeseries calibration editors cli"
  [app]="core forms stepping timeseries calibration editors ui app"
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
exit $bad

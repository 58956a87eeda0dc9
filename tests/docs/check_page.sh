#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens the page of a survey in Chromium, without a window: it must show without a complaint, also
# printed. Ends with 77 where there is no Chromium.
#
#   check_page.sh ORVANE_CLI EXAMPLE_SURVEY_PROGRAM
set -euo pipefail
tool=$(realpath "$1")
survey=$(realpath "$2")
command -v chromium >/dev/null || exit 77
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
"$survey" --evening survey >/dev/null
status=0
"$tool" survey scan survey --no-index --deep --checksums --format html --out page.html || status=$?
((status == 1)) || { printf 'the scan ends with %s\n' "$status"; exit 1; }

open_page() {
  HOME=$work timeout 60 chromium --headless --no-sandbox --disable-gpu --user-data-dir="$work/user" \
    --enable-logging=stderr --virtual-time-budget=3000 "$@" "file://$work/page.html" >out.txt 2>err.txt
  ! grep CONSOLE err.txt
}
open_page --screenshot="$work/page.png" --window-size=1300,900
open_page --print-to-pdf="$work/page.pdf"
open_page --dump-dom
[[ -s page.png && -s page.pdf ]]
# What the browser made of it: every box has its line, every rule its row.
for text in '<svg' 'Box 1215' 'recording-gap' 'result-old' '</html>'; do
  grep -qF "$text" out.txt || { printf 'the page has no %s\n' "$text"; exit 1; }
done

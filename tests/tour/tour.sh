#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# A day with Orvane, by keyboard alone, on a screen that nobody sees: the morning's table is opened, changed,
# checked and written for each box, the evening's folder looked through, a waveform, its spectrum and a
# calibration looked at. Each step is checked by what the window says or what lies on the disk, and drawn.
#
#   tour.sh PROGRAMS THEME PICTURES
#
# THEME is light, dark or sunlight; the pictures are PICTURES/tour-1-open.png and so on.
set -Eeuo pipefail
PROGRAMS=$(realpath "$1")
PICTURES=$(realpath -m "$3")
readonly PROGRAMS THEME=$2 PICTURES

if [[ -z ${ORVANE_ON_SCREEN:-} ]]; then
  for program in xvfb-run openbox xdotool import; do
    command -v "$program" >/dev/null || { printf 'Not driven: there is no %s\n' "$program"; exit 77; }
  done
  ORVANE_ON_SCREEN=1 exec xvfb-run -a -s '-screen 0 1366x768x24 -nolisten tcp' \
    sh -c 'openbox >/dev/null 2>&1 & exec bash "$0" "$@"' "$0" "$@"
fi
# Pictures show paths: it has the same name each time.
folder=${TMPDIR:-/tmp}/orvane-tour
exec 9>"$folder.lock"
flock 9
rm -rf "$folder"
mkdir "$folder"
trap 'kill "${program:-}" 2>/dev/null || true; rm -rf "$folder"' EXIT
trap 'printf "FAILED at line %s of tour.sh\n" "$LINENO" >&2' ERR
readonly DAY=$folder/day EVENING=$folder/evening
export QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 HOME=$folder XDG_CONFIG_HOME=$folder/config \
  XDG_DATA_HOME=$folder/data XDG_CACHE_HOME=$folder/cache XDG_RUNTIME_DIR=$folder/run
unset WAYLAND_DISPLAY QT_SCALE_FACTOR

fail() {
  import -window root "$PICTURES/failed.png" || true
  printf 'FAILED: %s (picture: %s/failed.png)\n' "$*" "$PICTURES" >&2
  exit 1
}
# wait_for SECONDS COMMAND...: until the command is true.
wait_for() {
  local seconds=$1 i
  shift
  for ((i = 0; i < seconds * 10; ++i)); do
    ! "$@" >/dev/null 2>&1 || return 0
    sleep 0.1
  done
  fail "waited in vain for: $*"
}
# The window in front has this title (a regular expression).
fronts() { [[ $(xdotool getactivewindow getwindowname 2>/dev/null) =~ $1 ]]; }
# press TITLE KEY...: in the window in front, which must have the title.
press() {
  wait_for 30 fronts "$1"
  sleep 0.3
  xdotool key --delay 80 "${@:2}"
}
type_text() { xdotool type --delay 25 -- "$1"; }
# open_file TITLE PATH: in the dialog that has the title.
open_file() {
  wait_for 10 fronts "$1"
  sleep 0.5
  type_text "$2"
  xdotool key Return
}
# draw NAME: when nothing on the screen moves any more.
draw() {
  local before=none now i
  for ((i = 0; i < 50; ++i)); do
    sleep 0.3
    now=$(import -window root rgb:- | cksum)
    [[ $now != "$before" ]] || break
    before=$now
  done
  import -window root -strip "$PICTURES/tour-$1.png"
}
# fill: the window in front has all of the screen.
fill() { xdotool getactivewindow windowmove 1 20 windowsize --sync 1362 740; }
tool() { "$PROGRAMS/orvane-cli" "$@"; }
has_value() { [[ $(tool table get "$1" "${2%%=*}") == "$2" ]]; }

mkdir -p "$PICTURES" "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME/Local AppWizard-Generated Applications"
chmod 700 "$XDG_RUNTIME_DIR"
printf '[Window]\nTheme=%s\n' "$THEME" >"$XDG_CONFIG_HOME/Local AppWizard-Generated Applications/Orvane.conf"
"$PROGRAMS/orvane-example-survey" "$DAY" >/dev/null
"$PROGRAMS/orvane-example-survey" --evening "$EVENING" >/dev/null
readonly MORNING=$folder/morning
readonly TABLE=$MORNING/Startup.tbl
mkdir "$MORNING"
cp "$DAY/SIP/Startup.tbl" "$TABLE"

xdotool mousemove 1365 767
"$PROGRAMS/orvane" "$TABLE" 9>&- &
program=$!
wait_for 30 fronts '^Startup.tbl - Orvane'
fill
draw 1-open

press Orvane ctrl+8
press '^Parameter Table' ctrl+l
type_text SITE
xdotool key Return
type_text S0777E
xdotool key Return
draw 2-change
press '^Parameter Table' Escape
press '^Startup.tbl\* - Orvane' ctrl+s
wait_for 10 has_value "$TABLE" SITE=S0777E

press '^Startup.tbl - Orvane' F7
draw 3-check
press Orvane F7 ctrl+shift+m
draw 4-map
press Orvane ctrl+shift+m

# All start-up files, by the button of the check: "Yes", then the list of results.
press Orvane F7 alt+a
press '^Orvane$' y
wait_for 20 test -s "$MORNING/1211.tbl"
draw 5-files
press '^Orvane$' Escape
press '^Startup.tbl\* - Orvane' F7 ctrl+s
has_serial() { has_value "$MORNING/$1.tbl" "SNUM=$1" && has_value "$MORNING/$1.tbl" SITE=S0777E; }
for box in 3105 2417 1203 1207 1211; do
  has_serial "$box" || fail "the start-up file of box $box is not its own"
done

press '^Startup.tbl - Orvane' ctrl+shift+f
open_file 'Survey Folder' "$EVENING"
wait_for 20 fronts 'Survey.*evening|evening.*Survey'
fill
draw 6-evening

# The first recording below the first group; that the two have a bad record is told.
press '^Survey' Home Down Return
press '^Orvane$' Return
press '^1207.TSS - ' ctrl+o
open_file '^Open' "$DAY/TDIP/2417.TSS"
press '^Orvane$' Return
wait_for 20 fronts '^2417.TSS - '
draw 7-waveform
press '^2417.TSS' F9
draw 8-spectrum
press '^2417.TSS' F9 alt+f c
open_file Calibration "$DAY/Calibration/2417.CLB"
wait_for 20 fronts '^2417.CLB '
draw 9-calibration
press '^2417.CLB ' alt+F4
ends() { ! kill -0 "$program"; }
wait_for 20 ends
printf 'The tour: %s pictures in %s\n' "$(find "$PICTURES" -name 'tour-*.png' | wc -l)" "$PICTURES"

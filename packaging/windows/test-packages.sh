#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Uses the zip and the installer under Wine as a user would: opens a table of the example survey,
# edits it in its window, saves, converts, installs, upgrades, removes. What is left then is a fault.
#
#   test-packages.sh PACKAGE OLDER SURVEY HERE
#
# PACKAGE.zip and PACKAGE-setup.exe are tested; OLDER is the installer of a version before, HERE is the folder of the programs for this machine.
set -Eeuo pipefail
readonly PACKAGE=$1 OLDER=$2 SURVEY=$3 HERE=$4
readonly CLASSES='Software\Classes' TYPE='Orvane.Document'
readonly SETTINGS='HKCU\Software\Local AppWizard-Generated Applications\Orvane'

say() { printf '%s\n' "$*"; }
fail() { say "FAILED: $*" >&2; exit 1; }
trap 'say "FAILED at line $LINENO of test-packages.sh" >&2' ERR
wine() { /usr/lib/wine/wine64 "$@"; }
# A value of the registry; a key's own value without a name.
registry() { wine reg query "$1" ${2:+/v} "${2:-/ve}" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_[A-Z]*  *//p'; }
has_key() { wine reg query "$1" >/dev/null 2>&1; }

if [[ -z ${ORVANE_ON_SCREEN:-} ]]; then
  /usr/lib/wine/wineserver64 -k || true  # a Windows that began without a display knows none later
  ORVANE_ON_SCREEN=1 exec xvfb-run -a -s '-screen 0 1366x768x24 -nolisten tcp' \
    sh -c 'openbox >/dev/null 2>&1 & "$@"' sh "$0" "$@"
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
readonly FOLDER=$folder

# wait_for SECONDS COMMAND...: until the command is true.
wait_for() {
  local seconds=$1 i
  shift
  for ((i = 0; i < seconds * 5; ++i)); do
    ! "$@" >/dev/null 2>&1 || return 0
    sleep 0.2
  done
  import -window root "$PACKAGE-failed.png" 2>/dev/null || true
  fail "waited in vain for: $* (picture: $PACKAGE-failed.png)"
}
shows() { xdotool search --onlyvisible --name "$1"; }
hides() { ! shows "$1"; }
# press TITLE KEY...: in the window whose title matches.
press() {
  wait_for 30 shows "$1"
  xdotool windowfocus "$(shows "$1" | tail -1)"
  sleep 1
  xdotool key --delay 150 "${@:2}"
}
type_text() { xdotool type --delay 80 "$1"; }
# What the table has but for the site.
others() { "$HERE/orvane-cli" table show "$1" | grep -v '	SITE	' | sha256sum; }
has_site() { [[ $("$HERE/orvane-cli" table get "$1" SITE) == "SITE=$2" ]]; }

# use_desktop PROGRAM TABLE: edits the site in the raw editor, saves, lists the table, ends.
use_desktop() {
  local program=$1 table=$2 before listing=${2%.tbl}.txt
  before=$(others "$table")
  (cd "$(dirname "$table")" && exec /usr/lib/wine/wine64 "$program" "$(basename "$table")") &
  press '^Startup.tbl - Orvane' ctrl+8
  press '^Parameter Table' ctrl+l
  type_text SITE
  xdotool key Return
  type_text S0777E
  xdotool key Return
  press '^Parameter Table' Escape
  press 'Orvane$' ctrl+s
  wait_for 20 has_site "$table" S0777E
  [[ $(others "$table") == "$before" ]] || fail "more than the site has changed in $table"
  # The first utility: the listing, with the system's own file dialog and Notepad.
  press 'Orvane$' alt+u Return
  wait_for 20 shows '^Convert TBL'
  sleep 1
  type_text "$(basename "$table")"
  xdotool key Return
  wait_for 20 test -s "$listing"
  wait_for 20 shows 'Notepad'
  press 'Notepad' alt+F4
  press 'Orvane$' alt+F4
  wait_for 20 hides 'Orvane'
  wait
}

test_zip() {
  local place="$FOLDER/another place" program
  mkdir -p "$place"
  (cd "$place" && unzip -q "$PACKAGE.zip")
  program="$place/$(basename "$PACKAGE")"
  cp -r "$SURVEY" "$FOLDER/Übung"
  use_desktop "$program/orvane.exe" "$FOLDER/Übung/SIP/Startup.tbl"
  (cd "$FOLDER/Übung" && wine "$program/orvane-cli.exe" calibration text Calibration/2417.CLB >/dev/null)
  "$HERE/orvane-cli" calibration text --out "$FOLDER/here" "$SURVEY/Calibration/2417.CLB" >/dev/null
  cmp "$FOLDER/here/2417.txt" "$FOLDER/Übung/Calibration/2417.txt"
  [[ $(registry "$SETTINGS\\Recent File List" File1) == *'bung\SIP\Startup.tbl' ]] ||  # told in another encoding
    fail "the recent files are not in the registry"
  [[ $(registry "HKCU\\$CLASSES\\.tbl") == "$TYPE" ]] || fail "the type is not registered"
  registry "HKCU\\$CLASSES\\$TYPE\\shell\\open\\command" | grep -qF 'another place' ||
    fail "the type opens another program"
  wine reg delete "HKCU\\$CLASSES\\.tbl" /f >/dev/null
  wine reg delete "HKCU\\$CLASSES\\$TYPE" /f >/dev/null
  say "The zip, unpacked elsewhere: opened, edited, saved, listed, converted"
}

test_installer() {
  local programs="$WINEPREFIX/drive_c/Program Files/Orvane" menu before=$FOLDER/before after=$FOLDER/after
  menu=$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/'Start Menu'/Programs/Orvane.lnk
  installed() { (cd "$WINEPREFIX/drive_c" && find 'Program Files' ProgramData users |
    grep -v '/Temp/\|Orvane/Unsaved\|Local AppWizard' | sort); }
  installed >"$before"
  wine "$PACKAGE-setup.exe" /S
  wait_for 60 test -f "$programs/uninstall.exe"
  wait_for 10 has_key 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane'
  diff -r "$PACKAGE" "$programs" | grep -v 'uninstall.exe$' && fail "not what was packed"
  [[ -f $menu ]] || fail "no entry in the start menu"
  [[ $(registry "HKLM\\$CLASSES\\.tbl") == "$TYPE" ]] || fail "the type is not registered"
  [[ $(registry "HKLM\\$CLASSES\\$TYPE\\shell\\open\\command") == \
    '"C:\Program Files\Orvane\orvane.exe" "%1"' ]] || fail "the type opens another program"
  # Opened by its type, from the shell.
  cp "$SURVEY/SIP/Startup.tbl" "$WINEPREFIX/drive_c/Startup.tbl"
  wine start 'C:\Startup.tbl' &
  press '^Startup.tbl - Orvane' alt+F4
  wait_for 20 hides 'Orvane'
  rm "$WINEPREFIX/drive_c/Startup.tbl"
  ! has_key "HKCU\\$CLASSES\\$TYPE" || fail "an installed program registers the type again"
  touch "$programs/kept.txt"
  wine "$programs/uninstall.exe" /S
  wait_for 60 test ! -e "$programs/orvane.exe"
  wait_for 10 hides_key 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane'
  wait_for 10 test ! -e "$programs/uninstall.exe"
  [[ $(ls "$programs") == kept.txt ]] || fail "the uninstaller takes away what it did not bring, or leaves files"
  rm -r "$programs"
  installed >"$after"
  diff "$before" "$after" || fail "the uninstaller leaves something"
  for key in "HKLM\\$CLASSES\\.tbl" "HKLM\\$CLASSES\\$TYPE"; do
    ! has_key "$key" || fail "$key is left"
  done
  say "The installer: installed, opened by the type of the file, removed; nothing is left"
}
hides_key() { ! has_key "$1"; }
installed_version() { registry 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane' DisplayVersion; }
is_version() { [[ $(installed_version) == "$1" ]]; }

# An older version is installed and used, then this one over it; another program takes the type.
test_upgrade() {
  local programs="$WINEPREFIX/drive_c/Program Files/Orvane" recent version
  version=$(sed 's/.*orvane-\([0-9.]*\)-windows.*/\1/' <<<"$PACKAGE")
  wine "$OLDER" /S
  wait_for 60 is_version 0.9
  [[ -f $programs/older.txt ]] || fail "the older version lacks its file"
  wine reg add "$SETTINGS\\Upgrade" /v Kept /d yes /f >/dev/null
  recent=$(registry "$SETTINGS\\Recent File List" File1)
  wine "$PACKAGE-setup.exe" /S
  wait_for 60 is_version "$version"
  wait_for 20 test -f "$programs/uninstall.exe"
  diff -r "$PACKAGE" "$programs" | grep -v 'uninstall.exe$' && fail "the upgrade leaves files of the older version"
  [[ $(registry "$SETTINGS\\Upgrade" Kept) == yes && $(registry "$SETTINGS\\Recent File List" File1) == "$recent" ]] ||
    fail "the upgrade takes away settings"
  [[ $(registry "HKLM\\$CLASSES\\.tbl") == "$TYPE" ]] || fail "the upgrade takes away the type"
  wine reg delete "$SETTINGS\\Upgrade" /f >/dev/null
  wine reg add "HKLM\\$CLASSES\\.tbl" /ve /d Other.Document /f >/dev/null
  wine "$programs/uninstall.exe" /S
  wait_for 60 test ! -e "$programs"
  wait_for 10 hides_key "HKLM\\$CLASSES\\$TYPE"
  [[ $(registry "HKLM\\$CLASSES\\.tbl") == Other.Document ]] ||
    fail "the uninstaller takes the type from another program"
  wine reg delete "HKLM\\$CLASSES\\.tbl" /f >/dev/null
  say "An older version: upgraded with its settings; the type of another program stays"
}

test_zip
test_installer
test_upgrade

#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds Orvane for 64-bit Windows, tests it under Wine, and makes a zip and an installer.
#
#   make.sh HERE     HERE is the folder of the programs built for this machine
#
# Results: out/windows. Qt for Windows stays in ORVANE_CACHE (~/.cache/orvane), the rest in
# build/windows, with a Windows of its own.
set -Eeuo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
readonly TREE=$PWD WORK=$PWD/build/windows OUT=$PWD/out/windows
readonly BIN=$WORK/bin HERE=$1
VERSION=$(sed -n 's/^project(Orvane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
readonly VERSION NAME=orvane-$VERSION-windows-x64

say() { printf '%s\n' "$*"; }
fail() { say "FAILED: $*" >&2; exit 1; }
trap 'say "FAILED at line $LINENO of make.sh" >&2' ERR

# Names of files are UTF-8; Wine takes from here which bytes it gives them.
export LC_ALL=C.UTF-8 WINEPREFIX=$WORK/wine WINEDEBUG=-all
# Nothing of it reaches the desktop of whoever builds, and nothing is asked for.
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=;mshtml='
unset DISPLAY WAYLAND_DISPLAY
wine() { /usr/lib/wine/wine64 "$@"; }

make_programs() {
  local qt
  qt=$(packaging/windows/build-qt.sh "${ORVANE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvane}")
  mkdir -p "$WORK/headers"
  cp -r /usr/include/CLI /usr/include/nlohmann "$WORK/headers/"
  # What was configured with another Qt is configured anew.
  grep -qsF "$qt/" "$WORK/CMakeCache.txt" || rm -rf "$WORK/CMakeCache.txt" "$WORK/CMakeFiles"
  cmake -S . -B "$WORK" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$qt/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$TREE/cmake/mingw.cmake" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DORVANE_SVG=OFF -DORVANE_SVG_WRITER="$qt/svg" -DORVANE_QCUSTOMPLOT="$qt/qcustomplot" \
    -DORVANE_FFTW="$qt/fftw" -DORVANE_SQLITE_FOLDER="$qt/sqlite" \
    -DORVANE_CLI11="$WORK/headers" -DORVANE_JSON="$WORK/headers" -DORVANE_GTEST=/usr/src/googletest -DORVANE_BENCH=OFF \
    -DBUILD_GMOCK=OFF -DINSTALL_GTEST=OFF --log-level=WARNING >"$WORK/configure.log" 2>&1 ||
    fail "see $WORK/configure.log"
  cmake --build "$WORK" --target orvane orvane-cli orvane-example-survey orvane-gallery orvane_tests \
    orvane_gui_tests -- --quiet
  mkdir -p "$WORK/licences"
  cp "$qt/copyright" "$WORK/licences/Qt.txt"
  cp "$qt/qcustomplot/copyright" "$WORK/licences/QCustomPlot.txt"
  cp "$qt/svg/copyright" "$WORK/licences/QtSvg.txt"
  cp "$qt/fftw/copyright" "$WORK/licences/FFTW.txt"
  cp "$qt/sqlite/copyright" "$WORK/licences/SQLite.txt"
  cp /usr/share/doc/libcli11-dev/copyright "$WORK/licences/CLI11.txt"
  cp /usr/share/doc/nlohmann-json3-dev/copyright "$WORK/licences/JSON.txt"
  cp /usr/share/doc/gcc-mingw-w64-base/copyright "$WORK/licences/GCC.txt"
  cp /usr/share/doc/mingw-w64-common/copyright "$WORK/licences/mingw-w64.txt"
}

# A fresh Windows. Its fonts are those of this machine, under the names that Windows has.
make_windows() {
  local font
  [[ ! -d $WINEPREFIX ]] || /usr/lib/wine/wineserver64 -k || true
  rm -rf "$WINEPREFIX" "$WORK/home"
  mkdir -p "$WINEPREFIX" "$WORK/home"
  export HOME=$WORK/home  # Windows' own folders for documents are links into it
  wine wineboot --init >/dev/null 2>&1
  for font in Arial "Segoe UI" Tahoma "MS Shell Dlg 2" "MS Sans Serif"; do
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "Liberation Sans" /f >/dev/null
  done
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "Courier New" /d "Liberation Mono" /f \
    >/dev/null
}

# Runs a command on a screen of a field laptop that nobody sees. Without a manager of windows each
# one takes two seconds to appear. A Windows that began without a display knows none later.
on_screen() {
  /usr/lib/wine/wineserver64 -k || true
  xvfb-run -a -s '-screen 0 1366x768x24 -nolisten tcp' \
    sh -c 'openbox >/dev/null 2>&1 & "$@"' sh "$@"
}
# Wine's drawing of text loses thin letters.
readonly PLATFORM=windows:fontengine=freetype

# run_tests WHAT PROGRAM [OPTION...]
run_tests() {
  local what=$1 log=$WORK/tests.log
  shift
  if ! (cd "$WORK" && "$@" --gtest_brief=1) >"$log" 2>&1; then
    grep -avE '^(This plugin|$)' "$log" | tail -60 || true
    fail "$what"
  fi
  local passed skipped
  passed=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests*\..*/\1/p' "$log" | tr -d '\r')
  skipped=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) tests*,.*/, \1 skipped/p' "$log" | tr -d '\r')
  ((${passed:-0} > 0)) || fail "$what: no tests ran"
  say "$what: $passed passed$skipped"
}

test_programs() {
  local tool=$WORK/tool
  say "Tests under Wine:"
  # First what differs most from the system that this was written on.
  WINEQT_QPA_PLATFORM=$PLATFORM run_tests "windows and dialogs, on a display" \
    on_screen /usr/lib/wine/wine64 "$BIN/orvane_gui_tests.exe"
  WINEQT_QPA_FONTDIR=$(wine winepath -w /usr/share/fonts/truetype/liberation | tr -d '\r') \
    WINEQT_QPA_PLATFORM=offscreen run_tests "windows and dialogs, without a display" \
    /usr/lib/wine/wine64 "$BIN/orvane_gui_tests.exe"
  run_tests "library" /usr/lib/wine/wine64 "$BIN/orvane_tests.exe"
  printf '#!/bin/sh\nexec /usr/lib/wine/wine64 "%s" "$@"\n' "$BIN/orvane-cli.exe" >"$tool"
  chmod +x "$tool"
  ORVANE_TEST_WINDOWS_TOOL=$tool run_tests "tool" "$HERE/orvane_cli_tests"
}

# convert_survey FOLDER TOOL...: every conversion, in the folder itself.
convert_survey() {
  cd "$1" || return
  shift
  local method
  for method in SIP TDIP TDEM CSAMT MT FDEM; do
    "$@" table text "$method/Startup.tbl" >/dev/null
    "$@" table startup "$method/Startup.tbl" --out "$method/boxes" >/dev/null 2>&1
    "$@" table to-v1 "$method/Startup.tbl" --out "$method/old" >/dev/null
    "$@" table show "$method/Startup.tbl" >"$method/show.txt"
    "$@" waveform text "$method/2417.TSS" >/dev/null
    "$@" waveform restack "$method/2417.TSS" >/dev/null
  done
  "$@" schedule text FDEM/2.TFS >/dev/null
  "$@" schedule preset SIP/Startup.tbl SIP --cycle 900 --to SIP/Preset.tbl
  "$@" schedule make SIP/Preset.tbl --to SIP/Preset.TFS
  "$@" stack csv --time-domain TDIP/2417.trs >/dev/null
  "$@" stack csv --frequency-domain CSAMT/2417.trs >/dev/null
  "$@" calibration text Calibration/2417.CLB Calibration/2041.CLC >/dev/null
  "$@" calibration curves Calibration/2041.CLC >curves.txt
  cd - >/dev/null || return
}

compare_conversions() {
  local here=$WORK/here there=$WORK/there
  rm -rf "$here" "$there"
  mkdir -p "$here" "$there"
  "$HERE/orvane-example-survey" "$here" >/dev/null
  (cd "$there" && wine "$BIN/orvane-example-survey.exe" . >/dev/null)
  convert_survey "$here" "$HERE/orvane-cli"
  convert_survey "$there" /usr/lib/wine/wine64 "$BIN/orvane-cli.exe"
  diff -r "$here" "$there" || fail "Windows and Linux differ"
  say "The example survey and all that is made of it: $(find "$there" -type f | wc -l) files, the same bytes as on Linux"
}

draw_pictures() {
  mkdir -p "$OUT/pictures"
  rm -rf "$WORK/survey"
  "$HERE/orvane-example-survey" "$WORK/survey" >/dev/null
  (cd "$OUT" && WINEQT_QPA_PLATFORM=$PLATFORM on_screen /usr/lib/wine/wine64 "$BIN/orvane-gallery.exe" \
    pictures "$WORK/survey/SIP/Startup.tbl" "$WORK/survey") >"$WORK/gallery.log" 2>&1 ||
    fail "see $WORK/gallery.log"
  say "Pictures: $(find "$OUT/pictures" -name '*.png' | wc -l) under out/windows/pictures"
}

make_folder() {
  local folder=$OUT/$NAME program
  rm -rf "$folder" "$folder.zip"
  mkdir -p "$folder"
  for program in orvane orvane-cli; do
    x86_64-w64-mingw32-strip -o "$folder/$program.exe" "$BIN/$program.exe"
  done
  packaging/make-page.sh "$folder/guide.html"
  sed 's/$/\r/' LICENSE >"$folder/LICENSE.txt"
  cp -r "$WORK/licences" "$folder/licences"
  (cd "$OUT" && zip -q -9 -r "$NAME.zip" "$NAME")
  say "Made out/windows/$NAME.zip ($(du -h "$folder.zip" | cut -f1))"
}

# make_setup VERSION FOLDER SETUP: an installer of what is in the folder.
make_setup() {
  local files=$WORK/uninstall.nsh
  # What the uninstaller takes away: exactly what the installer brought.
  (cd "$2" &&
    find . -type f -printf '  Delete "$INSTDIR\\%P"\n' &&
    find . -mindepth 1 -depth -type d -printf '  RMDir "$INSTDIR\\%P"\n') | sed 's,/,\\,g' >"$files"
  makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$1" -DFOLDER="$2" -DOUTPUT="$3" -DFILES="$files" \
    -DICON="$WORK/src/app/resources/orvane.ico" packaging/windows/orvane.nsi
}

make_installers() {
  local setup=$OUT/$NAME-setup.exe older=$WORK/older
  make_setup "$VERSION" "$OUT/$NAME" "$setup"
  say "Made out/windows/$NAME-setup.exe ($(du -h "$setup" | cut -f1))"
  # One to upgrade from: it brings a file that this version no longer has.
  rm -rf "$older"
  cp -r "$OUT/$NAME" "$older"
  printf 'gone\r\n' >"$older/older.txt"
  make_setup 0.9 "$older" "$WORK/older-setup.exe"
}

mkdir -p "$OUT"
make_programs
make_windows
test_programs
compare_conversions
draw_pictures
make_folder
make_installers
packaging/windows/test-packages.sh "$OUT/$NAME" "$WORK/older-setup.exe" "$WORK/survey" "$HERE"

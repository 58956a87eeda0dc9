#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Usage: compare_builds.sh OLD NEW
# Compares two builds by the folders of their programs (build/release/bin): both do every conversion
# and listing of the tool over one example survey, which OLD makes. Ends with 1 and the differences
# where a byte of a file, of the output or an exit code differs.
set -u
[[ $# == 2 ]] || { sed -n '3,6s/^# //p' "$0" >&2; exit 2; }
old=$(realpath "$1") new=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$old/orvane-example-survey" "$work/survey" >/dev/null || exit 1

# each CALL... -- FILE...: once for each file, its name in place of FILE, with a folder of its own for
# outputs in place of OUT and for all that was said.
each() {
  local -a verb=() files=()
  while [[ $1 != -- ]]; do verb+=("$1"); shift; done
  shift
  files=("$@")
  for file in "${files[@]}"; do
    local name="${verb[*]} $file"
    local out="out/${name//[^A-Za-z0-9.=]/_}"
    mkdir -p "$out"
    local -a call=("${verb[@]/#OUT/$out}")
    "$cli" "${call[@]/#FILE/$file}" >"$out/said" 2>"$out/noted"
    echo $? >"$out/code"
  done
}

everything() {
  local -a tables stacks series calibrations schedules boxes
  mapfile -t tables < <(find . -iname '*.tbl' | sort)
  mapfile -t series < <(find . -name '*.TS[S1-4]' | sort)
  mapfile -t stacks < <(find . -name '*.trs' | sort)
  mapfile -t calibrations < <(find . -name '*.CL[BC]' | sort)
  mapfile -t boxes < <(find . -name '*.CLB' | sort)
  mapfile -t schedules < <(find . -name '*.TFS' | sort)
  local all=("${tables[@]}" "${series[@]}" "${stacks[@]}" "${calibrations[@]}" "${schedules[@]}")
  each table show FILE -- "${tables[@]}"
  each table get FILE SNUM TECH MODE STIM TBVO NCHN -- "${tables[@]}"
  each table set FILE TXLE=3 --to OUT/set.tbl -- "${tables[@]}"
  each table diff FILE ./SIP/Startup.tbl -- "${tables[@]}"
  each table size --now 2026-07-01T00:00:00 FILE -- "${tables[@]}"
  each table boxes FILE -- "${tables[@]}"
  for version in 1 2; do
    for names in serial startup; do
      each table startup --tbl-version $version --names $names --out OUT FILE -- "${tables[@]}"
    done
  done
  each table text --out OUT FILE -- "${all[@]}"
  each table to-v1 --out OUT FILE -- "${tables[@]}"
  for method in SIP CSAMT FDEM TDIP TDEM; do
    each schedule preset FILE $method --to OUT/preset.tbl -- ./SIP/Startup.tbl
  done
  each schedule make --to OUT/made.TFS FILE -- "${tables[@]}"
  each schedule show FILE -- "${schedules[@]}" "${tables[@]}"
  each schedule text --out OUT FILE -- "${all[@]}"
  each waveform info FILE -- "${series[@]}"
  each waveform titles FILE -- "${series[@]}"
  each waveform text --out OUT FILE -- "${all[@]}"
  each waveform restack --out OUT FILE -- "${series[@]}"
  each waveform harmonics --out OUT --calibration-folder Calibration FILE -- "${series[@]}"
  each stack csv --time-domain --out OUT FILE -- "${all[@]}"
  each stack csv --frequency-domain --out OUT FILE -- "${all[@]}"
  each calibration info FILE -- "${calibrations[@]}"
  each calibration text --out OUT FILE -- "${all[@]}"
  each calibration curves FILE -- "${calibrations[@]}"
  for band in 1 9 19; do
    each calibration response --table MT/2417.TBL --band $band --frequency 7 FILE -- "${calibrations[@]}"
  done
  each calibration fit FILE -- "${boxes[@]}"
}

for build in old new; do
  cp -r "$work/survey" "$work/$build"
  cli=${!build}/orvane-cli
  (cd "$work/$build" && everything)
done
echo "compared $(find "$work/new/out" -type f | wc -l) files of $(find "$work/new/out" -name code | wc -l) calls," \
     "of which $(grep -lx 0 -r "$work/new/out" --include=code | wc -l) succeeded"
diff -r "$work/old" "$work/new" >"$work/differences" && exit 0
head -c 20000 "$work/differences"
exit 1

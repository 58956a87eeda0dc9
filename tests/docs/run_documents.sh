#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs what README and guide tell users to type, as it is written there, and compares what is shown.
#
#   run_documents.sh ORVANE_CLI EXAMPLE_SURVEY_PROGRAM DOCUMENT...
#
# A code block that begins with "orvane-cli" has a command in each line. One that begins with
# "$ orvane-cli" shows commands behind "$ " and under each what it prints; a line "..." stands for
# any further lines. A command must exit with 0, or with the "exit code N" that its comment tells.
# Each document has a folder of its own: the example survey, and for names without a folder copies
# of the files of one box. Links and pictures of the documents must exist.
set -euo pipefail
tool=$(realpath "$1")
survey=$(realpath "$2")
shift 2
mapfile -t documents < <(realpath -- "$@")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin"
ln -s "$tool" "$work/bin/orvane-cli"
export PATH=$work/bin:$PATH LC_ALL=C XDG_CACHE_HOME=$work/cache
failed=0 commands=0
complain() { printf '%s\n' "$*" >&2; failed=1; }

lay_out() {
  mkdir "$1"
  cd "$1"
  "$survey" . >/dev/null
  cp SIP/Startup.tbl TDIP/2417.* MT/2417.TS[1-4] Calibration/* .
  cp -r Calibration CAL
}

# run WHERE COMMAND: its output is in $work/out.
run() {
  local expected=0 status=0
  [[ ! $2 =~ '#'.*'exit code '([0-9]+) ]] || expected=${BASH_REMATCH[1]}
  bash -c "$2" >"$work/out" 2>"$work/err" </dev/null || status=$?
  commands=$((commands + 1))
  ((status == expected)) ||
    complain "$1: \"$2\" ends with $status, not $expected: $(cat "$work/err")"
}

# compare WHERE COMMAND: $work/shown is what the document shows of it.
compare() {
  local lines
  if [[ $(tail -1 "$work/shown") == ... ]]; then
    sed -i '$d' "$work/shown"
    lines=$(wc -l <"$work/shown")
    (($(wc -l <"$work/out") > lines)) || complain "$1: nothing follows at \"...\": $2"
    head -n "$lines" "$work/out" >"$work/head"
    mv "$work/head" "$work/out"
  fi
  diff "$work/shown" "$work/out" >"$work/diff" ||
    complain "$1: \"$2\" prints (>) other than the text shows (<):"$'\n'"$(cat "$work/diff")"
}

# One code block: its lines are the arguments behind WHERE.
run_block() {
  local where=$1 line command=
  shift
  if [[ ${1:-} == orvane-cli\ * ]]; then
    for line in "$@"; do
      run "$where" "$line"
    done
  elif [[ ${1:-} == '$ orvane-cli '* ]]; then
    for line in "$@" '$ '; do
      if [[ $line == '$ '* ]]; then
        [[ -z $command ]] || compare "$where" "$command"
        command=${line#'$ '}
        : >"$work/shown"
        [[ -z $command ]] || run "$where" "$command"
      else
        printf '%s\n' "$line" >>"$work/shown"
      fi
    done
  fi
}

run_document() {
  local document=$1 name in_block='' number=0 start=0 line block=()
  name=$(basename "$document")
  lay_out "$work/${name%.md}-$RANDOM"
  while IFS= read -r line; do
    number=$((number + 1))
    if [[ $line != '```'* ]]; then
      [[ -z $in_block ]] || block+=("$line")
    elif [[ -z $in_block ]]; then
      in_block=1 start=$number block=()
    else
      in_block=
      run_block "$name:$start" "${block[@]}"
    fi
  done <"$document"
  [[ -z $in_block ]] || complain "$name:$start: the block has no end"
}

check_links() {
  local document=$1 target path
  while IFS= read -r target; do
    path=$(dirname "$document")/${target%%#*}
    [[ -e $path ]] || complain "$document: there is no $target"
  done < <(grep -oE '\]\([^)#:]+(#[^)]*)?\)' "$document" | sed 's/^](//; s/)$//')
}

for document in "${documents[@]}"; do
  check_links "$document"
  before=$commands
  run_document "$document"
  printf '%s: %d commands\n' "$(basename "$document")" "$((commands - before))"
done
((commands > 0)) || complain "no command was found"
exit "$failed"

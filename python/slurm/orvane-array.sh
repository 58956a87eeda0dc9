#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# The files of a list, shared out among the tasks of a Slurm job array. Needs the tool alone:
#   find /survey -iname '*.tss' > files
#   sbatch --array=0-99 orvane-array.sh files restack --leave-out bad
# Each task takes every hundredth file. A result is written whole or not at all, and is the same each
# time: a task that was lost is simply run again. Exits with 1 where a file failed; its name is printed.
#SBATCH --job-name=orvane
#SBATCH --cpus-per-task=1
set -u
[ $# -ge 2 ] || { echo "usage: sbatch --array=0-N $0 LIST VERB [OPTIONS]" >&2; exit 2; }
list=$1
verb=$2
shift 2
first=${SLURM_ARRAY_TASK_MIN:-0}
task=$((${SLURM_ARRAY_TASK_ID:-0} - first))
count=${SLURM_ARRAY_TASK_COUNT:-1}
failed=0
number=0
while IFS= read -r file; do
  if [ $((number % count)) -eq "$task" ]; then
    "${ORVANE_CLI:-orvane-cli}" waveform "$verb" --jobs 1 "$@" "$file" </dev/null || failed=1
  fi
  number=$((number + 1))
done <"$list"
exit "$failed"

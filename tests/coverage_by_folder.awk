# SPDX-License-Identifier: GPL-3.0-or-later
# Sums up what "llvm-cov report" tells of each file: one line for each folder of src/.
function percent(all, missed) { return all > 0 ? sprintf("%.1f %%", 100 * (all - missed) / all) : "-" }
function line(name, all_lines, missed_lines, all_branches, missed_branches) {
  return sprintf("%-14s %7d %9s %9d %9s", name, all_lines, percent(all_lines, missed_lines),
    all_branches, percent(all_branches, missed_branches))
}
BEGIN {
  printf "%-14s %7s %9s %9s %9s\n", "folder", "lines", "reached", "branches", "reached"
  fflush()
}
$1 ~ /\.(cpp|h)$/ {
  folder = $1
  sub(/^.*src\//, "", folder)
  sub(/\/.*$/, "", folder)
  lines[folder] += $8; missed[folder] += $9; branches[folder] += $11; passed[folder] += $12
}
END {
  for (f in lines) {
    print line(f, lines[f], missed[f], branches[f], passed[f]) | "sort"
    all += lines[f]; not_reached += missed[f]; all_branches += branches[f]; not_passed += passed[f]
  }
  close("sort")
  print line("all", all, not_reached, all_branches, not_passed)
}

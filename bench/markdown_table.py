#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Puts what the benches printed into a document as one table: markdown_table.py PRINTED DOCUMENT.

The table replaces what stands between the lines <!-- figures --> and <!-- end of figures -->."""
import datetime
import os
import pathlib
import re
import subprocess
import sys

AIM = re.compile(r"\(aim: (?:at most|under) ([\d.]+)(?: ms)?,?([^)]*)\)")
# Time and processor time, or one figure, perhaps with a unit.
FIGURES = re.compile(r"^(.*?)[\s:,]+(?:ratio )?([\d.]+)(?:\s+([\d.]+))?\s*(MB|ms|s)?\s*$")
BEGIN, END = "<!-- figures -->\n", "<!-- end of figures -->\n"


def rows_of(printed: str) -> list[str]:
    rows = []
    for line in printed.splitlines():
        start = 0
        for aim in AIM.finditer(line):
            found = FIGURES.match(line[start:aim.start()].strip(" ,"))
            start = aim.end()
            if found is None:
                continue
            what, value, processor, unit = found.groups()
            is_met = min(float(value), float(processor or value)) <= float(aim[1])
            row = [what.strip().replace("|", "/") + aim[2], f"{value} {unit or ''}".strip(),
                   processor or "", aim[1], "" if is_met else "missed"]
            rows.append("| " + " | ".join(row) + " |")
    return rows


def machine() -> str:
    names = re.findall(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    return f"{os.cpu_count()} x {names[0] if names else os.uname().machine}"


def main() -> int:
    printed, document = (pathlib.Path(name) for name in sys.argv[1:])
    rows = rows_of(printed.read_text())
    text = document.read_text()
    before, mark, rest = text.partition(BEGIN)
    _, end, after = rest.partition(END)
    if not rows or not mark or not end:
        print(f"{document}: no figures, or no lines to put them between", file=sys.stderr)
        return 1
    commit = subprocess.run(["git", "rev-parse", "--short", "HEAD"], capture_output=True, text=True,
                            check=True).stdout.strip()
    load = os.getloadavg()[0]
    head = (f"{datetime.date.today()}, {machine()}, commit {commit}, load {load:.1f} at the end. Processor time\n"
            "where it was measured too; an aim counts as met by either.\n\n"
            "| what | time or size | processor | aim | |\n|---|---|---|---|---|\n")
    document.write_text(before + BEGIN + head + "\n".join(rows) + "\n" + END + after)
    return 0


sys.exit(main())

# SPDX-License-Identifier: GPL-3.0-or-later
"""What a survey's files cost on one worker and on two, as tables in Markdown.

    scale_bench.py PROGRAMS [FILES [FOLDER]]      300 files below a new folder of FOLDER, else of /tmp

PROGRAMS is a folder with orvane-cli; the module `orvane` must be found. Time on the clock depends on
what else the machine does, so the processors' time (user and system) stands beside it: of the workers
and the tool that they run, and of the client and its scheduler. Calls of the system are counted by
strace, where there is one.
"""

from __future__ import annotations

import collections
import os
import re
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import numpy as np

import orvane
from orvane import survey

SCANS, CHANNELS, RECORDS, RATE = 4096, 6, 16, 4096
VERBS = ("restack",)
MANY = 100_000
SHARED = (1, 2, 8, 32, 128)  # workers of the projection
MOVING = ("read", "pread64", "write", "pwrite64", "lseek", "close")


def make_survey(folder: Path, files: int) -> None:
    """Recordings of 1.2 MB each with their tables."""
    header = bytearray(252)
    header[0:8] = bytes([0, 0, 10, 21, 11, 26, 6, 20])
    struct.pack_into("<HHB", header, 8, 2417, SCANS, CHANNELS)
    header[17] = 3
    struct.pack_into("<Hb", header, 18, RATE, 0)
    struct.pack_into("<d", header, 36, 8.0)
    random = np.random.default_rng(1)
    for number in range(files):
        path = folder / f"{number:06}.TSS"
        with path.open("wb") as out:
            for _ in range(RECORDS):
                out.write(header)
                out.write(random.bytes(3 * SCANS * CHANNELS))
        orvane.Table().save(path.with_suffix(".TBL"))


def processor(*whose: int) -> float:
    used = [resource.getrusage(who) for who in whose or (resource.RUSAGE_SELF,)]
    return sum(one.ru_utime + one.ru_stime for one in used)


def processor_of_worker() -> float:
    """The tool that it has run included."""
    return processor(resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)


def clear(folder: Path) -> None:
    for path in folder.glob("*.TSK"):
        path.unlink()


def measure(files: list[str], tool: str, workers: int) -> dict[str, float]:
    """Seconds: on the clock until the cluster stands, and of all tasks; of processors."""
    from distributed import Client, LocalCluster

    start = time.perf_counter()
    with LocalCluster(n_workers=workers, threads_per_worker=1, dashboard_address=None) as place:
        with Client(place) as client:
            list(survey.run(files[:10], VERBS, client, tool=tool))  # workers import what they need
            before = sum(client.run(processor_of_worker).values())
            began, own = time.perf_counter(), processor()
            outcomes = [one for some in survey.run(files, VERBS, client, tool=tool) for one in some]
            tasks, own = time.perf_counter() - began, processor() - own
            used = sum(client.run(processor_of_worker).values()) - before
    failed = [one for one in outcomes if not one.is_done]
    if failed or len(outcomes) != len(files):
        sys.exit(f"{len(failed)} of {len(outcomes)} failed: {failed[:1]}")
    return {"start": began - start, "clock": tasks, "workers": used, "client": own,
            "tool": sum(one.seconds for one in outcomes)}


def count_calls(file: str, tool: str, folder: Path) -> tuple[collections.Counter, dict[str, int]]:
    """Calls of one task that name a file of the folder, by name; bytes read and written there."""
    log = folder / "calls"
    subprocess.run(
        ["strace", "-f", "-y", "-s", "0", "-o", log, tool, "waveform", VERBS[0], "--jobs", "1", file],
        check=True, capture_output=True, env=os.environ | {"TMPDIR": str(folder)})
    calls: collections.Counter = collections.Counter()
    moved = {"read": 0, "written": 0, "created": 0}
    for line in log.read_text(errors="replace").splitlines():
        call = line.split(maxsplit=1)[1]
        name = call.partition("(")[0]
        if str(folder) not in call.partition(" = ")[0] or not name.isidentifier():
            continue
        calls[name] += 1
        result = re.search(r" = (\d+)", call)
        size = int(result[1]) if result else 0
        if name in ("read", "pread64"):
            moved["read"] += size
        elif name in ("write", "pwrite64"):
            moved["written"] += size
        elif name == "openat" and ("O_CREAT" in call or "O_TMPFILE" in call) and result:
            moved["created"] += 1
    log.unlink()
    return calls, moved


def duration(seconds: float) -> str:
    return f"{seconds / 3600:.1f} h" if seconds >= 3600 else f"{seconds / 60:.0f} min"


def tell_costs(runs: dict[int, dict[str, float]], empty: dict[str, float],
               scan: tuple[float, float], count: int) -> None:
    """`empty`: of two workers whose tool does nothing."""
    print("| ms for each file | 1 worker | 2 workers | 2 workers, a tool that does nothing |\n|---|---|---|---|")
    rows = {
        "all, on the clock": "clock",
        "a task in the tool, on the clock": "tool",
        "processors: workers and the tool": "workers",
        "processors: client and scheduler": "client",
    }
    for what, key in rows.items():
        print(f"| {what} | " + " | ".join(f"{1000 * runs[w][key] / count:.1f}" for w in runs)
              + f" | {1000 * empty[key] / count:.1f} |")
    print(f"\nTwo workers are {runs[1]['clock'] / runs[2]['clock']:.2f} times as fast as one on the clock. "
          f"A cluster of processes stands after {runs[1]['start']:.1f} and {runs[2]['start']:.1f} s. "
          f"Looking through the survey for the report: {1000 * scan[0] / count:.2f} ms for each file "
          f"on the clock, {1000 * scan[1] / count:.2f} of processors.\n")


def tell_projection(each: float, serial: float, calls: collections.Counter,
                    moved: dict[str, int]) -> None:
    """Of so many workers with a processor each. A file takes `each` seconds of a worker's processor
    and `serial` of that of client and scheduler, which are one process."""
    others = sum(n for call, n in calls.items() if call not in MOVING)
    print(f"| workers | {MANY} files | read | written | files made | other calls |")
    print("|---|---|---|---|---|---|")
    for workers in SHARED:
        pace = min(workers / each, 1 / serial)  # files a second
        print(f"| {workers} | {duration(MANY / pace)} | {pace * moved['read'] / 1e6:.0f} MB/s "
              f"| {pace * moved['written'] / 1e6:.1f} MB/s | {pace * moved['created']:.0f} /s "
              f"| {pace * others:.0f} /s |")
    print(f"\nOne client has work for {each / serial:.0f} such workers.")
    print(f"\nOne file: {moved['read']} bytes read, {moved['written']} written, {moved['created']} "
          f"made, {others} other calls. All: " + ", ".join(f"{n} {c}" for c, n in calls.most_common()) + ".")


def main() -> None:
    tool = str(Path(sys.argv[1]).resolve() / "orvane-cli")
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 300
    parent = sys.argv[3] if len(sys.argv) > 3 else None
    with tempfile.TemporaryDirectory(prefix="scale-", dir=parent) as name:
        folder = Path(name)
        make_survey(folder, count)
        files = survey.files_of(folder, VERBS)
        size = sum(path.stat().st_size for path in folder.iterdir()) / count / 1e6
        print(f"{count} files of {size:.2f} MB with their tables, verb {VERBS[0]}, "
              f"load {os.getloadavg()[0]:.1f} of {os.cpu_count()} processors\n")
        runs = {}
        for workers in (1, 2):
            clear(folder)
            runs[workers] = measure(files, tool, workers)
        empty = measure(files, shutil.which("true"), 2)
        os.environ["XDG_CACHE_HOME"] = str(folder / "cache")
        start, before = time.perf_counter(), processor()
        orvane.scan(folder)
        scan = time.perf_counter() - start, processor() - before
        shutil.rmtree(folder / "cache", ignore_errors=True)
        tell_costs(runs, empty, scan, count)
        if shutil.which("strace"):
            tell_projection(runs[1]["workers"] / count, empty["client"] / count,
                            *count_calls(files[0], tool, folder))
        else:
            print("strace is missing: calls are not counted")
        print(f"\nLoad at the end: {os.getloadavg()[0]:.1f}.")


if __name__ == "__main__":
    main()

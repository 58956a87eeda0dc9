# SPDX-License-Identifier: GPL-3.0-or-later
"""How fast recordings leave for other programs and for Python, as ratios within one run.

    export_bench.py PROGRAMS [MEGABYTES [FOLDER]]      512 in memory, where /dev/shm is

PROGRAMS is a folder with orvane-cli and orvane-timeseries-bench; the module `orvane` must be found.
Every way takes its turn in several rounds, and the least counts; the processors' time stands beside
it, this program's and that of those it started.
"""

from __future__ import annotations

import os
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable
from pathlib import Path

import numpy as np

import orvane

SCANS, CHANNELS, ROUNDS, TASKS = 24000, 6, 5, 300
PIECE = 256 * 1024


def make_waveform(path: Path, megabytes: int) -> None:
    """Noise of all sizes, and a table that knows its channels."""
    header = bytearray(252)
    header[0:8] = bytes([0, 0, 10, 21, 11, 26, 6, 20])
    struct.pack_into("<HHB", header, 8, 2417, SCANS, CHANNELS)
    header[17] = 3
    struct.pack_into("<Hb", header, 18, 24, -2)
    random = np.random.default_rng(1)
    size = len(header) + 3 * SCANS * CHANNELS
    with path.open("wb") as out:
        for _ in range(megabytes * 1_000_000 // size):  # alike, they would compress each other
            noise = random.integers(-(2**23), 2**23, SCANS * CHANNELS, dtype=np.int32)
            noise >>= random.integers(0, 20, noise.size, dtype=np.int32)
            out.write(header)
            out.write(noise.view(np.uint8).reshape(-1, 4)[:, :3].tobytes())
    orvane.Table().save(path.with_suffix(".tbl"))


class Way:
    """A way of doing something, and the least time of its rounds in seconds."""

    def __init__(self, name: str, run: Callable[[], None], prepare: Callable[[], None] = int):
        self.name, self.run, self.prepare = name, run, prepare
        self.time = self.processor = float("inf")

    def measure(self) -> None:
        self.prepare()
        before, start = os.times(), time.perf_counter()
        self.run()
        self.time = min(self.time, time.perf_counter() - start)
        self.processor = min(self.processor, sum(os.times()[:4]) - sum(before[:4]))


def measure(*ways: Way) -> None:
    for _ in range(ROUNDS):
        for way in ways:
            way.measure()
    for way in ways:
        print(f"  {way.name:48} {way.time * 1e3:9.1f} ms {way.processor * 1e3:9.1f} ms")


def ratio(what: str, ours: Way, other: Way, aim: float) -> None:
    times = f"{ours.time / other.time:6.2f}  {ours.processor / max(other.processor, 0.01):6.2f}"
    print(f"  {what:48} {times}  (aim: at most {aim:g})")


def write_again(path: Path, to: Path) -> None:
    piece = bytes(PIECE)
    handle = os.open(to, os.O_WRONLY | os.O_CREAT | os.O_TRUNC)
    left = path.stat().st_size
    while left > 0:
        left -= os.write(handle, piece[:left])
    os.fsync(handle)
    os.close(handle)


def measure_netcdf(tool: str, waveform: Path) -> None:
    file, again = waveform.with_suffix(".nc"), waveform.with_name("again")

    def convert(*options: str) -> None:
        subprocess.run(
            [tool, "waveform", "netcdf", str(waveform), *options],
            check=True, stdout=subprocess.DEVNULL,
        )

    def remove() -> None:
        file.unlink(missing_ok=True)
        again.unlink(missing_ok=True)

    convert()
    plain = waveform.with_name("plain.nc")
    file.rename(plain)
    ways = [
        Way("NetCDF", convert, remove),
        Way("write(2) of the same bytes", lambda: write_again(plain, again), remove),
    ]
    measure(*ways)
    ratio("NetCDF / write(2)", ways[0], ways[1], 2)
    if shutil.which("nccopy"):
        nccopy = ["nccopy", "-d1", "-s", str(plain), str(again)]
        ways = [
            Way("NetCDF, deflate 1", lambda: convert("--deflate", "1"), remove),
            Way("nccopy -d1 -s", lambda: subprocess.run(nccopy, check=True), remove),
        ]
        measure(*ways)
        ratio("NetCDF, deflate 1 / nccopy", ways[0], ways[1], 1.3)
    plain.unlink()
    remove()


def measure_arrays(bench: str, waveform: Path) -> None:
    def iterate() -> None:
        for record in orvane.TimeSeries(waveform):
            record.counts

    ways = [
        Way("arrays of every record", iterate),
        Way("the decoder alone", lambda: subprocess.run([bench, "--decode", waveform], check=True)),
    ]
    measure(*ways)
    ratio("arrays / decoder", ways[0], ways[1], 1.15)

    series = orvane.TimeSeries(waveform)
    some = range(min(100, len(series)))
    counts = [series[i].counts for i in some]
    scale = np.array([channel.scale for channel in series[0].channels])

    def volts() -> None:  # of records that were not read before
        for i in some:
            series[i].volts

    def multiply() -> None:
        for array in counts:
            array * scale

    ways = [Way("volts of 100 records", volts), Way("NumPy's multiplication", multiply)]
    measure(*ways)
    ratio("volts / multiplication", ways[0], ways[1], 2)


def measure_tasks() -> None:
    from distributed import Client, LocalCluster

    with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with Client(cluster) as client:
            client.gather(client.map(abs, range(10), pure=False))
            start = time.perf_counter()
            client.gather(client.map(abs, range(TASKS), pure=False))
            each = (time.perf_counter() - start) / TASKS
    print(f"  {'a task, of ' + str(TASKS) + ' at once':48} {each * 1e3:9.2f} ms  (aim: at most 5)")


def main() -> int:
    programs = Path(sys.argv[1])
    megabytes = int(sys.argv[2]) if len(sys.argv) > 2 else 512
    memory = "/dev/shm" if os.path.isdir("/dev/shm") else None
    with tempfile.TemporaryDirectory(dir=sys.argv[3] if len(sys.argv) > 3 else memory) as folder:
        waveform = Path(folder) / "BIG.TSS"
        make_waveform(waveform, megabytes)
        print(f"{megabytes} MB, records of {CHANNELS} x {SCANS}: time, processor time")
        measure_arrays(str(programs / "orvane-timeseries-bench"), waveform)
        waveform.with_suffix(".tbl").unlink()  # nccopy cannot compress its texts
        measure_netcdf(str(programs / "orvane-cli"), waveform)
    measure_tasks()
    return 0


if __name__ == "__main__":
    sys.exit(main())

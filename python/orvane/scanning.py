# SPDX-License-Identifier: GPL-3.0-or-later
"""Everything that a folder holds."""

from __future__ import annotations

import datetime
from dataclasses import dataclass, field

from . import _core
from ._convert import PathLike, path_bytes
from .table import Finding


@dataclass(frozen=True)
class Recording:
    """A row of a survey: a recording with the files that belong to it, or another file.

    Attributes:
        kind: "recording", "stack", "table", "schedule", "box calibration", "sensor calibration".
        file: its first file, relative to the survey's folder.
        start, end: in the box's time; None: not known.
        rate: Hz, the highest.
        saturated: largest share of a channel; None where samples were not looked at.
        files: (name, bytes, SHA-256 where it was asked for).
    """

    kind: str
    file: str
    box: int
    site: str
    line: str
    method: str
    start: datetime.datetime | None
    end: datetime.datetime | None
    channels: int
    rate: float
    frequencies: list[float]
    records: int
    bad: int
    cut: list[str]
    table: str
    clock: str
    calibrations: str
    saturated: float | None
    failure: str
    files: list[tuple[str, int, str]]


@dataclass(frozen=True)
class Survey:
    """What a scan found: recordings, findings, and what could not be read, (path, reason)."""

    recordings: list[Recording] = field(default_factory=list)
    findings: list[Finding] = field(default_factory=list)
    notes: list[tuple[str, str]] = field(default_factory=list)


def _time(seconds: int | None) -> datetime.datetime | None:
    epoch = datetime.datetime(1970, 1, 1)
    return None if seconds is None else epoch + datetime.timedelta(seconds=seconds)


def scan(
    folder: PathLike,
    *,
    depth: str = "headers",
    calibrations: PathLike | None = None,
    checksums: bool = False,
    index: bool = True,
) -> Survey:
    """Looks through a survey's folder; nothing in it is changed.

    Args:
        depth: "names", "headers" or "deep" (samples too).
        calibrations: a folder; without it those of each recording's folder, then the survey's.
        checksums: SHA-256 of each file.
        index: keep what was found in the user's cache folder.
    """
    if depth not in ("names", "headers", "deep"):
        raise ValueError('depth is "names", "headers" or "deep"')
    rows, findings, notes = _core.scan(
        path_bytes(folder), depth, path_bytes(calibrations), checksums, index
    )
    recordings = [
        Recording(**(row | {"start": _time(row["start"]), "end": _time(row["end"])}))
        for row in rows
    ]
    return Survey(recordings, [Finding(**row) for row in findings], notes)

# SPDX-License-Identifier: GPL-3.0-or-later
"""Waveforms, bands and stack results."""

from __future__ import annotations

import datetime
from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from functools import cached_property
from typing import TYPE_CHECKING

import numpy as np

from . import _core
from ._convert import PathLike, from_time, path_bytes
from ._errors import Error
from .table import Table

if TYPE_CHECKING:
    import xarray


@dataclass(frozen=True)
class Channel:
    """A channel of a record.

    Attributes:
        name: its definition in the recording's table, else "Ch 1" and so on.
        unit: "V" or "T", "count" where the table does not tell a scale.
        scale: the unit for a count.
        variable: the name of its variable in NetCDF files and in xarray: letters, digits and _, no
            two alike.
    """

    name: str
    unit: str
    scale: float
    variable: str


class Record:
    """One record of a time series. Arrays are made when they are asked for, and are the caller's.

    Attributes:
        number: in the file, from 1.
        time: of the first scan as the box wrote it, without a zone; None where it is not valid.
        box: serial number.
        rate: scans per second; 0 where it is not known.
        frequency: of the transmitter, Hz; 0 where there is none.
        status: as stored; 6 is bad.
        is_cut: the file ends within the record.
    """

    def __init__(self, series: "TimeSeries", number: int):
        self._series = series
        header = series._file.header(number)
        self.number: int = header["number"]
        self.time: datetime.datetime | datetime.time | None = from_time(header["time"])
        self.box: int = header["box"]
        self.rate: float = header["rate"]
        self.frequency: float = header["frequency"]
        self.status: int = header["status"]
        self.is_cut: bool = header["is_cut"]
        self.shape: tuple[int, int] = (header["scans"], header["channels"])

    @property
    def is_bad(self) -> bool:
        """Marked bad by its box."""
        return self.status == 6

    @cached_property
    def counts(self) -> np.ndarray:
        """Samples as recorded, int32, scans x channels."""
        return self._series._file.counts(self.number)

    @cached_property
    def channels(self) -> list[Channel]:
        """What the columns are."""
        return [Channel(*row) for row in self._series._file.channels(self.number)]

    @property
    def volts(self) -> np.ndarray:
        """Samples in the units of `channels`, float64, scans x channels: counts times scale."""
        return self.counts * np.array([channel.scale for channel in self.channels])

    @property
    def seconds(self) -> np.ndarray:
        """Seconds of the scans after the first, float64; without a rate their numbers."""
        scans = np.arange(self.shape[0], dtype=np.float64)
        return scans / self.rate if self.rate > 0 else scans

    def statistics(self) -> dict[str, np.ndarray]:
        """Of each channel, in counts: min, max, mean, rms (about zero) and saturated samples."""
        counts = self.counts
        if counts.shape[0] == 0:
            raise Error("has no scan", self._series.path, f"record {self.number}")
        values = counts.astype(np.float64)
        return {
            "min": counts.min(axis=0),
            "max": counts.max(axis=0),
            "mean": values.mean(axis=0),
            "rms": np.sqrt(np.square(values).mean(axis=0)),
            "saturated": np.count_nonzero(np.abs(values) >= 8388607, axis=0),
        }

    def __repr__(self) -> str:
        return f"<orvane.Record {self.number}, {self.shape[0]} scans x {self.shape[1]} channels>"


class TimeSeries(Sequence):
    """A waveform or band file (*.TSS, *.TSK, *.TS1 ...): its records, read when they are asked for.

    Opening costs a walk over the headers. Several threads may read one object; the interpreter is
    free meanwhile.

    Args:
        path: the file. Its table is looked for beside it.
        header_size: 252, 196 or 32 where that is known better than the table says it.
        needs_table: False opens a waveform without its table too: counts without names.

    Raises:
        Error: the file, or a table that it needs, cannot be read.
    """

    def __init__(
        self, path: PathLike, *, header_size: int | None = None, needs_table: bool = True
    ):
        if header_size not in (None, 252, 196, 32):
            raise ValueError("headers have 252, 196 or 32 bytes")
        #: As it was given.
        self.path: str = path if isinstance(path, str) else path_bytes(path).decode(errors="replace")
        self._file = _core.TimeSeries(path_bytes(path), header_size or 0, needs_table)

    def __len__(self) -> int:
        return self._file.count()

    def __getitem__(self, index):
        if isinstance(index, slice):
            return [Record(self, i + 1) for i in range(*index.indices(len(self)))]
        position = index + len(self) if index < 0 else index
        if not 0 <= position < len(self):
            raise IndexError(f"there is no record {index} of {len(self)}")
        return Record(self, position + 1)

    def __iter__(self) -> Iterator[Record]:
        return (Record(self, number + 1) for number in range(len(self)))

    @property
    def bad_count(self) -> int:
        """Records that their box marked bad."""
        return self._file.bad_count()

    @property
    def note(self) -> str:
        """What is not known of the file, and why; mostly empty."""
        return self._file.note()

    @cached_property
    def table(self) -> Table | None:
        """The table beside the file, a copy; None without one."""
        table = self._file.table()
        return None if table is None else Table._of(table)

    @property
    def channels(self) -> list[Channel]:
        """Those of the first record."""
        return self[0].channels if len(self) > 0 else []

    def statistics(self, *, threads: int = 1) -> dict[str, np.ndarray]:
        """Of all records, each array records x channels, in counts.

        min, max, mean, rms (about zero), count and saturated; where a record lacks a channel its
        count is 0.
        """
        if threads < 1:
            raise ValueError("threads must be 1 or more")
        return self._file.statistics(threads)

    def to_xarray(self, *, in_volts: bool = True) -> "xarray.Dataset":
        """Records that have rate, scans and channels of the first, as an xarray.Dataset.

        A variable per channel, record x scan; coordinates time (of the record), scan_time (s),
        frequency (Hz), rate (Hz) and status. Other records are left out and named in the attribute
        "left_out".
        """
        import xarray

        records = list(self)
        if not records:
            raise Error("has no record", self.path)
        first = records[0]
        same = [one for one in records if (one.shape, one.rate) == (first.shape, first.rate)]
        arrays = [record.volts if in_volts else record.counts for record in same]
        stacked = np.stack(arrays)
        times = [
            np.datetime64(one.time, "s") if isinstance(one.time, datetime.datetime) else np.datetime64("NaT")
            for one in same
        ]
        data = {
            channel.variable: (
                ("record", "scan"),
                stacked[:, :, i],
                {
                    "units": channel.unit if in_volts else "count",
                    "long_name": channel.name,
                },
            )
            for i, channel in enumerate(first.channels)
        }
        return xarray.Dataset(
            data,
            coords={
                "number": ("record", [one.number for one in same]),
                "time": ("record", np.array(times, dtype="datetime64[ns]")),
                "frequency": ("record", [one.frequency for one in same], {"units": "Hz"}),
                "status": ("record", [one.status for one in same]),
                "scan_time": ("scan", first.seconds, {"units": "s"}),
            },
            attrs={
                "sample_rate": first.rate,
                "left_out": [one.number for one in records if one not in same],
            },
        )

    def __repr__(self) -> str:
        return f"<orvane.TimeSeries {self.path}, {len(self)} records>"


@dataclass(frozen=True)
class StackRecord:
    """A record of a stack result file. What first, second, flags and value mean is not known.

    Attributes:
        label: text.
        time: of the record.
        value: the 64-bit float at offset 26.
        extension: bytes behind the head.
        items: its items as bytes, uint8, items x size of an item.
    """

    label: str
    time: datetime.datetime | datetime.time | None
    first: int
    second: int
    flags: int
    value: float
    extension: bytes
    items: np.ndarray

    @property
    def floats(self) -> np.ndarray:
        """The items as 32-bit floats, items x whole floats of an item."""
        whole = self.items.shape[1] // 4 * 4 if self.items.ndim == 2 else 0
        return np.ascontiguousarray(self.items[:, :whole]).view("<f4")


class StackResults(list):
    """The records of a stack result file (*.trs).

    Attributes:
        cut_at: offset of a last record that is cut; 0: none is.
    """

    def __init__(self, path: PathLike):
        records, self.cut_at = _core.read_stack(path_bytes(path))
        super().__init__(_stack_record(row) for row in records)


def _stack_record(row: dict) -> StackRecord:
    size = row.pop("item_size")
    items = np.frombuffer(row.pop("items"), dtype=np.uint8)
    row["items"] = items.reshape(-1, size) if size > 0 else items.reshape(0, 0)
    row["time"] = from_time(row["time"])
    return StackRecord(**row)

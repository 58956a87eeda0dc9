# SPDX-License-Identifier: GPL-3.0-or-later
"""Calibrations of boxes and sensors (*.CLB, *.CLC)."""

from __future__ import annotations

import datetime
from collections.abc import Sequence
from dataclasses import dataclass
from functools import cached_property

import numpy as np

from . import _core
from ._convert import PathLike, from_time, path_bytes
from .table import Table


@dataclass(frozen=True)
class Verdict:
    """How far a channel may be trusted.

    Attributes:
        channel: from 1.
        usability: "well", "with care" or "not usable".
        summary: with the settings concerned.
        reasons: what speaks against it.
        notes: what speaks against nothing.
    """

    channel: int
    usability: str
    summary: str
    reasons: list[str]
    notes: list[str]


@dataclass(frozen=True)
class Response:
    """The response of a box or sensor in a recording.

    Attributes:
        frequency: Hz, as given.
        response: complex128; of a box frequencies x channels, of a sensor frequencies.
        is_valid: of a box, likewise; False where the response is worthless.
        amplitude: relative, and
        phase: degrees: 95 of 100 responses are within these, by the scatter of the records.
        wider_amplitude: the same if drive resistors are 1 % off and gains drift, and
        wider_phase. All nan where no model serves.
        note: what a user should know; mostly empty.
    """

    frequency: np.ndarray
    response: np.ndarray
    is_valid: np.ndarray
    amplitude: np.ndarray
    phase: np.ndarray
    wider_amplitude: np.ndarray
    wider_phase: np.ndarray
    note: str


class Calibration:
    """A calibration file. A box's model is fitted while it is read.

    Attributes:
        kind: "box", "coil" or "current sensor".
        time: of the calibration.
        serial: in the header.
        channels: how many.
        hardware, version, sensor: texts of the header.
        nominal: sensitivity of a sensor.

    Raises:
        Error: the file cannot be read or is not wholly right.
    """

    def __init__(self, path: PathLike):
        self._cal = _core.Calibration(path_bytes(path))
        header = self._cal.header()
        self.kind: str = {1: "box", 2: "coil", 3: "current sensor"}[header["kind"]]
        self.time: datetime.datetime | datetime.time | None = from_time(header["time"])
        self.serial: int = header["serial"]
        self.channels: int = header["channels"]
        self.hardware: str = header["hardware"]
        self.version: str = header["version"]
        self.sensor: str = header["sensor"]
        self.nominal: float = header["nominal"]

    @cached_property
    def records(self) -> dict[str, np.ndarray]:
        """What was measured.

        frequency (Hz) and kind of each record; response, complex128, records x channels; values,
        float64, records x channels x 4; passes: the first record of each, then their number.
        """
        return self._cal.records()

    def fit(self) -> list[dict]:
        """Of each channel of a box: how well its model fits, and "parts" by name; else empty."""
        return self._cal.fit()

    def verdict(self) -> list[Verdict]:
        """How far each channel may be trusted."""
        return [Verdict(**row) for row in self._cal.verdicts()]

    def response(
        self,
        table: PathLike | Table,
        band: int,
        frequencies: Sequence[float] | np.ndarray,
        *,
        channels: int = 0,
    ) -> Response:
        """The response in a recording.

        Args:
            table: the recording's parameter table, or its path.
            band: of a box, 0 the waveform, 1 and so on bands; of a sensor without meaning.
            frequencies: Hz.
            channels: of the recording; 0: as many as the calibration has.
        """
        wanted = np.asarray(frequencies, dtype=np.float64)
        if wanted.ndim != 1:
            raise ValueError("frequencies must be a list of Hz")
        settings = table._table if isinstance(table, Table) else path_bytes(table)
        if self.kind == "box":
            parts = self._cal.box_response(settings, band, channels, wanted.tolist())
            return Response(wanted, parts[0], parts[1] == 0, *parts[2:])
        response = self._cal.sensor_response(settings, channels, wanted.tolist())
        unknown = np.full(wanted.shape, np.nan)
        return Response(
            wanted, response, np.ones(wanted.shape, bool), unknown, unknown, unknown, unknown, ""
        )

    def __repr__(self) -> str:
        return f"<orvane.Calibration {self.kind} {self.serial}, {self.channels} channels>"

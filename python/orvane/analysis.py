# SPDX-License-Identifier: GPL-3.0-or-later
"""Spectra and decays of recordings."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from . import _core
from ._convert import PathLike, path_bytes
from .waveform import TimeSeries


def _file_of(series: TimeSeries | PathLike) -> _core.TimeSeries:
    return (series if isinstance(series, TimeSeries) else TimeSeries(series))._file


@dataclass(frozen=True)
class Spectrum:
    """Spectra through a Hann window.

    Attributes:
        frequency: Hz, bins.
        amplitude: of a sine on a bin, bins x channels, in the channel's unit.
        density: power density, bins x channels, in the unit squared per Hz.
        channels, units: of the columns.
        rate: scans per second.
        length: scans of a segment.
        segments, records: averaged.
        note: what a user should know; mostly empty.
    """

    frequency: np.ndarray
    amplitude: np.ndarray
    density: np.ndarray
    channels: list[str]
    units: list[str]
    rate: float
    length: int
    segments: int
    records: int
    note: str


def spectra(
    series: TimeSeries | PathLike,
    *,
    record: int = 0,
    segment: int = 0,
    leave_out: str = "",
    calibrations: PathLike | None = None,
    threads: int = 1,
) -> Spectrum:
    """The spectrum of a file, averaged over its records, or of one record.

    Args:
        series: a recording, or its path.
        record: from 1, this one alone; 0: all.
        segment: scans of a segment at most; 0: what fits the records.
        leave_out: "bad", "beside", numbers such as "3,7-9", or the path of a list.
        calibrations: a folder; the result is corrected by what it has.
        threads: how many; the result is the same.
    """
    return Spectrum(
        **_core.spectra(
            _file_of(series), record, segment, leave_out, path_bytes(calibrations), threads
        )
    )


@dataclass(frozen=True)
class Decay:
    """Decays of a TDIP or TDEM recording.

    Rows of the last axis are the voltage with current, the windows, and last the chargeability in
    mV/V.

    Attributes:
        channels: names with units.
        windows: start and end in seconds after the current, windows x 2.
        records: numbers, from 1.
        reasons: why a record has no decay; mostly empty texts.
        value, spread: records x channels x rows.
        is_outlier: likewise.
        stacked, stacked_spread: over the records, channels x rows.
        note: what a user should know; mostly empty.
    """

    channels: list[str]
    windows: np.ndarray
    records: np.ndarray
    reasons: list[str]
    value: np.ndarray
    spread: np.ndarray
    is_outlier: np.ndarray
    stacked: np.ndarray
    stacked_spread: np.ndarray
    note: str


@dataclass(frozen=True)
class FrequencyPoints:
    """Amplitudes and phases of a SIP, CSAMT or FDEM recording.

    Attributes:
        channels: names with units.
        records, frequency: of each line, Hz.
        amplitude, phase: lines x channels; degrees, nan without a reference.
        stacked_frequency, stacked_amplitude, stacked_amplitude_spread, stacked_phase,
        stacked_phase_spread: over the repeats of a frequency.
        note: what a user should know; mostly empty.
    """

    channels: list[str]
    records: np.ndarray
    frequency: np.ndarray
    amplitude: np.ndarray
    phase: np.ndarray
    stacked_frequency: np.ndarray
    stacked_amplitude: np.ndarray
    stacked_amplitude_spread: np.ndarray
    stacked_phase: np.ndarray
    stacked_phase_spread: np.ndarray
    note: str


def decay(
    series: TimeSeries | PathLike,
    *,
    windows: Sequence[tuple[float, float]] | None = None,
    reference: int = 0,
    harmonics: int = 1,
    leave_out: str = "",
    threads: int = 1,
) -> Decay | FrequencyPoints:
    """Decays of TDIP and TDEM; amplitudes and phases of SIP, CSAMT and FDEM.

    Args:
        windows: start and end in seconds after the current; by the stepping rule without.
        reference: channel from 1 that phases refer to; 0: none.
        harmonics: odd ones of each record.
        leave_out: as of `spectra()`.
        threads: how many; the result is the same.
    """
    file = _file_of(series)
    if _core.result_kind(file) == "frequencies":
        return FrequencyPoints(
            **_core.points(file, reference, harmonics, leave_out, threads)
        )
    text = ",".join(f"{start * 1000!r}-{end * 1000!r}" for start, end in windows or ())
    return Decay(**_core.decays(file, text, leave_out, threads))

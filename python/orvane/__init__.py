# SPDX-License-Identifier: GPL-3.0-or-later
"""Field files of geophysical receivers in Python: tables, waveforms, calibrations, surveys.

>>> import orvane
>>> orvane.Table().explain("TECH").name
'Survey method'
"""

from ._errors import Error
from .analysis import Decay, FrequencyPoints, Spectrum, decay, spectra
from .calibration import Calibration, Response, Verdict
from .scanning import Recording, Survey, scan
from .table import Finding, Meaning, Schedule, Step, Table
from .waveform import Channel, Record, StackRecord, StackResults, TimeSeries

__all__ = [
    "Calibration", "Channel", "Decay", "Error", "Finding", "FrequencyPoints", "Meaning", "Record",
    "Recording", "Response", "Schedule", "Spectrum", "StackRecord", "StackResults", "Step",
    "Survey", "Table", "TimeSeries", "Verdict", "decay", "scan", "spectra",
]

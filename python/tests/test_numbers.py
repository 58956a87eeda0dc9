# SPDX-License-Identifier: GPL-3.0-or-later
"""Every number is that of the command-line tool, for files drawn at random."""

import random

import numpy as np
import pytest
from field_files import record

import orvane


def rows_of(text):
    return [line.split("\t") for line in text.splitlines()]


@pytest.fixture(params=range(12))
def drawn(request, tmp_path):
    """(path, samples of each record) of a file with a table beside it."""
    draw = random.Random(request.param)
    channels = draw.randint(1, 8)
    table = orvane.Table()
    table["TECH"] = draw.choice([1, 2, 3, 4])
    table["FSCV"] = draw.uniform(1000, 5000)
    for channel in range(1, 9):
        table[f"CHDEF{channel}"] = draw.choice(["Ex1", "Ey2", "Hz", "T1", "odd"])
    table.save(tmp_path / "A.TBL")
    records = []
    data = b""
    for number in range(1, draw.randint(2, 9)):
        made, samples = record(
            draw, draw.randint(1, 400), channels, number=number, status=draw.choice([0, 0, 6])
        )
        data += made
        records.append(np.array(samples, dtype=np.int32).reshape(-1, channels))
    (tmp_path / "A.TSS").write_bytes(data)
    return tmp_path / "A.TSS", records


def test_samples_are_those_written(drawn):
    path, records = drawn
    series = orvane.TimeSeries(path)
    assert len(series) == len(records)
    for read, written in zip(series, records):
        assert read.counts.dtype == np.int32
        np.testing.assert_array_equal(read.counts, written)
        scales = [channel.scale for channel in read.channels]
        np.testing.assert_array_equal(read.volts, written * np.array(scales))


def test_statistics_are_the_tools(drawn, tool):
    path, _ = drawn
    header, *rows = rows_of(tool("waveform", "stats", path))
    columns = {title: place for place, title in enumerate(header)}
    series = orvane.TimeSeries(path)
    whole = series.statistics(threads=2)
    at = 0
    for i, one in enumerate(series):
        own = one.statistics()
        for c in range(one.shape[1]):
            row = rows[at]
            at += 1
            for name in ("min", "max", "mean", "rms", "saturated"):
                title = next(title for title in columns if title.lower().startswith(name))
                assert whole[name][i, c] == pytest.approx(float(row[columns[title]]), rel=1e-6)
                assert own[name][c] == pytest.approx(whole[name][i, c], rel=1e-12, abs=1e-9)
    assert at == len(rows)


def test_spectra_are_the_tools(drawn, tool):
    path, _ = drawn
    series = orvane.TimeSeries(path)
    if series[0].shape[0] < 4:
        pytest.skip("too short for a spectrum")
    found = orvane.spectra(series, record=1)
    text = tool("waveform", "spectrum", "--amplitude", path, "--record", 1)
    rows = [row for row in rows_of(text) if row and row[0][:1].isdigit()]
    assert len(rows) == len(found.frequency)
    for row, frequency, values in zip(rows, found.frequency, found.amplitude):
        numbers = [float(cell) for cell in row]
        assert numbers[0] == pytest.approx(frequency, rel=1e-5, abs=1e-12)
        np.testing.assert_allclose(numbers[1:], values, rtol=1e-4, atol=1e-12)


def test_decays_are_the_tools(survey, tool):
    series = orvane.TimeSeries(survey / "TDIP" / "2417.TSS")
    found = orvane.decay(series)
    by_path = orvane.decay(survey / "TDIP" / "2417.TSS")
    np.testing.assert_array_equal(by_path.value, found.value)
    rows = rows_of(tool("waveform", "decay", survey / "TDIP" / "2417.TSS"))[1:]
    stacked = [float(row[5]) for row in rows if row[0] == "all"]
    known = found.stacked[~np.isnan(found.stacked)]
    np.testing.assert_allclose(known, stacked, rtol=1e-6)
    single = [float(row[5]) for row in rows if row[0] != "all"]
    np.testing.assert_allclose(found.value[~np.isnan(found.value)], single, rtol=1e-6)


def test_responses_are_the_tools(survey, tool):
    path, table = survey / "Calibration" / "2417.CLB", survey / "SIP" / "2417.TBL"
    frequencies = [0.125, 7.5, 1000, 9000]
    found = orvane.Calibration(path).response(table, 0, frequencies)
    text = tool(
        "calibration", "response", path, "--table", table, "--band", 0, "--uncertainty",
        "--frequency", *frequencies,
    )
    rows = np.array([[float(cell) for cell in row] for row in rows_of(text)])
    count = found.response.shape[1]
    assert len(rows) == 4 * count
    np.testing.assert_array_equal(rows[:, 2] + 1j * rows[:, 3], found.response.ravel())
    np.testing.assert_array_equal(rows[:, 5], found.amplitude.ravel())
    np.testing.assert_array_equal(rows[:, 8], found.wider_phase.ravel())
    in_memory = orvane.Calibration(path).response(orvane.Table(table), 0, frequencies)
    np.testing.assert_array_equal(in_memory.response, found.response)
    changed = orvane.Table(table)
    changed["LPFR"] = 0 if changed["LPFR"] != 0 else 1
    other = orvane.Calibration(path).response(changed, 0, frequencies)
    assert not np.array_equal(other.response, found.response)


def test_volts_are_the_displays(survey):
    # The display: held values, counts times 256, times FSCV over full scale and gain.
    series = orvane.TimeSeries(survey / "TDIP" / "2417.TSS")
    table = series.table
    gain = 4.0 ** table["EGNC"]
    held = series[0].counts[:, 0].astype(float) * 256
    shown = held * table["FSCV"] / 2147483392 / gain
    np.testing.assert_allclose(series[0].volts[:, 0], shown, rtol=1e-12)


def test_survey_is_the_tools(survey, tool):
    found = orvane.scan(survey, index=False)
    rows = rows_of(tool("survey", "scan", survey, "--no-index"))
    header = rows[0]
    recordings = [row for row in rows if row[0] == "row"]
    assert [one.file for one in found.recordings] == [
        row[header.index("file")] for row in recordings
    ]
    assert len(found.findings) == sum(row[0] == "finding" for row in rows)

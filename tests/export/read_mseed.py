#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads MiniSEED by the standard's own tables and compares it with the tool's own texts.

usage: read_mseed.py ORVANE_CLI ORVANE_EXAMPLE_SURVEY
"""
import datetime
import math
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

TOOL, SURVEY = sys.argv[1:3]
NAMESPACE = "{http://www.fdsn.org/xml/station/1}"
# Of Steim2, by code and sub-code: how many differences a word holds, and of how many bits.
DIFFERENCES = {(2, 1): (1, 30), (2, 2): (2, 15), (2, 3): (3, 10), (3, 0): (5, 6), (3, 1): (6, 5), (3, 2): (7, 4)}


def run(*arguments, code=0):
    done = subprocess.run([TOOL, *map(str, arguments)], capture_output=True, text=True)
    assert done.returncode == code, (arguments, done)
    return done


def signed(value, bits):
    return value - (1 << bits) if value >> (bits - 1) else value


def steim2(data, count):
    """The samples of a record's frames; the last must be the one that the first frame names."""
    differences, first, last = [], None, None
    for frame in range(0, len(data), 64):
        words = struct.unpack_from(">16I", data, frame)
        for at in range(1, 16):
            code = words[0] >> (30 - 2 * at) & 3
            if frame == 0 and at in (1, 2):
                assert code == 0
                first, last = (signed(words[at], 32), last) if at == 1 else (first, signed(words[at], 32))
            elif code == 1:
                differences += [signed(words[at] >> shift & 255, 8) for shift in (24, 16, 8, 0)]
            elif code > 1:
                number, bits = DIFFERENCES[code, words[at] >> 30]
                differences += [signed(words[at] >> bits * i & (1 << bits) - 1, bits) for i in reversed(range(number))]
    samples = [first]
    for difference in differences[1:count]:
        samples.append(samples[-1] + difference)
    assert samples[-1] == last and len(samples) == count
    return samples


def read(path, length=512):
    """(network, station, location, channel), start in microseconds, rate, samples of each record."""
    data = path.read_bytes()
    assert len(data) % length == 0
    for number, at in enumerate(range(0, len(data), length), 1):
        record = data[at : at + length]
        assert record[:8] == b"%06dD " % number
        station, location, channel, network = (
            record[a:b].decode().rstrip() for a, b in ((8, 13), (13, 15), (15, 18), (18, 20)))
        year, day, hour, minute, second, tenths, count, factor, times = struct.unpack_from(">HHBBBxHHhh", record, 20)
        start, blockette = struct.unpack_from(">HH", record, 44)
        rate = (factor if factor > 0 else -1 / factor) * (times if times > 0 else -1 / times)
        types = {}
        while blockette:
            kind, following = struct.unpack_from(">HH", record, blockette)
            types[kind] = record[blockette + 4 : blockette + 8]
            if kind == 100:
                rate = struct.unpack_from(">f", record, blockette + 4)[0]
            blockette = following
        assert types[1000][:3] == bytes([11, 1, length.bit_length() - 1])  # Steim2, big-endian
        begin = datetime.datetime(year, 1, 1) + datetime.timedelta(
            days=day - 1, hours=hour, minutes=minute, seconds=second,
            microseconds=100 * tenths + signed(types[1001][1], 8))
        micros = (begin - datetime.datetime(1970, 1, 1)) // datetime.timedelta(microseconds=1)
        yield (network, station, location, channel), micros, rate, steim2(record[start:], count)


def traces(path, length=512):
    """Of each channel its stretches without a gap, to a microsecond: (start, rate, samples)."""
    found = {}
    for name, start, rate, samples in read(path, length):
        stretches = found.setdefault(name, [])
        if stretches and abs(stretches[-1][0] + len(stretches[-1][2]) * 1e6 / rate - start) <= 1:
            stretches[-1][2].extend(samples)
        else:
            stretches.append((start, rate, samples))
    return found


def text_samples(path, out):
    """The samples of each record of the tool's text, scan after scan."""
    run("waveform", "text", path, "--out", out)
    records = []
    for line in next(out.glob("*.txt")).read_text().splitlines():
        if line.startswith(" Time:"):
            records.append([])
        elif ":  " not in line:
            records[-1].append([int(word) for word in line.split()])
    return records


def waveform(folder, records, *, channels=2, rate=(240, -2), scans=24000, width=3):
    """A recording of noise that needs every size of difference; `records`: (second, status) each."""
    draw = random.Random(1)
    path = folder / "made.TSS"
    with path.open("wb") as out:
        for second, status in records:
            head = bytearray(252)
            head[0:8] = bytes([second % 60, 5 + second // 60, 14, 22, 11, 26, 7, 20])  # 2026-11-22 14:05
            struct.pack_into("<HHB", head, 8, 417, scans, channels)
            head[14], head[17] = status, width
            struct.pack_into("<Hb", head, 18, *rate)
            values = (draw.randrange(-(2**23), 2**23) >> draw.choice((0, 4, 8, 12, 16, 20, 23)) for _ in range(scans * channels))
            out.write(head + b"".join(value.to_bytes(width, "little", signed=True) for value in values))
    return path


def check_samples(folder):
    """Every sample at its time: 0, 1, 2 s go on, a bad record is a gap, and so is a late one."""
    path = waveform(folder, [(0, 0), (1, 0), (2, 0), (3, 6), (4, 0), (9, 0)])
    told = run("waveform", "mseed", path, "--out", folder / "a")
    assert "1 bad record is a gap" in told.stderr and "3 stretches" in told.stderr, told
    run("waveform", "mseed", path, "--out", folder / "b")
    made = folder / "a" / "made.mseed"
    assert made.read_bytes() == (folder / "b" / "made.mseed").read_bytes()
    text = text_samples(path, folder / "text")
    first = 1795356300 * 10**6
    wanted = [(first, text[0] + text[1] + text[2]), (first + 4 * 10**6, text[4]), (first + 9 * 10**6, text[5])]
    found = traces(made)
    assert list(found) == [("XX", "00417", "01", "JY1"), ("XX", "00417", "02", "JY1")], list(found)
    for column, stretches in enumerate(found.values()):
        assert [(start, samples) for start, _, samples in stretches] == [
            (start, [scan[column] for scan in scans]) for start, scans in wanted]
        assert all(rate == 24000 for _, rate, _ in stretches)
    starts = [start for name, start, _, _ in read(made) if name[2] == "01"]
    assert any(start % 100 for start in starts)  # finer than a ten-thousandth of a second
    run("waveform", "mseed", path, "--keep-bad", "--record-length", 4096, "--network", "A1", "--out", folder / "c")
    kept = traces(folder / "c" / "made.mseed", 4096)
    assert [len(samples) for _, _, samples in kept["A1", "00417", "01", "JY1"]] == [5 * 24000, 24000]
    left = run("waveform", "mseed", path, "--leave-out", "2-6", "--out", folder / "d")
    assert "5 records left out" in left.stderr
    assert [len(samples) for _, _, samples in traces(folder / "d" / "made.mseed")["XX", "00417", "01", "JY1"]] == [24000]


def check_bands(folder):
    """The band's letter of a channel without a table, at the rates where it changes."""
    hertz = {0: 1, 1: 1 / 60, 2: 1 / 3600, -2: 100}
    for rate, letter in (((50, -2), "J"), ((4999, 0), "G"), ((10, -2), "G"), ((999, 0), "D"), ((250, 0), "D"),
                         ((249, 0), "E"), ((80, 0), "E"), ((79, 0), "S"), ((10, 0), "S"), ((9, 0), "M"), ((2, 0), "M"),
                         ((1, 0), "L"), ((6, 1), "V"), ((36, 2), "U")):
        out = folder / f"{rate[0]}_{rate[1]}"
        run("waveform", "mseed", waveform(folder, [(0, 0)], channels=1, rate=rate, scans=8), "--out", out)
        (name, stretches), = traces(out / "made.mseed").items()
        assert name[3] == letter + "Y1", (rate, name)
        assert abs(stretches[0][1] / (rate[0] * hertz[rate[1]]) - 1) < 1e-6, (rate, stretches)


def check_refusals(folder):
    for arguments, reason in (({"rate": (0, 0)}, "record 1: it has no sample rate"), ({"channels": 100, "scans": 2}, "99 channels")):
        done = run("waveform", "mseed", waveform(folder, [(0, 0)], **arguments), "--out", folder / "no", code=1)
        assert reason in done.stderr, done
        assert not (folder / "no" / "made.mseed").exists()
    path = waveform(folder, [(0, 6)], scans=8)
    assert "no record" in run("waveform", "mseed", path, "--out", folder / "no", code=1).stderr
    for network in ("", "ABC", "A-"):
        assert run("waveform", "mseed", path, "--keep-bad", "--network", network, "--out", folder / "no", code=1).stderr
    assert "no StationXML" in run("waveform", "mseed", path, "--keep-bad", "--stationxml", "--out", folder / "x").stderr
    assert [file.name for file in (folder / "x").iterdir()] == ["made.mseed"]


def check_station(folder):
    """Names by the table, and a response that turns counts into the display's units."""
    survey = folder / "survey"
    subprocess.run([SURVEY, str(survey)], check=True, capture_output=True)
    path, calibrations = survey / "MT" / "2417.TSS", survey / "Calibration"
    run("waveform", "mseed", path, "--stationxml", "--calibrations", calibrations, "--elevation", 12, "--out", folder)
    beside = folder / "beside"
    shutil.copytree(calibrations, beside)
    for name in ("2417.TSS", "2417.TBL"):
        shutil.copy(path.parent / name, beside)
    run("waveform", "mseed", beside / "2417.TSS", "--stationxml", "--elevation", 12)  # the calibrations lie there, too
    assert (beside / "2417.xml").read_bytes() == (folder / "2417.xml").read_bytes()
    with (beside / "2417.TSS").open("ab") as out:  # a record of another box
        record = bytearray((beside / "2417.TSS").read_bytes()[: 252 + 600 * 6 * 3])
        record[8:10] = (812).to_bytes(2, "little")
        out.write(record)
    told = run("waveform", "mseed", beside / "2417.TSS", "--stationxml", "--out", folder / "two")
    assert "no StationXML: its records are of more than one box" in told.stderr, told
    assert {name[1] for name in traces(folder / "two" / "2417.mseed")} == {"02417", "00812"}
    names = {name[2]: name[3] for name in traces(folder / "2417.mseed")}
    assert names == {"01": "FQN", "02": "FQE", "03": "FY1", "04": "FFN", "05": "FFE", "06": "FFZ"}, names
    station = xml.parse(folder / "2417.xml").getroot().find(f"{NAMESPACE}Network/{NAMESPACE}Station")
    value = lambda node, name: node.find("/".join(NAMESPACE + part for part in name.split("/"))).text
    assert abs(float(value(station, "Latitude")) - (48 + 7.038 / 60)) < 1e-9 and value(station, "Elevation") == "12"
    channels = station.findall(f"{NAMESPACE}Channel")
    assert {one.get("locationCode"): one.get("code") for one in channels} == names
    for channel in channels:
        response = channel.find(f"{NAMESPACE}Response")
        unit, gain = value(response, "InstrumentSensitivity/InputUnits/Name"), float(value(response, "InstrumentSensitivity/Value"))
        assert unit == {"Q": "V/m", "F": "T", "Y": "V"}[channel.get("code")[1]], unit
        assert value(response, "Stage/StageGain/Value") == value(response, "InstrumentSensitivity/Value")
        points = {float(value(point, "Frequency")): [float(value(point, name)) for name in ("Amplitude", "Phase")]
                  for point in response.iter(f"{NAMESPACE}ResponseListElement")}
        assert points[float(value(response, "InstrumentSensitivity/Frequency"))][0] == 1
        assert list(points) == sorted(points) and all(-180 <= phase <= 180 for _, phase in points.values())
        if unit == "V/m":  # by the box's response, as another verb tells it, and the table's numbers
            frequency = min(points)
            told = run("calibration", "response", calibrations / "2417.CLB", "--table", path.with_suffix(".TBL"),
                       "--band", 0, "--frequency", frequency).stdout.splitlines()
            numbers = next(line.split() for line in told if line.split()[0] == str(int(channel.get("locationCode"))))
            box = math.hypot(float(numbers[2]), float(numbers[3]))
            # at the lowest frequency the filter of the rate, which that verb does not know, does nothing
            # full scale 2.5 V behind a gain of 16, electrodes 100 m apart
            assert abs(box * 16 * 2147483392 / 2.5 / 256 * 100 / (gain * points[frequency][0]) - 1) < 1e-5


with tempfile.TemporaryDirectory() as name:
    for check in (check_samples, check_bands, check_refusals, check_station):
        part = pathlib.Path(name) / check.__name__
        part.mkdir()
        check(part)

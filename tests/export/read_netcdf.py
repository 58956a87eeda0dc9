#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads converted recordings as other programs do and compares them with the tool's own texts.

usage: read_netcdf.py ORVANE_CLI EXAMPLE_SURVEY; exit code 77 where Python's readers are missing.
"""
import pathlib
import subprocess
import sys
import tempfile

try:
    import h5py
    import netCDF4
    import numpy
    import xarray
except ImportError as missing:
    print(missing)
    sys.exit(77)

TOOL, SURVEY = sys.argv[1:3]


def run(*arguments, code=0):
    done = subprocess.run([TOOL, *map(str, arguments)], capture_output=True, text=True)
    assert done.returncode == code, (arguments, done)
    return done


def text_records(path, out):
    """The header lines and samples (scans x channels) of each record in the tool's text."""
    size = run("waveform", "info", path).stdout.splitlines()[0].split("\t")[1]
    header = ["--header", size] if size != "32" else []
    run("waveform", "text", path, *header, "--out", out)
    records = []
    for line in next(out.glob("*.txt")).read_text().splitlines():
        if line.startswith(" Time:"):
            records.append(({}, []))
        if ":  " in line and line.lstrip()[0].isalpha():
            name, value = line.split(":", 1)
            records[-1][0][name.strip()] = value.strip()
        else:
            records[-1][1].append([int(word) for word in line.split()])
    for head, rows in records:
        if rows and len(rows[-1]) < len(rows[0]):
            rows.pop()  # where the file ends
    return [(head, numpy.array(rows)) for head, rows in records]


def channels_of(data):
    return [name for name in data.data_vars if data[name].dims == ("record", "scan")]


def check_like_text(path, folder):
    """Every sample, time and rate, by all readers; the file's bytes are the same twice."""
    folder.mkdir()
    out = run("waveform", "netcdf", path, "--out", folder / "a").stdout.strip()
    run("waveform", "netcdf", path, "--out", folder / "b")
    made = pathlib.Path(out)
    assert made.read_bytes() == (folder / "b" / made.name).read_bytes(), path
    records = text_records(path, folder / "text")
    with netCDF4.Dataset(made) as by_netcdf:
        assert by_netcdf.Conventions == "CF-1.10"
        groups = [None, *by_netcdf.groups]
    seen = sum(check_group(made, group, records) for group in groups)
    assert seen == sum(len(samples) > 0 for _, samples in records), path
    dated = xarray.open_dataset(made)
    name = channels_of(dated)[0]
    with h5py.File(made) as by_hdf5:
        raw = xarray.open_dataset(made, mask_and_scale=False)
        assert (by_hdf5[name][...] == raw[name].values).all()
    for level in (1, 9):
        small = folder / f"d{level}"
        run("waveform", "netcdf", path, "--deflate", level, "--out", small)
        assert xarray.open_dataset(small / made.name).equals(dated)


def check_group(made, group, records):
    """The records of one shape. How many they are."""
    raw = xarray.open_dataset(made, group=group, mask_and_scale=False, decode_times=False)
    dated = xarray.open_dataset(made, group=group)
    names = channels_of(raw)
    for i, number in enumerate(raw["record_number"].values):
        head, samples = records[number - 1]
        stored = numpy.stack([raw[n][i].values for n in names], 1)
        assert (stored[: len(samples)] == samples).all(), (made, number)
        assert (stored[len(samples):] == -2147483648).all(), (made, number)
        moment = head["Time"].replace("/", "-").replace(" ", "T")
        assert dated["time"][i].values == numpy.datetime64(moment), (made, head)
        assert abs(float(raw["sample_rate"][i]) - float(head["Sampling Rate (Hz)"])) < 0.006
    return raw.sizes["record"]


def check_scales(path, folder):
    """Volts and tesla by the formula of the display, docs/formats/time-series.md."""
    decoded = xarray.open_dataset(survey_nc(path, folder / "scaled"))
    raw = xarray.open_dataset(folder / "scaled/2417.nc", mask_and_scale=False)
    table = next(path.parent.glob("2417.[Tt][Bb][Ll]"))
    told = run("table", "get", table, "FSCV", "EGNC", "HGNC", "HNOM").stdout
    full, electric, other, nominal = (float(line.split("=")[1]) for line in told.splitlines())
    volts = 256 * full / 2147483392
    scales = {"E": ("V", volts / 4 ** electric), "H": ("T", volts / 4 ** other / (nominal * 1e6))}
    for name in channels_of(raw):
        unit, scale = scales.get(name[0], ("count", 1))
        assert decoded[name].attrs["units"] == unit, name
        wanted = raw[name].values * scale
        assert numpy.allclose(decoded[name].values, wanted, rtol=1e-12, atol=0), name
    assert {name[0] for name in channels_of(raw)} >= {"E", "H"}


def check_parts(survey, folder):
    """Records of other shapes go to groups, nothing is filled up."""
    mixed = folder / "2417.TSS"
    mixed.write_bytes((survey / "MT/2417.TSS").read_bytes() + (survey / "TDIP/2417.TSS").read_bytes())
    (folder / "2417.TBL").write_bytes(next((survey / "MT").glob("2417.[Tt][Bb][Ll]")).read_bytes())
    done = run("waveform", "netcdf", mixed)
    assert "part2" in done.stderr, done
    first = xarray.open_dataset(survey_nc(survey / "MT/2417.TSS", folder / "mt"))
    assert xarray.open_dataset(folder / "2417.nc").sizes == first.sizes
    with netCDF4.Dataset(folder / "2417.nc") as data:
        total = sum(g.dimensions["record"].size for g in [data, *data.groups.values()])
        listed = run("waveform", "info", mixed).stdout.splitlines()
        assert f"records\t{total}" in listed, (total, listed[:3])


def survey_nc(path, out):
    return run("waveform", "netcdf", path, "--out", out).stdout.strip()


def check_secrets(survey, folder):
    """Passwords stay at home unless they are asked for."""
    source = folder / "secret"
    source.mkdir()
    (source / "2417.TSS").write_bytes((survey / "MT/2417.TSS").read_bytes())
    table = next((survey / "MT").glob("2417.[Tt][Bb][Ll]"))
    run("table", "set", table, "FTPSPWD=s3cr3t", "EKEY=1234567", "--to", source / "2417.TBL")
    for option, is_there in ([], False), (["--with-secrets"], True):
        run("waveform", "netcdf", source / "2417.TSS", *option)
        data = xarray.open_dataset(source / "2417.nc")
        keys = list(data["table_key"].values)
        assert ("FTPSPWD" in keys) == is_there and ("EKEY" in keys) == is_there
        assert (b"s3cr3t" in (source / "2417.nc").read_bytes()) == is_there
    assert data["table_value"].values[keys.index("TECH")] == "5"


def check_left_out(survey, folder):
    out = survey_nc(survey / "MT/2417.TSS", folder / "all")
    whole = xarray.open_dataset(out)
    run("waveform", "netcdf", survey / "MT/2417.TSS", "--leave-out", "1", "--out", folder / "few")
    few = xarray.open_dataset(folder / "few/2417.nc")
    assert list(few["record_number"].values) == list(whole["record_number"].values[1:])
    broken = folder / "none.TSS"
    broken.write_bytes(b"")
    assert "no record" in run("waveform", "netcdf", broken, "--header", "252", code=1).stderr


def check_harmonics(survey, folder):
    """Every line of the spectra's text, to the digits that it has."""
    for name in ("SIP/2417.TSS", "CSAMT/2417.TSS"):
        out = folder / "harmonics" / name[:3]
        options = ["--calibration-folder", survey / "Calibration", "--yes", "--out", out]
        run("waveform", "harmonics", survey / name, *options)
        run("waveform", "harmonics", survey / name, *options, "--format", "netcdf")
        first = (out / "2417_cal.nc").read_bytes()
        run("waveform", "harmonics", survey / name, *options, "--format", "netcdf")
        assert (out / "2417_cal.nc").read_bytes() == first
        wanted, record = {}, 0
        for line in (out / "2417_cal.txt").read_text().splitlines():
            words = line.split()
            if line.startswith(" Record:"):
                record = int(words[1])
            elif words and words[0].isdigit():
                wanted[record, int(words[0])] = [float(word) for word in words[1:]]
        seen = 0
        with netCDF4.Dataset(out / "2417_cal.nc") as file:
            for group in (file, *file.groups.values()):
                channels = [one[:-10] for one in group.variables if one.endswith("_amplitude")]
                assert len(channels) == 6 and group[channels[0] + "_amplitude"].units == "V"
                for r, record in enumerate(group["record_number"][:]):
                    for h, harmonic in enumerate(group["harmonic"][:]):
                        frequency, *told = wanted[int(record), int(harmonic)]
                        assert abs(group["frequency"][h] - frequency) < 1e-6
                        assert abs(group["frequency"][h] - harmonic * group.base_frequency) < 1e-9
                        for c, channel in enumerate(channels):
                            amplitude, phase = (group[f"{channel}_{what}"][r, h] for what in ("amplitude", "phase"))
                            assert abs(amplitude - told[2 * c]) <= 1e-8 * abs(amplitude)
                            assert abs(phase - told[2 * c + 1]) < 1e-4
                        seen += 1
        assert seen == len(wanted) > 0, (seen, len(wanted))


def check_full_disk(survey, folder):
    """What cannot be written is said, and an older result stays."""
    old = folder / "full" / "2417.nc"
    old.parent.mkdir()
    old.write_text("old")
    command = f"ulimit -f 8; exec {TOOL} waveform netcdf {survey}/MT/2417.TSS --out {old.parent}"
    done = subprocess.run(["sh", "-c", command], capture_output=True, text=True)
    assert done.returncode == 1 and "2417.nc: " in done.stderr, done
    assert old.read_text() == "old" and len(list(old.parent.iterdir())) == 1


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        survey = folder / "survey"
        subprocess.run([SURVEY, str(survey)], check=True, capture_output=True)
        files = sorted(p for p in survey.rglob("*") if p.suffix.upper() in (".TSS", ".TS3"))
        assert len(files) >= 6, files
        for i, path in enumerate(files):
            check_like_text(path, folder / f"f{i}")
        check_scales(survey / "MT/2417.TSS", folder)
        check_parts(survey, folder)
        check_secrets(survey, folder)
        check_left_out(survey, folder)
        check_harmonics(survey, folder)
        check_full_disk(survey, folder)
        dumped = subprocess.run(["ncdump", "-h", str(folder / "2417.nc")], capture_output=True)
        assert dumped.returncode == 0, dumped
        print(f"{len(files)} recordings are read as they were written")


main()

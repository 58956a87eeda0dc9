# SPDX-License-Identifier: GPL-3.0-or-later
"""What objects keep, refuse and give away."""

import datetime
import gc
import os
import pickle
import random
import threading

import numpy as np
import pytest
from field_files import record

import orvane

SECRETS = ["EKEY", "PHNE", "PPPNAME", "PPPPSWD", "FTPSUSR", "FTPSPWD", "FTPCUSR", "FTPCPWD"]


def test_secrets_leave_on_request_only():
    table = orvane.Table()
    table["PPPPSWD"] = "swordfish"
    assert not set(SECRETS) & set(table.to_dict())
    assert "swordfish" not in repr(table.diff(orvane.Table()))
    assert table.to_dict(with_secrets=True)["PPPPSWD"] == "swordfish"


def test_tables_take_what_fits(tmp_path):
    table = orvane.Table()
    before = table.to_bytes()
    for key, value in [
        ("TECH", 3),
        ("FREQ", 0.125),
        ("SITE", "Süd 7"),
        ("STIM", datetime.datetime(2026, 11, 24, 8, 30, 5)),
    ]:
        table[key] = value
        assert table[key] == value
    table.save(tmp_path / "t.tbl")
    again = orvane.Table(tmp_path / "t.tbl")
    assert set(again.diff(table)) == set()
    changed = [i for i, (a, b) in enumerate(zip(before, table.to_bytes())) if a != b]
    # A record has 32 bytes, its value the last 16: nothing but four values has changed.
    start = len(before) % 32
    assert len({(i - start) // 32 for i in changed}) <= 4 + 2  # and the versions of the file
    for key, value, error in [
        ("TECH", "1", TypeError),
        ("TECH", 2**31, orvane.Error),
        ("TECH", True, TypeError),
        ("SITE", "longer than fifteen", orvane.Error),
        ("SITE", "\u4e2d", orvane.Error),
        ("STIM", datetime.datetime(2026, 1, 1, microsecond=5), ValueError),
        ("NOKEY", 1, KeyError),
        ("tech", 1, KeyError),
    ]:
        with pytest.raises(error):
            table[key] = value


def test_errors_name_file_place_and_reason(tmp_path):
    with pytest.raises(orvane.Error) as missing:
        orvane.Table(tmp_path / "none.tbl")
    assert missing.value.file == str(tmp_path / "none.tbl")
    assert missing.value.reason and str(tmp_path) not in missing.value.reason
    assert pickle.loads(pickle.dumps(missing.value)).file == missing.value.file
    (tmp_path / "s.TFS").write_bytes(b"\x01" * 21)
    with pytest.raises(orvane.Error):
        orvane.Schedule([orvane.Step(5, "XX", 1, 1)]).save(tmp_path / "t.TFS")
    orvane.Schedule([orvane.Step(600, "FD", 4, 10)]).save(tmp_path / "t.TFS")
    assert orvane.Schedule(tmp_path / "t.TFS") == [orvane.Step(600, "FD", 4.0, 10.0)]


def test_errors_of_names_that_are_no_text(tmp_path):
    missing = tmp_path / os.fsdecode(b"\xff") / "no.tbl"
    for read in (orvane.Table, orvane.TimeSeries, orvane.Calibration, orvane.StackResults):
        with pytest.raises(orvane.Error) as told:
            read(missing)
        assert told.value.file == str(missing)
        assert "no.tbl" not in told.value.reason


def test_numbers_of_numpy_are_numbers():
    table = orvane.Table()
    table["TECH"], table["FREQ"] = np.int32(3), np.float32(0.5)
    assert (table["TECH"], table["FREQ"]) == (3, 0.5)
    with pytest.raises(TypeError):
        table["TECH"] = np.float64(3)


def test_arrays_outlive_their_reader(tmp_path):
    data, samples = record(random.Random(1), 5000, 4)
    orvane.Table().save(tmp_path / "A.TBL")
    (tmp_path / "A.TSS").write_bytes(data)
    series = orvane.TimeSeries(tmp_path / "A.TSS")
    counts = series[0].counts
    copies = [counts.copy(), counts]
    del series
    (tmp_path / "A.TSS").unlink()
    gc.collect()
    assert copies[1].ravel().tolist() == samples
    copies[1][0, 0] = 7  # the caller's own


def test_threads_read_one_file_together(tmp_path):
    parts = [record(random.Random(i), 2000, 3, number=i) for i in range(1, 40)]
    orvane.Table().save(tmp_path / "A.TBL")
    (tmp_path / "A.TSS").write_bytes(b"".join(data for data, _ in parts))
    series = orvane.TimeSeries(tmp_path / "A.TSS")
    wrong = []

    def read(offset):
        for i in range(offset, len(series), 4):
            if series[i].counts.ravel().tolist() != parts[i][1]:
                wrong.append(i)

    threads = [threading.Thread(target=read, args=(k,)) for k in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert wrong == []


def test_a_thousand_broken_files_are_told(survey, tmp_path):
    draw = random.Random(5)
    readers = {
        "tbl": (survey / "SIP" / "Startup.tbl", lambda path: orvane.Table(path).check()),
        "TSS": (
            survey / "SIP" / "2417.TSS",
            lambda path: [
                one.counts.sum() for one in orvane.TimeSeries(path, needs_table=False)[:3]
            ],
        ),
        "CLB": (survey / "Calibration" / "2417.CLB", lambda path: orvane.Calibration(path).verdict()),
        "trs": (
            survey / "TDIP" / "2417.trs",
            lambda path: [one.floats.shape for one in orvane.StackResults(path)],
        ),
    }
    told = 0
    for i in range(1000):
        kind = list(readers)[i % 4]
        source, read = readers[kind]
        data = bytearray(source.read_bytes()[: draw.choice([100000, 50000, 300, 7])])
        for _ in range(draw.randint(1, 40)):
            data[draw.randrange(len(data))] = draw.randrange(256)
        path = tmp_path / f"broken.{kind}"
        path.write_bytes(data)
        try:
            read(path)
        except orvane.Error as error:
            assert error.reason
            told += 1
    assert 0 < told < 1000


def test_xarray_has_the_records_of_one_shape(tmp_path):
    xarray = pytest.importorskip("xarray")
    parts = [record(random.Random(i), 100 if i != 2 else 50, 2, number=i) for i in range(1, 5)]
    table = orvane.Table()
    for channel in range(1, 9):
        table[f"CHDEF{channel}"] = "Ex"
    table.save(tmp_path / "A.TBL")
    (tmp_path / "A.TSS").write_bytes(b"".join(data for data, _ in parts))
    found = orvane.TimeSeries(tmp_path / "A.TSS").to_xarray(in_volts=False)
    assert isinstance(found, xarray.Dataset)
    assert list(found.data_vars) == ["Ex", "Ex_2"] and found.attrs["left_out"] == [2]
    np.testing.assert_array_equal(
        found["Ex_2"].values[1], np.array(parts[2][1], dtype=np.int32).reshape(-1, 2)[:, 1]
    )

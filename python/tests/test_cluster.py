# SPDX-License-Identifier: GPL-3.0-or-later
"""The work of a survey on a real cluster on this machine, with a worker that is killed."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time

import pytest
from conftest import PROGRAMS

import orvane.survey

distributed = pytest.importorskip("distributed")

FILES = 300
BROKEN = "F123.TSS"


@pytest.fixture
def folder(survey, tmp_path):
    """300 recordings, one of which holds no record."""
    place = tmp_path / "files"
    place.mkdir()
    for number in range(FILES):
        for ending in ("TSS", "TBL"):
            shutil.copy(survey / "CSAMT" / f"2417.{ending}", place / f"F{number:03}.{ending}")
    (place / BROKEN).write_bytes(b"no record")
    return place


@pytest.fixture
def cluster(tmp_path):
    """(address, worker processes) of a scheduler and three workers, each a process."""
    address = tmp_path / "scheduler.json"
    environment = os.environ | {"PYTHONPATH": os.environ.get("PYTHONPATH", "")}
    dask = [sys.executable, "-m"]
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "env": environment}
    scheduler = subprocess.Popen(
        [*dask, "distributed.cli.dask_scheduler", "--host", "127.0.0.1", "--port", "0",
         "--no-dashboard", "--scheduler-file", str(address)], **quiet)
    workers = [
        subprocess.Popen(
            [*dask, "distributed.cli.dask_worker", "--scheduler-file", str(address), "--nthreads",
             "1", "--no-nanny", "--no-dashboard", "--local-directory", str(tmp_path)], **quiet)
        for _ in range(3)
    ]
    yield address, workers
    for process in [*workers, scheduler]:
        process.kill()
        process.wait()


def results_in(place):
    return {path.name: path.read_bytes() for path in place.glob("*.TSK")}


def test_a_killed_worker_costs_nothing(folder, cluster, tmp_path):
    address, workers = cluster
    tool = str(PROGRAMS / "orvane-cli")
    outcomes = []
    with distributed.Client(scheduler_file=str(address), timeout=60) as client:
        client.wait_for_workers(3)
        start = time.monotonic()
        files = orvane.survey.files_of(folder, ["restack"])
        assert len(files) == FILES
        for some in orvane.survey.run(files, ("restack",), client, tool=tool):
            outcomes += some
            if len(outcomes) == FILES // 3:
                workers[0].send_signal(signal.SIGKILL)
        seconds = time.monotonic() - start
        assert len(client.nthreads()) == 2
    failed = [one for one in outcomes if not one.is_done]
    assert len(outcomes) == FILES
    assert [pathlib.Path(one.file).name for one in failed] == [BROKEN]
    assert BROKEN in failed[0].message
    by_cluster = results_in(folder)
    print(f"{FILES} files, 3 workers, one killed: {seconds:.1f} s, {len(by_cluster)} results")

    alone = tmp_path / "alone"
    alone.mkdir()
    subprocess.run([tool, "waveform", "restack", "--out", alone, *sorted(folder.glob("*.TSS"))],
                   check=False, capture_output=True)
    assert len(by_cluster) == FILES - 1
    assert by_cluster == results_in(alone)
    kinds = {path.suffix for path in folder.iterdir()}
    assert kinds == {".TSS", ".TBL", ".TSK"}, "no half file is left"


def test_processes_here_and_a_report(survey, tmp_path):
    place = tmp_path / "files" / os.fsdecode(b"b\xff\t")  # a name that is no text
    place.mkdir(parents=True)
    for ending in ("TSS", "TBL"):
        shutil.copy(survey / "CSAMT" / f"2417.{ending}", place / f"A.{ending}")
    report = tmp_path / "report.tsv"
    done = subprocess.run(
        [sys.executable, "-m", "orvane.survey", place.parent, "--verb", "restack,text", "--workers", "2",
         "--tool", PROGRAMS / "orvane-cli", "--report", report, "--", "--leave-out", "1"],
        env=os.environ | {"XDG_CACHE_HOME": str(tmp_path / "cache")},
        capture_output=True, text=True, check=False)
    assert "2 of 2 results" in done.stderr, done.stderr
    rows = [line.split("\t") for line in report.read_text().splitlines()]
    results = [row for row in rows if row[0] == "result"]
    assert [row[2:4] for row in results] == [["restack", "done"], ["text", "done"]]
    assert all(row[1] == r"b\xFF\x09/A.TSS" for row in results)
    assert all("record left out" in row[5] for row in results), "the options come through"
    assert {path.suffix for path in place.iterdir()} == {".TSS", ".TBL", ".TSK", ".txt"}


def test_a_scheduler_that_is_not_there_and_a_report_that_cannot_be_written(survey, tmp_path):
    def run(*arguments):
        return subprocess.run(
            [sys.executable, "-m", "orvane.survey", tmp_path, "--verb", "restack",
             "--tool", PROGRAMS / "orvane-cli", *arguments],
            env=os.environ | {"XDG_CACHE_HOME": str(tmp_path / "cache"),
                              "DASK_DISTRIBUTED__COMM__TIMEOUTS__CONNECT": "1s"},
            capture_output=True, text=True, check=False)

    lost = run("--scheduler", "tcp://127.0.0.1:9")
    assert lost.returncode == 2
    assert lost.stderr.splitlines()[-1].startswith("tcp://127.0.0.1:9: "), lost.stderr
    untold = run("--workers", "1", "--report", tmp_path / "no" / "report.tsv")
    assert untold.returncode == 1
    assert untold.stdout.startswith("what\tfile\t"), "it is printed"


@pytest.mark.parametrize(
    "arguments, reason",
    [
        (["--tool", "no-such-tool"], "no-such-tool is not found: say where it is by --tool"),
        (["--verb", "polish"], "no verb polish"),
        (["--report", "A.TSS"], "A.TSS is there and is no report: it was not replaced"),
    ],
)
def test_what_cannot_begin_is_said_once(tmp_path, capsys, monkeypatch, arguments, reason):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "A.TSS").write_bytes(b"recorded")
    with pytest.raises(SystemExit) as end:
        orvane.survey.main([str(tmp_path), "--verb", "restack", *arguments])
    assert end.value.code == 2
    assert reason in capsys.readouterr().err
    assert (tmp_path / "A.TSS").read_bytes() == b"recorded"


def test_the_job_arrays_script_shares_out_a_list(survey, tmp_path):
    script = pathlib.Path(__file__).parents[1] / "slurm" / "orvane-array.sh"
    names = []
    for number in range(5):
        for ending in ("TSS", "TBL"):
            shutil.copy(survey / "CSAMT" / f"2417.{ending}", tmp_path / f"{number} a.{ending}")
        names.append(str(tmp_path / f"{number} a.TSS"))
    (tmp_path / "files").write_text("\n".join([*names, str(tmp_path / "none.TSS")]) + "\n")
    codes = [
        subprocess.run(
            [script, tmp_path / "files", "restack"],
            env=os.environ | {"ORVANE_CLI": str(PROGRAMS / "orvane-cli"), "SLURM_ARRAY_TASK_ID": str(task),
                              "SLURM_ARRAY_TASK_MIN": "1", "SLURM_ARRAY_TASK_COUNT": "2"},
            capture_output=True, check=False).returncode
        for task in (1, 2)
    ]
    assert codes == [0, 1], "the second has the one that is missing"
    assert len(list(tmp_path.glob("*.TSK"))) == 5

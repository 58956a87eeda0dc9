# SPDX-License-Identifier: GPL-3.0-or-later
"""The work of a survey on several processes or machines: `python -m orvane.survey DIR --verb ...`.

Every file is a task of its own for a Dask cluster, whose machines see the folder under the same path.
A task runs the command-line tool, which writes a result whole or not at all and gives the same bytes
each time: a task that is repeated, because its worker was lost, does no harm.
"""

from __future__ import annotations

import argparse
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
from collections.abc import Iterable, Iterator
from dataclasses import dataclass

from . import Error, Survey, scan

#: The verbs that write a file for each of theirs, and whose files they take.
VERBS = {
    "restack": re.compile(r"\.tss$", re.IGNORECASE),
    "harmonics": re.compile(r"\.(tss|ts[0-9])$", re.IGNORECASE),
    "text": re.compile(r"\.(tss|ts[0-9])$", re.IGNORECASE),
}
#: The first line of a report.
TITLES = "what\tfile\tverb or rule\toutcome\tseconds\tmessage"
#: So many tasks wait for each worker's thread: none is idle, and 100,000 files are no burden.
AHEAD = 100


@dataclass(frozen=True)
class Outcome:
    """What came of one verb and one file.

    Attributes:
        file: its path.
        verb: of the tool.
        is_done: the tool said so.
        message: what it printed to standard error.
        seconds: on the worker.
    """

    file: str
    verb: str
    is_done: bool
    message: str
    seconds: float


def run_file(
    file: str, *, tool: str, verbs: tuple[str, ...], options: tuple[str, ...]
) -> list[Outcome]:
    """Runs verbs on one file, in their order; what one fails for does not keep the next from it."""
    outcomes = []
    for verb in verbs:
        if not VERBS[verb].search(file):
            continue
        start = time.monotonic()
        done = subprocess.run(
            [tool, "waveform", verb, "--jobs", "1", *options, file],
            capture_output=True,
            check=False,
            stdin=subprocess.DEVNULL,
        )
        message = done.stderr.decode(errors="backslashreplace").strip().replace("\n", "; ")
        outcomes.append(
            Outcome(file, verb, done.returncode == 0, message, time.monotonic() - start)
        )
    return outcomes


def files_of(folder: pathlib.Path, verbs: Iterable[str]) -> list[str]:
    """The files below a folder that any of the verbs takes, in the order of their paths."""
    patterns = [VERBS[verb] for verb in verbs]
    found = []
    for place, _, names in os.walk(folder):
        found += [
            os.path.join(place, name) for name in names if any(one.search(name) for one in patterns)
        ]
    return sorted(found)


def run(
    files: list[str],
    verbs: tuple[str, ...],
    client,
    *,
    tool: str = "orvane-cli",
    options: tuple[str, ...] = (),
) -> Iterator[list[Outcome]]:
    """Runs verbs on files through a `distributed.Client`; yields outcomes as tasks end.

    A task whose worker is lost goes to another one. What the cluster itself fails for is an outcome
    that is not done.
    """
    from distributed import as_completed

    threads = max(1, sum(client.nthreads().values()))
    waiting = iter(files)

    def submit(some: Iterable[str]):
        return client.map(
            run_file, list(some), tool=tool, verbs=verbs, options=options, pure=False, retries=2
        )

    pending = submit(itertools.islice(waiting, threads * AHEAD))
    names = dict(zip((future.key for future in pending), files))
    given = len(pending)
    tasks = as_completed(pending)
    del pending
    for future in tasks:
        name = names.pop(future.key)
        if future.status == "finished":
            yield future.result()
        else:
            reason = str(future.exception())
            yield [Outcome(name, verb, False, reason, 0.0) for verb in verbs]
        future.release()
        for more in submit(itertools.islice(waiting, 1)):
            names[more.key] = files[given]
            given += 1
            tasks.add(more)


def shown(text: str) -> str:
    r"""The text on one line of UTF-8: bytes of a name that are none, and control characters, as \xNN."""
    return re.sub(
        r"[\x00-\x1f\x7f-\x9f\udc80-\udcff]", lambda one: f"\\x{ord(one[0]) & 0xFF:02X}", text
    )


def report_text(outcomes: list[Outcome], survey: Survey, folder: pathlib.Path) -> str:
    """Rows of what was done and of what the survey's rules say, tab-separated; files as seen from the
    folder."""
    lines = [TITLES]
    for one in sorted(outcomes, key=lambda one: (one.file, one.verb)):
        state = "done" if one.is_done else "failed"
        message = shown(one.message.replace("\t", " "))
        name = shown(os.path.relpath(one.file, folder))
        lines.append(f"result\t{name}\t{one.verb}\t{state}\t{one.seconds:.3f}\t{message}")
    for finding in survey.findings:
        place, sentence = shown(finding.file), shown(finding.sentence)
        lines.append(f"finding\t{place}\t{finding.rule}\t{finding.severity}\t\t{sentence}")
    return "\n".join(lines) + "\n"


def _may_be_report(path: pathlib.Path) -> bool:
    """It is not there, an earlier report, or no file that could be lost."""
    try:
        if not path.is_file():
            return not path.is_dir()
        with path.open("rb") as file:
            start = file.read(len(TITLES) + 1)
    except OSError:
        return False
    return start in (b"", TITLES.encode() + b"\n")


def _arguments(given: list[str] | None) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="python -m orvane.survey", description=__doc__)
    parser.add_argument("folder", type=pathlib.Path, help="of the survey, the same on all machines")
    parser.add_argument("--verb", required=True, help="such as restack,harmonics")
    parser.add_argument("--scheduler", help="address of a Dask scheduler; without: processes here")
    parser.add_argument("--workers", type=int, default=os.cpu_count(), help="processes, without")
    parser.add_argument(
        "--tool", default=shutil.which("orvane-cli") or "orvane-cli", help="orvane-cli, as workers find it"
    )
    parser.add_argument("--report", type=pathlib.Path, help="a file in place of standard output")
    parser.usage = parser.format_usage().removeprefix("usage: ").rstrip() + " [-- OPTION ...]"
    words = list(sys.argv[1:] if given is None else given)
    behind = words.index("--") if "--" in words else len(words)
    arguments = parser.parse_args(words[:behind])
    arguments.options = tuple(words[behind + 1 :])
    arguments.verbs = tuple(arguments.verb.split(","))
    for verb in arguments.verbs:
        if verb not in VERBS:
            parser.error(f"no verb {verb}: there are {', '.join(VERBS)}")
    if not arguments.folder.is_dir():
        parser.error(f"{arguments.folder} is no folder")
    if arguments.report is not None and not _may_be_report(arguments.report):
        parser.error(f"{arguments.report} is there and is no report: it was not replaced")
    if arguments.scheduler is None and shutil.which(arguments.tool) is None:
        parser.error(f"{arguments.tool} is not found: say where it is by --tool")
    return arguments


def _tell(text: str, report: pathlib.Path | None) -> bool:
    """The report into its file, or where that cannot be written to standard output."""
    if report is not None:
        # An earlier report stays until this one is whole.
        whole = report if report.exists() and not report.is_file() else report.with_name(
            f".{report.name}.{os.getpid()}"
        )
        try:
            whole.write_text(text, encoding="utf-8")
            if whole != report:
                os.replace(whole, report)
            return True
        except OSError as error:
            print(f"{report}: {error.strerror}: the report is on standard output", file=sys.stderr)
            if whole != report:
                whole.unlink(missing_ok=True)
    sys.stdout.buffer.write(text.encode())
    sys.stdout.flush()
    return report is None


def main(given: list[str] | None = None) -> int:
    """0: all was done and nothing above hints was found; 1: not so; 2: wrong usage."""
    arguments = _arguments(given)
    try:
        from distributed import Client, LocalCluster
    except ImportError:
        print("Dask's package distributed is missing (python3-distributed)", file=sys.stderr)
        return 2
    files = files_of(arguments.folder, arguments.verbs)
    place = arguments.scheduler or LocalCluster(
        n_workers=arguments.workers, threads_per_worker=1, dashboard_address=None
    )
    outcomes: list[Outcome] = []
    try:
        client = Client(place)
    except OSError as error:
        print(f"{place}: {error}", file=sys.stderr)
        return 2
    with client:
        for some in run(files, arguments.verbs, client, tool=arguments.tool,
                        options=arguments.options):
            outcomes += some
            if sys.stderr.isatty():
                print(f"\r{len(outcomes)} of {len(files)}", end="", file=sys.stderr)
    if arguments.scheduler is None:
        place.close()
    try:
        survey = scan(arguments.folder)
    except Error as error:
        print(error, file=sys.stderr)
        survey = Survey()
    is_told = _tell(report_text(outcomes, survey, arguments.folder), arguments.report)
    failed = [one for one in outcomes if not one.is_done]
    for one in failed:
        print(f"{shown(one.file)}: {one.verb}: {shown(one.message)}", file=sys.stderr)
    print(f"{len(outcomes) - len(failed)} of {len(outcomes)} results", file=sys.stderr)
    is_fine = is_told and not failed and all(one.severity == "hint" for one in survey.findings)
    return 0 if is_fine else 1


if __name__ == "__main__":
    from orvane import survey  # so that workers find what they are to run

    sys.exit(survey.main())

#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Puts faults into copies of source files, one at a time, and tells which ones the tests miss.

The tree stays as it is: a faulty copy is compiled to a library of its own, which the test programs
of a finished build load in place of the right one.
"""

import argparse
import json
import os
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from mutations import KINDS, Finder

PROGRAMS = ("orvane_tests", "orvane_sweep_tests", "orvane_cli_tests")
SHORTEST_LIMIT = 20  # seconds
SLACK = 8            # times what a group of tests takes without a fault
LARGEST_FILE = 1 << 30
LARGEST_MEMORY = 8 << 30


def tame():
    """A faulty program may write or ask for memory without end."""
    resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))
    resource.setrlimit(resource.RLIMIT_AS, (LARGEST_MEMORY, LARGEST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    signal.signal(signal.SIGINT, signal.SIG_DFL)  # tests send it, and background jobs ignore it


class Tests:
    """The tests of all programs in groups, the fastest first."""

    def __init__(self, build):
        self.build = build
        self.groups = []  # (program, filter, seconds)

    def measure(self):
        for program in PROGRAMS:
            with tempfile.NamedTemporaryFile(suffix=".json") as told:
                if self.run(program, "*", None, f"--gtest_output=json:{told.name}", limit=1800) != "passed":
                    sys.exit(f"{program} fails without any fault.")
                suites = json.load(open(told.name))["testsuites"]
            self.group(program, sorted((float(test["time"].rstrip("s")), f"{suite['name']}.{test['name']}")
                                       for suite in suites for test in suite["testsuite"]))

    def group(self, program, tests):
        """Each group takes about as long as all before it."""
        taken, names, seconds = 0.0, [], 0.0
        for time, name in tests:
            names.append(name)
            seconds += time
            if seconds >= max(1.0, taken):
                self.groups.append((program, ":".join(names), seconds))
                taken, names, seconds = taken + seconds, [], 0.0
        if names:
            self.groups.append((program, ":".join(names), seconds))

    def run(self, program, names, libraries, *options, limit):
        """"passed", "failed" or "timed out"."""
        with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
            os.chmod(folder, 0o755)  # one test runs as another user
            environment = dict(os.environ, TMPDIR=folder)
            if libraries:
                environment["LD_LIBRARY_PATH"] = str(libraries)
            running = subprocess.Popen(
                [self.build / "bin" / program, "--gtest_fail_fast", "--gtest_brief=1", *options],
                env=dict(environment, GTEST_FILTER=names), stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, cwd=folder, start_new_session=True,
                preexec_fn=tame)
            try:
                return "failed" if running.wait(limit) else "passed"
            except subprocess.TimeoutExpired:
                return "timed out"
            finally:
                try:
                    os.killpg(running.pid, signal.SIGKILL)  # the programs that a test started, too
                except ProcessLookupError:
                    pass
                running.wait()

    def verdict(self, libraries):
        for program, names, seconds in self.groups:
            end = self.run(program, names, libraries, limit=max(SHORTEST_LIMIT, SLACK * seconds))
            if end != "passed":
                return "killed" if end == "failed" else end
        return "survived"


class Compiler:
    """Makes the library of a mutation with the commands of the build."""

    def __init__(self, build):
        self.build = build
        commands = json.load(open(build / "compile_commands.json"))
        self.commands = {Path(entry["file"]): shlex.split(entry["command"]) for entry in commands}

    def run(self, arguments):
        return subprocess.run(arguments, cwd=self.build, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def library(self, mutation, folder):
        """Whether there is one: it compiles, and to something else than the right source."""
        source, made = folder / mutation.path.name, folder / "made.o"
        source.write_text(mutation.applied())
        command = self.commands[mutation.path]
        right = command[command.index("-o") + 1]
        changed = {str(mutation.path): str(source), right: str(made)}
        command = [changed.get(word, word) for word in command]
        if not self.run([*command, "-w", f"-ffile-prefix-map={folder}={mutation.path.parent}"]):
            return False
        if made.read_bytes() == (self.build / right).read_bytes():
            return False
        return self.link(right, made, folder)

    def link(self, right, made, folder):
        target = Path(right).parent.name.removesuffix(".dir")
        name = f"lib{target}.so"
        library = Path(right).parents[2] / name
        told = subprocess.run(["ninja", "-t", "commands", "-s", str(library)], cwd=self.build,
                              capture_output=True, text=True, check=True).stdout
        words = [word for word in shlex.split(told) if word not in (":", "&&")]
        changed = {right: str(made), str(library): str(folder / name)}
        return self.run([changed.get(word, word) for word in words])


class Run:
    def __init__(self, root, build, out):
        self.root, self.out = root, out
        self.tests, self.compiler = Tests(build), Compiler(build)
        self.work = build / "work"
        self.done = 0

    def judge(self, mutation):
        """(mutation, verdict); None for one that does not count."""
        folder = self.work / mutation.rank[:16]
        folder.mkdir(parents=True, exist_ok=True)
        try:
            if not self.compiler.library(mutation, folder):
                return mutation, None
            verdict = self.tests.verdict(folder)
        finally:
            shutil.rmtree(folder)
        self.done += 1
        print(f"\r{self.done} done", end="", file=sys.stderr, flush=True)
        return mutation, verdict

    def of_kinds(self, candidates, counts):
        """The first ones of each kind that count, with their verdicts."""
        waiting = {kind: iter(candidates[kind]) for kind in counts}
        missing, verdicts = dict(counts), []
        with ThreadPoolExecutor(len(os.sched_getaffinity(0))) as workers:
            while chosen := [m for kind in missing for m, _ in zip(waiting[kind], range(missing[kind]))]:
                judged = [(m, v) for m, v in workers.map(self.judge, chosen) if v]
                verdicts += judged
                for mutation, _ in judged:
                    missing[mutation.kind] -= 1
        return verdicts

    def report(self, seed, verdicts):
        lines = []
        for mutation, verdict in sorted(verdicts, key=lambda each: (each[0].path, each[0].start)):
            if verdict == "survived":
                before, after = mutation.before_and_after()
                place = f"{mutation.path.relative_to(self.root)}:{mutation.line}"
                lines += [f"{place}: {mutation.kind}", f"  - {before}", f"  + {after}"]
        lines.append(f"seed {seed}:")
        for kind in (*KINDS, "all"):
            ends = [v for m, v in verdicts if kind in (m.kind, "all")]
            late = f", {ends.count('timed out')} by the time limit" if "timed out" in ends else ""
            lines.append(f"  {kind}: {len(ends) - ends.count('survived')} of {len(ends)} found{late}")
        self.out.mkdir(parents=True, exist_ok=True)
        (self.out / f"{seed}.txt").write_text("\n".join(lines) + "\n")
        survivors = [mutation.rank for mutation, verdict in verdicts if verdict == "survived"]
        print("\r" + "\n".join(lines))
        return survivors


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path, help="a finished build of shared rooms")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--again", action="store_true", help="only those that survived the last run")
    given = parser.parse_args()
    root = Path(__file__).resolve().parents[2]
    run = Run(root, given.build.resolve(), root / "out" / "mutants")
    run.tests.measure()
    finder = Finder(given.seed, root / "src" / "table" / "param_dictionary.cpp")
    candidates = finder.of_tree(root / "src")
    share, more = divmod(given.count, len(KINDS))
    counts = {kind: share + (place < more) for place, kind in enumerate(KINDS)}
    kept = run.out / f"{given.seed}.survivors"
    if given.again:
        ranks = set(kept.read_text().split())
        candidates = {kind: [m for m in all_of if m.rank in ranks] for kind, all_of in candidates.items()}
        counts = {kind: len(all_of) for kind, all_of in candidates.items()}
    survivors = run.report(given.seed, run.of_kinds(candidates, counts))
    kept.write_text("\n".join(survivors) + "\n")


if __name__ == "__main__":
    main()

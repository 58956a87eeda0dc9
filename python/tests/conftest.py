# SPDX-License-Identifier: GPL-3.0-or-later
import os
import pathlib
import subprocess

import pytest

PROGRAMS = pathlib.Path(os.environ["ORVANE_PROGRAMS"])


@pytest.fixture(scope="session")
def survey(tmp_path_factory):
    """The example survey."""
    folder = tmp_path_factory.mktemp("survey")
    subprocess.run([PROGRAMS / "orvane-example-survey", folder], check=True, stdout=subprocess.DEVNULL)
    return folder


@pytest.fixture(scope="session")
def tool():
    """Runs the command-line tool and gives what it prints."""

    def run(*arguments):
        done = subprocess.run(
            [PROGRAMS / "orvane-cli", *map(str, arguments)], capture_output=True, check=False
        )
        return done.stdout.decode()

    return run

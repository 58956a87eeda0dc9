# SPDX-License-Identifier: GPL-3.0-or-later
"""The script in the user guide runs as it stands there."""

import os
import pathlib
import re
import subprocess
import sys

GUIDE = pathlib.Path(__file__).parents[2] / "docs" / "guide" / "python.md"


def test_the_guides_script_draws_its_picture(survey, tmp_path):
    script = re.search(r"```python\n(.*?)```", GUIDE.read_text(), re.DOTALL).group(1)
    environment = os.environ | {"MPLBACKEND": "Agg", "XDG_CACHE_HOME": str(tmp_path / "cache")}
    done = subprocess.run(
        [sys.executable, "-c", script, survey],
        cwd=tmp_path, env=environment, capture_output=True, text=True, check=False,
    )
    assert done.returncode == 0, done.stderr
    assert "Survey method SIP" in done.stdout and "loudest record: 3" in done.stdout
    assert (tmp_path / "decay.png").read_bytes().startswith(b"\x89PNG")

# SPDX-License-Identifier: GPL-3.0-or-later
"""Paths and times between Python and the compiled part."""

from __future__ import annotations

import datetime
import os

PathLike = str | bytes | os.PathLike


def path_bytes(path: PathLike | None) -> bytes:
    """The bytes of a path; of None none."""
    return b"" if path is None else os.fsencode(path)


def from_time(parts: tuple[int, ...] | None) -> datetime.datetime | datetime.time | None:
    """A time as boxes store it, without a zone; without a date a time of day; None: not valid."""
    if parts is None:
        return None
    if parts[0] == 0:
        return datetime.time(*parts[3:])
    try:
        return datetime.datetime(*parts)
    except ValueError:  # a day that no month has
        return None


def time_text(value: datetime.datetime | datetime.time) -> str:
    """The form in which tables take times; fractions of a second have no place there."""
    if value.microsecond != 0:
        raise ValueError("tables keep whole seconds")
    if getattr(value, "tzinfo", None) is not None:
        raise ValueError("tables keep times without a zone")
    if isinstance(value, datetime.datetime):
        return value.strftime("%Y/%m/%d %H:%M:%S")
    return value.strftime("%H:%M:%S")

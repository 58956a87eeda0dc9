# SPDX-License-Identifier: GPL-3.0-or-later
"""Parameter tables (*.tbl) and schedules (*.TFS)."""

from __future__ import annotations

import datetime
import numbers
from collections.abc import Iterable, Iterator, Mapping, MutableMapping
from dataclasses import dataclass

from . import _core
from ._convert import PathLike, from_time, path_bytes, time_text
from ._errors import Error

Value = int | float | str | datetime.datetime | datetime.time | bytes | None


@dataclass(frozen=True)
class Finding:
    """What a rule has to say of a table or a survey.

    Attributes:
        rule: its name, such as "serial-gap".
        severity: "error", "warning" or "hint".
        sentence: for the crew.
        box: the box concerned; empty: none in particular.
        keys: of a table, those concerned.
        file: of a survey, the recording concerned.
    """

    rule: str
    severity: str
    sentence: str
    box: str = ""
    keys: tuple[str, ...] = ()
    file: str = ""


@dataclass(frozen=True)
class Meaning:
    """What a parameter means.

    Attributes:
        key: its key.
        type: "IntPT", "FltPT", "StrPT", "IPAPT", "PosPT", "AmxPT" or "LStPT".
        name: in words, "not used by Orvane" where nothing is known.
        unit: of the stored value.
        range: what dialogs accept.
        values: what coded numbers mean.
        places: the dialogs that show it.
        meaning: of the value that the table has now.
        caution: what is wrong with that value; mostly empty.
    """

    key: str
    type: str
    name: str
    unit: str
    range: str
    values: Mapping[int, str]
    places: str
    meaning: str
    caution: str


class Table(MutableMapping):
    """The parameters of a box, by key.

    Without a path all have their defaults. Integers are int, reals float, texts and addresses str,
    times datetime (a time of day datetime.time, an invalid one None), raw values 4 bytes. What is
    not set keeps its stored bytes when the table is saved.

    >>> table = Table()
    >>> table["TECH"]
    1
    >>> table["TECH"] = 2
    >>> table.explain("TECH").meaning
    'TDIP'
    >>> table.diff(Table())
    {'TECH': (2, 1)}

    Raises:
        Error: the file cannot be read or is no parameter table; a value does not fit.
        KeyError: a table has no such key; keys are never added or removed.
        TypeError: a value of another type.
    """

    def __init__(self, path: PathLike | None = None):
        self._table = _core.Table()
        #: Of a file: its version, how many parameters it held, how many were missing.
        self.report: dict[str, int] = {}
        if path is not None:
            self.report = self._table.load(path_bytes(path))

    @classmethod
    def _of(cls, table: "_core.Table") -> "Table":
        made = cls()
        made._table = table
        return made

    def __getitem__(self, key: str) -> Value:
        value = self._table.get(key)
        return from_time(value) if self._is_time(key) else value

    def _is_time(self, key: str) -> bool:
        return self._table.kind(key) == "AmxPT"

    def __setitem__(self, key: str, value: Value) -> None:
        kind = self._table.kind(key)
        if _core.is_read_only(key):
            raise Error("is about the file and cannot be set", place=key)
        if kind == "IntPT" and isinstance(value, numbers.Integral) and not isinstance(value, bool):
            value = int(value)
            if not -(2**31) <= value < 2**31:
                raise Error(f"{value} does not fit into 32 bits", place=key)
            self._table.set_int(key, value)
        elif kind == "FltPT" and isinstance(value, numbers.Real) and not isinstance(value, bool):
            self._table.set_real(key, float(value))
        elif kind == "AmxPT" and isinstance(value, (datetime.datetime, datetime.time)):
            self._table.set_text(key, time_text(value))
        elif kind in ("StrPT", "PosPT", "IPAPT", "LStPT") and isinstance(value, str):
            self._table.set_text(key, value)
        else:
            raise TypeError(f"{key} ({kind or 'raw'}) cannot take {value!r}")

    def __delitem__(self, key: str) -> None:
        raise TypeError("keys of a table cannot be removed")

    def __iter__(self) -> Iterator[str]:
        return iter(self._table.keys())

    def __len__(self) -> int:
        return len(self._table.keys())

    def __contains__(self, key: object) -> bool:
        return isinstance(key, str) and self._table.has(key)

    def __repr__(self) -> str:
        return f"<orvane.Table, {len(self)} parameters, SNUM {self.get('SNUM')}>"

    def copy(self) -> "Table":
        """Another table with the same stored bytes."""
        return Table._of(self._table.copy())

    def explain(self, key: str) -> Meaning:
        """What a parameter means, and the value that it has."""
        return Meaning(**self._table.explain(key))

    def diff(self, other: "Table") -> dict[str, tuple[Value, Value]]:
        """The keys whose stored bytes differ, each with both values, in the order of the table.

        Secrets are shown as "***".
        """
        return {
            key: ("***", "***") if _core.is_secret(key) else (self[key], other[key])
            for key in self._table.differing(other._table)
        }

    def check(
        self,
        *,
        now: datetime.datetime | None = None,
        path: PathLike | None = None,
        calibrations: PathLike | None = None,
        card: PathLike | None = None,
        set: PathLike | None = None,
    ) -> list[Finding]:
        """Whether boxes may leave with the table; worse than hints: better not.

        Args:
            now: the present time in UTC; the clock's by default.
            path: the file of the table, beside which schedule files lie.
            calibrations: the folder of the calibrations.
            card: a folder on the card that will be recorded on.
            set: the folder of the boxes' start-up files.
        """
        moment = now or datetime.datetime.now(datetime.timezone.utc)
        if moment.tzinfo is not None:
            moment = moment.astimezone(datetime.timezone.utc).replace(tzinfo=None)
        paths = [path_bytes(one) for one in (path, calibrations, card, set)]
        rows = self._table.check(time_text(moment.replace(microsecond=0)), paths)
        return [Finding(**(row | {"keys": tuple(row["keys"])})) for row in rows]

    def to_dict(self, *, with_secrets: bool = False) -> dict[str, Value]:
        """All values by key; passwords, keys, user names and phone numbers only on request."""
        return {
            key: self[key] for key in self if with_secrets or not _core.is_secret(key)
        }

    def to_bytes(self) -> bytes:
        """The table as a version-2 file holds it, secrets included."""
        return self._table.image()

    def save(self, path: PathLike, *, version: int = 2, filtered: bool = False) -> None:
        """Writes the table; an old file is replaced at once or stays as it is."""
        if version not in (1, 2):
            raise ValueError("tables have version 1 or 2")
        self._table.save(path_bytes(path), version, filtered)


@dataclass(frozen=True)
class Step:
    """One step of a schedule.

    Attributes:
        end_time: seconds from the start of the cycle.
        waveform: "TD50", "FD" and so on.
        frequency: Hz.
        current: A.
    """

    end_time: int
    waveform: str
    frequency: float
    current: float


class Schedule(list):
    """The steps of a schedule file, in their order.

    >>> Schedule([Step(600, "FD", 4.0, 10.0)])[0].frequency
    4.0
    """

    def __init__(self, source: PathLike | Iterable[Step] = ()):
        if isinstance(source, (str, bytes)) or hasattr(source, "__fspath__"):
            steps: Iterable[Step] = (
                Step(*row) for row in _core.read_schedule(path_bytes(source))
            )
        else:
            steps = source
        super().__init__(steps)

    def save(self, path: PathLike) -> None:
        """Writes a file that boxes accept; refuses steps that they would not."""
        rows = [(step.end_time, step.waveform, step.frequency, step.current) for step in self]
        _core.write_schedule(path_bytes(path), rows)

# SPDX-License-Identifier: GPL-3.0-or-later
"""What goes wrong with files and values."""

from __future__ import annotations


class Error(Exception):
    """Something could not be read, computed or written.

    Attributes:
        reason: why, in words.
        file: the path concerned, or None.
        place: where in it, such as "record 3" or a key, or None.
    """

    def __init__(self, reason: str, file: str | None = None, place: str | None = None):
        super().__init__(": ".join(part for part in (file, place, reason) if part))
        self.reason = reason
        self.file = file
        self.place = place

    def __reduce__(self):
        return type(self), (self.reason, self.file, self.place)

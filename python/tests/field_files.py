# SPDX-License-Identifier: GPL-3.0-or-later
"""Field files as their formats describe them, drawn at random."""

import struct

RATE_UNITS = {0: 1.0}


def record(random, scans, channels, *, number=1, status=0, frequency=0.0, rate=32):
    """A record with full headers and 24-bit samples, and the samples (scan after scan)."""
    head = bytearray(252)
    head[0:8] = bytes([number % 60, 5, 14, 22, 11, 26, 7, 20])  # 2026-11-22 14:05
    struct.pack_into("<HHB", head, 8, 2417, scans, channels)
    head[14] = status
    head[17] = 3
    struct.pack_into("<Hb", head, 18, rate, 0)
    struct.pack_into("<d", head, 36, frequency)
    samples = [random.randrange(-(2**23), 2**23) for _ in range(scans * channels)]
    data = b"".join(sample.to_bytes(3, "little", signed=True) for sample in samples)
    return bytes(head) + data, samples

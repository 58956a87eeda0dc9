#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the rows "fit" of response_reference.txt again: prints that file, whose path is the argument.

It shares nothing with the program: the circuit of docs/response.md, slopes by differences, weights worked
out anew for each step and plain elimination."""
import cmath
import math
import struct
import sys

TOLERANCE = [0.3, 0.05, 0.05, 0.1, 0.1, 0.1, 0.1, 0.1, 0.15, 1, 0.15, 0.15, 0.1, 0.2, 0.3, 0.1, 0.3, 0.2, 1, 0.1]
PAPER = [0, 0, 0, 3.3e-9, 1e-8, 3.3e-8, 1e-7, 3.3e-7, 1e-3, 55, 0.01, 137, 424, 2.2e-4, 3.3e-10, 5.6e-9, 100, 2,
         600, 297]
SETTING = {3: (0, 16, 0, 0), 4: (-1, 16, 0, 0), 5: (1, 16, 0, 0), 6: (2, 16, 0, 0), 7: (0, 17, 0, 0),
           8: (0, 18, 0, 0), 9: (0, 16, 0, 1), 10: (0, 0, 0, 1), 11: (0, 80, 0, 1), 12: (0, 16, 1, 1),
           13: (0, 19, 0, 0), 14: (0, 20, 0, 0)}  # gain, filter, coupling, through the drive resistors
CIRCUIT = [0, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 17, 19]
SLOTS = [4, 5, 6, 3, 7, 8, 13, 14, 3, 9, 10, 11, 12, 5, 6, 3]


def single(x):
    return struct.unpack("<f", struct.pack("<f", x))[0]


def answer(p, gain, low_pass, coupling, zs, f):
    s = 2j * math.pi * f
    c = p[14] + (p[3 + low_pass % 16] if low_pass else 0)
    y = 1 / (1000 * p[19]) + s * c
    zt = 1 / (1 / (p[11] + s * p[10]) + s * p[15] + (0 if low_pass == 80 else 1 / p[16]))
    z = zs + p[9] + s * p[8] + p[12] + zt
    g = (1 + p[0]) * (1 + p[1] if gain in (0, 2) else 1) * (1 + p[2] if gain in (1, 2) else 1)
    u = s * p[13]
    g *= cmath.exp(-s * p[17] * 1e-6)
    return g * u / (u * (1 + z * y) + y) if coupling else g / (1 + z * y)


def of_pass(p, k, drive, f):
    gain, low_pass, coupling, driven = SETTING[k]
    return answer(p, gain, low_pass, coupling, drive / 2 if driven else 0, f)


def moved(p, part, by):
    q = list(p)
    q[part] = p[part] + by if part <= 2 else p[part] + 10 * by if part == 17 else p[part] * math.exp(by)
    return q


def distance(p, centre, part):
    return (p[part] - centre[part] if part <= 2 else (p[part] - centre[part]) / 10 if part == 17
            else math.log(p[part] / centre[part]))


def eliminate(a, b):
    n = len(b)
    a = [row[:] + [b[i]] for i, row in enumerate(a)]
    for i in range(n):
        k = max(range(i, n), key=lambda r: abs(a[r][i]))
        a[i], a[k] = a[k], a[i]
        for r in range(n):
            if r != i:
                m = a[r][i] / a[i][i]
                a[r] = [x - m * y for x, y in zip(a[r], a[i])]
    return [a[i][n] / a[i][i] for i in range(n)]


def offset_for(p, points):
    small, large = [], []
    for k, drive, f, h in points:
        (small if abs(h) < 0.5 else large).append((abs(of_pass(p, k, drive, f) - h), abs(h) ** 2))
    if len(small) < 4 or len(large) < len(small):
        return 0.1
    low, high = (sorted(e for e, s in group)[len(group) // 2] ** 2 for group in (small, large))
    sizes = [sum(s for e, s in group) / len(group) for group in (small, large)]
    if high < 2e-5 ** 2:
        return 0.1
    slope = (high - low) / (sizes[1] - sizes[0])
    constant = low - slope * sizes[0]
    if slope <= 0 or constant <= 0:
        return 0.8 if slope <= 0 else 0.1 / 16
    return 0.1 * 2.0 ** round(max(-4, min(3, math.log2(math.sqrt(constant / slope) / 0.1))))


def adjust(p, points, parts, centre, offset=0.1):
    if not points:
        return p, offset

    def errors(q):
        return [(of_pass(q, k, drive, f) - h) / (abs(h) + offset) for k, drive, f, h in points]

    width, prior = 1.0, 1e-4
    for _ in range(12):
        def cost(q):
            return (sum(width ** 2 * math.log1p(abs(e) ** 2 / width ** 2) for e in errors(q)) +
                    sum((prior / TOLERANCE[i] * distance(q, centre, i)) ** 2 for i in parts))
        damping, before = 1e-3, cost(p)
        for _ in range(80):
            e = errors(p)
            w = [1 / (1 + abs(x) ** 2 / width ** 2) for x in e]
            slopes = [[(a - b) / 2e-5 for a, b in zip(errors(moved(p, i, 1e-5)), errors(moved(p, i, -1e-5)))]
                      for i in parts]
            weighted = [[x * v for x, v in zip(row, w)] for row in slopes]
            matrix = [[sum((x.conjugate() * y).real for x, y in zip(r, q)) for q in slopes] for r in weighted]
            right = [-sum((x.conjugate() * y).real for x, y in zip(r, e)) for r in weighted]
            for n, i in enumerate(parts):
                weight = (prior / TOLERANCE[i]) ** 2
                matrix[n][n] += weight
                right[n] -= weight * distance(p, centre, i)
            fall = -1
            while fall <= 0 and damping < 1e8:
                a = [row[:] for row in matrix]
                for n in range(len(parts)):
                    a[n][n] *= 1 + damping
                q = p
                for n, by in enumerate(eliminate(a, right)):
                    q = moved(q, parts[n], max(-0.5, min(0.5, by)))
                fall = before - cost(q)
                damping = damping / 10 if fall > 0 else damping * 10
            if fall <= 0:
                break
            p, before = q, before - fall
            if fall < 1e-13 * before:
                break
        before = offset
        if len(parts) > 3:
            offset = offset_for(p, points)
        sizes = sorted(abs(e) for e in errors(p))
        noise = max(sizes[len(sizes) // 2] / 1.1774, 2e-5)
        width, last = max(4 * noise, width / 10), width
        prior = max(1e-4, math.sqrt(2) * noise)
        if abs(width - last) <= 0.02 * last and offset == before:
            break
    return p, offset


def largest(true, p, coupling, low, high):
    worst = 0
    for low_pass in (0, 16, 17, 18, 19, 20, 80, 81, 82, 83, 84):
        for gain in (-1, 0, 1, 2):
            for zs in (0, 100, 1000):
                for i in range(41):
                    f = low * (high / low) ** (i / 40)
                    h = [trap_answer(q, gain, low_pass, coupling, zs, f) for q in (true, p)]
                    worst = max(worst, abs(h[1] / h[0] - 1))
    return worst


def trap_answer(p, gain, low_pass, coupling, zs, f):
    if low_pass > 80:  # as 80, with another capacitor
        p = p[:3] + [p[3 + low_pass - 80]] + p[4:]
        low_pass = 80
    return answer(p, gain, low_pass, coupling, zs, f)


def fit(words):
    noise, drive = float(words[4]), float(words[5])
    true = [float(w) for w in words[6:26]]
    passes = [int(w) for w in words[69:]]
    grid = [single(0.05 * (20000 / 0.05) ** (i / 32)) for i in range(33)]
    slots, starts, entries = [], [], 0
    for k in SLOTS:
        points = []
        if k in passes:
            for i, f in enumerate(grid):
                n = noise * complex(math.cos(7 * i + 3 * k), math.sin(5 * i + 2 * k))
                h = of_pass(true, k, true[18], f) * (1 + n)
                points.append((k, drive, f, complex(single(h.real), single(h.imag))))
            first = points[0]
            points.insert(0, (k, drive, 0.0, complex(first[3].real, 0)) if k != 12 else None)
        starts.append(entries)
        entries += len(points)
        slots.append([point for point in points if point is not None])
    p = PAPER[:]
    if drive:
        p[18] = drive
    centre = p[:]
    if true[0] < -1:
        p[0] = -2.0
    low = [[point for point in slot if point[2] <= 50] for slot in slots[:4]]
    offset = 0.1
    for part, parts in ((low, [0, 1, 2]), (slots[4:13], CIRCUIT), (slots[13:], [0, 1, 2])):
        centre[:3] = p[:3]
        p, offset = adjust(p, sum(part, []), parts, centre, offset)
    everything = [of_pass(p, k, d, f) - h for k, d, f, h in sum(slots, [])]
    weights = [1 / (abs(h) + 0.1) for k, d, f, h in sum(slots, [])]
    sizes = [abs(e) * w for e, w in zip(everything, weights)]
    rms = math.sqrt(sum(e * e for e in sizes) / len(sizes)) if sizes else 0.0
    errors = [largest(true, p, coupling, *ends) for coupling in (0, 1) for ends in ((0.1, 20000), (1e-3, 0.1))]
    row = words[:26] + p + [rms, len(sizes), entries] + errors + starts + [len(passes)] + passes
    return " ".join(str(x) for x in row)


for line in open(sys.argv[1]):
    print(fit(line.split()) if line.startswith("fit ") else line.rstrip("\n"))

#!/usr/bin/env python3
"""Prints what an independent contourer (matplotlib's) makes of the fields of tests/ContTest.cpp: the
area of each band and the length of the line at each level, in cells. Needs Debian's
python3-matplotlib; the tests hold the numbers, so that it is run once.
"""

import numpy as np
from contourpy import FillType, LineType, contour_generator

NX, NY = 41, 31
LEVELS = [0.0, 2.0, 4.0, 6.0, 8.0, 10.0]


def fields():
    """Yields a name, the values and the points that are missing of each field."""
    i, j = np.meshgrid(np.arange(NX), np.arange(NY))
    x, y = (i - 20) / 15.0, (j - 15) / 15.0
    r = np.hypot(x, y)
    none = np.zeros((NY, NX), dtype=bool)
    yield "plane", 3 + 1.7 * x - 2.3 * y, none
    yield "cone", 9.3 - 6.1 * r, none
    yield "ring", 9.7 * np.exp(-(((r - 0.6) / 0.3) ** 2)) + 0.35 * x, none
    yield "holes", 9.3 - 6.1 * r, (np.hypot(x - 0.5, y) < 0.2) | ((i == 3) & (j == 4))


def has_saddle(z, missing, level):
    """Whether the level cuts a cell in two ways, which contourers may settle differently."""
    a = np.where(missing, np.nan, z) > level
    return bool((((a[1:, 1:] == a[:-1, :-1]) & (a[1:, :-1] == a[:-1, 1:]) & (a[1:, 1:] != a[1:, :-1])
                  & ~missing[1:, 1:] & ~missing[:-1, :-1] & ~missing[1:, :-1] & ~missing[:-1, 1:])).any())


def area(points, offsets):
    """Area of an outline less its holes."""
    total = 0.0
    for start, end in zip(offsets[:-1], offsets[1:]):
        x, y = points[start:end].T
        total += (np.dot(x, np.roll(y, -1)) - np.dot(y, np.roll(x, -1))) / 2
    return abs(total)


for name, z, missing in fields():
    z = z.astype(np.float32).astype(np.float64)
    contours = contour_generator(z=np.ma.array(z, mask=missing), corner_mask=False,
                                 line_type=LineType.Separate, fill_type=FillType.OuterOffset)
    areas, lengths = [], []
    for low, high in zip(LEVELS[:-1], LEVELS[1:]):
        polygons, offsets = contours.filled(low, high)
        areas.append(sum(area(p, o) for p, o in zip(polygons, offsets)))
    for level in LEVELS:
        assert not has_saddle(z, missing, level), (name, level)
        lengths.append(sum(np.hypot(*np.diff(line, axis=0).T).sum() for line in contours.lines(level)))
    print(name)
    print("  areas  ", ", ".join(f"{v:.3f}" for v in areas))
    print("  lengths", ", ".join(f"{v:.3f}" for v in lengths))

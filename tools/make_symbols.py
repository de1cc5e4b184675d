#!/usr/bin/env python3
"""Makes data/wx.smb, the symbols of weather and of the map.

  tools/make_symbols.py > data/wx.smb

A symbol is its name, then polylines, each begun by "L", of points "x,y" within 0 to 1 with y upward,
then "$". The reader takes the first name that begins the name asked for, so a longer name stands
above its own beginning.
"""

import math

MAX_SYMBOLS = 100
MAX_POINTS = 3000


def arc(cx, cy, rx, first, last, ry=None, step=30):
    """Points on an ellipse from one angle to another, degrees counterclockwise from the right."""
    ry = rx if ry is None else ry
    n = max(1, round(abs(last - first) / step))
    angles = [math.radians(first + (last - first) * i / n) for i in range(n + 1)]
    return [(cx + rx * math.cos(a), cy + ry * math.sin(a)) for a in angles]


def circle(cx, cy, r, step=30):
    return arc(cx, cy, r, 0, 360, step=step)


def disc(cx, cy, r):
    """A filled circle, drawn as rings that touch at the usual sizes."""
    return [circle(cx, cy, r), circle(cx, cy, r * 0.66), circle(cx, cy, r * 0.33, step=60)]


def closed(*points):
    return list(points) + [points[0]]


def star(cx, cy, r, arms):
    lines = []
    for i in range(arms):
        a = math.radians(90 + 180 * i / arms)
        dx, dy = r * math.cos(a), r * math.sin(a)
        lines.append([(cx - dx, cy - dy), (cx + dx, cy + dy)])
    return lines


def move(lines, dx, dy, scale=1.0):
    return [[(x * scale + dx, y * scale + dy) for x, y in line] for line in lines]


RAIN = disc(0.5, 0.5, 0.13)
COMMA = disc(0.5, 0.56, 0.1) + [arc(0.42, 0.54, 0.19, 0, -70)]
SNOW = star(0.5, 0.5, 0.32, 3)
SHOWER = [closed((0.22, 0.45), (0.78, 0.45), (0.5, 0.02))]
WAVE = [arc(0.3, 0.5, 0.2, 180, 0, 0.22) + arc(0.7, 0.5, 0.2, 180, 360, 0.22)]
TRIANGLE = [closed((0.1, 0.1), (0.9, 0.1), (0.5, 0.9))]
INVERSE = [closed((0.1, 0.9), (0.9, 0.9), (0.5, 0.1))]
BOLT = [
    [(0.15, 0.05), (0.15, 0.78)],
    [(0.08, 0.78), (0.72, 0.78), (0.44, 0.46), (0.74, 0.08)],
    [(0.74, 0.26), (0.74, 0.08), (0.56, 0.13)],
]
ARMS = [
    arc(0.82, 0.5, 0.54, 180, 112, 0.48),
    arc(0.18, 0.5, 0.54, 0, -68, 0.48),
]
RING = [circle(0.5, 0.5, 0.42, step=15)]
HAIL = [closed((0.28, 0.3), (0.72, 0.3), (0.5, 0.72))]

SYMBOLS = {
    # Precipitation; the shower forms stand above the plain ones.
    "rainshower": move(RAIN, 0.0, 0.2) + SHOWER,
    "rainsnow": move(RAIN, 0.0, 0.24) + move(SNOW, 0.14, -0.02, 0.72),
    "rain": RAIN,
    "drizzle": COMMA,
    "snowshower": move(SNOW, 0.14, 0.4, 0.72) + SHOWER,
    "snowgrain": [closed((0.18, 0.34), (0.82, 0.34), (0.5, 0.82)), [(0.18, 0.2), (0.82, 0.2)]],
    "snow": SNOW,
    "frzrain": WAVE + move(RAIN, 0.05, 0.23, 0.5) + move(RAIN, 0.45, 0.27, 0.5),
    "frzdrizzle": WAVE + move(COMMA, 0.05, 0.23, 0.5) + move(COMMA, 0.45, 0.27, 0.5),
    "sleet": [closed((0.15, 0.2), (0.85, 0.2), (0.5, 0.85))] + move(disc(0.5, 0.5, 0.09), 0.0, -0.1),
    "hailshower": move(HAIL, 0.0, 0.2) + SHOWER,
    "hail": HAIL + [[(0.34, 0.3), (0.5, 0.62), (0.66, 0.3)], [(0.42, 0.3), (0.5, 0.48), (0.58, 0.3)]],
    "graupel": [closed((0.28, 0.3), (0.72, 0.3), (0.5, 0.72))],
    # Storms.
    "tstmhail": move(BOLT, 0.0, -0.04, 0.9) + move(HAIL, 0.15, 0.59, 0.55),
    "tstmrain": move(BOLT, 0.0, -0.04, 0.9) + move(RAIN, 0.05, 0.57, 0.65),
    "tstm": BOLT,
    "lightning": [
        [(0.62, 0.95), (0.34, 0.5), (0.62, 0.5), (0.36, 0.05)],
        [(0.36, 0.22), (0.36, 0.05), (0.5, 0.13)],
    ],
    "squall": [closed((0.3, 0.1), (0.7, 0.1), (0.5, 0.5)), [(0.5, 0.5), (0.5, 0.9)],
               [(0.36, 0.74), (0.5, 0.9), (0.64, 0.74)]],
    "tornado": [
        arc(0.1, 0.9, 0.36, -90, 0, 0.8) + [(0.46, 0.95)],
        arc(0.9, 0.9, 0.36, 270, 180, 0.8) + [(0.54, 0.95)],
        [(0.1, 0.1), (0.9, 0.1)],
    ],
    "funnel": [
        [(0.1, 0.9), (0.9, 0.9)],
        [(0.2, 0.9), (0.36, 0.5), (0.52, 0.08)],
        [(0.8, 0.9), (0.64, 0.5), (0.52, 0.08)],
        [(0.29, 0.68), (0.71, 0.68)],
        [(0.38, 0.46), (0.62, 0.46)],
    ],
    "tvs": INVERSE + [[(0.28, 0.74), (0.72, 0.74), (0.5, 0.3), (0.28, 0.74)]],
    "mesocyclone": RING + [circle(0.5, 0.5, 0.3, step=15)],
    "meso": RING,
    "hook": [[(0.3, 0.95), (0.3, 0.45)] + arc(0.52, 0.4, 0.22, 180, 430)],
    # Tropical systems: filled for a hurricane, open for a storm.
    "hurricane": ARMS + [circle(0.5, 0.5, 0.22, step=20)] + disc(0.5, 0.5, 0.17),
    "tropstorm": ARMS + [circle(0.5, 0.5, 0.22, step=20)],
    "tropdep": [circle(0.5, 0.5, 0.22, step=20)],
    # What hides the view.
    "fog": [[(0.1, y), (0.9, y)] for y in (0.3, 0.5, 0.7)],
    "mist": [[(0.1, y), (0.9, y)] for y in (0.4, 0.6)],
    "haze": [arc(0.3, 0.5, 0.2, 0, 360) + arc(0.7, 0.5, 0.2, 180, -180)],
    "smoke": [[(0.15, 0.1), (0.15, 0.75)] + arc(0.25, 0.75, 0.1, 180, 0)
              + arc(0.45, 0.75, 0.1, 180, 360) + arc(0.65, 0.75, 0.1, 180, 0)],
    "duststorm": [arc(0.45, 0.66, 0.2, 30, 270) + arc(0.45, 0.28, 0.18, 90, -150),
                  [(0.05, 0.46), (0.95, 0.46)], [(0.82, 0.54), (0.95, 0.46), (0.82, 0.38)]],
    "dust": [arc(0.5, 0.68, 0.2, 30, 270) + arc(0.5, 0.29, 0.19, 90, -150)],
    "ash": [closed((0.1, 0.1), (0.9, 0.1), (0.62, 0.5), (0.38, 0.5)), [(0.5, 0.5), (0.5, 0.92)],
            [(0.4, 0.55), (0.25, 0.88)], [(0.6, 0.55), (0.75, 0.88)]],
    "blowsnow": [[(0.5, 0.1), (0.5, 0.9)], [(0.36, 0.76), (0.5, 0.9), (0.64, 0.76)],
                 [(0.08, 0.4), (0.92, 0.4)], [(0.78, 0.5), (0.92, 0.4), (0.78, 0.3)]],
    # For aviation.
    "icing": [arc(0.5, 0.75, 0.35, 180, 360, 0.55)] + [[(x, 0.1), (x, 0.75)] for x in (0.4, 0.6)],
    "turbulence": [[(0.1, 0.3), (0.35, 0.3), (0.5, 0.75), (0.65, 0.3), (0.9, 0.3)]],
    # Sky cover, from none to all.
    "clear": RING,
    "few": RING + [[(0.5, 0.08), (0.5, 0.92)]],
    "scattered": RING + [[(0.5, 0.08), (0.5, 0.92)], [(0.5, 0.5), (0.92, 0.5)],
                         [(0.5, 0.7), (0.86, 0.7)]],
    "broken": RING + [[(0.5, 0.08), (0.5, 0.92)], [(0.08, 0.5), (0.92, 0.5)],
                      [(0.14, 0.7), (0.86, 0.7)], [(0.5, 0.3), (0.86, 0.3)]],
    "overcast": RING + [[(0.5 - w, y), (0.5 + w, y)] for y, w in
                        ((0.2, 0.29), (0.3, 0.37), (0.4, 0.41), (0.5, 0.42), (0.6, 0.41),
                         (0.7, 0.37), (0.8, 0.29))],
    "obscured": RING + [[(0.2, 0.2), (0.8, 0.8)], [(0.2, 0.8), (0.8, 0.2)]],
    # Pressure centres.
    "high": [[(0.2, 0.05), (0.2, 0.95)], [(0.8, 0.05), (0.8, 0.95)], [(0.2, 0.5), (0.8, 0.5)]],
    "low": [[(0.25, 0.95), (0.25, 0.05), (0.8, 0.05)]],
    # Of the map.
    "radar": [[(0.5, 0.05), (0.5, 0.45)], [(0.3, 0.05), (0.7, 0.05)], arc(0.66, 0.72, 0.38, 135, 315),
              [(0.66, 0.72), (0.44, 0.5)], [(0.66, 0.72), (0.82, 0.88)]],
    "airport": [circle(0.5, 0.5, 0.25), [(0.5, 0.0), (0.5, 0.25)], [(0.5, 0.75), (0.5, 1.0)],
                [(0.0, 0.5), (0.25, 0.5)], [(0.75, 0.5), (1.0, 0.5)]],
    "city": [closed((0.3, 0.3), (0.7, 0.3), (0.7, 0.7), (0.3, 0.7))] + disc(0.5, 0.5, 0.08),
    # Plain shapes.
    "circle": RING,
    "square": [closed((0.1, 0.1), (0.9, 0.1), (0.9, 0.9), (0.1, 0.9))],
    "diamond": [closed((0.5, 0.05), (0.95, 0.5), (0.5, 0.95), (0.05, 0.5))],
    "itri": INVERSE,
    "tri": TRIANGLE,
    "plus": [[(0.1, 0.5), (0.9, 0.5)], [(0.5, 0.1), (0.5, 0.9)]],
    "star": star(0.5, 0.5, 0.42, 4),
    "cross": [[(0.15, 0.15), (0.85, 0.85)], [(0.15, 0.85), (0.85, 0.15)]],
    "dot": disc(0.5, 0.5, 0.2),
    "arrow": [[(0.1, 0.5), (0.9, 0.5)], [(0.7, 0.65), (0.9, 0.5), (0.7, 0.35)]],
}


def main():
    assert len(SYMBOLS) <= MAX_SYMBOLS
    names = list(SYMBOLS)
    points = 0
    for i, (name, lines) in enumerate(SYMBOLS.items()):
        assert len(name) <= 14, name
        assert not any(name.startswith(n) for n in names[:i]), f"{name} is hidden"
        print(name)
        for line in lines:
            assert all(-0.004 <= v <= 1.004 for p in line for v in p), (name, line)
            words = [f"{min(max(x, 0), 1):.2f},{min(max(y, 0), 1):.2f}" for x, y in line]
            while words:
                head = "L" if len(words) == len(line) else " "
                print(head, " ".join(words[:10]))
                words = words[10:]
            points += len(line) + 1
        print("$")
        points += 1
    assert points < MAX_POINTS, points


if __name__ == "__main__":
    main()

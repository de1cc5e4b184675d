#!/usr/bin/env python3
"""Makes the radar products that the demonstration shows, and the seeds of the fuzz run.

  tools/make_sample.py data                          writes sample.nids and sample_rain.nids there
  tools/make_sample.py --seeds fuzz/corpus/NidsFile  writes small products of every kind there

Both samples are invented. sample.nids is base reflectivity in 256 levels: a squall line that bows
out to the east, stratiform rain behind it, cells ahead of it, ground clutter around the radar.
sample_rain.nids is composite reflectivity as a raster, with a table of its storms: a shield of rain
with bands and the storms of the table in it.
"""

import bz2
import math
import os
import random
import struct
import sys
import zlib

LAT, LON, HEIGHT_FT, SOURCE = 35.333, -97.278, 1277, 302
DAY = 20209  # 1 May 2025, where day 1 is 1 January 1970
HEADING = b"SDUS53 KOUN 012142\r\r\nN0QTLX\r\r\n"
TRAILER = b"\r\r\n\x03"


# The format: numbers are big-endian, offsets count halfwords.

def u2(*values):
    return b"".join(struct.pack(">H", v & 0xFFFF) for v in values)


def u4(value):
    return struct.pack(">I", value & 0xFFFFFFFF)


def runs4(levels):
    """Runs of up to 15 equal levels of up to 15, filled up to a halfword."""
    out = bytearray()
    i = 0
    while i < len(levels):
        n = 1
        while n < 15 and i + n < len(levels) and levels[i + n] == levels[i]:
            n += 1
        out.append(n << 4 | levels[i])
        i += n
    return bytes(out) + b"\0" * (len(out) % 2)


def runs8(levels):
    """Pairs of a run and its level."""
    out = bytearray()
    i = 0
    while i < len(levels):
        n = 1
        while n < 255 and i + n < len(levels) and levels[i + n] == levels[i]:
            n += 1
        out += bytes((n, levels[i]))
        i += n
    return bytes(out)


def radials(rays):
    """Runs; rays are (start angle, width, levels)."""
    out = u2(0xAF1F, 0, max(len(r[2]) for r in rays), 256, 280, 999, len(rays))
    for start, width, levels in rays:
        packed = runs4(levels)
        out += u2(len(packed) // 2, round(start * 10), round(width * 10)) + packed
    return out


def digital(rays):
    """A byte a bin."""
    out = u2(16, 0, max(len(r[2]) for r in rays), 0, 0, 999, len(rays))
    for start, width, levels in rays:
        out += u2(len(levels), round(start * 10), round(width * 10)) + bytes(levels)
    return out


def raster(rows, code=0xBA07):
    out = u2(code, 0x8000, 0x00C0, 0, 0, 1, 0, 1, 0, len(rows), 2)
    for row in rows:
        packed = runs4(row)
        out += u2(len(packed)) + packed
    return out


def raster_pairs(rows):
    out = u2(0xBA0F, 0x8000, 0x00C0, 0, 0, 1, 0, 1, 0, len(rows), 1)
    for row in rows:
        packed = runs8(row)
        out += u2(len(packed)) + packed
    return out


def array(rows):
    out = u2(17, 0, 0, len(rows[0]), len(rows))
    for row in rows:
        packed = runs8(row)
        out += u2(len(packed)) + packed
    return out


def text(value, x, y, chars, code=8):
    return u2(code, len(chars) + 6, value, x, y) + chars.encode("ascii")


def vectors(lines, value=None):
    body = b"".join(u2(*line) for line in lines)
    if value is None:
        return u2(7, len(body)) + body
    return u2(10, len(body) + 2, value) + body


def winds(barbs):
    return u2(4, 10 * len(barbs)) + b"".join(u2(*barb) for barb in barbs)


def other(code, body):
    return u2(code, len(body)) + body


LEVELS_16 = [0x8002] + [5 * i for i in range(1, 16)]


def message(code, layers, pages=(), levels=LEVELS_16, params=(0,) * 10, source=SOURCE, secs=78120,
            mode=2, scan=1):
    """The message from its code on: header, description, symbology, graphic block."""
    symb = b"".join(u2(0xFFFF) + u4(len(layer)) + layer for layer in layers)
    if layers:
        symb = u2(0xFFFF, 1) + u4(len(symb) + 10) + u2(len(layers)) + symb
    graph = b"".join(u2(i + 1, len(page)) + page for i, page in enumerate(pages))
    if pages:
        graph = u2(0xFFFF, 2) + u4(len(graph) + 10) + u2(len(pages)) + graph
    levels = list(levels) + [0] * (16 - len(levels))
    head = u2(code, DAY) + u4(secs + 60) + u4(120 + len(symb) + len(graph)) + u2(source, 0, 3)
    head += (u2(0xFFFF) + u4(round(LAT * 1000)) + u4(round(LON * 1000)) + u2(HEIGHT_FT, code, mode)
             + u2(212, 41, 17, DAY) + u4(secs) + u2(DAY) + u4(secs + 55)
             + u2(params[0], params[1], scan, params[2]) + u2(*levels) + u2(*params[3:]) + u2(0)
             + u4(60 if layers else 0) + u4((120 + len(symb)) // 2 if pages else 0) + u4(0))
    return head + symb + graph


def bzip2_behind(mess):
    """Header and description block plain, the rest compressed."""
    return mess[:120] + bz2.compress(mess[120:], 9)


def zlib_members(mess, size):
    """All compressed, with another heading inside."""
    inner = b"\x40\x0C" + bytes(22) + HEADING + mess
    return b"".join(zlib.compress(inner[i:i + size], 9) for i in range(0, len(inner), size))


# The weather: reflectivity in dBZ over km east and north of the radar.

class Noise:
    """Smooth random values from -1 to 1, with detail down to a third of the first scale."""

    def __init__(self, seed):
        rng = random.Random(seed)
        self.table = [rng.uniform(-1, 1) for _ in range(256)]
        self.order = list(range(256))
        rng.shuffle(self.order)

    def lattice(self, i, j):
        return self.table[self.order[(self.order[i & 255] + j) & 255]]

    def once(self, x, y):
        i, j = math.floor(x), math.floor(y)
        u, v = x - i, y - j
        u, v = u * u * (3 - 2 * u), v * v * (3 - 2 * v)
        low = self.lattice(i, j) * (1 - u) + self.lattice(i + 1, j) * u
        high = self.lattice(i, j + 1) * (1 - u) + self.lattice(i + 1, j + 1) * u
        return low * (1 - v) + high * v

    def __call__(self, x, y, scale):
        x, y = x / scale, y / scale
        return (self.once(x, y) + 0.5 * self.once(2.1 * x, 2.1 * y)
                + 0.3 * self.once(4.3 * x, 4.3 * y)) / 1.8


def bell(v, width):
    return math.exp(-0.5 * (v / width) ** 2)


def step(v, width):
    """From 0 to 1 around v = 0."""
    return 1 / (1 + math.exp(-max(-60.0, min(60.0, v / width))))


NOISE = Noise(1)
FINE = Noise(2)
NOTHING = -99.0
CELLS_AHEAD = ((152, -62, 58, 8), (176, -98, 54, 7), (133, -122, 61, 9), (205, -20, 47, 6))


def squall_line(x, y):
    """The gust front runs north and south, bows out around y = 15 km and is the line's sharp edge."""
    edge = 38 + 62 * bell(y - 15, 62) - 0.0011 * (y - 15) ** 2 + 8 * NOISE(0, y, 20)
    behind = edge - x
    along = step(y + 176, 9) * step(205 - y, 12)
    # The convective line, some of its towers stronger than others.
    towers = 50 + 7 * bell(y - 15, 70) + 11 * NOISE(1.5 * behind, y, 15)
    line = towers - 1.1 * max(0.0, behind - 13) - 6 * max(0.0, 2 - behind)
    # Rain behind the line: a gap, then a broad shield, with a dry notch where air flows in from the
    # rear behind the apex.
    shield = 35 * step(behind - 24, 5) * step(128 - behind, 15) * step(y + 120, 16) * step(190 - y, 18)
    shield += 7 * NOISE(x, y, 22)
    shield -= 24 * bell(y + 6, 15) * step(behind - 44, 9)
    best = max(line * along + NOTHING * (1 - along), shield if shield > 8 else NOTHING)
    # The comma head at the northern end turns the rain about itself.
    r, turn = math.hypot(x - 28, y - 112), math.atan2(y - 112, x - 28)
    best = max(best, 46 * bell(r - 17 - 5 * turn, 7) * step(44 - r, 4) + 4 * NOISE(x, y, 11))
    # Cells ahead, their anvils drawn out to the northeast.
    for cx, cy, top, size in CELLS_AHEAD:
        dx, dy = x - cx, y - cy
        down = (dx + dy) / math.sqrt(2)
        off = (dx - dy) / math.sqrt(2)
        r = math.hypot(dx, dy) * (1 + 0.25 * NOISE(x, y, 9))
        best = max(best, top - 13 * (r / size) ** 1.5,
                   27 * bell(off, 1.3 * size + 0.15 * max(0.0, down)) * step(down, 4)
                   * step(58 - down, 9) + 3 * NOISE(x, y, 12))
    return best if best > 6 else NOTHING


def base_reflectivity(az, km, rng):
    x, y = km * math.sin(math.radians(az)), km * math.cos(math.radians(az))
    dbz = squall_line(x, y) + 2.5 * FINE(x, y, 5)
    # Beyond 150 km the beam passes over the lower half of the rain.
    dbz -= 0.035 * max(0.0, km - 150)
    # Insects and dust in the warm air ahead, then buildings and hills around the radar.
    if km < 80:
        dbz = max(dbz, 14 - km / 7 - max(0.0, -x) / 2 + 7 * FINE(x, y, 3))
    if km < 32 and FINE(x + 400, y, 4) > 0.05 + km / 90:
        dbz = max(dbz, rng.uniform(22, 54) - km / 2)
    return dbz


def sample():
    """Code 94; a level L means L / 2 - 33 dBZ in the field's own count, 0 is nothing."""
    rng = random.Random(3)
    rays = []
    strongest = 0
    for az in range(360):
        levels = []
        for b in range(460):
            dbz = base_reflectivity(az + 0.5, b + 0.5, rng)
            floor = -8 + 20 * math.log10((b + 1) / 100) if b > 0 else -40  # what the radar can see
            level = round((min(dbz, 68) + 33) * 2)
            levels.append(level if dbz > max(floor, -4) and level > 1 else 0)
            strongest = max(strongest, levels[-1])
        rays.append((az, 1, levels))
    mess = message(94, [digital(rays)], levels=[-320, 5, 254],
                   params=(0, 0, 5, strongest // 2 - 33, 0, 0, 0, 1, 2, 0x8F6E))
    return b"\x01\r\r\n812 \r\r\n" + HEADING + bzip2_behind(mess) + TRAILER


STORMS = (  # id, km east, km north, dBZ, size km, hail %, severe hail %, hail inches, meso, towards, knots
    ("A3", -62, -88, 61, 9, 100, 70, 1.75, 6, 238, 34),
    ("B1", 24, -52, 57, 8, 90, 40, 1.00, 0, 241, 31),
    ("K7", 88, 12, 55, 7, 60, 20, 0.75, 0, 244, 29),
    ("M2", -118, -36, 52, 7, 40, 0, 0.50, 0, 236, 33),
    ("R5", 126, 92, 49, 6, 10, 0, 0.25, 0, 250, 28),
)


def rain(x, y):
    """A warm front from west to east with its shield to the north, and bands of storms in it."""
    north = y - 18 - 0.22 * x - 14 * NOISE(x, 0, 60)
    shield = 31 * step(north, 12) * step(150 - north - 0.2 * abs(x), 22) + 8 * NOISE(x, y, 30)
    band = 0.0
    for place, width in ((-64, 7), (-22, 6), (24, 8), (72, 6)):
        band = max(band, bell(north - place - 9 * NOISE(x, y, 45), width))
    best = max(shield, 41 * band * step(NOISE(x, y, 38) + 0.25, 0.08) + 6 * NOISE(x, y, 10))
    for _, cx, cy, top, size, *_ in STORMS:
        r = math.hypot(x - cx, y - cy) * (1 + 0.2 * NOISE(x, y, 8))
        best = max(best, top + 3 - 11 * (r / size) ** 1.4)
    return best + 2 * FINE(x, y, 6)


def storm_pages():
    """The table of storms, five to a page, in the columns that its readers count."""
    head = " STM ID  AZ/RAN TVS  MDA  POSH/POH/MX SIZE VIL DBZM  HT  TOP  FCST MVMT "
    lines = [head]
    for name, x, y, dbz, size, hail, severe, inches, meso, towards, knots in STORMS:
        az, ran = math.degrees(math.atan2(x, y)) % 360, math.hypot(x, y) / 1.852
        small = "<" if inches < 0.5 else " "
        lines.append("    %-4s%3d/%3d NONE %4s  %3d/%3d/%s%4.2f    %2d  %2d %4.1f  %4.1f  %3d/%3d  " % (
            name, round(az), round(ran), meso or "NONE", severe, hail, small, max(inches, 0.5),
            round(size * 4.5), dbz, 8 + size * 0.9, 18 + size * 2.4, towards, knots))
    assert all(len(line) < 100 for line in lines)
    frame = vectors([(0, 0, 511, 0), (0, 0, 0, 56), (511, 0, 511, 56), (0, 56, 511, 56)], value=1)
    return [frame + b"".join(text(0, 0, 1 + 9 * i, line) for i, line in enumerate(lines))]


def sample_rain():
    """Code 37 at 1 km."""
    size = 464
    rows = []
    for j in range(size):
        row = []
        for i in range(size):
            x, y = i + 0.5 - size / 2, size / 2 - j - 0.5
            seen = math.hypot(x, y) < 230
            row.append(min(15, max(0, math.floor(rain(x, y) / 5))) if seen else 0)
        rows.append(row)
    mess = message(37, [raster(rows)], storm_pages(),
                   params=(0, 0, 0, max(s[3] for s in STORMS) + 2, 0, 0, 0, 0, 0, 0))
    return HEADING.replace(b"N0Q", b"NCR") + mess


def seeds():
    """Small products, one for each road through the reader."""
    rays = [(350 + i, 1, [0, 1, 2, 2, 2, 9, 15, 0]) for i in range(3)]
    fine = [(i, 1, [0, 1, 2, 19, 20, 127, 129, 254]) for i in range(3)]
    cells = [[0, 1, 1, 5], [2, 2, 3, 15]]
    notes = text(1, 20, 30, "A3") + vectors([(1, 2, 3, 4)]) + vectors([(1, 2, 3, 4)], 2)
    barbs = winds([(1, 100, 200, 240, 35), (3, 110, 200, 250, 60)])
    pages = [text(0, 0, 1, " STM ID  AZ/RAN") + vectors([(0, 0, 511, 0)], 1), text(0, 0, 1, "NEXT")]
    base = message(19, [radials(rays) + notes], pages, params=(0, 0, 5, 49, 0, 0, 0, 0, 0, 0))
    velocity = message(99, [digital(fine)], levels=[-635, 5, 254])
    unread = b"".join(other(c, b"ABCDEFGH") for c in (18, 5, 6, 9, 3, 11, 12, 13, 14, 15))
    return {
        "bare": base,
        "heading": HEADING + base,
        "start_line": b"\x01\r\r\n812 \r\r\n" + HEADING + base + TRAILER,
        "stars": b"** 1 **\n2\n" + base,
        "control": b"\x40\x0C" + bytes(22) + HEADING + base,
        "zlib": HEADING + zlib_members(base, 4000),
        "zlib_members": HEADING + zlib_members(base, 90) + TRAILER,
        "bzip2": HEADING + bz2.compress(base),
        "bzip2_behind": HEADING + bzip2_behind(velocity) + TRAILER,
        "velocity": HEADING + velocity,
        "liquid": HEADING + message(134, [digital(fine)], levels=[0x59AB, 0x4400, 20, 0x54DC, 0x593E]),
        "tops": HEADING + message(135, [digital(fine)], levels=[127, 1, 2, 128]),
        "precipitation": HEADING + message(138, [digital(fine)], levels=[0, 2, 256]),
        "long_range": HEADING + message(186, [digital(fine)]),
        "raster": HEADING + message(37, [raster(cells)], pages),
        "raster_pairs": HEADING + message(38, [raster_pairs(cells)]),
        "array": HEADING + message(81, [array(cells), other(18, b"12345678")], levels=[-60, 125, 256]),
        "wind_profile": HEADING + message(48, [vectors([(1, 2, 3, 4)], 1) + notes + barbs]),
        "storm_motion": HEADING + message(56, [radials(rays)], params=(0, 0, 5, -60, 64, 0, 0, 300, 2400, 0)),
        "rain_total": HEADING + message(80, [radials(rays)], params=(0, 0, 0, 47, 20208, 134, 0, 0, 0, 0)),
        "mosaic": HEADING + message(180, [raster(cells)], source=10001, params=(0,) * 9 + (4,)),
        "without_reader": HEADING + message(58, [unread + notes], pages),
        "unknown_packet": HEADING + message(141, [other(20, b"12345678") + notes], pages),
        "flags": HEADING + message(78, [radials(rays)], levels=[0xA002, 0x2800, 0x1137, 0x0C05, 0x8001]),
        "odd_winds": HEADING + message(48, [barbs[:3] + b"\x0F" + barbs[4:]]),
        "free_text": b"NOUS63 KOUN 012142\r\r\nFTMTLX\r\r\nNOTHING TO SEE\r\r\n",
    }


def write(folder, name, data):
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as out:
        out.write(data)


def main(args):
    if len(args) == 2 and args[0] == "--seeds":
        for name, data in seeds().items():
            write(args[1], name, data)
    elif len(args) == 1 and not args[0].startswith("-"):
        write(args[0], "sample.nids", sample())
        write(args[0], "sample_rain.nids", sample_rain())
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])

#!/usr/bin/env python3
"""Makes radar files to try scopeview with; all weather in them is invented.

  tools/make_examples.py DIR

DIR becomes a data path as data/name.cnv has it: a loop of composite reflectivity with storm tables,
nids/TLX/NCR/TLX_NCR_20250430_2100.nids to ..._2150.nids, and the winds above the radar,
nids/TLX/NVW/TLX_NVW_20250430_2142.nids; a Level II volume of two cuts, the second with velocity,
lev2/KTLX/KTLX20250430_2142.ar2v. For con_path and text_path there are coded reports: summaries of the
nation, rcm/202504302130.rcm and mdr/2025043021.mdr, and bulletins of TLX, rcm/TLX.txt and
mdr/2025043021.txt. Beside them lies a mosaic of the United States, mosaic.now.
"""

import bz2
import math
import os
import struct
import sys

sys.dont_write_bytecode = True
import make_sample as sample
from make_sample import FINE, NOISE, STORMS, message, rain, squall_line, text, vectors, winds

FRAMES = 6
EAST, NORTH = 7, 3  # km from frame to frame
SIZE = 464


def loop():
    """The rain of the sample, moving; the samples' own frame is the last but one."""
    wide, high = SIZE + EAST * FRAMES, SIZE + NORTH * FRAMES
    shift = FRAMES - 2
    field = [[rain(i + 0.5 - SIZE / 2 - EAST, SIZE / 2 - j - 0.5 + NORTH * shift)
              for i in range(-EAST * shift, wide - EAST * shift)] for j in range(high)]
    for frame in range(FRAMES):
        step = frame - shift
        left, top = EAST * (FRAMES - 1 - frame), NORTH * frame
        rows = []
        for j in range(SIZE):
            y = SIZE / 2 - j - 0.5
            rows.append([min(15, max(0, math.floor(field[top + j][left + i] / 5)))
                         if math.hypot(i + 0.5 - SIZE / 2, y) < 230 else 0 for i in range(SIZE)])
        sample.STORMS = tuple((s[0], s[1] + EAST * step, s[2] + NORTH * step, *s[3:]) for s in STORMS)
        strongest = max(s[3] for s in STORMS) + 2
        mess = sample.message(37, [sample.raster(rows)], sample.storm_pages(),
                              params=(0, 0, 0, strongest, 0, 0, 0, 0, 0, 0), secs=75600 + 600 * frame)
        heading = sample.HEADING.replace(b"N0Q", b"NCR")
        yield f"nids/TLX/NCR/TLX_NCR_20250430_21{10 * frame:02d}.nids", heading + mess
    sample.STORMS = STORMS


# Level II: messages 31 behind a volume header, in bzip2 blocks.

def moment(name, levels, spacing, scale, offset):
    return (name + struct.pack(">IHHHHHBBff", 0, len(levels), 0, spacing, 0, 0, 0, 8, scale, offset)
            + bytes(levels))


def message31(azimuth, cut, moments):
    volume = b"RVOL" + struct.pack(">HHffh22xHH", 44, 0x0101, sample.LAT, sample.LON, 370, 212, 0)
    blocks = [volume, b"RELV" + struct.pack(">HHf", 12, 12, 0),
              b"RRAD" + struct.pack(">H10xHH", 20, 827, 0), *moments]
    at, offsets = 32 + 4 * 6, []
    for block in blocks:
        offsets.append(at)
        at += len(block)
    offsets += [0] * (6 - len(offsets))
    body = b"".join(blocks)
    body += b"\0" * (len(body) % 2)
    head = b"KTLX" + struct.pack(">IHHfHHBBBBfBBH", 78120000, sample.DAY, int(azimuth) + 1, azimuth, 0,
                                 at, 2, 1, cut, 1, 0.5, 0, 0, 5)
    head += struct.pack(">6I", *offsets) + body
    return (bytes(12) + struct.pack(">HBBHHIHH", (len(head) + 16) // 2, 0, 31, 7, sample.DAY, 78120000,
                                    1, 1) + head)


def volume():
    """The squall line, and the wind that it moves with; a couplet where a storm turns."""
    out = b"AR2V0006.123" + struct.pack(">II", sample.DAY, 78120000) + b"KTLX"
    rays = []
    for azimuth in range(360):
        refl, vel = [], []
        east, north = math.sin(math.radians(azimuth + 0.5)), math.cos(math.radians(azimuth + 0.5))
        for gate in range(460):
            x, y = (gate + 0.5) * east, (gate + 0.5) * north
            dbz = squall_line(x, y) + 2 * FINE(x, y, 5)
            refl.append(max(2, min(255, round((dbz + 33) * 2))) if dbz > 0 and gate < 300 else 0)
            u, v = 9 + 0.05 * gate, 5 + 0.02 * gate
            for cx, cy in ((42, 60), (-20, 150)):
                r = math.hypot(x - cx, y - cy)
                turn = 22 * (r / 4) * math.exp(1 - r / 4)
                u, v = u - turn * (y - cy) / max(r, 0.1), v + turn * (x - cx) / max(r, 0.1)
            speed = u * east + v * north + 1.5 * NOISE(x, y, 9)
            vel.append(max(2, min(255, round(speed * 2 + 129))) if dbz > 5 and gate < 230 else 0)
        rays.append((azimuth + 0.5, refl, vel))
    for cut in (1, 2):
        for first in range(0, 360, 120):
            block = b""
            for azimuth, refl, vel in rays[first:first + 120]:
                moments = [moment(b"DREF", refl, 1000, 2.0, 66.0)]
                if cut == 2:
                    moments.append(moment(b"DVEL", vel, 1000, 2.0, 129.0))
                block += message31(azimuth, cut, moments)
            packed = bz2.compress(block)
            out += struct.pack(">i", len(packed)) + packed
    return "lev2/KTLX/KTLX20250430_2142.ar2v", out


def mosaic():
    """A NOWrad file on latitude and longitude: lines of runs of 16 levels."""
    wide, high, step = 600, 260, math.radians(0.1)
    out = bytes((0, 0xF0, 9, 4)) + b"demo" + bytes((7, 0, 0xF0, 10)) + b"%d %d" % (high, wide)
    out += bytes((0, 0xF0, 3)) + b"NOWrad Master       21:45 30-APR-25".ljust(80)
    out += bytes((0, 0xF0, 11)) + b"C%f %f 0.0 %f %f" % (math.radians(-96), math.radians(50), step, step)
    for j in range(high):
        out += bytes((0, 0xF0, 12)) + struct.pack("<H", j + 1)
        levels = []
        for i in range(wide):
            x, y = 8.5 * i, -11.1 * j
            levels.append(min(15, max(0, int(echoes(x, y) / 5))))
        while levels:
            n = 1
            while n < 13 and n < len(levels) and levels[n] == levels[0]:
                n += 1
            out += bytes(((n - 1) << 4 | levels[0],))
            del levels[:n]
    return "mosaic.now", out + bytes((0, 0xF0, 2))


def echoes(x, y):
    """Reflectivity of the nation's weather, dBZ over km on a mosaic."""
    mass = NOISE(x + 300, y, 620) + 0.5 * NOISE(y, x, 160) - 0.42
    return 12 + 95 * mass + 16 * NOISE(x, y, 45) if mass > 0 else 0


def plane(lat, lon):
    """Km on the plane that the grids of coded reports share: polar stereographic, upright at 105 west."""
    r = 6371.22 * (1 + math.sin(math.radians(60))) * math.tan(math.radians(90 - lat) / 2)
    return r * math.sin(math.radians(lon + 105)), -r * math.cos(math.radians(lon + 105))


def nation(wide, high, spacing):
    """Levels of a national mosaic, the sample's rain around the radar."""
    middle, radar = plane(39.579372, -97.421463), plane(sample.LAT, sample.LON)
    turn = math.radians(sample.LON + 105)
    rows = []
    for j in range(high):
        row = []
        for i in range(wide):
            x, y = spacing * (i - (wide - 1) / 2), spacing * ((high - 1) / 2 - j)
            dbz = echoes(spacing * i, spacing * j)
            dx, dy = middle[0] + x - radar[0], middle[1] + y - radar[1]
            if math.hypot(dx, dy) < 270:
                factor = (1 + math.sin(math.radians(sample.LAT))) / (1 + math.sin(math.radians(60)))
                dx, dy = factor * dx, factor * dy
                dbz = max(dbz, rain(dx * math.cos(turn) + dy * math.sin(turn),
                                    dy * math.cos(turn) - dx * math.sin(turn)))
            row.append(level(dbz))
        rows.append(row)
    return rows


# Winds above the radar, as code 48 has them: a page of 512 by 512, times to the right, heights up.

HEIGHTS = (*range(1, 21), 22, 24, 25, 26, 28, 30, 35, 40, 45, 50)  # thousands of feet
TIMES = 11


def wind_profile():
    """Southeasterly wind near the ground that veers with height and freshens as time goes on."""
    left, right, bottom = 52, 511, 479
    times = [76 + 38 * i for i in range(TIMES)]
    frame = [(0, 0, 511, 0), (511, 0, 511, 511), (511, 511, 0, 511), (0, 511, 0, 0),
             (left, 0, left, 511), (0, bottom, right, bottom)]
    frame += [(x + 14, bottom - 10, x + 14, bottom) for x in times]
    places = {height: 455 - 15 * i for i, height in enumerate(HEIGHTS)}
    layer = vectors(frame, value=6)
    layer += vectors([(left + 1, y, right - 1, y) for h, y in places.items() if h % 5 == 0])
    layer += text(6, 2, 2, "ALT KFT") + text(6, 11, 490, "TIME")
    layer += b"".join(text(6, 31, y - 4, f"{h:2d}") for h, y in places.items())
    minute = 21 * 60 + 42 - 5 * (TIMES - 1)
    fastest = 0
    for i, x in enumerate(times):
        layer += text(6, x, 490, f"{minute // 60:02d}{minute % 60:02d}")
        minute += 5
        for height, y in places.items():
            noise = NOISE(3 * i, height, 6)
            if height > 30 + 2 * i or (height > 16 and noise > 0.45):
                layer += text(7, x + 7, y - 4, "ND")
                continue
            speed = round(12 + 1.2 * i * math.exp(-height / 8) + 1.7 * height + 5 * noise)
            fastest = max(fastest, speed)
            error = min(5, 1 + int(max(0.0, 3 * noise + height / 12)))  # classes of 4 knots
            layer += winds([(error, x + 14, y, round(140 + 95 * (1 - math.exp(-height / 7)) + 9 * noise),
                             speed)])
    mess = message(48, [layer], levels=[0x8000, 0, 4, 8, 12, 16] + [0x8000] * 10,
                   params=(0, 0, 0, fastest, 230, 350, 0, 0, 0, 0))
    heading = sample.HEADING.replace(b"N0Q", b"NVW")
    return "nids/TLX/NVW/TLX_NVW_20250430_2142.nids", heading + mess


# Coded reports.

LEVELS = (20, 30, 40, 45, 50, 55)  # dBZ from which a level holds


def level(dbz):
    return sum(dbz >= limit for limit in LEVELS)


def box(cells, spacing):
    """Levels of the sample's rain in a square box of cells, the radar at its site's cell (48 of 100)."""
    size = spacing * 100 * (1 + math.sin(math.radians(sample.LAT))) / (1 + math.sin(math.radians(60)))
    turn = math.radians(sample.LON + 105)
    site = cells * 12 // 26 if cells < 100 else 48
    rows = []
    for j in range(cells):
        row = []
        for i in range(cells):
            x, y = size * (i - site), size * (site - j)
            east, north = x * math.cos(turn) + y * math.sin(turn), y * math.cos(turn) - x * math.sin(turn)
            row.append(level(rain(east, north)) if math.hypot(x, y) < 240 else 0)
        rows.append(row)

    def cell(east, north):
        x, y = (east * math.cos(turn) - north * math.sin(turn),
                east * math.sin(turn) + north * math.cos(turn))
        return site + round(x / size), site - round(y / size)
    return rows, cell


def place(east, north):
    """Degrees north and east of a place by km from the radar."""
    lat = sample.LAT + north / 111.2
    return lat, sample.LON + east / 111.2 / math.cos(math.radians(lat))


def groups(row):
    """First column and levels of each stretch of echoes in a row."""
    start = None
    for i, value in enumerate([*row, 0]):
        if value and start is None:
            start = i
        elif not value and start is not None:
            yield start, row[start:i]
            start = None


def rcm_summary():
    lines = ["ZQVRAD", "2130Z 30 APR 25", "RCM SUMMARY"]
    for y, levels in enumerate(nation(452, 356, 11.906)):
        row = "".join(" 123456"[i] for i in levels)
        if row.strip():
            lines.append(f"+{y:3d}")
            lines += [row[i:i + 78] for i in range(0, 452, 78)]
    lines += ["** TLX 001 PCPN", "Z 480 %8.3f %8.3f" % place(-62, -88), "T 01 %8.3f %8.3f" % place(-60, -90),
              "M 13 %8.3f %8.3f" % place(-64, -86)]
    for name, x, y, dbz, size, hail, severe, _, _, towards, knots in STORMS:
        state = 2 if severe >= 50 else 1 if hail >= 50 else 0
        lines.append("S %3s %8.3f %8.3f %03d %03d %3d %d"
                     % (name, *place(x, y), towards, knots, 10 * (18 + size * 2.4), state))
    lines += ["** INX 557 PCPN", "** DDC 350 CLAR", "** FDR 305 OM", "** VNX 558 NE"]
    return "rcm/202504302130.rcm", "\n".join(lines) + "\n"


def rcm_bulletin():
    rows, cell = box(100, 0.11906)

    def code(x, y):
        return chr(65 + y // 4) + chr(65 + x // 4) + chr(65 + x % 4 * 4 + y % 4)
    coded = []
    for y, row in enumerate(rows):
        for x, levels in groups(row):
            out = ""
            while levels:
                n = 1
                while n < len(levels) and levels[n] == levels[0] and n < 27:
                    n += 1
                out += str(levels[0]) + (chr(63 + n) if n > 1 else "")  # a letter repeats the digit
                del levels[:n]
            coded.append(code(x, y) + out)
    spots = [(s, code(*cell(s[1], s[2]))) for s in STORMS]
    text_ = "1234 ROBUU 0001 /NEXRAA 0001 3004252142 UNEDITED /MDPCPN /SC21 /NI%04d: " % len(coded)
    text_ += ",".join(coded) + ", /MT480:" + spots[0][1] + " /NCEN%02d: " % len(spots)
    text_ += ",".join("C%s%s %03d%03d" % (s[0], at, s[9], s[10]) for s, at in spots) + ", /ENDAA "
    text_ += "/NEXRCC 0001 3004252142 /NTVS01: TVS01%s, /NMES01: M13%s, " % (spots[0][1], spots[0][1])
    text_ += "/NCEN%02d: " % len(spots)
    text_ += ",".join("C%s%s S%03dH%s" % (s[0], at, 10 * (18 + s[4] * 2.4),
                                          "H" if s[6] >= 50 else "P" if s[5] >= 50 else "N")
                      for s, at in spots) + " /ENDCC\n"
    return "rcm/TLX.txt", "SDUS43 KOUN 302142\nRCMTLX\n" + text_


def mdr_summary():
    lines = ["ZQVRAD", "2135Z 30 APR 25", "SDUS SUMMARY"]
    rows = nation(113, 89, 47.624)
    for column in (80, 40, 0):
        wide = 33 if column == 80 else 40
        lines.append(f"+ 01 {column + 1:03d}")
        lines += ["".join(" 123456"[i] for i in row[column:column + wide]) for row in rows[:88]]
    lines += ["SDXX STATIONS", "TLX AREA TRW+ NC 450,215058 A2425 C2230 *",
              "INX AREA R- * 210,030040 A2420 * *", "DDC NE * * * * * *", "FDR OM * * * * * *"]
    return "mdr/2025043021.mdr", "\n".join(lines) + "\n"


def mdr_bulletin():
    rows, _ = box(26, 0.47624)
    text_ = "SDUS53 KOKC 302135\nTLX 2135 AREA 4TRW+/NC 340/110 190/60 A2425 C2230 MT 450 AT 215/58\n^"
    text_ += " ".join(chr(65 + y) + chr(65 + x) + "".join(map(str, levels))
                      for y, row in enumerate(rows) for x, levels in groups(row))
    return "mdr/2025043021.txt", text_ + "\n\n"


def main(args):
    if len(args) != 1 or args[0].startswith("-"):
        sys.exit(__doc__)
    reports = [rcm_summary(), rcm_bulletin(), mdr_summary(), mdr_bulletin()]
    files = [*loop(), wind_profile(), volume(), mosaic()]
    for name, data in files + [(name, report.encode("ascii")) for name, report in reports]:
        path = os.path.join(args[0], name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as out:
            out.write(data)


if __name__ == "__main__":
    main(sys.argv[1:])

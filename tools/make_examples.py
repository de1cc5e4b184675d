#!/usr/bin/env python3
"""Makes radar files to try scopeview with; all weather in them is invented.

  tools/make_examples.py DIR

DIR becomes a data path as data/name.cnv has it: a loop of composite reflectivity with storm tables,
nids/TLX/NCR/TLX_NCR_20250430_2100.nids to ..._2150.nids, a Level II volume of two cuts, the second
with velocity, lev2/KTLX20250430_2142.ar2v, and beside them a mosaic of the United States, mosaic.now.
"""

import bz2
import math
import os
import struct
import sys

sys.dont_write_bytecode = True
import make_sample as sample
from make_sample import FINE, NOISE, STORMS, rain, squall_line

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
    return "lev2/KTLX20250430_2142.ar2v", out


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
            mass = NOISE(x + 300, y, 620) + 0.5 * NOISE(y, x, 160) - 0.42
            dbz = 12 + 95 * mass + 16 * NOISE(x, y, 45) if mass > 0 else 0
            levels.append(min(15, max(0, int(dbz / 5))))
        while levels:
            n = 1
            while n < 13 and n < len(levels) and levels[n] == levels[0]:
                n += 1
            out += bytes(((n - 1) << 4 | levels[0],))
            del levels[:n]
    return "mosaic.now", out + bytes((0, 0xF0, 2))


def main(args):
    if len(args) != 1 or args[0].startswith("-"):
        sys.exit(__doc__)
    for name, data in [*loop(), volume(), mosaic()]:
        path = os.path.join(args[0], name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as out:
            out.write(data)


if __name__ == "__main__":
    main(sys.argv[1:])

#!/usr/bin/env python3
"""Makes the products that scripts/bench.sh draws, into the directory given.

    make_bench_products.py DIR

Each is filled to about half with echoes, as a widespread storm would be: a 16-level radial, a 256-level radial of 720
by 1840, a 16-level raster, a wind profile, a Level II volume of six cuts of 720 radials in bzip2 records, a Kavouras
mosaic of 5120 by 5760 pixels, and a summary of coded messages with and without its stations.
"""
import bz2
import math
import os
import re
import struct
import sys


def u2(v):
    return struct.pack(">H", v & 0xFFFF)


def u4(v):
    return struct.pack(">I", v & 0xFFFFFFFF)


def product(code, words, symbology, compress=False):
    """The file: a bulletin heading, the message header, the description block, the symbology."""
    layer = u2(0xFFFF) + u4(len(symbology)) + symbology
    block = u2(0xFFFF) + u2(1) + u4(len(layer) + 10) + u2(1) + layer
    if compress:
        block = bz2.compress(block)
    words = (words + [0] * 16)[:16]
    desc = u2(0xFFFF) + u4(35333) + u4(-97278) + u2(1277) + u2(code) + u2(2) + u2(212) + u2(1) + u2(1)
    desc += u2(18752) + u4(60000) + u2(18752) + u4(60020) + u2(0) * 3 + u2(5)
    desc += b"".join(u2(w) for w in words) + u2(55) + u2(0) * 7 + u4(60) + u4(0) + u4(0)
    head = u2(code) + u2(18752) + u4(60000) + u4(18 + len(desc) + len(block)) + u2(302) + u2(0) + u2(3)
    return b"SDUS54 KTLX 051640\r\r\nN0RTLX\r\r\n" + head + desc + block


def echo(x, y):
    """Intensity of a made-up storm from 0 to 1 at a place in fractions of the range."""
    return max(0.0, 0.5 * math.sin(5 * x + 2 * math.sin(3 * y)) * math.cos(4 * y - x) + 0.25)


def runs(levels):
    out = bytearray()
    i = 0
    while i < len(levels):
        n = 1
        while n < 15 and i + n < len(levels) and levels[i + n] == levels[i]:
            n += 1
        out.append(n << 4 | levels[i])
        i += n
    return bytes(out)


def radials(nrad, nbin, levels, digital):
    out = u2(16 if digital else 0xAF1F) + u2(0) + u2(nbin) + u2(0) + u2(0) + u2(1000) + u2(nrad)
    for r in range(nrad):
        angle = 2 * math.pi * r / nrad
        row = [levels(echo(b / nbin * math.sin(angle), b / nbin * math.cos(angle))) for b in range(nbin)]
        data = bytes(row) if digital else runs(row)
        if len(data) % 2:
            data += b"\0"
        step = 3600 // nrad
        out += u2(len(data) if digital else len(data) // 2) + u2(r * step) + u2(step) + data
    return out


def raster(n, levels):
    out = u2(0xBA0F) + u2(0x8000) + u2(0x00C0) + u2(0) + u2(0) + u2(1) + u2(0) + u2(1) + u2(0) + u2(n) + u2(2)
    for j in range(n):
        row = runs([levels(echo(2 * i / n - 1, 2 * j / n - 1)) for i in range(n)])
        out += u2(len(row)) + row
    return out


def profile():
    grid = [(50, y, 500, y) for y in range(20, 500, 16)]
    out = u2(10) + u2(8 * len(grid) + 2) + u2(0) + b"".join(u2(v) for line in grid for v in line)
    barbs = [(1 + i % 5, 80 + 40 * i, y, 180 + 5 * i + y // 4, 10 + y // 6) for i in range(11) for y in range(30, 490, 16)]
    out += u2(4) + u2(10 * len(barbs)) + b"".join(u2(v) for barb in barbs for v in barb)
    for k, y in enumerate(range(20, 500, 16)):
        text = b"%3d" % (50 - k)
        out += u2(8) + u2(len(text) + 6) + u2(0) + u2(10) + u2(y) + text
    return out


def f4(v):
    return struct.pack(">f", v)


def block(name, levels, scale, offset, first=2125, width=8):
    return name + u4(0) + u2(len(levels) * 8 // width) + u2(first) + u2(250) + u2(0) * 2 + bytes([0, width]) \
        + f4(scale) + f4(offset) + levels


def radial(cut, azimuth, blocks):
    """Message 31 with its transport header."""
    blocks = [b"RVOL" + u2(44) + u2(0x101) + f4(35.333) + f4(-97.278) + u2(370) + bytes(22) + u2(212) + u2(0),
              b"RELV" + u2(12) + u2(12) + f4(0), b"RRAD" + u2(20) + bytes(10) + u2(827) + u2(0)] + blocks
    pointers = b""
    at = 32 + 4 * max(6, len(blocks))
    for data in blocks:
        pointers += u4(at)
        at += len(data)
    pointers = pointers.ljust(4 * max(6, len(blocks)), b"\0")
    body = b"KTLX" + u4(1000) + u2(18093) + u2(1) + f4(azimuth) + u2(0) + u2(at) + bytes([1, 1, cut, 1]) \
        + f4(0.5 * cut) + u2(0) + u2(len(blocks)) + pointers + b"".join(blocks)
    body += b"\0" * (len(body) % 2)
    return bytes(12) + u2((len(body) + 16) // 2) + bytes([0, 31]) + u2(7) + u2(18093) + u4(1000) + u2(1) * 2 + body


def volume(nrad, ngate, ncut):
    """Cuts by turns of reflectivity with dual polarisation, and of reflectivity, velocity and width."""
    seed = 1
    rows = []
    for r in range(nrad):
        angle = 2 * math.pi * r / nrad
        row = bytearray()
        for b in range(ngate):
            v = echo(b / ngate * math.sin(angle), b / ngate * math.cos(angle))
            seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
            row.append(min(250, 40 + int(v * 300) + (seed >> 16 & 7)) if v > 0.02 else 0)
        rows.append(bytes(row))
    speed = bytes(0 if i == 0 else 129 + (i - 130) // 3 for i in range(256))
    out = b"AR2V0006.001" + u4(18093) + u4(43200000) + b"KTLX"
    for cut in range(1, ncut + 1):
        for start in range(0, nrad, 120):
            part = b""
            for r in range(start, start + 120):
                # The echoes of each cut lie a little further round and end earlier.
                row = rows[(r + 30 * cut) % nrad][:ngate - 100 * cut + 100]
                short = row[:1192]
                if cut % 2:
                    more = [block(b"DZDR", short, 16.0, 128.0), block(b"DPHI", short + short, 2.8, 2.0, width=16),
                            block(b"DRHO", short, 300.0, -60.0)]
                else:
                    more = [block(b"DVEL", short.translate(speed), 2.0, 129.0), block(b"DSW ", short, 2.0, 129.0)]
                part += radial(cut, 360.0 * r / nrad, [block(b"DREF", row, 2.0, 66.0)] + more)
            packed = bz2.compress(part)
            out += u4(-len(packed) if cut == ncut and start + 120 == nrad else len(packed)) + packed
    return out


def mosaic():
    """Blocks of echo of ragged levels, with empty ones between."""
    width, height, step = 5120, 5760, 8
    head = bytearray(2048)
    head[2012:2024] = b"184530030525"
    out = head
    seed = 1
    for top in range(0, height, step):
        levels = [int(echo(x / width * 6 - 3, top / height * 6 - 3) * 20) for x in range(0, width, step)]
        for _ in range(step):
            row = bytearray()
            for level in levels:
                if level:
                    seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
                    for k in range(0, step, 4):
                        row += bytes([max(0, level - (seed >> 16 + k & 1))]) * 4
                else:
                    row += bytes(step)
            i = 0
            while i < width:
                n = 1
                while i + n < width and row[i + n] == row[i]:
                    n += 1
                code = min(row[i], 16) - 1 if row[i] else 16
                first = min(n, 3)
                out.append(code | first << 6)
                if i + n == width:
                    out += b"#" if n > first else b""
                else:
                    for left in range(n - first, 0, -255):
                        out += b"$" + bytes([min(left, 255)])
                i += n
    return bytes(out) + b"!"


def summary(num_stations):
    """A mosaic of 452 by 356 levels, and stations with four storms and a vortex each."""
    out = "ZQVRAD\n2015Z 20 MAY 20\nRCM SUMMARY\n"
    for y in range(356):
        row = "".join(chr(ord("0") + min(6, int(echo(x / 226 - 1, y / 178 - 1) * 12))) for x in range(452))
        row = row.replace("0", " ")
        out += f"+{y:3d}\n" + "".join(row[i:i + 78] + "\n" for i in range(0, 452, 78))
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "rad.cty")) as cities:
        found = [re.search(r" (\w{3}) -\d- +([-\d.]+) +([-\d.]+)", line) for line in cities]
    places = [(m[1], float(m[2]), float(m[3])) for m in found if m]
    inside = [p for p in places if 25 < p[1] < 50 and -126 < p[2] < -66]
    for i, (name, lat, lon) in enumerate(inside[:num_stations]):
        out += f"** {name} {i:03d} PCPN\nZ {100 + i:3d} {lat + 0.3:8.3f} {lon:8.3f}\n"
        out += f"T  01 {lat - 0.3:8.3f} {lon:8.3f}\n"
        for k in range(4):
            out += f"S  A{k} {lat - 0.5 + k // 2:8.3f} {lon - 0.5 + k % 2:8.3f} 240 {10 + i % 50:03d} {200 + i:3d} {k % 3}\n"
    return out.encode()


def main():
    where = sys.argv[1]
    dbz = [0x8002] + list(range(5, 80, 5))
    files = {
        "radial16": product(19, dbz, radials(360, 230, lambda v: min(15, int(v * 20)), False)),
        "radial256": product(94, [0xFEC0, 5, 254],
                             radials(720, 1840, lambda v: min(255, int(v * 240)) if v > 0 else 0, True), True),
        "raster": product(37, dbz, raster(464, lambda v: min(15, int(v * 20)))),
        "profile": product(48, [0, 4, 8, 12, 16], profile()),
    }
    for name, data in files.items():
        with open(os.path.join(where, name + ".nids"), "wb") as file:
            file.write(data)
    with open(os.path.join(where, "volume.lev2"), "wb") as file:
        file.write(volume(720, 1832, 6))
    with open(os.path.join(where, "mosaic.kav"), "wb") as file:
        file.write(mosaic())
    for name, num_stations in (("stations", 150), ("bare", 0)):
        with open(os.path.join(where, name + ".rcm"), "wb") as file:
            file.write(summary(num_stations))


main()

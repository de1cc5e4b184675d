#!/usr/bin/env python3
"""Makes the maps of data/ out of topologies of borders, and of the city files there.

    tools/make_maps.py WORLD_ATLAS US_ATLAS data

The first two are the unpacked npm packages world-atlas and us-atlas ("npm pack world-atlas us-atlas"). A topology
keeps each stretch between two knots as one arc, which all shapes share that meet there. So an arc that only one
country uses is coast, one that two use is a border, and each is written once:

    cont.map, country.map      coasts and borders of countries, 1:10 million
    cont50.map, country50.map  the same, 1:50 million
    us_states.map              borders between states, and the shores of the Great Lakes
    us_counties.map            borders between counties of one state
    places.kml                 towns, by their stations; KML because no other map has names

The maps are binary (lib/MapFile.h). A point that lies within 50 m of the last one is left out; lines are cut at 180
degrees, and where they get long, so that the box in a segment's head says enough about where it lies.
"""

import json
import math
import pathlib
import struct
import sys

KM_PER_DEGREE = 111.2
NEAR_KM = 0.05
PIECE = 100  # points of a segment, at most
LAKES = (41.2, 49.1, -92.5, -76.0)  # the Great Lakes: south, north, west, east
OFF_BORDER_KM = 3.0  # a shore nearer to the border of the countries is that border
TOWNS_APART_KM = 40.0
SAME_TOWN_KM = 80.0  # stations of one name
NAME_WIDTH = 15  # of a city file; a name that fills it was cut
NO_TOWN = {"AAF", "AF", "AFB", "AFS", "AGDM", "AHP", "AIRPORT", "ANGB", "AP", "AUT", "AWOS", "BUOY", "CFB",
           "CNTY", "CS", "DT", "EXPRESS", "FIELD", "FLD", "HELMS", "LIGHT", "MCAF", "MCAS", "MEM", "MUNI",
           "NAF", "NAS", "NAWS", "NDB", "NS", "NWS", "OIL", "PASS", "PLAT", "PLATFORM", "RES", "RIG"}
# The principal towns of North America by one of their stations, with their names where the station has another one.
PRINCIPAL = """
    KNYC=New York, KCQT=Los Angeles, KORD, KIAH, KPHX, KPHL, KSAT, KSAN, KDFW, KDCA, KBOS, KATL, KMIA,
    KDTW=Detroit, KDEN, KSFO, KSEA=Seattle, KMSP=Minneapolis, KSTL, KTPA, YYZ, YUL, YVR, YYC, YOW, YEG=Edmonton,
    YWG, WQB, YHZ, MMMX, MMAN, MUHA, KOKC, KMKC=Kansas City, KBNA=Nashville, KCMH=Columbus, KIND, KCLT, KJAX,
    KAUS=Austin, KELP, KMEM, KBWI, KPDX, KLAS, KMKE, KABQ, KTUS, KFAT=Fresno, KSAC, KOMA, KMSY, KCLE, KPIT,
    KCVG, KBUF, KRDU=Raleigh, KRIC, KORF, KSDF, KSLC, KBHM=Birmingham, KTUL, KICT, KLIT=Little Rock,
    KMCO=Orlando, KPVD, KBDL=Hartford, KALB=Albany, KROC, KSYR, KGRR, KDSM, KLNK, KTOP, KJAN, KMOB, KMGM, KHSV,
    KTYS, KCHA=Chattanooga, KSAV, KCHS=Charleston, KCAE=Columbia, KGSO, KROA, KCRW, KTLH, KSHV,
    KBTR=Baton Rouge, KLBB, KAMA, KMAF, KCRP, KSPS, KBRO=Brownsville, KSGF=Springfield, KDDC, KPUB=Pueblo, KGJT,
    KCYS, KCPR, KRAP, KFSD, KBIS, KFAR, KDLH, KGRB, KMSN, KBIL, KGTF, KMSO, KHLN, KBOI, KPIH, KGEG, KRNO, KEUG,
    KMFR, KPWM=Portland, KBTV, YXE, YQR, YQT, YSJ, YYT, YYJ, YQM, YXY, YZF, PANC, PAFA, PAJN, MMHO, MYNN, TJSJ
"""
POLE = 89.9


def distance(a, b):
    """Of two near places (longitude, latitude), in km."""
    east = (a[0] - b[0] + 180) % 360 - 180
    return KM_PER_DEGREE * math.hypot(a[1] - b[1], east * math.cos(math.radians((a[1] + b[1]) / 2)))


def decode_arcs(topology):
    """Lines of (longitude, latitude), each point stored as its difference from the one before."""
    (scale_x, scale_y), (x0, y0) = topology["transform"]["scale"], topology["transform"]["translate"]
    for arc in topology["arcs"]:
        x = y = 0
        line = []
        for dx, dy in arc:
            x, y = x + dx, y + dy
            line.append((x * scale_x + x0, y * scale_y + y0))
        yield line


def flatten(arcs):
    for item in arcs:
        if isinstance(item, list):
            yield from flatten(item)
        else:
            yield item if item >= 0 else ~item


def users(topology, name):
    """For each arc the shapes of an object that use it, each by its place in the object."""
    used = [set() for _ in topology["arcs"]]
    for i, shape in enumerate(topology["objects"][name]["geometries"]):
        for arc in flatten(shape.get("arcs", [])):
            used[arc].add(i)
    return used


def thin(line):
    """Without points near the last one kept; both ends stay."""
    kept = [line[0]]
    for point in line[1:-1]:
        if distance(kept[-1], point) >= NEAR_KM:
            kept.append(point)
    if len(kept) > 1 and distance(kept[-1], line[-1]) < NEAR_KM:
        kept.pop()
    return kept + [line[-1]]


def cut_date_line(line):
    """Pieces that don't cross 180 degrees. What runs along it, or lies on a pole, is no line on the earth."""
    piece = [line[0]]
    for a, b in zip(line, line[1:]):
        if abs(a[0] - b[0]) > 180:
            edge = math.copysign(180.0, a[0])
            run = edge - a[0], edge + b[0]  # to the edge from both sides
            t = run[0] / sum(run) if sum(run) else 0.0
            lat = a[1] + (b[1] - a[1]) * t
            yield piece + [(edge, lat)]
            piece = [(-edge, lat), b]
        elif abs(a[0]) == abs(b[0]) == 180 or min(abs(a[1]), abs(b[1])) > POLE:
            yield piece
            piece = [b]
        else:
            piece.append(b)
    yield piece


def pieces(lines):
    for line in lines:
        for part in cut_date_line(line):
            part = thin(part) if len(part) > 1 else part
            for i in range(0, len(part) - 1, PIECE - 1):
                yield part[i:i + PIECE]


def write_map(path, lines):
    points = 0
    with open(path, "wb") as out:
        number = 0
        for number, line in enumerate(pieces(lines), 1):
            data = [struct.unpack(">ff", struct.pack(">ff", lat, lon)) for lon, lat in line]
            lats, lons = zip(*data)
            out.write(struct.pack(">Hffffi", len(data), max(lats), min(lats), max(lons), min(lons), number))
            for point in data:
                out.write(struct.pack(">ff", *point))
            points += len(data)
    print(f"{path}: {number} segments, {points} points, {path.stat().st_size} bytes")


def make_world(topology, coasts, borders):
    used = users(topology, "countries")
    arcs = list(decode_arcs(topology))
    write_map(coasts, [arc for arc, by in zip(arcs, used) if len(by) == 1])
    border = [arc for arc, by in zip(arcs, used) if len(by) > 1]
    write_map(borders, border)
    return border


def in_lakes(point):
    south, north, west, east = LAKES
    return west < point[0] < east and south < point[1] < north


def shores(outline, border):
    """The stretches of an outline along the Great Lakes, in which countries have no coast."""
    near = {}  # points of the border, by cells a little wider than the distance
    size = 0.06
    for line in border:
        for a, b in zip(line, line[1:]):
            if in_lakes(a) or in_lakes(b):
                steps = max(1, math.ceil(distance(a, b) / 1.0))
                for k in range(steps + 1):
                    p = tuple(a[j] + (b[j] - a[j]) * k / steps for j in (0, 1))
                    near.setdefault((int(p[0] // size), int(p[1] // size)), []).append(p)
    for line in outline:
        stretch = []
        for point in line:
            cell = int(point[0] // size), int(point[1] // size)
            around = (p for i in (-1, 0, 1) for j in (-1, 0, 1) for p in near.get((cell[0] + i, cell[1] + j), ()))
            if in_lakes(point) and all(distance(point, p) > OFF_BORDER_KM for p in around):
                stretch.append(point)
                continue
            if len(stretch) > 1:
                yield stretch
            stretch = []
        if len(stretch) > 1:
            yield stretch


def make_states(topology, border, out):
    arcs = list(decode_arcs(topology))
    by_state = users(topology, "states")
    by_county = users(topology, "counties")
    states = [arc for arc, by in zip(arcs, by_state) if len(by) > 1]
    outline = [arc for arc, by in zip(arcs, by_state) if len(by) == 1]
    write_map(out / "us_states.map", states + list(shores(outline, border)))
    inside = [arc for arc, states, by in zip(arcs, by_state, by_county) if len(by) > 1 and not states]
    write_map(out / "us_counties.map", inside)


def stations(path):
    """Name, station, rank, latitude, longitude of each line of a city file. First come those of a high priority, and
    among them those that report to the world, as a WMO number says."""
    for line in path.read_text().splitlines():
        words = line[NAME_WIDTH:].split()
        rank = int(words[3].strip("-")), len(words) < 8
        yield line[:NAME_WIDTH].strip(), words[2], rank, float(words[4]), float(words[5])


def towns(file):
    """Name, latitude and longitude of the stations that are called after a town, the important ones first. Radars
    stand too far from the towns that they are called after."""
    principal = {}
    for entry in PRINCIPAL.replace("\n", " ").split(","):
        station, _, name = entry.strip().partition("=")
        principal[station] = len(principal), name
    found = set()
    ranked = []
    for name, station, rank, lat, lon in stations(file):
        place, own = principal.get(station, (len(principal), ""))
        cut = len(name) == NAME_WIDTH and "/" not in name
        name = own or name.split("/")[0].strip()
        if station in principal:
            found.add(station)
        elif cut or NO_TOWN & set(name.upper().split()):
            continue
        if name.replace(" ", "").replace(".", "").replace("'", "").isalpha():
            ranked.append((place, rank, name.title().replace("Mc ", "Mc").replace("'S", "'s"), lat, lon))
    if missing := principal.keys() - found:
        sys.exit(f"{file}: no {', '.join(sorted(missing))}")
    return [town[2:] for town in sorted(ranked)]


def make_places(file, path):
    """Towns with space for their names between them."""
    taken = []
    by_degree = {}
    for name, lat, lon in towns(file):
        cells = [(int(lat) + i, int(lon) + j) for i in (-1, 0, 1) for j in (-3, -2, -1, 0, 1, 2, 3)]
        others = [other for cell in cells for other in by_degree.get(cell, ())]
        if any(distance((lon, lat), place) < (SAME_TOWN_KM if other == name else TOWNS_APART_KM)
               for other, place in others):
            continue
        by_degree.setdefault((int(lat), int(lon)), []).append((name, (lon, lat)))
        taken.append((name, lat, lon))
    with open(path, "w") as out:
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n<kml xmlns="http://www.opengis.net/kml/2.2">\n <Document>\n')
        for name, lat, lon in taken:
            out.write(f" <Placemark>\n <name>{name}</name>\n <Point>\n"
                      f" <coordinates>{lon:.3f},{lat:.3f},0</coordinates>\n </Point>\n </Placemark>\n")
        out.write(" </Document>\n</kml>\n")
    print(f"{path}: {len(taken)} places")


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    world, states, out = (pathlib.Path(arg) for arg in sys.argv[1:])

    def load(path):
        return json.loads(path.read_text())

    make_world(load(world / "countries-50m.json"), out / "cont50.map", out / "country50.map")
    border = make_world(load(world / "countries-10m.json"), out / "cont.map", out / "country.map")
    make_states(load(states / "counties-10m.json"), border, out)
    make_places(out / "sao.cty", out / "places.kml")


if __name__ == "__main__":
    main()

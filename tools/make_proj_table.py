#!/usr/bin/env python3
"""Makes tests/data/proj_points.tsv: points that other programs have projected.

    tools/make_proj_table.py > tests/data/proj_points.tsv

Needs the program proj of PROJ (Debian: proj-bin). Each case is a projection field of a domain text, and the
projection of PROJ that it should be, on the sphere of radius 6371.22 km unless it has an ellipsoid. What PROJ has no
form for (the plane of a satellite's picture in tangents) is computed here with vectors.

Columns: projection field; direction ("both", "forward" or "inverse"); latitude and longitude in degrees; x and y in
the units of the projected plane, 100 km.
"""

import math
import subprocess

R = 63.7122
MAJOR, MINOR = 63.78137, 63.56752
SAT = 421.64
SPHERE = "+R=6371220"
ELLIPSE = "+a=6378137 +es=0.006694376468658447"
# PROJ measures scan angles at the height above the ground, this system at the distance from the centre.
HEIGHT, HEIGHT_E = (SAT - R) * 1e5, (SAT - MAJOR) * 1e5

# field, PROJ definition, factor on its result, distance from the centre of the points taken, and that centre
CASES = [
    ("ps:90:-100", f"+proj=stere +lat_0=90 +lat_ts=60 +lon_0=-100 {SPHERE}", 1, 120, (90, 0)),
    ("ps:45:10:30", f"+proj=stere +lat_0=90 +lat_ts=30 +lon_0=10 {SPHERE}", 1, 120, (90, 0)),
    ("ps:90:0:90", f"+proj=stere +lat_0=90 +lat_ts=90 +lon_0=0 {SPHERE}", 1, 120, (90, 0)),
    ("ps:-90:0", f"+proj=stere +lat_0=-90 +lat_ts=-60 +lon_0=0 {SPHERE}", 1, 120, (-90, 0)),
    ("ps:-30:140:-71", f"+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=140 {SPHERE}", 1, 120, (-90, 0)),
    ("me:0:-100", f"+proj=merc +lon_0=-100 {SPHERE}", 1, 85, "band"),
    ("me:e:0:20", f"+proj=merc +lon_0=20 {ELLIPSE}", 1, 85, "band"),
    ("me:e:45:-30", f"+proj=merc +lat_ts=45 +lon_0=-30 {ELLIPSE}", 1, 85, "band"),
    ("lc:40:-100", f"+proj=lcc +lat_1=30 +lat_2=60 +lat_0=90 +lon_0=-100 {SPHERE}", 1, 110, (90, 0)),
    ("lc:25:-95:25:25", f"+proj=lcc +lat_1=25 +lat_2=25 +lat_0=90 +lon_0=-95 {SPHERE}", 1, 110, (90, 0)),
    ("lc:45:10:35:65", f"+proj=lcc +lat_1=35 +lat_2=65 +lat_0=90 +lon_0=10 {SPHERE}", 1, 110, (90, 0)),
    ("lc:-40:150:30:60", f"+proj=lcc +lat_1=-30 +lat_2=-60 +lat_0=-90 +lon_0=150 {SPHERE}", 1, 110,
     (-90, 0)),
    ("or:35:-90", f"+proj=ortho +lat_0=35 +lon_0=-90 {SPHERE}", 1, 80, (35, -90)),
    ("or:-90:0", f"+proj=ortho +lat_0=-90 +lon_0=0 {SPHERE}", 1, 80, (-90, 0)),
    ("or:0:175", f"+proj=ortho +lat_0=0 +lon_0=175 {SPHERE}", 1, 80, (0, 175)),
    ("mo:0:-100", f"+proj=moll +lon_0=-100 {SPHERE}", math.sqrt(0.5), 88, "band"),
    ("la:45:-100", f"+proj=laea +lat_0=45 +lon_0=-100 {SPHERE}", 1, 150, (45, -100)),
    ("la:0:0", f"+proj=laea +lat_0=0 +lon_0=0 {SPHERE}", 1, 150, (0, 0)),
    ("la:90:-100", f"+proj=laea +lat_0=90 +lon_0=-100 {SPHERE}", 1, 150, (90, 0)),
    ("la:-90:30", f"+proj=laea +lat_0=-90 +lon_0=30 {SPHERE}", 1, 150, (-90, 0)),
]
# The picture of a satellite in scan angles. PROJ's inverse isn't that of this system on the sphere.
SAT_CASES = [
    ("sat:0:-75:421.64:1", f"+proj=geos +h={HEIGHT!r} +lon_0=-75 +sweep=y {SPHERE}", SAT / (SAT - R),
     "forward"),
    ("sat:e:0:-75:421.64:1",
     f"+proj=geos +h={HEIGHT_E!r} +lon_0=-75 +sweep=y +a=6378137 +b=6356752",
     SAT / (SAT - MAJOR), "both"),
]


def angle(p, q):
    """Central angle of two places, degrees."""
    la, lb = math.radians(p[0]), math.radians(q[0])
    d = math.radians(p[1] - q[1])
    c = math.sin(la) * math.sin(lb) + math.cos(la) * math.cos(lb) * math.cos(d)
    return math.degrees(math.acos(max(-1.0, min(1.0, c))))


def places(reach, centre):
    """A spread of places, off the usual round numbers, within reach of the centre or the equator."""
    for lat in (-84.3, -61.7, -40.25, -18.9, -0.6, 12.4, 33.1, 39.75, 58.8, 76.2, 89.2):
        for k in range(7):
            lon = -171.3 + 51.13 * k + lat / 7
            if (abs(lat) if centre == "band" else angle((lat, lon), centre)) <= reach:
                yield lat, lon


def project(definition, points):
    text = "".join(f"{lon!r} {lat!r}\n" for lat, lon in points)
    result = subprocess.run(["proj", "-f", "%.9f", *definition.split()], input=text, text=True,
                            capture_output=True, check=True)
    return [tuple(float(v) / 1e5 for v in line.split()) for line in result.stdout.splitlines()]


def row(field, way, lat, lon, x, y):
    print(f"{field}\t{way}\t{lat:.7f}\t{lon:.7f}\t{x:.8f}\t{y:.8f}")


def tangent_plane(lat, lon, ellipse):
    """Where a satellite over longitude 0 sees a place: tangents of the angles, times its distance."""
    a = math.atan((MINOR / MAJOR) ** 2 * math.tan(math.radians(lat))) if ellipse else math.radians(lat)
    b = math.radians(lon)
    unit = (math.cos(a) * math.cos(b), math.cos(a) * math.sin(b), math.sin(a))
    # Length of the unit vector up to the surface.
    polar = MINOR if ellipse else R
    equator = MAJOR if ellipse else R
    r = 1 / math.sqrt((unit[0] ** 2 + unit[1] ** 2) / equator ** 2 + unit[2] ** 2 / polar ** 2)
    toward, east, north = SAT - r * unit[0], r * unit[1], r * unit[2]
    return SAT * east / toward, SAT * north / math.hypot(toward, east)


def plane_to_earth(x, y):
    """The sphere's inverse: (x, y) lies in the plane through the earth's centre that faces the satellite; the ray is
    cut with a sphere of the equator's radius, and latitude and longitude are those of the radius R. By halving: the
    nearest point of the ray that is inside."""
    def depth(k):
        return math.hypot(SAT * (1 - k), k * x, k * y) - MAJOR
    lo, hi = 0.0, SAT * SAT / (SAT * SAT + x * x + y * y)
    assert depth(hi) < 0 < depth(lo)
    for _ in range(80):
        mid = (lo + hi) / 2
        lo, hi = (mid, hi) if depth(mid) > 0 else (lo, mid)
    lat = math.asin(lo * y / R)
    return math.degrees(lat), math.degrees(math.asin(lo * x / (R * math.cos(lat))))


def main():
    print("# Projected points to check the domain against, made by tools/make_proj_table.py with the program")
    print(f"# proj, {subprocess.run(['proj'], capture_output=True, text=True).stderr.splitlines()[0]}:")
    print("#   tools/make_proj_table.py > tests/data/proj_points.tsv")
    print("# projection field, direction, latitude, longitude, x, y (100 km)")
    for field, definition, factor, reach, centre in CASES:
        points = list(places(reach, centre))
        for (lat, lon), (x, y) in zip(points, project(definition, points)):
            row(field, "both", lat, lon, x * factor, y * factor)
    for field, definition, factor, way in SAT_CASES:
        points = list(places(70, (0, -75)))
        for (lat, lon), (x, y) in zip(points, project(definition, points)):
            row(field, way, lat, lon, x * factor, y * factor)
    for field, ellipse in (("sat:0:-75", False), ("sat:e:0:-75", True)):
        for lat, lon in places(70, (0, -75)):
            row(field, "both" if ellipse else "forward", lat, lon, *tangent_plane(lat, lon + 75, ellipse))
    for x, y in ((0, 0), (30, 0), (0, -40), (25, 25), (-44, 31), (12, -55), (-60, 3)):
        lat, lon = plane_to_earth(x, y)
        row("sat:0:-75", "inverse", lat, lon - 75, x, y)


if __name__ == "__main__":
    main()

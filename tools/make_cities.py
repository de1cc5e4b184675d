#!/usr/bin/env python3
"""Makes the city files data/rad.cty and data/sao.cty out of tables of sites.

    tools/make_cities.py radar_sites.csv stations.csv data

The columns that are used of the first table: id3, network, name, state, country, lat, lon, elev_m and
source_id; of the second: id, icao, name, state, country, lat, lon, elev_m and wmo. A line of a city file has
the name in exactly 15 columns, state, region, identifier, one blank, a flag, the priority, a flag, latitude,
longitude, elevation, and where they are known the WMO number and a further number, which for a radar is the
source number of its products.
"""

import csv
import pathlib
import re
import sys

NAME_WIDTH = 15
NO_WMO = -9999
NO_ELEVATION = 9999
NONE = "--"  # a word must stand in every column
COUNTRIES = {"USA": "US", "KOR": "KO", "JPN": "JP"}

# Words that tell what stands there, not where it is: a station is looked up by the name of its town.
PLAIN_WORDS = re.compile(
    r"\b(INTNL|INTL|INTERNATIONAL|ARPT|AIRPORT|APT|MUNI|MUNICIPAL|REGIONAL|RGNL|CO|COUNTY|FIELD|FLD)\b\.?")


def clean_name(name):
    """In ASCII and without what stands in brackets."""
    name = re.sub(r"\([^)]*(\)|$)", " ", name.encode("ascii", "ignore").decode())
    return " ".join(name.split())


def short_name(name):
    """In at most 15 columns."""
    if len(name) > NAME_WIDTH:
        first = name.split("/")[0].strip()
        name = first if 3 <= len(first) <= NAME_WIDTH else name[:NAME_WIDTH].strip()
    return name


def town(name):
    return short_name(" ".join(PLAIN_WORDS.sub(" ", name).split()).strip(" /-") or name)


def line(name, state, region, ident, prior, lat, lon, elev, wmo, num):
    text = (f"{name:<{NAME_WIDTH}s} {state[:2]:2s} {region[:2]:2s} {ident} -{prior}- {lat:8.4f} {lon:9.4f} "
            f"{elev:4.0f}")
    if num:
        text += f" {wmo} {num}"
    elif wmo != NO_WMO:
        text += f" {wmo}"
    assert len(text) < 119, text
    return text + "\n"


def radars(table):
    for row in sorted(table, key=lambda r: r["id3"]):
        yield line(short_name(clean_name(row["name"])), row["state"] or NONE,
                   COUNTRIES.get(row["country"], row["country"][:2]), row["id3"],
                   1 if row["network"] == "WSR-88D" else 2, float(row["lat"]), float(row["lon"]),
                   float(row["elev_m"] or NO_ELEVATION), NO_WMO, int(row["source_id"] or 0))


def priority(row):
    return 6 if not row["icao"] else 4 if not row["wmo"] else 2


def stations(table):
    rows = {}
    for row in table:
        if "CLOSED" not in row["name"]:
            row["name"] = clean_name(row["name"])
            rows.setdefault(row["icao"] or row["id"], row)
    # The town's own name goes to its main airport, the others keep their long names.
    mains = {}
    for ident in sorted(rows, key=lambda i: ("INT" not in rows[i]["name"], priority(rows[i]), i)):
        mains.setdefault(town(rows[ident]["name"]), ident)
    for ident, row in sorted(rows.items()):
        name = town(row["name"])
        if mains[name] != ident:
            name = row["name"][:NAME_WIDTH].strip()
        yield line(name, row["state"] or NONE, row["country"] or NONE, ident, priority(row),
                   float(row["lat"]), float(row["lon"]), float(row["elev_m"] or NO_ELEVATION),
                   int(row["wmo"] or NO_WMO), 0)


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    out = pathlib.Path(sys.argv[3])
    for name, make, source in (("rad.cty", radars, sys.argv[1]), ("sao.cty", stations, sys.argv[2])):
        with open(source, newline="", encoding="utf-8") as table:
            (out / name).write_text("".join(make(csv.DictReader(table))), encoding="ascii")


if __name__ == "__main__":
    main()

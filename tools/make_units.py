#!/usr/bin/env python3
"""Makes data/units.lup, the conversions between units.

    tools/make_units.py > data/units.lup

A group lists the names of one quantity's units with the factor (and offset) to the first of them; every pair of a
group is written in both directions. "_" stands for a blank. Factors are exact by definition unless a comment
says otherwise.
"""

FT = 0.3048
NM = 1852.0
MI = 1609.344
LB = 0.45359237
IN_HG = 3386.389  # conventional inch of mercury at 0 C

GROUPS = [
    ("Temperature", [("K", 1), ("C", 1, 273.15), ("degC", 1, 273.15), ("F", 5 / 9, 273.15 - 160 / 9),
                     ("degF", 5 / 9, 273.15 - 160 / 9)]),
    ("Length, height, precipitation",
     [("m", 1), ("km", 1000), ("hm", 100), ("dam", 10), ("dm", 0.1), ("cm", 0.01), ("mm", 0.001),
      ("ft", FT), ("kft", 1000 * FT), ("in", 0.0254), ("mi", MI), ("nm", NM), ("nmi", NM), ("gpm", 1)]),
    ("Speed", [("m/s", 1), ("km/h", 1 / 3.6), ("km/hr", 1 / 3.6), ("knt", NM / 3600), ("kt", NM / 3600),
               ("kts", NM / 3600), ("knots", NM / 3600), ("mph", MI / 3600), ("mi/h", MI / 3600),
               ("ft/s", FT), ("ft/min", FT / 60), ("cm/s", 0.01)]),
    ("Pressure", [("Pa", 1), ("mb", 100), ("hPa", 100), ("kPa", 1000), ("bar", 1e5), ("inHg", IN_HG),
                  ("in_Hg", IN_HG), ("mmHg", IN_HG / 25.4)]),
    ("Vertical speed in pressure", [("Pa/s", 1), ("mb/s", 100), ("mb/h", 100 / 3600),
                                    ("mb/hr", 100 / 3600), ("ub/s", 0.1)]),
    ("Time", [("s", 1), ("sec", 1), ("min", 60), ("h", 3600), ("hr", 3600), ("hour", 3600),
              ("day", 86400)]),
    ("Per time", [("/s", 1), ("/min", 1 / 60), ("/h", 1 / 3600), ("/hr", 1 / 3600), ("/day", 1 / 86400)]),
    ("Angle", [("deg", 1), ("rad", 57.29577951308232)]),
    ("Ratio", [("kg/kg", 1), ("g/kg", 0.001), ("g/g", 1), ("fraction", 1), ("%", 0.01)]),
    ("Mass", [("kg", 1), ("g", 0.001), ("lb", LB)]),
    ("Mass per area, and depth of water", [("kg/m^2", 1), ("kg/m**2", 1), ("g/m^2", 0.001),
                                           ("g/cm^2", 10), ("mm_water", 1), ("in_water", 25.4)]),
    ("Mass per volume", [("kg/m^3", 1), ("g/m^3", 0.001)]),
    ("Rate of rain", [("mm/h", 1), ("mm/hr", 1), ("mm/s", 3600), ("kg/m^2/s", 3600), ("in/h", 25.4),
                      ("in/hr", 25.4), ("mm/day", 1 / 24), ("in/day", 25.4 / 24)]),
    ("Energy per mass", [("J/kg", 1), ("m^2/s^2", 1), ("m**2/s**2", 1)]),
    ("Area", [("m^2", 1), ("km^2", 1e6), ("nm^2", NM * NM), ("mi^2", MI * MI)]),
]


def number(v):
    return f"{v:.9g}"


def record(source, target):
    """value * mult + offset, from one unit to another through the first of the group."""
    mult = source[1] / target[1]
    offset = ((source[2] if len(source) > 2 else 0) - (target[2] if len(target) > 2 else 0)) / target[1]
    text = f"*{number(mult)}"
    if abs(offset) > 1e-9:
        text += f"{'+' if offset > 0 else '-'}{number(abs(offset))}"
    assert len(source[0]) <= 14 and len(target[0]) <= 14 and len(text) <= 39
    return f"{source[0]:<14s} {target[0]:<14s} {text}"


def main():
    print("# Conversions of units: from, to, and what to do: *multiplier, then +offset or -offset.")
    print("# Made by tools/make_units.py.")
    for title, units in GROUPS:
        print(f"# {title}")
        for source in units:
            for target in units:
                if source is not target:
                    print(record(source, target))


if __name__ == "__main__":
    main()

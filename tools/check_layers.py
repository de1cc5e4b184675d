#!/usr/bin/env python3
"""Holds lib/ to its layers.

The layers are read out of lib/CMakeLists.txt, lowest first. Reported are:
  - a file that includes a header of a later layer, or of a layer that keeps to itself;
  - a file of lib that is in no layer, and an include of one that isn't there;
  - a class listed twice, or listed without a file;
  - an exception below that nobody uses (a warning);
  - a difference between the table and the map in ARCHITECTURE.md.
The status is 1 if there are errors.
"""

import argparse
import fnmatch
import pathlib
import re
import sys

# Who may include a header of a later layer: file pattern, class or layer, reason.
EXCEPTIONS = [
    ("Graph.cpp", "devices", "makes the devices, and is the only one to know them by name"),
    ("text/*.cpp", "Zqv", "may send messages"),
    ("Prog.cpp", "DateTool", "cur_time of a resource file is a date text"),
]

# Layers that nobody includes but themselves and the exceptions, later layers neither.
CLOSED = {"devices": "drawing goes through Graph, which chooses the device"}

LAYER = re.compile(r"zqv_layer\(\s*(\w+)([^)]*)\)")
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)
HEADING = re.compile(r"^### (\w+)")
ENTRY = re.compile(r"^- `(\w+)`: \S")


def read_layers(text):
    """Returns the layers, lowest first, as pairs of name and list of classes."""
    text = re.sub(r"#[^\n]*", "", text)
    return [(name, classes.split()) for name, classes in LAYER.findall(text)]


def read_map(text):
    """Returns what ARCHITECTURE.md says, as read_layers() does."""
    layers = []
    for line in text.splitlines():
        if heading := HEADING.match(line):
            layers.append((heading[1], []))
        elif line.startswith("#"):
            layers.append(("", []))
        elif layers and layers[-1][0] and (entry := ENTRY.match(line)):
            layers[-1][1].append(entry[1])
    return [layer for layer in layers if layer[0]]


def check_includes(files, layers, used):
    """Yields the errors in what the files of lib include; puts the exceptions needed into used."""
    rank = {cls: i for i, (_, classes) in enumerate(layers) for cls in classes}
    for path in files:
        cls = path.stem
        if cls not in rank:
            yield f"lib/{path.name} is in no layer of lib/CMakeLists.txt"
            continue
        here = layers[rank[cls]][0]
        for included in INCLUDE.findall(path.read_text(encoding="utf-8", errors="replace")):
            target = included.rsplit("/", 1)[-1].removesuffix(".h")
            if target not in rank:
                if included.endswith(".h") and (path.parent / included).exists():
                    yield f"lib/{path.name} includes {included}, which is in no layer"
                continue
            there = layers[rank[target]][0]
            if here == there or (rank[target] < rank[cls] and there not in CLOSED):
                continue
            excused = [
                row
                for row in EXCEPTIONS
                if row[1] in (target, there)
                and (fnmatch.fnmatch(path.name, row[0]) or fnmatch.fnmatch(f"{here}/{path.name}", row[0]))
            ]
            used.update(excused)
            if excused:
                continue
            if rank[target] > rank[cls]:
                yield f"lib/{path.name} ({here}) includes {target}.h of the later layer {there}"
            else:
                yield f"lib/{path.name} includes {target}.h of the layer {there}: {CLOSED[there]}"


def check_map(layers, drawn):
    """Yields the differences between the table of layers and the map."""
    if [name for name, _ in drawn] != [name for name, _ in layers]:
        yield "ARCHITECTURE.md has other layers, or in another order, than lib/CMakeLists.txt"
    drawn = dict(drawn)
    for name, classes in layers:
        listed = drawn.get(name, [])
        for cls in classes:
            if cls not in listed:
                yield f"ARCHITECTURE.md has no line for {cls} in the layer {name}"
        for cls in listed:
            if cls not in classes:
                yield f"ARCHITECTURE.md has {cls} in the layer {name}, lib/CMakeLists.txt has not"


def check(root):
    """Returns the errors and the warnings for the tree at root."""
    layers = read_layers((root / "lib/CMakeLists.txt").read_text(encoding="utf-8"))
    files = sorted(p for p in (root / "lib").iterdir() if p.suffix in (".h", ".cpp"))
    stems = {p.stem for p in files}
    used = set()
    errors, warnings = [], []
    if not layers:
        errors.append("lib/CMakeLists.txt has no layers")
    errors += check_includes(files, layers, used)
    classes = [cls for _, names in layers for cls in names]
    errors += [f"{cls} is listed twice" for cls in sorted({c for c in classes if classes.count(c) > 1})]
    for name, listed in layers:
        if absent := [cls for cls in listed if cls not in stems]:
            errors.append(f"listed in the layer {name}, but without a file: {' '.join(absent)}")
    warnings += [f"nobody needs the exception {row[:2]}" for row in EXCEPTIONS if row not in used]
    architecture = root / "ARCHITECTURE.md"
    drawn = read_map(architecture.read_text(encoding="utf-8")) if architecture.exists() else []
    errors += check_map(layers, drawn)
    return errors, warnings


def main():
    parser = argparse.ArgumentParser(description="Holds lib/ to its layers.")
    parser.add_argument(
        "--root",
        type=pathlib.Path,
        default=pathlib.Path(__file__).resolve().parent.parent,
        help="tree to check (default: the one this script is in)",
    )
    args = parser.parse_args()
    errors, warnings = check(args.root)
    for text in warnings:
        print(f"warning: {text}")
    for text in errors:
        print(f"error: {text}")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())

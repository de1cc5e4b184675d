#!/usr/bin/env python3
"""Makes data/modern.fnt, the stroke font of labels, from the Hershey simplex roman.

  tools/make_font.py [/usr/share/hershey-fonts/rowmans.jhf] > data/modern.fnt

The source comes with Debian's hershey-fonts-data. A glyph there is a line of a number (5 columns), a
count of coordinate pairs (3 columns), then the pairs as characters around "R": the side bearings
first, then the strokes, with " R" to lift the pen.

One unit there is 5 units here, which puts the capitals on the 105 units that make one text height,
the baseline at 35; below it strokes are shortened to three quarters, so that labels which stand on
the frame of a picture don't touch it. Each glyph starts at x = 0 and is as wide as its
ink, as Graph adds the gap between characters itself.
"""

import sys

SCALE = 5
BASELINE = 9  # y of the baseline in the source, where y grows downward
HEIGHT = 35  # y of the baseline here
DESCENT = 0.75  # of strokes below the baseline
MAX_X = 125  # 128 and up lift the pen, 254 ends the file
PEN_UP = 128
END_FILE = 254
# The source has an arrow in this place.
CARET = [[(-5, -6), (0, -12), (5, -6)]]
END_GLYPH = 255

ACKNOWLEDGEMENT = """
Behind the 254 nothing is read. The shapes of this font are those of the Hershey Fonts:
- The Hershey Fonts were originally created by Dr. A. V. Hershey while working at the U. S. National
  Bureau of Standards.
- The format of the font data in the distribution that they were taken from was originally created by
  James Hurt, Cognition, Inc., 900 Technology Park Drive, Billerica, MA 01821
  (mit-eddie!ci-dandelion!hurt)
The file was made by tools/make_font.py.
"""


def read_glyphs(name):
    """Gives the strokes of the glyphs in the order of the file: lists of lists of (x, y)."""
    with open(name, encoding="ascii") as source:
        lines = source.read().split("\n")
    while lines:
        line = lines.pop(0)
        if not line.strip():
            continue
        count = int(line[5:8])
        while len(line) < 8 + 2 * count and lines:
            line += lines.pop(0)  # long glyphs are broken at a fixed column
        pairs = [line[i : i + 2] for i in range(10, 8 + 2 * count, 2)]
        strokes = [[]]
        for pair in pairs:
            if pair == " R":
                strokes.append([])
            else:
                strokes[-1].append((ord(pair[0]) - ord("R"), ord(pair[1]) - ord("R")))
        yield [s for s in strokes if s]


def convert(strokes):
    """Gives the pen moves of one glyph as numbers."""
    left = min(x for s in strokes for x, _ in s)
    right = max(x for s in strokes for x, _ in s)
    scale = min(SCALE, MAX_X / max(right - left, 1))
    moves = []
    for stroke in strokes:
        for i, (x, y) in enumerate(stroke):
            up = PEN_UP if i == 0 else 0
            rise = (BASELINE - y) * SCALE
            moves += [round((x - left) * scale) + up, HEIGHT + (rise if rise >= 0 else round(rise * DESCENT))]
    return moves


def main():
    name = sys.argv[1] if len(sys.argv) > 1 else "/usr/share/hershey-fonts/rowmans.jhf"
    out = ["0"]
    for code, strokes in enumerate(read_glyphs(name), start=ord(" ")):
        if not strokes or code > ord("~"):
            continue  # the blank has no strokes
        if code == ord("^"):
            strokes = CARET
        out.append(" ".join([chr(code)] + [str(v) for v in convert(strokes)] + [str(END_GLYPH)]))
    # The last glyph ends with the file.
    out[-1] = out[-1].removesuffix(str(END_GLYPH)) + str(END_FILE)
    print("\n".join(out) + "\n" + ACKNOWLEDGEMENT, end="")


if __name__ == "__main__":
    main()

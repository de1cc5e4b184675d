#!/usr/bin/env python3
"""Tests of check_layers.py: small trees, each with one fault."""

import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
import check_layers

# A tree without faults; each case below changes or adds some of its files.
SOUND = {
    "lib/CMakeLists.txt": "zqv_layer(text Tools)  # zqv_layer(none X)\nzqv_layer(settings Prog Zqv)\n"
    "zqv_layer(files\n  DateTool)\nzqv_layer(page Graph)\nzqv_layer(devices Hpgl)\n"
    "zqv_layer(plot Plot)\n",
    "lib/Tools.h": "#pragma once\n#include <string>\n",
    "lib/Tools.cpp": '#include "Tools.h"\n\n#include "Zqv.h"\n',
    "lib/Zqv.h": '#include "Tools.h"\n',
    "lib/Prog.cpp": '#include "DateTool.h"\n#include "Zqv.h"\n',
    "lib/DateTool.h": "",
    "lib/Graph.cpp": '#include "Hpgl.h"\n',
    "lib/Hpgl.h": '#include "Graph.h"\n',
    "lib/Plot.h": '#include "Graph.h"\n',
    "ARCHITECTURE.md": "# Map\n- `Odd`: not a class, stands under no layer\n### text\n- `Tools`: x\n"
    "### settings\n- `Prog`: x\n- `Zqv`: x\n### files\n- `DateTool`: x\n### page\n- `Graph`: x\n"
    "### devices\n- `Hpgl`: x\n### plot\n- `Plot`: x\n## Rules\n- `Odd`: x\n",
}

# Files changed (None: removed), the error expected.
FAULTS = [
    ({"lib/Tools.h": '#include "Zqv.h"'}, "lib/Tools.h (text) includes Zqv.h of the later layer settings"),
    ({"lib/Tools.cpp": '# include "Prog.h"'}, "lib/Tools.cpp (text) includes Prog.h of the later"),
    ({"lib/DateTool.h": "#include <Plot.h>"}, "lib/DateTool.h (files) includes Plot.h of the later"),
    ({"lib/Prog.h": '#include "DateTool.h"'}, "lib/Prog.h (settings) includes DateTool.h"),
    ({"lib/Graph.h": '#include "Hpgl.h"'}, "lib/Graph.h (page) includes Hpgl.h of the later"),
    ({"lib/Graph.cpp": '#include "Plot.h"'}, "lib/Graph.cpp (page) includes Plot.h of the later"),
    ({"lib/Plot.cpp": '#include "Hpgl.h"'}, "lib/Plot.cpp includes Hpgl.h of the layer devices"),
    ({"lib/Stray.cpp": ""}, "lib/Stray.cpp is in no layer"),
    ({"lib/Stray.h": "", "lib/Plot.cpp": '#include "Stray.h"'}, "lib/Plot.cpp includes Stray.h"),
    ({"ARCHITECTURE.md": None}, "ARCHITECTURE.md has no line for Tools"),
    (
        {"ARCHITECTURE.md": SOUND["ARCHITECTURE.md"].replace("- `Zqv`: x", "- `Zq`: x")},
        "ARCHITECTURE.md has Zq in the layer settings",
    ),
    (
        {"lib/CMakeLists.txt": SOUND["lib/CMakeLists.txt"].replace("Prog Zqv", "Prog Zqv Prog")},
        "Prog is listed twice",
    ),
    ({"lib/CMakeLists.txt": ""}, "lib/CMakeLists.txt has no layers"),
]


def check(changes):
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        (root / "lib").mkdir()
        for name, text in {**SOUND, **changes}.items():
            if text is not None:
                (root / name).write_text(text, encoding="utf-8")
        return check_layers.check(root)


class CheckLayersTest(unittest.TestCase):
    def test_sound_tree(self):
        self.assertEqual(check({}), ([], []))

    def test_faults(self):
        for changes, expected in FAULTS:
            with self.subTest(expected=expected):
                errors, _ = check(changes)
                self.assertTrue(any(e.startswith(expected) for e in errors), errors)

    def test_unused_exception_is_a_warning(self):
        errors, warnings = check({"lib/DateTool.h": None, "lib/Prog.cpp": None})
        self.assertIn("listed in the layer settings, but without a file: Prog", errors)
        self.assertIn("nobody needs the exception ('Prog.cpp', 'DateTool')", warnings)


if __name__ == "__main__":
    unittest.main()

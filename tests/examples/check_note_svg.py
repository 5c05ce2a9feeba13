#!/usr/bin/env python3
"""Holds note_to_svg to what its note asks for.

    check_note_svg.py COMMAND...

COMMAND starts the program.
"""

import re
import subprocess
import sys
import tempfile
import unittest
import xml.dom.minidom
from pathlib import Path

COMMAND = []

# The colours of the note's tokens in the order of the text. With the advances that hb-shape gives, "(all" ends at 99.9 and
# "levels," would end at 108.9, beyond the width of 104: the line breaks within the narrow token, which makes two runs.
COLORS = ["#202020", "#b00000", "#202020", "#0040b0", "#202020", "#006020", "#805000", "#805000", "#404040", "#700080"]


def numbers(text):
    return [float(number) for number in re.findall(r"-?\d+(?:\.\d+)?(?:e-?\d+)?", text)]


def points(path):
    values = numbers(path.getAttribute("d"))
    return values[0::2], values[1::2]


class Note(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        done = subprocess.run(COMMAND, capture_output=True, encoding="utf-8", timeout=300, check=True)
        cls.text = done.stdout
        cls.svg = xml.dom.minidom.parseString(cls.text).documentElement
        cls.paths = cls.svg.getElementsByTagName("path")

    def of(self, color):
        return [path for path in self.paths if path.getAttribute("fill") == color]

    def test_each_run_is_a_path_in_its_tokens_colour(self):
        self.assertEqual([path.getAttribute("fill") for path in self.paths], COLORS)

    def test_ink_boxes_are_the_paths_own(self):
        boxes = [rect for rect in self.svg.getElementsByTagName("rect") if rect.getAttribute("fill") == "none"]
        self.assertEqual(len(boxes), len(self.paths))
        for path, box in zip(self.paths, boxes, strict=True):
            x, y, width, height = (float(box.getAttribute(name)) for name in ("x", "y", "width", "height"))
            # Control points lie outside of curves at most, and at their extremes mostly on them.
            xs, ys = points(path)
            self.assertLessEqual(min(xs), x + 5e-3)
            self.assertLessEqual(min(ys), y + 5e-3)
            self.assertGreaterEqual(max(xs), x + width - 5e-3)
            self.assertGreaterEqual(max(ys), y + height - 5e-3)

    def test_there_are_two_lines(self):
        baselines = {line.getAttribute("y1") for line in self.svg.getElementsByTagName("line")}
        self.assertEqual(len(baselines), 2)

    def test_all_stands_in_the_picture_upright(self):
        left, top, width, height = numbers(self.svg.getAttribute("viewBox"))
        group = self.svg.getElementsByTagName("g")[0]
        self.assertEqual(group.getAttribute("transform"), "scale(1,-1)")
        for path in self.paths:
            xs, ys = points(path)
            self.assertTrue(left < min(xs) and max(xs) < left + width)
            self.assertTrue(top < min(-y for y in ys) and max(-y for y in ys) < top + height)
        # The first line stands above the last.
        self.assertLess(max(-y for y in points(self.paths[0])[1]), min(-y for y in points(self.paths[-1])[1]))

    def test_the_underline_lies_below_its_text(self):
        (bar,) = (rect for rect in self.svg.getElementsByTagName("rect") if rect.getAttribute("fill") == "#006020")
        (text,) = self.of("#006020")
        xs, ys = points(text)
        self.assertLess(float(bar.getAttribute("y")) + float(bar.getAttribute("height")), min(ys))
        self.assertLess(abs(float(bar.getAttribute("x")) - min(xs)), 0.5)

    def test_a_file_gets_the_same(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "note.svg")
            subprocess.run([*COMMAND, str(file)], timeout=300, check=True)
            self.assertEqual(file.read_text(encoding="utf-8"), self.text)
            failing = subprocess.run([*COMMAND, str(Path(folder, "no", "note.svg"))], capture_output=True,
                                     encoding="utf-8", timeout=300, check=False)
        self.assertEqual(failing.returncode, 1)
        self.assertRegex(failing.stderr, r"^note_to_svg: .*note\.svg cannot be written: .*\n$")


if __name__ == "__main__":
    COMMAND = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])

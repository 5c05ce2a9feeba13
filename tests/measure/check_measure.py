#!/usr/bin/python3
"""Holds the program measure to what it prints and to the codes it ends with.

    check_measure.py COMMAND...

COMMAND starts the program. Texts are measured with capitals as high as the font has them in
design units (1409 in Liberation Sans), so that advances and heights are those of the font's
tables: lines 67 + 1854 + 434, H 1479, a 1139, the space 569 wide.
"""

import json
import re
import subprocess
import sys
import unittest

COMMAND = []
SANS = ["--font", "Liberation Sans", "--cap-size", "1409"]


def run(*arguments):
    return subprocess.run([*COMMAND, *arguments], capture_output=True, encoding="utf-8", timeout=300, check=False)


class Line(unittest.TestCase):
    def test_prints_json(self):
        done = run("line", "HaH", *SANS, "--json")
        self.assertEqual(done.returncode, 0, done.stderr)
        measured = json.loads(done.stdout)
        self.assertEqual(measured["family"], "Liberation Sans")
        self.assertTrue(measured["installed"])
        self.assertAlmostEqual(measured["emSize"], 2048.0, places=6)
        for got, expected in zip(measured["box"], [0.0, -2355.0, 1479 + 1139 + 1479.0, 0.0], strict=True):
            self.assertAlmostEqual(got, expected, places=2)
        self.assertAlmostEqual(measured["baseline"], -1921.0, places=2)
        self.assertEqual(measured["metrics"],
                         {"ascent": 1854.0, "descent": 434.0, "capitalTopToAscent": 445.0, "lineGap": 67.0})

    def test_prints_what_a_person_reads(self):
        done = run("line", "a a", *SANS)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout, r"(?m)^font +Liberation Sans, capitals 1409, em 2048$")
        self.assertRegex(done.stdout, r"(?m)^box +x 0 to 2847, y -2355 to 0 ")

    def test_takes_text_that_no_code_page_has(self):
        done = run("line", "Жä図", *SANS, "--json")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(json.loads(done.stdout)["text"], "Жä図")

    def test_bold_text_is_set_in_the_bold_font(self):
        # The bold i is wider.
        regular, bold = (json.loads(run("line", "i", *SANS, "--json", *style).stdout)["box"][2]
                         for style in ([], ["--bold"]))
        self.assertAlmostEqual(regular, 455.0, places=2)
        self.assertAlmostEqual(bold, 569.0, places=2)


class MText(unittest.TestCase):
    def boxes(self, *arguments):
        done = run("mtext", *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        return [(*map(float, re.findall(r"-?\d+\.\d{4}", line)[:4]), line.split("  ", 1)[1])
                for line in done.stdout.splitlines()]

    def test_measures_each_paragraph(self):
        self.assertEqual(self.boxes(r"HH\Pa {\H1409;a}", *SANS),
                         [(0.0, 2958.0, -2355.0, 0.0, "HH"), (0.0, 2847.0, -4710.0, -2355.0, "a a")])

    def test_wraps_at_the_width(self):
        # Two letters and a space fit into 3000 units, a third letter does not.
        (box,) = self.boxes("a b a b a", *SANS, "--width", "3000")
        self.assertEqual(box[1:4], (2847.0, -3 * 2355.0, 0.0))


class Mistakes(unittest.TestCase):
    def refused(self, says, *arguments):
        done = run(*arguments)
        self.assertEqual(done.returncode, 2, done.stdout + done.stderr)
        self.assertEqual(done.stdout, "")
        self.assertIn(says, done.stderr)

    def test_an_unknown_command(self):
        self.refused("subcommand is required", "layout", "drawing.dxf")

    def test_a_missing_text(self):
        self.refused("TEXT is required", "line", *SANS)

    def test_a_missing_font(self):
        self.refused("--font is required", "line", "a", "--cap-size", "1")

    def test_sizes_that_are_none(self):
        for size in ("0", "large"):
            self.refused("--cap-size", "line", "a", "--font", "Liberation Sans", f"--cap-size={size}")

    def test_a_width_that_is_none(self):
        self.refused("--width", "mtext", "a", *SANS, "--width=0")

    def test_help_is_no_mistake(self):
        done = run("--help")
        self.assertEqual(done.returncode, 0)
        self.assertIn("mtext", done.stdout)


if __name__ == "__main__":
    COMMAND = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])

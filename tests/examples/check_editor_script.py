#!/usr/bin/env python3
"""Runs the editor's example script and some that are wrong.

    check_editor_script.py FOLDER_OF_THE_EXAMPLE COMMAND...

COMMAND starts editor_script.
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

FOLDER = Path()
COMMAND = []


def run(script, folder):
    return subprocess.run([*COMMAND, str(script)], capture_output=True, encoding="utf-8", timeout=300, cwd=folder,
                          check=False)


class Example(unittest.TestCase):
    def test_prints_what_stands_beside_it(self):
        with tempfile.TemporaryDirectory() as folder:
            done = run(FOLDER / "example.script", folder)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertEqual(done.stdout, (FOLDER / "example.expected").read_text(encoding="utf-8"))
            for picture in ("selection.png", "behind-english.png", "before-hebrew.png"):
                self.assertEqual(Path(folder, picture).read_bytes()[:8], b"\x89PNG\r\n\x1a\n")


class Mistakes(unittest.TestCase):
    def refused(self, script, where, says):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "wrong.script")
            file.write_bytes(script)
            done = run(file, folder)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertTrue(done.stderr.startswith(f"{file}:{where}: "), done.stderr)
        self.assertIn(says, done.stderr)
        return done.stdout

    def test_an_unknown_command(self):
        printed = self.refused(b"type a\nprint\n\n# lost\nlft\nprint\n", 5, '"lft" is no command: write one of backspace, ')
        self.assertEqual(printed, "a|\n")

    def test_wrong_arguments(self):
        for line, usage in ((b"click 1", "write click X Y"), (b"click 1 2 3", "write click X Y"),
                            (b"click one two", "write click X Y"), (b"drag 0 0 1", "write drag X0 Y0 X1 Y1"),
                            (b"left 2", "write left"), (b"png", "write png FILE"), (b"type", "write type TEXT"),
                            (b"type a\\b", "\\\\ for a backslash")):
            with self.subTest(line=line):
                self.refused(line, 1, usage)

    def test_what_is_not_utf8(self):
        self.refused(b"# Latin 1\ntype \xe4\n", 2, "save the script as UTF-8")

    def test_a_picture_that_cannot_be_written(self):
        self.refused(b"png no/such/folder.png", 1, "no/such/folder.png cannot be written")

    def test_no_script(self):
        done = run("none.script", None)
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.stderr, "editor_script: none.script cannot be read: give the file of a script\n")


if __name__ == "__main__":
    FOLDER = Path(sys.argv[1]).resolve()
    COMMAND = [str(Path(part).resolve()) for part in sys.argv[2:]]
    unittest.main(argv=sys.argv[:1])

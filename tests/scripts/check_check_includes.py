#!/usr/bin/env python3
"""Checks that scripts/check-includes finds circles of includes, with made-up libraries."""
import pathlib
import subprocess
import sys
import tempfile

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "check-includes"


def run(files):
    """The exit status and what was printed for a library of these files."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder) / "library"
        root.mkdir()
        for name, text in files.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text)
        done = subprocess.run([SCRIPT, root], capture_output=True, text=True, timeout=60)
        return done.returncode, done.stdout + done.stderr


def check(condition, what):
    if not condition:
        sys.exit(f"check_check_includes: {what}")


ONE_WAY = {"a/A.h": "", "b/B.h": '#include "a/A.h"\n', "b/B.cpp": '#include "B.h"\n#include <vector>\n'}

status, text = run(ONE_WAY)
check(status == 0, f"folders that are used one way are right: {text}")

status, text = run({**ONE_WAY, "a/A.cpp": '#include "a/A.h"\n#include "b/B.h"\n'})
check(status == 1, f"two folders that use each other are found: {text}")
check("a, b include each other" in text and "a/A.cpp includes b/B.h" in text, f"and named with their files: {text}")

status, text = run({**ONE_WAY, "c/C.h": "#include <library/b/B.h>\n", "a/deep/D.h": '#include "c/C.h"\n'})
check(status == 0, f"a folder within a folder is one of its own: {text}")

status, text = run({**ONE_WAY, "c/C.h": "#include <library/b/B.h>\n", "a/E.cpp": '  #  include "../c/C.h"\n'})
check(status == 1 and "a, b, c include each other" in text, f"a longer way round is found: {text}")

status, text = run({"notes.txt": ""})
check(status == 1, f"a folder without C++ files is a mistake in the call: {text}")

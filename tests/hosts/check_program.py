#!/usr/bin/env python3
"""Starts the installed program, which finds its libraries by itself:  check_program.py PROGRAM VERSION DRAWING"""
import os
import subprocess
import sys

program, version, drawing = sys.argv[1:]
environment = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}


def said(*arguments):
    return subprocess.run([program, *arguments], check=True, capture_output=True, text=True, env=environment).stdout


assert said("--version").strip() == f"fontengine {version}"
assert "laid out" in said("layout", drawing)
linked = subprocess.run(["ldd", program], check=True, capture_output=True, text=True, env=environment).stdout
root = os.path.dirname(os.path.dirname(program))
for line in linked.splitlines():
    if "FontEngine" in line:
        assert os.path.realpath(line.split()[2]).startswith(os.path.realpath(root)), line

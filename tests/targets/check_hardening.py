#!/usr/bin/env python3
"""Checks that an ELF program or library was linked against memory errors:  check_hardening.py FILE..."""
import subprocess
import sys


def readelf(option, file):
    return subprocess.run(["readelf", "-W", option, file], check=True, capture_output=True, text=True).stdout


def problems_of(file):
    dynamic = readelf("-d", file)
    segments = readelf("-l", file)
    if "BIND_NOW" not in dynamic and "Flags: NOW" not in dynamic:
        yield "symbols are bound at the first call: its table of addresses stays writable"
    if "GNU_RELRO" not in segments:
        yield "relocated data stays writable"
    if any("GNU_STACK" in line and "RWE" in line for line in segments.splitlines()):
        yield "the stack is executable"
    if "__stack_chk_fail" not in readelf("--dyn-syms", file):
        yield "no function has a protected stack"


def main(files):
    problems = [f"{file}: {problem}" for file in files for problem in problems_of(file)]
    print("\n".join(problems))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

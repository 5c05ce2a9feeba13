#!/usr/bin/env python3
"""Compares what shared libraries export with the list of what they mean to, or writes the list anew:

    check_exports.py [--update] LIST LIBRARY...

A name that comes is a promise to hosts, one that goes breaks them: the list is changed on purpose, with
`cmake --build build/dev --target fontengine_update_exported_symbols`.
"""
import pathlib
import re
import subprocess
import sys

HEAD = """# What the shared libraries export, one name a line, under the library's name.
# Written by tests/hosts/check_exports.py --update.
"""
# Unique in the process: a library with such a symbol is never unloaded.
UNIQUE = "u"


def exported(library):
    """The names that a library exports, without versions; constructors of several kinds count once."""
    lines = subprocess.run(["nm", "--dynamic", "--defined-only", "--demangle", library], check=True,
                           capture_output=True, text=True).stdout.splitlines()
    names = set()
    for line in lines:
        _, kind, name = line.split(" ", 2)
        if kind == UNIQUE:
            sys.exit(f"{library}: {name} is unique in the process")
        if kind != "A":
            names.add(re.sub(r"@@?\S+$", "", name))
    return sorted(names)


def listed(path):
    names = {}
    for line in path.read_text().splitlines():
        if line.startswith("["):
            current = names.setdefault(line.strip("[]"), set())
        elif line and not line.startswith("#"):
            current.add(line)
    return names


def title(library):
    return pathlib.Path(library).name.split(".")[0].removeprefix("lib")


def main(arguments):
    update = arguments[0] == "--update"
    path, *libraries = arguments[update:]
    found = {title(library): exported(library) for library in libraries}
    if update:
        pathlib.Path(path).write_text(HEAD + "".join(f"\n[{library}]\n" + "\n".join(names) + "\n"
                                                     for library, names in found.items()))
        return 0
    expected = listed(pathlib.Path(path))
    problems = []
    for library, names in found.items():
        wanted = expected.get(library, set())
        problems += [f"{library} exports what the list lacks: {name}" for name in sorted(set(names) - wanted)]
        problems += [f"{library} lacks what the list has: {name}" for name in sorted(wanted - set(names))]
    print("\n".join(problems) or f"{sum(map(len, found.values()))} names, as listed")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

#!/usr/bin/env python3
"""Compiles each public header alone, in the standards given, with the warnings of careful hosts:

    check_headers.py COMPILER PROJECT_FOLDER STANDARD...
"""
import concurrent.futures
import itertools
import os
import pathlib
import subprocess
import sys

compiler, project, standards = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
# A root of includes, and the folder of headers below it.
FOLDERS = [("Common", "Common"), ("oslayer", "oslayer"), ("geometry", "geometry"), ("render", "render"),
           ("FontEngine/include", "FontEngine"), ("mtext/include", "mtext"), ("dxf/include", "dxf"),
           ("platform/include", ".")]
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Wnon-virtual-dtor", "-Werror"]


def errors(header, standard):
    command = [compiler, f"-std={standard}", "-fsyntax-only", *WARNINGS, "-x", "c++", "-"]
    command += [f"-I{project / root}" for root, _ in FOLDERS]
    finished = subprocess.run(command, input=f"#include <{header}>\n", capture_output=True, text=True)
    return f"{header} in {standard}:\n{finished.stderr}" if finished.returncode != 0 else ""


headers = [str(path.relative_to(project / root)) for root, folder in FOLDERS
           for path in sorted((project / root / folder).glob("*.h"))]
assert len(headers) > 50, headers
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    found = list(filter(None, pool.map(lambda job: errors(*job), itertools.product(headers, standards))))
print("\n".join(found) or f"{len(headers)} headers compile alone in {', '.join(standards)}")
sys.exit(1 if found else 0)

#!/usr/bin/env python3
"""Configures the host of the folder subproject, which adds the project's folder twice, with and without
BUILD_SHARED_LIBS; compiles it, links it with the library at hand and runs it:

    check_subproject.py CMAKE COMPILER PROJECT_FOLDER WORK_FOLDER LIBRARY
"""
import pathlib
import shutil
import subprocess
import sys

cmake, compiler, project, work, library = sys.argv[1:]
source = pathlib.Path(__file__).resolve().parent / "subproject"


def run(*command):
    print("$", *map(str, command), flush=True)
    finished = subprocess.run(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if finished.returncode != 0 or "CMake Warning" in finished.stdout:
        sys.exit(finished.stdout)


shutil.rmtree(work, ignore_errors=True)
for name, options in (("plain", []), ("shared", ["-DBUILD_SHARED_LIBS=ON"]),
                      ("overridden", ["-DBUILD_SHARED_LIBS=ON", "-DFONTENGINE_SHARED=OFF"]),
                      ("everything", ["-DFONTENGINE_BUILD_MTEXT=ON", "-DFONTENGINE_BUILD_DXF=ON"])):
    run(cmake, "-S", source, "-B", pathlib.Path(work, name), "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={compiler}",
        f"-DFONTENGINE={project}", f"-DLIBRARY_AT_HAND={library}", *options)

# The library itself is not built: it takes minutes, and the one at hand is the same.
build = pathlib.Path(work, "plain")
run(cmake, "--build", build, "--target", "host")
run(build / "host")
assert not list(build.rglob("libFontEngine*")), "the library was built"

# A host's installation holds what is the host's.
run(cmake, "--install", build, "--prefix", build / "installed")
installed = {str(path.relative_to(build / "installed")) for path in (build / "installed").rglob("*") if path.is_file()}
assert installed == {"share/host/CMakeLists.txt"}, installed

#!/usr/bin/env python3
"""Builds and runs the hosts of the folder package over an installed package, found by CMake and by pkg-config:

    check_package.py CMAKE COMPILER PREFIX WORK_FOLDER VERSION
"""
import os
import pathlib
import shutil
import subprocess
import sys

cmake, compiler, prefix, work, version = sys.argv[1:]
source = pathlib.Path(__file__).resolve().parent / "package"
programs = ["measure", "components", "exceptions", "neighbours", "unload"]


def run(*command, **options):
    print("$", *map(str, command), flush=True)
    subprocess.run(list(map(str, command)), check=True, **options)


def pkg_config(*arguments):
    found = next(pathlib.Path(prefix).glob("lib*/**/pkgconfig"))
    return subprocess.run(["pkg-config", *arguments], check=True, capture_output=True, text=True,
                          env={**os.environ, "PKG_CONFIG_PATH": str(found)}).stdout.split()


build = pathlib.Path(work)
shutil.rmtree(build, ignore_errors=True)
run(cmake, "-S", source, "-B", build, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_PREFIX_PATH={prefix}",
    f"-DEXPECTED_VERSION={version}", f"-DEXPECTED_PREFIX={prefix}", stdout=subprocess.DEVNULL)
run(cmake, "--build", build)
for program in programs:
    run(build / program)

assert pkg_config("--modversion", "fontengine") == [version]
flags = pkg_config("--cflags", "--libs", "fontengine-mtext", "fontengine-dxf")
for name in ("measure", "components"):
    program = build / f"{name}-by-pkg-config"
    run(compiler, "-std=c++20", source / f"{name}.cpp", f'-DEXPECTED_VERSION="{version}"', "-o", program, *flags)
    libraries = [flag[2:] for flag in flags if flag.startswith("-L")]
    run(program, env={**os.environ, "LD_LIBRARY_PATH": ":".join(libraries)})

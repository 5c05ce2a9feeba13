#!/usr/bin/env python3
"""Compiles a file whose violations name it, from two folders with paths of different lengths, as the build does, and
compares the objects without what is for debuggers:

    check_source_path.py PROJECT_FOLDER WORK_FOLDER COMPILER OPTIONS DEFINITIONS
"""
import pathlib
import shutil
import subprocess
import sys

project, work, compiler, options, definitions = sys.argv[1:]
SOURCE = "Common/Common/OrderedContainer.cpp"


def compiled(folder):
    folder.mkdir(parents=True)
    for name in ("Common", "platform/include"):
        shutil.copytree(pathlib.Path(project, name), folder / name)
    moved = [option.replace(project, str(folder)) for option in options.split(";") if option]
    moved += ["-D" + definition.replace(project, str(folder)) for definition in definitions.split(";") if definition]
    target = folder / "compiled.o"
    subprocess.run([compiler, "-std=c++20", "-O1", "-fPIC", *moved, "-I", folder / "Common", "-c", folder / SOURCE,
                    "-o", target], check=True)
    subprocess.run(["objcopy", "--strip-debug", target], check=True)
    return target.read_bytes()


shutil.rmtree(work, ignore_errors=True)
short = compiled(pathlib.Path(work, "a"))
long = compiled(pathlib.Path(work, "a-folder-whose-name-is-longer", "and-deeper"))
assert b"Common/Common/OrderedContainer" in short, "the source is not named"
assert str(pathlib.Path(work)).encode() not in short, "the source's folder is named"
assert short == long, "the objects differ"

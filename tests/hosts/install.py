#!/usr/bin/env python3
"""Installs what was built, and the other kind of its libraries beside it, where no earlier installation is left:

    install.py CMAKE BUILD_FOLDER PREFIX
"""
import shutil
import subprocess
import sys

cmake, build, prefix = sys.argv[1:]
shutil.rmtree(prefix, ignore_errors=True)
install = [cmake, "--install", build, "--prefix", prefix]
subprocess.run(install, check=True, stdout=subprocess.DEVNULL)
subprocess.run([*install, "--component", "fontengine_other_kind"], check=True, stdout=subprocess.DEVNULL)

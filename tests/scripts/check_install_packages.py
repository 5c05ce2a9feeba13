#!/usr/bin/env python3
"""Checks how scripts/install-packages meets another apt-get: with programs of its own in place of apt-get and its like."""
import os
import pathlib
import subprocess
import sys
import tempfile

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "install-packages"

# Each call takes the next line of the file `answers`; after the last one everything succeeds.
APT_GET = """#!/bin/sh
echo "$@" >>"$TOOLS/calls"
answer=$(head -n 1 "$TOOLS/answers")
sed -i 1d "$TOOLS/answers"
[ -z "$answer" ] || { echo "E: $answer" >&2; exit 100; }
"""
LOCKED = "Could not get lock /var/lib/apt/lists/lock. It is held by process 7 (apt-get)"


def install(answers):
    """The exit status, what was printed, and the calls of apt-get where it gives these answers."""
    with tempfile.TemporaryDirectory() as folder:
        tools = pathlib.Path(folder)
        (tools / "answers").write_text("".join(answer + "\n" for answer in answers))
        programs = {"apt-get": APT_GET, "dpkg-query": "#!/bin/sh\nexit 1\n", "sleep": "#!/bin/sh\n",
                    "sudo": '#!/bin/sh\nexec "$@"\n'}
        for name, text in programs.items():
            (tools / name).write_text(text)
            (tools / name).chmod(0o755)
        environment = dict(os.environ, TOOLS=folder, PATH=f"{folder}:{os.environ['PATH']}")
        done = subprocess.run([SCRIPT, "fuzz"], env=environment, capture_output=True, text=True, timeout=60)
        return done.returncode, done.stdout + done.stderr, (tools / "calls").read_text().splitlines()


def check(condition, what):
    if not condition:
        sys.exit(f"check_install_packages: {what}")


status, text, calls = install([])
check(status == 0 and len(calls) == 2, f"a free apt-get is called once for each step: {calls}")
check(all("DPkg::Lock::Timeout=" in call for call in calls), "apt-get is told to wait for dpkg's lock")

status, text, calls = install([LOCKED, LOCKED])
check(status == 0, f"a lock that is given back is waited for: {text}")
check(text.count("Waiting for another apt-get") == 1, f"the wait is announced once: {text}")

status, text, calls = install(["Unable to locate package clang"])
check(status == 1 and len(calls) == 1, f"another failure is not tried again: {calls}")
check("Unable to locate package clang" in text, f"the failure is shown: {text}")

status, text, calls = install([LOCKED] * 1000)
check(status == 1 and len(calls) == 60, f"the wait has an end: {len(calls)} calls")

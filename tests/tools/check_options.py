#!/usr/bin/env python3
"""Checks that the man page and the completion know the commands and options that --help lists, and no others.

    check_options.py FONTENGINE FOLDER_OF_THE_MAN_PAGE_AND_THE_COMPLETION
"""
import pathlib
import re
import subprocess
import sys

OPTION = re.compile(r"--[a-z][a-z-]*")


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], check=True, capture_output=True, text=True).stdout


def listed(text):
    """The options at the start of the lines of a help text."""
    return {option for line in text.splitlines() if re.match(r"  -", line) for option in OPTION.findall(line.split("  ")[1])}


def commands_of(text):
    return re.findall(r"^  (\w+) ", text[text.index("Subcommands:"):], re.MULTILINE)


def completed(completion, *words):
    """What bash offers after `fontengine WORDS...`."""
    quoted = " ".join(words)
    script = f"""source "$0"
        COMP_WORDS=(fontengine {quoted}) COMP_CWORD={len(words)}
        _fontengine fontengine {words[-1]} {words[-2] if len(words) > 1 else "fontengine"}
        printf '%s\\n' "${{COMPREPLY[@]}}" """
    run = subprocess.run(["bash", "-c", script, str(completion)], check=True, capture_output=True, text=True)
    return set(run.stdout.split())


def sections_of(page):
    """The options of each part of the man page, by the name in its heading."""
    parts = re.split(r"^\.S[SH] (.*)$", page.replace("\\-", "-"), flags=re.MULTILINE)
    return {heading: set(OPTION.findall(text)) for heading, text in zip(parts[1::2], parts[2::2])}


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    completion = folder / "fontengine.bash-completion"
    sections = sections_of((folder / "fontengine.1").read_text(encoding="utf-8"))
    problems = []

    def compare(what, known, expected):
        if known != expected:
            problems.append(f"{what}: lacks {sorted(expected - known)}, has besides {sorted(known - expected)}")

    general = help_of(program)
    commands = commands_of(general)
    if not commands:
        problems.append("--help lists no commands")
    compare("completion of the program", completed(completion, "''"), set(commands) | listed(general))
    compare("man page, Everywhere", sections.get("Everywhere", set()), listed(general))
    for command in commands:
        options = listed(help_of(program, command))
        compare(f"completion of {command}", completed(completion, command, "-"), options)
        compare(f"man page of {command}", sections.get(f"fontengine {command}", set()) | {"--help"}, options)
    named = {heading.split()[1] for heading in sections if heading.startswith("fontengine ")}
    compare("man page, commands", named, set(commands))
    sys.exit("\n".join(problems) or 0)


main()

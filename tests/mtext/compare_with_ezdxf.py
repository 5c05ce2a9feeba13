#!/usr/bin/python3
"""Compares what a reader sees of texts, as this project and as ezdxf read them.

    compare_with_ezdxf.py --program mtext_plain_text DRAWING_OR_FOLDER...

Every MTEXT, MULTILEADER, TEXT, ATTRIB, ATTDEF and written-over DIMENSION of the
drawings, those in blocks included, is read by both; so are the contents of a list below, which holds what drawings
rarely do. The readings must be equal. Where the two differ on purpose, ezdxf is
given the content in other words that mean the same, by one of the rules below;
each rule counts the contents it touched, so that it is seen what it is for.
Needs Debian's python3-ezdxf. The exit code is 1 when a reading differs, and when
there was nothing to compare.
"""

import argparse
import collections
import pathlib
import re
import subprocess
import sys

try:
    import ezdxf
    from ezdxf import recover
    from ezdxf.tools.text import MTextParser, TokenType, plain_text
except ImportError:
    sys.exit("ezdxf is missing: install Debian's package python3-ezdxf.")

NBSP = "\u00a0"

# Seldom seen, and alike in both once the rules have spoken.
CONTENTS = [
    "", "plain", "a\\Pb", "a\\P\\P", "\\~x\\~", "\\\\x\\{y\\}", "{a{b}c}d", "a}b{c", "\\A1;x", "\\H3Text",
    "\\H1.5xT", "\\H.5;x", "\\Habc;T", "\\C1Text", "\\c255;x", "\\L\\l\\O\\o\\K\\kx", "\\T2;\\W1.2x;\\Q15;x",
    "\\Z12;abc", "\\ abc", "3\\\"", "\\fArial;x", "\\fArial|b1|i0|c134|p34|;x", "\\Fsimplex.shx,gbcbig.shx;x",
    "\\pi1,l2,r3;x", "\\pxi-3,l4t4;x^Iy", "\\pqc;x", "\\pt4,8,c12;x", "\\pi*,l*,t;x", "\\psm1.5,b1,a2;x",
    "x^Iy", "x^ 2", "x^2", "x^", "x^Jy", "x^M^Jy", "a\nb", "a\r\nb", "%%c20", "%%D%%P", "50%", "50%%%",
    "%%z", "%%065", "%%176", "%%uA%%u%%o%%k", "\\S1/2;x", "7\\S1#2;\"", "\\S+0.1^ -0.2;x", "\\S+0.1^-0.2;x",
    "m\\S2^ ;", "H\\S^ 2;O", "\\S12;x", "\\S1\\/2#3;", "\\S1/2/3;", "a\\Xb", "a\\Nb", "\\U+00fcx", "\\U+2205123",
    "\\M+18CE4", "%<\\AcVar Date>%x", "end\\",
]


class Rule:
    """Content for ezdxf in words that it reads as this project reads the original."""

    def __init__(self, name, pattern, replacement):
        self.name = name
        self.pattern = re.compile(pattern, re.DOTALL)
        self.replacement = replacement

    def apply(self, content):
        return self.pattern.sub(self.replacement, content)


def literal(text):
    """Text as an MTEXT content that shows it."""
    return re.sub(r"([\\{}])", r"\\\1", text)


def percent_character(match):
    number = int(match[1])
    if number == 127:
        return "°"
    if 32 <= number < 127 or 160 <= number < 256:
        return literal(chr(number))
    return "\ufffd" if 128 <= number < 160 else match[0]


# In this order; each sees what the ones before it made.
CHARACTER_RULES = [
    Rule("%%nnn: ezdxf shows the code", r"%%([0-9]{3})", percent_character),
    Rule("\\U+XXXX: ezdxf reads it when it loads a file, not in a content",
         r"(?<!\\)\\[Uu]\+([0-9A-Fa-f]{4})", lambda match: literal(chr(int(match[1], 16)))),
    Rule("\\M+nXXXX: without code pages it is the replacement character, in ezdxf the code",
         r"(?<!\\)\\M\+[1-5][0-9A-Fa-f]{4}", "\ufffd"),
]
# Many programs write a caret as it is, so it is one here before anything but a
# blank, I, J and M; and in a stack it parts, whatever stands behind it.
CARET = Rule("^x: ezdxf reads a control character", r"\^(?![ IJM])", "^ ")
CARRIAGE_RETURN = Rule("^M: ezdxf shows a blank", r"\^M|\r", "")
MTEXT_RULES = [
    Rule("%<...>%: a field is kept whole, ezdxf reads codes in it",
         r"%<\\.*?>%", lambda match: literal(match[0])),
    *CHARACTER_RULES,
    Rule("%%u %%o %%k: switches, in ezdxf's MTEXT text", r"(?<!%)%%[uUoOkK]", ""),
    Rule("%%%: a percent sign, in ezdxf's MTEXT three", r"%%%(?!%)", "%"),
    CARRIAGE_RETURN,
    CARET,
    Rule("\\X: a paragraph, nothing in ezdxf", r"(?<!\\)\\X", r"\\P"),
    Rule("\\H.5: ezdxf wants a digit before the point", r"\\H\.", r"\\H0."),
    Rule("a backslash at the end: kept, a blank in ezdxf", r"(?<!\\)\\$", r"\\\\"),
]
TEXT_RULES = [*CHARACTER_RULES, CARRIAGE_RETURN,
              Rule("^J: a blank, nothing in ezdxf", r"\^J|\n", " "), CARET]


def stack(upper, lower, kind):
    """A fraction as this project writes it."""
    lower = lower.strip(" ") if kind == "^" else lower
    if kind == "^" and not (upper and lower):
        return upper + lower
    return upper + ("/" + lower if kind else "")


def mtext_by_ezdxf(content):
    parts = []
    for token in MTextParser(content):
        if token.type == TokenType.WORD:
            parts.append(token.data)
        elif token.type == TokenType.STACK:
            parts.append(stack(*token.data))
        else:
            parts.append({TokenType.SPACE: " ", TokenType.NBSP: NBSP, TokenType.TABULATOR: "\t",
                          TokenType.NEW_PARAGRAPH: "\n", TokenType.NEW_COLUMN: "\n"}.get(token.type, ""))
    return "".join(parts)


def read_by_ezdxf(kind, content, touched):
    for rule in MTEXT_RULES if kind == "M" else TEXT_RULES:
        changed = rule.apply(content)
        if changed != content:
            touched[rule.name] += 1
        content = changed
    return mtext_by_ezdxf(content) if kind == "M" else plain_text(content)


def comparable(text):
    # A fraction keeps apart from digits beside it here.
    return re.sub(f"(?<=[0-9]){NBSP}(?=[0-9])", "", text)


def read_by_program(program, records):
    stream = b"".join((kind + content).encode("utf-8", "replace") + b"\0" for kind, content, _ in records)
    answer = subprocess.run([program], input=stream, stdout=subprocess.PIPE, check=True).stdout
    return [text.decode("utf-8") for text in answer.split(b"\0")[:-1]]


def records_of(path):
    try:
        drawing = ezdxf.readfile(path)
    except ezdxf.DXFStructureError:
        drawing, _ = recover.readfile(path)
    for entity in drawing.entitydb.values():
        kind = entity.dxftype()
        where = f"{path.name} {kind} #{entity.dxf.get('handle', '?')}"
        if kind == "MTEXT":
            yield "M", entity.text, where
        elif kind in ("TEXT", "ATTRIB", "ATTDEF"):
            yield "T", entity.dxf.get("text", ""), where
        elif kind == "DIMENSION" and entity.dxf.get("text", "") not in ("", " ", "<>"):
            yield "M", entity.dxf.text, where
        elif kind in ("MULTILEADER", "MLEADER") and entity.context.mtext is not None:
            yield "M", entity.context.mtext.default_content, where


def drawings(paths):
    for path in map(pathlib.Path, paths):
        yield from sorted(path.rglob("*.dxf")) if path.is_dir() else [path]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", required=True, help="the built mtext_plain_text")
    parser.add_argument("paths", nargs="+", metavar="DRAWING_OR_FOLDER")
    arguments = parser.parse_args()

    records = [("M", content, "list") for content in CONTENTS]
    files = list(drawings(arguments.paths))
    for path in files:
        records += records_of(path)
    if not files or all(where == "list" for _, _, where in records):
        sys.exit("No drawing with a text was found.")

    ours = read_by_program(arguments.program, records)
    assert len(ours) == len(records)
    touched = collections.Counter()
    different = 0
    for (kind, content, where), text in zip(records, ours):
        theirs = read_by_ezdxf(kind, content, touched)
        if comparable(text) != comparable(theirs):
            different += 1
            print(f"{where}: {content!r}\n  here  {text!r}\n  ezdxf {theirs!r}")
    kinds = collections.Counter(kind for kind, _, _ in records)
    print(f"{len(files)} drawings, {kinds['M']} MTEXT contents, {kinds['T']} single lines: {different} differ.")
    for name, count in touched.most_common():
        print(f"  {count:5} in other words for ezdxf: {name}")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())

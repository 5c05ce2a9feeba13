#!/usr/bin/env python3
"""Compares what two platforms say of the parity documents and of the fonts.

    compare.py OURS THEIRS REASONS_MD [--list]

Prints, group by group, how many values agree within 0.01 units + 0.1 % and how many differ
for a reason that has a heading in REASONS_MD, then every difference without a reason. Exits
with 1 when there is one, or when a reason has no heading.
"""

import argparse
import collections
import functools
import json
import re
import struct
import sys
import unicodedata

import shaping


def agree(ours, theirs):
    if isinstance(ours, (int, float)) and isinstance(theirs, (int, float)):
        return abs(ours - theirs) <= 0.01 + 0.001 * max(abs(ours), abs(theirs))
    return ours == theirs


def pieces(family, text):
    """What one font draws of a text: the words that it has."""
    return [word for word in re.split("( )", text) if shaping.is_known(family, word)] + (
        [text] if shaping.is_known(family, text) else [])


class Difference:
    """A value of a document, or of a font family, on which the platforms differ; None: there is none."""

    def __init__(self, name, key, ours, theirs):
        self.name, self.key = name, key
        self.group = ours.get("group")
        self.values, self.others = ours, theirs
        self.ours, self.theirs = ours.get(key), theirs.get(key)
        # The key without its indices.
        self.kind = re.sub(r"\[\d+\]", "", key)

    def __str__(self):
        return f"{self.name}: {self.key}: {self.ours} here, {self.theirs} there"

    def horizontal(self):
        return self.kind.endswith((".x", ".xmin", ".xmax"))

    def by_ink(self):
        """Whether the value comes from glyph outlines."""
        return "ink" in self.kind or self.kind.startswith(("dxf.", "plain by", "cluster"))

    def smaller_than(self, limit):
        numbers = all(isinstance(value, (int, float)) for value in (self.ours, self.theirs))
        return numbers and abs(self.ours - self.theirs) < limit

    def texts(self):
        """The document's lines with their families: (family, text)."""
        pairs = set()
        for key, text in self.values.items():
            if match := re.fullmatch(r"paragraph\[(\d+)\]\.text", key):
                families = {value for name, value in self.values.items()
                            if name.startswith(f"paragraph[{match[1]}].") and name.endswith(".family")}
                lines = re.split("[\r\n\v\f\x85\u2028\u2029\t]+", text)
                pairs |= {(family, line) for family in families for line in lines if line}
        return pairs

    def is_on_another_line(self):
        """Whether the value says on which line of several a character stands."""
        return (self.group in ("note", "underlined lines") and
                re.search(r"\.(character|space)\.(y|baseline)$", self.kind) is not None)

    def is_placing(self):
        """Whether the value says where glyphs stand, or which of them are one cluster."""
        return (self.horizontal() or self.by_ink() or
                self.kind.endswith((".starts a cluster", ".glyphs", ".character.y")))

    def is_kerned(self):
        """Whether Noto or DejaVu fonts kern a line of the document. A line's whole width must then be what it is
        without kerning there, or in Hebrew with the pairs of the other direction."""
        if not any(shaping.is_kerned(family, piece) for family, text in self.texts()
                   if family.startswith(("Noto", "DejaVu")) for piece in pieces(family, text)):
            return False
        if self.kind != "line.box.xmax" or len(self.texts()) != 1 or self.group == "mixed line":
            return True
        family, text = next(iter(self.texts()))
        if not shaping.is_known(family, text) or unicodedata.normalize("NFD", text) != text:
            return True
        is_right_to_left = any(unicodedata.bidirectional(c) == "R" for c in text)
        option = "--direction=ltr" if is_right_to_left else "--features=-kern"
        width = functools.partial(shaping.width_of, family, text, style=self.style())
        return agree(self.ours * width(option) / width(), self.theirs)

    def style(self):
        words = self.name.lower().split("/")[-1].split(":")[0].split()
        return " ".join(word.capitalize() for word in ("bold", "italic") if word in words) or "Regular"

    def is_shaped(self):
        return any(shaping.is_shaped(family, text) for family, text in self.texts())

    def mixes_directions(self):
        """Whether a line holds right-to-left text besides text or digits of the other direction, controls, or marks."""
        for _, text in self.texts():
            classes = {unicodedata.bidirectional(c) for c in text}
            is_cut = classes & {"L", "EN", "AN", "NSM"} or any(unicodedata.category(c) == "Cf" for c in text)
            if classes & {"R", "AL"} and is_cut:
                return True
        return False

    def other_family(self):
        """Whether the platforms set any character of the document in different families."""
        return any(self.others.get(key, value) != value
                   for key, value in self.values.items() if key.endswith(".family"))

    def near_diacritic(self):
        """Whether a letter with a diacritic, or the middle dot, stands where the key points."""
        paragraph = re.match(r"paragraph\[(\d+)\]", self.key)
        text = self.values[f"paragraph[{paragraph[1] if paragraph else 0}].text"].encode("utf-16-le", "surrogatepass")
        units = [chr(unit) for unit in struct.unpack(f"<{len(text) // 2}H", text)]
        if match := re.search(r"\.(?:character|space)\[(\d+)\]", self.key):
            place = int(match[1])
        elif match := re.match(r"cluster\[(\d+)\]", self.key):
            # Clusters go by the number of characters drawn before them.
            units = [unit for unit in units if not unit.isspace()]
            place = int(match[1])
        else:
            return False
        return any(unicodedata.normalize("NFD", unit) != unit or unit == "\u00b7" for unit in units[place : place + 3])


# What explains a difference, first match first; each name is a heading of REASONS_MD.
DOCUMENT_REASONS = [
    ("Boxes without a width", lambda d: d.group == "no width to wrap at" or
     (d.name.endswith("b1.000000") and d.kind.startswith("plain"))),
    ("Font fallback", lambda d: d.other_family()),
    ("Capital heights that no table states", lambda d: d.group == "old OS/2 table" and
     d.kind.startswith("line.metrics")),
    ("Justified lines", lambda d: d.group == "justified" and (d.horizontal() or d.by_ink())),
    ("Tabs", lambda d: d.group == "tabs" and (d.horizontal() or d.theirs is None)),
    ("Line ends", lambda d: ".control" in d.kind and d.theirs is None),
    ("Underlines over several runs", lambda d: d.group in ("underlined runs", "underlined lines") and
     ("bars" in d.kind or "regions" in d.kind or d.by_ink())),
    ("Right to left", lambda d: d.mixes_directions() and d.is_placing()),
    ("Scripts with shaping of their own", lambda d: d.group == "complex script" and d.is_shaped() and
     d.is_placing()),
    ("Korean spaces", lambda d: "CJK KR" in d.name and d.horizontal() and
     any(" " in text for _, text in d.texts())),
    ("Combining marks", lambda d: d.group == "marks" and d.is_shaped() and d.is_placing()),
    ("Ink at other sizes than whole pixels", lambda d: d.by_ink() and
     (d.group == "small label" or d.smaller_than(1.0))),
    ("Trailing whitespace", lambda d: ".space" in d.kind and d.theirs is None),
    ("Letters with diacritics", lambda d: d.near_diacritic()),
    ("Kerning", lambda d: (d.horizontal() or d.is_on_another_line()) and d.is_kerned()),
]

# Here the group is the family's name.
FONT_REASONS = [
    ("Family names", lambda d: "Old" in d.name or "Tamil" in d.name),
    ("Capital heights that no table states", lambda d: ("DejaVu" in d.name or "Narrow" in d.name + d.key) and
     not d.key.endswith(("face name", "designUnitsPerEm", "family"))),
]


def flattened(families):
    """Values of fonts by one key each: "face/metrics.ascent"."""
    flat = {}
    for name, family in families.items():
        flat[name] = {}
        for key, value in family.items():
            for inner, number in (value.items() if isinstance(value, dict) else [(None, value)]):
                flat[name][key if inner is None else f"{key}/{inner}"] = number
    return flat


def compare(ours, theirs, reasons, group_of):
    """Per group the counts, and the differences with their reasons (None: without one)."""
    groups = collections.defaultdict(collections.Counter)
    differences = []
    for name in ours.keys() | theirs.keys():
        here, there = ours.get(name, {}), theirs.get(name, {})
        counts = groups[group_of(name, here)]
        for key in sorted(here.keys() | there.keys()):
            counts["values"] += 1
            if agree(here.get(key), there.get(key)):
                counts["agree"] += 1
                continue
            difference = Difference(name, key, here, there)
            reason = next((reason for reason, holds in reasons if holds(difference)), None)
            counts[reason or "UNEXPLAINED"] += 1
            differences.append((difference, reason))
    return groups, differences


def print_groups(groups):
    total = collections.Counter()
    for group, counts in sorted(groups.items()):
        total.update(counts)
        print_counts(group, counts)
    print_counts("all", total)


def print_counts(group, counts):
    reasons = ", ".join(f"{name} {count}" for name, count in counts.items() if name not in ("values", "agree"))
    print(f"{group:26}{counts['values']:8}{counts['agree']:8}{100 * counts['agree'] / counts['values']:8.2f} %  {reasons}")


def print_unexplained(documents, differences):
    """How much agrees of what no reason explains, apart for Latin, Cyrillic and Greek documents and for the others."""
    european, other = collections.Counter(), collections.Counter()
    for values in documents.values():
        counts = european if is_european(values) else other
        counts["values"] += len(values)
    for difference, reason in differences:
        if difference.name in documents:
            counts = european if is_european(difference.values) else other
            counts["explained" if reason else "differ"] += 1
    for name, counts in (("Latin, Cyrillic, Greek", european), ("other scripts", other)):
        compared = counts["values"] - counts["explained"]
        print(f"{name}: of {compared} values that no reason explains, "
              f"{100 * (compared - counts['differ']) / compared:.3f} % agree")


def is_european(values):
    letters = {unicodedata.name(c, "").split()[0] for key, text in values.items()
               if re.fullmatch(r"paragraph\[\d+\]\.text", key) for c in text if c.isalpha()}
    return letters <= {"LATIN", "CYRILLIC", "GREEK"}


def main():
    parser = argparse.ArgumentParser(description="compares two platforms' answers")
    parser.add_argument("ours")
    parser.add_argument("theirs")
    parser.add_argument("reasons", help="the document whose headings name the reasons")
    parser.add_argument("--list", action="store_true", help="list the explained differences too")
    arguments = parser.parse_args()
    with open(arguments.ours, encoding="utf-8") as file:
        ours = json.load(file)
    with open(arguments.theirs, encoding="utf-8") as file:
        theirs = json.load(file)
    with open(arguments.reasons, encoding="utf-8") as file:
        headings = set(re.findall(r"^#+ (.*)$", file.read(), re.MULTILINE))

    print(f"{'group':26}{'values':>8}{'agree':>8}")
    groups, differences = compare(ours["documents"], theirs["documents"], DOCUMENT_REASONS,
                                  lambda name, values: values.get("group", name))
    for section in ("families", "found"):
        more_groups, more = compare(flattened(ours["fonts"][section]), flattened(theirs["fonts"][section]),
                                    FONT_REASONS, lambda name, values, section=section: f"fonts: {section}")
        groups |= more_groups
        differences += more
    print_groups(groups)

    differences.sort(key=lambda pair: str(pair[0]))
    print_unexplained(ours["documents"], differences)
    failures = 0
    for difference, reason in differences:
        if reason is None:
            failures += 1
            print(f"without a reason: {difference}")
        elif arguments.list:
            print(f"{reason}: {difference}")
    for reason in sorted({reason for _, reason in differences if reason} - headings):
        failures += 1
        print(f"not in {arguments.reasons}: {reason}")
    print(f"{len(differences)} differences, {failures} of them unexplained")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())

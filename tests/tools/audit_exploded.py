#!/usr/bin/python3
"""Explodes drawings and lets another reader of the format judge the result.

    audit_exploded.py PROGRAM DRAWING...

For each drawing and both kinds of pieces: an audit finds nothing in the result
that it did not find in the original; handles are unique and below the seed; every
entity that is no MTEXT is there with the same groups; pieces stand on layers and
in spaces that the drawing had, and something has the handle of every text.
"""
import collections
import os
import subprocess
import sys
import tempfile

import ezdxf
from ezdxf import recover


def audit_errors(path):
    document, auditor = recover.readfile(path)
    errors = collections.Counter((error.code, str(error.message)) for error in auditor.errors)
    return document, errors, len(auditor.fixes)


def spaces(document):
    for layout in document.layouts:
        yield layout
    for block in document.blocks:
        if not block.is_any_layout:
            yield block


def entities_by_handle(document):
    return {entity.dxf.handle: entity for space in spaces(document) for entity in space}


def raw_pairs(path):
    with open(path, "rb") as file:
        lines = file.read().split(b"\n")
    return [(lines[i].strip(), lines[i + 1].rstrip(b"\r")) for i in range(0, len(lines) - 1, 2)]


def raw_entities(path):
    """Runs of pairs from one group 0 to the next."""
    entity = []
    for code, value in raw_pairs(path):
        if code == b"0" and entity:
            yield tuple(entity)
            entity = []
        entity.append((code, value))
    yield tuple(entity)


def seed_of(path):
    pairs = raw_pairs(path)
    for i, pair in enumerate(pairs):
        if pair == (b"9", b"$HANDSEED"):
            return int(pairs[i + 1][1], 16)
    return None


def handles_of(path):
    for entity in raw_entities(path):
        kind = entity[0][1]
        for code, value in entity:
            if code == (b"105" if kind == b"DIMSTYLE" else b"5") and kind not in (b"SECTION", b"HEADER"):
                yield int(value, 16)
                break


def without_header(entities):
    return collections.Counter(entity for entity in entities if entity[0][1] != b"SECTION")


def compare(drawing, exploded, kind, problems):
    def complain(text):
        problems.append("%s as %s: %s" % (os.path.basename(drawing), kind, text))

    before, errors_before, fixes_before = audit_errors(drawing)
    after, errors_after, fixes_after = audit_errors(exploded)
    for error, count in (errors_after - errors_before).items():
        complain("new audit error, %d times: %s" % (count, error))
    if fixes_after > fixes_before:
        complain("%d more audit fixes" % (fixes_after - fixes_before))

    handles = list(handles_of(exploded))
    if len(handles) != len(set(handles)):
        twice = [hex(h) for h, n in collections.Counter(handles).items() if n > 1]
        if len(twice) > len(handles_twice(drawing)):
            complain("handles given twice: %s" % twice[:5])
    if max(handles) >= seed_of(exploded):
        complain("handle %X is not below the seed %X" % (max(handles), seed_of(exploded)))

    lost = without_header(e for e in raw_entities(drawing) if e[0][1] != b"MTEXT") - without_header(raw_entities(exploded))
    if lost:
        complain("%d entities changed, first: %s" % (sum(lost.values()), list(lost)[0][:3]))

    old, new = entities_by_handle(before), entities_by_handle(after)
    known_layers = {e.dxf.layer for e in old.values()}
    known_owners = {e.dxf.owner for e in old.values()}
    added = [e for handle, e in new.items() if handle not in old]
    for entity in added:
        if entity.dxf.layer not in known_layers or entity.dxf.owner not in known_owners:
            complain("%s has a layer or an owner of its own" % entity)
            break
    for handle, entity in old.items():
        if entity.dxftype() == "MTEXT" and entity.text and handle not in new:
            complain("nothing took over the handle of %s" % entity)
            break
    kinds = {e.dxftype() for e in added}
    wanted = {"MTEXT", "HATCH", "LWPOLYLINE", "POLYLINE"} if kind == "clusters" else {"HATCH", "POLYLINE", "LWPOLYLINE"}
    if not kinds <= wanted:
        complain("unexpected kinds of pieces: %s" % kinds)
    return len(added)


def handles_twice(path):
    return [h for h, n in collections.Counter(handles_of(path)).items() if n > 1]




def main():
    program, drawings = sys.argv[1], sys.argv[2:]
    if not drawings:
        sys.exit(__doc__)
    problems = []
    with tempfile.TemporaryDirectory() as folder:
        for drawing in drawings:
            for kind in ("clusters", "outlines"):
                exploded = os.path.join(folder, "exploded.dxf")
                subprocess.run([program, "explode", drawing, exploded, "--to", kind], check=True, stdout=subprocess.DEVNULL)
                added = compare(drawing, exploded, kind, problems)
                print("%s as %s: %d entities more" % (os.path.basename(drawing), kind, added))
    if problems:
        sys.exit("\n".join(problems))


if __name__ == "__main__":
    main()

#!/usr/bin/python3
"""Writes what the pinned fonts' own tables say about their lines: font-metrics.tsv, and
our-platform-font-metrics.tsv for the fonts whose capitals' height no table states.

Usage: record-font-metrics.py FONT-FOLDER

FONT-FOLDER is the build tree's folder of pinned fonts. Reads the files with
fontTools (Debian: python3-fonttools), not with this project's code.

Ascent, descent and line gap are the typographic ones where the font asks for
that (OS/2 fsSelection bit 7), else the Win ones, the gap then being what hhea
asks for beyond them. The cap height is OS/2's where the table has one, else the
top of the outline of H.
"""

import pathlib
import sys

from fontTools.pens.boundsPen import BoundsPen
from fontTools.ttLib import TTFont

FACES = [
    "fonts-liberation/LiberationSans-Regular.ttf",
    "fonts-liberation/LiberationSans-Bold.ttf",
    "fonts-liberation/LiberationSans-Italic.ttf",
    "fonts-liberation/LiberationSans-BoldItalic.ttf",
    "fonts-liberation/LiberationSansNarrow-Regular.ttf",
    "fonts-liberation/LiberationSerif-Regular.ttf",
    "fonts-liberation/LiberationMono-Bold.ttf",
    "fonts-dejavu-core/DejaVuSans.ttf",
    "fonts-dejavu-core/DejaVuSans-Bold.ttf",
    "fonts-dejavu-extra/DejaVuSerif-Italic.ttf",
    "fonts-dejavu-extra/DejaVuSansCondensed.ttf",
    "fonts-noto-core/NotoSans-Regular.ttf",
    "fonts-noto-core/NotoSans-Bold.ttf",
    "fonts-noto-core/NotoSans-Italic.ttf",
    "fonts-noto-core/NotoSerif-Regular.ttf",
    "fonts-noto-core/NotoSansDevanagari-Regular.ttf",
    "fonts-noto-cjk/NotoSansCJK-Regular.ttc",
]

USE_TYPO_METRICS = 1 << 7


def states_cap_height(font):
    os2 = font["OS/2"]
    return os2.version >= 2 and os2.sCapHeight


def cap_height(font):
    if states_cap_height(font):
        return font["OS/2"].sCapHeight
    glyphs = font.getGlyphSet()
    pen = BoundsPen(glyphs)
    glyphs[font.getBestCmap()[ord("H")]].draw(pen)
    return pen.bounds[3]


def line(font):
    os2, hhea = font["OS/2"], font["hhea"]
    if os2.fsSelection & USE_TYPO_METRICS:
        return os2.sTypoAscender, max(0, -os2.sTypoDescender), os2.sTypoLineGap
    ascent, descent = os2.usWinAscent, abs(os2.usWinDescent)
    return ascent, descent, max(0, hhea.ascent + abs(hhea.descent) + hhea.lineGap - ascent - descent)


def write(table, fonts):
    with open(pathlib.Path(__file__).parent / table, "w", encoding="utf-8") as file:
        print("family", "bold", "italic", "unitsPerEm", "ascent", "descent", "lineGap", "capHeight", sep="\t", file=file)
        for font in fonts:
            selection = font["OS/2"].fsSelection
            print(font["name"].getName(1, 3, 1, 0x409), int(font["OS/2"].usWeightClass == 700), selection & 1,
                  font["head"].unitsPerEm, *line(font), cap_height(font), sep="\t", file=file)


faces = [TTFont(pathlib.Path(sys.argv[1]) / face, fontNumber=0) for face in FACES]
write("font-metrics.tsv", filter(states_cap_height, faces))
write("our-platform-font-metrics.tsv", (font for font in faces if not states_cap_height(font)))

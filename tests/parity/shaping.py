"""What HarfBuzz's own program says of a text: whether a font kerns it, and whether it shapes it at all.

Fonts are those that FONTCONFIG_FILE names.
"""

import functools
import json
import subprocess


@functools.lru_cache(maxsize=None)
def font_of(family, style="Regular"):
    """The file and face number of a family's font in a style; None where no font is called that."""
    pattern = f"{family}:style={style}"
    found = subprocess.run(["fc-match", "-f", "%{file}|%{index}|%{family}", pattern],
                           check=True, capture_output=True, text=True).stdout
    file, index, names = found.split("|")
    return (file, index) if family in names.split(",") else None


@functools.lru_cache(maxsize=None)
def glyphs_of(family, text, *options, style="Regular"):
    """The glyphs of a text as (glyph, cluster, advance, x offset, y offset) in font units."""
    file, index = font_of(family, style)
    command = ["hb-shape", f"--font-file={file}", f"--face-index={int(index) & 0xFFFF}", "--no-glyph-names",
               "--output-format=json", *options, "--unicodes=" + ",".join(f"{ord(c):x}" for c in text)]
    output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    return tuple((glyph["g"], glyph["cl"], glyph["ax"], glyph["dx"], glyph["dy"]) for glyph in json.loads(output))


def width_of(family, text, *options, style="Regular"):
    return sum(advance for _, _, advance, _, _ in glyphs_of(family, text, *options, style=style))


def is_known(family, text):
    """Whether the family's font is there and has the whole text."""
    return bool(text) and font_of(family) is not None and all(glyph != 0 for glyph, *_ in glyphs_of(family, text))


def is_kerned(family, text):
    """Whether kerning moves anything, also where the moves cancel out."""
    return is_known(family, text) and glyphs_of(family, text) != glyphs_of(family, text, "--features=-kern")


def is_shaped(family, text):
    """Whether the text is drawn otherwise than one glyph for each character, side by side (kerning apart)."""
    return not is_known(family, text) or (
        glyphs_of(family, text, "--features=-kern") != glyphs_of(family, text, "--shapers=fallback"))

#!/usr/bin/python3
"""Writes a drawing of many paragraph texts, the same for the same count and seed.

    make_many_texts.py COUNT OUT.dxf [SEED]

Labels, room names, dimensions, and notes that wrap, in several scripts, fonts and
sizes, as in the drawings that people make.
"""
import random
import sys

WORDS = """all dimensions shall be checked on site before fabrication begins wall roof pitch insulation reinforcement
cover pipe sleeve drain level slab beam column door window concrete grade refer detail section typical note office
affine fluffy waterproof membrane bracket bolt plate weld finish paint""".split()
OTHER = ["Все размеры даны в миллиметрах", "Alle Maße sind zu prüfen", "يجب التحقق من جميع الأبعاد", "יש לבדוק את כל המידות",
         "निर्माण से पहले जाँचे", "ต้องตรวจสอบขนาด", "施工前必须在现场核对", "寸法はすべてミリメートル", "모든 치수는 밀리미터"]
FONTS = ["", r"\fLiberation Sans|b0|i0;", r"\fLiberation Sans|b1|i0;", r"\fDejaVu Serif|b0|i1;", r"\Fromans.shx;"]


def content(rng):
    kind = rng.random()
    if kind < 0.35:
        return "%d" % rng.randint(100, 9999), 0.0
    if kind < 0.6:
        return "%s %d\\P{\\H0.7x;%.1f m²}" % (rng.choice(WORDS).upper(), rng.randint(1, 40), rng.uniform(2, 60)), 0.0
    if kind < 0.9:
        words = [rng.choice(WORDS) for _ in range(rng.randint(6, 40))]
        return "{%s\\L%s} %s" % (rng.choice(FONTS), words[0].upper(), " ".join(words[1:])), rng.uniform(30, 80)
    return rng.choice(OTHER), rng.choice([0.0, 40.0])


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    count = int(sys.argv[1])
    rng = random.Random(int(sys.argv[3]) if len(sys.argv) == 4 else 1)
    pairs = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1027"), (9, "$HANDSEED"), (5, "%X" % (count + 0x100)),
             (0, "ENDSEC"), (0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "STYLE"), (70, 1), (0, "STYLE"), (5, "11"),
             (2, "STANDARD"), (70, 0), (40, 0.0), (41, 1.0), (3, "DejaVuSans.ttf"), (4, ""), (0, "ENDTAB"), (0, "ENDSEC"),
             (0, "SECTION"), (2, "ENTITIES")]
    for i in range(count):
        text, width = content(rng)
        pairs += [(0, "MTEXT"), (5, "%X" % (0x100 + i)), (100, "AcDbEntity"), (8, "L%d" % rng.randint(0, 9)),
                  (100, "AcDbMText"), (10, rng.uniform(0, 1e4)), (20, rng.uniform(0, 1e4)), (30, 0.0),
                  (40, rng.choice([1.8, 2.5, 3.5, 5.0])), (41, width), (71, rng.randint(1, 9)), (1, text),
                  (7, "STANDARD"), (50, rng.choice([0.0, 0.0, 0.0, 1.5707963267949]))]
    pairs += [(0, "ENDSEC"), (0, "EOF")]
    with open(sys.argv[2], "w", encoding="utf-8", newline="\n") as file:
        for code, value in pairs:
            file.write("%3d\n%s\n" % (code, value))


if __name__ == "__main__":
    main()

#!/usr/bin/python3
"""Writes the example drawing: a small floor plan with room labels, dimensions,
general notes in several languages and a title block.

    make-floor-plan.py floor-plan.dxf

Needs ezdxf (Debian: python3-ezdxf). The drawing is in millimetres; text heights
are capital heights, as everywhere in drawings.
"""
import sys

import ezdxf

TOP_LEFT, MIDDLE_CENTER, BOTTOM_CENTER, BOTTOM_RIGHT = 1, 5, 8, 9  # attachment points as the format numbers them

NOTES = r"""{\LGENERAL NOTES}\P1.\~All dimensions are in millimetres and shall be checked on site before fabrication begins. """ \
    r"""Do not scale from this drawing.\P2.\~Reinforcement: %%c12 at 150\~c/c both ways, cover 35\~%%p5\~mm.\P""" \
    r"""3.\~Roof pitch 12%%d, falls 1:60 to outlets. Insulation {\fDejaVu Sans|b1|i0|c0|p34;EI\~60} where shown hatched.\P""" \
    r"""4.\~Pipe sleeves \S1#2; inch larger than the pipe; see detail {\C1;D-104} \{revised\}."""

WORLD = [
    (r"{\LHINWEISE}\PAlle Maße sind vor der Ausführung auf der Baustelle zu prüfen. Die tragende Außenwand im Erdgeschoss "
     r"erhält eine zusätzliche Bewehrung %%c10.", None),
    (r"{\LПРИМЕЧАНИЯ}\PВсе размеры даны в миллиметрах и должны быть проверены на месте. Уклон кровли 12%%d.", None),
    (r"{\LΣΗΜΕΙΩΣΕΙΣ}\PΌλες οι διαστάσεις πρέπει να ελεγχθούν στο εργοτάξιο πριν από την κατασκευή.", None),
    (r"{\Lملاحظات}\Pيجب التحقق من جميع الأبعاد في الموقع قبل بدء الأعمال، والكمرة B12 كما في اللوحة.", "r"),
    (r"{\Lהערות}\Pיש לבדוק את כל המידות באתר לפני תחילת העבודות, ראה פרט D-104.", "r"),
    (r"{\Lटिप्पणियाँ}\Pनिर्माण से पहले सभी माप स्थल पर जाँचे जाने चाहिए।", None),
    (r"{\Lหมายเหตุ}\Pต้องตรวจสอบขนาดทั้งหมดที่หน้างานก่อนเริ่มการก่อสร้าง", None),
    (r"{\L说明}\P所有尺寸均以毫米为单位，施工前必须在现场核对。屋面坡度为百分之二。", None),
    (r"{\L注記}\P寸法はすべてミリメートルとし、着工前に現場で確認すること。", None),
    (r"{\L주기}\P모든 치수는 밀리미터이며 시공 전에 현장에서 확인해야 합니다.", None),
]

ROOMS = [
    # name, area, x, y (lower left), width, depth
    ("LIVING ROOM", "28.4", 0, 0, 6200, 4600),
    ("KITCHEN", "12.9", 6200, 0, 3800, 3400),
    ("HALL", "9.7", 6200, 3400, 3800, 2600),
    ("BEDROOM 1", "15.2", 0, 4600, 3900, 3900),
    ("BEDROOM 2", "8.9", 3900, 4600, 2300, 3900),
    ("BATH", "6.3", 6200, 6000, 2500, 2500),
    ("WC", "2.1", 8700, 6000, 1300, 2500),
]


def add_text(space, content, x, y, height, *, width=0.0, attach=TOP_LEFT, rotation=0.0,
             style="NOTES", layer="TEXT"):
    text = space.add_mtext(content, dxfattribs={"layer": layer, "style": style, "char_height": height})
    text.set_location((x, y), rotation or None, attach)
    if width:
        text.dxf.width = width
    return text


def rooms(space):
    for name, area, x, y, w, d in ROOMS:
        space.add_lwpolyline([(x, y), (x + w, y), (x + w, y + d), (x, y + d)], close=True, dxfattribs={"layer": "WALL"})
        content = r"%s\P{\H0.7x;%s m²}" % (name, area)
        add_text(space, content, x + w / 2, y + d / 2, 180 if w > 2000 else 120, attach=MIDDLE_CENTER,
                 style="ROOMS")


def dimensions(space):
    """Dimension texts as a draughtsman writes them: along their line, read from below or from the right."""
    for x0, x1 in [(0, 3900), (3900, 6200), (6200, 8700), (8700, 10000)]:
        y = 9100
        space.add_line((x0, y), (x1, y), dxfattribs={"layer": "DIM"})
        add_text(space, r"\A1;%s" % format(x1 - x0, ",").replace(",", r"\~"), (x0 + x1) / 2, y + 60, 125,
                 attach=BOTTOM_CENTER, style="DIMS", layer="DIM")
    for y0, y1 in [(0, 4600), (4600, 8500)]:
        x = -600
        space.add_line((x, y0), (x, y1), dxfattribs={"layer": "DIM"})
        add_text(space, r"\A1;%s" % format(y1 - y0, ",").replace(",", r"\~"), x - 60, (y0 + y1) / 2, 125,
                 attach=BOTTOM_CENTER, rotation=90, style="DIMS", layer="DIM")
    add_text(space, r"D-1 / 900×2100", 6200, 4700, 90, rotation=45, style="DIMS", layer="DIM")


def notes(space):
    add_text(space, NOTES, 11200, 8500, 125, width=5600)
    column = [16900 + 700, 22600]
    heights = [8500, 8500]
    for i, (content, align) in enumerate(WORLD):
        side = 0 if i < 5 else 1
        if align:
            content = r"\pq%s;" % align + content
        add_text(space, content, column[side], heights[side], 125, width=4400)
        heights[side] -= 1650
    add_text(space, r"\pqj;Justified: the waterproof membrane shall be carried up behind the flashing for its whole length "
             r"and sealed so that water cannot collect, in accordance with the approved sample.", 11200, 4900, 125, width=5600)
    add_text(space, "Tag\tWidth\tHeight\\PD-1\t900\t2\\~100\\PD-2\t800\t2\\~100\\PW-1\t1\\~500\t1\\~200", 11200, 3600, 125, width=5600)


def title_block(space):
    x, y, w = 11200, 0, 5600
    for rows in [(0, 2100), (0, 1400), (0, 700)]:
        space.add_lwpolyline([(x, y), (x + w, y), (x + w, y + rows[1]), (x, y + rows[1])], close=True, dxfattribs={"layer": "FRAME"})
    add_text(space, r"{\fLiberation Serif|b1|i0|c0|p18;HOUSE ON THE HILL}\P{\H0.6x;\fLiberation Serif|b0|i1|c0|p18;Ground floor plan, scale 1:50}",
             x + 150, y + 1980, 250, style="TITLE")
    add_text(space, r"Drawn: K.\~Żółć   Checked: Ł.\~Đặng", x + 150, y + 1230, 125)
    add_text(space, r"A-101", x + w - 150, y + 120, 350, attach=BOTTOM_RIGHT, style="TITLE")
    add_text(space, r"Rev. {\C1;B}", x + 150, y + 200, 180)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    drawing = ezdxf.new("R2010")
    for name in ("WALL", "DIM", "TEXT", "FRAME"):
        drawing.layers.add(name)
    # Two of the styles name fonts that many machines lack: texts must show all the same.
    for name, font in [("NOTES", "arial.ttf"), ("ROOMS", "DejaVuSans.ttf"), ("DIMS", "romans.shx"), ("TITLE", "LiberationSerif-Regular.ttf")]:
        drawing.styles.add(name, font=font)
    space = drawing.modelspace()
    rooms(space)
    dimensions(space)
    notes(space)
    title_block(space)
    drawing.saveas(sys.argv[1])


if __name__ == "__main__":
    main()

#include "ParagraphRects.h"

#include <algorithm>

#include <FontEngine/TextUtils.h>

namespace tool {

namespace {

using Alignment = render::eRichTextParagraphAlignment;

MbCartPoint alignmentPoint(const StandingParagraph& paragraph, const MbRect& rect) {
    render::CRichTextParagraph aligned;
    aligned.alignment = paragraph.alignment;
    return fonts::getRectPointToAlignTo(aligned, rect);
}

// From the ink's alignment point to the box's.
MbCartPoint offsetOf(const StandingParagraph& paragraph) {
    const MbCartPoint box = alignmentPoint(paragraph, paragraph.box());
    const MbCartPoint ink = alignmentPoint(paragraph, paragraph.ink());
    return {box.x - ink.x, box.y - ink.y};
}

bool isPinnedLeft(const StandingParagraph& paragraph) {
    return paragraph.alignment == Alignment::Left || paragraph.alignment == Alignment::Justify;
}

// How far the paragraphs at one edge have to move so that none of their ink stands out of it.
struct EdgeShifts {
    double left = 0.0;
    double right = 0.0;
};

EdgeShifts edgeShifts(const std::vector<StandingParagraph>& paragraphs) {
    EdgeShifts shifts;
    for (const StandingParagraph& paragraph : paragraphs) {
        if (paragraph.ink().isEmpty()) {
            continue;
        }
        const double dx = offsetOf(paragraph).x;
        if (isPinnedLeft(paragraph)) {
            shifts.left = std::max(shifts.left, dx);
        } else if (paragraph.alignment == Alignment::Right) {
            shifts.right = std::min(shifts.right, dx);
        }
    }
    return shifts;
}

// A justified paragraph has both edges of its ink pinned.
double alignedWidth(const StandingParagraph& paragraph, double dx) {
    double width = paragraph.right - paragraph.left;
    if (paragraph.alignment == Alignment::Justify) {
        width += paragraph.right - paragraph.ink().xmax - dx;
    }
    return static_cast<double>(static_cast<float>(width)); // the library holds widths in single precision
}

} // namespace

MbRect StandingParagraph::ink() const {
    MbRect ink = layout.ink();
    if (!ink.isEmpty()) {
        ink.Move(x, top);
    }
    return ink;
}

void StandingParagraph::move(double dx, double dy) {
    left += dx;
    right += dx;
    x += dx;
    top += dy;
}

MbRect boxAlignedWithInk(const StandingParagraph& paragraph) {
    if (paragraph.layout.ink().isEmpty()) {
        return {};
    }
    const MbCartPoint offset = offsetOf(paragraph);
    MbRect box = paragraph.box();
    box.Move(-offset.x, -offset.y);
    return box;
}

void alignByInk(std::vector<StandingParagraph>& paragraphs) {
    const EdgeShifts shifts = edgeShifts(paragraphs);
    for (StandingParagraph& paragraph : paragraphs) {
        if (paragraph.ink().isEmpty()) {
            continue;
        }
        MbCartPoint offset = offsetOf(paragraph);
        if (isPinnedLeft(paragraph)) {
            offset.x = shifts.left;
        } else if (paragraph.alignment == Alignment::Right) {
            offset.x = shifts.right;
        }
        paragraph.right = paragraph.left + alignedWidth(paragraph, offset.x);
        paragraph.move(offset.x, offset.y);
    }
}

} // namespace tool

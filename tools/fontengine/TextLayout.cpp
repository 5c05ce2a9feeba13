#include "TextLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

// Paragraphs of a text without a width are as wide as the widest of them, so
// that centred and right-aligned ones have something to be aligned in.
double boxWidth(const Session& session, const dxf::TextEntity& text, const render::CRichTextDocument& document) {
    if (text.isParagraphText() && text.width > 0.0) {
        return text.width;
    }
    const MbRect natural = session.metrics().getDocumentRect(document);
    return natural.isEmpty() ? 0.0 : natural.xmax - natural.xmin;
}

std::vector<LaidOutParagraph> layOutParagraphs(Session& session, const render::CRichTextDocument& document,
                                               double width, bool alignByInk) {
    const auto layouting = session.layoutings().create(document);
    layouting->setLayoutRect(MbRect(0.0, 0.0, width, 0.0));
    layouting->setAlignByTextBounds(alignByInk);
    layouting->layout();
    const std::vector<MbRect> rects = layouting->getRects();
    const std::vector<MbRect> boxes = session.metrics().getParagraphRects(document, width, 0.0);
    const std::vector<MbRect> inks = session.metrics().getParagraphGeometryRects(document, width, 0.0);

    std::vector<LaidOutParagraph> paragraphs(rects.size());
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const render::CRichTextParagraph& source = document.paragraphs.at(static_cast<int>(i));
        LaidOutParagraph& paragraph = paragraphs[i];
        for (const render::SRichTextToken& token : source.tokens) {
            paragraph.text += token.text;
        }
        paragraph.box = rects[i];
        paragraph.origin = {rects[i].xmin, rects[i].ymax};
        paragraph.ink = inks[i];
        if (!paragraph.ink.isEmpty()) {
            paragraph.ink.Move(rects[i].xmin, rects[i].ymax - boxes[i].ymax);
        }
        const fonts::SLayoutDesc layout =
            fonts::CRichTextDocumentProcessor::process(source, &session.engine(), document.tabStopWidth);
        if (width > 0.0) {
            layout.pObject->SetMaxWidth(static_cast<float>(width));
        }
        paragraph.painted = paintParagraph(layout);
    }
    return paragraphs;
}

struct VerticalExtent {
    double capTop = 0.0; // of the first line
    double firstBaseline = 0.0;
    double lastBaseline = 0.0;
};

VerticalExtent verticalExtent(const LaidOutText& laidOut, double capHeight) {
    VerticalExtent extent;
    bool first = true;
    for (const LaidOutParagraph& paragraph : laidOut.paragraphs) {
        for (const double baseline : paragraph.painted.baselines) {
            extent.lastBaseline = paragraph.origin.y + baseline;
            if (first) {
                extent.firstBaseline = extent.lastBaseline;
                first = false;
            }
        }
    }
    extent.capTop = extent.firstBaseline + capHeight;
    return extent;
}

MbCartPoint anchorOf(const dxf::TextEntity& text, const LaidOutText& laidOut) {
    const VerticalExtent extent = verticalExtent(laidOut, text.height);
    const double left = laidOut.box.xmin;
    const double right = laidOut.box.xmax;
    MbCartPoint anchor{left, extent.firstBaseline};
    if (text.isParagraphText()) {
        const int attachment = static_cast<int>(text.attachment) - 1;
        const double xs[] = {left, (left + right) / 2.0, right};
        const double ys[] = {extent.capTop, (extent.capTop + extent.lastBaseline) / 2.0, extent.lastBaseline};
        return {xs[attachment % 3], ys[attachment / 3]};
    }
    using Horizontal = dxf::HorizontalJustification;
    switch (text.horizontal) {
    case Horizontal::Left:
    case Horizontal::Aligned:
    case Horizontal::Fit:
        break;
    case Horizontal::Right:
        anchor.x = right;
        break;
    case Horizontal::Center:
        anchor.x = (left + right) / 2.0;
        break;
    case Horizontal::Middle:
        return {(left + right) / 2.0, extent.firstBaseline + text.height / 2.0};
    }
    switch (text.vertical) {
    case dxf::VerticalJustification::Baseline:
        break;
    case dxf::VerticalJustification::Bottom:
        anchor.y = laidOut.box.ymin;
        break;
    case dxf::VerticalJustification::Middle:
        anchor.y = extent.firstBaseline + text.height / 2.0;
        break;
    case dxf::VerticalJustification::Top:
        anchor.y = extent.capTop;
        break;
    }
    return anchor;
}

// What stretches and slants a one-line text beside its frame.
dxf::Transform deformation(const dxf::TextEntity& text, double width) {
    dxf::Transform result;
    if (text.isParagraphText()) {
        return result;
    }
    double stretch = text.widthFactor;
    double height = 1.0;
    if (const double fitted = dxf::fitLength(text); fitted > 0.0 && width > 0.0) {
        stretch = fitted / width;
        height = text.horizontal == dxf::HorizontalJustification::Aligned ? stretch : 1.0;
    }
    result.xAxis.x = stretch;
    result.yAxis = {height * std::tan(text.oblique * std::numbers::pi / 180.0), height, 0.0};
    return result;
}

} // namespace

LaidOutText layOutText(Session& session, const dxf::PlacedText& placed, const TextDocument& text, bool alignByInk) {
    const dxf::TextEntity& entity = *placed.text;
    LaidOutText laidOut;
    const double width = boxWidth(session, entity, text.document);
    laidOut.paragraphs = layOutParagraphs(session, text.document, width, alignByInk);
    for (const LaidOutParagraph& paragraph : laidOut.paragraphs) {
        laidOut.box |= paragraph.box;
        laidOut.ink |= paragraph.ink;
    }
    laidOut.anchor = anchorOf(entity, laidOut);
    laidOut.toDrawing = placed.frame * deformation(entity, width) *
                        dxf::Transform::translation({-laidOut.anchor.x, -laidOut.anchor.y, 0.0});
    return laidOut;
}

} // namespace tool

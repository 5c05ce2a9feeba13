#include "TextAnchor.h"

#include <algorithm>
#include <cwctype>
#include <optional>

namespace tool {

namespace {

struct VerticalExtent {
    double capTop = 0.0; // of the first line
    double firstBaseline = 0.0;
    double lastBaseline = 0.0;
};

// The tallest capitals of the first line reach the top.
VerticalExtent verticalExtent(const LaidOutText& laidOut, double capHeight) {
    VerticalExtent extent;
    double tallest = 0.0;
    bool first = true;
    for (const LaidOutParagraph& paragraph : laidOut.paragraphs) {
        const std::vector<double> baselines = paragraph.baselines();
        if (baselines.empty()) {
            continue;
        }
        extent.lastBaseline = baselines.back();
        if (first) {
            first = false;
            extent.firstBaseline = baselines.front();
            tallest = paragraph.firstCapSize;
        }
    }
    extent.capTop = extent.firstBaseline + (tallest > 0.0 ? tallest : capHeight);
    return extent;
}

bool beginsWithBlank(const std::wstring& text) {
    return !text.empty() && (std::iswspace(static_cast<std::wint_t>(text.front())) != 0 || text.front() == L'\u00A0');
}

// The gap between a left-attached text's edge and its ink, which is trimmed.
// Blanks that somebody typed stay, and centred lines have no edge to be trimmed.
double leftBearing(const render::CRichTextDocument& document, const LaidOutText& laidOut) {
    using Alignment = render::eRichTextParagraphAlignment;
    std::optional<double> bearing;
    for (std::size_t i = 0; i < laidOut.paragraphs.size(); ++i) {
        const LaidOutParagraph& paragraph = laidOut.paragraphs[i];
        const Alignment alignment = document.paragraphs.at(static_cast<std::int32_t>(i)).alignment;
        if (alignment == Alignment::Center || alignment == Alignment::Right || paragraph.ink.isEmpty()) {
            continue;
        }
        const double gap =
            beginsWithBlank(paragraph.layout.text()) ? 0.0 : std::max(0.0, paragraph.ink.xmin - paragraph.origin.x);
        bearing = std::min(bearing.value_or(gap), gap);
    }
    return bearing.value_or(0.0);
}

MbCartPoint paragraphTextAnchor(const dxf::TextEntity& text, const render::CRichTextDocument& document,
                                const LaidOutText& laidOut, double width) {
    const VerticalExtent extent = verticalExtent(laidOut, text.height);
    const int attachment = static_cast<int>(text.attachment) - 1;
    const double xs[] = {leftBearing(document, laidOut), width / 2.0, width};
    const double ys[] = {extent.capTop, (extent.capTop + extent.lastBaseline) / 2.0, extent.lastBaseline};
    return {xs[attachment % 3], ys[attachment / 3]};
}

MbCartPoint lineTextAnchor(const dxf::TextEntity& text, const LaidOutText& laidOut, double width) {
    const double baseline = verticalExtent(laidOut, text.height).firstBaseline;
    MbCartPoint anchor{0.0, baseline};
    using Horizontal = dxf::HorizontalJustification;
    switch (text.horizontal) {
    case Horizontal::Left:
    case Horizontal::Aligned:
    case Horizontal::Fit:
        break;
    case Horizontal::Right:
        anchor.x = width;
        break;
    case Horizontal::Center:
        anchor.x = width / 2.0;
        break;
    case Horizontal::Middle:
        return {width / 2.0, baseline + text.height / 2.0};
    }
    switch (text.vertical) {
    case dxf::VerticalJustification::Baseline:
        break;
    case dxf::VerticalJustification::Bottom:
        anchor.y = laidOut.box.ymin;
        break;
    case dxf::VerticalJustification::Middle:
        anchor.y = baseline + text.height / 2.0;
        break;
    case dxf::VerticalJustification::Top:
        anchor.y = baseline + text.height;
        break;
    }
    return anchor;
}

} // namespace

MbCartPoint anchorOf(const dxf::TextEntity& text, const render::CRichTextDocument& document, const LaidOutText& laidOut,
                     double width) {
    return text.isParagraphText() ? paragraphTextAnchor(text, document, laidOut, width)
                                  : lineTextAnchor(text, laidOut, width);
}

} // namespace tool

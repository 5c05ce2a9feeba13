#include "TextLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <FontEngine/LayoutScale.h>

#include "ParagraphLayout.h"
#include "TextAnchor.h"

namespace tool {

namespace {

// The distance of baselines that drawings call single, in text heights.
constexpr double singleSpacing = 5.0 / 3.0;

// A text at its layout scale, which is that of fonts::layoutScale: the library's
// grid of baselines is coarse for a drawing in metres. Paragraphs are scaled one at
// a time, so that a long text is not held twice.
class ScaledText {
public:
    ScaledText(const dxf::TextEntity& entity, const TextDocument& text, double factor)
        : m_text(text), m_factor(factor), m_width(entity.isParagraphText() ? entity.width * factor : 0.0),
          m_capHeight(entity.height * factor) {}

    [[nodiscard]] std::size_t size() const { return m_text.document.paragraphs.size(); }
    // Where lines wrap; 0: they do not.
    [[nodiscard]] double width() const { return m_width; }
    [[nodiscard]] double capHeight() const { return m_capHeight; }

    [[nodiscard]] render::CRichTextParagraph paragraph(std::size_t i) const {
        render::CRichTextParagraph result = m_text.document.paragraphs.at(static_cast<std::int32_t>(i));
        for (render::SRichTextToken& token : result.tokens) {
            times(token.fontCapSize);
        }
        return result;
    }

    [[nodiscard]] render::CRichTextDocument document(std::vector<render::CRichTextParagraph> paragraphs) const {
        render::CRichTextDocument result = render::makeDocument(std::move(paragraphs));
        result.tabStopWidth = m_text.document.tabStopWidth;
        times(result.tabStopWidth);
        return result;
    }

    // A document of that paragraph alone.
    [[nodiscard]] render::CRichTextDocument document(std::size_t i) const {
        std::vector<render::CRichTextParagraph> paragraphs;
        paragraphs.push_back(paragraph(i));
        return document(std::move(paragraphs));
    }

    [[nodiscard]] mtext::ParagraphFormat format(std::size_t i) const {
        if (i >= m_text.formats.size()) {
            return {};
        }
        mtext::ParagraphFormat result = m_text.formats[i];
        for (float* length : {&result.firstLineIndent, &result.leftIndent, &result.rightIndent, &result.spaceBefore,
                              &result.spaceAfter}) {
            times(*length);
        }
        if (result.lineSpacingKind != mtext::LineSpacingKind::Multiple) {
            times(result.lineSpacing);
        }
        return result;
    }

private:
    void times(float& length) const { length = static_cast<float>(static_cast<double>(length) * m_factor); }

    const TextDocument& m_text;
    double m_factor;
    double m_width;
    double m_capHeight;
};

// Paragraphs of a text without a width are as wide as the widest of them, so
// that centred and right-aligned ones have something to be aligned in.
double boxWidth(const Session& session, const ScaledText& text) {
    if (text.width() > 0.0) {
        return text.width();
    }
    double widest = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const MbRect natural = session.metrics().getDocumentRect(text.document(i));
        const mtext::ParagraphFormat format = text.format(i);
        const double indents = static_cast<double>(format.firstLineIndent) + static_cast<double>(format.leftIndent) +
                               static_cast<double>(format.rightIndent);
        widest = std::max(widest, (natural.isEmpty() ? 0.0 : natural.xmax - natural.xmin) + std::max(indents, 0.0));
    }
    return widest;
}

// A paragraph has one left edge: that of its first line where it is the only
// one, that of the others otherwise.
LaidOutParagraph layOutIndented(Session& session, const ScaledText& text, std::size_t i, double width,
                                const TextLayoutOptions& options, bool& expressed) {
    const render::CRichTextDocument document = text.document(i);
    const mtext::ParagraphFormat format = text.format(i);
    const double left = static_cast<double>(format.leftIndent);
    const double first = left + static_cast<double>(format.firstLineIndent);
    const double right = width - static_cast<double>(format.rightIndent);
    const auto between = [&](double edge) {
        // Indents that leave no room leave a capital's.
        return layOutParagraph(session, document, edge,
                               edge == 0.0 && right == width ? width : std::max(right, edge + text.capHeight()),
                               options);
    };
    LaidOutParagraph paragraph = between(first);
    if (first != left && paragraph.painted.baselines.size() > 1) {
        expressed = false;
        paragraph = between(left);
    }
    return paragraph;
}

// What moves a paragraph's first baseline from where it stands under the last
// one of the paragraph above.
double extraSpacing(const dxf::TextEntity& entity, const ScaledText& text, std::size_t i, double natural) {
    const mtext::ParagraphFormat format = text.format(i);
    double wanted = natural;
    switch (format.lineSpacingKind) {
    case mtext::LineSpacingKind::Multiple:
        wanted = natural * static_cast<double>(format.lineSpacing);
        break;
    case mtext::LineSpacingKind::Exactly:
        wanted = static_cast<double>(format.lineSpacing);
        break;
    case mtext::LineSpacingKind::AtLeast:
        wanted = std::max(natural, static_cast<double>(format.lineSpacing));
        break;
    case mtext::LineSpacingKind::Default:
        wanted = entity.lineSpacingStyle == dxf::LineSpacingStyle::Exact
                     ? singleSpacing * text.capHeight() * entity.lineSpacingFactor
                     : natural * entity.lineSpacingFactor;
        break;
    }
    return wanted - natural + static_cast<double>(format.spaceBefore) +
           static_cast<double>(text.format(i - 1).spaceAfter);
}

bool hasOwnSpacing(const mtext::ParagraphFormat& format) {
    return format.lineSpacingKind != mtext::LineSpacingKind::Default;
}

void stack(const dxf::TextEntity& entity, const ScaledText& text, LaidOutText& laidOut) {
    double top = 0.0;
    for (std::size_t i = 0; i < laidOut.paragraphs.size(); ++i) {
        LaidOutParagraph& paragraph = laidOut.paragraphs[i];
        const std::vector<double>& baselines = paragraph.painted.baselines;
        if (hasOwnSpacing(text.format(i)) && baselines.size() > 1) {
            laidOut.spacingExpressed = false;
        }
        if (i > 0 && !baselines.empty()) {
            const LaidOutParagraph& above = laidOut.paragraphs[i - 1];
            const double last = above.painted.baselines.empty() ? top : above.origin.y + above.painted.baselines.back();
            top -= extraSpacing(entity, text, i, last - (top + baselines.front()));
        }
        move(paragraph, 0.0, top);
        top -= paragraph.height;
    }
}

// Where ink is aligned, the paragraphs are aligned with one another.
void alignInk(Session& session, const ScaledText& text, double width, LaidOutText& laidOut) {
    std::vector<render::CRichTextParagraph> paragraphs;
    for (std::size_t i = 0; i < text.size(); ++i) {
        paragraphs.push_back(text.paragraph(i));
    }
    const auto layouting = session.layoutings().create(text.document(std::move(paragraphs)));
    layouting->setLayoutRect(MbRect(0.0, 0.0, width, 0.0));
    layouting->layout();
    const std::vector<MbRect> unaligned = layouting->getRects();
    layouting->setAlignByTextBounds(true);
    layouting->layout();
    const std::vector<MbRect> aligned = layouting->getRects();
    for (std::size_t i = 0; i < laidOut.paragraphs.size(); ++i) {
        LaidOutParagraph& paragraph = laidOut.paragraphs[i];
        if (paragraph.ink.isEmpty()) {
            continue;
        }
        move(paragraph, aligned[i].xmin - unaligned[i].xmin, aligned[i].ymax - unaligned[i].ymax);
        paragraph.box.xmax = paragraph.box.xmin + (aligned[i].xmax - aligned[i].xmin);
    }
}

LaidOutText layOutParagraphs(Session& session, const dxf::TextEntity& entity, const ScaledText& text, double width,
                             const TextLayoutOptions& options) {
    LaidOutText laidOut;
    for (std::size_t i = 0; i < text.size(); ++i) {
        laidOut.paragraphs.push_back(layOutIndented(session, text, i, width, options, laidOut.indentsExpressed));
    }
    stack(entity, text, laidOut);
    if (options.mode == LayoutMode::Document && options.alignByInk) {
        alignInk(session, text, width, laidOut);
    }
    return laidOut;
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

LaidOutText layOutText(Session& session, const dxf::PlacedText& placed, const TextDocument& text,
                       const TextLayoutOptions& options) {
    const dxf::TextEntity& entity = *placed.text;
    const double factor = fonts::layoutScale(entity.height);
    const ScaledText scaledText(entity, text, factor);
    const double layoutWidth = boxWidth(session, scaledText);
    LaidOutText laidOut = layOutParagraphs(session, entity, scaledText, layoutWidth, options);
    for (LaidOutParagraph& paragraph : laidOut.paragraphs) {
        scale(paragraph, 1.0 / factor);
        laidOut.box |= paragraph.box;
        laidOut.ink |= paragraph.ink;
    }
    const double width = layoutWidth / factor;
    laidOut.anchor = anchorOf(entity, text.document, laidOut, width);
    laidOut.toDrawing = placed.frame * deformation(entity, width) *
                        dxf::Transform::translation({-laidOut.anchor.x, -laidOut.anchor.y, 0.0});
    return laidOut;
}

} // namespace tool

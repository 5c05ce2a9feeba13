#include "TextLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include <FontEngine/LayoutScale.h>

#include "ClusterRects.h"
#include "ParagraphRects.h"
#include "TextAnchor.h"
#include "TextHeights.h"

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

    [[nodiscard]] double tabStopWidth() const {
        float width = m_text.document.tabStopWidth;
        times(width);
        return static_cast<double>(width);
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

fonts::CParagraphLayout layOutIn(Session& session, const ScaledText& text, std::size_t i, double width,
                                 fonts::EParagraphDetail detail) {
    const render::CRichTextParagraph paragraph = text.paragraph(i);
    fonts::SParagraphLayoutOptions options;
    options.maxWidth = width > 0.0 && std::isfinite(width) ? width : 0.0;
    // Where the text's height makes no tab stops, the platform refuses the height.
    if (const double tabStop = text.tabStopWidth(); tabStop > 0.0 && std::isfinite(tabStop)) {
        options.tabStopWidth = tabStop;
    }
    options.detail = differInHeight(paragraph) ? fonts::EParagraphDetail::All : detail;
    return session.layouts().make(paragraph, options);
}

// The left edges that a paragraph asks for: its first line's and the others'.
struct LeftEdges {
    explicit LeftEdges(const mtext::ParagraphFormat& format)
        : others(static_cast<double>(format.leftIndent)), first(others + static_cast<double>(format.firstLineIndent)) {}

    double others;
    double first;
};

double rightEdge(const ScaledText& text, std::size_t i, double left, double width) {
    const double right = width - static_cast<double>(text.format(i).rightIndent);
    // Indents that leave no room leave a capital's.
    return left == 0.0 && right == width ? width : std::max(right, left + text.capHeight());
}

bool hasSeveralLines(const fonts::CParagraphLayout& layout) {
    return baselinesOf(layout).size() > 1;
}

// A paragraph has one left edge: that of its first line where it is the only
// one, that of the others otherwise. Which it is shows when it is laid out: one
// whose first line would stand elsewhere is laid out again where it has several.
StandingParagraph layOutIndented(Session& session, const ScaledText& text, std::size_t i,
                                 fonts::EParagraphDetail detail, bool& expressed) {
    const LeftEdges edges(text.format(i));
    StandingParagraph paragraph;
    const auto layOutFrom = [&](double left) {
        paragraph.left = left;
        paragraph.right = rightEdge(text, i, left, text.width());
        paragraph.x = left;
        paragraph.layout = layOutIn(session, text, i, paragraph.right - left, detail);
    };
    layOutFrom(edges.first);
    if (edges.first != edges.others && hasSeveralLines(paragraph.layout)) {
        expressed = false;
        layOutFrom(edges.others);
    }
    return paragraph;
}

// Laid out without a width, lines begin at x = 0, have their middle there or end there. This is where that x stands
// between the edges, as a share of the room.
double shareOfRoom(render::eRichTextParagraphAlignment alignment) {
    switch (alignment) {
    case render::eRichTextParagraphAlignment::Right:
        return 1.0;
    case render::eRichTextParagraphAlignment::Center:
        return 0.5;
    default:
        return 0.0;
    }
}

// Moves the paragraphs of a text without a width, laid out at their natural sizes,
// to where their alignments ask for in the widest of them. Gives its width.
double standInWidest(const ScaledText& text, std::vector<StandingParagraph>& paragraphs, bool& expressed) {
    double widest = 0.0;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        const mtext::ParagraphFormat format = text.format(i);
        const double indents = LeftEdges(format).first + static_cast<double>(format.rightIndent);
        widest = std::max(widest, paragraphs[i].layout.naturalWidth() + std::max(indents, 0.0));
    }
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        StandingParagraph& paragraph = paragraphs[i];
        const LeftEdges edges(text.format(i));
        const bool isTorn = edges.first != edges.others && hasSeveralLines(paragraph.layout);
        expressed = expressed && !isTorn;
        paragraph.left = isTorn ? edges.others : edges.first;
        paragraph.right = rightEdge(text, i, paragraph.left, widest);
        paragraph.x = paragraph.left + shareOfRoom(paragraph.alignment) * (paragraph.right - paragraph.left);
    }
    return widest;
}

// The paragraphs of a text, each with its top at 0 still, and how wide their box is.
struct StandingText {
    std::vector<StandingParagraph> paragraphs;
    double width = 0.0;
    bool indentsExpressed = true;
};

StandingText layOutParagraphs(Session& session, const TextDocument& document, const ScaledText& text,
                              fonts::EParagraphDetail detail) {
    StandingText standing;
    standing.width = text.width();
    for (std::size_t i = 0; i < text.size(); ++i) {
        StandingParagraph& paragraph = standing.paragraphs.emplace_back();
        if (text.width() > 0.0) {
            paragraph = layOutIndented(session, text, i, detail, standing.indentsExpressed);
        } else {
            paragraph.layout = layOutIn(session, text, i, 0.0, detail);
        }
        paragraph.alignment = document.document.paragraphs.at(static_cast<std::int32_t>(i)).alignment;
    }
    if (!(text.width() > 0.0)) {
        standing.width = standInWidest(text, standing.paragraphs, standing.indentsExpressed);
    }
    return standing;
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

// From top to bottom. False where lines inside a paragraph would have to stand otherwise.
bool stack(const dxf::TextEntity& entity, const ScaledText& text, std::vector<StandingParagraph>& paragraphs) {
    bool expressed = true;
    double top = 0.0;
    double above = 0.0; // the last baseline of the paragraph above; its bottom where it has none
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        StandingParagraph& paragraph = paragraphs[i];
        const std::vector<double> baselines = baselinesOf(paragraph.layout);
        expressed = expressed && !(hasOwnSpacing(text.format(i)) && baselines.size() > 1);
        if (i > 0 && !baselines.empty()) {
            top -= extraSpacing(entity, text, i, above - (top + baselines.front()));
        }
        paragraph.top = top;
        top -= paragraph.height();
        above = baselines.empty() ? top : paragraph.top + baselines.back();
    }
    return expressed;
}

MbRect boxOf(const StandingParagraph& paragraph, LayoutMode mode) {
    return mode == LayoutMode::MText ? boxAlignedWithInk(paragraph) : paragraph.box();
}

// `factor`: from the layout's lengths to the drawing's.
LaidOutParagraph finish(Session& session, const render::CRichTextParagraph& paragraph, StandingParagraph standing,
                        double factor, const TextLayoutOptions& options) {
    LaidOutParagraph result;
    result.factor = factor;
    // Rectangles that stand in the text already.
    result.box = result.toText(boxOf(standing, options.mode));
    result.ink = result.toText(standing.ink());
    result.origin = result.toText(MbCartPoint{standing.x, standing.top});
    result.layout = std::move(standing.layout);
    for (const render::SRichTextToken& token : paragraph.tokens) {
        result.colors.push_back(token.color);
    }
    result.firstCapSize = firstCapSize(paragraph, result.layout);
    result.mixesHeights = differInHeight(paragraph) && mixesHeights(paragraph, result.layout);
    if (options.mode == LayoutMode::Clusters && options.detail == fonts::EParagraphDetail::All) {
        result.clusters = clustersOf(session, paragraph, result);
        for (const fonts::SBar& bar : result.layout.bars()) {
            result.underlines.push_back(result.toText(bar.rect));
        }
    }
    return result;
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
    StandingText standing = layOutParagraphs(session, text, scaledText, options.detail);
    LaidOutText laidOut;
    laidOut.indentsExpressed = standing.indentsExpressed;
    laidOut.spacingExpressed = stack(entity, scaledText, standing.paragraphs);
    if (options.mode == LayoutMode::Document && options.alignByInk) {
        alignByInk(standing.paragraphs);
    }
    for (std::size_t i = 0; i < standing.paragraphs.size(); ++i) {
        const LaidOutParagraph& paragraph =
            laidOut.paragraphs.emplace_back(finish(session, text.document.paragraphs.at(static_cast<std::int32_t>(i)),
                                                   std::move(standing.paragraphs[i]), 1.0 / factor, options));
        laidOut.box |= paragraph.box;
        laidOut.ink |= paragraph.ink;
    }
    const double width = standing.width / factor;
    laidOut.anchor = anchorOf(entity, text.document, laidOut, width);
    laidOut.toDrawing = placed.frame * deformation(entity, width) *
                        dxf::Transform::translation({-laidOut.anchor.x, -laidOut.anchor.y, 0.0});
    return laidOut;
}

} // namespace tool

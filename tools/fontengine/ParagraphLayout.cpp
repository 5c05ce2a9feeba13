#include "ParagraphLayout.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <geometry/MbRegion.h>

namespace tool {

namespace {

using Layouting = std::unique_ptr<fonts::IRichTextDocumentLayouting>;

Layouting createLayouting(Session& session, const render::CRichTextDocument& document, LayoutMode mode) {
    switch (mode) {
    case LayoutMode::MText:
        return session.layoutings().createForDxfMTexts(document);
    case LayoutMode::Clusters:
        return session.layoutings().createForDxfMTextsByClusters(document);
    case LayoutMode::Document:
        break;
    }
    return session.layoutings().create(document);
}

PaintedParagraph paint(Session& session, const render::CRichTextDocument& document, double width, PaintDetail detail) {
    const fonts::SLayoutDesc layout = fonts::CRichTextDocumentProcessor::process(
        document.paragraphs.at(0), &session.engine(), static_cast<double>(document.tabStopWidth));
    if (width > 0.0) {
        layout.pObject->SetMaxWidth(static_cast<float>(width));
    }
    return paintParagraph(layout, detail);
}

// The clusters of the runs as drawn, in the library's order, without what the
// library says of them.
std::vector<LaidOutCluster> drawnClusters(const PaintedParagraph& painted) {
    std::vector<LaidOutCluster> clusters;
    for (std::size_t i = 0; i < painted.runs.size(); ++i) {
        const PaintedRun& run = painted.runs[i];
        for (std::size_t at = 0; at < run.clusterMap.size() && !run.glyphs.empty();) {
            const std::uint16_t first = run.clusterMap[at];
            while (at < run.clusterMap.size() && run.clusterMap[at] == first) {
                ++at;
            }
            const std::size_t end = at < run.clusterMap.size() ? run.clusterMap[at] : run.glyphs.size();
            LaidOutCluster cluster;
            cluster.run = i;
            cluster.firstGlyph = first;
            cluster.glyphCount = end - first;
            cluster.hasInk = std::any_of(run.glyphs.begin() + first, run.glyphs.begin() + static_cast<long>(end),
                                         [](const PaintedGlyph& glyph) { return glyph.hasInk; });
            clusters.push_back(std::move(cluster));
        }
    }
    return clusters;
}

std::vector<LaidOutCluster> takeClusters(const fonts::IRichTextDocumentLayouting& layouting,
                                         const PaintedParagraph& painted) {
    std::vector<LaidOutCluster> clusters = drawnClusters(painted);
    const std::vector<render::CRichTextParagraph> paragraphs = layouting.getParagraphs();
    const std::vector<MbRect> rects = layouting.getRects();
    if (paragraphs.size() != clusters.size() || rects.size() != clusters.size()) {
        throw std::logic_error("the clusters of a text are not those that were drawn");
    }
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        clusters[i].token = paragraphs[i].tokens.at(0);
        clusters[i].rect = rects[i];
    }
    return clusters;
}

void scale(MbRect& rect, double factor) {
    if (!rect.isEmpty()) {
        rect.Set(rect.xmin * factor, rect.ymin * factor, rect.xmax * factor, rect.ymax * factor);
    }
}

void moveUnlessEmpty(MbRect& rect, double dx, double dy) {
    if (!rect.isEmpty()) {
        rect.Move(dx, dy);
    }
}

// Asks the library's layouting, which holds the paragraph once more (and one for
// each cluster), last and for no longer than the answers take.
void takePlaces(Session& session, const render::CRichTextDocument& document, const MbRect& edges,
                const TextLayoutOptions& options, LaidOutParagraph& result) {
    const Layouting layouting = createLayouting(session, document, options.mode);
    layouting->setLayoutRect(edges);
    layouting->layout();
    if (options.mode == LayoutMode::Clusters) {
        result.box = MbRect(edges.xmin, -result.height, edges.xmax, 0.0);
        if (options.detail == PaintDetail::Lines) {
            return;
        }
        result.clusters = takeClusters(*layouting, result.painted);
        for (const auto& region : layouting->getRegions()) {
            result.underlines.push_back(region->boundingRect());
        }
    } else if (options.mode == LayoutMode::Document || !result.ink.isEmpty()) {
        // Aligned with ink that is not there, a rectangle stands nowhere.
        result.box = layouting->getRects().at(0);
    }
}

} // namespace

LaidOutParagraph layOutParagraph(Session& session, const render::CRichTextDocument& document, double left, double right,
                                 const TextLayoutOptions& options) {
    const double width = right - left;
    LaidOutParagraph result;
    for (const render::SRichTextToken& token : document.paragraphs.at(0).tokens) {
        result.text += token.text;
    }
    result.painted = paint(session, document, width, options.detail);
    result.origin = {left, 0.0};
    const MbRect natural = session.metrics().getParagraphRects(document, width, 0.0).at(0);
    result.height = natural.ymax - natural.ymin;
    result.ink = session.metrics().getParagraphGeometryRects(document, width, 0.0).at(0);
    takePlaces(session, document, MbRect(left, 0.0, right, 0.0), options, result);
    moveUnlessEmpty(result.ink, result.origin.x, result.origin.y);
    return result;
}

void move(LaidOutParagraph& paragraph, double dx, double dy) {
    moveUnlessEmpty(paragraph.box, dx, dy);
    moveUnlessEmpty(paragraph.ink, dx, dy);
    paragraph.origin = {paragraph.origin.x + dx, paragraph.origin.y + dy};
    for (LaidOutCluster& cluster : paragraph.clusters) {
        cluster.rect.Move(dx, dy);
    }
    for (MbRect& underline : paragraph.underlines) {
        underline.Move(dx, dy);
    }
}

void scale(LaidOutParagraph& paragraph, double factor) {
    scale(paragraph.box, factor);
    scale(paragraph.ink, factor);
    paragraph.origin = {paragraph.origin.x * factor, paragraph.origin.y * factor};
    paragraph.height *= factor;
    scale(paragraph.painted, factor);
    for (LaidOutCluster& cluster : paragraph.clusters) {
        scale(cluster.rect, factor);
        cluster.token.fontCapSize = static_cast<float>(static_cast<double>(cluster.token.fontCapSize) * factor);
    }
    for (MbRect& underline : paragraph.underlines) {
        scale(underline, factor);
    }
}

} // namespace tool

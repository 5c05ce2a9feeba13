#include "RichTextClusterDxfLayouting.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <Common/Guards.h>
#include <Common/UUID.h>
#include <geometry/MbVector.h>

#include "ParagraphPlacement.h"

namespace fonts {

CRichTextClusterDxfLayouting::CRichTextClusterDxfLayouting(const render::CRichTextDocument& document,
                                                           const ITextMetrics* textMetrics)
    : m_document(document), m_textMetrics(textMetrics) {}

void CRichTextClusterDxfLayouting::setLayoutRect(const MbRect& layoutRect) {
    m_layoutRect = layoutRect;
}

void CRichTextClusterDxfLayouting::setHorizontalMargin(float horizontalMargin) {
    m_horizontalMargin = horizontalMargin;
}

void CRichTextClusterDxfLayouting::setAlignByTextBounds(bool) {}

std::vector<MbRect> CRichTextClusterDxfLayouting::getRects() const {
    return m_rects;
}

std::vector<render::CRichTextParagraph> CRichTextClusterDxfLayouting::getParagraphs() const {
    return m_clusterParagraphs;
}

std::vector<boost::intrusive_ptr<MbRegion>> CRichTextClusterDxfLayouting::getRegions() const {
    return m_decorationRegions;
}

void CRichTextClusterDxfLayouting::placeCluster(const render::SRichTextToken& token, std::wstring text,
                                                const MbCartPoint& glyphOrigin, const MbCartPoint& boxOrigin) {
    render::CRichTextParagraph paragraph;
    paragraph.alignment = render::eRichTextParagraphAlignment::Left;
    paragraph.verticalAlignment = render::eRichTextParagraphVerticalAlignment::Top;
    paragraph.noWrap = false;
    paragraph.id = common::UUID::create();
    render::SRichTextToken& clusterToken = paragraph.tokens.emplace_back();
    clusterToken.text = std::move(text);
    clusterToken.fontFamily = token.fontFamily;
    clusterToken.fontCapSize = token.fontCapSize;
    clusterToken.color = token.color;
    clusterToken.fontStyle = token.fontStyle;

    const MbRect layoutRect = m_textMetrics->getTextRect(clusterToken.text, clusterToken.fontFamily,
                                                         clusterToken.fontCapSize, clusterToken.fontStyle);
    const MbRect inkRect =
        m_textMetrics->getTextGeometryRect(clusterToken.text, clusterToken.fontFamily, clusterToken.fontCapSize,
                                           m_document.tabStopWidth, clusterToken.fontStyle);

    // One unit wider than the text, so that a single-line text written into the
    // rectangle is never wrapped for a rounding error.
    MbRect rect;
    rect.Set(0.0, -(layoutRect.ymax - layoutRect.ymin), (layoutRect.xmax - layoutRect.xmin) + 1.0, 0.0);
    rect.Move(glyphOrigin.x, glyphOrigin.y);
    rect.Move(0.0, clusterToken.fontCapSize);
    rect.Move(boxOrigin.x, boxOrigin.y);
    // Ink that starts right of the layout box takes the rectangle with it. A
    // cluster without ink has the empty ink box and goes 1e300 to the right.
    const double inkGap = layoutRect.xmin - inkRect.xmin;
    if (inkGap < 0)
        rect.Move(std::abs(inkGap), 0.0);

    // Both at the end: whatever throws above, each paragraph has its rectangle.
    m_rects.push_back(rect);
    m_clusterParagraphs.push_back(std::move(paragraph));
}

void CRichTextClusterDxfLayouting::placeClusters(const SGlyphRunDesc& run, const MbCartPoint& boxOrigin) {
    const auto mapBegin = run.clusterMap.begin();
    const auto mapEnd = run.clusterMap.end();
    for (auto position = mapBegin; position != mapEnd;) {
        const auto cluster = std::equal_range(position, mapEnd, *position);
        const auto start = static_cast<size_t>(cluster.first - mapBegin);
        const auto length = static_cast<size_t>(cluster.second - cluster.first);
        std::wstring text = run.token.text.substr(start, length);
        const auto firstGlyph = static_cast<int32_t>(*position);
        if (firstGlyph >= 0)
            placeCluster(run.token, std::move(text), run.glyphOrigins[static_cast<size_t>(firstGlyph)], boxOrigin);
        position = cluster.second;
    }
}

void CRichTextClusterDxfLayouting::layoutParagraph(const render::CRichTextParagraph& paragraph, const MbRect& rect) {
    const MbCartPoint boxOrigin{rect.xmin, rect.ymax};
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const std::vector<SGlyphRunDesc> runs = m_textMetrics->getGlyphRuns(
        paragraph, rect.xmax - rect.xmin, rect.ymax - rect.ymin, m_document.tabStopWidth, regions);

    for (const boost::intrusive_ptr<MbRegion>& region : regions)
        region->Move(MbVector{boxOrigin.x, boxOrigin.y}, nullptr, nullptr);
    m_decorationRegions.insert(m_decorationRegions.end(), regions.begin(), regions.end());

    for (const SGlyphRunDesc& run : runs) {
        if (!run.glyphOrigins.empty())
            placeClusters(run, boxOrigin);
    }
}

void CRichTextClusterDxfLayouting::layout() {
    MbRect box = m_layoutRect;
    insetRectHorizontally(box, m_horizontalMargin);
    if (box.xmin > box.xmax || box.ymin > box.ymax)
        return;

    const std::vector<MbRect> rects = getParagraphBoxRects(*m_textMetrics, m_document, box);
    COMMON_CHECK(rects.size() == m_document.paragraphs.size());

    m_clusterParagraphs.clear();
    m_rects.clear();
    m_decorationRegions.clear();
    for (size_t i = 0; i < rects.size(); ++i)
        layoutParagraph(m_document.paragraphs.at(static_cast<int32_t>(i)), rects[i]);
}

} // namespace fonts

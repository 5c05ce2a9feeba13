#include "layout/TextPipeline.h"

#include <functional>

#include "layout/ClusterBuilder.h"
#include "layout/Itemizer.h"
#include "layout/LineHeights.h"
#include "layout/Trimming.h"

namespace platform {

HRESULT TextPipeline::shape() {
    m_opportunities.reset();
    if (m_text.size() == 0) {
        const RunStyle& style = m_properties.at(0);
        m_shaped = ShapedText();
        m_emptyFace = baseFace(style);
        m_emptySize = style.size;
        return m_emptyFace == nullptr ? DWRITE_E_NOFONT : S_OK;
    }
    if (!itemize(m_text, m_properties, settings().rightToLeft(), m_shaped.items)) {
        return DWRITE_E_NOFONT;
    }
    buildClusters(m_text.units(), m_shaped);
    m_emptyFace = m_shaped.items.back().face;
    m_emptySize = m_shaped.items.back().emSize;
    return S_OK;
}

const BreakOpportunities& TextPipeline::opportunities() {
    if (!m_opportunities) {
        m_opportunities = findBreakOpportunities(m_text.units(), m_shaped.items);
    }
    return *m_opportunities;
}

void TextPipeline::breakIntoLines() {
    const LineBreakSettings limits{m_box.width, settings().wordWrapping, settings().incrementalTabStop};
    const std::function<const BreakOpportunities&()> ask = [this]() -> const BreakOpportunities& {
        return opportunities();
    };
    breakLines(m_text.units(), m_shaped, limits, ask, m_lines, m_reshaped);
    trimLines(m_text.units(), shaped(), settings(), m_box.width, ask, m_lines);
    setLineHeights(shaped(), settings(), *m_emptyFace, m_emptySize, m_lines);
}

void TextPipeline::place() {
    placeLines(m_text.units(), shaped(), m_lines, settings(), m_box, m_placement);
}

HRESULT TextPipeline::finish() {
    if (m_next == Stage::Shaping) {
        if (const HRESULT result = shape(); FAILED(result)) {
            return result;
        }
        m_next = Stage::Breaking;
    }
    if (m_next == Stage::Breaking) {
        breakIntoLines();
        m_next = Stage::Placing;
    }
    if (m_next == Stage::Placing) {
        place();
        m_next = Stage::Done;
    }
    return S_OK;
}

} // namespace platform

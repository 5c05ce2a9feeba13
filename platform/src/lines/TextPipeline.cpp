#include "lines/TextPipeline.h"

#include <functional>

#include "lines/Ink.h"
#include "lines/LineHeights.h"
#include "lines/Trimming.h"
#include "shaping/ClusterBuilder.h"
#include "shaping/Itemizer.h"

namespace platform {

namespace {

/// The last line that a box `height` high has room for, the first in any case. A box without height has no last line.
std::size_t lastLineWithin(float height, const std::vector<Line>& lines) {
    if (!(height > 0.0F)) {
        return lines.size();
    }
    std::size_t last = 0;
    float bottom = lines.front().height;
    while (last + 1 < lines.size() && bottom + lines[last + 1].height <= height) {
        ++last;
        bottom += lines[last].height;
    }
    return last;
}

} // namespace

HRESULT TextPipeline::shape() {
    m_results->opportunities.reset();
    if (m_text.size() == 0) {
        const RunStyle& style = m_properties.at(0);
        m_results->shaped = ShapedText();
        m_results->emptyFace = baseFace(style);
        m_results->emptySize = style.size;
        return m_results->emptyFace == nullptr ? DWRITE_E_NOFONT : S_OK;
    }
    if (!itemize(m_text, m_properties, settings(), m_results->shaped.items, m_results->hostFaces)) {
        return DWRITE_E_NOFONT;
    }
    buildClusters(m_text.units(), m_properties, m_results->shaped);
    m_results->emptyFace = m_results->shaped.items.back().face;
    m_results->emptySize = m_results->shaped.items.back().emSize;
    return S_OK;
}

const BreakOpportunities& TextPipeline::opportunities() {
    if (!m_results->opportunities) {
        m_results->opportunities = findBreakOpportunities(m_text.units(), m_results->shaped.items);
    }
    return *m_results->opportunities;
}

LineBreakSettings TextPipeline::lineBreakSettings() const {
    LineBreakSettings limits{m_box.width, settings().wordWrapping, settings().incrementalTabStop};
    if (limits.wrapping == DWRITE_WORD_WRAPPING_WRAP &&
        settings().trimming.granularity != DWRITE_TRIMMING_GRANULARITY_NONE) {
        // Words that are trimmed are not torn.
        limits.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD;
    }
    return limits;
}

void TextPipeline::breakIntoLines() {
    LineBreakSettings limits = lineBreakSettings();
    const std::function<const BreakOpportunities&()> ask = [this]() -> const BreakOpportunities& {
        return opportunities();
    };
    breakLines(m_text.units(), m_properties, m_results->shaped, limits, ask, m_results->lines, m_results->reshaped);
    if (!settings().lastLineWrapping) {
        setLineHeights(shaped(), settings(), *m_results->emptyFace, m_results->emptySize, m_results->lines);
        limits.unwrappedLine = lastLineWithin(m_box.height, m_results->lines);
        breakLines(m_text.units(), m_properties, m_results->shaped, limits, ask, m_results->lines, m_results->reshaped);
    }
    trimLines(m_text.units(), shaped(), settings(), m_box.width, ask, m_results->lines);
    setLineHeights(shaped(), settings(), *m_results->emptyFace, m_results->emptySize, m_results->lines);
}

void TextPipeline::place() {
    placeLines(m_text.units(), shaped(), m_results->lines, settings(), m_box, {}, m_results->placement);
    if (settings().opticalAlignment == DWRITE_OPTICAL_ALIGNMENT_NO_SIDE_BEARINGS) {
        const std::vector<SideBearings> bearings = findSideBearings(*this);
        placeLines(m_text.units(), shaped(), m_results->lines, settings(), m_box, bearings, m_results->placement);
    }
}

HRESULT TextPipeline::finish() {
    if (!m_results) {
        m_results = std::make_unique<Results>();
    }
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

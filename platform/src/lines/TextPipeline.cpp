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
    LaidOutText& laidOut = m_results->laidOut;
    laidOut.opportunities.reset();
    if (m_input.text.size() == 0) {
        const RunStyle& style = m_input.styles.at(0);
        laidOut.unbroken = ShapedText();
        m_results->emptyFace = baseFace(style);
        m_results->emptySize = style.size;
        return m_results->emptyFace == nullptr ? DWRITE_E_NOFONT : S_OK;
    }
    if (!itemize(m_input.text, m_input.styles, m_input.format.paragraph, laidOut.unbroken.items,
                 m_results->hostFaces)) {
        return DWRITE_E_NOFONT;
    }
    buildClusters(m_input.text.units(), m_input.styles, laidOut.unbroken);
    m_results->emptyFace = laidOut.unbroken.items.back().face;
    m_results->emptySize = laidOut.unbroken.items.back().emSize;
    return S_OK;
}

const BreakOpportunities& TextPipeline::opportunities() {
    LaidOutText& laidOut = m_results->laidOut;
    if (!laidOut.opportunities) {
        laidOut.opportunities = findBreakOpportunities(m_input.text.units(), laidOut.unbroken.items);
    }
    return *laidOut.opportunities;
}

LineBreakSettings TextPipeline::lineBreakSettings() const {
    const ParagraphSettings& settings = m_input.format.paragraph;
    LineBreakSettings limits{m_input.box.width, settings.wordWrapping, settings.incrementalTabStop};
    if (limits.wrapping == DWRITE_WORD_WRAPPING_WRAP &&
        settings.trimming.granularity != DWRITE_TRIMMING_GRANULARITY_NONE) {
        // Words that are trimmed are not torn.
        limits.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD;
    }
    return limits;
}

void TextPipeline::breakIntoLines() {
    const std::u16string_view text = m_input.text.units();
    const ParagraphSettings& settings = m_input.format.paragraph;
    LaidOutText& laidOut = m_results->laidOut;
    LineBreakSettings limits = lineBreakSettings();
    const std::function<const BreakOpportunities&()> ask = [this]() -> const BreakOpportunities& {
        return opportunities();
    };
    const auto setHeights = [&] {
        setLineHeights(laidOut.shaped(), settings, *m_results->emptyFace, m_results->emptySize, laidOut.lines);
    };
    breakLines(text, m_input.styles, laidOut.unbroken, limits, ask, laidOut.lines, laidOut.reshaped);
    if (!settings.lastLineWrapping) {
        setHeights();
        limits.unwrappedLine = lastLineWithin(m_input.box.height, laidOut.lines);
        breakLines(text, m_input.styles, laidOut.unbroken, limits, ask, laidOut.lines, laidOut.reshaped);
    }
    trimLines(text, laidOut.shaped(), settings, m_input.box.width, ask, laidOut.lines);
    setHeights();
}

void TextPipeline::place() {
    const ParagraphSettings& settings = m_input.format.paragraph;
    LaidOutText& laidOut = m_results->laidOut;
    const auto placeWith = [&](const std::vector<SideBearings>& bearings) {
        placeLines(m_input.text.units(), laidOut.shaped(), laidOut.lines, settings, m_input.box, bearings,
                   laidOut.placement);
    };
    placeWith({});
    if (settings.opticalAlignment == DWRITE_OPTICAL_ALIGNMENT_NO_SIDE_BEARINGS) {
        placeWith(findSideBearings(laidOut));
    }
}

HRESULT TextPipeline::finish() {
    if (!m_results) {
        m_results = std::make_unique<Results>(m_input);
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

#include "answers/Metrics.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "fonts/FontFace.h"
#include "lines/Ink.h"
#include "lines/LinePieces.h"
#include "unicode/BidiLevels.h"

namespace platform {

namespace {

/// 1 where nothing is reordered, one more for each level that lies over the paragraph's.
UINT32 reorderingDepth(const TextPipeline& pipeline) {
    const std::uint8_t base = paragraphLevel(pipeline.settings().rightToLeft());
    std::uint8_t highest = base;
    for (const TextItem& item : pipeline.shaped().items) {
        highest = std::max(highest, item.bidiLevel);
    }
    return static_cast<UINT32>(highest - base) + 1;
}

/// Cluster metrics count text in 16 bits: what is longer is reported in parts, the width with the first.
constexpr UINT32 maxClusterLength = std::numeric_limits<UINT16>::max();

void appendCluster(const TextPipeline& pipeline, const BreakOpportunities& opportunities, UINT32 index, float width,
                   bool isRightToLeft, std::vector<DWRITE_CLUSTER_METRICS>& all) {
    const Cluster& cluster = pipeline.shaped().clusters[index];
    DWRITE_CLUSTER_METRICS metrics{};
    metrics.width = width;
    metrics.isWhitespace = cluster.has(Cluster::Whitespace) ? 1 : 0;
    metrics.isNewline = cluster.has(Cluster::Newline) ? 1 : 0;
    metrics.isSoftHyphen = cluster.has(Cluster::SoftHyphen) ? 1 : 0;
    metrics.isRightToLeft = isRightToLeft ? 1 : 0;
    const UINT32 textEnd = pipeline.shaped().textEnd(index);
    UINT32 left = textEnd - cluster.textStart;
    while (left > maxClusterLength) {
        metrics.length = static_cast<UINT16>(maxClusterLength);
        all.push_back(metrics);
        metrics.width = 0.0F;
        left -= maxClusterLength;
    }
    metrics.length = static_cast<UINT16>(left);
    metrics.canWrapLineAfter = opportunities[textEnd] ? 1 : 0;
    all.push_back(metrics);
}

/// The narrowest width that words can be set in, of text handed over piece by piece. Words may be hyphenated, but a
/// hyphen takes room itself: a word may need less whole than in parts.
class NarrowestWord {
public:
    /// Whitespace counts once something follows it on its line.
    void add(float width, bool hangs) {
        m_x += width;
        if (width > 0.0F) {
            m_firm = m_x;
        }
        m_end = hangs ? m_end : std::max(m_end, m_firm);
    }

    /// A tab gives way at a line's end, to nothing if need be: it counts once something that has a width follows it.
    void addTab(float stop) { m_x += tabWidth(m_x, stop); }

    void mayEndWith(float hyphen) {
        const Start start{m_x, narrowest(hyphen)};
        // Whoever may start later and needs no more has no use for the earlier start.
        while (!m_starts.empty() && m_starts.back().needed >= start.needed) {
            m_starts.pop_back();
        }
        m_starts.push_back(start);
    }

    void end() {
        m_widest = std::max(m_widest, narrowest(0.0F));
        m_starts.assign(1, Start{});
        m_x = m_firm = m_end = 0.0F;
    }

    float widest() const { return m_widest; }

private:
    /// Where a line may start, and the width that the word's lines before it need.
    struct Start {
        float x = 0.0F;
        float needed = 0.0F;
    };

    float narrowest(float hyphen) const {
        float best = std::numeric_limits<float>::infinity();
        for (auto start = m_starts.rbegin(); start != m_starts.rend(); ++start) {
            const float width = m_end - start->x + hyphen;
            if (width >= best) {
                break;
            }
            best = std::min(best, std::max(start->needed, width));
        }
        return best;
    }

    std::vector<Start> m_starts{1};
    float m_x = 0.0F;
    /// Without the tabs at the end.
    float m_firm = 0.0F;
    /// Without what may hang over a line's end.
    float m_end = 0.0F;
    float m_widest = 0.0F;
};

} // namespace

DWRITE_TEXT_METRICS textMetrics(const TextPipeline& pipeline) {
    const Placement& placement = pipeline.placement();
    DWRITE_TEXT_METRICS metrics{};
    metrics.left = placement.left;
    metrics.top = placement.top;
    metrics.width = placement.width;
    metrics.widthIncludingTrailingWhitespace = placement.fullWidth;
    metrics.height = placement.height;
    metrics.layoutWidth = pipeline.box().width;
    metrics.layoutHeight = pipeline.box().height;
    metrics.maxBidiReorderingDepth = reorderingDepth(pipeline);
    metrics.lineCount = static_cast<UINT32>(pipeline.lines().size());
    return metrics;
}

HRESULT lineMetrics(const TextPipeline& pipeline, DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32& count) {
    const ShapedText& shaped = pipeline.shaped();
    std::vector<DWRITE_LINE_METRICS> all;
    all.reserve(pipeline.lines().size());
    for (const Line& line : pipeline.lines()) {
        DWRITE_LINE_METRICS& one = all.emplace_back();
        if (line.clusterBegin < line.clusterEnd) {
            const UINT32 end = shaped.clusters[line.clusterEnd].textStart;
            one.length = end - shaped.clusters[line.clusterBegin].textStart;
            one.trailingWhitespaceLength = end - shaped.clusters[line.trailingBegin].textStart;
        }
        one.newlineLength = line.newlineLength;
        one.height = line.height;
        one.baseline = line.baseline;
        one.isTrimmed = line.isTrimmed ? TRUE : FALSE;
    }
    return copyOut(all, metrics, maxCount, count);
}

HRESULT clusterMetrics(TextPipeline& pipeline, DWRITE_CLUSTER_METRICS* metrics, UINT32 maxCount, UINT32& count) {
    const ShapedText& shaped = pipeline.shaped();
    std::vector<DWRITE_CLUSTER_METRICS> all;
    if (shaped.clusterCount() > 0) {
        const BreakOpportunities& opportunities = pipeline.opportunities();
        all.reserve(shaped.clusterCount());
        for (std::size_t line = 0; line < pipeline.lines().size(); ++line) {
            const UINT32 end = pipeline.lines()[line].clusterEnd;
            UINT32 i = pipeline.lines()[line].clusterBegin;
            for (UINT32 item = i < end ? shaped.itemOf(i) : 0; i < end; ++i) {
                item += i >= shaped.items[item].clusterEnd ? 1U : 0U;
                appendCluster(pipeline, opportunities, i, placedWidth(pipeline, line, i),
                              shaped.items[item].isRightToLeft(), all);
            }
        }
    }
    return copyOut(all, metrics, maxCount, count);
}

DWRITE_OVERHANG_METRICS overhangMetrics(const TextPipeline& pipeline) {
    InkBox ink;
    for (std::size_t i = 0; i < pipeline.lines().size(); ++i) {
        ink.include(inkOf(pipeline, i));
    }
    if (ink.isEmpty()) {
        ink = {0.0F, 0.0F, 0.0F, 0.0F};
    }
    return {-ink.left, -ink.top, ink.right - pipeline.box().width, ink.bottom - pipeline.box().height};
}

namespace {

/// The least width from `width` on at which no line is too long, when breaks change shapes.
float widenToShapesOfLines(TextPipeline& pipeline, float width) {
    ShapedText shaped = pipeline.unbroken();
    ShapedText reshaped;
    std::vector<Line> lines;
    const auto opportunities = [&pipeline]() -> const BreakOpportunities& { return pipeline.opportunities(); };
    for (float widest = width;;) {
        const LineBreakSettings settings{width, DWRITE_WORD_WRAPPING_WHOLE_WORD,
                                         pipeline.settings().incrementalTabStop};
        breakLines(pipeline.text().units(), pipeline.properties(), shaped, settings, opportunities, lines, reshaped);
        for (const Line& line : lines) {
            widest = std::max(widest, line.width);
        }
        if (!(widest > width)) {
            return width;
        }
        width = widest;
    }
}

} // namespace

float narrowestWidth(TextPipeline& pipeline) {
    const ShapedText& shaped = pipeline.unbroken();
    NarrowestWord word;
    bool changesShapes = false;
    for (UINT32 i = 0; i < shaped.clusterCount(); ++i) {
        const Cluster& cluster = shaped.clusters[i];
        if (i > 0) {
            const Cluster& before = shaped.clusters[i - 1];
            const bool mustBreak = cluster.has(Cluster::MustBreakBefore) || before.has(Cluster::MustBreakAfter) ||
                                   before.has(Cluster::Newline);
            const bool isHyphenated = before.has(Cluster::SoftHyphen) && before.glyphStart < shaped.glyphEnd(i - 1);
            const bool mayBreak = mustBreak || pipeline.opportunities()[cluster.textStart];
            changesShapes = changesShapes || (mayBreak && cluster.has(Cluster::UnsafeBefore));
            if (mustBreak || (mayBreak && !isHyphenated)) {
                word.end();
            } else if (mayBreak) {
                word.mayEndWith(shaped.advances[before.glyphStart]);
            }
        }
        if (cluster.has(Cluster::Tab)) {
            word.addTab(pipeline.settings().incrementalTabStop);
        } else if (!cluster.has(Cluster::SoftHyphen)) {
            word.add(cluster.width, cluster.has(Cluster::Hanging));
        }
    }
    word.end();
    return changesShapes && word.widest() > 0.0F ? widenToShapesOfLines(pipeline, word.widest()) : word.widest();
}

} // namespace platform

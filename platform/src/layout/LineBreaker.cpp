#include "layout/LineBreaker.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr UINT32 none = 0xFFFFFFFF;

class LineBreaker {
public:
    LineBreaker(std::u16string_view text, ShapedText& shaped, const LineBreakSettings& settings,
                const std::function<const BreakOpportunities&()>& opportunities, std::vector<Line>& lines)
        : m_text(text), m_shaped(shaped), m_clusters(shaped.clusters), m_count(shaped.clusterCount()),
          m_settings(settings), m_findOpportunities(opportunities), m_lines(lines) {
        m_isLimited = settings.wrapping != DWRITE_WORD_WRAPPING_NO_WRAP && settings.maxWidth > 0.0F &&
                      std::isfinite(settings.maxWidth);
    }

    void run() {
        hideHyphens();
        UINT32 start = 0;
        bool endsWithNewline = true;
        while (start < m_count) {
            const UINT32 end = findEnd(start);
            finish(start, end);
            endsWithNewline = m_lines.back().newlineLength > 0;
            start = end;
        }
        if (endsWithNewline) {
            Line& line = m_lines.emplace_back();
            line.clusterBegin = line.clusterEnd = line.trailingBegin = m_count;
            line.endsParagraph = true;
        }
    }

private:
    /// An earlier width may have made hyphens show.
    void hideHyphens() {
        for (UINT32 i = 0; i < m_count; ++i) {
            if (m_clusters[i].has(Cluster::SoftHyphen)) {
                m_clusters[i].width = 0.0F;
            }
        }
    }

    /// The width of a hyphen that would show at the end of a line that ends before cluster `end`; 0 if none would.
    float hyphenWidth(UINT32 end) const {
        const Cluster& last = m_clusters[end - 1];
        const bool isHyphen = last.has(Cluster::SoftHyphen) && last.glyphStart < m_shaped.glyphEnd(end - 1);
        return isHyphen ? m_shaped.advances[last.glyphStart] : 0.0F;
    }

    float widthAt(UINT32 cluster, float x) {
        Cluster& at = m_clusters[cluster];
        if (at.has(Cluster::Tab)) {
            at.width = tabWidth(x, m_settings.tabStop);
            if (m_isLimited) {
                // A tab never leaves the box: what follows it starts the next line.
                at.width = std::min(at.width, std::max(0.0F, m_settings.maxWidth - x));
            }
        }
        return at.width;
    }

    /// The end of the line that starts at cluster `start`.
    UINT32 findEnd(UINT32 start) {
        float x = 0.0F;
        for (UINT32 i = start; i < m_count; ++i) {
            const Cluster& cluster = m_clusters[i];
            if (cluster.has(Cluster::Newline) || cluster.has(Cluster::MustBreakAfter)) {
                return i + 1;
            }
            if (cluster.has(Cluster::MustBreakBefore) && i > start) {
                return i;
            }
            const float width = widthAt(i, x);
            const bool canOverflow = !cluster.has(Cluster::Hanging) && !cluster.has(Cluster::Tab);
            if (m_isLimited && canOverflow && x + width > m_settings.maxWidth) {
                return breakOverflow(start, i);
            }
            x += width;
        }
        return m_count;
    }

    /// The end of a line whose clusters before `overflow` fit.
    UINT32 breakOverflow(UINT32 start, UINT32 overflow) {
        if (m_settings.wrapping == DWRITE_WORD_WRAPPING_CHARACTER) {
            return std::max(overflow, start + 1);
        }
        for (UINT32 end = overflow; end > start; --end) {
            if (canBreakBefore(end) && hyphenFits(start, end)) {
                return end;
            }
        }
        if (m_settings.wrapping != DWRITE_WORD_WRAPPING_WHOLE_WORD) {
            return std::max(overflow, start + 1);
        }
        for (UINT32 end = overflow + 1; end < m_count; ++end) {
            const bool mustBreak = m_clusters[end - 1].has(Cluster::Newline) ||
                                   m_clusters[end - 1].has(Cluster::MustBreakAfter) ||
                                   m_clusters[end].has(Cluster::MustBreakBefore);
            if (mustBreak || (canBreakBefore(end) && !m_clusters[end].has(Cluster::Newline))) {
                return end;
            }
        }
        return m_count;
    }

    bool canBreakBefore(UINT32 cluster) {
        if (m_opportunities == nullptr) {
            m_opportunities = &m_findOpportunities();
        }
        return (*m_opportunities)[m_clusters[cluster].textStart];
    }

    /// Whether a line that ends before cluster `end` has room for the hyphen that such an end shows.
    bool hyphenFits(UINT32 start, UINT32 end) {
        const float hyphen = hyphenWidth(end);
        if (hyphen == 0.0F) {
            return true;
        }
        float x = 0.0F;
        for (UINT32 i = start; i < end; ++i) {
            x += widthAt(i, x);
        }
        return x + hyphen <= m_settings.maxWidth;
    }

    void finish(UINT32 start, UINT32 end) {
        Line& line = m_lines.emplace_back();
        line.clusterBegin = start;
        line.clusterEnd = end;
        const bool endsWithNewline = m_clusters[end - 1].has(Cluster::Newline);
        line.newlineLength = endsWithNewline ? m_shaped.textLength(end - 1) : 0;
        line.endsParagraph = endsWithNewline || end == m_count;
        if (!line.endsParagraph && hyphenWidth(end) > 0.0F) {
            m_clusters[end - 1].width = hyphenWidth(end);
            line.showsHyphen = true;
        }
        line.trailingBegin = end;
        while (line.trailingBegin > start && m_clusters[line.trailingBegin - 1].has(Cluster::Hanging)) {
            --line.trailingBegin;
        }
        // Summed as the test for room sums, so that a box as wide as its text holds it.
        float x = 0.0F;
        for (UINT32 i = start; i < end; ++i) {
            if (i == line.trailingBegin) {
                line.width = x;
            }
            x += widthAt(i, x);
        }
        line.fullWidth = x;
        if (line.trailingBegin == end) {
            line.width = x;
        }
    }

    std::u16string_view m_text;
    ShapedText& m_shaped;
    std::vector<Cluster>& m_clusters;
    const UINT32 m_count;
    const LineBreakSettings& m_settings;
    const std::function<const BreakOpportunities&()>& m_findOpportunities;
    const BreakOpportunities* m_opportunities = nullptr;
    std::vector<Line>& m_lines;
    bool m_isLimited;
};

} // namespace

float tabWidth(float x, float tabStop) noexcept {
    if (!(tabStop > 0.0F) || !std::isfinite(tabStop) || !std::isfinite(x)) {
        return 0.0F;
    }
    // A position that only rounding keeps from a stop is on it.
    const float tolerance = tabStop * 1e-4F;
    const float stop = (std::floor((x + tolerance) / tabStop) + 1.0F) * tabStop;
    return std::max(0.0F, stop - x);
}

void breakLines(std::u16string_view text, ShapedText& shaped, const LineBreakSettings& settings,
                const std::function<const BreakOpportunities&()>& opportunities, std::vector<Line>& lines,
                ShapedText& reshaped) {
    lines.clear();
    reshaped = ShapedText();
    LineBreaker(text, shaped, settings, opportunities, lines).run();
}

} // namespace platform

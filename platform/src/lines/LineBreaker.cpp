#include "lines/LineBreaker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "lines/ClusterStream.h"

namespace platform {

namespace {

class LineBreaker {
public:
    LineBreaker(ClusterStream stream, const LineBreakSettings& settings,
                const std::function<const BreakOpportunities&()>& opportunities, std::vector<Line>& lines)
        : m_stream(std::move(stream)), m_settings(settings), m_findOpportunities(opportunities), m_lines(lines) {
        m_isWrapping = settings.wrapping != DWRITE_WORD_WRAPPING_NO_WRAP && settings.maxWidth > 0.0F &&
                       std::isfinite(settings.maxWidth);
    }

    void run() {
        bool endsWithNewline = true;
        while (m_stream.size() > 0) {
            m_isLimited = m_isWrapping && m_lines.size() != m_settings.unwrappedLine;
            m_edges.assign(1, 0.0F);
            finish(m_stream.take(findFittingEnd()));
            endsWithNewline = m_lines.back().newlineLength > 0;
        }
        if (endsWithNewline) {
            Line& line = m_lines.emplace_back();
            line.clusterBegin = line.clusterEnd = line.trailingBegin = m_stream.taken().clusterCount();
            line.endsParagraph = true;
        }
    }

private:
    /// The width of a hyphen that would show at the end of a line that ends before cluster `end`; 0 if none would.
    float hyphenWidth(UINT32 end) {
        return m_stream.at(end - 1).has(Cluster::SoftHyphen) ? m_stream.glyphAdvance(end - 1) : 0.0F;
    }

    /// What is left of the box at `x`, rounded so that both sum to no more than the box.
    float roomBehind(float x) const {
        const float room = std::max(0.0F, m_settings.maxWidth - x);
        return x + room > m_settings.maxWidth ? std::nextafter(room, 0.0F) : room;
    }

    /// The width of a cluster at `x` from its line's start, whatever width an earlier line gave it.
    float widthAt(Cluster& cluster, float x) const {
        if (cluster.has(Cluster::SoftHyphen)) {
            cluster.width = 0.0F;
        } else if (cluster.has(Cluster::Tab)) {
            cluster.width = tabWidth(x, m_settings.tabStop);
            if (m_isLimited) {
                // A tab never leaves the box: what follows it starts the next line.
                cluster.width = std::min(cluster.width, roomBehind(x));
            }
        }
        return cluster.width;
    }

    /// The width of the clusters before `end`. Each is added once for a line, however often it is asked.
    float widthUpTo(UINT32 end) {
        while (m_edges.size() <= end) {
            const float x = m_edges.back();
            m_edges.push_back(x + widthAt(m_stream.at(static_cast<UINT32>(m_edges.size()) - 1), x));
        }
        return m_edges[end];
    }

    /// The end of the next line, in clusters from its start. A line whose end takes another shape there may get too
    /// wide; it then ends at the opportunity before, if there is one.
    UINT32 findFittingEnd() {
        UINT32 end = findEnd();
        while (m_isLimited && end > 1 && m_stream.changesShapes(end)) {
            UINT32 changed = 0;
            const float reshaped = m_stream.reshapedWidth(end, changed);
            if (widthUpTo(changed) + reshaped + hyphenWidth(end) <= m_settings.maxWidth) {
                break;
            }
            const UINT32 earlier = breakOverflow(end - 1);
            if (earlier >= end) {
                break;
            }
            end = earlier;
        }
        return end;
    }

    UINT32 findEnd() {
        float x = 0.0F;
        const UINT32 count = m_stream.size();
        for (UINT32 i = 0; i < count; ++i) {
            Cluster& cluster = m_stream.at(i);
            if (cluster.has(Cluster::MustBreakBefore) && i > 0) {
                return i;
            }
            if (cluster.has(Cluster::Newline) || cluster.has(Cluster::MustBreakAfter)) {
                return i + 1;
            }
            const float width = widthAt(cluster, x);
            const bool canOverflow = !cluster.has(Cluster::Hanging) && !cluster.has(Cluster::Tab);
            if (m_isLimited && canOverflow && x + width > m_settings.maxWidth) {
                return breakOverflow(i);
            }
            x += width;
        }
        return count;
    }

    /// How many soft hyphens the line starts with. They never make a line alone.
    UINT32 leadingHyphens() {
        UINT32 count = 0;
        while (count + 1 < m_stream.size() && m_stream.at(count).has(Cluster::SoftHyphen)) {
            ++count;
        }
        return count;
    }

    /// The end of a line whose clusters before `overflow` fit.
    UINT32 breakOverflow(UINT32 overflow) {
        const UINT32 first = leadingHyphens();
        if (m_settings.wrapping == DWRITE_WORD_WRAPPING_CHARACTER) {
            return tear(first, overflow);
        }
        for (UINT32 end = overflow; end > first; --end) {
            if (canBreakBefore(end) && hyphenFits(end)) {
                return end;
            }
        }
        if (m_settings.wrapping == DWRITE_WORD_WRAPPING_WHOLE_WORD) {
            return findLongEnd(first);
        }
        // A space that should hold what is around it together is a better place than the middle of a word.
        for (UINT32 end = overflow; end > first; --end) {
            if (m_stream.at(end - 1).has(Cluster::Hanging)) {
                return end;
            }
        }
        return tear(first, overflow);
    }

    /// The end of a line that is cut anywhere: before `overflow` or, where a hyphen there has no room, before that. A
    /// line has one cluster at least behind the soft hyphens that it starts with.
    UINT32 tear(UINT32 first, UINT32 overflow) {
        for (UINT32 end = overflow; end > first; --end) {
            if (hyphenFits(end)) {
                return end;
            }
        }
        return first + 1;
    }

    /// The end of the shortest line that is too long: one that ends at a hyphen without room, or else a longer one.
    UINT32 findLongEnd(UINT32 first) {
        for (UINT32 end = first + 1; end < m_stream.size(); ++end) {
            const Cluster& last = m_stream.at(end - 1);
            if (last.has(Cluster::Newline) || last.has(Cluster::MustBreakAfter) ||
                m_stream.at(end).has(Cluster::MustBreakBefore) || canBreakBefore(end)) {
                return end;
            }
        }
        return m_stream.size();
    }

    bool canBreakBefore(UINT32 cluster) {
        if (m_opportunities == nullptr) {
            m_opportunities = &m_findOpportunities();
        }
        return (*m_opportunities)[m_stream.at(cluster).textStart];
    }

    /// Whether a line that ends before cluster `end` has room for the hyphen that such an end shows.
    bool hyphenFits(UINT32 end) {
        const float hyphen = hyphenWidth(end);
        return hyphen == 0.0F || widthUpTo(end) + hyphen <= m_settings.maxWidth;
    }

    /// Whether a cluster at a line's end is not counted in its width. A tab that spaces have left no room for hangs
    /// with them.
    bool hangs(const Cluster& cluster) const {
        return cluster.has(Cluster::Hanging) || (m_isLimited && cluster.has(Cluster::Tab) && cluster.width == 0.0F);
    }

    void finish(const ClusterStream::Taken& taken) {
        ShapedText& shaped = m_stream.taken();
        Line& line = m_lines.emplace_back();
        line.clusterBegin = taken.begin;
        line.clusterEnd = taken.end;
        Cluster& last = shaped.clusters[taken.end - 1];
        const bool endsWithNewline = last.has(Cluster::Newline);
        const bool hasPair = taken.end - taken.begin > 1 && shaped.clusters[taken.end - 2].has(Cluster::NewlineStart);
        line.newlineLength = endsWithNewline ? 1U + (hasPair ? 1U : 0U) : 0U;
        line.endsParagraph = endsWithNewline || m_stream.size() == 0;
        // Summed as the test for room sums, so that a box as wide as its text holds it.
        float x = 0.0F;
        for (UINT32 i = taken.begin; i < taken.end; ++i) {
            x += widthAt(shaped.clusters[i], x);
        }
        if (!line.endsParagraph && last.has(Cluster::SoftHyphen) && last.glyphStart < shaped.glyphEnd(taken.end - 1)) {
            last.width = shaped.advances[last.glyphStart];
            line.showsHyphen = true;
            x += last.width;
        }
        line.fullWidth = x;
        line.trailingBegin = taken.end;
        while (line.trailingBegin > taken.begin && hangs(shaped.clusters[line.trailingBegin - 1])) {
            --line.trailingBegin;
        }
        for (UINT32 i = taken.begin; i < line.trailingBegin; ++i) {
            line.width += shaped.clusters[i].width;
        }
    }

    ClusterStream m_stream;
    const LineBreakSettings& m_settings;
    const std::function<const BreakOpportunities&()>& m_findOpportunities;
    const BreakOpportunities* m_opportunities = nullptr;
    std::vector<Line>& m_lines;
    bool m_isWrapping;
    /// Whether the line that is being broken is.
    bool m_isLimited = false;
    /// Its clusters' left edges, as far as they were asked for.
    std::vector<float> m_edges;
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

void breakLines(std::u16string_view text, const RangeProperties& styles, ShapedText& shaped,
                const LineBreakSettings& settings, const std::function<const BreakOpportunities&()>& opportunities,
                std::vector<Line>& lines, ShapedText& reshaped) {
    lines.clear();
    reshaped = ShapedText();
    LineBreaker(ClusterStream(text, styles, shaped, reshaped), settings, opportunities, lines).run();
}

} // namespace platform

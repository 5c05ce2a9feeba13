#include "lines/Trimming.h"

#include <unicode/utf16.h>

namespace platform {

namespace {

class Trimmer {
public:
    Trimmer(std::u16string_view text, const ShapedText& shaped, const ParagraphSettings& settings, float maxWidth,
            const std::function<const BreakOpportunities&()>& opportunities)
        : m_text(text), m_shaped(shaped), m_trimming(settings.trimming), m_maxWidth(maxWidth),
          m_opportunities(opportunities) {
        DWRITE_INLINE_OBJECT_METRICS sign{};
        if (settings.trimmingSign && SUCCEEDED(settings.trimmingSign->GetMetrics(&sign))) {
            m_signWidth = sign.width;
        }
    }

    /// Cuts a line that is too wide, but never its first cluster; so a single cluster stays as it is.
    void trim(Line& line) const {
        UINT32 kept = line.clusterBegin + 1;
        if (kept >= line.trailingBegin) {
            return;
        }
        UINT32 tail = findTail(line);
        float room = m_maxWidth - m_signWidth - widthOf(tail, line.trailingBegin);
        if (room < 0.0F || tail <= kept) {
            // Not even the end of the line has room: the sign stands for it too.
            tail = line.trailingBegin;
            room = m_maxWidth - m_signWidth;
        }
        float width = m_shaped.clusters[line.clusterBegin].width;
        while (kept < tail && width + m_shaped.clusters[kept].width <= room) {
            width += m_shaped.clusters[kept].width;
            ++kept;
        }
        kept = atWord(line, kept);
        const float hanging = line.fullWidth - line.width;
        line.isTrimmed = true;
        line.trimBegin = kept;
        line.trimEnd = tail;
        line.signWidth = m_signWidth;
        line.width = widthOf(line.clusterBegin, kept) + m_signWidth + widthOf(tail, line.trailingBegin);
        line.fullWidth = line.width + hanging;
    }

private:
    float widthOf(UINT32 begin, UINT32 end) const {
        float width = 0.0F;
        for (UINT32 i = begin; i < end; ++i) {
            width += m_shaped.clusters[i].width;
        }
        return width;
    }

    /// Where the part of the line starts that the delimiter asks to keep; the line's end if there is none.
    UINT32 findTail(const Line& line) const {
        UINT32 left = m_trimming.delimiter == 0 ? 0 : m_trimming.delimiterCount;
        for (UINT32 i = line.trailingBegin; left > 0 && i > line.clusterBegin; --i) {
            UChar32 character = 0;
            U16_GET(m_text.data(), 0, m_shaped.clusters[i - 1].textStart, m_text.size(), character);
            if (static_cast<UINT32>(character) == m_trimming.delimiter && --left == 0) {
                return i - 1;
            }
        }
        return line.trailingBegin;
    }

    /// Moves the end of what is kept back to that of a word, if words are not to be cut and a word fits.
    UINT32 atWord(const Line& line, UINT32 kept) const {
        if (m_trimming.granularity != DWRITE_TRIMMING_GRANULARITY_WORD) {
            return kept;
        }
        for (UINT32 end = kept; end > line.clusterBegin; --end) {
            if (m_opportunities()[m_shaped.clusters[end].textStart]) {
                return end;
            }
        }
        return kept;
    }

    std::u16string_view m_text;
    const ShapedText& m_shaped;
    const DWRITE_TRIMMING& m_trimming;
    const float m_maxWidth;
    const std::function<const BreakOpportunities&()>& m_opportunities;
    float m_signWidth = 0.0F;
};

} // namespace

void trimLines(std::u16string_view text, const ShapedText& shaped, const ParagraphSettings& settings, float maxWidth,
               const std::function<const BreakOpportunities&()>& opportunities, std::vector<Line>& lines) {
    if (settings.trimming.granularity == DWRITE_TRIMMING_GRANULARITY_NONE || !(maxWidth > 0.0F)) {
        return;
    }
    const Trimmer trimmer(text, shaped, settings, maxWidth, opportunities);
    for (Line& line : lines) {
        if (line.width > maxWidth) {
            trimmer.trim(line);
        }
    }
}

} // namespace platform

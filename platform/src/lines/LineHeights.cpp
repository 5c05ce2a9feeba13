#include "lines/LineHeights.h"

#include <algorithm>

#include "fonts/FontFace.h"

namespace platform {

namespace {

/// The room that something takes above and below the baseline.
struct Extent {
    float baseline = 0.0F;
    float height = 0.0F;
};

/// The whole line gap lies above the ascent.
Extent extentOf(const CFontFace& face, float emSize) {
    const DWRITE_FONT_METRICS& metrics = face.metrics();
    const double scale = static_cast<double>(emSize) / std::max<unsigned>(1, metrics.designUnitsPerEm);
    const int above = metrics.ascent + metrics.lineGap;
    return {static_cast<float>(above * scale), static_cast<float>((above + metrics.descent) * scale)};
}

Extent extentOf(const TextItem& item) {
    DWRITE_INLINE_OBJECT_METRICS metrics{};
    if (item.kind == ItemKind::Object && SUCCEEDED(item.object->GetMetrics(&metrics))) {
        return {metrics.baseline, metrics.height};
    }
    return extentOf(*item.face, item.emSize);
}

/// The extents of everything on one line together.
class LineExtent {
public:
    void include(const Extent& extent) {
        if (m_isEmpty) {
            m_sum = extent;
            m_isEmpty = false;
            return;
        }
        const float below = std::max(m_sum.height - m_sum.baseline, extent.height - extent.baseline);
        m_sum.baseline = std::max(m_sum.baseline, extent.baseline);
        m_sum.height = m_sum.baseline + below;
    }
    [[nodiscard]] const Extent& sum() const noexcept { return m_sum; }

private:
    bool m_isEmpty = true;
    Extent m_sum;
};

void apply(const ParagraphSettings& settings, const Extent& natural, Line& line) {
    switch (settings.lineSpacingMethod) {
    case DWRITE_LINE_SPACING_METHOD_UNIFORM:
        line.height = settings.lineSpacing;
        line.baseline = settings.lineBaseline;
        break;
    case DWRITE_LINE_SPACING_METHOD_PROPORTIONAL:
        line.height = natural.height * settings.lineSpacing;
        line.baseline = natural.baseline * settings.lineBaseline;
        break;
    default:
        line.height = natural.height;
        line.baseline = natural.baseline;
        break;
    }
}

} // namespace

void setLineHeights(const ShapedText& shaped, const ParagraphSettings& settings, CFontFace& emptyFace, float emptySize,
                    std::vector<Line>& lines) {
    std::size_t item = 0;
    for (Line& line : lines) {
        if (line.clusterBegin == line.clusterEnd) {
            apply(settings, extentOf(emptyFace, emptySize), line);
            continue;
        }
        LineExtent extent;
        while (shaped.items[item].clusterEnd <= line.clusterBegin) {
            ++item;
        }
        for (std::size_t i = item; i < shaped.items.size() && shaped.items[i].clusterBegin < line.clusterEnd; ++i) {
            extent.include(extentOf(shaped.items[i]));
        }
        apply(settings, extent.sum(), line);
    }
}

} // namespace platform

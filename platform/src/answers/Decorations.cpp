#include "answers/Decorations.h"

#include <algorithm>
#include <cstddef>

#include "fonts/FontFace.h"

namespace platform {

namespace {

double scaleOf(const TextItem& item) {
    return static_cast<double>(item.emSize) / std::max<unsigned>(1, item.face->metrics().designUnitsPerEm);
}

/// Sums of widths taken along different ways differ in their last bits.
bool touch(const DecoratedStretch& left, const DecoratedStretch& right) {
    const float tolerance = std::max(left.item->emSize, right.item->emSize) * 1e-3F;
    return right.left - (left.left + left.width) <= tolerance;
}

bool canShareBar(const DecoratedStretch& left, const DecoratedStretch& right) {
    return left.effect == right.effect && left.isRightToLeft == right.isRightToLeft &&
           sameName(left.item->locale, right.item->locale) && touch(left, right);
}

bool hasSameFont(const DecoratedStretch& left, const DecoratedStretch& right) {
    return left.item->face == right.item->face && left.item->emSize == right.item->emSize;
}

DWRITE_READING_DIRECTION readingOf(const DecoratedStretch& stretch) {
    return stretch.isRightToLeft ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
}

/// Puts the stretches in order from left to right and calls `draw(first, last)` for each group that shares a bar.
template <class CanShare, class DrawGroup>
HRESULT drawGroups(std::vector<DecoratedStretch>& stretches, CanShare canShare, DrawGroup draw) {
    std::stable_sort(stretches.begin(), stretches.end(),
                     [](const DecoratedStretch& a, const DecoratedStretch& b) { return a.left < b.left; });
    for (std::size_t first = 0; first < stretches.size();) {
        std::size_t last = first + 1;
        while (last < stretches.size() && canShare(stretches[last - 1], stretches[last])) {
            ++last;
        }
        if (const HRESULT result = draw(&stretches[first], &stretches[first] + (last - first)); FAILED(result)) {
            return result;
        }
        first = last;
    }
    return S_OK;
}

} // namespace

HRESULT drawUnderlines(std::vector<DecoratedStretch>& stretches, DWRITE_FLOW_DIRECTION flow, const Renderer& renderer) {
    return drawGroups(stretches, canShareBar, [&](const DecoratedStretch* first, const DecoratedStretch* last) {
        DWRITE_UNDERLINE bar{};
        double thickness = 0.0;
        double offset = 0.0;
        double width = 0.0;
        for (const DecoratedStretch* stretch = first; stretch != last; ++stretch) {
            const DWRITE_FONT_METRICS& metrics = stretch->item->face->metrics();
            const double scale = scaleOf(*stretch->item);
            thickness += metrics.underlineThickness * scale * stretch->width;
            offset -= metrics.underlinePosition * scale * stretch->width;
            width += stretch->width;
            bar.runHeight = std::max(bar.runHeight, static_cast<float>(metrics.capHeight * scale));
        }
        bar.width = static_cast<float>(width);
        bar.thickness = static_cast<float>(thickness / width);
        bar.offset = static_cast<float>(offset / width);
        bar.readingDirection = readingOf(*first);
        bar.flowDirection = flow;
        bar.localeName = textOf(first->item->locale).c_str();
        bar.measuringMode = DWRITE_MEASURING_MODE_NATURAL;
        return renderer.drawUnderline(first->left, first->baseline, bar, first->effect);
    });
}

HRESULT drawStrikethroughs(std::vector<DecoratedStretch>& stretches, DWRITE_FLOW_DIRECTION flow,
                           const Renderer& renderer) {
    const auto canShare = [](const DecoratedStretch& left, const DecoratedStretch& right) {
        return canShareBar(left, right) && hasSameFont(left, right);
    };
    return drawGroups(stretches, canShare, [&](const DecoratedStretch* first, const DecoratedStretch* last) {
        const DWRITE_FONT_METRICS& metrics = first->item->face->metrics();
        const double scale = scaleOf(*first->item);
        DWRITE_STRIKETHROUGH bar{};
        for (const DecoratedStretch* stretch = first; stretch != last; ++stretch) {
            bar.width += stretch->width;
        }
        bar.thickness = static_cast<float>(metrics.strikethroughThickness * scale);
        bar.offset = static_cast<float>(-metrics.strikethroughPosition * scale);
        bar.readingDirection = readingOf(*first);
        bar.flowDirection = flow;
        bar.localeName = textOf(first->item->locale).c_str();
        bar.measuringMode = DWRITE_MEASURING_MODE_NATURAL;
        return renderer.drawStrikethrough(first->left, first->baseline, bar, first->effect);
    });
}

} // namespace platform

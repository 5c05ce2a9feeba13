#pragma once

#include <algorithm>
#include <vector>

#include <dwrite.h>

#include "lines/LaidOutText.h"

namespace platform {

// What a text in its box measures, as the operations of the same names answer it.

DWRITE_TEXT_METRICS textMetrics(const LaidOutText& laidOut);
HRESULT lineMetrics(const LaidOutText& laidOut, DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32& count);
/// Needs the opportunities to break.
HRESULT clusterMetrics(const LaidOutText& laidOut, DWRITE_CLUSTER_METRICS* metrics, UINT32 maxCount, UINT32& count);

/// How far the ink of the glyphs, and what inline objects say of theirs, stands out of the box on each side. Text
/// without ink counts as a point in the box's corner.
DWRITE_OVERHANG_METRICS overhangMetrics(const LaidOutText& laidOut);

/// The width of the widest stretch of text without an opportunity to break; needs these.
float narrowestWidth(const LaidOutText& laidOut);

/// Answers a question for several things: `count` is how many there are, and where `maxCount` is less, only that many
/// are copied, under E_NOT_SUFFICIENT_BUFFER.
template <class Element>
HRESULT copyOut(const std::vector<Element>& elements, Element* buffer, UINT32 maxCount, UINT32& count) {
    count = static_cast<UINT32>(elements.size());
    if (buffer != nullptr) {
        std::copy_n(elements.begin(), std::min(count, maxCount), buffer);
    }
    return count > maxCount ? E_NOT_SUFFICIENT_BUFFER : S_OK;
}

} // namespace platform

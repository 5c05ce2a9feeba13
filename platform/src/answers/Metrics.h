#pragma once

#include <algorithm>
#include <vector>

#include <dwrite.h>

#include "lines/TextPipeline.h"

namespace platform {

// What a finished pipeline's layout measures, as the operations of the same names answer it.

DWRITE_TEXT_METRICS textMetrics(const TextPipeline& pipeline);
HRESULT lineMetrics(const TextPipeline& pipeline, DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32& count);
HRESULT clusterMetrics(TextPipeline& pipeline, DWRITE_CLUSTER_METRICS* metrics, UINT32 maxCount, UINT32& count);

/// How far the ink of the glyphs, and what inline objects say of theirs, stands out of the box on each side. Text
/// without ink counts as a point in the box's corner.
DWRITE_OVERHANG_METRICS overhangMetrics(const TextPipeline& pipeline);

/// The width of the widest stretch of text without an opportunity to break.
float narrowestWidth(TextPipeline& pipeline);

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

#include "shaping/ShapedText.h"

#include <algorithm>
#include <iterator>

namespace platform {

void ShapedText::reserveLike(const ShapedText& other) {
    items.reserve(other.items.size());
    clusters.reserve(other.clusters.size());
    glyphs.reserve(other.glyphs.size());
    advances.reserve(other.advances.size());
    offsets.reserve(other.offsets.size());
}

void ShapedText::append(const ShapedText& other, UINT32 begin, UINT32 end) {
    if (begin == end) {
        return;
    }
    if (!clusters.empty()) {
        clusters.pop_back();
    }
    const auto firstCluster = static_cast<UINT32>(clusters.size());
    const UINT32 glyphBegin = other.clusters[begin].glyphStart;
    const UINT32 glyphEnd = other.clusters[end].glyphStart;
    const UINT32 glyphShift = static_cast<UINT32>(glyphs.size()) - glyphBegin;
    for (UINT32 i = begin; i <= end; ++i) {
        Cluster& cluster = clusters.emplace_back(other.clusters[i]);
        cluster.glyphStart += glyphShift;
    }
    glyphs.insert(glyphs.end(), other.glyphs.begin() + glyphBegin, other.glyphs.begin() + glyphEnd);
    advances.insert(advances.end(), other.advances.begin() + glyphBegin, other.advances.begin() + glyphEnd);
    offsets.insert(offsets.end(), other.offsets.begin() + glyphBegin, other.offsets.begin() + glyphEnd);
    for (UINT32 i = other.itemOf(begin); i < other.items.size() && other.items[i].clusterBegin < end; ++i) {
        TextItem item = other.items[i];
        const UINT32 partBegin = std::max(item.clusterBegin, begin);
        const UINT32 partEnd = std::min(item.clusterEnd, end);
        item.start = other.clusters[partBegin].textStart;
        item.length = other.clusters[partEnd].textStart - item.start;
        item.clusterBegin = partBegin - begin + firstCluster;
        item.clusterEnd = partEnd - begin + firstCluster;
        items.push_back(item);
    }
}

UINT32 ShapedText::itemOf(UINT32 cluster) const noexcept {
    const auto after = std::upper_bound(items.begin(), items.end(), cluster,
                                        [](UINT32 index, const TextItem& item) { return index < item.clusterBegin; });
    return static_cast<UINT32>(std::distance(items.begin(), after)) - 1;
}

UINT32 ShapedText::clusterAt(UINT32 position) const noexcept {
    const auto after =
        std::upper_bound(clusters.begin(), std::prev(clusters.end()), position,
                         [](UINT32 wanted, const Cluster& cluster) { return wanted < cluster.textStart; });
    return static_cast<UINT32>(std::distance(clusters.begin(), after)) - 1;
}

} // namespace platform

#include "layout/ShapedText.h"

#include <algorithm>
#include <iterator>

namespace platform {

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

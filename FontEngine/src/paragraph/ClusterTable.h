#pragma once

#include <dwrite.h>

#include <cstdint>
#include <vector>

namespace fonts {

// The clusters that the platform counts in a layout, in the order of the text.
class CClusterTable {
public:
    // Throws oslayer::EOsLayerError when the platform fails.
    explicit CClusterTable(IDWriteTextLayout* pLayout);

    std::size_t size() const { return m_metrics.size(); }
    const DWRITE_CLUSTER_METRICS& at(std::size_t index) const { return m_metrics[index]; }
    std::uint32_t start(std::size_t index) const { return m_starts[index]; }
    double width(std::size_t index) const { return static_cast<double>(m_metrics[index].width); }

    // The first cluster that starts at the position or behind it; size() behind all.
    std::size_t firstFrom(std::uint32_t position) const;

private:
    std::vector<DWRITE_CLUSTER_METRICS> m_metrics;
    std::vector<std::uint32_t> m_starts;
};

} // namespace fonts

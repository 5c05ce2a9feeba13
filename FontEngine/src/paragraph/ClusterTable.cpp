#include "ClusterTable.h"

#include <algorithm>

#include <oslayer/checkHResult.h>

namespace fonts {

CClusterTable::CClusterTable(IDWriteTextLayout* pLayout) {
    UINT32 count = 0;
    // The first call has no room and asks for the number.
    const HRESULT hr = pLayout->GetClusterMetrics(nullptr, 0, &count);
    if (hr != E_NOT_SUFFICIENT_BUFFER) {
        OSLAYER_CHECK(hr);
    }
    m_metrics.resize(count);
    if (count > 0) {
        OSLAYER_CHECK(pLayout->GetClusterMetrics(m_metrics.data(), count, &count));
    }
    m_starts.reserve(count);
    std::uint32_t start = 0;
    for (const DWRITE_CLUSTER_METRICS& metrics : m_metrics) {
        m_starts.push_back(start);
        start += metrics.length;
    }
}

std::size_t CClusterTable::firstFrom(std::uint32_t position) const {
    return static_cast<std::size_t>(std::lower_bound(m_starts.begin(), m_starts.end(), position) - m_starts.begin());
}

} // namespace fonts

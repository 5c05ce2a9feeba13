#include "format/Typography.h"

namespace platform {

HRESULT CTypography::AddFontFeature(DWRITE_FONT_FEATURE feature) {
    return guarded([&] {
        m_features.push_back(feature);
        return S_OK;
    });
}

UINT32 CTypography::GetFontFeatureCount() {
    return static_cast<UINT32>(m_features.size());
}

HRESULT CTypography::GetFontFeature(UINT32 index, DWRITE_FONT_FEATURE* feature) {
    if (index >= m_features.size()) {
        return E_INVALIDARG;
    }
    *feature = m_features[index];
    return S_OK;
}

} // namespace platform

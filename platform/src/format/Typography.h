#pragma once

#include <vector>

#include <dwrite.h>

#include "com/ComObject.h"

namespace platform {

/// A list of font features.
class CTypography final : public CHeapObject<IDWriteTypography> {
public:
    HRESULT STDMETHODCALLTYPE AddFontFeature(DWRITE_FONT_FEATURE feature) override;
    UINT32 STDMETHODCALLTYPE GetFontFeatureCount() override;
    HRESULT STDMETHODCALLTYPE GetFontFeature(UINT32 index, DWRITE_FONT_FEATURE* feature) override;

private:
    std::vector<DWRITE_FONT_FEATURE> m_features;
};

} // namespace platform

#pragma once

#include <dwrite_2.h>

#include "com/ComObject.h"

namespace platform {

class FallbackMapper;

/// The system's font fallback as callers see it. Interned.
class CFontFallback final : public CInternedObject<IDWriteFontFallback> {
public:
    static CFontFallback& system();

    /// Answers by `mapper`, which outlives this object.
    explicit CFontFallback(FallbackMapper& mapper) : m_mapper(mapper) {}
    ~CFontFallback() = default;

    HRESULT STDMETHODCALLTYPE MapCharacters(IDWriteTextAnalysisSource* analysisSource, UINT32 textPosition,
                                            UINT32 textLength, IDWriteFontCollection* baseFontCollection,
                                            const WCHAR* baseFamilyName, DWRITE_FONT_WEIGHT baseWeight,
                                            DWRITE_FONT_STYLE baseStyle, DWRITE_FONT_STRETCH baseStretch,
                                            UINT32* mappedLength, IDWriteFont** mappedFont, FLOAT* scale) override;

private:
    FallbackMapper& m_mapper;
};

} // namespace platform

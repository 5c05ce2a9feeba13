#pragma once

#include <vector>

#include <dwrite_2.h>

#include "format/RangeProperties.h"
#include "unicode/TextBuffer.h"

namespace platform {

class CFontFace;

/// A host's own choice of fonts for a layout's text. The host reads the text through this object, which counts no
/// references: it lives as long as the layout's fonts are being chosen.
class HostFallback final : public IDWriteTextAnalysisSource {
public:
    /// `held` gets what keeps faces of a host's own files alive.
    HostFallback(IDWriteFontFallback& fallback, const TextBuffer& text, const RangeProperties& properties,
                 DWRITE_READING_DIRECTION reading, std::vector<Reference<IDWriteFontFace>>& held)
        : m_fallback(fallback), m_text(text), m_properties(properties), m_reading(reading), m_held(held) {}

    /// What the host draws the start of a stretch with.
    struct Answer {
        UINT32 length = 0;
        /// Interned. Null where the host knows no font, or names one that is not the platform's.
        CFontFace* face = nullptr;
        float scale = 1.0F;
    };
    /// Asks about `length` > 0 positions from `position` on, all of them in `style`. The answer is about 1 at least.
    Answer ask(UINT32 position, UINT32 length, const RunStyle& style);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTextAtPosition(UINT32 position, const WCHAR** text, UINT32* length) override;
    HRESULT STDMETHODCALLTYPE GetTextBeforePosition(UINT32 position, const WCHAR** text, UINT32* length) override;
    DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetParagraphReadingDirection() override { return m_reading; }
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 position, UINT32* length, const WCHAR** locale) override;
    HRESULT STDMETHODCALLTYPE GetNumberSubstitution(UINT32 position, UINT32* length,
                                                    IDWriteNumberSubstitution** substitution) override;

private:
    CFontFace* knownFace(IDWriteFont& font);

    IDWriteFontFallback& m_fallback;
    const TextBuffer& m_text;
    const RangeProperties& m_properties;
    const DWRITE_READING_DIRECTION m_reading;
    std::vector<Reference<IDWriteFontFace>>& m_held;
    /// The font asked about last: hosts name few.
    Reference<IDWriteFont> m_lastFont;
    CFontFace* m_lastFace = nullptr;
};

} // namespace platform

#pragma once

#include "com/ComObject.h"
#include "com/Reference.h"
#include "fonts/GlyphBounds.h"
#include "fonts/GlyphBoundsCache.h"
#include "fonts/HarfBuzz.h"
#include "fonts/OutlineSink.h"

#include <dwrite_font.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace platform {

class FaceSource;

/// The glyphs of one face of a file, simulations included. Interned, and safe for any number of
/// threads: what is computed late is published atomically and never changes again.
///
/// All measures are design units, y up; one em has unitsPerEm() of them.
class CFontFace final : public CInternedObject<IDWriteFontFace> {
public:
    /// `source` outlives the face; `life` is what the face lives with, null for the process.
    CFontFace(FaceSource& source, DWRITE_FONT_SIMULATIONS simulations, CommonLife* life = nullptr);
    ~CFontFace();

    /// The face of ours behind an interface pointer; null for another's and for null.
    static Reference<CFontFace> ownFace(IDWriteFontFace* face);

    const FaceSource& source() const noexcept { return m_source; }
    /// A number of its own, dense from 0 in order of creation: an index for caches.
    std::uint32_t id() const noexcept { return m_id; }
    DWRITE_FONT_SIMULATIONS simulations() const noexcept { return m_simulations; }

    /// The immutable font to shape with: scale = unitsPerEm(), variations and
    /// simulations applied, no hinting.
    hb_font_t* shapingFont() const noexcept { return m_shapingFont.get(); }
    hb_face_t* hbFace() const noexcept { return hb_font_get_face(m_shapingFont.get()); }
    unsigned unitsPerEm() const noexcept { return m_metrics.designUnitsPerEm; }
    const DWRITE_FONT_METRICS& metrics() const noexcept { return m_metrics; }
    unsigned glyphCount() const noexcept { return m_glyphCount; }

    /// The glyph of a code point without any shaping; 0 when the font lacks it.
    std::uint16_t nominalGlyph(char32_t codePoint) const {
        if (codePoint > 0xFFFF) {
            return lookUpGlyph(codePoint);
        }
        const GlyphPage* page = m_glyphPages[codePoint >> 8].load(std::memory_order_acquire);
        if (page == nullptr) {
            page = &fillGlyphPage(codePoint >> 8);
        }
        return (*page)[codePoint & 0xFF];
    }
    bool hasCharacter(char32_t codePoint) const { return nominalGlyph(codePoint) != 0; }

    /// Horizontal advance; 0 past the last glyph.
    int advance(std::uint16_t glyph) const;
    /// Exact bounds of the outline as drawn; computed once per glyph. The reference
    /// stays valid as long as the face. Empty past the last glyph.
    const GlyphBounds& glyphBounds(std::uint16_t glyph) const;
    /// Plays the outline as drawn, a frame for a picture that has none; nothing past the last glyph. Throws
    /// std::runtime_error where the font's file changed before its outlines were read; glyphBounds does so too.
    void outline(std::uint16_t glyph, OutlineSink& sink) const;

    // IDWriteFontFace
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    using IUnknown::QueryInterface;
    DWRITE_FONT_FACE_TYPE STDMETHODCALLTYPE GetType() override;
    HRESULT STDMETHODCALLTYPE GetFiles(UINT32* numberOfFiles, IDWriteFontFile** fontFiles) override;
    UINT32 STDMETHODCALLTYPE GetIndex() override;
    DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() override;
    BOOL STDMETHODCALLTYPE IsSymbolFont() override;
    void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* fontFaceMetrics) override;
    UINT16 STDMETHODCALLTYPE GetGlyphCount() override;
    HRESULT STDMETHODCALLTYPE GetDesignGlyphMetrics(const UINT16* glyphIndices, UINT32 glyphCount,
                                                    DWRITE_GLYPH_METRICS* glyphMetrics, BOOL isSideways) override;
    HRESULT STDMETHODCALLTYPE GetGlyphIndices(const UINT32* codePoints, UINT32 codePointCount,
                                              UINT16* glyphIndices) override;
    HRESULT STDMETHODCALLTYPE TryGetFontTable(UINT32 openTypeTableTag, const void** tableData, UINT32* tableSize,
                                              void** tableContext, BOOL* exists) override;
    void STDMETHODCALLTYPE ReleaseFontTable(void* tableContext) override;
    HRESULT STDMETHODCALLTYPE GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphIndices, const FLOAT* glyphAdvances,
                                                 const DWRITE_GLYPH_OFFSET* glyphOffsets, UINT32 glyphCount,
                                                 BOOL isSideways, BOOL isRightToLeft,
                                                 IDWriteGeometrySink* geometrySink) override;

private:
    using GlyphPage = std::array<std::uint16_t, 256>;

    std::uint16_t lookUpGlyph(char32_t codePoint) const;
    const GlyphPage& fillGlyphPage(char32_t page) const;
    DWRITE_GLYPH_METRICS designGlyphMetrics(std::uint16_t glyph) const;

    FaceSource& m_source;
    const std::uint32_t m_id;
    const DWRITE_FONT_SIMULATIONS m_simulations;
    // What outlines are drawn from; the shaping font adds what bold does to advances.
    const HbFontPtr m_drawingFont;
    const unsigned m_glyphCount;
    const DWRITE_FONT_METRICS m_metrics;
    const int m_boldStrength;
    const bool m_hasPictures;
    const HbFontPtr m_shapingFont;
    mutable std::array<std::atomic<const GlyphPage*>, 256> m_glyphPages{};
    mutable GlyphBoundsCache m_bounds;
};

} // namespace platform

#pragma once

#include "com/ComObject.h"
#include "fonts/FaceTraits.h"
#include "fonts/LocalizedStrings.h"

#include <dwrite_font.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace platform {

class CFontFace;
class CFontFamily;
class FaceSource;

/// A member of a family: a face of a file, real or simulated. Interned.
class CFont final : public CInternedObject<IDWriteFont> {
public:
    /// `source` and `family` outlive the font; `traits` are those of the font as it is
    /// matched, simulations included.
    CFont(CFontFamily& family, FaceSource& source, const FaceTraits& traits, DWRITE_FONT_SIMULATIONS simulations,
          LocalizedNames faceNames);
    /// Another font that has the face of `original`, which outlives it, as a member of another family.
    CFont(CFontFamily& family, CFont& original);
    ~CFont();

    /// The face, made at the first call and kept.
    CFontFace& face() {
        CFontFace* face = m_face.load(std::memory_order_acquire);
        return face != nullptr ? *face : makeFace();
    }
    /// Whether `face` is this font's; does not make one.
    bool hasFace(const IDWriteFontFace* face) const noexcept;
    /// Whether `face`, which may be of another collection or of none, is of the same file, index and simulations.
    bool drawsLike(const CFontFace& face) const;
    CFontFamily& family() const noexcept { return m_family; }
    /// The member of the collection that this font shares its face with; itself if it is one.
    CFont& original() noexcept { return m_original != nullptr ? *m_original : *this; }
    const FaceSource& source() const noexcept { return m_source; }
    const FaceTraits& traits() const noexcept { return m_traits; }
    DWRITE_FONT_WEIGHT weight() const noexcept { return m_traits.weight; }
    DWRITE_FONT_STRETCH stretch() const noexcept { return m_traits.stretch; }
    DWRITE_FONT_STYLE style() const noexcept { return m_traits.style; }
    DWRITE_FONT_SIMULATIONS simulations() const noexcept { return m_simulations; }

    // IDWriteFont
    HRESULT STDMETHODCALLTYPE GetFontFamily(IDWriteFontFamily** fontFamily) override;
    DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetWeight() override;
    DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetStretch() override;
    DWRITE_FONT_STYLE STDMETHODCALLTYPE GetStyle() override;
    HRESULT STDMETHODCALLTYPE GetFaceNames(IDWriteLocalizedStrings** names) override;
    HRESULT STDMETHODCALLTYPE GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID informationalStringID,
                                                      IDWriteLocalizedStrings** informationalStrings,
                                                      BOOL* exists) override;
    DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() override;
    void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* fontMetrics) override;
    HRESULT STDMETHODCALLTYPE HasCharacter(UINT32 unicodeValue, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE CreateFontFace(IDWriteFontFace** fontFace) override;

private:
    CFontFace& makeFace();

    CFontFamily& m_family;
    FaceSource& m_source;
    const FaceTraits m_traits;
    const DWRITE_FONT_SIMULATIONS m_simulations;
    CLocalizedStrings m_faceNames;
    CFont* const m_original = nullptr;
    std::atomic<CFontFace*> m_face = nullptr;
    std::mutex m_makingFace;
    std::unique_ptr<CFontFace> m_ownedFace;
};

} // namespace platform

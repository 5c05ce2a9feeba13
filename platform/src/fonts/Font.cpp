#include "fonts/Font.h"

#include "fonts/FaceSource.h"
#include "fonts/FontFace.h"
#include "fonts/FontFamily.h"

namespace platform {

CFont::CFont(CFontFamily& family, FaceSource& source, const FaceTraits& traits, DWRITE_FONT_SIMULATIONS simulations,
             LocalizedNames faceNames)
    : CInternedObject(family.life()), m_family(family), m_source(source), m_traits(traits), m_simulations(simulations),
      m_faceNames(std::move(faceNames), family.life()) {}

CFont::CFont(CFontFamily& family, CFont& original)
    : CInternedObject(family.life()), m_family(family), m_source(original.m_source), m_traits(original.m_traits),
      m_simulations(original.m_simulations), m_faceNames(original.m_faceNames.names(), family.life()),
      m_original(&original) {}

CFont::~CFont() = default;

CFontFace& CFont::makeFace() {
    if (m_original != nullptr) {
        CFontFace& shared = m_original->face();
        m_face.store(&shared, std::memory_order_release);
        return shared;
    }
    const std::lock_guard lock(m_makingFace);
    if (!m_ownedFace) {
        m_ownedFace = std::make_unique<CFontFace>(m_source, m_simulations, life());
        m_face.store(m_ownedFace.get(), std::memory_order_release);
    }
    return *m_ownedFace;
}

bool CFont::hasFace(const IDWriteFontFace* face) const noexcept {
    return face != nullptr && m_face.load(std::memory_order_acquire) == face;
}

bool CFont::drawsLike(const CFontFace& face) const {
    return face.simulations() == m_simulations && face.source().isSameFace(m_source);
}

HRESULT CFont::GetFontFamily(IDWriteFontFamily** fontFamily) {
    handOut(m_family, fontFamily);
    return S_OK;
}

DWRITE_FONT_WEIGHT CFont::GetWeight() {
    return m_traits.weight;
}

DWRITE_FONT_STRETCH CFont::GetStretch() {
    return m_traits.stretch;
}

DWRITE_FONT_STYLE CFont::GetStyle() {
    return m_traits.style;
}

HRESULT CFont::GetFaceNames(IDWriteLocalizedStrings** names) {
    handOut(m_faceNames, names);
    return S_OK;
}

HRESULT CFont::GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID informationalStringID,
                                       IDWriteLocalizedStrings** informationalStrings, BOOL* exists) {
    *informationalStrings = nullptr;
    *exists = FALSE;
    return guarded([&] {
        if (CLocalizedStrings* const strings = m_source.strings(informationalStringID)) {
            handOut(*strings, informationalStrings);
            *exists = TRUE;
        }
        return S_OK;
    });
}

DWRITE_FONT_SIMULATIONS CFont::GetSimulations() {
    return m_simulations;
}

void CFont::GetMetrics(DWRITE_FONT_METRICS* fontMetrics) {
    // There is no way to report a failure here: without memory for the face the metrics
    // stay zero, which callers take as "not known yet".
    *fontMetrics = {};
    guarded([&] {
        *fontMetrics = face().metrics();
        return S_OK;
    });
}

HRESULT CFont::HasCharacter(UINT32 unicodeValue, BOOL* exists) {
    *exists = FALSE;
    return guarded([&] {
        *exists = face().hasCharacter(unicodeValue) ? TRUE : FALSE;
        return S_OK;
    });
}

HRESULT CFont::CreateFontFace(IDWriteFontFace** fontFace) {
    *fontFace = nullptr;
    return guarded([&] {
        CFontFace& made = face();
        // A host is told what its own code answered. A file on disk that has gone is a face without glyphs.
        if (m_source.path().empty() && FAILED(m_source.failure()) && made.glyphCount() == 0) {
            return m_source.failure();
        }
        handOut(made, fontFace);
        return S_OK;
    });
}

} // namespace platform

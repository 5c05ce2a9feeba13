#pragma once

#include "com/ComObject.h"
#include "fonts/Font.h"
#include "fonts/LocalizedStrings.h"

#include <dwrite_font.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

class CFontCollection;

/// Fonts that differ in weight, stretch and style only. Interned; complete and
/// immutable once the collection is built.
class CFontFamily final : public CInternedObject<IDWriteFontFamily, IDWriteFontList> {
public:
    CFontFamily(CFontCollection& collection, LocalizedNames names);
    ~CFontFamily();

    CFontCollection& collection() const noexcept { return m_collection; }
    const LocalizedNames& names() const noexcept { return m_names.names(); }
    const std::vector<std::unique_ptr<CFont>>& fonts() const noexcept { return m_fonts; }

    /// The font closest to what is asked for: in stretch, then in style, then in weight. A request for the plain font
    /// is answered with the one that calls itself the regular one, whatever weight and stretch its tables state. Values
    /// out of range are allowed. Remembered, so asking again is cheap.
    CFont& match(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch, DWRITE_FONT_STYLE style) const;

    /// For the collection while it is being built: the fonts in their order, not empty, and the index of the one that
    /// calls itself the regular one.
    void setFonts(std::vector<std::unique_ptr<CFont>> fonts, std::optional<std::size_t> plain = std::nullopt);

    // IDWriteFontFamily
    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) override;
    UINT32 STDMETHODCALLTYPE GetFontCount() override;
    HRESULT STDMETHODCALLTYPE GetFont(UINT32 index, IDWriteFont** font) override;
    HRESULT STDMETHODCALLTYPE GetFamilyNames(IDWriteLocalizedStrings** names) override;
    HRESULT STDMETHODCALLTYPE GetFirstMatchingFont(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                                   DWRITE_FONT_STYLE style, IDWriteFont** matchingFont) override;
    HRESULT STDMETHODCALLTYPE GetMatchingFonts(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                               DWRITE_FONT_STYLE style, IDWriteFontList** matchingFonts) override;

private:
    std::uint32_t distance(const FaceTraits& request, const CFont& font) const noexcept;

    CFontCollection& m_collection;
    CLocalizedStrings m_names;
    std::vector<std::unique_ptr<CFont>> m_fonts;
    const CFont* m_plain = nullptr;
    // Answers given before: the question in the upper half (0: none), the font's index in the lower one.
    mutable std::array<std::atomic<std::uint64_t>, 16> m_answers{};
};

} // namespace platform

#include "fonts/FontFamily.h"

#include "com/Reference.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontMatching.h"

#include <algorithm>
#include <numeric>

namespace platform {

namespace {

/// The answer to GetMatchingFonts; the only list that is made for its caller alone.
class CFontList final : public CHeapObject<IDWriteFontList> {
public:
    CFontList(CFontCollection& collection, std::vector<CFont*> fonts)
        : m_collection(&collection), m_fonts(std::move(fonts)) {}

    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) override {
        handOut(*m_collection, fontCollection);
        return S_OK;
    }
    UINT32 STDMETHODCALLTYPE GetFontCount() override { return static_cast<UINT32>(m_fonts.size()); }
    HRESULT STDMETHODCALLTYPE GetFont(UINT32 index, IDWriteFont** font) override {
        *font = nullptr;
        if (index >= m_fonts.size()) {
            return E_FAIL;
        }
        handOut(*m_fonts[index], font);
        return S_OK;
    }

private:
    const Reference<CFontCollection> m_collection;
    const std::vector<CFont*> m_fonts;
};

/// A request as a number, never 0.
std::uint64_t questionOf(const FaceTraits& request) {
    return 1u | static_cast<std::uint64_t>(request.weight) << 1 | static_cast<std::uint64_t>(request.stretch) << 11 |
           static_cast<std::uint64_t>(request.style) << 15;
}

} // namespace

CFontFamily::CFontFamily(CFontCollection& collection, LocalizedNames names)
    : CInternedObject(collection.life()), m_collection(collection), m_names(std::move(names), collection.life()) {}

CFontFamily::~CFontFamily() = default;

void CFontFamily::setFonts(std::vector<std::unique_ptr<CFont>> fonts, std::optional<std::size_t> plain) {
    m_fonts = std::move(fonts);
    m_plain = plain ? m_fonts[*plain].get() : nullptr;
}

std::uint32_t CFontFamily::distance(const FaceTraits& request, const CFont& font) const noexcept {
    const bool isPlainRequest = request.weight == DWRITE_FONT_WEIGHT_NORMAL &&
                                request.stretch == DWRITE_FONT_STRETCH_NORMAL &&
                                request.style == DWRITE_FONT_STYLE_NORMAL;
    // Nothing else is closer, not even a font whose tables say just that.
    return isPlainRequest && &font == m_plain ? 0 : 1 + matchDistance(request, font.traits());
}

CFont& CFontFamily::match(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch, DWRITE_FONT_STYLE style) const {
    const FaceTraits request = normalizedRequest(weight, stretch, style);
    const std::uint64_t question = questionOf(request);
    const auto slot = static_cast<std::size_t>(request.weight / 50 + request.stretch * 3 + request.style * 7);
    std::atomic<std::uint64_t>& remembered = m_answers[slot % m_answers.size()];
    const std::uint64_t answer = remembered.load(std::memory_order_relaxed);
    if (answer >> 32 == question) {
        return *m_fonts[answer & 0xFFFFFFFF];
    }

    const auto best = std::min_element(m_fonts.begin(), m_fonts.end(), [&](const auto& a, const auto& b) {
        return distance(request, *a) < distance(request, *b);
    });
    const auto index = static_cast<std::uint64_t>(best - m_fonts.begin());
    remembered.store(question << 32 | index, std::memory_order_relaxed);
    return **best;
}

HRESULT CFontFamily::GetFontCollection(IDWriteFontCollection** fontCollection) {
    handOut(m_collection, fontCollection);
    return S_OK;
}

UINT32 CFontFamily::GetFontCount() {
    return static_cast<UINT32>(m_fonts.size());
}

HRESULT CFontFamily::GetFont(UINT32 index, IDWriteFont** font) {
    *font = nullptr;
    if (index >= m_fonts.size()) {
        return E_FAIL;
    }
    handOut(*m_fonts[index], font);
    return S_OK;
}

HRESULT CFontFamily::GetFamilyNames(IDWriteLocalizedStrings** names) {
    handOut(m_names, names);
    return S_OK;
}

HRESULT CFontFamily::GetFirstMatchingFont(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                          DWRITE_FONT_STYLE style, IDWriteFont** matchingFont) {
    handOut(match(weight, stretch, style), matchingFont);
    return S_OK;
}

HRESULT CFontFamily::GetMatchingFonts(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch, DWRITE_FONT_STYLE style,
                                      IDWriteFontList** matchingFonts) {
    *matchingFonts = nullptr;
    return guarded([&] {
        const FaceTraits request = normalizedRequest(weight, stretch, style);
        std::vector<CFont*> fonts;
        for (const std::unique_ptr<CFont>& font : m_fonts) {
            fonts.push_back(font.get());
        }
        std::stable_sort(fonts.begin(), fonts.end(),
                         [&](const CFont* a, const CFont* b) { return distance(request, *a) < distance(request, *b); });
        *matchingFonts = new CFontList(m_collection, std::move(fonts));
        return S_OK;
    });
}

} // namespace platform

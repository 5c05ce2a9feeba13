#pragma once

#include <dwrite_2.h>

#include <atomic>
#include <cstdint>
#include <vector>

namespace fonts {

// A stretch of text of one direction. The records form a list in text order
// through `nextRunIndex`; 0 ends it.
struct SAnalysisRun {
    std::uint32_t textStart = 0;
    std::uint32_t textLength = 0;
    std::uint8_t bidiLevel = 0;
    std::uint32_t nextRunIndex = 0;
};

// Shows one run of text to the platform's analysers. Text, locale name and number
// substitution are borrowed and must outlive the object. Positions and lengths
// count UTF-16 units. One object serves one thread; only its count is atomic.
//
// Lifetime: an object made with `new` belongs to its references, starts without
// one, and is deleted by the release that drops the last. An object with
// automatic storage must be a CLocalTextAnalysis.
class CTextAnalysis : public IDWriteTextAnalysisSource1 {
public:
    // Of the reading direction only the lowest bit counts.
    CTextAnalysis(const WCHAR* text, std::uint32_t textLength, const WCHAR* localeName,
                  IDWriteNumberSubstitution* pNumberSubstitution, std::uint32_t readingDirection,
                  std::uint32_t secondaryDirection);
    CTextAnalysis(const CTextAnalysis&) = delete;
    CTextAnalysis& operator=(const CTextAnalysis&) = delete;

    // Knows the two interfaces of text analysis sources, and deliberately not
    // IUnknown.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTextAtPosition(UINT32 textPosition, const WCHAR** textString,
                                                UINT32* textLength) override;
    HRESULT STDMETHODCALLTYPE GetTextBeforePosition(UINT32 textPosition, const WCHAR** textString,
                                                    UINT32* textLength) override;
    DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetParagraphReadingDirection() override;
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 textPosition, UINT32* textLength, const WCHAR** localeName) override;
    HRESULT STDMETHODCALLTYPE GetNumberSubstitution(UINT32 textPosition, UINT32* textLength,
                                                    IDWriteNumberSubstitution** numberSubstitution) override;
    // Where no run record covers the position, the rest of the text has the
    // paragraph's direction.
    HRESULT STDMETHODCALLTYPE GetVerticalGlyphOrientation(UINT32 textPosition, UINT32* textLength,
                                                          DWRITE_VERTICAL_GLYPH_ORIENTATION* glyphOrientation,
                                                          UINT8* bidiLevel) override;

    // Stands behind the interface's operations, whose slots it leaves alone.
    virtual ~CTextAnalysis() = default;

protected:
    ULONG dropReference();

private:
    std::uint32_t m_textLength;
    const WCHAR* m_text;
    const WCHAR* m_localeName;
    IDWriteNumberSubstitution* m_pNumberSubstitution;
    std::uint32_t m_readingDirection;
    [[maybe_unused]] std::uint32_t m_secondaryDirection;
    [[maybe_unused]] std::uint32_t m_reserved = 0;
    std::uint32_t m_currentRunIndex = 0;

protected:
    std::vector<SAnalysisRun> m_runs;

private:
    std::atomic<std::uint32_t> m_refCount = 0;
};

// A text analysis source with automatic storage, for the length of one call into
// the platform. It counts references as its base does but leaves its end to the
// scope it stands in: the count starts at 0, so a platform that takes a reference
// and drops it again reaches 0, and must not delete what was never allocated.
//
// A release by the platform can thus never end it, on any platform; in turn, no
// platform may keep it beyond the call it was passed to.
class CLocalTextAnalysis final : public CTextAnalysis {
public:
    using CTextAnalysis::CTextAnalysis;

    ULONG STDMETHODCALLTYPE Release() override { return dropReference(); }
};

} // namespace fonts

#include "TextAnalysis.h"

#include <cstddef>

namespace fonts {

namespace {

bool contains(const SAnalysisRun& run, UINT32 textPosition) {
    return textPosition >= run.textStart && textPosition - run.textStart < run.textLength;
}

} // namespace

CTextAnalysis::CTextAnalysis(const WCHAR* text, std::uint32_t textLength, const WCHAR* localeName,
                             IDWriteNumberSubstitution* pNumberSubstitution, std::uint32_t readingDirection,
                             std::uint32_t secondaryDirection)
    : m_textLength(textLength), m_text(text), m_localeName(localeName), m_pNumberSubstitution(pNumberSubstitution),
      m_readingDirection(readingDirection), m_secondaryDirection(secondaryDirection) {}

HRESULT STDMETHODCALLTYPE CTextAnalysis::QueryInterface(REFIID riid, void** ppv) {
    *ppv = nullptr;
    if (riid != __uuidof(IDWriteTextAnalysisSource1) && riid != __uuidof(IDWriteTextAnalysisSource))
        return E_NOINTERFACE;
    *ppv = this;
    AddRef();
    return S_OK;
}

ULONG STDMETHODCALLTYPE CTextAnalysis::AddRef() {
    return ++m_refCount;
}

ULONG CTextAnalysis::dropReference() {
    return --m_refCount;
}

ULONG STDMETHODCALLTYPE CTextAnalysis::Release() {
    const ULONG count = dropReference();
    if (count == 0)
        delete this;
    return count;
}

HRESULT STDMETHODCALLTYPE CTextAnalysis::GetTextAtPosition(UINT32 textPosition, const WCHAR** textString,
                                                           UINT32* textLength) {
    const bool inside = textPosition < m_textLength;
    *textString = inside ? m_text + textPosition : nullptr;
    *textLength = inside ? m_textLength - textPosition : 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CTextAnalysis::GetTextBeforePosition(UINT32 textPosition, const WCHAR** textString,
                                                               UINT32* textLength) {
    const bool inside = textPosition != 0 && textPosition <= m_textLength;
    *textString = inside ? m_text : nullptr;
    *textLength = inside ? textPosition : 0;
    return S_OK;
}

DWRITE_READING_DIRECTION STDMETHODCALLTYPE CTextAnalysis::GetParagraphReadingDirection() {
    return static_cast<DWRITE_READING_DIRECTION>(m_readingDirection & 1u);
}

HRESULT STDMETHODCALLTYPE CTextAnalysis::GetLocaleName(UINT32 textPosition, UINT32* textLength,
                                                       const WCHAR** localeName) {
    *localeName = m_localeName;
    *textLength = m_textLength - textPosition;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CTextAnalysis::GetNumberSubstitution(UINT32 textPosition, UINT32* textLength,
                                                               IDWriteNumberSubstitution** numberSubstitution) {
    if (m_pNumberSubstitution)
        m_pNumberSubstitution->AddRef();
    *numberSubstitution = m_pNumberSubstitution;
    *textLength = m_textLength - textPosition;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CTextAnalysis::GetVerticalGlyphOrientation(
    UINT32 textPosition, UINT32* textLength, DWRITE_VERTICAL_GLYPH_ORIENTATION* glyphOrientation, UINT8* bidiLevel) {
    *glyphOrientation = DWRITE_VERTICAL_GLYPH_ORIENTATION_DEFAULT;

    if (m_currentRunIndex >= m_runs.size() || !contains(m_runs[m_currentRunIndex], textPosition)) {
        m_currentRunIndex = 0;
        while (m_currentRunIndex < m_runs.size() && !contains(m_runs[m_currentRunIndex], textPosition))
            ++m_currentRunIndex;
    }
    if (m_currentRunIndex == m_runs.size()) {
        *bidiLevel = static_cast<UINT8>(m_readingDirection & 1u);
        *textLength = textPosition < m_textLength ? m_textLength - textPosition : 0;
        return S_OK;
    }

    const SAnalysisRun* last = &m_runs[m_currentRunIndex];
    *bidiLevel = last->bidiLevel;
    while (last->nextRunIndex != 0 && last->nextRunIndex < m_runs.size() &&
           m_runs[last->nextRunIndex].bidiLevel == *bidiLevel)
        last = &m_runs[last->nextRunIndex];
    *textLength = last->textStart + last->textLength - textPosition;
    return S_OK;
}

} // namespace fonts

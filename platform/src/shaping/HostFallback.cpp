#include "shaping/HostFallback.h"

#include <algorithm>

#include "fonts/FontFace.h"

namespace platform {

CFontFace* HostFallback::knownFace(IDWriteFont& font) {
    if (m_lastFont.get() == &font) {
        return m_lastFace;
    }
    m_lastFont = &font;
    m_lastFace = nullptr;
    IDWriteFontFace* made = nullptr;
    if (SUCCEEDED(font.CreateFontFace(&made)) && made != nullptr) {
        const Reference<IDWriteFontFace> face(made, false);
        m_lastFace = CFontFace::ownFace(made).get();
        // The system's faces stay anyway.
        if (m_lastFace != nullptr && m_lastFace->life() != nullptr &&
            std::find(m_held.begin(), m_held.end(), face) == m_held.end()) {
            m_held.push_back(face);
        }
    }
    return m_lastFace;
}

HostFallback::Answer HostFallback::ask(UINT32 position, UINT32 length, const RunStyle& style) {
    Answer answer;
    UINT32 mapped = 0;
    IDWriteFont* named = nullptr;
    FLOAT scale = 1.0F;
    const HRESULT result =
        m_fallback.MapCharacters(this, position, length, style.collection.get(), textOf(style.family).c_str(),
                                 style.weight, style.style, style.stretch, &mapped, &named, &scale);
    const Reference<IDWriteFont> font(SUCCEEDED(result) ? named : nullptr, false);
    answer.length = FAILED(result) ? length : std::clamp(mapped, 1U, length);
    if (font) {
        answer.face = knownFace(*font);
        answer.scale = scale;
    }
    return answer;
}

HRESULT HostFallback::QueryInterface(REFIID riid, void** object) {
    const bool isKnown = riid == __uuidof(IUnknown) || riid == __uuidof(IDWriteTextAnalysisSource);
    *object = isKnown ? static_cast<IDWriteTextAnalysisSource*>(this) : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
}

HRESULT HostFallback::GetTextAtPosition(UINT32 position, const WCHAR** text, UINT32* length) {
    const bool isWithin = position < m_text.size();
    *text = isWithin ? m_text.wide() + position : nullptr;
    *length = isWithin ? m_text.size() - position : 0;
    return S_OK;
}

HRESULT HostFallback::GetTextBeforePosition(UINT32 position, const WCHAR** text, UINT32* length) {
    const bool isWithin = position > 0 && position <= m_text.size();
    *text = isWithin ? m_text.wide() : nullptr;
    *length = isWithin ? position : 0;
    return S_OK;
}

HRESULT HostFallback::GetLocaleName(UINT32 position, UINT32* length, const WCHAR** locale) {
    DWRITE_TEXT_RANGE range{};
    *locale = textOf(m_properties.at(position, &range).locale).c_str();
    *length = range.startPosition + range.length - position;
    return S_OK;
}

HRESULT HostFallback::GetNumberSubstitution(UINT32 position, UINT32* length, IDWriteNumberSubstitution** substitution) {
    *length = position < m_text.size() ? m_text.size() - position : 0;
    *substitution = nullptr;
    return S_OK;
}

} // namespace platform

#pragma once

#include <string>

#include <FontEngine/IFontEngine.h>

namespace fonts {

// An engine's fonts for text of one language. The engine itself cuts text into families without knowing a language, and
// some characters, Han above all, look different from language to language.
class CLocaleFonts final : public IFontEngine {
public:
    // Both are borrowed.
    CLocaleFonts(IFontEngine& engine, const std::wstring& locale) : m_engine(engine), m_locale(locale) {}

    IFont* getFont(const std::wstring& fontFamily, Weight weight, Style style) override {
        return m_engine.getFont(fontFamily, weight, style);
    }
    IFont* getFallbackFont() override { return m_engine.getFallbackFont(); }
    std::vector<render::SRichTextToken> splitTokenByFallbackFonts(const render::SRichTextToken& originToken) override;

private:
    IFontEngine& m_engine;
    const std::wstring& m_locale;
};

} // namespace fonts

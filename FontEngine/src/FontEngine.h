#pragma once

#include <dwrite_2.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <FontEngine/IFontEngine.h>
#include <oslayer/com_ptr.h>

namespace fonts {

// What a font is remembered under. A lookup makes a key over the caller's name,
// an entry one that owns its name.
template <typename Name>
struct SBasicFontKey {
    Style style;
    Weight weight;
    Name fontFamily;
};

using SFontKey = SBasicFontKey<std::wstring>;
using SFontKeyView = SBasicFontKey<std::wstring_view>;

// By name, unit by unit, then weight, then style. (Units lie below 0x10000, so
// it does not matter whether wchar_t has a sign.)
struct SFontKeyLess {
    using is_transparent = void;

    template <typename Left, typename Right>
    bool operator()(const SBasicFontKey<Left>& left, const SBasicFontKey<Right>& right) const {
        if (const int order = left.fontFamily.compare(right.fontFamily); order != 0)
            return order < 0;
        if (left.weight != right.weight)
            return left.weight < right.weight;
        return left.style < right.style;
    }
};

class CFontEngine : public IFontEngine {
public:
    explicit CFontEngine(const std::wstring& fallbackFontName);

    IFont* getFont(const std::wstring& fontFamily, Weight weight, Style style) override;
    IFont* getFallbackFont() override;
    std::vector<render::SRichTextToken> splitTokenByFallbackFonts(const render::SRichTextToken& originToken) override;

private:
    oslayer::com_ptr<IDWriteFont> scanCollection(const std::wstring& fontFamily, Weight weight, Style style);

    // An empty pointer remembers that nothing was found.
    std::map<SFontKey, std::unique_ptr<IFont>, SFontKeyLess> m_fontCache;
    oslayer::com_ptr<IDWriteFactory> m_pDWriteFactory;
    oslayer::com_ptr<IDWriteFontCollection> m_pFontCollection;
    std::wstring m_fallbackGDIFontName;
    std::unique_ptr<IFont> m_pFallbackFont;
};

} // namespace fonts

#pragma once

#include <string>
#include <string_view>

#include <oslayer/com_ptr.h>

#include "fallback/FallbackMapper.h"
#include "fonts/Font.h"
#include "fonts/FontCollection.h"

namespace platform {

/// The first name of a font's family; "(none)" for no font.
inline std::wstring familyName(IDWriteFont* font) {
    if (font == nullptr) {
        return L"(none)";
    }
    oslayer::com_ptr<IDWriteFontFamily> family;
    font->GetFontFamily(&family);
    oslayer::com_ptr<IDWriteLocalizedStrings> names;
    family->GetFamilyNames(&names);
    wchar_t name[256] = {};
    names->GetString(0, name, 256);
    return name;
}

/// A question to the mapper of the system's fonts.
struct Question {
    std::u16string text;
    const wchar_t* family = L"Liberation Sans";
    std::wstring locale = L"";
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;

    Mapping at(std::size_t position = 0, std::size_t length = std::u16string::npos) const {
        CFontFamily* const base = family != nullptr ? CFontCollection::system().findFamily(family) : nullptr;
        return FallbackMapper::system().map(text, position, length, locale, base, weight, style,
                                            DWRITE_FONT_STRETCH_NORMAL);
    }

    /// All stretches in order, as "family:length family:length ".
    std::wstring stretches() const {
        std::wstring result;
        for (std::size_t position = 0; position < text.size();) {
            const Mapping mapping = at(position);
            if (mapping.length == 0) {
                return result + L"stuck";
            }
            result += familyName(mapping.font) + L":" + std::to_wstring(mapping.length) + L" ";
            position += mapping.length;
        }
        return result;
    }
};

} // namespace platform

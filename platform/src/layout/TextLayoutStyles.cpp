// The operations of a layout on ranges of its text.

#include "layout/TextLayout.h"

#include <cwchar>
#include <utility>

#include "fonts/FontCollection.h"

namespace platform {

namespace {

/// Locale names are limited, terminator included.
constexpr std::size_t maxLocaleSize = 85;

} // namespace

template <class Value>
HRESULT CTextLayout::setStyle(DWRITE_TEXT_RANGE range, Value RunStyle::*member, const Value& value,
                              TextPipeline::Stage undone) {
    return guarded([&] {
        const HRESULT result = m_pipeline.properties().set(range, member, value);
        if (result == S_OK) {
            m_pipeline.redo(undone);
        }
        return FAILED(result) ? result : S_OK;
    });
}

HRESULT CTextLayout::SetFontCollection(IDWriteFontCollection* collection, DWRITE_TEXT_RANGE range) {
    if (!CFontCollection::isUsable(collection)) {
        return E_INVALIDARG;
    }
    return setStyle(range, &RunStyle::collection, Reference<IDWriteFontCollection>(collection),
                    TextPipeline::Stage::Shaping);
}

HRESULT CTextLayout::SetFontFamilyName(const WCHAR* name, DWRITE_TEXT_RANGE range) {
    if (name == nullptr || !isUtf16(name)) {
        return E_INVALIDARG;
    }
    return guarded([&] { return setStyle(range, &RunStyle::family, makeName(name), TextPipeline::Stage::Shaping); });
}

HRESULT CTextLayout::SetFontWeight(DWRITE_FONT_WEIGHT weight, DWRITE_TEXT_RANGE range) {
    return isValidWeight(weight) ? setStyle(range, &RunStyle::weight, weight, TextPipeline::Stage::Shaping)
                                 : E_INVALIDARG;
}

HRESULT CTextLayout::SetFontStyle(DWRITE_FONT_STYLE style, DWRITE_TEXT_RANGE range) {
    return isValidStyle(style) ? setStyle(range, &RunStyle::style, style, TextPipeline::Stage::Shaping) : E_INVALIDARG;
}

HRESULT CTextLayout::SetFontStretch(DWRITE_FONT_STRETCH stretch, DWRITE_TEXT_RANGE range) {
    return isValidStretch(stretch) ? setStyle(range, &RunStyle::stretch, stretch, TextPipeline::Stage::Shaping)
                                   : E_INVALIDARG;
}

HRESULT CTextLayout::SetFontSize(FLOAT size, DWRITE_TEXT_RANGE range) {
    return isValidSize(size) ? setStyle(range, &RunStyle::size, size, TextPipeline::Stage::Shaping) : E_INVALIDARG;
}

HRESULT CTextLayout::SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::underline, underline != FALSE, TextPipeline::Stage::Done);
}

HRESULT CTextLayout::SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::strikethrough, strikethrough != FALSE, TextPipeline::Stage::Done);
}

HRESULT CTextLayout::SetDrawingEffect(IUnknown* effect, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::effect, Reference<IUnknown>(effect), TextPipeline::Stage::Done);
}

HRESULT CTextLayout::SetInlineObject(IDWriteInlineObject* object, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::inlineObject, Reference<IDWriteInlineObject>(object),
                    TextPipeline::Stage::Shaping);
}

HRESULT CTextLayout::SetTypography(IDWriteTypography* typography, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::typography, Reference<IDWriteTypography>(typography),
                    TextPipeline::Stage::Shaping);
}

HRESULT CTextLayout::SetLocaleName(const WCHAR* name, DWRITE_TEXT_RANGE range) {
    if (name == nullptr || std::wcslen(name) >= maxLocaleSize || !isUtf16(name)) {
        return E_INVALIDARG;
    }
    return guarded(
        [&] { return setStyle(range, &RunStyle::locale, makeLocaleName(name), TextPipeline::Stage::Shaping); });
}

HRESULT CTextLayout::SetPairKerning(BOOL isKerned, DWRITE_TEXT_RANGE range) {
    return setStyle(range, &RunStyle::isKerned, isKerned != FALSE, TextPipeline::Stage::Shaping);
}

HRESULT CTextLayout::SetCharacterSpacing(FLOAT leading, FLOAT trailing, FLOAT minimumAdvance, DWRITE_TEXT_RANGE range) {
    if (minimumAdvance < 0.0F) {
        return E_INVALIDARG;
    }
    return setStyle(range, &RunStyle::spacing, CharacterSpacing{leading, trailing, minimumAdvance},
                    TextPipeline::Stage::Shaping);
}

HRESULT CTextLayout::GetFontCollection(UINT32 position, IDWriteFontCollection** collection, DWRITE_TEXT_RANGE* range) {
    handOutOrNull(m_pipeline.properties().at(position, range).collection, collection);
    return S_OK;
}

HRESULT CTextLayout::GetFontFamilyNameLength(UINT32 position, UINT32* length, DWRITE_TEXT_RANGE* range) {
    *length = static_cast<UINT32>(textOf(m_pipeline.properties().at(position, range).family).size());
    return S_OK;
}

HRESULT CTextLayout::GetFontFamilyName(UINT32 position, WCHAR* name, UINT32 size, DWRITE_TEXT_RANGE* range) {
    return copyName(textOf(m_pipeline.properties().at(position, range).family), name, size);
}

HRESULT CTextLayout::GetFontWeight(UINT32 position, DWRITE_FONT_WEIGHT* weight, DWRITE_TEXT_RANGE* range) {
    *weight = m_pipeline.properties().at(position, range).weight;
    return S_OK;
}

HRESULT CTextLayout::GetFontStyle(UINT32 position, DWRITE_FONT_STYLE* style, DWRITE_TEXT_RANGE* range) {
    *style = m_pipeline.properties().at(position, range).style;
    return S_OK;
}

HRESULT CTextLayout::GetFontStretch(UINT32 position, DWRITE_FONT_STRETCH* stretch, DWRITE_TEXT_RANGE* range) {
    *stretch = m_pipeline.properties().at(position, range).stretch;
    return S_OK;
}

HRESULT CTextLayout::GetFontSize(UINT32 position, FLOAT* size, DWRITE_TEXT_RANGE* range) {
    *size = m_pipeline.properties().at(position, range).size;
    return S_OK;
}

HRESULT CTextLayout::GetUnderline(UINT32 position, BOOL* underline, DWRITE_TEXT_RANGE* range) {
    *underline = m_pipeline.properties().at(position, range).underline ? TRUE : FALSE;
    return S_OK;
}

HRESULT CTextLayout::GetStrikethrough(UINT32 position, BOOL* strikethrough, DWRITE_TEXT_RANGE* range) {
    *strikethrough = m_pipeline.properties().at(position, range).strikethrough ? TRUE : FALSE;
    return S_OK;
}

HRESULT CTextLayout::GetDrawingEffect(UINT32 position, IUnknown** effect, DWRITE_TEXT_RANGE* range) {
    handOutOrNull(m_pipeline.properties().at(position, range).effect, effect);
    return S_OK;
}

HRESULT CTextLayout::GetInlineObject(UINT32 position, IDWriteInlineObject** object, DWRITE_TEXT_RANGE* range) {
    handOutOrNull(m_pipeline.properties().at(position, range).inlineObject, object);
    return S_OK;
}

HRESULT CTextLayout::GetTypography(UINT32 position, IDWriteTypography** typography, DWRITE_TEXT_RANGE* range) {
    handOutOrNull(m_pipeline.properties().at(position, range).typography, typography);
    return S_OK;
}

HRESULT CTextLayout::GetLocaleNameLength(UINT32 position, UINT32* length, DWRITE_TEXT_RANGE* range) {
    *length = static_cast<UINT32>(textOf(m_pipeline.properties().at(position, range).locale).size());
    return S_OK;
}

HRESULT CTextLayout::GetLocaleName(UINT32 position, WCHAR* name, UINT32 size, DWRITE_TEXT_RANGE* range) {
    if (name == nullptr) {
        return E_INVALIDARG;
    }
    return copyName(textOf(m_pipeline.properties().at(position, range).locale), name, size);
}

HRESULT CTextLayout::GetPairKerning(UINT32 position, BOOL* isKerned, DWRITE_TEXT_RANGE* range) {
    *isKerned = m_pipeline.properties().at(position, range).isKerned ? TRUE : FALSE;
    return S_OK;
}

HRESULT CTextLayout::GetCharacterSpacing(UINT32 position, FLOAT* leading, FLOAT* trailing, FLOAT* minimumAdvance,
                                         DWRITE_TEXT_RANGE* range) {
    const CharacterSpacing& spacing = m_pipeline.properties().at(position, range).spacing;
    *leading = spacing.leading;
    *trailing = spacing.trailing;
    *minimumAdvance = spacing.minimumAdvance;
    return S_OK;
}

} // namespace platform

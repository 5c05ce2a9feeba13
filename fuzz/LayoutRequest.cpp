#include "LayoutRequest.h"

#include <cmath>
#include <iterator>

#include "OddObject.h"

namespace fuzz {

namespace {

using oslayer::com_ptr;

constexpr const wchar_t* families[] = {L"DejaVu Sans",      L"Liberation Serif", L"Noto Naskh Arabic",
                                       L"Noto Sans CJK JP", L"not installed",    L"Noto Sans Devanagari"};
constexpr const wchar_t* locales[] = {L"en-us", L"ar", L"ja", L"", L"tr", L"zz-Zzzz-ZZ"};
constexpr float sizes[] = {10.0F, 1.0F, 24.0F, 1e-3F, 5000.0F};

IDWriteFactory& factory() {
    static IDWriteFactory* const factory = [] {
        IUnknown* created = nullptr;
        require(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &created) == S_OK);
        return static_cast<IDWriteFactory*>(created);
    }();
    return *factory;
}

/// Widths near those of a few words, and some that are none of a box.
float takeWidth(Input& input) {
    const std::size_t kind = input.below(8);
    if (kind == 0) {
        return 0.0F;
    }
    return kind == 1 ? 1e6F : static_cast<float>(input.take<std::uint16_t>() % 4000) * 0.125F;
}

com_ptr<IDWriteTypography> takeTypography(Input& input) {
    static constexpr DWRITE_FONT_FEATURE_TAG tags[] = {
        DWRITE_FONT_FEATURE_TAG_KERNING,     DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES,
        DWRITE_FONT_FEATURE_TAG_FRACTIONS,   DWRITE_FONT_FEATURE_TAG_SMALL_CAPITALS,
        DWRITE_FONT_FEATURE_TAG_SUPERSCRIPT, DWRITE_FONT_FEATURE_TAG_CONTEXTUAL_ALTERNATES};
    com_ptr<IDWriteTypography> typography;
    require(factory().CreateTypography(&typography) == S_OK);
    for (std::size_t left = input.below(4); left > 0; --left) {
        const std::size_t tag = input.below(std::size(tags) + 1);
        typography->AddFontFeature({tag < std::size(tags) ? tags[tag] : input.take<DWRITE_FONT_FEATURE_TAG>(),
                                    static_cast<UINT32>(input.below(3))});
    }
    return typography;
}

} // namespace

LayoutRequest::LayoutRequest(Input& input) : m_width(takeWidth(input)), m_otherWidth(takeWidth(input)) {
    takeText(input);
    takeParagraph(input);
    for (std::size_t left = input.below(9); left > 0; --left) {
        takeRange(input);
    }
    for (std::size_t left = input.below(5); left > 0; --left) {
        takeSpacing(input);
    }
}

/// Letters of several scripts, spaces, breaks and marks; any units now and then.
void LayoutRequest::takeText(Input& input) {
    static constexpr std::wstring_view pieces[] = {
        L"a",
        L"word",
        L" ",
        L"\t",
        L"\r\n",
        L"\n",
        L"AVA",
        L"office",
        L"-",
        L"\x00AD",
        L"(",
        L"\x05D0",
        L"\x0628",
        L"\x0301",
        L"\x6F22",
        L"\x3002",
        L"\xD83D\xDE00",
        L"\x200D",
        L"\x00A0",
        L"12",
        L"\x0915\x094D\x0937\x093F",
        L"\x202E",
        L"\x2028",
        L"\x0E01\x0E34",
        L"\"",
    };
    for (std::size_t left = input.below(48); left > 0 && !input.atEnd(); --left) {
        const std::size_t piece = input.below(std::size(pieces) + 2);
        if (piece < std::size(pieces)) {
            m_text += pieces[piece];
        } else {
            m_text += static_cast<wchar_t>(input.take<std::uint16_t>());
        }
    }
}

void LayoutRequest::takeParagraph(Input& input) {
    const auto wrapping = static_cast<DWRITE_WORD_WRAPPING>(input.below(5));
    const auto alignment = static_cast<DWRITE_TEXT_ALIGNMENT>(input.below(4));
    const auto direction = static_cast<DWRITE_READING_DIRECTION>(input.below(2));
    const DWRITE_TRIMMING trimming{static_cast<DWRITE_TRIMMING_GRANULARITY>(input.below(3)),
                                   input.below(4) == 0 ? U'/' : 0U, static_cast<UINT32>(input.below(3))};
    const com_ptr<IDWriteInlineObject> sign = input.below(2) == 0 ? OddObject::take(input) : nullptr;
    const auto spacing = static_cast<DWRITE_LINE_SPACING_METHOD>(input.below(3));
    const float tabStop = static_cast<float>(1 + input.below(100));
    m_settings.push_back([=](IDWriteTextLayout& layout) {
        layout.SetWordWrapping(wrapping);
        layout.SetTextAlignment(alignment);
        layout.SetReadingDirection(direction);
        layout.SetTrimming(&trimming, sign);
        layout.SetLineSpacing(spacing, 12.0F, 9.0F);
        layout.SetIncrementalTabStop(tabStop);
    });
}

DWRITE_TEXT_RANGE LayoutRequest::range(Input& input) const {
    const auto start = static_cast<UINT32>(input.below(m_text.size() + 2));
    return {start, static_cast<UINT32>(input.below(12))};
}

void LayoutRequest::takeRange(Input& input) {
    const DWRITE_TEXT_RANGE where = range(input);
    const auto add = [this](Setting setting) { m_settings.push_back(std::move(setting)); };
    switch (input.below(11)) {
    case 0:
        return add([=, family = families[input.below(std::size(families))]](IDWriteTextLayout& layout) {
            layout.SetFontFamilyName(family, where);
        });
    case 1:
        return add([=, weight = 100 + 100 * input.below(9)](IDWriteTextLayout& layout) {
            layout.SetFontWeight(static_cast<DWRITE_FONT_WEIGHT>(weight), where);
        });
    case 2:
        return add([=, style = input.below(3)](IDWriteTextLayout& layout) {
            layout.SetFontStyle(static_cast<DWRITE_FONT_STYLE>(style), where);
        });
    case 3:
        return add([=, stretch = 1 + input.below(9)](IDWriteTextLayout& layout) {
            layout.SetFontStretch(static_cast<DWRITE_FONT_STRETCH>(stretch), where);
        });
    case 4:
        return add([=, size = sizes[input.below(std::size(sizes))]](IDWriteTextLayout& layout) {
            layout.SetFontSize(size, where);
        });
    case 5:
        return add([=, locale = locales[input.below(std::size(locales))]](IDWriteTextLayout& layout) {
            layout.SetLocaleName(locale, where);
        });
    case 6:
        return add([=, on = input.below(2) == 0](IDWriteTextLayout& layout) {
            layout.SetUnderline(on ? TRUE : FALSE, where);
            layout.SetDrawingEffect(on ? &factory() : nullptr, where);
        });
    case 7:
        return add([=, on = input.below(2) == 0](IDWriteTextLayout& layout) {
            layout.SetStrikethrough(on ? TRUE : FALSE, where);
        });
    case 8:
        return add([=, typography = takeTypography(input)](IDWriteTextLayout& layout) {
            layout.SetTypography(typography, where);
        });
    default: {
        const com_ptr<IDWriteInlineObject> object = OddObject::take(input);
        return add([=](IDWriteTextLayout& layout) { layout.SetInlineObject(object, where); });
    }
    }
}

/// Room between clusters, and kerning.
void LayoutRequest::takeSpacing(Input& input) {
    static constexpr float rooms[] = {0.0F, 1.0F, -1.0F, 30.0F, -30.0F, 1e30F, -INFINITY, NAN};
    const DWRITE_TEXT_RANGE where = range(input);
    const float leading = rooms[input.below(std::size(rooms))];
    const float trailing = rooms[input.below(std::size(rooms))];
    const float minimum = rooms[input.below(std::size(rooms))];
    const BOOL isKerned = input.below(2) == 0 ? TRUE : FALSE;
    m_settings.push_back([=](IDWriteTextLayout& layout) {
        com_ptr<IDWriteTextLayout1> later;
        later.queryFrom(&layout);
        later->SetCharacterSpacing(leading, trailing, minimum, where);
        later->SetPairKerning(isKerned, where);
    });
}

com_ptr<IDWriteTextLayout> LayoutRequest::create(float width) const {
    com_ptr<IDWriteTextFormat> format;
    require(factory().CreateTextFormat(families[0], nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                       DWRITE_FONT_STRETCH_NORMAL, sizes[0], locales[0], &format) == S_OK);
    com_ptr<IDWriteTextLayout> layout;
    if (factory().CreateTextLayout(m_text.c_str(), static_cast<UINT32>(m_text.size()), format, width, 100.0F,
                                   &layout) != S_OK) {
        return {};
    }
    for (const Setting& set : m_settings) {
        set(*layout);
    }
    return layout;
}

} // namespace fuzz

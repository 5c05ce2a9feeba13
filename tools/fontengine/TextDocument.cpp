#include "TextDocument.h"

#include <dxf/CodePage.h>

namespace tool {

namespace {

constexpr std::uint32_t black = 0xFF000000U;

std::uint32_t colorOf(const dxf::PlacedText& placed) {
    if (placed.trueColor) {
        return 0xFF000000U | *placed.trueColor;
    }
    return mtext::argbFromColorIndex(placed.color, black, black);
}

render::eRichTextParagraphAlignment alignmentOf(const dxf::TextEntity& text) {
    using Alignment = render::eRichTextParagraphAlignment;
    if (!text.isParagraphText()) {
        return Alignment::Left;
    }
    switch ((static_cast<int>(text.attachment) - 1) % 3) {
    case 1:
        return Alignment::Center;
    case 2:
        return Alignment::Right;
    default:
        return Alignment::Left;
    }
}

bool isShapeFont(const dxf::TextStyle& style) {
    return style.family.empty() && (style.fontFile.empty() || dxf::foldName(style.fontFile).ends_with(L".shx"));
}

std::wstring requestedFont(const dxf::TextStyle& style) {
    if (!style.family.empty()) {
        return style.family;
    }
    return style.fontFile.empty() ? L"txt" : style.fontFile;
}

} // namespace

TextDocument makeTextDocument(const dxf::Drawing& drawing, const dxf::PlacedText& placed, FontMap& fontMap,
                              std::optional<std::uint32_t> color) {
    const dxf::TextEntity& text = *placed.text;
    const dxf::TextStyle& style = drawing.styleOf(text);

    mtext::Defaults defaults;
    defaults.fontFamily = fontMap.familyFor(requestedFont(style));
    defaults.capSize = static_cast<float>(text.height);
    defaults.color = color ? *color : colorOf(placed);
    defaults.foreground = black;
    defaults.bold = style.bold;
    defaults.italic = style.italic;
    defaults.alignment = alignmentOf(text);
    defaults.verticalAlignment = render::eRichTextParagraphVerticalAlignment::Top;
    defaults.noWrap = !text.isParagraphText() || text.width <= 0.0;
    // Tab stops of a new text stand every four cap heights.
    defaults.tabStopWidth = 4.0F * defaults.capSize;
    defaults.codePage = drawing.codePage;
    defaults.decodeBytes = dxf::decodeBytes;
    defaults.shapeFont = isShapeFont(style);
    defaults.resolveFont = [&fontMap](const mtext::FontRequest& request) {
        std::wstring family = fontMap.familyFor(request.name);
        fontMap.coverBigFont(request.bigFont, family);
        return family;
    };
    fontMap.coverBigFont(style.bigFontFile, defaults.fontFamily);

    mtext::Result result =
        text.isParagraphText() ? mtext::parse(text.content, defaults) : mtext::parseText(text.content, defaults);
    return {std::move(result.document), std::move(result.formats), std::move(result.diagnostics)};
}

} // namespace tool

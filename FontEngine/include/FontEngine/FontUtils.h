#pragma once

#include <dwrite.h>

#include <string>

#include <Common/FontEngineExport.h>
#include <FontEngine/FontStyles.h>
#include <FontEngine/IFontEngine.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

namespace fonts {

// The three conversions below give the first value for false, the second for true.
FONTENGINE_API Weight weightFromBool(bool bold);
FONTENGINE_API Style styleFromBool(bool italic);
FONTENGINE_API Underline underlineFromBool(bool underline);

// Bold for a weight of exactly 700; semi-bold and black count as normal.
FONTENGINE_API Weight weightFromDWriteWeight(const DWRITE_FONT_WEIGHT& weight);

// Italic for true italics only; an oblique counts as normal.
FONTENGINE_API Style styleFromDWriteStyle(const DWRITE_FONT_STYLE& style);

// The font of the given family that bears `fontFamily` as a Win32 family name,
// in whatever language, compared exactly: the one of that weight and style with
// normal stretch; else, for an italic, an oblique of that weight (the last one);
// else the first that bears the name; else empty.
//
// The family is borrowed and must not be null. Throws oslayer::EOsLayerError
// when the platform fails. Any thread may call it.
FONTENGINE_API oslayer::com_ptr<IDWriteFont>
findDWriteFontInFamily(IDWriteFontFamily* pFontFamily, const std::wstring& fontFamily, Weight weight, Style style);

// Sets one run's font on a range of a layout (UTF-16 units): the family of the
// font that the engine finds, the em size that gives its capitals the height
// `capitalSize` (in the layout's units), and weight, style and underline as the
// flags say; the stretch is normal.
//
// Layout and engine are borrowed; neither may be null. Throws
// common::ECheckViolation for a capital size that is not above 0 (nothing is set
// then) and oslayer::EOsLayerError when the platform fails (some of the
// properties may be set then). One thread at a time per layout and per engine.
FONTENGINE_API void setGdiFontToTextLayout(IDWriteTextLayout* pTextLayout, const render::TextRange& textRange,
                                           IFontEngine* fontEngine, const std::wstring& fontFamily, double capitalSize,
                                           render::SRichTextFontStyle fontStyle);

// The platform's value for an alignment of the text model; leading for `Default`
// and for values that the model does not know.
FONTENGINE_API DWRITE_TEXT_ALIGNMENT getTextAlignment(const render::eRichTextParagraphAlignment& alignment);

// The platform's value for a vertical alignment of the text model; near (the
// top) for `Default` and for values that the model does not know.
FONTENGINE_API DWRITE_PARAGRAPH_ALIGNMENT
getParagraphAlignment(const render::eRichTextParagraphVerticalAlignment& alignment);

} // namespace fonts

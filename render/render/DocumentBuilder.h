#pragma once

#include <Common/Export.h>
#include <render/RichTextDocument.h>

#include <string>
#include <vector>

namespace render {

/// An opaque black run (colour 0xFF000000) that is not underlined.
[[nodiscard]] FONTENGINE_API SRichTextToken makeToken(std::wstring text, std::wstring fontFamily, float fontCapSize,
                                                      bool bold, bool italic);

/// A document of one paragraph (left, top, wrapping) of one such run, an empty text included. All identifiers are nil;
/// the tab stop width is the default.
[[nodiscard]] FONTENGINE_API CRichTextDocument makeSingleParagraphDocument(std::wstring text, std::wstring fontFamily,
                                                                           float fontCapSize, bool bold, bool italic);

/// A document of these paragraphs from top to bottom. The keys that order them are made from their places, the same in
/// every run (a host that keeps documents gives its paragraphs identifiers of its own; `id` stays as it is).
[[nodiscard]] FONTENGINE_API CRichTextDocument makeDocument(std::vector<CRichTextParagraph> paragraphs);

} // namespace render

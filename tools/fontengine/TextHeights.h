#pragma once

#include <FontEngine/ParagraphLayout.h>
#include <render/RichTextDocument.h>

namespace tool {

// Whether the paragraph's text has different heights.
bool differInHeight(const render::CRichTextParagraph& paragraph);

// The height of the tallest capitals in the first line of the paragraph's layout; 0 without text.
double firstCapSize(const render::CRichTextParagraph& paragraph, const fonts::CParagraphLayout& layout);

// Whether a line of the paragraph's layout, which was made with its runs, holds ink of text of different heights.
bool mixesHeights(const render::CRichTextParagraph& paragraph, const fonts::CParagraphLayout& layout);

} // namespace tool

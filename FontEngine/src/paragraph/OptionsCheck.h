#pragma once

#include <FontEngine/ParagraphLayoutOptions.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Throws std::invalid_argument for options that nothing can be made of: which one, and what it may be.
void checkOptions(const SParagraphLayoutOptions& options, const render::CRichTextParagraph& paragraph);

} // namespace fonts

#pragma once

#include <memory>

#include <FontEngine/IFontEngine.h>
#include <FontEngine/ParagraphLayoutOptions.h>
#include <render/RichTextDocument.h>

#include "LayoutData.h"

namespace fonts {

// Lays a paragraph out, in this order: the platform's layout with all options, its lines and clusters, what is drawn of
// them, the spacing of lines. Options must have been checked.
std::shared_ptr<const SParagraphLayoutData> buildParagraph(const render::CRichTextParagraph& paragraph,
                                                           IFontEngine& engine, const SParagraphLayoutOptions& options);

} // namespace fonts

#pragma once

#include <vector>

#include <FontEngine/ParagraphLayoutOptions.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

#include "LayoutData.h"

namespace fonts {

// Moves lines, with all that stands in them and with their ink, to the distances that `spacing` asks for. The first
// line stays; where `alignment` is at the bottom or the middle, that of the box does.
void stackLines(SParagraphLayoutData& data, std::vector<MbRect>& lineInk, const SLineSpacing& spacing,
                render::eRichTextParagraphVerticalAlignment alignment);

} // namespace fonts

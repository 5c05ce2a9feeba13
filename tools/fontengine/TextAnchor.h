#pragma once

#include <dxf/TextEntity.h>
#include <geometry/MbCartPoint.h>

#include "TextLayout.h"

namespace tool {

// What of a text laid out between x = 0 and `width` stands at its insertion point.
MbCartPoint anchorOf(const dxf::TextEntity& text, const render::CRichTextDocument& document, const LaidOutText& laidOut,
                     double width);

} // namespace tool

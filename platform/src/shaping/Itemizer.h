#pragma once

#include <vector>

#include "format/RangeProperties.h"
#include "shaping/ShapedText.h"
#include "unicode/TextBuffer.h"

namespace platform {

/// Cuts a layout's text into items: stretches of one font (after fallback), size, script, bidi level, locale,
/// kerning and typography. Newlines, tabs, control characters and inline objects are items of their own. The clusters
/// of the items are left open.
///
/// `settings` say who chooses fonts and which way lines are read. The faces of the items live as long as the
/// collections that `properties` hold and as `heldFaces`.
///
/// Returns false, with `items` empty, if no font is installed at all.
bool itemize(const TextBuffer& text, const RangeProperties& properties, const ParagraphSettings& settings,
             std::vector<TextItem>& items, std::vector<Reference<IDWriteFontFace>>& heldFaces);

/// The font that text of `style` starts with: the family's, or where there is no such family, what stands in for it.
/// Null if no font is installed at all.
CFontFace* baseFace(const RunStyle& style);

} // namespace platform

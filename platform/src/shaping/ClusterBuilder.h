#pragma once

#include <string_view>

#include "format/RangeProperties.h"
#include "shaping/ShapedText.h"

namespace platform {

/// Shapes the items of `shaped` and fills in their clusters and glyphs, which are all made anew, spaced as `styles`
/// say.
void buildClusters(std::u16string_view text, const RangeProperties& styles, ShapedText& shaped);

/// Appends a part of `item`, [start, end) of the text, shaped as a run of its own, as an item with its clusters to
/// `shaped`, which must have the clusters' end mark already (or none at all, when it is empty).
void appendPart(std::u16string_view text, const RangeProperties& styles, const TextItem& item, UINT32 start, UINT32 end,
                ShapedText& shaped);

} // namespace platform

#pragma once

#include <string_view>
#include <vector>

#include "shaping/ShapedText.h"

namespace platform {

/// Where lines may end, in text positions: element p says whether a line may start at p. Start and end of the text
/// count as opportunities. It depends on the text and its inline objects alone.
using BreakOpportunities = std::vector<bool>;

/// Finds the opportunities of `text` by UAX 14 and by the habits of the items' languages, by dictionary where words are
/// written without spaces. Around the inline objects among `items` their own conditions hold, and where they have none,
/// those of the text that they replace.
BreakOpportunities findBreakOpportunities(std::u16string_view text, const std::vector<TextItem>& items);

} // namespace platform

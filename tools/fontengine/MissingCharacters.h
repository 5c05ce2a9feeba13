#pragma once

#include <dwrite.h>

#include <vector>

namespace tool {

// Appends the characters of a run that its font draws as missing ones.
void appendMissing(std::vector<char32_t>& missing, const DWRITE_GLYPH_RUN& run,
                   const DWRITE_GLYPH_RUN_DESCRIPTION& description);

} // namespace tool

#pragma once

#include <dxf/Drawing.h>

namespace dxf {

/// Decides what the drawing's bytes mean, and turns the widened bytes in all its strings into text. Called once, when
/// everything has been read. Throws Error (TextLengthLimit) for a text of more characters.
void decodeStrings(Drawing& drawing, std::size_t textLength);

} // namespace dxf

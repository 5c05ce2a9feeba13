#pragma once

#include <dxf/Drawing.h>

namespace dxf {

/// Decides what the drawing's bytes mean, and turns the widened bytes in all its strings into text. Called once, when
/// everything has been read.
void decodeStrings(Drawing& drawing);

} // namespace dxf

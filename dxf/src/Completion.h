#pragma once

#include <dxf/Drawing.h>

namespace dxf {

/// Gives missing values their defaults, resolves names and handles, and builds the indexes. Called once, after the
/// strings have been decoded.
void completeDrawing(Drawing& drawing);

} // namespace dxf

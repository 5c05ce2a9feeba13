#pragma once

namespace dxf {

/// The name by which ICU knows a code page; null when the page is unknown.
const char* converterName(unsigned codePage);

} // namespace dxf

#pragma once

#include <string>

namespace tool {

// Where a drawing's picture goes: the path asked for, or, where several drawings
// are drawn, a name beside it that ends with the drawing's.
std::string picturePath(const std::string& asked, const std::string& drawing, bool several);

// Throws InputError (Usage) for a name whose ending is that of another kind of
// file than ".png" or ".svg", say.
void requireEnding(const std::string& option, const std::string& path, const std::string& ending);

} // namespace tool

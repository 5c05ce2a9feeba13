#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A path on disk as text in UTF-16 units. Bytes that are no UTF-8 become lone surrogates, 0xDC00 added to each.
std::wstring widePath(std::string_view path);

/// The path that is told so; nothing for text that is no path: empty, or with another lone surrogate.
std::optional<std::string> localPath(std::wstring_view path);

} // namespace platform

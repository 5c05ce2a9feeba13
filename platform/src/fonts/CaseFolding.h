#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The form in which names that differ only in letter case are equal.
std::wstring foldCase(std::wstring_view text);

} // namespace platform

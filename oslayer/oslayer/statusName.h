#pragma once

#include <Common/FontEngineExport.h>

#include <cstdint>

namespace oslayer {

/// The symbolic name of a platform status code ("E_INVALIDARG"), "Unknown" if it has none. Names of one value are
/// joined by " & "; a Win32 error has its name both as the bare number and as an HRESULT (0x8007xxxx). The text is
/// constant and never freed. Allocates nothing, locks nothing.
[[nodiscard]] FONTENGINE_API const wchar_t* statusName(std::uint32_t code) noexcept;

} // namespace oslayer

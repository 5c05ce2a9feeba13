#pragma once

#include <dwrite.h>

#include "format/ParagraphSettings.h"

namespace platform {

/// All that a text format says, and that a layout starts with.
struct FormatSettings {
    ParagraphSettings paragraph;
    FontSettings font;
};

/// Our own formats answer QueryInterface for this with a pointer to their `const FormatSettings`, without adding a
/// reference. No caller outside this library knows it.
inline constexpr GUID formatSettingsId = detail::guid("7b1c2f0a-93d4-4f5e-a6be-2d8f41c05e97");

/// Copies what `format` says: at once from one of our own formats, through its getters from another implementation's.
HRESULT readFormat(IDWriteTextFormat& format, FormatSettings& settings);

} // namespace platform

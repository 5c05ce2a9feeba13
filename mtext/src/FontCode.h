#pragma once

#include <string_view>

#include "SpecialCharacters.h"
#include <mtext/MText.h>

namespace mtext {

/// Reads what stands between `\f` or `\F` and the semicolon: a name, a second
/// font file after a comma, and traits after bars. Traits that are not named
/// are off; unknown ones are ignored, as is a bar with nothing behind it.
/// `upperCase` says that the code was `\F`, which is meant for font files.
FontRequest readFontCode(std::wstring_view argument, bool upperCase, const CharacterContext& context);

} // namespace mtext

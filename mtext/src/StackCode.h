#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "SpecialCharacters.h"

namespace mtext {

/// A fraction or tolerance, written so that it can be read in one line.
struct StackedText {
    std::wstring text;        ///< `1/2`, `+0.1/-0.2`; a lone part of a `^` stack stands alone.
    std::size_t length = 0;   ///< Units that the argument takes, the semicolon included.
    bool terminated = false;  ///< False: no semicolon stood before whatever ended it.
    bool undecodable = false; ///< A character of a code page could not be read.
};

/// Reads what follows `\S`, up to a semicolon or to what cannot stand in a
/// stack: a brace, a line break or another code. The first of `/`, `#` and `^`
/// that no backslash precedes parts it; a blank behind `^` belongs to the sign.
StackedText readStackCode(std::wstring_view text, const CharacterContext& context);

} // namespace mtext

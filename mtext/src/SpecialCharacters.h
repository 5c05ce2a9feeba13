#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <mtext/Diagnostics.h>
#include <mtext/MText.h>

namespace mtext {

/// What the characters of a code page depend on at a place in the content.
struct CharacterContext {
    const ByteDecoder& decodeBytes;
    unsigned codePage;
    bool shapeFont;
};

enum class SpecialAction : std::uint8_t { Text, ToggleUnderline, ToggleOverline, ToggleStrikethrough };

/// A character, or a switch, that the content writes in several ASCII units.
struct SpecialCharacter {
    std::size_t length = 0; ///< Units of the content that it takes.
    std::wstring text;      ///< What it stands for; may be a control character.
    SpecialAction action = SpecialAction::Text;
    std::optional<DiagnosticCode> problem;
};

/// Reads `%%` codes, caret codes, `\U+XXXX` and `\M+nXXXX` at the beginning of
/// `text`, which is not empty. Nothing if there stands none, or a cut one: then
/// its first unit is an ordinary character.
std::optional<SpecialCharacter> readSpecialCharacter(std::wstring_view text, const CharacterContext& context);

/// The code page of a Windows character set such as 204 for Cyrillic. Nothing
/// for sets that stand for the system's own code page or for symbols.
std::optional<unsigned> codePageFromCharset(unsigned charset);

/// `text` with its `\U+XXXX` and `\M+nXXXX` replaced by what they stand for.
std::wstring replaceWrittenCharacters(std::wstring_view text, const CharacterContext& context);

} // namespace mtext

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <dwrite.h>
#include <hb.h>

namespace platform {

/// A stretch of text in one script, up to where the next one starts.
struct ScriptRun {
    UINT32 end = 0;
    hb_script_t script = HB_SCRIPT_COMMON;
};

/// Cuts `text` where the script changes. Characters of no script of their own go with what precedes them, at the start
/// of a paragraph with what follows. No grapheme is cut: its first character that has a script decides. Text without
/// any script is HB_SCRIPT_COMMON. The runs replace what `runs` holds.
void findScriptRuns(std::u16string_view text, std::vector<ScriptRun>& runs);

/// Whether `unit` ends a line: CR, LF, VT, FF, NEL and the two Unicode separators.
constexpr bool isNewline(char16_t unit) noexcept {
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// Whether the unit at `position` is the CR of a CR LF, which together end one line.
constexpr bool startsNewlinePair(std::u16string_view text, std::size_t position) noexcept {
    return text[position] == u'\r' && position + 1 < text.size() && text[position + 1] == u'\n';
}

} // namespace platform

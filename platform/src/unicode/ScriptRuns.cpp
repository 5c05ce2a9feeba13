#include "unicode/ScriptRuns.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf16.h>

#include "unicode/Graphemes.h"

namespace platform {

namespace {

/// HarfBuzz's names of ICU's scripts, by ICU's numbers. Scripts that shaping knows nothing of are HB_SCRIPT_COMMON.
const std::vector<hb_script_t>& shapingScripts() {
    static const std::vector<hb_script_t> scripts = [] {
        std::vector<hb_script_t> table(static_cast<std::size_t>(u_getIntPropertyMaxValue(UCHAR_SCRIPT)) + 1);
        for (std::size_t i = 0; i < table.size(); ++i) {
            const hb_script_t script = hb_script_from_string(uscript_getShortName(static_cast<UScriptCode>(i)), -1);
            const bool isReal = script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
            table[i] = isReal ? script : HB_SCRIPT_COMMON;
        }
        return table;
    }();
    return scripts;
}

hb_script_t scriptOf(UChar32 character) {
    if (character < 0x80) {
        const UChar32 lower = character | 0x20;
        return lower >= 'a' && lower <= 'z' ? HB_SCRIPT_LATIN : HB_SCRIPT_COMMON;
    }
    UErrorCode error = U_ZERO_ERROR;
    return shapingScripts()[static_cast<std::size_t>(uscript_getScript(character, &error))];
}

} // namespace

void findScriptRuns(std::u16string_view text, std::vector<ScriptRun>& runs) {
    runs.clear();
    hb_script_t current = HB_SCRIPT_COMMON;
    Graphemes graphemes(text);
    /// Where the last character ended that has a script.
    std::size_t scriptEnd = 0;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        const hb_script_t script = scriptOf(character);
        if (script != HB_SCRIPT_COMMON && current == HB_SCRIPT_COMMON) {
            current = script;
        } else if (script != HB_SCRIPT_COMMON && script != current) {
            std::size_t grapheme = start;
            while (grapheme > scriptEnd && !graphemes.isBoundary(grapheme)) {
                --grapheme;
            }
            // A mark of another script is still drawn over its base, by the base's font. It takes a base of no script,
            // like the dotted circle of a primer, with it.
            if (graphemes.isBoundary(grapheme)) {
                runs.push_back({static_cast<UINT32>(grapheme), current});
                current = script;
            }
        }
        if (script != HB_SCRIPT_COMMON) {
            scriptEnd = position;
        }
        if (isNewline(text[start])) {
            // What follows is another paragraph's business.
            runs.push_back({static_cast<UINT32>(position), current});
            current = HB_SCRIPT_COMMON;
        }
    }
    if (runs.empty() || runs.back().end < text.size()) {
        runs.push_back({static_cast<UINT32>(text.size()), current});
    }
}

} // namespace platform

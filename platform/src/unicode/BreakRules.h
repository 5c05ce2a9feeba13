#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// Rules of where text may be broken, as ICU's compiler writes them. They are those of one version of Unicode, whatever
/// the ICU at hand knows; their sources stand in platform/data.
struct BreakRules {
    const std::uint8_t* bytes;
    std::size_t size;
};

/// Lines of text in any language but those below.
extern const BreakRules lineRules;
/// Lines of Japanese and Korean text, and of Chinese text.
extern const BreakRules japaneseLineRules;
extern const BreakRules chineseLineRules;
extern const BreakRules graphemeRules;

} // namespace platform

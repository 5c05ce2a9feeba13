#include "unicode/BidiLevels.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>

#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "unicode/BidiBrackets.h"

namespace platform {

namespace {

/// Whether a character can lift text off level 0 of a line that reads from left to right.
bool canChangeLevel(UChar32 character) {
    constexpr UChar32 firstCandidate = 0x590;
    if (character < firstCandidate) {
        return false;
    }
    switch (u_charDirection(character)) {
    case U_RIGHT_TO_LEFT:
    case U_RIGHT_TO_LEFT_ARABIC:
    case U_ARABIC_NUMBER:
    case U_LEFT_TO_RIGHT_EMBEDDING:
    case U_LEFT_TO_RIGHT_OVERRIDE:
    case U_RIGHT_TO_LEFT_EMBEDDING:
    case U_RIGHT_TO_LEFT_OVERRIDE:
    case U_LEFT_TO_RIGHT_ISOLATE:
    case U_RIGHT_TO_LEFT_ISOLATE:
    case U_FIRST_STRONG_ISOLATE:
        return true;
    default:
        return false;
    }
}

bool staysAtLevelZero(std::u16string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        if (canChangeLevel(character)) {
            return false;
        }
    }
    return true;
}

struct CloseBidi {
    void operator()(UBiDi* bidi) const noexcept { ubidi_close(bidi); }
};

UBiDi& threadsBidi() {
    thread_local const std::unique_ptr<UBiDi, CloseBidi> bidi(ubidi_open());
    if (!bidi) {
        throw std::bad_alloc();
    }
    return *bidi;
}

void check(UErrorCode error) {
    if (U_FAILURE(error)) {
        throw std::runtime_error(u_errorName(error));
    }
}

/// The levels as ICU finds them, valid until the thread asks again.
const UBiDiLevel* askForLevels(std::u16string_view text, std::uint8_t base) {
    UBiDi& bidi = threadsBidi();
    UErrorCode error = U_ZERO_ERROR;
    ubidi_setPara(&bidi, text.data(), static_cast<std::int32_t>(text.size()), base, nullptr, &error);
    const UBiDiLevel* levels = ubidi_getLevels(&bidi, &error);
    check(error);
    return levels;
}

/// Text that reads one way throughout is not looked at closely by ICU: it says the paragraph's level for everything,
/// embeddings and Arabic digits too. A paragraph of both directions behind the text makes it do its work.
const UBiDiLevel* askForExactLevels(std::u16string_view text, std::uint8_t base) {
    const UBiDiLevel* levels = askForLevels(text, base);
    if (ubidi_getDirection(&threadsBidi()) == UBIDI_MIXED) {
        return levels;
    }
    std::u16string extended(text);
    extended += u"\u2029a\u05D0";
    return askForLevels(extended, base);
}

} // namespace

bool findBidiLevels(std::u16string_view text, bool rightToLeft, std::vector<std::uint8_t>& levels) {
    levels.clear();
    const std::uint8_t base = paragraphLevel(rightToLeft);
    if (!rightToLeft && staysAtLevelZero(text)) {
        return false;
    }
    if (text.empty()) {
        return false;
    }
    const std::u16string substituted = withoutUnpairedBrackets(text);
    const UBiDiLevel* found = askForExactLevels(substituted.empty() ? text : substituted, base);
    if (std::all_of(found, found + text.size(), [base](UBiDiLevel level) { return level == base; })) {
        return false;
    }
    levels.assign(found, found + text.size());
    return true;
}

void findVisualOrder(const std::vector<std::uint8_t>& levels, std::vector<std::int32_t>& order) {
    order.resize(levels.size());
    if (std::all_of(levels.begin(), levels.end(), [](std::uint8_t level) { return level == 0; })) {
        std::iota(order.begin(), order.end(), 0);
        return;
    }
    ubidi_reorderVisual(levels.data(), static_cast<std::int32_t>(levels.size()), order.data());
}

} // namespace platform

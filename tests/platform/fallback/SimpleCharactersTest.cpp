#include "fallback/SimpleCharacters.h"

#include <string>

#include <gtest/gtest.h>
#include <unicode/ubrk.h>

namespace platform {
namespace {

TEST(SimpleCharacters, areLettersIdeographsAndSpaces) {
    for (const char16_t c :
         {u'a', u' ', u'7', u'\u00e9', u'\u0416', u'\u05d0', u'\u0915', u'\u0e01', u'\u3042', u'\u6f22', u'\uac00'}) {
        EXPECT_TRUE(SimpleCharacters::contains(c)) << static_cast<int>(c);
    }
}

TEST(SimpleCharacters, areNoMarksControlsJoinersPictographsOrSurrogates) {
    for (const char16_t c :
         {u'\n', u'\t', u'\u0301', u'\u093f', u'\u200d', u'\u200e', u'\ufe0f', u'\u1100', u'\u1161', u'\u263a',
          u'\u0600', u'\u00ad', static_cast<char16_t>(0xD83D), static_cast<char16_t>(0xDC00)}) {
        EXPECT_FALSE(SimpleCharacters::contains(c)) << static_cast<int>(c);
    }
}

// The promise: between two of them there is always a boundary, by ICU's own rules.
TEST(SimpleCharacters, areAlwaysGraphemesOfTheirOwn) {
    std::u16string text;
    for (unsigned c = 0; c < 0x10000; ++c) {
        if (SimpleCharacters::contains(static_cast<char16_t>(c))) {
            text.push_back(static_cast<char16_t>(c));
        }
    }
    ASSERT_GT(text.size(), 50000U);
    std::u16string backwards(text.rbegin(), text.rend());
    for (const std::u16string& order : {text, backwards}) {
        UErrorCode error = U_ZERO_ERROR;
        UBreakIterator* const breaks =
            ubrk_open(UBRK_CHARACTER, "", order.data(), static_cast<std::int32_t>(order.size()), &error);
        ASSERT_TRUE(U_SUCCESS(error));
        std::size_t count = 0;
        for (ubrk_first(breaks); ubrk_next(breaks) != UBRK_DONE;) {
            ++count;
        }
        ubrk_close(breaks);
        EXPECT_EQ(count, order.size());
    }
}

} // namespace
} // namespace platform

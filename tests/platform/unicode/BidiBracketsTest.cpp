#include "unicode/BidiBrackets.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

// Unicode's bidi algorithm has room for 63 open brackets (UAX 9, BD16). BidiCharacterTest.txt tries 63 and 64 nested
// pairs, which UnicodeBidiTest reads; here is what else can fill that room.

namespace platform {
namespace {

std::u16string repeated(std::u16string_view part, std::size_t count) {
    std::u16string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

/// How many brackets are left of `text`.
std::size_t bracketsLeft(std::u16string_view text) {
    const std::u16string substituted = withoutUnpairedBrackets(text);
    std::size_t left = 0;
    for (const char16_t unit : substituted.empty() ? text : std::u16string_view(substituted)) {
        left += std::u16string_view(u"()[]〈〉").find(unit) != std::u16string_view::npos ? 1U : 0U;
    }
    return left;
}

TEST(BidiBrackets, PairsThatAreClosedAgainMayBeAnyNumber) {
    EXPECT_EQ(u"", withoutUnpairedBrackets(repeated(u"א(a[1])", 1000)));
}

TEST(BidiBrackets, SixtyThreeMayBeOpenAtOnce) {
    EXPECT_EQ(u"", withoutUnpairedBrackets(repeated(u"(", 63) + repeated(u")", 63)));
    EXPECT_EQ(63U, bracketsLeft(repeated(u"(", 64) + repeated(u")", 64)));
    EXPECT_EQ(2 * 63U, bracketsLeft(repeated(u"(]", 1000)));
}

TEST(BidiBrackets, WhatClosesAnOuterBracketClosesTheInnerOnesToo) {
    EXPECT_EQ(u"", withoutUnpairedBrackets(repeated(u"([[[[)", 1000)));
}

TEST(BidiBrackets, AngleBracketsOfBothKindsCloseEachOther) {
    EXPECT_EQ(u"", withoutUnpairedBrackets(repeated(u"\u2329\u3009\u3008\u232A", 1000)));
}

TEST(BidiBrackets, EveryParagraphStartsAnew) {
    const std::u16string paragraph = repeated(u"(", 40);
    EXPECT_EQ(63U, bracketsLeft(paragraph + paragraph));
    EXPECT_EQ(80U, bracketsLeft(paragraph + u"\u2029" + paragraph));
}

TEST(BidiBrackets, IsolatesHaveTheirOwn) {
    // Nothing within an isolate closes what is open around it.
    EXPECT_EQ(63U, bracketsLeft(repeated(u"(\u2067)\u2069", 32) + repeated(u"(", 100)) - 32);
    // What is left open in it counts on.
    EXPECT_EQ(63U, bracketsLeft(repeated(u"\u2067(\u2069", 100)));
    EXPECT_EQ(u"", withoutUnpairedBrackets(repeated(u"\u2067()\u2069", 100)));
}

} // namespace
} // namespace platform

#include <FontEngine/IFontEngine.h>
#include <FontEngine/ITextMetrics.h>

#include <gtest/gtest.h>

#include <Common/Utf.h>
#include <oslayer/Errors.h>

#include "FallbackRuns.h"

using render::SRichTextToken;

using namespace fallbackruns;

TEST(FallbackOnRealFonts, TextOfOneFontStaysOneRun) {
    for (const wchar_t* text : {L"Wall 1:50", L"Стена", L"Τοίχος", L"a"}) {
        const auto runs = split(text);
        ASSERT_EQ(runs.size(), 1u) << common::utf8FromWide(text);
        EXPECT_EQ(runs[0].text, text);
        EXPECT_EQ(runs[0].fontFamily, L"Liberation Sans");
    }
}

TEST(FallbackOnRealFonts, MixedScriptsAreCutIntoRunsOfFontsThatHaveThem) {
    // Latin and Cyrillic, Han, Thai, Devanagari, Georgian, and Latin again.
    const std::wstring text = L"Wall Стена \x58C1\x4F53 \x0E1C\x0E19\x0E31\x0E07 "
                              L"\x0926\x0940\x0935\x093E\x0930 \x10D9\x10D4\x10D3\x10D4\x10DA\x10D8 end";
    const auto runs = split(text);
    EXPECT_GE(runs.size(), 6u);
    EXPECT_EQ(joined(runs), text);
    EXPECT_EQ(runs.front().fontFamily, L"Liberation Sans");
    EXPECT_TRUE(runs.front().text.starts_with(L"Wall Стена"));
    EXPECT_EQ(runs.back().fontFamily, L"Liberation Sans");
    EXPECT_TRUE(runs.back().text.ends_with(L"end"));
    for (const SRichTextToken& run : runs)
        for (const UINT32 codePoint : codePointsOf(run.text))
            EXPECT_TRUE(familyHas(run.fontFamily, codePoint))
                << common::utf8FromWide(run.fontFamily) << " for " << codePoint;
}

TEST(FallbackOnRealFonts, SurrogatePairOfAKnownCharacterIsNotSplit) {
    // Double-struck A and B.
    EXPECT_EQ(split(L"\xD835\xDD38\xD835\xDD39", L"Noto Sans Math").size(), 1u);
}

TEST(FallbackOnRealFonts, BaseAndItsMarksStayInOneRun) {
    // Hebrew with points.
    EXPECT_EQ(split(L"\x05E9\x05C1\x05B8\x05DC", L"Noto Sans Hebrew").size(), 1u);
}

TEST(FallbackOnRealFonts, CharactersThatNoFontHasComeOneTokenPerUnitInTheFamilyAskedFor) {
    // A code point that will never be a character's, one of a private plane as a
    // surrogate pair.
    ASSERT_FALSE(familyHas(L"DejaVu Sans", 0x10FFFD));
    const auto runs = split(L"a\x0378\xDBFF\xDFFDz");
    ASSERT_EQ(runs.size(), 5u);
    EXPECT_EQ(runs[0].text, L"a");
    EXPECT_EQ(runs[1].text, L"\x0378");
    EXPECT_EQ(runs[2].text, L"\xDBFF");
    EXPECT_EQ(runs[3].text, L"\xDFFD");
    EXPECT_EQ(runs[4].text, L"z");
    for (const SRichTextToken& run : runs)
        EXPECT_EQ(run.fontFamily, L"Liberation Sans");
}

TEST(FallbackOnRealFonts, LoneSurrogatesAreTextLikeAnyOther) {
    EXPECT_EQ(joined(split(L"a\xD83Dz")), L"a\xD83Dz");
    EXPECT_EQ(joined(split(L"\xDE00")), L"\xDE00");
}

TEST(FallbackOnRealFonts, EmptyTextGivesNoRuns) {
    EXPECT_TRUE(split(L"").empty());
}

TEST(FallbackOnRealFonts, AttributesAreKept) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    SRichTextToken origin = render::makeToken(L"Wall \x58C1", L"Liberation Sans", 3.25f, {true, true, false});
    origin.color = 0x00FF00FFu;
    origin.fontStyle.underline = true;
    for (const SRichTextToken& run : engine->splitTokenByFallbackFonts(origin)) {
        EXPECT_EQ(run.fontCapSize, 3.25f);
        EXPECT_EQ(run.color, 0x00FF00FFu);
        EXPECT_EQ(run.fontStyle, origin.fontStyle);
    }
}

TEST(FallbackOnRealFonts, WhatThePlatformRefusesIsAnErrorThatNamesIt) {
    const auto refused = [](const std::wstring& text, float capSize) {
        try {
            split(text, L"Liberation Sans", capSize);
        } catch (const oslayer::EOsLayerError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(refused(L"a", 0.0f), "E_INVALIDARG");
    EXPECT_EQ(refused(L"a", -1.0f), "E_INVALIDARG");
}

// Fonts that our platform finds for text that its family lacks, where others go by tables of names and may find none:
// see docs/parity.md.

#include <gtest/gtest.h>

#include <FontEngine/FontEngine.h>

#include "FallbackRuns.h"

using namespace fallbackruns;
using render::SRichTextToken;

TEST(OurPlatformFallback, UnknownFamilyIsDrawnByFontsThatExist) {
    const auto runs = split(L"Wall \x58C1", L"No Such Family");
    ASSERT_EQ(joined(runs), L"Wall \x58C1");
    for (const SRichTextToken& run : runs) {
        EXPECT_NE(run.fontFamily, L"No Such Family");
        for (const UINT32 codePoint : codePointsOf(run.text))
            EXPECT_TRUE(familyHas(run.fontFamily, codePoint));
    }
}

TEST(OurPlatformFallback, TheEnginesFallbackFontAnswersForAnUnknownFamilyThatTextIsSetOtherwiseIn) {
    const auto engine = fonts::createFontEngine(L"Liberation Mono");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const auto ascentOf = [&](const wchar_t* family) {
        return metrics->getFontMetrics(family, 10, false, false).ascent;
    };
    EXPECT_EQ(ascentOf(L"No Such Family"), ascentOf(L"Liberation Mono"));
    EXPECT_NE(ascentOf(L"DejaVu Sans"), ascentOf(L"Liberation Mono"));
    EXPECT_EQ(metrics->getTextGeometryRect(L"Wall", L"No Such Family", 10, {}, {}),
              metrics->getTextGeometryRect(L"Wall", L"DejaVu Sans", 10, {}, {}));
}

TEST(OurPlatformFallback, AFamilyThatNoFaceBearsAsAWin32NameIsSizedByTheFallbackFontsCapitals) {
    // Its name table has "Noto Sans OldPersian" as name 1 and "Noto Sans Old Persian" as name 16.
    const std::wstring oldPersian = L"\xD800\xDFA0";
    const auto widthWith = [&](const wchar_t* fallbackFont) {
        const auto engine = fonts::createFontEngine(fallbackFont);
        const auto metrics = fonts::createTextMetricsService(engine.get());
        EXPECT_EQ(engine->getFont(L"Noto Sans Old Persian", fonts::Weight::Normal, fonts::Style::Normal),
                  engine->getFallbackFont());
        const MbRect ink = metrics->getTextGeometryRect(oldPersian, L"Noto Sans Old Persian", 10, {}, {});
        return (ink.xmax - ink.xmin) / engine->getFallbackFont()->capitalLetterSizeToFontSize(10);
    };
    const double ofMono = widthWith(L"Liberation Mono");
    EXPECT_GT(ofMono, 0.0);
    EXPECT_NEAR(widthWith(L"DejaVu Serif"), ofMono, 1e-4 * ofMono);
}

TEST(OurPlatformFallback, SurrogatePairOfAKnownCharacterIsNotSplit) {
    // A mathematical bold A, which Liberation Sans lacks.
    const std::wstring text = L"a\xD835\xDC00z";
    const auto runs = split(text);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[1].text, L"\xD835\xDC00");
    EXPECT_TRUE(familyHas(runs[1].fontFamily, 0x1D400));
}

TEST(OurPlatformFallback, BaseAndItsMarksStayInOneRun) {
    // Hebrew with points, and a Latin letter with a mark that its font lacks.
    const std::wstring pointed = L"\x05E9\x05C1\x05B8\x05DC";
    ASSERT_EQ(split(pointed, L"No Such Family").size(), 1u);
    const std::wstring marked = L"abe\x1DC4z";
    const auto runs = split(marked);
    EXPECT_EQ(joined(runs), marked);
    for (const SRichTextToken& run : runs)
        EXPECT_NE(run.text.front(), L'\x1DC4');
}

TEST(OurPlatformFallback, TextInAWin32FamilyIsSetInTheFamilyItsFacesBelongTo) {
    // No family has the narrow faces' own name, and tokens ask for the usual width.
    const auto runs = split(L"Wall \x58C1", L"Liberation Sans Narrow");
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].text, L"Wall ");
    EXPECT_EQ(runs[0].fontFamily, L"Liberation Sans");
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const auto widthIn = [&metrics](const wchar_t* family) {
        const MbRect box = metrics->getTextRect(L"Wall 1:50", family, 2.5f, {});
        return box.xmax - box.xmin;
    };
    EXPECT_EQ(widthIn(L"Liberation Sans Narrow"), widthIn(L"Liberation Sans"));
    EXPECT_NE(widthIn(L"No Such Family"), widthIn(L"Liberation Sans"));
}

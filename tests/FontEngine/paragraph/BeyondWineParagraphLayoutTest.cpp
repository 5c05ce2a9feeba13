// Kerning, tracking and forced lines as DirectWrite documents them, which Wine does not do: it always kerns, spaces a
// run as its first character asks, breaks at no inline object, pairs Hebrew letters in the other direction, and chooses
// fallback fonts without the locale.

#include "ParagraphLayoutTesting.h"

namespace paragraph_tests {
namespace {

using BeyondWineParagraphLayout = ParagraphLayout;

TEST_F(BeyondWineParagraphLayout, LettersAreMovedTogetherUnlessKerningIsOff) {
    fonts::SRunFormat format;
    format.kerning = false;
    EXPECT_NEAR(2.0 * 1366.0 * unit, widthOf(lay(L"AV", formatted(format))), precision);
}

// Which cut of the pan-CJK font a reader of each language expects: tests/platform/fallback/data/languages.tsv.
TEST_F(BeyondWineParagraphLayout, TheLocaleSaysWhichFontsStandIn) {
    const auto familyFor = [this](const wchar_t* locale) {
        SParagraphLayoutOptions options;
        options.locale = locale;
        return lay(L"\u76F4\u9AA8", options).face(0).family;
    };
    EXPECT_EQ(L"Noto Sans CJK JP", familyFor(L"ja"));
    EXPECT_EQ(L"Noto Sans CJK SC", familyFor(L"zh-Hans"));
    EXPECT_EQ(L"Noto Sans CJK TC", familyFor(L"zh-Hant"));
}

TEST_F(BeyondWineParagraphLayout, TrackingOfOneTokenLeavesTheOthersAlone) {
    const auto paragraph = twoTokens(L"HH", L"HH");
    SParagraphLayoutOptions options;
    options.runFormats.resize(2);
    options.runFormats[1].tracking = 2.0;
    const auto plain = CParagraphLayout::make(paragraph, *engine);
    const auto tracked = CParagraphLayout::make(paragraph, *engine, options);
    EXPECT_NEAR(plain.glyphs()[2].origin.x, tracked.glyphs()[2].origin.x, precision);
    EXPECT_NEAR(plain.glyphs()[3].origin.x + 2.0, tracked.glyphs()[3].origin.x, precision);
}

TEST_F(BeyondWineParagraphLayout, WidthFactorAndTrackingOfOneTokenAddUp) {
    const auto paragraph = twoTokens(L"HH", L"HH");
    SParagraphLayoutOptions options;
    options.runFormats.resize(2);
    options.runFormats[1].widthFactor = 0.5;
    options.runFormats[1].tracking = 2.0;
    const auto plain = CParagraphLayout::make(paragraph, *engine);
    const auto stretched = CParagraphLayout::make(paragraph, *engine, options);
    const double letter = plain.glyphs()[1].origin.x;
    EXPECT_NEAR(2.0 * letter, stretched.glyphs()[2].origin.x, precision);
    EXPECT_NEAR(2.5 * letter + 2.0, stretched.glyphs()[3].origin.x, precision);
    EXPECT_NEAR(3.0 * letter + 4.0, widthOf(stretched), precision);
    EXPECT_DOUBLE_EQ(0.5, stretched.runs().back().widthFactor);
    // The outline of the last H is half as wide.
    EXPECT_NEAR((plain.runs()[1].ink.xmax - plain.glyphs()[3].origin.x) / 2.0,
                stretched.runs()[1].ink.xmax - stretched.glyphs()[3].origin.x, precision);
}

TEST_F(BeyondWineParagraphLayout, AnInlineBoxMayForceItsLine) {
    SParagraphLayoutOptions options;
    fonts::SInlineBox box;
    box.range = {1, 1};
    box.width = 5.0;
    box.before = fonts::EBreak::Forced;
    options.inlineBoxes = {box};
    const CParagraphLayout layout = lay(L"H?H", options);
    ASSERT_EQ(2U, layout.lines().size());
    EXPECT_EQ(1U, layout.inlineBoxes()[0].line);
}

// Hebrew alef, bet, gimel: drawn from right to left, in the box's right end where the paragraph reads so.
TEST_F(BeyondWineParagraphLayout, RightToLeftGlyphsStandWhereTheyAreDrawn) {
    SParagraphLayoutOptions options;
    options.direction = fonts::EReadingDirection::RightToLeft;
    options.maxWidth = 200.0;
    const CParagraphLayout layout = lay(L"\x05D0\x05D1\x05D2", options);
    ASSERT_EQ(1U, layout.runs().size());
    const fonts::SRun& run = layout.runs()[0];
    EXPECT_TRUE(run.isRightToLeft());
    EXPECT_NEAR(200.0, run.origin.x + run.width, 1e-3);
    const auto glyphs = layout.glyphs(run);
    ASSERT_EQ(3U, glyphs.size());
    EXPECT_NEAR(200.0 - glyphs[0].advance, glyphs[0].origin.x, 1e-3);
    EXPECT_GT(glyphs[0].origin.x, glyphs[1].origin.x);
    EXPECT_NEAR(run.origin.x, glyphs[2].origin.x, 1e-3);
    EXPECT_NEAR(200.0, layout.caret(0).x, 1e-3);
    EXPECT_NEAR(run.origin.x, layout.caret(3).x, 1e-3);
}

} // namespace
} // namespace paragraph_tests

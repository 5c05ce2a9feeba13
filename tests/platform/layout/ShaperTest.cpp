#include <string>

#include "fonts/FontFace.h"
#include "layout/LayoutTestSupport.h"
#include "layout/ScriptRuns.h"
#include "layout/Shaper.h"

namespace platform_test {
namespace {

TEST(Shaper, NeighboursOutsideTheRunDecideHowLettersJoin) {
    const std::u16string text = u"\u0628\u0628\u0628";
    platform::ShapeRequest request;
    request.text = text;
    request.face = &regularFace("Noto Sans Arabic");
    request.script = HB_SCRIPT_ARABIC;
    request.isRightToLeft = true;
    request.length = 3;
    platform::ShapedRun whole;
    platform::shape(request, whole);
    request.start = 1;
    request.length = 1;
    platform::ShapedRun middle;
    platform::shape(request, middle);
    ASSERT_FALSE(middle.empty());
    std::vector<unsigned> ofMiddle;
    for (const platform::ShapedGlyph& glyph : whole) {
        if (glyph.cluster == 1) {
            ofMiddle.push_back(glyph.glyph);
        }
    }
    std::vector<unsigned> alone;
    for (const platform::ShapedGlyph& glyph : middle) {
        alone.push_back(glyph.glyph);
    }
    EXPECT_EQ(ofMiddle, alone);
}

TEST(Shaper, TypographySwitchesFeatures) {
    const auto layout = makeLayout(u"office AVATAR");
    const float plain = metricsOf(*layout).width;
    IDWriteTypography* typography = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
    const Reference<IDWriteTypography> owned(typography, false);
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 0}));
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES, 0}));
    EXPECT_EQ(S_OK, layout->SetTypography(typography, {0, 0xFFFFFFFF}));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(13U, runs[0].glyphs.size());
    EXPECT_GT(metricsOf(*layout).width, plain);
}

TEST(ScriptRuns, CommonCharactersGoWithWhatPrecedesThem) {
    std::vector<platform::ScriptRun> runs;
    platform::findScriptRuns(u"1 ab, \u0430 2\n3 \u03B1", runs);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(6U, runs[0].end);
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[0].script);
    EXPECT_EQ(10U, runs[1].end);
    EXPECT_EQ(HB_SCRIPT_CYRILLIC, runs[1].script);
    EXPECT_EQ(HB_SCRIPT_GREEK, runs[2].script);
    platform::findScriptRuns(u"12:30", runs);
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(HB_SCRIPT_COMMON, runs[0].script);
    platform::findScriptRuns(u"a\uE000b\U0001D400", runs);
    EXPECT_EQ(1U, runs.size());
}

TEST(ScriptRuns, AMarkGivesItsScriptToABaseOfNone) {
    std::vector<platform::ScriptRun> runs;
    // The vowel i of Devanagari over a dotted circle and a no-break space.
    for (const char16_t* const text : {u"\u25CC\u093F", u"\u00A0\u093F", u"1 \u25CC\u093F"}) {
        platform::findScriptRuns(text, runs);
        ASSERT_EQ(1U, runs.size());
        EXPECT_EQ(HB_SCRIPT_DEVANAGARI, runs[0].script);
    }
    platform::findScriptRuns(u"ab \u25CC\u0301\u093F\u0E31 a\u093F", runs);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[0].script);
    EXPECT_EQ(3U, runs[0].end);
    EXPECT_EQ(HB_SCRIPT_DEVANAGARI, runs[1].script);
    // A second script within the grapheme, or over a base with a script, changes nothing.
    EXPECT_EQ(8U, runs[1].end);
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[2].script);
}

} // namespace
} // namespace platform_test

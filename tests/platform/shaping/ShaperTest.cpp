#include <string>

#include "fonts/FontFace.h"
#include "shaping/Shaper.h"
#include "support/LayoutTestSupport.h"

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

} // namespace
} // namespace platform_test

#include <thread>

#include "fonts/FontFace.h"
#include "support/LayoutTestSupport.h"

// The platform's own sign for trimmed text.

namespace platform_test {
namespace {

Reference<IDWriteInlineObject> signFor(const FormatOptions& options) {
    IDWriteInlineObject* sign = nullptr;
    EXPECT_EQ(S_OK, factory().CreateEllipsisTrimmingSign(makeFormat(options).get(), &sign));
    return {sign, false};
}

DWRITE_INLINE_OBJECT_METRICS metricsOf(IDWriteInlineObject& sign) {
    DWRITE_INLINE_OBJECT_METRICS metrics{1.0F, 1.0F, 1.0F, TRUE};
    EXPECT_EQ(S_OK, sign.GetMetrics(&metrics));
    return metrics;
}

TEST(EllipsisSign, NeedsAFormat) {
    Picture picture;
    IDWriteInlineObject* sign = &picture;
    EXPECT_EQ(E_INVALIDARG, factory().CreateEllipsisTrimmingSign(nullptr, &sign));
    EXPECT_EQ(nullptr, sign);
}

TEST(EllipsisSign, IsAsWideAsTheEllipsisOfTheFormatsFont) {
    for (const char* family : {"DejaVu Sans", "Liberation Sans"}) {
        const std::wstring name(family, family + std::char_traits<char>::length(family));
        const auto sign = signFor({.family = name, .size = 2048.0F});
        EXPECT_EQ(designWidth(family, u"\u2026"), metricsOf(*sign).width);
    }
}

TEST(EllipsisSign, HasNoHeightAndLeavesBreaksAsTheyAre) {
    const auto sign = signFor({});
    EXPECT_EQ(0.0F, metricsOf(*sign).height);
    EXPECT_EQ(0.0F, metricsOf(*sign).baseline);
    EXPECT_EQ(FALSE, metricsOf(*sign).supportsSideways);
    DWRITE_BREAK_CONDITION before = DWRITE_BREAK_CONDITION_MUST_BREAK;
    DWRITE_BREAK_CONDITION after = DWRITE_BREAK_CONDITION_MUST_BREAK;
    EXPECT_EQ(S_OK, sign->GetBreakConditions(&before, &after));
    EXPECT_EQ(DWRITE_BREAK_CONDITION_NEUTRAL, before);
    EXPECT_EQ(DWRITE_BREAK_CONDITION_NEUTRAL, after);
}

TEST(EllipsisSign, DrawsOneRunOnItsBaseline) {
    const auto sign = signFor({.locale = L"de-DE"});
    Effect effect;
    for (const BOOL isRightToLeft : {FALSE, TRUE}) {
        Recorder recorder;
        EXPECT_EQ(S_OK, sign->Draw(nullptr, &recorder, 10.5F, 20.25F, FALSE, isRightToLeft, &effect));
        ASSERT_EQ(1U, recorder.calls.size());
        const DrawnCall& run = recorder.calls[0];
        EXPECT_EQ(DrawnCall::GlyphRun, run.kind);
        EXPECT_EQ(10.5F, run.x);
        EXPECT_EQ(20.25F, run.y);
        EXPECT_EQ(L"\u2026", run.text);
        EXPECT_EQ(L"de-de", run.locale);
        EXPECT_EQ(20.0F, run.emSize);
        EXPECT_EQ(1U, run.glyphs.size());
        EXPECT_FLOAT_EQ(metricsOf(*sign).width, run.advance());
        EXPECT_EQ(&effect, run.effect);
        EXPECT_EQ(&regularFace("DejaVu Sans"), run.face);
    }
}

TEST(EllipsisSign, DrawsOnWhateverTheFormatsAlignmentAndSpacing) {
    const auto format = makeFormat();
    EXPECT_EQ(S_OK, format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
    EXPECT_EQ(S_OK, format->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_FAR));
    EXPECT_EQ(S_OK, format->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, 50.0F, 40.0F));
    IDWriteInlineObject* made = nullptr;
    ASSERT_EQ(S_OK, factory().CreateEllipsisTrimmingSign(format.get(), &made));
    const Reference<IDWriteInlineObject> sign(made, false);
    Recorder recorder;
    EXPECT_EQ(S_OK, sign->Draw(nullptr, &recorder, 3.0F, 4.0F, FALSE, FALSE, nullptr));
    ASSERT_EQ(1U, recorder.calls.size());
    EXPECT_EQ(3.0F, recorder.calls[0].x);
    EXPECT_EQ(4.0F, recorder.calls[0].y);
    EXPECT_EQ(nullptr, recorder.calls[0].effect);
}

TEST(EllipsisSign, StandsForTrimmedText) {
    const auto sign = signFor({});
    const float room = platform_test::metricsOf(*makeLayout(u"some w")).width + metricsOf(*sign).width + 0.5F;
    const auto layout = makeLayout(u"some words here", room, 0, {.wrapping = DWRITE_WORD_WRAPPING_NO_WRAP});
    const float height = platform_test::metricsOf(*layout).height;
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0};
    EXPECT_EQ(S_OK, layout->SetTrimming(&trimming, sign.get()));
    EXPECT_NEAR(room - 0.5F, platform_test::metricsOf(*layout).width, 1e-3F);
    EXPECT_EQ(height, platform_test::metricsOf(*layout).height);
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.0F, 0.0F));
    const auto objects = recorder.ofKind(DrawnCall::Object);
    ASSERT_EQ(1U, objects.size());
    EXPECT_FLOAT_EQ(linesOf(*layout)[0].baseline, objects[0].y);
    // The dots' ink counts where they are drawn: on the baseline, right of what is kept.
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    const DrawnCall dots = drawnRuns(*makeLayout(u"\u2026")).at(0);
    const D2D1_RECT_F ink = drawnInk(*makeLayout(u"\u2026"));
    EXPECT_NEAR(objects[0].x + ink.right - room, overhang.right, 1e-3F);
    EXPECT_EQ(1U, dots.glyphs.size());
}

TEST(EllipsisSign, TakesAFallbackFontForAnUnknownFamily) {
    const auto sign = signFor({.family = L"No such family"});
    Recorder recorder;
    EXPECT_EQ(S_OK, sign->Draw(nullptr, &recorder, 0.0F, 0.0F, FALSE, FALSE, nullptr));
    ASSERT_EQ(1U, recorder.calls.size());
    ASSERT_EQ(1U, recorder.calls[0].glyphs.size());
    EXPECT_NE(0U, recorder.calls[0].glyphs[0]);
    EXPECT_LT(0.0F, metricsOf(*sign).width);
}

TEST(EllipsisSign, SeveralThreadsMayDrawOne) {
    const auto sign = signFor({});
    const float width = metricsOf(*sign).width;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < 100; ++j) {
                Recorder recorder;
                EXPECT_EQ(S_OK, sign->Draw(nullptr, &recorder, 0.0F, 0.0F, FALSE, FALSE, nullptr));
                EXPECT_EQ(1U, recorder.calls.size());
                EXPECT_EQ(width, metricsOf(*sign).width);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(EllipsisSign, NeedsNoRenderer) {
    EXPECT_EQ(E_INVALIDARG, signFor({})->Draw(nullptr, nullptr, 0.0F, 0.0F, FALSE, FALSE, nullptr));
}

} // namespace
} // namespace platform_test

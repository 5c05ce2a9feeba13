#include <functional>
#include <vector>

#include "support/LayoutTestSupport.h"

// A border of ranges in the middle of a surrogate pair. DejaVu Sans has glyphs 68, 5857 and 69 for the text:
//   hb-shape --no-glyph-names DejaVuSans.ttf --unicodes=61,1F600,62

namespace platform_test {
namespace {

const std::u16string text = u"a\U0001F600b";
constexpr DWRITE_TEXT_RANGE lead{1, 1};
constexpr DWRITE_TEXT_RANGE trail{2, 1};
constexpr DWRITE_TEXT_RANGE fromTrail{2, 2};

using Change = std::function<void(IDWriteTextLayout&, DWRITE_TEXT_RANGE)>;

Reference<IDWriteTypography> withoutKerning() {
    IDWriteTypography* typography = nullptr;
    EXPECT_EQ(S_OK, factory().CreateTypography(&typography));
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 0}));
    return {typography, false};
}

std::vector<Change> changesOfEveryAttribute(Effect& effect) {
    return {
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetFontSize(30.0F, range); },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) {
            layout.SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, range);
        },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) {
            layout.SetFontStyle(DWRITE_FONT_STYLE_OBLIQUE, range);
        },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) {
            layout.SetFontStretch(DWRITE_FONT_STRETCH_CONDENSED, range);
        },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetFontFamilyName(L"DejaVu Serif", range); },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetLocaleName(L"ja", range); },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetTypography(withoutKerning().get(), range); },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetUnderline(TRUE, range); },
        [](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetStrikethrough(TRUE, range); },
        [&effect](IDWriteTextLayout& layout, DWRITE_TEXT_RANGE range) { layout.SetDrawingEffect(&effect, range); },
    };
}

/// The run that draws position 1.
DrawnCall runOfPair(IDWriteTextLayout& layout) {
    for (const DrawnCall& run : drawnRuns(layout)) {
        if (run.textPosition <= 1 && 1 < run.textPosition + run.text.size()) {
            return run;
        }
    }
    return {};
}

TEST(SurrogatePairs, AreDrawnWholeInTheStyleOfTheirFirstHalf) {
    Effect effect;
    for (const Change& change : changesOfEveryAttribute(effect)) {
        const auto plain = makeLayout(text);
        const DrawnCall pair = runOfPair(*plain);
        ASSERT_EQ((std::vector<unsigned>{68, 5857, 69}), pair.glyphs);
        for (const DWRITE_TEXT_RANGE range : {trail, fromTrail}) {
            const auto layout = makeLayout(text);
            change(*layout, range);
            const DrawnCall run = runOfPair(*layout);
            ASSERT_LE(2U, run.glyphs.size());
            EXPECT_EQ(5857U, run.glyphs[1]);
            EXPECT_EQ(pair.face, run.face);
            EXPECT_EQ(pair.emSize, run.emSize);
            EXPECT_EQ(pair.effect, run.effect);
            EXPECT_EQ(3U, clustersOf(*layout).size());
        }
    }
}

TEST(SurrogatePairs, ChangeAsAWholeWithTheirFirstHalf) {
    Effect effect;
    for (const Change& change : changesOfEveryAttribute(effect)) {
        const auto whole = makeLayout(text);
        change(*whole, {1, 2});
        const auto half = makeLayout(text);
        change(*half, lead);
        EXPECT_EQ(runTexts(drawnRuns(*whole)), runTexts(drawnRuns(*half)));
        EXPECT_EQ(runOfPair(*whole).glyphs, runOfPair(*half).glyphs);
        EXPECT_EQ(metricsOf(*whole).width, metricsOf(*half).width);
    }
}

TEST(SurrogatePairs, LeaveRangesAsTheyWereSet) {
    const auto layout = makeLayout(text);
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, trail));
    drawnRuns(*layout);
    FLOAT size = 0.0F;
    DWRITE_TEXT_RANGE range{};
    EXPECT_EQ(S_OK, layout->GetFontSize(2, &size, &range));
    EXPECT_EQ(30.0F, size);
    EXPECT_EQ(2U, range.startPosition);
    EXPECT_EQ(1U, range.length);
    EXPECT_EQ(S_OK, layout->GetFontSize(1, &size, &range));
    EXPECT_EQ(20.0F, size);
    EXPECT_EQ(0U, range.startPosition);
    EXPECT_EQ(2U, range.length);
}

TEST(SurrogatePairs, GiveWayWholeToAnInlineObject) {
    for (const DWRITE_TEXT_RANGE range : {lead, trail}) {
        Picture picture;
        const auto layout = makeLayout(text);
        EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, range));
        const auto clusters = clustersOf(*layout);
        ASSERT_EQ(3U, clusters.size());
        EXPECT_EQ(2U, clusters[1].length);
        EXPECT_EQ(30.0F, clusters[1].width);
        EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), runTexts(drawnRuns(*layout)));
        Recorder recorder;
        EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.0F, 0.0F));
        EXPECT_EQ(1U, recorder.ofKind(DrawnCall::Object).size());
    }
}

TEST(SurrogatePairs, HoldTwoInlineObjectsIfTheyMust) {
    Picture first;
    Picture second;
    const auto layout = makeLayout(text, 1.0F);
    EXPECT_EQ(S_OK, layout->SetInlineObject(&first, lead));
    EXPECT_EQ(S_OK, layout->SetInlineObject(&second, trail));
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.0F, 0.0F));
    EXPECT_EQ(2U, recorder.ofKind(DrawnCall::Object).size());
    EXPECT_EQ(4U, clustersOf(*layout).size());
}

TEST(SurrogatePairs, AreWholeForEveryQuestionAboutPlaces) {
    const auto plain = makeLayout(text);
    const auto layout = makeLayout(text);
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, trail));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, trail));
    for (unsigned position = 0; position <= 4; ++position) {
        FLOAT x = 0.0F;
        FLOAT plainX = 0.0F;
        FLOAT y = 0.0F;
        DWRITE_HIT_TEST_METRICS metrics{};
        EXPECT_EQ(S_OK, plain->HitTestTextPosition(position, FALSE, &plainX, &y, &metrics));
        EXPECT_EQ(S_OK, layout->HitTestTextPosition(position, FALSE, &x, &y, &metrics));
        EXPECT_EQ(plainX, x) << position;
    }
    UINT32 count = 0;
    DWRITE_HIT_TEST_METRICS box{};
    EXPECT_EQ(S_OK, layout->HitTestTextRange(2, 1, 0.0F, 0.0F, &box, 1, &count));
    EXPECT_EQ(1U, box.textPosition);
    EXPECT_EQ(2U, box.length);
}

} // namespace
} // namespace platform_test

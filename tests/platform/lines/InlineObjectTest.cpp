#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

TEST(InlineObject, StandsForItsRangeAsOneCluster) {
    Picture picture;
    const auto layout = makeLayout(u"a###b");
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 3}));
    EXPECT_EQ(S_OK, layout->SetFontSize(12.0F, {2, 1}));
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(3U, clusters.size());
    EXPECT_EQ(3U, clusters[1].length);
    EXPECT_EQ(30.0F, clusters[1].width);
    EXPECT_FLOAT_EQ(clusters[0].width + 30.0F + clusters[2].width, metricsOf(*layout).width);
}

TEST(InlineObject, RaisesItsLine) {
    Picture picture;
    const auto layout = makeLayout(u"a#");
    const auto before = linesOf(*layout)[0];
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    const auto after = linesOf(*layout)[0];
    EXPECT_FLOAT_EQ(25.0F, after.baseline);
    EXPECT_FLOAT_EQ(40.0F, after.height);
    picture.metrics = {30.0F, 2.0F, 1.0F, FALSE};
    EXPECT_EQ(S_OK, layout->SetInlineObject(nullptr, {1, 1}));
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_FLOAT_EQ(before.height, linesOf(*layout)[0].height);
}

TEST(InlineObject, IsDrawnWithItsTopLeftCorner) {
    Picture picture;
    Effect effect;
    const auto layout = makeLayout(u"a#b");
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_EQ(S_OK, layout->SetDrawingEffect(&effect, {1, 1}));
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 100.0F, 50.0F));
    const auto objects = recorder.ofKind(DrawnCall::Object);
    ASSERT_EQ(1U, objects.size());
    EXPECT_EQ(&picture, objects[0].object);
    EXPECT_EQ(&effect, objects[0].effect);
    EXPECT_FLOAT_EQ(100.0F + clustersOf(*layout)[0].width, objects[0].x);
    EXPECT_FLOAT_EQ(50.0F, objects[0].y);
    EXPECT_FALSE(objects[0].isSideways);
    EXPECT_FALSE(objects[0].isRightToLeft);
    EXPECT_EQ(2U, recorder.ofKind(DrawnCall::GlyphRun).size());
}

/// The lengths of the lines of "ab#cd" where every opportunity is taken and a picture stands for the middle.
std::vector<unsigned> linesAround(Picture& picture) {
    const auto layout = makeLayout(u"ab#cd", 10.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {2, 1}));
    return lineLengths(*layout);
}

TEST(InlineObject, SaysWhetherLinesBreakAroundIt) {
    Picture picture;
    picture.before = picture.after = DWRITE_BREAK_CONDITION_CAN_BREAK;
    EXPECT_EQ((std::vector<unsigned>{2, 1, 2}), linesAround(picture));
    picture.before = DWRITE_BREAK_CONDITION_MAY_NOT_BREAK;
    EXPECT_EQ((std::vector<unsigned>{3, 2}), linesAround(picture));
    picture.before = picture.after = DWRITE_BREAK_CONDITION_MUST_BREAK;
    const auto forced = makeLayout(u"ab#cd");
    EXPECT_EQ(S_OK, forced->SetInlineObject(&picture, {2, 1}));
    EXPECT_EQ((std::vector<unsigned>{2, 1, 2}), lineLengths(*forced));
}

TEST(InlineObject, WithoutConditionsLeavesThoseOfTheTextThatItReplaces) {
    Picture picture;
    EXPECT_EQ((std::vector<unsigned>{5}), linesAround(picture));
    picture.conditionsAnswer = E_FAIL;
    picture.before = picture.after = DWRITE_BREAK_CONDITION_CAN_BREAK;
    EXPECT_EQ((std::vector<unsigned>{5}), linesAround(picture));
    // Side by side, in the place of two letters, of a word and a space, and of words with a space inside.
    const auto beside = [&picture](std::u16string_view text, unsigned first) {
        Picture other;
        other.conditionsAnswer = E_FAIL;
        const auto layout = makeLayout(text, 10.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
        EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {0, first}));
        EXPECT_EQ(S_OK, layout->SetInlineObject(&other, {first, static_cast<UINT32>(text.size()) - first}));
        return lineLengths(*layout);
    };
    EXPECT_EQ((std::vector<unsigned>{2}), beside(u"ab", 1));
    EXPECT_EQ((std::vector<unsigned>{2, 1}), beside(u"a b", 2));
    EXPECT_EQ((std::vector<unsigned>{5}), beside(u"a bcd", 3));
}

TEST(InlineObject, WithoutMetricsHasNoWidthAndTheFontsHeight) {
    Picture picture;
    picture.metricsAnswer = E_FAIL;
    const auto layout = makeLayout(u"a#");
    const float height = metricsOf(*layout).height;
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_EQ(height, metricsOf(*layout).height);
    EXPECT_EQ(0.0F, clustersOf(*layout)[1].width);
}

TEST(InlineObject, IsNeutralAmongDirections) {
    Picture picture;
    const auto layout = makeLayout(u"\u05D0x\u05D1");
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    const auto calls = draw(*layout);
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(2U, runs.size());
    // Between the two letters, on their level: the first letter lies to the right of it.
    EXPECT_TRUE(calls.back().isRightToLeft);
    EXPECT_GT(runs[0].x, calls.back().x + 30.0F);
    EXPECT_NEAR(calls.back().x, runs[1].x, 1e-4F);
}

// Windows tells the overhang of a layout 10 wide and 50 high with nothing in it but this object, on a line of uniform
// spacing; Wine's DirectWrite gives the other numbers.
void expectOverhang(float lineBaseline, float left, float top, float right, float bottom, HRESULT answer = S_OK) {
    Picture picture;
    picture.metrics = {10.0F, 50.0F, 20.0F, FALSE};
    picture.overhang = {1.0F, 2.0F, 3.0F, 4.0F};
    picture.overhangAnswer = answer;
    const auto layout = makeLayout(u"#", 10.0F, 50.0F);
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {0, 1}));
    if (lineBaseline > 0.0F) {
        EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, 50.0F, lineBaseline));
    }
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    EXPECT_FLOAT_EQ(left, overhang.left);
    EXPECT_FLOAT_EQ(top, overhang.top);
    EXPECT_FLOAT_EQ(right, overhang.right);
    EXPECT_FLOAT_EQ(bottom, overhang.bottom);
}

TEST(InlineObject, OverhangsByWhatItSaysFromWhereItStands) {
    expectOverhang(16.0F, 1.0F, 6.0F, 3.0F, 0.0F);
    expectOverhang(0.0F, 1.0F, 2.0F, 3.0F, 4.0F);
    // What a failing call leaves counts all the same.
    expectOverhang(16.0F, 1.0F, 6.0F, 3.0F, 0.0F, E_NOTIMPL);
}

TEST(InlineObject, WithoutMetricsHasNoInk) {
    Picture picture;
    picture.metricsAnswer = E_FAIL;
    picture.overhang = {1.0F, 2.0F, 3.0F, 4.0F};
    const auto layout = makeLayout(u"#", 10.0F, 50.0F);
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {0, 1}));
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    EXPECT_EQ(0.0F, overhang.left);
    EXPECT_EQ(0.0F, overhang.top);
    EXPECT_EQ(-10.0F, overhang.right);
    EXPECT_EQ(-50.0F, overhang.bottom);
}

TEST(InlineObject, IsNoTextWhenHit) {
    Picture picture;
    const auto layout = makeLayout(u"a#b");
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    BOOL isTrailing = FALSE;
    BOOL isInside = FALSE;
    DWRITE_HIT_TEST_METRICS metrics{};
    EXPECT_EQ(S_OK, layout->HitTestPoint(clustersOf(*layout)[0].width + 3.0F, 5.0F, &isTrailing, &isInside, &metrics));
    EXPECT_EQ(1U, metrics.textPosition);
    EXPECT_EQ(FALSE, metrics.isText);
}

} // namespace
} // namespace platform_test

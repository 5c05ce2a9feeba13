#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

constexpr auto noWrap = DWRITE_WORD_WRAPPING_NO_WRAP;

float widthOf(std::u16string_view text) {
    return metricsOf(*makeLayout(text)).width;
}

Reference<IDWriteTextLayout> trimmed(std::u16string_view text, float box, const DWRITE_TRIMMING& trimming,
                                     IDWriteInlineObject* sign, const FormatOptions& options = {.wrapping = noWrap}) {
    auto layout = makeLayout(text, box, 0, options);
    EXPECT_EQ(S_OK, layout->SetTrimming(&trimming, sign));
    return layout;
}

std::wstring drawnText(IDWriteTextLayout& layout) {
    std::wstring text;
    for (const DrawnCall& run : drawnRuns(layout)) {
        text += run.text;
    }
    return text;
}

TEST(Trimming, NothingIsTrimmedUnlessAskedFor) {
    const auto layout = makeLayout(u"some words", 20.0F, 0, {.wrapping = noWrap});
    EXPECT_EQ(FALSE, linesOf(*layout)[0].isTrimmed);
    EXPECT_FLOAT_EQ(widthOf(u"some words"), metricsOf(*layout).width);
}

TEST(Trimming, CharactersMakeRoomForTheSign) {
    Picture sign;
    const float box = widthOf(u"some w") + 30.5F;
    const auto layout = trimmed(u"some words here", box, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0}, &sign);
    EXPECT_EQ(TRUE, linesOf(*layout)[0].isTrimmed);
    EXPECT_EQ(15U, linesOf(*layout)[0].length);
    EXPECT_EQ(L"some w", drawnText(*layout));
    EXPECT_NEAR(box - 0.5F, metricsOf(*layout).width, 1e-3F);
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 10.0F, 0.0F));
    const auto objects = recorder.ofKind(DrawnCall::Object);
    ASSERT_EQ(1U, objects.size());
    EXPECT_EQ(&sign, objects[0].object);
    EXPECT_NEAR(10.0F + widthOf(u"some w"), objects[0].x, 1e-3F);
    EXPECT_FLOAT_EQ(linesOf(*layout)[0].baseline - 25.0F, objects[0].y);
}

TEST(Trimming, WordsAreKeptWhole) {
    const float box = widthOf(u"some wor");
    const auto layout = trimmed(u"some words here", box, {DWRITE_TRIMMING_GRANULARITY_WORD, 0, 0}, nullptr);
    EXPECT_EQ(L"some ", drawnText(*layout));
    EXPECT_TRUE(Recorder().ofKind(DrawnCall::Object).empty());
    const auto cut = trimmed(u"longword", widthOf(u"lon"), {DWRITE_TRIMMING_GRANULARITY_WORD, 0, 0}, nullptr);
    EXPECT_EQ(L"lon", drawnText(*cut));
}

TEST(Trimming, TheEndBehindADelimiterIsKept) {
    const std::u16string text = u"/work/some/long/path/file";
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, u'/', 1};
    const auto layout = trimmed(text, widthOf(u"/work/file"), trimming, nullptr);
    const std::wstring drawn = drawnText(*layout);
    EXPECT_EQ(L"/file", drawn.substr(drawn.size() - 5));
    EXPECT_LE(metricsOf(*layout).width, widthOf(u"/work/file"));
    EXPECT_LT(6U, drawn.size());
    const auto narrow = trimmed(text, widthOf(u"/fi"), trimming, nullptr);
    EXPECT_EQ(L"/", drawnText(*narrow).substr(0, 1));
    EXPECT_LE(metricsOf(*narrow).width, widthOf(u"/fi"));
}

TEST(Trimming, TextThatFitsAndBoxesWithoutLimitAreLeftAlone) {
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0};
    EXPECT_EQ(FALSE, linesOf(*trimmed(u"text", 500.0F, trimming, nullptr))[0].isTrimmed);
    EXPECT_EQ(FALSE, linesOf(*trimmed(u"text", 0.0F, trimming, nullptr))[0].isTrimmed);
}

TEST(Trimming, ALineKeepsItsFirstClusterHoweverNarrowTheBox) {
    Picture sign;
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0};
    const auto layout = trimmed(u"some words", 10.0F, trimming, &sign);
    EXPECT_EQ(L"s", drawnText(*layout));
    EXPECT_FLOAT_EQ(widthOf(u"s") + 30.0F, metricsOf(*layout).width);
    // A delimiter right behind the first cluster keeps nothing then.
    EXPECT_EQ(L"W", drawnText(*trimmed(u"W/x", 10.0F, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, u'/', 1}, nullptr)));
}

TEST(Trimming, ASingleLetterStaysWithoutTheSign) {
    Picture sign;
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, noWrap}) {
        const auto layout = trimmed(u"a", widthOf(u"a") / 2.0F, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0}, &sign,
                                    {.wrapping = wrapping});
        EXPECT_EQ(FALSE, linesOf(*layout)[0].isTrimmed);
        Recorder recorder;
        EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.0F, 0.0F));
        ASSERT_EQ(1U, recorder.ofKind(DrawnCall::GlyphRun).size());
        EXPECT_EQ(L"a", recorder.ofKind(DrawnCall::GlyphRun)[0].text);
        EXPECT_TRUE(recorder.ofKind(DrawnCall::Object).empty());
    }
}

TEST(Trimming, WrappedWordsAreTrimmedInsteadOfTorn) {
    Picture sign;
    const float box = widthOf(u"a") + 30.5F;
    for (const auto granularity : {DWRITE_TRIMMING_GRANULARITY_CHARACTER, DWRITE_TRIMMING_GRANULARITY_WORD}) {
        const DWRITE_TRIMMING trimming{granularity, 0, 0};
        const auto layout = trimmed(u"abcd", box, trimming, &sign, {.wrapping = DWRITE_WORD_WRAPPING_WRAP});
        ASSERT_EQ((std::vector<unsigned>{4}), lineLengths(*layout));
        EXPECT_EQ(TRUE, linesOf(*layout)[0].isTrimmed);
        EXPECT_EQ(L"a", drawnText(*layout));
        // Lines still end at spaces, and words are torn where that was asked for.
        EXPECT_EQ((std::vector<unsigned>{2, 4}),
                  lineLengths(*trimmed(u"a abcd", box, trimming, &sign, {.wrapping = DWRITE_WORD_WRAPPING_WRAP})));
        EXPECT_LT(1U, lineLengths(*trimmed(u"abcd", box / 2.0F, trimming, &sign,
                                           {.wrapping = DWRITE_WORD_WRAPPING_EMERGENCY_BREAK}))
                          .size());
    }
}

TEST(Trimming, HiddenTextIsStillThereToBeHit) {
    Picture sign;
    const auto layout =
        trimmed(u"some words", widthOf(u"some") + 31.0F, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0}, &sign);
    FLOAT x = 0.0F;
    FLOAT y = 0.0F;
    DWRITE_HIT_TEST_METRICS metrics{};
    EXPECT_EQ(S_OK, layout->HitTestTextPosition(8, FALSE, &x, &y, &metrics));
    EXPECT_EQ(TRUE, metrics.isTrimmed);
    EXPECT_EQ(8U, metrics.textPosition);
    BOOL isTrailing = FALSE;
    BOOL isInside = FALSE;
    EXPECT_EQ(S_OK, layout->HitTestPoint(widthOf(u"some") + 5.0F, 5.0F, &isTrailing, &isInside, &metrics));
    EXPECT_EQ(TRUE, metrics.isTrimmed);
    EXPECT_EQ(TRUE, isInside);
    unsigned length = 0;
    for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(*layout)) {
        length += cluster.length;
    }
    EXPECT_EQ(10U, length);
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    // The sign is ink, as it is in Wine's DirectWrite: it takes 30 of the 31 units behind "some".
    EXPECT_NEAR(-1.0F, overhang.right, 1e-3F);
}

TEST(Trimming, CutLinesAreNotStretched) {
    const std::u16string text = u"aa\u00A0bb\u00A0cc\u00A0dd ee";
    const float box = widthOf(u"aa\u00A0bb\u00A0c") + 3.0F;
    const auto layout = trimmed(text, box, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0}, nullptr,
                                {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    ASSERT_EQ((std::vector<unsigned>{12, 2}), lineLengths(*layout));
    EXPECT_EQ(TRUE, linesOf(*layout)[0].isTrimmed);
    EXPECT_FLOAT_EQ(box - 3.0F, metricsOf(*layout).width);
    EXPECT_FLOAT_EQ(box - 3.0F, drawnRuns(*layout)[0].advance());
}

TEST(Trimming, RightToLeftLinesAreCutOnTheLeft) {
    Picture sign;
    const auto layout = trimmed(u"\u05D0\u05D1\u05D2\u05D3\u05D4", 45.0F, {DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0},
                                &sign, {.wrapping = noWrap, .reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT});
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.0F, 0.0F));
    ASSERT_EQ(1U, recorder.ofKind(DrawnCall::Object).size());
    ASSERT_EQ(1U, recorder.ofKind(DrawnCall::GlyphRun).size());
    EXPECT_FLOAT_EQ(45.0F, recorder.ofKind(DrawnCall::GlyphRun)[0].x);
    EXPECT_NEAR(metricsOf(*layout).left, recorder.ofKind(DrawnCall::Object)[0].x, 1e-3F);
    EXPECT_TRUE(recorder.ofKind(DrawnCall::Object)[0].isRightToLeft);
}

} // namespace
} // namespace platform_test

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

constexpr DWRITE_TEXT_RANGE everything{0, 0xFFFFFFFF};

Reference<IDWriteTextLayout1> pairs(std::u16string_view text, const std::wstring& family, float maxWidth = 0.0F) {
    return laterOf(*makeLayout(text, maxWidth, 0.0F, {.family = family, .size = 2048.0F}));
}

bool isKerned(IDWriteTextLayout1& layout, UINT32 position, DWRITE_TEXT_RANGE* range = nullptr) {
    BOOL kerned = -1;
    EXPECT_EQ(S_OK, layout.GetPairKerning(position, &kerned, range));
    EXPECT_TRUE(kerned == TRUE || kerned == FALSE);
    return kerned != FALSE;
}

TEST(PairKerning, ALayoutIsOneObjectInBothGenerations) {
    const auto layout = makeLayout(u"text");
    const auto later = laterOf(*layout);
    EXPECT_EQ(layout.get(), later.get());
    void* earlier = nullptr;
    EXPECT_EQ(S_OK, later->QueryInterface(__uuidof(IDWriteTextLayout), &earlier));
    EXPECT_EQ(layout.get(), earlier);
    layout->Release();
}

TEST(PairKerning, IsOnUntilARangeSaysOtherwise) {
    const auto layout = pairs(u"AVAV", L"Liberation Sans");
    DWRITE_TEXT_RANGE range{};
    EXPECT_TRUE(isKerned(*layout, 0, &range));
    EXPECT_EQ(everything.length, range.length);
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, {1, 2}));
    EXPECT_TRUE(isKerned(*layout, 0));
    EXPECT_FALSE(isKerned(*layout, 2, &range));
    EXPECT_EQ(1U, range.startPosition);
    EXPECT_EQ(2U, range.length);
    EXPECT_EQ(E_INVALIDARG, layout->SetPairKerning(FALSE, {10, 0xFFFFFFFF}));
}

TEST(PairKerning, AWordIsAsWideAsItsLettersWithoutIt) {
    // By a table GPOS in DejaVu Sans, by a table kern alone in Liberation Sans.
    for (const char* family : {"DejaVu Sans", "Liberation Sans"}) {
        const auto layout = pairs(u"AVATAR. To", {family, family + std::char_traits<char>::length(family)});
        const float letters = designWidth(family, u"AVATAR. To");
        EXPECT_GT(letters - 50.0F, metricsOf(*layout).width) << family;
        EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, everything));
        EXPECT_EQ(letters, metricsOf(*layout).width) << family;
        EXPECT_EQ(S_OK, layout->SetPairKerning(TRUE, everything));
        EXPECT_GT(letters - 50.0F, metricsOf(*layout).width) << family;
    }
}

TEST(PairKerning, PartsRunsWhereItChanges) {
    const auto layout = pairs(u"AVAVAV", L"Liberation Sans");
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, {2, 2}));
    EXPECT_EQ((std::vector<std::wstring>{L"AV", L"AV", L"AV"}), runTexts(drawnRuns(*layout)));
    const auto runs = drawnRuns(*layout);
    EXPECT_LT(runs[0].advance(), runs[1].advance());
    EXPECT_EQ(runs[0].advances, runs[2].advances);
    EXPECT_EQ(designWidth("Liberation Sans", u"AV"), runs[1].advance());
}

TEST(PairKerning, SplitsAClusterThatItChangesIn) {
    const auto layout = pairs(u"q\u0301", L"DejaVu Sans");
    EXPECT_EQ(1U, clustersOf(*layout).size());
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, {1, 1}));
    EXPECT_EQ(2U, clustersOf(*layout).size());
}

TEST(PairKerning, LigaturesAndMarksAreNoneOfItsBusiness) {
    const auto layout = pairs(u"office q\u0301", L"DejaVu Sans");
    const auto before = drawnRuns(*layout);
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, everything));
    EXPECT_EQ(before.at(0).glyphs, drawnRuns(*layout).at(0).glyphs);
}

TEST(PairKerning, TypographyThatNamesKerningHasTheLastWord) {
    const auto layout = pairs(u"AV", L"Liberation Sans");
    const std::vector<float> kerned = drawnRuns(*layout).at(0).advances;
    IDWriteTypography* made = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&made));
    const Reference<IDWriteTypography> typography(made, false);
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 1}));
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, everything));
    EXPECT_NE(kerned, drawnRuns(*layout).at(0).advances);
    EXPECT_EQ(S_OK, layout->SetTypography(typography.get(), everything));
    EXPECT_EQ(kerned, drawnRuns(*layout).at(0).advances);
}

TEST(PairKerning, LinesBreakByTheWidthsWithoutIt) {
    // Kerned, both letters would fit.
    const float letters = designWidth("Liberation Sans", u"AV");
    const auto layout = pairs(u"AV AV", L"Liberation Sans", letters + 300.0F);
    EXPECT_EQ(S_OK, layout->SetPairKerning(FALSE, everything));
    EXPECT_EQ((std::vector<unsigned>{3, 2}), lineLengths(*layout));
    EXPECT_EQ(letters, metricsOf(*layout).width);
}

} // namespace
} // namespace platform_test

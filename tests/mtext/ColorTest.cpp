#include <gtest/gtest.h>

#include <utility>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

constexpr std::uint32_t FOREGROUND = 0xFF010203;
constexpr std::uint32_t INHERITED = 0xFF0A0B0C;

std::uint32_t color(std::int32_t index) {
    return argbFromColorIndex(index, FOREGROUND, INHERITED);
}

// Rows of the palette that drawing programs share.
class Palette : public ::testing::TestWithParam<std::pair<std::int32_t, std::uint32_t>> {};

TEST_P(Palette, HasTheColor) {
    EXPECT_EQ(color(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Palette,
    ::testing::Values(std::pair{1, 0xFFFF0000U}, std::pair{2, 0xFFFFFF00U}, std::pair{3, 0xFF00FF00U},
                      std::pair{4, 0xFF00FFFFU}, std::pair{5, 0xFF0000FFU}, std::pair{6, 0xFFFF00FFU},
                      std::pair{8, 0xFF808080U}, std::pair{9, 0xFFC0C0C0U}, std::pair{10, 0xFFFF0000U},
                      std::pair{11, 0xFFFF7F7FU}, std::pair{12, 0xFFA50000U}, std::pair{13, 0xFFA55252U},
                      std::pair{17, 0xFF4C2626U}, std::pair{19, 0xFF261313U}, std::pair{20, 0xFFFF3F00U},
                      std::pair{22, 0xFFA52900U}, std::pair{25, 0xFF7F4F3FU}, std::pair{48, 0xFF261C00U},
                      std::pair{63, 0xFF91A552U}, std::pair{84, 0xFF1F7F00U}, std::pair{101, 0xFF7FFF9FU},
                      std::pair{126, 0xFF004C39U}, std::pair{143, 0xFF5291A5U}, std::pair{170, 0xFF0000FFU},
                      std::pair{186, 0xFF13004CU}, std::pair{201, 0xFFDF7FFFU}, std::pair{232, 0xFFA50052U},
                      std::pair{245, 0xFF7F3F4FU}, std::pair{250, 0xFF333333U}, std::pair{255, 0xFFFFFFFFU}));

TEST(ColorIndex, SevenIsTheForeground) {
    EXPECT_EQ(color(7), FOREGROUND);
}

TEST(ColorIndex, ByLayerByBlockAndNonsenseAreInherited) {
    for (const std::int32_t index : {0, 256, 257, -1, 100000, -2147483647}) {
        EXPECT_EQ(color(index), INHERITED) << index;
    }
}

TEST(ColorIndex, EveryColorIsOpaque) {
    for (std::int32_t index = 1; index < 256; ++index) {
        EXPECT_EQ(color(index) >> 24, 0xFFU) << index;
    }
}

TEST(ColorCode, SetsTheColorUntilTheGroupEnds) {
    const auto runs = tokens(parse(L"a{\\C1;b}c", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_EQ(runs[0].color, 0xFF112233U);
    EXPECT_EQ(runs[1].color, 0xFFFF0000U);
    EXPECT_EQ(runs[2].color, 0xFF112233U);
}

TEST(ColorCode, ByLayerByBlockAndForegroundAreTheEntitys) {
    const auto runs = tokens(parse(L"\\C1;a\\C256;b\\C1;c\\C0;d\\C7;e", sampleDefaults()));
    ASSERT_EQ(runs.size(), 5U);
    EXPECT_EQ(runs[1].color, 0xFF112233U);
    EXPECT_EQ(runs[3].color, 0xFF112233U);
    EXPECT_EQ(runs[4].color, 0xFF445566U);
}

TEST(TrueColorCode, HasBlueInItsHighestByte) {
    EXPECT_EQ(tokens(parse(L"\\c16711680;a", sampleDefaults()))[0].color, 0xFF0000FFU);
    EXPECT_EQ(tokens(parse(L"\\c255;a", sampleDefaults()))[0].color, 0xFFFF0000U);
    EXPECT_EQ(tokens(parse(L"\\c65280;a", sampleDefaults()))[0].color, 0xFF00FF00U);
}

TEST(ColorCode, NumbersThatAreNoColorsChangeNothingAndAreReported) {
    for (const std::wstring_view content : {L"\\C257;a", L"\\C-1;a", L"\\C;a", L"\\c-1;a", L"\\c16777216;a"}) {
        const Result result = parse(content, sampleDefaults());
        EXPECT_EQ(plainText(result.document), L"a");
        EXPECT_EQ(tokens(result)[0].color, 0xFF112233U);
        EXPECT_EQ(codes(result), std::vector{DiagnosticCode::MalformedCode});
    }
}

} // namespace
} // namespace mtext::testing

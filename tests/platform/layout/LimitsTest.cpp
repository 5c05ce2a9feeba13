#include <atomic>
#include <thread>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

TEST(Limits, AMillionCharactersInOneParagraph) {
    std::u16string text;
    while (text.size() < 1000000) {
        text += u"some words of a very long text, ";
    }
    const auto layout = makeLayout(text, 500.0F, 0, {.size = 10.0F});
    unsigned sum = 0;
    for (const unsigned length : lineLengths(*layout)) {
        sum += length;
    }
    EXPECT_EQ(text.size(), sum);
    EXPECT_LT(1000U, metricsOf(*layout).lineCount);
    EXPECT_EQ(S_OK, layout->SetWordWrapping(DWRITE_WORD_WRAPPING_CHARACTER));
    EXPECT_LT(1000U, metricsOf(*layout).lineCount);
}

TEST(Limits, AHundredThousandRangesInAnyOrder) {
    const std::u16string text(100000, u'x');
    const auto layout = makeLayout(text);
    for (UINT32 i = 0; i < 100000; i += 2) {
        const UINT32 position = (i * 37699U) % 100000U;
        EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {position, 1}));
    }
    unsigned underlines = 0;
    for (const DrawnCall& call : draw(*layout)) {
        underlines += call.kind == DrawnCall::Underline ? 1U : 0U;
    }
    EXPECT_EQ(50000U, underlines);
}

TEST(Limits, AHundredThousandLines) {
    const std::u16string text(100000, u'\n');
    const auto layout = makeLayout(text);
    EXPECT_EQ(100001U, metricsOf(*layout).lineCount);
    EXPECT_EQ(100000U, drawnRuns(*layout).size());
}

TEST(Limits, AClusterLongerThanItsMetricsCanSayIsReportedInParts) {
    Picture picture;
    const auto layout = makeLayout(u"a" + std::u16string(70000, u'#') + u"b");
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 70000}));
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(4U, clusters.size());
    EXPECT_EQ(65535U, clusters[1].length);
    EXPECT_EQ(30.0F, clusters[1].width);
    EXPECT_EQ(70000U - 65535U, clusters[2].length);
    EXPECT_EQ(0.0F, clusters[2].width);
    EXPECT_EQ(3U, draw(*layout).size());
}

TEST(Limits, MarksWithoutEndAreShapedInParts) {
    const auto layout = makeLayout(u"a" + std::u16string(20000, u'\u0301') + u"b");
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"ab")).width, metricsOf(*layout).width);
    EXPECT_LT(20U, clustersOf(*layout).size());
}

TEST(Limits, ThreadsLayOutAtOnce) {
    const std::u16string text =
        u"abc \u05D0\u05D1 \u0628\u0646\u0627\u0621 \u0E20\u0E32\u0E29\u0E32\u0E44\u0E17\u0E22 \u6F22\u5B57";
    const float width = metricsOf(*makeLayout(text, 60.0F)).width;
    std::atomic<int> differences = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                const auto layout = makeLayout(text, 60.0F);
                differences += metricsOf(*layout).width == width ? 0 : 1;
                differences += draw(*layout).empty() ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(0, differences);
}

} // namespace
} // namespace platform_test

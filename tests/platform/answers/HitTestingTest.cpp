#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

struct Hit {
    bool isTrailing = false;
    bool isInside = false;
    DWRITE_HIT_TEST_METRICS metrics{};
};

Hit hitPoint(IDWriteTextLayout& layout, float x, float y) {
    BOOL isTrailing = FALSE;
    BOOL isInside = FALSE;
    Hit hit;
    EXPECT_EQ(S_OK, layout.HitTestPoint(x, y, &isTrailing, &isInside, &hit.metrics));
    hit.isTrailing = isTrailing != FALSE;
    hit.isInside = isInside != FALSE;
    return hit;
}

struct CaretPlace {
    float x = 0.0F;
    float y = 0.0F;
    DWRITE_HIT_TEST_METRICS metrics{};
};

CaretPlace caret(IDWriteTextLayout& layout, UINT32 position, bool isTrailing = false) {
    CaretPlace place;
    EXPECT_EQ(S_OK,
              layout.HitTestTextPosition(position, isTrailing ? TRUE : FALSE, &place.x, &place.y, &place.metrics));
    return place;
}

std::vector<DWRITE_HIT_TEST_METRICS> rangeBoxes(IDWriteTextLayout& layout, UINT32 position, UINT32 length,
                                                float x = 0.0F, float y = 0.0F) {
    UINT32 count = 0;
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout.HitTestTextRange(position, length, x, y, nullptr, 0, &count));
    std::vector<DWRITE_HIT_TEST_METRICS> boxes(count);
    EXPECT_EQ(S_OK, layout.HitTestTextRange(position, length, x, y, boxes.data(), count, &count));
    return boxes;
}

TEST(HitTest, APointHitsItsClusterAndTheNearerSide) {
    const auto layout = makeLayout(u"abc");
    const auto clusters = clustersOf(*layout);
    const float middle = clusters[0].width + clusters[1].width / 2;
    Hit hit = hitPoint(*layout, middle - 1.0F, 5.0F);
    EXPECT_EQ(1U, hit.metrics.textPosition);
    EXPECT_EQ(1U, hit.metrics.length);
    EXPECT_FALSE(hit.isTrailing);
    EXPECT_TRUE(hit.isInside);
    EXPECT_FLOAT_EQ(clusters[0].width, hit.metrics.left);
    EXPECT_FLOAT_EQ(clusters[1].width, hit.metrics.width);
    EXPECT_FLOAT_EQ(metricsOf(*layout).height, hit.metrics.height);
    EXPECT_EQ(TRUE, hit.metrics.isText);
    EXPECT_EQ(FALSE, hit.metrics.isTrimmed);
    hit = hitPoint(*layout, middle + 1.0F, 5.0F);
    EXPECT_TRUE(hit.isTrailing);
}

TEST(HitTest, PointsOutsideHitWhatIsNearest) {
    const auto layout = makeLayout(u"abc\nde");
    Hit hit = hitPoint(*layout, -10.0F, -10.0F);
    EXPECT_EQ(0U, hit.metrics.textPosition);
    EXPECT_FALSE(hit.isTrailing);
    EXPECT_FALSE(hit.isInside);
    hit = hitPoint(*layout, 1000.0F, 5.0F);
    EXPECT_EQ(2U, hit.metrics.textPosition);
    EXPECT_TRUE(hit.isTrailing);
    EXPECT_FALSE(hit.isInside);
    hit = hitPoint(*layout, 1.0F, 1000.0F);
    EXPECT_EQ(4U, hit.metrics.textPosition);
    EXPECT_FALSE(hit.isInside);
}

TEST(HitTest, EmptyLinesAreHitWithoutLength) {
    const auto empty = makeLayout(u"");
    Hit hit = hitPoint(*empty, 5.0F, 5.0F);
    EXPECT_EQ(0U, hit.metrics.textPosition);
    EXPECT_EQ(0U, hit.metrics.length);
    EXPECT_FALSE(hit.isInside);
    EXPECT_FLOAT_EQ(metricsOf(*empty).height, hit.metrics.height);
    const auto newline = makeLayout(u"a\n");
    hit = hitPoint(*newline, 5.0F, 1000.0F);
    EXPECT_EQ(2U, hit.metrics.textPosition);
    EXPECT_EQ(0U, hit.metrics.length);
    const auto blank = makeLayout(u"\na");
    hit = hitPoint(*blank, 5.0F, 1.0F);
    EXPECT_EQ(0U, hit.metrics.textPosition);
    EXPECT_EQ(1U, hit.metrics.length);
}

TEST(HitTest, EveryCaretIsHitBack) {
    const auto layout = makeLayout(u"abc \u05D0\u05D1\u05D2 123 office e\u0301x\ndef \u0628\u0646\u0627\u0621", 120.0F);
    unsigned position = 0;
    for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(*layout)) {
        if (cluster.width > 0.0F) {
            const CaretPlace place = caret(*layout, position);
            // Just inside the cluster, from the side the caret stands on.
            const float inward = place.x == place.metrics.left ? 0.1F : -0.1F;
            const Hit hit = hitPoint(*layout, place.x + inward, place.y + place.metrics.height / 2);
            EXPECT_EQ(position, hit.metrics.textPosition);
            EXPECT_FALSE(hit.isTrailing) << position;
            EXPECT_TRUE(hit.isInside);
            const CaretPlace behind = caret(*layout, position, true);
            const Hit trailing = hitPoint(*layout, behind.x - inward, behind.y + 1.0F);
            EXPECT_EQ(position, trailing.metrics.textPosition);
            EXPECT_TRUE(trailing.isTrailing) << position;
        }
        position += cluster.length;
    }
}

TEST(HitTest, CaretsInsideAClusterStandAtItsStart) {
    const auto layout = makeLayout(u"offi");
    EXPECT_EQ(caret(*layout, 1).x, caret(*layout, 2).x);
    EXPECT_EQ(1U, caret(*layout, 3).metrics.textPosition);
    EXPECT_EQ(3U, caret(*layout, 3).metrics.length);
}

TEST(HitTest, ALigatureIsOnePlaceWithAnEdgeOnEitherSide) {
    // "ffi" is one glyph, and so is lam with alef, which is hit from the right.
    for (const auto& [text, length] : {std::pair{u"ffi", 3U}, std::pair{u"\u0644\u0627", 2U}}) {
        const auto layout = makeLayout(text);
        ASSERT_EQ(1U, clustersOf(*layout).size());
        const float width = metricsOf(*layout).width;
        const bool isRightToLeft = length == 2;
        for (const float part : {0.1F, 0.45F, 0.55F, 0.9F}) {
            BOOL isTrailing = FALSE;
            BOOL isInside = FALSE;
            DWRITE_HIT_TEST_METRICS hit{};
            EXPECT_EQ(S_OK, layout->HitTestPoint(part * width, 5.0F, &isTrailing, &isInside, &hit));
            EXPECT_EQ((part > 0.5F) != isRightToLeft, isTrailing != FALSE) << part;
            EXPECT_EQ(0U, hit.textPosition);
            EXPECT_EQ(length, hit.length);
            EXPECT_FLOAT_EQ(width, hit.width);
        }
        for (UINT32 position = 0; position < length; ++position) {
            EXPECT_NEAR(isRightToLeft ? width : 0.0F, caret(*layout, position).x, 1e-4F);
            EXPECT_NEAR(isRightToLeft ? 0.0F : width, caret(*layout, position, true).x, 1e-4F);
        }
    }
}

TEST(HitTest, CaretsOfRightToLeftTextStandAtItsRight) {
    const auto layout = makeLayout(u"\u05D0\u05D1");
    EXPECT_FLOAT_EQ(metricsOf(*layout).width, caret(*layout, 0).x);
    EXPECT_NEAR(0.0F, caret(*layout, 1, true).x, 1e-4F);
    EXPECT_EQ(1U, caret(*layout, 0).metrics.bidiLevel);
}

TEST(HitTest, TheEndOfTheTextHasACaret) {
    const auto layout = makeLayout(u"abc");
    const CaretPlace end = caret(*layout, 3);
    EXPECT_FLOAT_EQ(metricsOf(*layout).width, end.x);
    EXPECT_EQ(3U, end.metrics.textPosition);
    EXPECT_EQ(0U, end.metrics.length);
    EXPECT_EQ(0.0F, end.metrics.width);
    EXPECT_FLOAT_EQ(end.x, caret(*layout, 1000).x);
    const auto twoLines = makeLayout(u"abc\n");
    EXPECT_EQ(0.0F, caret(*twoLines, 4).x);
    EXPECT_FLOAT_EQ(linesOf(*twoLines)[0].height, caret(*twoLines, 4).y);
    EXPECT_EQ(0.0F, caret(*makeLayout(u""), 0).x);
}

TEST(HitTest, ARangeIsOneBoxForEachLine) {
    const auto layout = makeLayout(u"abc\ndef");
    const auto boxes = rangeBoxes(*layout, 1, 4, 100.0F, 50.0F);
    ASSERT_EQ(2U, boxes.size());
    EXPECT_EQ(1U, boxes[0].textPosition);
    EXPECT_EQ(3U, boxes[0].length);
    EXPECT_FLOAT_EQ(100.0F + clustersOf(*layout)[0].width, boxes[0].left);
    EXPECT_FLOAT_EQ(50.0F, boxes[0].top);
    EXPECT_EQ(4U, boxes[1].textPosition);
    EXPECT_EQ(1U, boxes[1].length);
    EXPECT_FLOAT_EQ(50.0F + linesOf(*layout)[0].height, boxes[1].top);
}

TEST(HitTest, ARangeIsOneBoxForEachDirection) {
    const auto layout = makeLayout(u"ab\u05D0\u05D1cd");
    const auto all = rangeBoxes(*layout, 0, 6);
    ASSERT_EQ(3U, all.size());
    EXPECT_EQ(2U, all[1].textPosition);
    EXPECT_EQ(2U, all[1].length);
    EXPECT_EQ(1U, all[1].bidiLevel);
    float width = 0.0F;
    for (const DWRITE_HIT_TEST_METRICS& box : all) {
        width += box.width;
    }
    EXPECT_NEAR(metricsOf(*layout).width, width, 1e-4F);
    // The end of the left-to-right part with the start of the right-to-left one: not side by side.
    EXPECT_EQ(2U, rangeBoxes(*layout, 1, 2).size());
}

TEST(HitTest, AnEmptyRangeIsWhereItsCaretStands) {
    const auto layout = makeLayout(u"abc");
    const auto boxes = rangeBoxes(*layout, 1, 0);
    ASSERT_EQ(1U, boxes.size());
    EXPECT_EQ(0U, boxes[0].length);
    EXPECT_EQ(0.0F, boxes[0].width);
    EXPECT_FLOAT_EQ(caret(*layout, 1).x, boxes[0].left);
    EXPECT_EQ(3U, rangeBoxes(*layout, 50, 10)[0].textPosition);
    EXPECT_EQ(3U, rangeBoxes(*layout, 0, 0xFFFFFFFF)[0].length);
}

TEST(HitTest, FollowsJustification) {
    const auto layout = makeLayout(u"aa bb cc dd", metricsOf(*makeLayout(u"aa bb cc d")).width);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    EXPECT_NEAR(layout->GetMaxWidth(), caret(*layout, 7, true).x, 1e-3F);
}

} // namespace
} // namespace platform_test

#include "layout/LayoutTestSupport.h"

namespace platform_test {
namespace {

// DejaVu Sans: 2048 units, ascent 1901, descent 483, no line gap.
constexpr float ascent = 1901.0F / 2048.0F;
constexpr float height = 2384.0F / 2048.0F;

TEST(LayoutMetrics, OneLineOfLatinIsAsWideAsItsAdvancesAndAsHighAsItsFont) {
    const auto layout = makeLayout(u"Hello");
    const DWRITE_TEXT_METRICS metrics = metricsOf(*layout);
    // hb-shape: H 1540, e 1260, l 569, l 569, o 1253.
    EXPECT_FLOAT_EQ(20.0F * 5191.0F / 2048.0F, metrics.width);
    EXPECT_FLOAT_EQ(20.0F * height, metrics.height);
    EXPECT_EQ(1U, metrics.lineCount);
    const auto lines = linesOf(*layout);
    ASSERT_EQ(1U, lines.size());
    EXPECT_FLOAT_EQ(20.0F * ascent, lines[0].baseline);
}

} // namespace
} // namespace platform_test

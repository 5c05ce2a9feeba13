#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <gtest/gtest.h>

#include <thread>

namespace platform::test {
namespace {

constexpr int threadCount = 4;

/// A sum over everything a face answers, so that two faces can be compared.
double summary(const CFontFace& face) {
    double sum = 0;
    for (char32_t c = 0; c < 0x3000; ++c) {
        sum += face.nominalGlyph(c);
    }
    for (unsigned glyph = 0; glyph < face.glyphCount(); ++glyph) {
        const auto id = static_cast<std::uint16_t>(glyph);
        const GlyphBounds& bounds = face.glyphBounds(id);
        sum += face.advance(id);
        sum += bounds.empty() ? 0 : bounds.xMin + 2 * bounds.yMin + 3 * bounds.xMax + 4 * bounds.yMax;
    }
    return sum;
}

TEST(FontThreads, FacesAnswerAllThreadsTheSame) {
    // Collections of their own, so that every thread meets empty caches.
    const FontSet set{{{std::string(FONTENGINE_TEST_FONTS) + "/fonts-liberation/LiberationSans-Regular.ttf", 0}}};
    const CFontCollection single(set);
    const double expected = summary(single.families()[0]->fonts()[0]->face());

    const CFontCollection shared(set);
    std::vector<double> sums(threadCount);
    std::vector<std::thread> threads;
    for (double& sum : sums) {
        threads.emplace_back([&shared, &sum] { sum = summary(shared.families()[0]->fonts()[0]->face()); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const double sum : sums) {
        EXPECT_EQ(sum, expected);
    }
}

TEST(FontThreads, NamesAndMatchesAreTheSameForAllThreads) {
    const CFontCollection shared(readFontSet(nullptr));
    std::vector<std::size_t> sums(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t& sum : sums) {
        threads.emplace_back([&shared, &sum] {
            for (const auto& family : shared.families()) {
                for (int weight = 100; weight < 1000; weight += 100) {
                    CFont& font = family->match(static_cast<DWRITE_FONT_WEIGHT>(weight), DWRITE_FONT_STRETCH_NORMAL,
                                                DWRITE_FONT_STYLE_ITALIC);
                    sum += static_cast<std::size_t>(font.weight());
                    sum += textAt(*informationalStrings(font, DWRITE_INFORMATIONAL_STRING_FULL_NAME), 0).size();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_GT(sums[0], 0u);
    for (const std::size_t sum : sums) {
        EXPECT_EQ(sum, sums[0]);
    }
}

} // namespace
} // namespace platform::test

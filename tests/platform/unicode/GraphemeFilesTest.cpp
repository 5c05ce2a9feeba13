#include <array>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fallback/FallbackMapper.h"
#include "fonts/FontCollection.h"
#include "support/LayoutTestSupport.h"
#include "unicode/Graphemes.h"
#include "unicode/UnicodeFile.h"

namespace platform_test {
namespace {

const std::vector<BreakCase>& graphemeCases() {
    static const std::vector<BreakCase> cases = readBreakCasesOfData("GraphemeBreakTest-17.0.0.txt");
    return cases;
}

/// Where graphemes begin, the text's end included.
std::vector<bool> boundariesOf(std::u16string_view text) {
    platform::Graphemes graphemes(text);
    std::vector<bool> boundaries;
    for (std::size_t position = 0; position < text.size(); ++position) {
        boundaries.push_back(graphemes.isBoundary(position));
    }
    boundaries.push_back(true);
    return boundaries;
}

/// Characters that graphemes are made of in unlike ways, each with what a font is likely to lack.
const std::u32string& ingredients() {
    static const std::u32string characters =
        U"aZ \u00E9-(\u03B1\u0416\u05D0\u05B0\u0628\u064E\u0600\u0915\u093F\u094D\u0937\u0903\u0E01\u0E33\u0E34"
        U"\u1100\u1161\u11A8\uAC00\u0300\u0308\u20DD\u200D\u200C\u200B\u200E\u202E\u202C\u2067\u2069\uFE0E\uFE0F"
        U"\u00AD\u2060\u3042\u3099\u6F22\u2764\u2603\u0378\uE000\u1000\u103B\u1780\u17D2\u0D4E\u0D15\t\r\n\u2028"
        U"\U0001F468\U0001F3FD\U0001F1E9\U0001F1EA\U000E0100\U0001D400\U00011131\U000110BD\U00020000";
    return characters;
}

std::vector<std::u16string> randomTexts(std::size_t count) {
    std::mt19937 random(20220915);
    std::vector<std::u16string> texts(count);
    for (std::u16string& text : texts) {
        for (auto left = 1 + random() % 12; left > 0; --left) {
            append(text, ingredients()[random() % ingredients().size()]);
            if (random() % 64 == 0) {
                text += static_cast<char16_t>(0xD800 + random() % 0x800);
            }
        }
    }
    return texts;
}

/// Expects every cluster of a layout of `text` to begin where a grapheme does.
void expectWholeClusters(std::u16string_view text, const FormatOptions& options) {
    const std::vector<bool> boundaries = boundariesOf(text);
    std::size_t position = 0;
    const auto layout = makeLayout(text, 0, 0, options);
    for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(*layout)) {
        // CR LF is one grapheme, but DirectWrite's callers see two clusters.
        const bool isPair = position > 0 && text.substr(position - 1, 2) == u"\r\n";
        EXPECT_TRUE(boundaries[position] || isPair) << hexadecimal(text) << "at " << position;
        position += cluster.length;
    }
    EXPECT_EQ(text.size(), position) << hexadecimal(text);
    for (const DrawnCall& run : drawnRuns(*layout)) {
        EXPECT_TRUE(boundaries[run.textPosition]) << hexadecimal(text) << "at " << run.textPosition;
        EXPECT_TRUE(boundaries[run.textPosition + run.text.size()]) << hexadecimal(text);
    }
}

/// Expects every stretch that fallback maps to begin where a grapheme does.
void expectWholeMappings(std::u16string_view text, const std::wstring& family) {
    const std::vector<bool> boundaries = boundariesOf(text);
    platform::CFontFamily* base = platform::CFontCollection::system().findFamily(family);
    for (std::size_t position = 0; position < text.size();) {
        EXPECT_TRUE(boundaries[position]) << hexadecimal(text) << "at " << position;
        const platform::Mapping mapping = platform::FallbackMapper::system().map(
            text, position, text.size() - position, L"en-us", base, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
            DWRITE_FONT_STRETCH_NORMAL);
        ASSERT_NE(0U, mapping.length);
        position += mapping.length;
        ASSERT_LE(position, text.size());
    }
}

TEST(UnicodeGraphemeBreakTest, EveryBoundaryIsUnicodes) {
    EXPECT_EQ(766U, graphemeCases().size());
    for (const BreakCase& expected : graphemeCases()) {
        EXPECT_EQ(expected.breaks, boundariesOf(expected.text)) << hexadecimal(expected.text);
    }
}

TEST(UnicodeGraphemeBreakTest, NoGlyphClusterSplitsAGrapheme) {
    for (const BreakCase& expected : graphemeCases()) {
        expectWholeClusters(expected.text, {});
        expectWholeClusters(expected.text, {.reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT});
    }
}

TEST(UnicodeGraphemeBreakTest, NoFallbackRunSplitsAGrapheme) {
    for (const BreakCase& expected : graphemeCases()) {
        expectWholeMappings(expected.text, L"DejaVu Sans");
        expectWholeMappings(expected.text, L"Noto Sans Khmer");
        expectWholeMappings(expected.text, L"not installed");
    }
}

TEST(UnicodeGraphemeBreakTest, NothingSplitsAGraphemeOfRandomText) {
    for (const std::u16string& text : randomTexts(3000)) {
        expectWholeClusters(text, {});
        expectWholeMappings(text, L"Liberation Sans");
    }
}

} // namespace
} // namespace platform_test

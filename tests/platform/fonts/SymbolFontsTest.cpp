#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

const CFontFace& symbolFace() {
    static auto& collection = *new CFontCollection(FontSet{{{dataPath("Symbol.ttf"), 0}}});
    return collection.fontOfFile(dataPath("Symbol.ttf"), 0)->face();
}

TEST(SymbolFonts, AnswerToLettersAndToTheirPrivatePlaces) {
    for (const char32_t c : {U'H', U'x', U' ', U'\uF048', U'\uF078', U'\uF020'}) {
        EXPECT_TRUE(symbolFace().hasCharacter(c)) << static_cast<unsigned>(c);
    }
    EXPECT_FALSE(symbolFace().hasCharacter(U'A'));
    EXPECT_FALSE(symbolFace().hasCharacter(U'\u0148'));
}

TEST(SymbolFonts, CapHeightIsWhatTheirHMeasures) {
    // The H of the test fonts reaches from 0 to 710.
    EXPECT_EQ(symbolFace().metrics().capHeight, 710);
}

TEST(ColourFonts, OfLayersAreMeasuredByTheirOutlines) {
    static auto& collection = *new CFontCollection(FontSet{{{dataPath("emoji/Colour.ttf"), 0}}});
    const CFontFace& face = collection.fontOfFile(dataPath("emoji/Colour.ttf"), 0)->face();
    ASSERT_TRUE(face.hasCharacter(U'\U0001F600'));
    // Glyph 2 is the rectangle from 50 to 650.
    EXPECT_FLOAT_EQ(face.glyphBounds(2).xMin, 50.0F);
    EXPECT_FLOAT_EQ(face.glyphBounds(2).xMax, 650.0F);
}

} // namespace
} // namespace platform::test

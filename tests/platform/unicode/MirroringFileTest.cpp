#include <string>

#include <gtest/gtest.h>

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "support/LayoutTestSupport.h"
#include "unicode/UnicodeFile.h"

namespace platform_test {
namespace {

/// The glyph that a layout draws for `character` between letters that read in the direction given.
unsigned drawnGlyph(char32_t character, bool rightToLeft) {
    std::u16string text = rightToLeft ? u"\u202E" : u"\u202D";
    append(text, character);
    text += u"\u202C";
    for (const DrawnCall& run : drawnRuns(*makeLayout(text))) {
        if (run.textPosition <= 1 && 1 < run.textPosition + run.text.size() && !run.glyphs.empty()) {
            EXPECT_EQ(rightToLeft ? 1U : 0U, run.bidiLevel & 1U);
            return run.glyphs.at(run.clusterMap.at(1 - run.textPosition));
        }
    }
    ADD_FAILURE() << "nothing drawn";
    return 0;
}

TEST(UnicodeBidiMirroring, PairedCharactersAreDrawnMirroredInTextFromRightToLeft) {
    platform::CFontFace& face =
        platform::CFontCollection::system()
            .findFamily(L"DejaVu Sans")
            ->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL)
            .face();
    unsigned compared = 0;
    forEachLine("BidiMirroring.txt", [&](std::string_view line) {
        const auto fields = split(line, ';');
        const char32_t character = numberOf(fields.at(0), 16);
        const char32_t mirrored = numberOf(fields.at(1), 16);
        const unsigned own = face.nominalGlyph(character);
        const unsigned other = face.nominalGlyph(mirrored);
        if (own == 0 || other == 0) {
            // Not in this font: fallback's business.
            return;
        }
        ++compared;
        EXPECT_EQ(own, drawnGlyph(character, false)) << line;
        EXPECT_EQ(other, drawnGlyph(character, true)) << line;
    });
    EXPECT_EQ(218U, compared);
}

} // namespace
} // namespace platform_test

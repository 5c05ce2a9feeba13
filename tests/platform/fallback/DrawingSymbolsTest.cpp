#include "fallback/DrawingSymbols.h"

#include <gtest/gtest.h>

#include "fallback/FallbackTestSupport.h"

// Of the symbols of drawings, Noto Sans Symbols has 40, the CJK fonts 27 and DejaVu Sans Mono 5. It lacks the arrow of
// a depth, which DejaVu Sans has, and the mark of a position, which Noto Sans Symbols2 has:
//   fc-list ":charset=2300 2334 2335" family; fc-list :charset=21a7 family; fc-list :charset=2316 family

namespace platform {
namespace {

std::wstring fontOf(const std::u16string& text, std::size_t position) {
    return familyName(Question{text}.at(position).font);
}

TEST(FallbackDrawingSymbols, takeTheFontThatHasMostOfThem) {
    for (const char16_t symbol : std::u16string(u"\u2300\u2334\u2335\u2313\u232D\u232F\u2330\u23E4\u23E5\u24C2")) {
        EXPECT_EQ(fontOf({symbol}, 0), L"Noto Sans Symbols") << std::hex << static_cast<unsigned>(symbol);
    }
    EXPECT_EQ(fontOf(u"\u21A7", 0), L"DejaVu Sans");
    EXPECT_EQ(fontOf(u"\u2316", 0), L"Noto Sans Symbols2");
}

TEST(FallbackDrawingSymbols, areDrawnAlikeWhateverStandsBesideThem) {
    // Digits, other symbols, Han (whose fonts have the arc of a profile and the circled letters), Hebrew.
    for (const std::u16string beside : {u"20", u"\u2605", u"\u6f22", u"\u05d0", u"\u2316", u"\u21A7", u"\u2335"}) {
        for (const char16_t symbol : std::u16string(u"\u2300\u2312\u2334\u23E5\u24C2")) {
            EXPECT_EQ(fontOf(beside + symbol, beside.size()), L"Noto Sans Symbols");
            EXPECT_EQ(fontOf(symbol + beside, 0), L"Noto Sans Symbols");
        }
    }
    EXPECT_EQ(Question{u"\u2334\u230012 \u2335\u230020"}.stretches(),
              L"Noto Sans Symbols:2 Liberation Sans:3 Noto Sans Symbols:2 Liberation Sans:2 ");
}

TEST(FallbackDrawingSymbols, stayInABaseFamilyThatHasThem) {
    Question question{u"\u230020 \u2334"};
    question.family = L"DejaVu Sans";
    EXPECT_EQ(question.stretches(), L"DejaVu Sans:4 Noto Sans Symbols:1 ");
}

TEST(FallbackDrawingSymbols, keepTheWeightAskedFor) {
    Question question{u"\u2300"};
    question.weight = DWRITE_FONT_WEIGHT_BOLD;
    EXPECT_EQ(familyName(question.at().font), L"Noto Sans Symbols");
    EXPECT_EQ(question.at().font->weight(), DWRITE_FONT_WEIGHT_BOLD);
}

TEST(FallbackDrawingSymbols, areThoseOfDrawingsAlone) {
    EXPECT_TRUE(std::is_sorted(drawingSymbols.begin(), drawingSymbols.end()));
    EXPECT_EQ(drawingSymbols.front(), 0x21A7U);
    EXPECT_EQ(drawingSymbols.back(), 0x24CFU);
    for (const char32_t symbol : {U'\u25CE', U'\u25CB', U'\u2220', U'\u2460', U'\u24D0', U'\u2301', U'A'}) {
        EXPECT_FALSE(isDrawingSymbol(symbol));
    }
}

} // namespace
} // namespace platform

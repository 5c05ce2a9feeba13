#include "support/LayoutTestSupport.h"

// Orders are worked out by hand from Unicode's bidi algorithm. Lengths are font units: DejaVu Sans at its design size
// is as wide as its characters' advances; it kerns none of the letters here.

namespace platform_test {
namespace {

using Texts = std::vector<std::u16string>;

constexpr auto leftToRight = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
constexpr auto rightToLeft = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;
constexpr float box = 50000.0F;

float widthOf(std::u16string_view text) {
    return designWidth("DejaVu Sans", text);
}

Reference<IDWriteTextLayout> paragraph(std::u16string_view text, DWRITE_READING_DIRECTION reading, float width = box) {
    return makeLayout(text, width, 0, {.size = 2048.0F, .reading = reading});
}

/// Expects a line of runs that stand side by side from `left` on.
void expectLine(const Texts& expected, float left, const std::vector<PlacedRun>& line) {
    EXPECT_EQ(expected, visualTexts(line));
    for (const PlacedRun& run : line) {
        EXPECT_NEAR(left, run.left, 0.05F);
        left += widthOf(run.text);
        EXPECT_NEAR(left, run.right, 0.05F);
    }
}

/// Expects text on one line in both readings: at the box's left edge, and at its right one.
void expectOrder(std::u16string_view text, const Texts& inLeftToRight, const Texts& inRightToLeft) {
    const auto first = placedRuns(*paragraph(text, leftToRight));
    ASSERT_EQ(1U, first.size());
    expectLine(inLeftToRight, 0.0F, first[0]);
    const auto second = placedRuns(*paragraph(text, rightToLeft));
    ASSERT_EQ(1U, second.size());
    float width = 0.0F;
    for (const std::u16string& run : inRightToLeft) {
        width += widthOf(run);
    }
    expectLine(inRightToLeft, box - width, second[0]);
}

TEST(BidiParagraphs, NumbersBetweenRightToLeftWordsStandBetweenThem) {
    expectOrder(u"abc אבג 123 דהו def", {u"abc ", u" דהו", u"123", u"אבג ", u" ", u"def"},
                {u"def", u" דהו ", u"123", u"אבג ", u" ", u"abc"});
}

TEST(BidiParagraphs, SeveralNumbersBehindAWordFollowEachOtherToTheLeft) {
    expectOrder(u"אב 12 34", {u"34", u" ", u"12", u"אב "}, {u"34", u" ", u"12", u"אב "});
}

TEST(BidiParagraphs, NumbersKeepTheirSeparatorsAndSigns) {
    expectOrder(u"אב 03-12.5", {u"03-12.5", u"אב "}, {u"03-12.5", u"אב "});
    // A currency sign and a per cent sign belong to their numbers, a plus sign between spaces to neither.
    expectOrder(u"₪12.50 + 3%", {u"₪12.50 + 3%"}, {u"3%", u" + ", u"₪12.50"});
    // A hyphen between a letter and a number is no part of the number.
    expectOrder(u"אב-12", {u"12", u"אב-"}, {u"12", u"אב-"});
}

TEST(BidiParagraphs, ArabicDigitsReadLeftToRightInBothReadings) {
    // The digits are of the Arabic script, so the space behind them is too.
    expectOrder(u"אב ١٢/٣ גד", {u"גד", u" ", u"١٢/٣", u"אב "}, {u"גד", u" ", u"١٢/٣", u"אב "});
    // Alone they lift themselves off the paragraph's level.
    const auto alone = placedRuns(*paragraph(u"١٢", leftToRight));
    EXPECT_EQ(2U, alone.at(0).at(0).level);
}

TEST(BidiParagraphs, EmbeddingsNest) {
    // Inside the embedding: letters at level 1, number and Latin at 2.
    expectOrder(u"a \u202Bבג 12 x\u202C y", {u"a ", u"x", u" ", u"12", u"בג ", u" y"},
                {u"y", u" ", u"x", u" ", u"12", u"בג ", u" ", u"a"});
    // Left to right within right to left, between letters: nothing here is at the level of a right-to-left paragraph.
    expectOrder(u"a\u202Bאב\u202Acd גד\u202Cהו\u202Cz", {u"a", u"הו", u"cd ", u"גד", u"אב", u"z"},
                {u"a", u"הו", u"cd ", u"גד", u"אב", u"z"});
}

TEST(BidiParagraphs, IsolatesLeaveTheirNeighboursAlone) {
    expectOrder(u"12 \u2067אב 34\u2069 56", {u"12 ", u"34", u"אב ", u" 56"}, {u"56", u" ", u"34", u"אב ", u" ", u"12"});
    // The same without isolates: the last number takes the word's side.
    expectOrder(u"12 אב 34 56", {u"12 ", u"56", u" ", u"34", u"אב "}, {u"56", u" ", u"34", u" אב ", u"12"});
    // The first strong letter decides for the isolate, which stands between the Latin words like a space.
    expectOrder(u"x \u2068אב 1\u2069 y", {u"x ", u"1", u"אב ", u" ", u"y"}, {u"x ", u"1", u"אב ", u" ", u"y"});
}

TEST(BidiParagraphs, OverridesTurnEverything) {
    const auto lines = placedRuns(*paragraph(u"a\u202Eb12\u202Cc", leftToRight));
    ASSERT_EQ(1U, lines.size());
    expectLine({u"a", u"b12", u"c"}, 0.0F, lines[0]);
    EXPECT_EQ(1U, lines[0][1].level);
}

TEST(BidiParagraphs, BracketsReadAsTheParagraphWhereTheirTextOrTheTextBeforeThemDoes) {
    expectOrder(u"א (b) ג", {u"א", u" (", u"b) ", u"ג"}, {u"ג", u") ", u"b", u"א ("});
    expectOrder(u"a (ב) c", {u"a (", u"ב", u") ", u"c"}, {u"c", u"ב) ", u" (", u"a"});
    // Otherwise they read as both.
    expectOrder(u"א (ב) c", {u"א (ב)", u" ", u"c"}, {u"c", u"א (ב) "});
}

TEST(BidiParagraphs, EveryLineIsReorderedByItself) {
    const float width = widthOf(u"abc אבג ") + 100.0F;
    const auto lines = placedRuns(*paragraph(u"abc אבג דהו 12 x", leftToRight, width));
    ASSERT_EQ(2U, lines.size());
    // The space that the line broke at hangs over its end.
    expectLine({u"abc ", u"אבג", u" "}, 0.0F, lines[0]);
    expectLine({u"12", u"דהו ", u" ", u"x"}, 0.0F, lines[1]);
}

TEST(BidiParagraphs, ALineSeparatorDoesNotEndAnEmbeddingAndAParagraphSeparatorDoes) {
    const auto levels = [](std::u16string_view text) {
        std::vector<unsigned> found;
        for (const auto& line : placedRuns(*paragraph(text, leftToRight))) {
            for (const PlacedRun& run : line) {
                found.push_back(run.level);
            }
        }
        return found;
    };
    EXPECT_EQ((std::vector<unsigned>{2, 2, 0}), levels(u"\u202Bab\u2028cd\u2029ef"));
    // Nor does it part a number from the word before it.
    EXPECT_EQ((std::vector<unsigned>{1, 2}), levels(u"אב\u202812"));
    EXPECT_EQ((std::vector<unsigned>{1, 0}), levels(u"אב\u202912"));
}

TEST(BidiParagraphs, LinesBehindSeparatorsStartAtTheParagraphsSide) {
    for (const std::u16string_view separator : {u"\u2028", u"\u2029", u"\n"}) {
        const std::u16string text = u"אב 1" + std::u16string(separator) + u"x ג";
        const auto lines = placedRuns(*paragraph(text, rightToLeft));
        ASSERT_EQ(2U, lines.size());
        expectLine({u"1", u"אב "}, box - widthOf(u"אב 1"), lines[0]);
        expectLine({u"ג", u" ", u"x"}, box - widthOf(u"x ג"), lines[1]);
    }
}

} // namespace
} // namespace platform_test

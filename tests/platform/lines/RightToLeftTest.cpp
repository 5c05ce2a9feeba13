#include "fonts/FontFace.h"
#include "support/LayoutTestSupport.h"

// Lengths are font units: DejaVu Sans at its design size is as wide as its characters' advances; it kerns none of the
// letters here.

namespace platform_test {
namespace {

using Texts = std::vector<std::u16string>;

constexpr auto rightToLeft = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;
constexpr float box = 10000.0F;

float widthOf(std::u16string_view text) {
    return designWidth("DejaVu Sans", text);
}

Reference<IDWriteTextLayout> paragraph(std::u16string_view text, float width = box,
                                       DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP) {
    return makeLayout(text, width, 0, {.size = 2048.0F, .wrapping = wrapping, .reading = rightToLeft});
}

/// The left and right ends of the words on each line, without the space that hangs over its left end.
std::vector<std::pair<float, float>> edges(IDWriteTextLayout& layout) {
    std::vector<std::pair<float, float>> found;
    const auto metrics = linesOf(layout);
    for (const auto& line : placedRuns(layout)) {
        const bool hangs = metrics[found.size()].trailingWhitespaceLength > 0;
        found.emplace_back(line.front().left + (hangs ? widthOf(u" ") : 0.0F), line.back().right);
    }
    return found;
}

void expectEdges(std::vector<std::pair<float, float>> expected, DWRITE_TEXT_ALIGNMENT alignment) {
    const auto layout = paragraph(u"אבג דהו זחט יכל מנס");
    ASSERT_EQ(S_OK, layout->SetTextAlignment(alignment));
    ASSERT_EQ((std::vector<unsigned>{8, 8, 3}), lineLengths(*layout));
    const auto found = edges(*layout);
    ASSERT_EQ(expected.size(), found.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(expected[i].first, found[i].first, 1e-2F) << i;
        EXPECT_NEAR(expected[i].second, found[i].second, 1e-2F) << i;
    }
}

TEST(RightToLeft, WrappedLinesStandWhereTheirAlignmentSays) {
    const float first = widthOf(u"אבג דהו");
    const float second = widthOf(u"זחט יכל");
    const float third = widthOf(u"מנס");
    expectEdges({{box - first, box}, {box - second, box}, {box - third, box}}, DWRITE_TEXT_ALIGNMENT_LEADING);
    expectEdges({{0.0F, first}, {0.0F, second}, {0.0F, third}}, DWRITE_TEXT_ALIGNMENT_TRAILING);
    expectEdges({{(box - first) / 2, (box + first) / 2},
                 {(box - second) / 2, (box + second) / 2},
                 {(box - third) / 2, (box + third) / 2}},
                DWRITE_TEXT_ALIGNMENT_CENTER);
    expectEdges({{0.0F, box}, {0.0F, box}, {box - third, box}}, DWRITE_TEXT_ALIGNMENT_JUSTIFIED);
}

TEST(RightToLeft, LatinWordsWrapInReadingOrderToo) {
    const std::u16string text = u"abc def ghi";
    const auto layout = paragraph(text, widthOf(u"abc def") + 1.0F);
    EXPECT_EQ((Texts{u"abc def ", u"ghi"}), lineTexts(text, *layout));
    const auto lines = placedRuns(*layout);
    // The space at the end of the line is at the paragraph's level and so left of the words.
    EXPECT_EQ((Texts{u" ", u"abc def"}), visualTexts(lines[0]));
    EXPECT_NEAR(-widthOf(u" ") + 1.0F, lines[0][0].left, 1e-2F);
    EXPECT_NEAR(layout->GetMaxWidth(), lines[1][0].right, 1e-2F);
}

TEST(RightToLeft, LongWordsBreakWhereTheWrappingSays) {
    const std::u16string text = u"אב גדהוזח";
    const float narrow = widthOf(u"גדהו") + 1.0F;
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_EMERGENCY_BREAK}) {
        const auto layout = paragraph(text, narrow, wrapping);
        EXPECT_EQ((Texts{u"אב ", u"גדהו", u"זח"}), lineTexts(text, *layout));
        EXPECT_NEAR(narrow, edges(*layout)[2].second, 1e-2F);
    }
    EXPECT_EQ((Texts{u"אב גד", u"הוזח"}),
              lineTexts(text, *paragraph(text, widthOf(u"אב גד") + 1.0F, DWRITE_WORD_WRAPPING_CHARACTER)));
    const auto whole = paragraph(text, narrow, DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_EQ((Texts{u"אב ", u"גדהוזח"}), lineTexts(text, *whole));
    // What is too long stands out on the left.
    EXPECT_NEAR(narrow, edges(*whole)[1].second, 1e-2F);
    EXPECT_NEAR(narrow - widthOf(u"גדהוזח"), edges(*whole)[1].first, 1e-2F);
    EXPECT_EQ((Texts{text}), lineTexts(text, *paragraph(text, narrow, DWRITE_WORD_WRAPPING_NO_WRAP)));
}

// None of these Arabic letters joins the next.

TEST(RightToLeft, AHyphenShowsLeftOfTheWordThatBreaks) {
    const std::u16string text = u"دور\u00ADزرد";
    const auto layout = paragraph(text, widthOf(u"دور\u2010") + 1.0F, DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_EQ((Texts{u"دور\u00AD", u"زرد"}), lineTexts(text, *layout));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(2U, runs.size());
    EXPECT_EQ(1U, runs[0].bidiLevel);
    ASSERT_EQ(4U, runs[0].glyphs.size());
    EXPECT_EQ(regularFace("DejaVu Sans").nominalGlyph(U'\u2010'), runs[0].glyphs.back());
    EXPECT_NEAR(layout->GetMaxWidth(), runs[0].x, 1e-2F);
    EXPECT_NEAR(widthOf(u"دور\u2010"), runs[0].advance(), 1e-2F);
    EXPECT_NEAR(widthOf(u"دور\u2010"), metricsOf(*layout).width, 1e-2F);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_NEAR(widthOf(u"دورزرد"), metricsOf(*layout).width, 1e-2F);
}

TEST(RightToLeft, AHyphenStaysWithItsWordInALineOfTheOtherReading) {
    const std::u16string text = u"x دور\u00ADزرد";
    const float width = widthOf(u"x دور\u2010") + 1.0F;
    const auto layout = makeLayout(text, width, 0, {.size = 2048.0F});
    ASSERT_EQ((Texts{u"x دور\u00AD", u"زرد"}), lineTexts(text, *layout));
    const auto lines = placedRuns(*layout);
    EXPECT_EQ((Texts{u"x ", u"دور\u00AD"}), visualTexts(lines[0]));
    EXPECT_EQ(1U, lines[0][1].level);
    EXPECT_NEAR(widthOf(u"x دور\u2010"), lines[0][1].right, 1e-2F);
}

TEST(RightToLeft, HebrewWordsAreHyphenatedAtSoftHyphens) {
    // Unicode keeps a hyphen-minus with the Hebrew letter before it (up to version 15 soft hyphens too).
    const std::u16string text = u"אבג\u00ADדהו";
    const float width = widthOf(u"אבג\u2010") + 1.0F;
    EXPECT_EQ((Texts{u"אבג\u00AD", u"דהו"}), lineTexts(text, *paragraph(text, width, DWRITE_WORD_WRAPPING_WHOLE_WORD)));
    const std::u16string minus = u"אבג-abc";
    EXPECT_EQ((Texts{minus}), lineTexts(minus, *paragraph(minus, width, DWRITE_WORD_WRAPPING_WHOLE_WORD)));
}

TEST(RightToLeft, TabStopsAreCountedFromTheRightEdge) {
    // The stop is four times the size.
    for (const std::u16string_view text : {u"אב\tגד", u"ab\tcd"}) {
        const auto layout = paragraph(text, 20000.0F);
        const auto lines = placedRuns(*layout);
        ASSERT_EQ(1U, lines.size());
        ASSERT_EQ((Texts{std::u16string(text.substr(3)), std::u16string(text.substr(0, 2))}), visualTexts(lines[0]));
        EXPECT_NEAR(20000.0F, lines[0][1].right, 1e-2F);
        EXPECT_NEAR(20000.0F - 8192.0F, lines[0][0].right, 1e-2F);
        EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
        EXPECT_NEAR(0.0F, placedRuns(*layout)[0][0].left, 1e-2F);
        EXPECT_NEAR(8192.0F + widthOf(text.substr(3)), placedRuns(*layout)[0][1].right, 1e-2F);
    }
}

TEST(RightToLeft, HangingWhitespaceIsUnderlinedBeyondTheLeftEdge) {
    const auto layout = paragraph(u"אבג   דהו", 5000.0F);
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 6}));
    EXPECT_EQ((std::vector<unsigned>{6, 3}), lineLengths(*layout));
    for (const auto& [alignment, right] :
         {std::pair{DWRITE_TEXT_ALIGNMENT_LEADING, 5000.0F}, std::pair{DWRITE_TEXT_ALIGNMENT_TRAILING, widthOf(u"אבג")},
          std::pair{DWRITE_TEXT_ALIGNMENT_CENTER, (5000.0F + widthOf(u"אבג")) / 2}}) {
        EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
        Recorder recorder;
        EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
        const auto bars = recorder.ofKind(DrawnCall::Underline);
        ASSERT_EQ(1U, bars.size());
        EXPECT_NEAR(widthOf(u"אבג   "), bars[0].width, 1e-2F);
        EXPECT_NEAR(right - widthOf(u"אבג   "), bars[0].x, 1e-2F);
        EXPECT_EQ(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT, bars[0].reading);
    }
}

TEST(RightToLeft, SpacesAtTheStartTakeRoomOnTheRight) {
    const auto lines = placedRuns(*paragraph(u"  אב"));
    EXPECT_EQ((Texts{u"  אב"}), visualTexts(lines.at(0)));
    const auto latin = placedRuns(*paragraph(u"  ab"));
    EXPECT_EQ((Texts{u"ab", u"  "}), visualTexts(latin.at(0)));
    EXPECT_NEAR(box, latin[0][1].right, 1e-2F);
}

} // namespace
} // namespace platform_test

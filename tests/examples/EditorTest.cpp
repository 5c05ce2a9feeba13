#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "../FontEngine/RealFonts.h"
#include "editor/Editor.h"

namespace {

// Liberation Sans has capitals of 1409 units and an H that is 1479 wide (OS/2 and hmtx tables).
constexpr double widthOfH = 1479.0 * 10.0 / 1409.0;
constexpr double precision = 1e-3;

// Hebrew alef, bet, gimel.
const std::wstring hebrew = L"\x05D0\x05D1\x05D2";

using Positions = std::vector<std::uint32_t>;

class EditorTest : public RealFontsTest {
protected:
    Editor edit(const std::wstring& text, const fonts::SParagraphLayoutOptions& options = {}) {
        return {*engine, render::makeToken(text, L"Liberation Sans", 10.0F, {}), options};
    }

    Editor editRightToLeft(const std::wstring& text) {
        return edit(text, {.maxWidth = 200.0, .direction = fonts::EReadingDirection::RightToLeft});
    }

    static void press(Editor& editor, std::initializer_list<Move> moves) {
        for (const Move where : moves) {
            editor.move(where);
        }
    }

    // Where the caret comes to until it moves no more.
    static Positions stops(Editor& editor, Move where) {
        Positions positions;
        for (std::size_t presses = 0; presses <= 2 * editor.text().length(); ++presses) {
            const fonts::SCaret before = editor.caret();
            editor.move(where);
            const fonts::SCaret after = editor.caret();
            if (after.line == before.line && after.x == before.x) {
                return positions;
            }
            positions.push_back(editor.position());
        }
        ADD_FAILURE() << "no end";
        return positions;
    }

    // How many presses it takes until the caret moves no more, each to the right or the left or into the next line.
    static std::size_t countPresses(Editor& editor, Move where, int lines, bool isToRight) {
        for (std::size_t presses = 0; presses <= 2 * editor.text().length(); ++presses) {
            const fonts::SCaret before = editor.caret();
            editor.move(where);
            const fonts::SCaret after = editor.caret();
            if (after.line != before.line) {
                EXPECT_EQ(static_cast<int>(before.line) + lines, static_cast<int>(after.line));
            } else if (after.x == before.x) {
                return presses;
            } else {
                EXPECT_EQ(isToRight, after.x > before.x) << "press " << presses;
            }
        }
        ADD_FAILURE() << "no end";
        return 0;
    }
};

TEST_F(EditorTest, TypedTextStandsBeforeTheCaret) {
    Editor editor = edit(L"");
    editor.insert(L"Hi");
    editor.move(Move::Left);
    editor.insert(L"e");
    EXPECT_EQ(L"Hei", editor.text());
    EXPECT_EQ(2U, editor.position());
}

TEST_F(EditorTest, NothingHappensInAnEmptyText) {
    Editor editor = edit(L"");
    press(editor, {Move::Left, Move::Right, Move::WordLeft, Move::WordRight, Move::Up, Move::Down, Move::LineStart,
                   Move::LineEnd});
    editor.deleteBackward();
    editor.deleteForward();
    editor.drag({-5.0, 5.0}, {50.0, -50.0});
    EXPECT_EQ(0U, editor.position());
    EXPECT_EQ(0.0, editor.caret().x);
    EXPECT_TRUE(editor.selectionRects().empty());
}

// Of e and acute hb-shape makes one glyph, of x and acute two; both are one cluster. Then a character beyond the first
// plane, which is two units.
TEST_F(EditorTest, TheCaretGoesOverWholeClusters) {
    Editor editor = edit(std::wstring(L"e\x0301x\x0301") + wchar_t{0xD835} + wchar_t{0xDC00} + L"H");
    EXPECT_EQ((Positions{2, 4, 6, 7}), stops(editor, Move::Right));
    EXPECT_EQ((Positions{6, 4, 2, 0}), stops(editor, Move::Left));
}

TEST_F(EditorTest, WholeClustersAreDeleted) {
    Editor editor = edit(std::wstring(L"e\x0301x\x0301") + wchar_t{0xD835} + wchar_t{0xDC00} + L"H");
    editor.deleteForward();
    EXPECT_EQ(4U, editor.text().rfind(L'H'));
    press(editor, {Move::LineEnd, Move::Left});
    editor.deleteBackward();
    EXPECT_EQ(L"x\x0301H", editor.text());
    editor.deleteBackward();
    EXPECT_EQ(L"H", editor.text());
    editor.deleteBackward();
    EXPECT_EQ(L"H", editor.text());
}

// DejaVu Sans joins f and i (hb-shape): one cluster.
TEST_F(EditorTest, TypingGoesOnInsideALigature) {
    Editor editor(*engine, render::makeToken(L"i", L"DejaVu Sans", 10.0F, {}), {});
    editor.insert(L"f");
    ASSERT_EQ(1U, editor.layout().clusters().size());
    EXPECT_EQ(1U, editor.position());
    editor.insert(L"x");
    EXPECT_EQ(L"fxi", editor.text());
    editor.deleteBackward();
    editor.deleteBackward();
    EXPECT_EQ(L"i", editor.text());
}

TEST_F(EditorTest, LeftGoesForwardInHebrew) {
    Editor editor = editRightToLeft(hebrew + L"\n" + hebrew);
    EXPECT_NEAR(200.0, editor.caret().x, precision);
    EXPECT_EQ((Positions{1, 2, 3, 4, 5, 6, 7}), stops(editor, Move::Left));
    EXPECT_EQ((Positions{6, 5, 4, 3, 2, 1, 0}), stops(editor, Move::Right));
    editor.deleteForward();
    EXPECT_EQ(hebrew.substr(1) + L"\n" + hebrew, editor.text());
}

// On the screen: a b gimel bet alef c d.
TEST_F(EditorTest, TheCaretKeepsItsWayThroughHebrewInLatin) {
    Editor editor = edit(L"ab" + hebrew + L"cd");
    EXPECT_EQ((Positions{1, 2, 4, 3, 2, 6, 7}), stops(editor, Move::Right));
    EXPECT_EQ((Positions{6, 5, 3, 4, 5, 1, 0}), stops(editor, Move::Left));
}

TEST_F(EditorTest, ThePlaceWhereDirectionsMeetIsWhereTheCaretCameFrom) {
    Editor editor = edit(L"ab" + hebrew + L"cd");
    press(editor, {Move::Right, Move::Right});
    EXPECT_EQ(2U, editor.position());
    EXPECT_FALSE(editor.caret().isRightToLeft);
    const double behindLatin = editor.caret().x;
    press(editor, {Move::Right, Move::Right, Move::Right});
    EXPECT_EQ(2U, editor.position());
    EXPECT_TRUE(editor.caret().isRightToLeft);
    const MbRect alef = editor.layout().clusters()[2].rect;
    EXPECT_NEAR(alef.xmax, editor.caret().x, precision);
    EXPECT_GT(editor.caret().x, behindLatin);
    // What is typed there begins the Hebrew word.
    editor.insert(L"\x05D3");
    EXPECT_EQ(L"ab\x05D3" + hebrew + L"cd", editor.text());
}

TEST_F(EditorTest, ASingleHebrewLetterIsPassedToo) {
    Editor editor = edit(L"a\x05D0z");
    EXPECT_EQ((Positions{1, 1, 3}), stops(editor, Move::Right));
    EXPECT_EQ((Positions{2, 2, 0}), stops(editor, Move::Left));
}

TEST_F(EditorTest, UpAndDownKeepTheirX) {
    Editor editor = edit(L"HHHH\nH\nHHHH");
    press(editor, {Move::Right, Move::Right, Move::Right, Move::Down});
    EXPECT_EQ(6U, editor.position());
    editor.move(Move::Down);
    EXPECT_EQ(10U, editor.position());
    EXPECT_NEAR(3.0 * widthOfH, editor.caret().x, precision);
    editor.move(Move::Down);
    EXPECT_EQ(10U, editor.position());
    press(editor, {Move::Up, Move::Up, Move::Up});
    EXPECT_EQ(3U, editor.position());
    // Moved along the line, it keeps another.
    press(editor, {Move::Down, Move::LineEnd, Move::Down});
    EXPECT_EQ(8U, editor.position());
}

TEST_F(EditorTest, UpAndDownFindTheLinesThatOverlap) {
    Editor editor = edit(L"H\nH\nH", {.lineSpacing = {fonts::SLineSpacing::EKind::Exactly, 4.0}});
    EXPECT_EQ((Positions{2, 4}), stops(editor, Move::Down));
    EXPECT_EQ((Positions{2, 0}), stops(editor, Move::Up));
}

TEST_F(EditorTest, NewlinesAreTypedPassedAndDeleted) {
    Editor editor = edit(L"");
    editor.insert(L"a\n");
    EXPECT_EQ(1U, editor.caret().line);
    EXPECT_EQ(0.0, editor.caret().x);
    editor.insert(L"b");
    EXPECT_EQ((Positions{2, 1, 0}), stops(editor, Move::Left));
    EXPECT_EQ((Positions{1, 2, 3}), stops(editor, Move::Right));
    press(editor, {Move::Up, Move::LineEnd});
    EXPECT_EQ(1U, editor.position());
    EXPECT_EQ(0U, editor.caret().line);
    editor.deleteForward();
    EXPECT_EQ(L"ab", editor.text());
}

// Four H and a blank fit into the width of five H, the next word does not.
TEST_F(EditorTest, WhereALineIsWrappedNoStepIsLost) {
    Editor editor = edit(L"HHHH HHHH", {.maxWidth = 5.0 * widthOfH});
    ASSERT_EQ(2U, editor.layout().lines().size());
    EXPECT_EQ((Positions{1, 2, 3, 4, 5, 6, 7, 8, 9}), stops(editor, Move::Right));
    EXPECT_EQ((Positions{8, 7, 6, 5, 4, 3, 2, 1, 0}), stops(editor, Move::Left));
    editor.move(Move::LineEnd);
    EXPECT_EQ(5U, editor.position());
    EXPECT_EQ(0U, editor.caret().line);
    editor.move(Move::Right);
    EXPECT_EQ(6U, editor.position());
    press(editor, {Move::Left});
    EXPECT_EQ(5U, editor.position());
    EXPECT_EQ(1U, editor.caret().line);
}

// Words and numbers of two directions, with brackets; some lines begin in the one, some in the other.
TEST_F(EditorTest, EachPressGoesOnAlongTheScreen) {
    for (const auto direction : {fonts::EReadingDirection::LeftToRight, fonts::EReadingDirection::RightToLeft}) {
        Editor editor =
            edit(L"Plan 3: " + hebrew + L" 12 " + hebrew + L" (a" + hebrew + L"b) " + hebrew + L"\n" + hebrew + L" HH",
                 {.maxWidth = 5.0 * widthOfH, .direction = direction});
        ASSERT_LT(4U, editor.layout().lines().size());
        const bool isLeftToRight = direction == fonts::EReadingDirection::LeftToRight;
        const Move forward = isLeftToRight ? Move::Right : Move::Left;
        const Move back = isLeftToRight ? Move::Left : Move::Right;
        stops(editor, back);
        const std::size_t presses = countPresses(editor, forward, 1, isLeftToRight);
        // Where the text reads to the left, the last line's left end is before "HH", the first one's right end behind
        // "3".
        EXPECT_EQ(editor.text().length() - (isLeftToRight ? 0 : 2), editor.position());
        // One for each cluster, and at most one more where a line was wrapped.
        EXPECT_LE(editor.layout().clusters().size(), presses);
        EXPECT_GE(editor.layout().clusters().size() + editor.layout().lines().size(), presses);
        EXPECT_EQ(presses, countPresses(editor, back, -1, !isLeftToRight));
        EXPECT_EQ(isLeftToRight ? 0U : 6U, editor.position());
    }
}

TEST_F(EditorTest, WordsBeginBehindBlanksAndWhereLinesMayBreak) {
    Editor editor = edit(L"one  two-three, four");
    EXPECT_EQ((Positions{5, 9, 16, 20}), stops(editor, Move::WordRight));
    EXPECT_EQ((Positions{16, 9, 5, 0}), stops(editor, Move::WordLeft));
    Editor toTheLeft = editRightToLeft(hebrew + L" " + hebrew);
    EXPECT_EQ((Positions{4, 7}), stops(toTheLeft, Move::WordLeft));
}

TEST_F(EditorTest, DraggingSelectsWhatLiesBetween) {
    Editor editor = edit(L"HHHH");
    editor.drag({2.6 * widthOfH, -5.0}, {0.6 * widthOfH, -5.0});
    EXPECT_EQ((render::TextRange{1, 2}), editor.selection());
    EXPECT_EQ(1U, editor.position());
    ASSERT_EQ(1U, editor.selectionRects().size());
    EXPECT_NEAR(widthOfH, editor.selectionRects()[0].xmin, precision);
    EXPECT_NEAR(3.0 * widthOfH, editor.selectionRects()[0].xmax, precision);
    editor.insert(L"A");
    EXPECT_EQ(L"HAH", editor.text());
    EXPECT_EQ(2U, editor.position());
}

// On the screen: a b blank gimel bet alef. What is selected, b blank alef, does not stand together.
TEST_F(EditorTest, ASelectionAcrossDirectionsHasTwoRectangles) {
    Editor editor = edit(L"ab " + hebrew);
    const auto clusters = editor.layout().clusters();
    const double middle = (clusters[3].rect.xmin + clusters[3].rect.xmax) / 2.0;
    editor.drag({clusters[1].rect.xmin, -5.0}, {middle - 0.1, -5.0});
    EXPECT_EQ((render::TextRange{1, 3}), editor.selection());
    const std::vector<MbRect> rects = editor.selectionRects();
    ASSERT_EQ(2U, rects.size());
    EXPECT_NEAR(clusters[1].rect.xmin, rects[0].xmin, precision);
    EXPECT_NEAR(clusters[2].rect.xmax, rects[0].xmax, precision);
    EXPECT_NEAR(clusters[3].rect.xmin, rects[1].xmin, precision);
    EXPECT_NEAR(clusters[3].rect.xmax, rects[1].xmax, precision);
}

TEST_F(EditorTest, MovesSelectAndLeaveTheSelection) {
    Editor editor = edit(L"one two");
    editor.move(Move::WordRight, true);
    editor.move(Move::Right, true);
    EXPECT_EQ((render::TextRange{0, 5}), editor.selection());
    editor.move(Move::Left);
    EXPECT_EQ(0U, editor.position());
    EXPECT_EQ(0U, editor.selection().length);
    editor.move(Move::LineEnd, true);
    editor.move(Move::Right);
    EXPECT_EQ(7U, editor.position());
    editor.move(Move::LineStart, true);
    editor.deleteForward();
    EXPECT_EQ(L"", editor.text());
}

} // namespace

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf16.h>

#include "property/Measurer.h"
#include "property/RandomDocuments.h"

namespace property {
namespace {

constexpr int paragraphCount = 2000;

/// The family that draws each unit of the text.
std::vector<std::wstring> familiesOf(const fonts::SLayoutDesc& layout) {
    std::vector<std::wstring> families;
    for (const fonts::SLayoutRun& run : layout.runs) {
        families.insert(families.end(), run.range.length, run.token.fontFamily);
    }
    return families;
}

std::u16string utf16(const std::wstring& text) {
    return {text.begin(), text.end()};
}

/// Where the caret before a position stands, and the cluster behind it.
struct Caret {
    FLOAT x = 0.0F;
    FLOAT y = 0.0F;
    DWRITE_HIT_TEST_METRICS cluster{};
};

Caret caretAt(IDWriteTextLayout& layout, std::size_t position) {
    Caret caret;
    EXPECT_EQ(S_OK,
              layout.HitTestTextPosition(static_cast<UINT32>(position), FALSE, &caret.x, &caret.y, &caret.cluster));
    return caret;
}

std::vector<UINT32> lineLengths(IDWriteTextLayout& layout) {
    UINT32 count = 0;
    layout.GetLineMetrics(nullptr, 0, &count);
    std::vector<DWRITE_LINE_METRICS> lines(count);
    EXPECT_EQ(S_OK, layout.GetLineMetrics(lines.data(), count, &count));
    std::vector<UINT32> lengths;
    for (const DWRITE_LINE_METRICS& line : lines) {
        lengths.push_back(line.length);
    }
    return lengths;
}

void expectSameLinesAndColumns(IDWriteTextLayout& expected, IDWriteTextLayout& actual, std::size_t length) {
    ASSERT_EQ(lineLengths(expected), lineLengths(actual));
    for (std::size_t position = 0; position <= length; ++position) {
        // Summed by other runs, the last bits may differ.
        ASSERT_NEAR(caretAt(expected, position).x, caretAt(actual, position).x, 1e-3F) << position;
    }
}

void expectSame(IDWriteTextLayout& expected, IDWriteTextLayout& actual, std::size_t length) {
    for (std::size_t position = 0; position <= length; ++position) {
        const Caret first = caretAt(expected, position);
        const Caret second = caretAt(actual, position);
        ASSERT_EQ(first.x, second.x) << position;
        ASSERT_EQ(first.y, second.y) << position;
        ASSERT_EQ(first.cluster.width, second.cluster.width) << position;
        ASSERT_EQ(first.cluster.height, second.cluster.height) << position;
        ASSERT_EQ(first.cluster.textPosition, second.cluster.textPosition) << position;
        ASSERT_EQ(first.cluster.length, second.cluster.length) << position;
        ASSERT_EQ(first.cluster.bidiLevel, second.cluster.bidiLevel) << position;
    }
}

/// What another cut of the text changed in the fonts.
enum class Change { None, OfTheUnseen, OfTheSeen };

Change changeOf(const std::u16string& text, const std::vector<std::wstring>& before,
                const std::vector<std::wstring>& after) {
    Change change = Change::None;
    for (std::size_t unit = 0; unit < text.size(); ++unit) {
        if (before[unit] == after[unit]) {
            continue;
        }
        const auto type = u_charType(text[unit]);
        const bool isUnseen = type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
                              u_hasBinaryProperty(text[unit], UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
        if (!isUnseen) {
            return Change::OfTheSeen;
        }
        change = Change::OfTheUnseen;
    }
    return change;
}

bool isGraphemeBoundary(const std::u16string& text, std::size_t place) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> iterator(
        ubrk_open(UBRK_CHARACTER, "root", text.data(), static_cast<std::int32_t>(text.size()), &error), ubrk_close);
    EXPECT_TRUE(U_SUCCESS(error));
    return ubrk_isBoundary(iterator.get(), static_cast<std::int32_t>(place)) != 0;
}

/// A paragraph, and the same with the token around a place cut in two there.
struct Cut {
    render::CRichTextParagraph whole;
    render::CRichTextParagraph parts;
    std::size_t place = 0;
    /// Whether the place lay within a token.
    bool isCut = false;
};

Cut cutAt(render::CRichTextParagraph paragraph, std::size_t place) {
    Cut cut{paragraph, paragraph, place, false};
    cut.parts.tokens.clear();
    std::size_t start = 0;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        const std::size_t end = start + token.text.size();
        cut.parts.tokens.push_back(token);
        if (start < place && place < end) {
            cut.isCut = true;
            cut.parts.tokens.back().text = token.text.substr(0, place - start);
            cut.parts.tokens.push_back(token);
            cut.parts.tokens.back().text = token.text.substr(place - start);
        }
        start = end;
    }
    return cut;
}

/// Whether a character is drawn in whatever font its neighbours have, where the one asked for lacks it: punctuation,
/// symbols, controls, joiners, selectors and marks.
bool goesWithItsNeighbours(UChar32 character) {
    UErrorCode error = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(character, &error);
    return script == USCRIPT_COMMON || script == USCRIPT_INHERITED || script == USCRIPT_UNKNOWN ||
           u_charType(character) == U_COMBINING_SPACING_MARK;
}

/// Where the characters that go with their neighbours, and that end at `position`, begin.
std::int32_t skipBack(const std::u16string& text, std::int32_t position) {
    while (position > 0) {
        std::int32_t start = position;
        UChar32 character = 0;
        U16_PREV(text.data(), 0, start, character);
        if (!goesWithItsNeighbours(character)) {
            break;
        }
        position = start;
    }
    return position;
}

/// What stands around a cut and may take other fonts for it: such characters on both sides, and the letter before them
/// that they may have been torn from, with what went along with that letter.
std::pair<std::size_t, std::size_t> neighbourhood(const std::u16string& text, std::size_t cut) {
    const auto length = static_cast<std::int32_t>(text.size());
    std::int32_t first = static_cast<std::int32_t>(cut);
    std::int32_t end = first;
    U16_SET_CP_START(text.data(), 0, first);
    for (UChar32 character = 0; end < length;) {
        const std::int32_t start = end;
        U16_NEXT(text.data(), end, length, character);
        if (!goesWithItsNeighbours(character)) {
            end = start;
            break;
        }
    }
    first = skipBack(text, first);
    if (first > 0) {
        U16_BACK_1(text.data(), 0, first);
    }
    first = skipBack(text, first);
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(end)};
}

class CutProperties : public testing::Test {
protected:
    Measurer m_measurer;
    RandomDocuments m_random{13};

    /// A random paragraph cut at a random unit, wherever that is: between words, in a cluster, in a surrogate pair.
    Cut randomCut() {
        render::CRichTextParagraph paragraph = m_random.paragraph();
        const std::size_t place = 1 + m_random.below(textOf(paragraph).size());
        return cutAt(std::move(paragraph), place);
    }

    fonts::SLayoutDesc layOut(const render::CRichTextParagraph& paragraph) const {
        return fonts::CRichTextDocumentProcessor::process(paragraph, m_measurer.engine.get(), 20.0);
    }
};

TEST_F(CutProperties, NothingMovesWherePartsKeepTheirFonts) {
    int cuts = 0;
    int withoutChange = 0;
    int withUnseenChange = 0;
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const Cut cut = randomCut();
        if (!cut.isCut) {
            continue;
        }
        ++cuts;
        const std::u16string text = utf16(textOf(cut.whole));
        const fonts::SLayoutDesc whole = layOut(cut.whole);
        const fonts::SLayoutDesc parts = layOut(cut.parts);
        const float width = 5.0F + static_cast<float>(m_random.below(200));
        EXPECT_EQ(S_OK, whole.pObject->SetMaxWidth(width));
        EXPECT_EQ(S_OK, parts.pObject->SetMaxWidth(width));
        const Change change = changeOf(text, familiesOf(whole), familiesOf(parts));
        if (change == Change::None) {
            ++withoutChange;
            expectSame(*whole.pObject, *parts.pObject, text.size());
        } else if (change == Change::OfTheUnseen && isGraphemeBoundary(text, cut.place)) {
            // A newline or control that a cut takes from its neighbours is the base family's: it may raise its line
            // otherwise, but stands where it stood.
            ++withUnseenChange;
            expectSameLinesAndColumns(*whole.pObject, *parts.pObject, text.size());
        }
    }
    EXPECT_LE(1500, cuts);
    EXPECT_LE(cuts * 85 / 100, withoutChange);
    EXPECT_LE(50, withUnseenChange);
}

TEST_F(CutProperties, FontsChangeOnlyAroundTheCut) {
    int changed = 0;
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const Cut cut = randomCut();
        const std::wstring text = textOf(cut.whole);
        const std::vector<std::wstring> whole = familiesOf(layOut(cut.whole));
        const std::vector<std::wstring> parts = familiesOf(layOut(cut.parts));
        ASSERT_EQ(text.size(), whole.size());
        ASSERT_EQ(text.size(), parts.size());
        const auto [first, end] = neighbourhood(utf16(text), cut.place);
        for (std::size_t unit = 0; unit < text.size(); ++unit) {
            if (whole[unit] != parts[unit]) {
                ++changed;
                EXPECT_TRUE(first <= unit && unit < end)
                    << "unit " << unit << " (" << std::hex << static_cast<unsigned>(text[unit]) << ") after a cut at "
                    << std::dec << cut.place;
            }
        }
    }
    EXPECT_LE(1, changed);
}

} // namespace
} // namespace property

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>
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

/// Where the caret before `position` stands, and its cluster.
DWRITE_HIT_TEST_METRICS caretAt(IDWriteTextLayout& layout, UINT32 position) {
    DWRITE_HIT_TEST_METRICS hit{};
    FLOAT x = 0.0F;
    FLOAT y = 0.0F;
    EXPECT_EQ(S_OK, layout.HitTestTextPosition(position, FALSE, &x, &y, &hit));
    hit.left = x;
    hit.top = y;
    return hit;
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

/// What stands around a cut and may take other fonts for it: such characters on both sides, and the letter before them
/// that they may have been torn from.
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
    for (bool goes = true; goes && first > 0;) {
        UChar32 character = 0;
        U16_PREV(text.data(), 0, first, character);
        goes = goesWithItsNeighbours(character);
    }
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

TEST_F(CutProperties, WhereBothPartsKeepTheirFontsNothingMoves) {
    int cuts = 0;
    int inOtherFonts = 0;
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const Cut cut = randomCut();
        if (!cut.isCut) {
            continue;
        }
        const fonts::SLayoutDesc whole = layOut(cut.whole);
        const fonts::SLayoutDesc parts = layOut(cut.parts);
        ++cuts;
        if (familiesOf(whole) != familiesOf(parts)) {
            ++inOtherFonts;
            continue;
        }
        const float width = 5.0F + static_cast<float>(m_random.below(200));
        EXPECT_EQ(S_OK, whole.pObject->SetMaxWidth(width));
        EXPECT_EQ(S_OK, parts.pObject->SetMaxWidth(width));
        const auto length = static_cast<UINT32>(textOf(cut.whole).size());
        for (UINT32 position = 0; position <= length; ++position) {
            const DWRITE_HIT_TEST_METRICS expected = caretAt(*whole.pObject, position);
            const DWRITE_HIT_TEST_METRICS actual = caretAt(*parts.pObject, position);
            ASSERT_EQ(expected.left, actual.left) << position << " after a cut at " << cut.place;
            ASSERT_EQ(expected.top, actual.top) << position << " after a cut at " << cut.place;
            ASSERT_EQ(expected.width, actual.width) << position << " after a cut at " << cut.place;
            ASSERT_EQ(expected.height, actual.height) << position << " after a cut at " << cut.place;
            ASSERT_EQ(expected.length, actual.length) << position << " after a cut at " << cut.place;
        }
    }
    EXPECT_LE(1500, cuts);
    EXPECT_GE(cuts / 8, inOtherFonts);
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
        const auto [first, end] = neighbourhood(std::u16string(text.begin(), text.end()), cut.place);
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

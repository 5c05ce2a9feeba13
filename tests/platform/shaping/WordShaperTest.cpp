#include "shaping/WordShaper.h"

#include <algorithm>
#include <array>
#include <map>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/utf16.h>

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "support/Fonts.h"

namespace platform {

/// For the messages of failing tests.
void PrintTo(const ShapedGlyph& glyph, std::ostream* out) {
    *out << glyph.glyph << '=' << glyph.cluster << '@' << glyph.advanceOffset << ',' << glyph.ascenderOffset << '+'
         << glyph.advance << (glyph.isUnsafeToBreak ? "!" : "");
}

bool operator==(const ShapedGlyph& left, const ShapedGlyph& right) {
    return left.glyph == right.glyph && left.cluster == right.cluster && left.advance == right.advance &&
           left.advanceOffset == right.advanceOffset && left.ascenderOffset == right.ascenderOffset &&
           left.isUnsafeToBreak == right.isUnsafeToBreak;
}

namespace test {
namespace {

ShapeRequest requestOf(std::u16string_view text, CFontFace& face, hb_script_t script = HB_SCRIPT_LATIN) {
    ShapeRequest request;
    request.text = text;
    request.length = text.size();
    request.face = &face;
    request.script = script;
    request.language = HB_LANGUAGE_INVALID;
    request.isRightToLeft = HB_DIRECTION_IS_BACKWARD(hb_script_get_horizontal_direction(script));
    return request;
}

ShapedRun whole(const ShapeRequest& request) {
    ShapedRun run;
    shape(request, run);
    return run;
}

ShapedRun byWords(const ShapeRequest& request, WordStore& store) {
    ShapedRun run;
    shapeByWords(request, store, run);
    return run;
}

/// Both ways of shaping, the second one twice: words are first shaped and then found.
void expectTheSame(const ShapeRequest& request, WordStore& store) {
    const ShapedRun expected = whole(request);
    EXPECT_EQ(expected, byWords(request, store));
    EXPECT_EQ(expected, byWords(request, store));
}

/// Whether `word` can be shaped apart from what stands beyond the spaces around it.
bool isSeparable(std::u16string_view word, CFontFace& face, hb_script_t script = HB_SCRIPT_LATIN) {
    const WordPlan plan(requestOf(word, face, script));
    return plan.isSeparable() && plan.shape(word, {true, true}).isSeparable;
}

hb_script_t scriptOf(char32_t character) {
    return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

/// Characters of one script that a face has, spaces in between, some of them doubled.
std::u16string randomText(const std::vector<char32_t>& characters, std::mt19937& random) {
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    std::u16string text;
    for (std::size_t i = below(20) + 1; i > 0; --i) {
        if (below(4) == 0) {
            text.append(below(4) == 0 ? 2 : 1, u' ');
        }
        const char32_t character = characters[below(characters.size())];
        if (character > 0xFFFF) {
            text += static_cast<char16_t>(U16_LEAD(character));
        }
        text += static_cast<char16_t>(character > 0xFFFF ? U16_TRAIL(character) : character);
    }
    return text;
}

/// A dotted circle stands under a mark without a base. HarfBuzz numbers the syllables of a run from 1 to 15 over and
/// over and leaves a circle out where the last one had the same number, so that it depends on how long the text before
/// is.
bool hasDottedCircle(const ShapedRun& run, const CFontFace& face) {
    return std::any_of(run.begin(), run.end(), [circle = face.nominalGlyph(U'\u25CC')](const ShapedGlyph& glyph) {
        return glyph.glyph == circle && circle != 0;
    });
}

TEST(WordShaper, GivesTheGlyphsOfShapingTheWholeRunInEveryFamily) {
    std::mt19937 random(1);
    for (const auto& family : CFontCollection::system().families()) {
        CFontFace& face = family->fonts()[0]->face();
        std::map<hb_script_t, std::vector<char32_t>> characters;
        for (char32_t character = 0x21; character < 0x20000; character += static_cast<char32_t>(1 + random() % 5)) {
            if (face.hasCharacter(character)) {
                characters[scriptOf(character)].push_back(character);
            }
        }
        WordStore store;
        for (const auto& [script, ofScript] : characters) {
            for (int i = 0; i < 4; ++i) {
                const std::u16string text = randomText(ofScript, random);
                const ShapeRequest request = requestOf(text, face, script);
                if (!hasDottedCircle(byWords(request, store), face)) {
                    expectTheSame(request, store);
                }
            }
        }
        ASSERT_FALSE(::testing::Test::HasFailure()) << ::testing::PrintToString(family->names().front().text);
    }
}

TEST(WordShaper, SpacesKernWithTheWordsNextToThem) {
    CFontFace& face = font(L"Liberation Sans").face();
    for (const std::u16string_view text : {u"A A", u"L Y T  A", u"1 1", u" A", u"A ", u"P A V A Y A", u"  T  "}) {
        WordStore store;
        expectTheSame(requestOf(text, face), store);
    }
    const std::u16string_view text = u"A A";
    WordStore store;
    const ShapedRun run = byWords(requestOf(text, face), store);
    ASSERT_EQ(3U, run.size());
    // What the font's kerning takes from a space before or after an A: 113 units each.
    EXPECT_EQ(face.advance(run[0].glyph) - 113, run[0].advance);
    EXPECT_EQ(face.advance(run[1].glyph) - 113, run[1].advance);
    EXPECT_TRUE(run[1].isUnsafeToBreak);
    EXPECT_TRUE(isSeparable(u"A", face));
}

TEST(WordShaper, MarksAndJoinersAfterASpaceStayWithIt) {
    CFontFace& face = font(L"DejaVu Sans").face();
    for (const std::u16string_view text :
         {u"a \u0301b c", u" \u0301", u"\u0301 a", u"a \u200Db", u"a \u200C \uFE0F", u"a \u00ADb", u"  \u0301a b  "}) {
        WordStore store;
        expectTheSame(requestOf(text, face), store);
    }
}

TEST(WordShaper, SpacesAloneAndTextsWithoutThemAreRunsToo) {
    CFontFace& face = font(L"DejaVu Sans").face();
    const std::u16string longWord(WordPlan::maxWord + 1, u'V');
    const std::u16string among = u"A " + longWord + u" T";
    for (const std::u16string_view text :
         {std::u16string_view(u" "), std::u16string_view(u"   "), std::u16string_view(u"office"),
          std::u16string_view(longWord), std::u16string_view(among)}) {
        WordStore store;
        expectTheSame(requestOf(text, face), store);
    }
}

TEST(WordShaper, LettersJoinWithWhatStandsOutsideTheRun) {
    CFontFace& face = font(L"Noto Sans Arabic").face();
    const std::u16string text = u"\u0628\u0628 \u0628\u0628\u0628 \u0628\u0628";
    for (std::size_t start = 0; start < text.size(); ++start) {
        for (std::size_t end = start + 1; end <= text.size(); ++end) {
            ShapeRequest request = requestOf(text, face, HB_SCRIPT_ARABIC);
            request.start = start;
            request.length = end - start;
            WordStore store;
            expectTheSame(request, store);
        }
    }
    EXPECT_TRUE(isSeparable(text.substr(3, 3), face, HB_SCRIPT_ARABIC));
}

TEST(WordShaper, APlanDoesNotDependOnWhereItsFirstRunStands) {
    ShapeRequest request = requestOf(u"one two three", font(L"Liberation Sans").face());
    request.start = 8;
    request.length = 5;
    EXPECT_TRUE(WordPlan(request).isSeparable());
    WordStore store;
    expectTheSame(request, store);
}

TEST(WordShaper, WordsThatActOnEachOtherAcrossSpacesAreShapedTogether) {
    // x becomes O before "space x", and H before another H whatever bases stand between them becomes I.
    CFontFace& face = dataFont("AcrossSpaces.ttf").face();
    WordStore store;
    for (const std::u16string_view text : {u"x x", u"I x x I", u"H H", u"H I x H", u"I I", u"x  x", u"x O I x"}) {
        expectTheSame(requestOf(text, face), store);
    }
    const ShapedRun run = byWords(requestOf(u"x x", face), store);
    EXPECT_EQ(face.nominalGlyph(U'O'), run[0].glyph);
    EXPECT_EQ(face.nominalGlyph(U'x'), run[2].glyph);
    EXPECT_FALSE(isSeparable(u"x", face));
    EXPECT_FALSE(isSeparable(u"H", face));
    EXPECT_TRUE(isSeparable(u"I", face));
}

TEST(WordShaper, FeaturesAreNotKept) {
    CFontFace& face = font(L"DejaVu Sans").face();
    const std::array<hb_feature_t, 1> noLigatures{
        {{HB_TAG('l', 'i', 'g', 'a'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END}}};
    ShapeRequest request = requestOf(u"office", face);
    WordStore store;
    EXPECT_EQ(4U, byWords(request, store).size());
    request.features = noLigatures;
    EXPECT_EQ(6U, byWords(request, store).size());
}

TEST(WordShaper, WordsOfDifferentFacesScriptsLanguagesAndDirectionsAreNotMixedUp) {
    const std::u16string_view text = u"\u0431\u0433 \u0431";
    CFontFace& upright = font(L"DejaVu Serif").face();
    CFontFace& italic = font(L"DejaVu Serif", DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_ITALIC).face();
    WordStore store;
    for (CFontFace* const face : {&upright, &italic, &upright}) {
        for (const char* const language : {"ru", "sr", "ru"}) {
            for (const bool isRightToLeft : {false, true, false}) {
                ShapeRequest request = requestOf(text, *face, HB_SCRIPT_CYRILLIC);
                request.language = hb_language_from_string(language, -1);
                request.isRightToLeft = isRightToLeft;
                expectTheSame(request, store);
            }
        }
    }
}

TEST(WordStore, ForgetsEverythingWhenItIsFull) {
    CFontFace& face = font(L"Liberation Sans").face();
    constexpr std::size_t capacity = 100000;
    WordStore store(capacity);
    std::size_t most = 0;
    bool forgot = false;
    for (char16_t first = u'a'; first <= u'z'; ++first) {
        for (char16_t second = u'a'; second <= u'z'; ++second) {
            const std::u16string text{first, second, u' ', second, first};
            const std::size_t before = store.bytes();
            EXPECT_EQ(whole(requestOf(text, face)), byWords(requestOf(text, face), store));
            forgot = forgot || store.bytes() < before;
            most = std::max(most, store.bytes());
        }
    }
    EXPECT_TRUE(forgot);
    EXPECT_LT(most, capacity + 10000);
}

} // namespace
} // namespace test
} // namespace platform

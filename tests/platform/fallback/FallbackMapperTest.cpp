#include "fallback/FallbackMapper.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fallback/FallbackTestSupport.h"
#include "fonts/FontFace.h"
#include "fonts/FontSet.h"

// The pinned Liberation Sans has Latin, Greek and Cyrillic letters but no combining mark at all; DejaVu Sans has Arabic
// and Hebrew and most marks; both lack kana, Han, Hangul and the scripts of India and beyond.

namespace platform {
namespace {

std::u16string unit(unsigned value) {
    return {static_cast<char16_t>(value)};
}

TEST(FallbackMapper, leavesTheBaseFamilyWhatItHas) {
    EXPECT_EQ(Question{u"Grundriß 1:50 – Ж Ω"}.stretches(), L"Liberation Sans:19 ");
}

TEST(FallbackMapper, mapsNothingOfNothing) {
    const Question question{u"abc"};
    for (const Mapping& mapping : {question.at(0, 0), question.at(3), question.at(7, 2), Question{u""}.at()}) {
        EXPECT_EQ(mapping.length, 0U);
        EXPECT_EQ(mapping.font, nullptr);
        EXPECT_EQ(mapping.scale, 1.0F);
    }
}

TEST(FallbackMapper, startsAndEndsWhereItIsTold) {
    const Question question{u"abcdef"};
    EXPECT_EQ(question.at(2, 3).length, 3U);
    EXPECT_EQ(question.at(2, 100).length, 4U);
    const Question kana{u"かかかか"};
    EXPECT_EQ(kana.at(1, 2).length, 2U);
    // Even in a cluster: what lies past the end is not known to belong to it.
    EXPECT_EQ(Question{u"e\u0301x"}.at(0, 1).length, 1U);
}

TEST(FallbackMapper, endsAFallbackStretchWhereTheBaseTakesOverAgain) {
    EXPECT_EQ(Question{u"a\u3042b"}.stretches(), L"Liberation Sans:1 Noto Sans CJK JP:1 Liberation Sans:1 ");
}

TEST(FallbackMapper, returnsToTheBaseForSpacesAndDigitsAfterAnIdeograph) {
    EXPECT_EQ(Question{u"\u6f22 \u5b5712"}.stretches(),
              L"Noto Sans CJK JP:1 Liberation Sans:1 Noto Sans CJK JP:1 Liberation Sans:2 ");
}

TEST(FallbackMapper, usesTheFirstFontOfTheOrderWithoutABaseFamily) {
    Question question{u"abc"};
    question.family = nullptr;
    EXPECT_EQ(question.stretches(), L"DejaVu Sans:3 ");
    question.text = u"12 \u56f3";
    EXPECT_EQ(question.stretches(), L"DejaVu Sans:3 Noto Sans CJK JP:1 ");
}

TEST(FallbackMapper, keepsAVariationSelectorWithItsBaseAlthoughTheFontLacksIt) {
    EXPECT_EQ(Question{u"A\ufe00"}.stretches(), L"Liberation Sans:2 ");
    EXPECT_EQ(Question{u"A\U000E0100"}.stretches(), L"Liberation Sans:3 ");
    EXPECT_EQ(Question{u"A\ufe0fB"}.stretches(), L"Liberation Sans:3 ");
    EXPECT_EQ(Question{u"\u6f22\U000E0100\u5b57"}.stretches(), L"Noto Sans CJK JP:4 ");
}

TEST(FallbackMapper, hasNoFontForAVariationSelectorAlone) {
    EXPECT_EQ(Question{u"\ufe00"}.stretches(), L"(none):1 ");
    EXPECT_EQ(Question{u"\U000E0100"}.stretches(), L"(none):2 ");
    EXPECT_EQ(Question{u"\U000E0100A"}.stretches(), L"(none):2 Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\ufe0f\u6f22"}.stretches(), L"(none):1 Noto Sans CJK JP:1 ");
    // A control ends a cluster, but what is drawn beside it takes the selector along.
    EXPECT_EQ(Question{u"a\n\ufe0fb"}.stretches(), L"Liberation Sans:4 ");
}

TEST(FallbackMapper, mapsMongolianSelectors) {
    for (const unsigned selector : {0x180BU, 0x180CU, 0x180DU}) {
        const Mapping mapping = Question{unit(selector)}.at();
        EXPECT_EQ(mapping.length, 1U);
        EXPECT_NE(mapping.font, nullptr);
    }
    EXPECT_EQ(Question{u"\u1820\u180b\u1821"}.stretches(), L"Noto Sans Mongolian:3 ");
}

TEST(FallbackMapper, joinsCharactersThatNoFontHas) {
    EXPECT_EQ(Question{u"\u0378\u0379"}.stretches(), L"(none):2 ");
    EXPECT_EQ(Question{u"a\u0378\u0379b"}.stretches(), L"Liberation Sans:1 (none):2 Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\U0001F1E9\U0001F1EA"}.stretches(), L"(none):4 ");
}

TEST(FallbackMapper, hasNoFontForEachLoneSurrogate) {
    EXPECT_EQ(Question{unit(0xD83D)}.stretches(), L"(none):1 ");
    EXPECT_EQ(Question{unit(0xDC00)}.stretches(), L"(none):1 ");
    EXPECT_EQ(Question{u"a" + unit(0xD800) + unit(0xD800) + u"b"}.stretches(),
              L"Liberation Sans:1 (none):1 (none):1 Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\u6f22" + unit(0xDC00) + u"\u6f22"}.stretches(),
              L"Noto Sans CJK JP:1 (none):1 Noto Sans CJK JP:1 ");
    EXPECT_EQ(Question{u"\u0378" + unit(0xDC00)}.stretches(), L"(none):1 (none):1 ");
    // A pair cut by the end of the question is half a pair.
    EXPECT_EQ(Question{u"\U00010330"}.at(0, 1).length, 1U);
    EXPECT_EQ(Question{u"\U00010330"}.at(0, 1).font, nullptr);
}

TEST(FallbackMapper, letsControlsRideAlongWithTheirNeighbours) {
    EXPECT_EQ(Question{u"ab\tcd\r\n\u2028ef\u200e\u200b"}.stretches(), L"Liberation Sans:12 ");
    EXPECT_EQ(Question{u"\u6f22\n\u5b57\t\u200d\u6f22\u2029"}.stretches(), L"Noto Sans CJK JP:7 ");
    EXPECT_EQ(Question{u"\u6f22\nab"}.stretches(), L"Noto Sans CJK JP:2 Liberation Sans:2 ");
    EXPECT_EQ(Question{u"\t\u6f22"}.stretches(), L"Noto Sans CJK JP:2 ");
    EXPECT_EQ(Question{u"\u202b\u05d0\u202c"}.stretches(), L"DejaVu Sans:3 ");
}

TEST(FallbackMapper, givesControlsAloneToTheBase) {
    EXPECT_EQ(Question{u"\n"}.stretches(), L"Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\r\n\t\u200f"}.stretches(), L"Liberation Sans:4 ");
    // Nothing is missing in a newline beside missing characters.
    EXPECT_EQ(Question{u"\n\u0378\n"}.stretches(), L"Liberation Sans:1 (none):1 Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\n\ufe0f"}.stretches(), L"Liberation Sans:1 (none):1 ");
}

TEST(FallbackMapper, keepsAClusterInOneFontThatHasAllOfIt) {
    // Liberation Sans has x but no marks.
    EXPECT_EQ(Question{u"ax\u0302b"}.stretches(), L"Liberation Sans:1 DejaVu Sans:2 Liberation Sans:1 ");
    // U+0364 is in Noto Sans, not in DejaVu Sans.
    EXPECT_EQ(Question{u"au\u0364b"}.stretches(), L"Liberation Sans:1 Noto Sans:2 Liberation Sans:1 ");
    Question dejavu{u"au\u0364b"};
    dejavu.family = L"DejaVu Sans";
    EXPECT_EQ(dejavu.stretches(), L"DejaVu Sans:1 Noto Sans:2 DejaVu Sans:1 ");
}

TEST(FallbackMapper, leavesAMarkToTheBaseThatHasItComposed) {
    EXPECT_EQ(Question{u"ae\u0301b"}.stretches(), L"Liberation Sans:4 ");
    EXPECT_EQ(Question{u"A\u030a"}.stretches(), L"Liberation Sans:2 ");
}

TEST(FallbackMapper, leavesAClusterThatNobodyHasWholeToWhoeverHasTheLetter) {
    // U+1D165 is the stem of a musical note; the fonts that have it have neither letter.
    EXPECT_EQ(Question{u"a\U0001D165b"}.stretches(), L"Liberation Sans:4 ");
    EXPECT_EQ(Question{u"\u6f22\U0001D165"}.stretches(), L"Noto Sans CJK JP:3 ");
    EXPECT_EQ(Question{u"\u0378\u0301"}.stretches(), L"(none):2 ");
}

TEST(FallbackMapper, keepsEmojiSequencesTogether) {
    // Man, joiner, woman: the joiner binds both, and no pinned font has either.
    EXPECT_EQ(Question{u"a\U0001F468\u200d\U0001F469b"}.stretches(), L"Liberation Sans:1 (none):5 Liberation Sans:1 ");
    // A keycap: the digit alone would be the base's.
    EXPECT_EQ(Question{u"a1\ufe0f\u20e3b"}.at(1).length, 3U);
}

TEST(FallbackMapper, keepsSyllablesOfJamoTogether) {
    EXPECT_EQ(Question{u"a\u1112\u1161\u11ab\u1100\u1173\u11afb"}.stretches(),
              L"Liberation Sans:1 Noto Sans CJK KR:6 Liberation Sans:1 ");
}

TEST(FallbackMapper, keepsPunctuationThatTheBaseLacksWithItsNeighbours) {
    // The danda belongs to many scripts; several fonts have it.
    EXPECT_EQ(Question{u"\u0915\u0964 \u0995\u0964"}.stretches(),
              L"Noto Sans Devanagari:2 Liberation Sans:1 Noto Sans Bengali:2 ");
    EXPECT_EQ(Question{u"\u300c\u6f22\u5b57\u300d\u3002"}.stretches(), L"Noto Sans CJK JP:5 ");
    EXPECT_EQ(Question{u"\u0964\u0995"}.stretches(), L"Noto Sans Bengali:2 ");
}

TEST(FallbackMapper, keepsPunctuationAfterASpaceWithTheLettersBeforeIt) {
    EXPECT_EQ(Question{u"\u0915 \u0964"}.stretches(),
              L"Noto Sans Devanagari:1 Liberation Sans:1 Noto Sans Devanagari:1 ");
    EXPECT_EQ(Question{u"\u0995 \u0964 \u0915"}.at(2).font, Question{u"\u0995"}.at().font);
    // Not with those of another line, nor with letters of the base.
    EXPECT_EQ(Question{u"\u0995\n \u0964\u0915"}.at(3).font, Question{u"\u0915"}.at().font);
    EXPECT_EQ(Question{u"\u0995 a \u0964"}.at(4).font, Question{u"\u0964"}.at().font);
}

TEST(FallbackMapper, keepsSymbolsIndependentOfTheSymbolsBesideThem) {
    // The star is in DejaVu Sans and in Noto Sans Symbols2, which alone has the mark of a position.
    EXPECT_EQ(Question{u"\u2605"}.stretches(), L"DejaVu Sans:1 ");
    EXPECT_EQ(Question{u"\u2316\u2605"}.stretches(), L"Noto Sans Symbols2:1 DejaVu Sans:1 ");
    // Beside letters they go with those, through other symbols too, but not on to the next line.
    EXPECT_EQ(Question{u"\u6f22\u2605\u25ce"}.stretches(), L"Noto Sans CJK JP:3 ");
    EXPECT_EQ(Question{u"\u6f22\u2605\u2316\u2605"}.stretches(),
              L"Noto Sans CJK JP:2 Noto Sans Symbols2:1 Noto Sans CJK JP:1 ");
    EXPECT_EQ(Question{u"\u6f22\n\u2605"}.stretches(), L"Noto Sans CJK JP:2 DejaVu Sans:1 ");
}

TEST(FallbackMapper, drawsHangulFillersWithAFontThatHasThem) {
    EXPECT_EQ(Question{u"a\u3164b"}.stretches(), L"Liberation Sans:1 Noto Sans CJK KR:1 Liberation Sans:1 ");
    EXPECT_EQ(Question{u"\u1112\u1160"}.stretches(), L"Noto Sans CJK KR:2 ");
}

TEST(FallbackMapper, drawsALinesLettersOfOneScriptInOneFontThatHasAllOfThem) {
    // DejaVu Sans, which comes first, has the letters of the first and the last word, but neither yeh barree nor the
    // Urdu full stop.
    const std::u16string first = u"\u062a\u0645\u0627\u0645";
    const std::u16string last = u"\u067e\u0631";
    EXPECT_EQ(familyName(Question{first}.at().font), L"DejaVu Sans");
    const Question line{first + u" \u0644\u06cc\u06d2\u06d4 " + last};
    EXPECT_EQ(line.stretches(), L"Noto Sans Arabic:4 Liberation Sans:1 Noto Sans Arabic:4 Liberation Sans:1 "
                                L"Noto Sans Arabic:2 ");
    // Another line and what stands far away do not count.
    EXPECT_EQ(familyName(Question{first + u"\n\u06d2"}.at().font), L"DejaVu Sans");
    EXPECT_EQ(familyName(Question{first + std::u16string(70, u' ') + u"\u06d2"}.at().font), L"DejaVu Sans");
    EXPECT_EQ(familyName(Question{u"\u06d2" + std::u16string(70, u' ') + last}.at(71).font), L"DejaVu Sans");
    // Nor do letters of other scripts or those of the base.
    EXPECT_EQ(Question{u"\u0531 \u06d2 a"}.stretches(),
              L"DejaVu Sans:1 Liberation Sans:1 Noto Sans Arabic:1 Liberation Sans:2 ");
}

TEST(FallbackMapper, leavesWhatTheFontOfALineLacksToAnother) {
    // The mathematical alef U+1EE00 is in DejaVu Sans, the yeh barrees in Noto Sans Arabic, and meem in both.
    EXPECT_EQ(Question{u"\U0001EE00\u0645"}.stretches(), L"DejaVu Sans:3 ");
    EXPECT_EQ(Question{u"\u06d2\U0001EE00\u0645\u06d3"}.stretches(),
              L"Noto Sans Arabic:1 DejaVu Sans:2 Noto Sans Arabic:2 ");
    EXPECT_EQ(Question{u"\u06d2\u0378\u0645"}.stretches(), L"Noto Sans Arabic:1 (none):1 Noto Sans Arabic:1 ");
}

TEST(FallbackMapper, aNewlineOrControlCutOffFromItsTextIsTheBases) {
    // As when a caller asks for the pieces of a text one by one.
    for (const char16_t* const rider : {u"\n", u"\r\n", u"\t", u"\u200d", u"\u200e", u"\u2028", u"\u00ad"}) {
        EXPECT_EQ(familyName(Question{rider}.at().font), L"Liberation Sans");
    }
    // A family that has not even a space is still the one whose metrics a line of newlines has.
    Question adlam{u"\n"};
    adlam.family = L"Noto Sans Adlam";
    EXPECT_EQ(familyName(adlam.at().font), L"Noto Sans Adlam");
}

TEST(FallbackMapper, keepsWeightAndStyle) {
    Question question{u"\u6f22"};
    question.weight = DWRITE_FONT_WEIGHT_BOLD;
    EXPECT_EQ(question.at().font->weight(), DWRITE_FONT_WEIGHT_BOLD);
    EXPECT_EQ(question.at().font->style(), DWRITE_FONT_STYLE_NORMAL);
    question.style = DWRITE_FONT_STYLE_ITALIC;
    EXPECT_EQ(familyName(question.at().font), L"Noto Sans CJK JP");
    EXPECT_EQ(question.at().font->weight(), DWRITE_FONT_WEIGHT_BOLD);
    EXPECT_NE(question.at().font->style(), DWRITE_FONT_STYLE_NORMAL);
}

TEST(FallbackMapper, asksTheMemberOfTheBaseFamilyThatFits) {
    Question question{u"abc"};
    question.weight = DWRITE_FONT_WEIGHT_BOLD;
    question.style = DWRITE_FONT_STYLE_ITALIC;
    EXPECT_EQ(question.at().font->weight(), DWRITE_FONT_WEIGHT_BOLD);
    EXPECT_EQ(question.at().font->style(), DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(question.at().length, 3U);
}

TEST(FallbackMapper, choosesHanByLocale) {
    const auto familyFor = [](const wchar_t* locale) {
        Question question{u"\u9aa8"};
        question.locale = locale;
        return familyName(question.at().font);
    };
    EXPECT_EQ(familyFor(L"ja"), L"Noto Sans CJK JP");
    EXPECT_EQ(familyFor(L"ja-jp"), L"Noto Sans CJK JP");
    EXPECT_EQ(familyFor(L"ko-kr"), L"Noto Sans CJK KR");
    EXPECT_EQ(familyFor(L"zh-hans"), L"Noto Sans CJK SC");
    EXPECT_EQ(familyFor(L"zh-cn"), L"Noto Sans CJK SC");
    EXPECT_EQ(familyFor(L"zh-hant"), L"Noto Sans CJK TC");
    EXPECT_EQ(familyFor(L"zh-tw"), L"Noto Sans CJK TC");
    EXPECT_EQ(familyFor(L"zh-hk"), L"Noto Sans CJK HK");
    EXPECT_EQ(familyFor(L"en-us"), L"Noto Sans CJK JP");
}

TEST(FallbackMapper, mapsEveryUnitOfALongTextOnce) {
    std::u16string text;
    for (int i = 0; i < 20000; ++i) {
        text += i % 3 == 0 ? u"\u6f22\u5b57" : u"word ";
    }
    const Question question{text};
    std::size_t stretches = 0;
    for (std::size_t position = 0; position < text.size(); ++stretches) {
        const Mapping mapping = question.at(position);
        ASSERT_GT(mapping.length, 0U);
        ASSERT_NE(mapping.font, nullptr);
        position += mapping.length;
    }
    EXPECT_EQ(stretches, 13334U);
    EXPECT_EQ(Question{std::u16string(100000, u'\u6f22')}.at().length, 100000U);
}

TEST(FallbackMapper, hasNoFontForAnythingWithoutFonts) {
    const CFontCollection none{FontSet{}};
    FallbackMapper mapper(none);
    const auto map = [&mapper](std::u16string_view text) {
        return mapper.map(text, 0, text.size(), L"", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                          DWRITE_FONT_STRETCH_NORMAL);
    };
    for (const std::u16string_view text : {u"abc", u"\u6f22a\u0301", u"\n", u"\ufe0f"}) {
        const Mapping mapping = map(text);
        EXPECT_EQ(mapping.length, text.size());
        EXPECT_EQ(mapping.font, nullptr);
    }
}

TEST(FallbackMapper, servesManyThreads) {
    const Question question{u"abc \u6f22\u5b57 \u0915\u093f\u0964 \u0e01\u0e34 x\u0302 \u0378"};
    const std::wstring expected = question.stretches();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                EXPECT_EQ(question.stretches(), expected);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace platform

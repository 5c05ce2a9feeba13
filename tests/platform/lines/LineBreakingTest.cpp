#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using Lines = std::vector<std::u16string>;

float widthOf(std::u16string_view text, const FormatOptions& options = {}) {
    return metricsOf(*makeLayout(text, 0, 0, options)).width;
}

Lines breakAt(std::u16string_view text, float maxWidth, DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP,
              FormatOptions options = {}) {
    options.wrapping = wrapping;
    return lineTexts(text, *makeLayout(text, maxWidth, 0, options));
}

TEST(LineBreaking, TextThatFitsStaysOnOneLine) {
    const float width = widthOf(u"some words here");
    EXPECT_EQ((Lines{u"some words here"}), breakAt(u"some words here", width));
}

TEST(LineBreaking, LinesAreExactlyAsWideAsTheBoxAtMost) {
    const std::u16string text = u"The quick brown fox, AVATAR and To jump; over (lazy) dogs - 0123456789";
    for (const float size : {7.3F, 10.0F, 13.71F, 33.0F}) {
        EXPECT_EQ(1U, breakAt(text, widthOf(text, {.size = size}), DWRITE_WORD_WRAPPING_WRAP, {.size = size}).size());
    }
}

TEST(LineBreaking, BreaksAfterSpacesWhichStayOnTheirLine) {
    EXPECT_EQ((Lines{u"some   ", u"words"}), breakAt(u"some   words", widthOf(u"some wo")));
}

TEST(LineBreaking, AnySpaceThatOverflowsStaysOnTheLineItFollows) {
    const auto layout = makeLayout(u"word          next", widthOf(u"word "));
    EXPECT_EQ((std::vector<unsigned>{14, 4}), lineLengths(*layout));
    EXPECT_EQ(10U, linesOf(*layout)[0].trailingWhitespaceLength);
    EXPECT_FLOAT_EQ(widthOf(u"word"), metricsOf(*layout).width);
}

TEST(LineBreaking, LeadingSpacesTakeWidthAndBreakOnlyAtTheirEnd) {
    EXPECT_EQ((Lines{u"      ", u"word"}), breakAt(u"      word", widthOf(u"wor"), DWRITE_WORD_WRAPPING_WHOLE_WORD));
}

TEST(LineBreaking, WrapBreaksLongWordsBetweenClusters) {
    EXPECT_EQ((Lines{u"s", u"t", u"r", u"i", u"n", u"g"}),
              breakAt(u"string", 5.0F, DWRITE_WORD_WRAPPING_WRAP, {.size = 10.0F}));
    EXPECT_EQ((Lines{u"a ", u"stri", u"ng"}), breakAt(u"a string", widthOf(u"stri")));
}

TEST(LineBreaking, ASpaceEndsALineBeforeAWordIsTorn) {
    // Unicode keeps what follows an opening bracket with it, spaces or not.
    const std::u16string text = u"( TYPICAL";
    const float width = widthOf(u"( TYPICA");
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_EMERGENCY_BREAK}) {
        EXPECT_EQ((Lines{u"( ", u"TYPICAL"}), breakAt(text, width, wrapping));
    }
    EXPECT_EQ(Lines{text}, breakAt(text, width, DWRITE_WORD_WRAPPING_WHOLE_WORD));
}

TEST(LineBreaking, EmergencyBreakIsTheSame) {
    EXPECT_EQ((Lines{u"a ", u"stri", u"ng"}),
              breakAt(u"a string", widthOf(u"stri"), DWRITE_WORD_WRAPPING_EMERGENCY_BREAK));
}

TEST(LineBreaking, WholeWordLetsLongWordsOverflow) {
    EXPECT_EQ((Lines{u"a ", u"string ", u"b"}),
              breakAt(u"a string b", widthOf(u"stri"), DWRITE_WORD_WRAPPING_WHOLE_WORD));
    EXPECT_EQ((Lines{u"string\n", u"b"}), breakAt(u"string\nb", widthOf(u"st"), DWRITE_WORD_WRAPPING_WHOLE_WORD));
}

TEST(LineBreaking, NoWrapBreaksAtNewlinesOnly) {
    EXPECT_EQ((Lines{u"a string\n", u"b c"}), breakAt(u"a string\nb c", 5.0F, DWRITE_WORD_WRAPPING_NO_WRAP));
}

TEST(LineBreaking, CharacterBreaksAfterAnyCluster) {
    EXPECT_EQ((Lines{u"a str", u"ing"}), breakAt(u"a string", widthOf(u"a str"), DWRITE_WORD_WRAPPING_CHARACTER));
}

TEST(LineBreaking, MaximumWidthZeroSetsNoLimit) {
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_EMERGENCY_BREAK,
                                DWRITE_WORD_WRAPPING_WHOLE_WORD, DWRITE_WORD_WRAPPING_CHARACTER}) {
        EXPECT_EQ((Lines{u"a string\n", u"b"}), breakAt(u"a string\nb", 0.0F, wrapping));
    }
}

TEST(LineBreaking, AWordNeverLosesItsMarks) {
    EXPECT_EQ((Lines{u"e\u0301", u"e\u0301"}), breakAt(u"e\u0301e\u0301", 1.0F, DWRITE_WORD_WRAPPING_CHARACTER));
}

TEST(LineBreaking, OpportunitiesAreUnicodes) {
    const float narrow = 1.0F;
    const auto words = DWRITE_WORD_WRAPPING_WHOLE_WORD;
    EXPECT_EQ((Lines{u"well-", u"known"}), breakAt(u"well-known", narrow, words));
    EXPECT_EQ((Lines{u"a\u2010", u"b\u2013", u"c"}), breakAt(u"a\u2010b\u2013c", narrow, words));
    EXPECT_EQ((Lines{u"a\u00A0b"}), breakAt(u"a\u00A0b", narrow, words));
    EXPECT_EQ((Lines{u"a\u200B", u"b"}), breakAt(u"a\u200Bb", narrow, words));
    EXPECT_EQ((Lines{u"http://", u"host/", u"path"}), breakAt(u"http://host/path", narrow, words));
    EXPECT_EQ((Lines{u"a", u"\u2014", u"b"}), breakAt(u"a\u2014b", narrow, words));
    EXPECT_EQ((Lines{u"\u6F22", u"\u5B57\u3002"}), breakAt(u"\u6F22\u5B57\u3002", narrow, words));
}

/// The pieces that no line break may cut.
Lines piecesOf(std::u16string_view text, const std::wstring& locale = L"en-us") {
    return breakAt(text, 1.0F, DWRITE_WORD_WRAPPING_WHOLE_WORD, {.locale = locale});
}

TEST(LineBreaking, TextsOfDrawingsBreakAtTheirSpaces) {
    EXPECT_EQ((Lines{u"12\" ", u"(305 ", u"mm)"}), piecesOf(u"12\" (305 mm)"));
    EXPECT_EQ((Lines{u"#4 ", u"@ ", u"12\" ", u"O.C. ", u"(TYP.)"}), piecesOf(u"#4 @ 12\" O.C. (TYP.)"));
    EXPECT_EQ((Lines{u"SEE ", u"3/", u"A-101"}), piecesOf(u"SEE 3/A-101"));
    EXPECT_EQ((Lines{u"1'-0\""}), piecesOf(u"1'-0\""));
    EXPECT_EQ((Lines{u"\u00D812/150"}), piecesOf(u"\u00D812/150"));
    EXPECT_EQ((Lines{u"(E) ", u"WALL"}), piecesOf(u"(E) WALL"));
    EXPECT_EQ((Lines{u"SEE ", u"\"ELEVATION\" ", u"(TYPICAL)"}), piecesOf(u"SEE \"ELEVATION\" (TYPICAL)"));
}

TEST(LineBreaking, AFullWidthTextMayBreakBeforeAnOpeningQuotationMark) {
    EXPECT_EQ((Lines{u"\u7167\u3002", u"\u201C\u5F15", u"\u53F7\u201D"}),
              piecesOf(u"\u7167\u3002\u201C\u5F15\u53F7\u201D"));
}

TEST(LineBreaking, SmallKanaStartLinesInJapaneseKoreanAndChineseTextOnly) {
    const std::u16string text = u"\u30E2\u30FC\u30BF\u30A3";
    EXPECT_EQ((Lines{u"\u30E2\u30FC", u"\u30BF\u30A3"}), piecesOf(text));
    for (const wchar_t* locale : {L"ja", L"ja-JP", L"ko-kr", L"zh-Hant-TW"}) {
        EXPECT_EQ((Lines{u"\u30E2", u"\u30FC", u"\u30BF", u"\u30A3"}), piecesOf(text, locale)) << locale;
    }
    EXPECT_EQ(piecesOf(text), piecesOf(text, L"zha"));
}

TEST(LineBreaking, HangulBreaksBetweenSyllablesInAnyLanguage) {
    for (const wchar_t* locale : {L"en-us", L"ko-kr"}) {
        EXPECT_EQ((Lines{u"\uD55C", u"\uAD6D ", u"12mm"}), piecesOf(u"\uD55C\uAD6D 12mm", locale)) << locale;
    }
}

TEST(LineBreaking, QuotationMarksAreBracketsInChineseText) {
    // Between Latin letters and quoted ideographs too; apostrophes stay in their words.
    const std::u16string text = u"CAD\u201C\u547D\u4EE4\u201Dok don\u2019t";
    EXPECT_EQ((Lines{u"CAD\u201C\u547D", u"\u4EE4\u201Dok ", u"don\u2019t"}), piecesOf(text));
    EXPECT_EQ((Lines{u"CAD", u"\u201C\u547D", u"\u4EE4\u201D", u"ok ", u"don\u2019t"}), piecesOf(text, L"zh-cn"));
}

TEST(LineBreaking, EveryRangeBreaksByItsOwnLanguage) {
    const std::u16string text = u"\u30E2\u30FC\u30E2\u30FC\u30E2\u30FC";
    const auto layout = makeLayout(text, 1.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    EXPECT_EQ(S_OK, layout->SetLocaleName(L"ja-jp", {2, 2}));
    EXPECT_EQ((Lines{u"\u30E2\u30FC", u"\u30E2", u"\u30FC", u"\u30E2\u30FC"}), lineTexts(text, *layout));
}

TEST(LineBreaking, ThaiBreaksByDictionary) {
    // "Thai language is easy": two of its words.
    const Lines lines = breakAt(u"\u0E20\u0E32\u0E29\u0E32\u0E44\u0E17\u0E22", 1.0F, DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_EQ((Lines{u"\u0E20\u0E32\u0E29\u0E32", u"\u0E44\u0E17\u0E22"}), lines);
}

TEST(LineBreaking, ChangingTheWidthBreaksAnew) {
    const auto layout = makeLayout(u"some more words", widthOf(u"some more"));
    EXPECT_EQ(2U, metricsOf(*layout).lineCount);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(widthOf(u"words")));
    EXPECT_EQ(3U, metricsOf(*layout).lineCount);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_EQ(1U, metricsOf(*layout).lineCount);
}

TEST(LineBreaking, WideningNeverAddsLines) {
    const std::u16string text =
        u"Notes: all dimensions in mm; see sheet A-101 (rev. 3) for well-known exceptions/details";
    std::size_t before = text.size();
    for (float width = 20.0F; width < 900.0F; width += 7.0F) {
        const std::size_t lines = breakAt(text, width).size();
        EXPECT_LE(lines, before) << width;
        before = lines;
    }
    EXPECT_EQ(1U, before);
}

TEST(SoftHyphen, IsInvisibleInsideALine) {
    const auto layout = makeLayout(u"hy\u00ADphen");
    EXPECT_FLOAT_EQ(widthOf(u"hy") + widthOf(u"phen"), metricsOf(*layout).width);
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(L"\u00AD", runs[1].text);
    EXPECT_TRUE(runs[1].glyphs.empty());
    const auto clusters = clustersOf(*layout);
    EXPECT_EQ(1U, clusters[2].isSoftHyphen);
    EXPECT_EQ(0.0F, clusters[2].width);
    EXPECT_EQ(0U, clusters[1].isSoftHyphen);
}

TEST(SoftHyphen, ShowsWhereALineBreaksAfterIt) {
    const float width = widthOf(u"hy\u2010") + 1.0F;
    const auto layout = makeLayout(u"hy\u00ADphen", width, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    EXPECT_EQ((std::vector<unsigned>{3, 4}), lineLengths(*layout));
    const auto runs = drawnRuns(*layout);
    const auto hyphen = drawnRuns(*makeLayout(u"\u2010"));
    ASSERT_LE(2U, runs.size());
    EXPECT_EQ(hyphen[0].glyphs, std::vector<unsigned>{runs[0].glyphs.back()});
    EXPECT_FLOAT_EQ(hyphen[0].advance(), clustersOf(*layout)[2].width);
    // A wider box hides it again.
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_EQ(0.0F, clustersOf(*layout)[2].width);
    EXPECT_FLOAT_EQ(widthOf(u"hyphen"), metricsOf(*layout).width);
}

TEST(SoftHyphen, DoesNotBreakWhereItsHyphenHasNoRoom) {
    const float width = widthOf(u"some hy") + 0.5F;
    const Lines lines = breakAt(u"some hy\u00ADphen", width, DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_EQ(u"some ", lines[0]);
}

TEST(SoftHyphen, MakesNoLineTooWideWhereWordsAreTorn) {
    const std::u16string word = u"internationalization";
    const float width = widthOf(word) + 2.0F;
    for (const auto wrapping :
         {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_EMERGENCY_BREAK, DWRITE_WORD_WRAPPING_CHARACTER}) {
        EXPECT_EQ((Lines{word, u"\u00AD\u00ADal"}), breakAt(word + u"\u00AD\u00ADal", width, wrapping));
        const auto layout = makeLayout(word + u"\u00AD\u00ADal", width, 0, {.wrapping = wrapping});
        EXPECT_FLOAT_EQ(widthOf(word), metricsOf(*layout).width);
        // No line of hyphens alone, whether they have room or nothing has.
        for (const float narrow : {1.0F, widthOf(u"\u2010") + 0.5F}) {
            EXPECT_EQ((Lines{u"a", u"\u00ADm"}), breakAt(u"a\u00ADm", narrow, wrapping));
        }
    }
}

TEST(SoftHyphen, EndsALineThatIsTooLongAnyway) {
    const auto words = DWRITE_WORD_WRAPPING_WHOLE_WORD;
    for (const float width : {1.0F, widthOf(u"hy") + 0.5F}) {
        EXPECT_EQ((Lines{u"hy\u00AD", u"phen"}), breakAt(u"hy\u00ADphen", width, words));
    }
}

TEST(ClusterMetrics, CoverTheTextAndSayWhatTheyAre) {
    const auto layout = makeLayout(u"a b-\tc\r\n");
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(8U, clusters.size());
    unsigned length = 0;
    for (const DWRITE_CLUSTER_METRICS& cluster : clusters) {
        length += cluster.length;
        EXPECT_EQ(0U, cluster.isRightToLeft);
    }
    EXPECT_EQ(8U, length);
    EXPECT_EQ(1U, clusters[1].isWhitespace);
    EXPECT_EQ(1U, clusters[1].canWrapLineAfter);
    EXPECT_EQ(0U, clusters[0].canWrapLineAfter);
    EXPECT_EQ(0U, clusters[0].isWhitespace);
    EXPECT_EQ(1U, clusters[4].isWhitespace);
    EXPECT_EQ(0U, clusters[4].isNewline);
    EXPECT_EQ(1U, clusters[7].isNewline);
    EXPECT_EQ(1U, clusters[7].isWhitespace);
    EXPECT_EQ(1U, clusters[7].length);
    EXPECT_EQ(0.0F, clusters[7].width);
}

TEST(ClusterMetrics, AZeroWidthSpaceIsNotWhitespace) {
    const auto clusters = clustersOf(*makeLayout(u"a\u200Bb"));
    ASSERT_EQ(3U, clusters.size());
    EXPECT_EQ(0U, clusters[1].isWhitespace);
    EXPECT_EQ(1U, clusters[1].canWrapLineAfter);
}

} // namespace
} // namespace platform_test

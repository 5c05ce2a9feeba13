#include <FontEngine/RichTextDocumentProcessor.h>

#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>

#include <Common/Violations.h>
#include <oslayer/Errors.h>
#include <render/RichTextDocument.h>

#include "fake/FakePlatform.h"

using fonts::CRichTextDocumentProcessor;
using render::CRichTextParagraph;
using render::TextRange;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

struct RichTextDocumentProcessorTest : fake::FakePlatformTest {
    // Letters from U+0400 on are drawn by "Cyr".
    RichTextDocumentProcessorTest() {
        fake::FontSpec face;
        face.win32FamilyNames = {L"Cyr"};
        fake::platform().families.push_back({{L"Cyr"}, {face}});
        fake::platform().mapCharacters = [](std::wstring_view text, std::uint32_t position, std::uint32_t) {
            const bool cyrillic = text[position] >= 0x400;
            std::uint32_t end = position;
            while (end < text.length() && (text[end] >= 0x400) == cyrillic)
                ++end;
            return fake::FallbackAnswer{end - position, cyrillic ? 1 : 0, 0};
        };
    }

    static CRichTextParagraph paragraphOf(const std::vector<std::wstring>& texts) {
        CRichTextParagraph paragraph;
        for (const std::wstring& text : texts)
            paragraph.tokens.push_back(render::makeToken(text, L"Sans", 14.67f, {}));
        return paragraph;
    }

    static fonts::SLayoutDesc process(const CRichTextParagraph& paragraph, std::optional<double> tabStopWidth = {}) {
        const auto engine = fonts::createFontEngine(L"Sans");
        fake::platform().calls.clear();
        return CRichTextDocumentProcessor::process(paragraph, engine.get(), tabStopWidth);
    }

    static std::vector<fonts::SLayoutDesc> process(const render::CRichTextDocument& document) {
        const auto engine = fonts::createFontEngine(L"Sans");
        fake::platform().calls.clear();
        return CRichTextDocumentProcessor::process(document, engine.get());
    }

    static std::vector<TextRange> rangesOf(const fonts::SLayoutDesc& layout) {
        std::vector<TextRange> ranges;
        for (const fonts::SLayoutRun& run : layout.runs)
            ranges.push_back(run.range);
        return ranges;
    }
};

using RichTextDocumentProcessorDeathTest = RichTextDocumentProcessorTest;

struct FailingCall {
    const char* call;
    const char* expression;
    bool noWrap = false;
};

void PrintTo(const FailingCall& failing, std::ostream* out) {
    *out << failing.call;
}

struct FailingProcessTest : RichTextDocumentProcessorTest, testing::WithParamInterface<FailingCall> {};

struct UncheckedProcessTest : RichTextDocumentProcessorTest, testing::WithParamInterface<const char*> {};

} // namespace

TEST_F(RichTextDocumentProcessorTest, CallsComeInOrder) {
    process(paragraphOf({L"aЖ"}));
    EXPECT_THAT(
        fake::platform().calls,
        ElementsAre(
            "DWriteCreateFactory(0, IDWriteFactory)", "Factory.QueryInterface(IDWriteFactory)",
            "Factory.CreateTextFormat(\"Sans\", null, 400, 0, 5, 14.67, \"\")", "Format.SetTextAlignment(0)",
            "Format.SetParagraphAlignment(0)", "Format.SetWordWrapping(1)",
            "Factory.CreateTextLayout(\"aЖ\", 2, Format, 0, 0)", "Layout.SetWordWrapping(3)",
            "Layout.SetIncrementalTabStop(40)",
            // cut by fallback
            "Factory.QueryInterface(IDWriteFactory2)", "Factory.GetSystemFontFallback()",
            "Factory.CreateTextFormat(\"Sans\", Collection, 400, 0, 5, 14.67, \"\")", "Format.GetLocaleName(256)",
            "Format.GetFontCollection()", "Fallback.MapCharacters(\"aЖ\", 0, 2, Collection, \"Sans\", 400, 0, 5)",
            "Font.GetFontFamily()", "Family.GetFamilyNames()", "FamilyNames.GetString(0, 256)",
            "Fallback.MapCharacters(\"aЖ\", 1, 1, Collection, \"Sans\", 400, 0, 5)", "Font.GetFontFamily()",
            "Family.GetFamilyNames()", "FamilyNames.GetString(0, 256)",
            // the first piece's font is looked for
            "Collection.GetFontFamilyCount()", "Collection.GetFontFamily(0)", "Family.GetFontCount()",
            "Family.GetFont(0)", "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)",
            "Win32Names.GetString(0, 5)", "Font.GetFontFamily()", "Family.GetFamilyNames()",
            "FamilyNames.GetStringLength(0)", "FamilyNames.GetString(0, 5)",
            "Layout.SetFontFamilyName(\"Sans\", [0, 1])", "Font.GetMetrics()", "Layout.SetFontSize(20.48, [0, 1])",
            "Layout.SetFontWeight(400, [0, 1])", "Layout.SetFontStyle(0, [0, 1])", "Layout.SetFontStretch(5, [0, 1])",
            "Layout.SetUnderline(0, [0, 1])",
            // and the second piece's
            "Collection.GetFontFamilyCount()", "Collection.GetFontFamily(0)", "Family.GetFontCount()",
            "Family.GetFont(0)", "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)",
            "Win32Names.GetString(0, 5)", "Family.GetFont(1)", "Font.GetInformationalStrings(11)",
            "Win32Names.GetStringLength(0)", "Win32Names.GetString(0, 5)", "Family.GetFont(2)",
            "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)", "Win32Names.GetString(0, 5)",
            "Family.GetFont(3)", "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)",
            "Win32Names.GetString(0, 5)", "Collection.GetFontFamily(1)", "Family.GetFontCount()", "Family.GetFont(0)",
            "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)", "Win32Names.GetString(0, 4)",
            "Font.GetFontFamily()", "Family.GetFamilyNames()", "FamilyNames.GetStringLength(0)",
            "FamilyNames.GetString(0, 4)", "Layout.SetFontFamilyName(\"Cyr\", [1, 1])", "Font.GetMetrics()",
            "Layout.SetFontSize(20.48, [1, 1])", "Layout.SetFontWeight(400, [1, 1])", "Layout.SetFontStyle(0, [1, 1])",
            "Layout.SetFontStretch(5, [1, 1])", "Layout.SetUnderline(0, [1, 1])",
            // the alignments come last
            "Layout.SetTextAlignment(0)", "Layout.SetParagraphAlignment(0)"));
}

TEST_F(RichTextDocumentProcessorTest, TheFontSizeIsThatOfTheRunsCapitalsToTheLastBit) {
    process(paragraphOf({L"a"}));
    // 14.67f over 1467 / 2048 is 20.48f; the floats beside it would be recorded with more digits.
    EXPECT_THAT(fake::platform().callsTo("Layout.SetFontSize"), ElementsAre("Layout.SetFontSize(20.48, [0, 1])"));
}

TEST_F(RichTextDocumentProcessorTest, DocumentWithoutParagraphsGivesNothing) {
    EXPECT_THAT(process(render::CRichTextDocument()), IsEmpty());
    EXPECT_THAT(fake::platform().calls, IsEmpty());
}

TEST_F(RichTextDocumentProcessorTest, ParagraphOfOneEmptyTokenIsLaidOutAsASpace) {
    const auto document = render::makeDocument({paragraphOf({L""})});
    const auto layouts = process(document);
    ASSERT_EQ(layouts.size(), 1u);
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextLayout").front(),
              "Factory.CreateTextLayout(\" \", 1, Format, 0, 0)");
    ASSERT_EQ(layouts[0].runs.size(), 1u);
    EXPECT_EQ(layouts[0].runs[0].range, (TextRange{0, 1}));
    EXPECT_EQ(layouts[0].runs[0].token.text, L" ");
    EXPECT_EQ(document.paragraphs.at(0).tokens.at(0).text, L"");
}

TEST_F(RichTextDocumentProcessorTest, OnlyALoneEmptyTokenBecomesASpace) {
    const auto layouts = process(render::makeDocument({paragraphOf({L"", L""})}));
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextLayout").front(),
              "Factory.CreateTextLayout(\"\", 0, Format, 0, 0)");
    EXPECT_THAT(layouts[0].runs, IsEmpty());
}

TEST_F(RichTextDocumentProcessorTest, ParagraphItselfKeepsItsEmptyText) {
    const auto layout = process(paragraphOf({L""}));
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextLayout").front(),
              "Factory.CreateTextLayout(\"\", 0, Format, 0, 0)");
    EXPECT_THAT(layout.runs, IsEmpty());
}

TEST_F(RichTextDocumentProcessorTest, TokensFollowEachOtherInOneText) {
    const auto layout = process(paragraphOf({L"ab", L"cd"}));
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextLayout").front(),
              "Factory.CreateTextLayout(\"abcd\", 4, Format, 0, 0)");
    EXPECT_THAT(rangesOf(layout), ElementsAre(TextRange{0, 2}, TextRange{2, 2}));
    EXPECT_EQ(layout.runs[0].token.text, L"ab");
    EXPECT_EQ(layout.runs[1].token.text, L"cd");
}

TEST_F(RichTextDocumentProcessorTest, TokenOfTwoFontsGivesTwoRuns) {
    CRichTextParagraph paragraph = paragraphOf({L"abЖЯ"});
    paragraph.tokens[0].color = 0x01020304u;
    paragraph.tokens[0].fontStyle = {true, false, true};
    const auto layout = process(paragraph);
    EXPECT_THAT(rangesOf(layout), ElementsAre(TextRange{0, 2}, TextRange{2, 2}));
    EXPECT_EQ(layout.runs[0].token.fontFamily, L"Sans");
    EXPECT_EQ(layout.runs[1].token.fontFamily, L"Cyr");
    for (const fonts::SLayoutRun& run : layout.runs) {
        EXPECT_EQ(run.token.color, 0x01020304u);
        EXPECT_EQ(run.token.fontStyle, paragraph.tokens[0].fontStyle);
        EXPECT_EQ(run.token.fontCapSize, 14.67f);
    }
    EXPECT_THAT(fake::platform().callsTo("Layout.SetUnderline"),
                ElementsAre("Layout.SetUnderline(1, [0, 2])", "Layout.SetUnderline(1, [2, 2])"));
}

TEST_F(RichTextDocumentProcessorTest, EmptyTokenTakesOneUnitWhereThePlatformHasNoFallback) {
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory2)", E_NOINTERFACE, 0);
    const auto layout = process(paragraphOf({L"", L"ab"}));
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextLayout").front(),
              "Factory.CreateTextLayout(\"ab\", 2, Format, 0, 0)");
    EXPECT_THAT(rangesOf(layout), ElementsAre(TextRange{0, 1}, TextRange{1, 2}));
}

TEST_F(RichTextDocumentProcessorTest, FirstTokenGivesTheDefaultFormat) {
    CRichTextParagraph paragraph = paragraphOf({L"ab", L"cd"});
    paragraph.tokens[0].fontFamily = L"Nowhere";
    paragraph.tokens[0].fontStyle = {true, true, false};
    paragraph.tokens[0].fontCapSize = 3.5f;
    process(paragraph);
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextFormat").front(),
              "Factory.CreateTextFormat(\"Nowhere\", null, 700, 2, 5, 3.5, \"\")");
}

TEST_F(RichTextDocumentProcessorTest, TabStopsStandAt40UnlessTheCallerSaysOtherwise) {
    process(paragraphOf({L"a"}), std::nullopt);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetIncrementalTabStop"),
                ElementsAre("Layout.SetIncrementalTabStop(40)"));
    process(paragraphOf({L"a"}), 12.5);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetIncrementalTabStop"),
                ElementsAre("Layout.SetIncrementalTabStop(12.5)"));
}

TEST_F(RichTextDocumentProcessorTest, DocumentPassesItsOwnTabStopWidth) {
    auto document = render::makeDocument({paragraphOf({L"a"}), paragraphOf({L"b"})});
    document.tabStopWidth = 7.25f;
    process(document);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetIncrementalTabStop"),
                ElementsAre("Layout.SetIncrementalTabStop(7.25)", "Layout.SetIncrementalTabStop(7.25)"));
}

TEST_F(RichTextDocumentProcessorTest, ParagraphsComeInTheDocumentsOrder) {
    const auto layouts =
        process(render::makeDocument({paragraphOf({L"one"}), paragraphOf({L"two"}), paragraphOf({L"three"})}));
    ASSERT_EQ(layouts.size(), 3u);
    EXPECT_EQ(layouts[0].runs[0].token.text, L"one");
    EXPECT_EQ(layouts[1].runs[0].token.text, L"two");
    EXPECT_EQ(layouts[2].runs[0].token.text, L"three");
    EXPECT_EQ(fake::platform().countOf("DWriteCreateFactory"), 3u);
}

TEST_F(RichTextDocumentProcessorTest, WrappingIsWholeWordWhereThePlatformHasIt) {
    const auto layout = process(paragraphOf({L"a"}));
    EXPECT_EQ(layout.pObject->GetWordWrapping(), DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetWordWrapping"), ElementsAre("Layout.SetWordWrapping(3)"));
}

TEST_F(RichTextDocumentProcessorTest, WrappingIsPlainWhereThePlatformLacksWholeWord) {
    fake::platform().fail("Layout.SetWordWrapping(3)", E_INVALIDARG);
    const auto layout = process(paragraphOf({L"a"}));
    EXPECT_EQ(layout.pObject->GetWordWrapping(), DWRITE_WORD_WRAPPING_WRAP);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetWordWrapping"),
                ElementsAre("Layout.SetWordWrapping(3)", "Layout.SetWordWrapping(0)"));
    EXPECT_TRUE(log.records.empty());
}

TEST_F(RichTextDocumentProcessorTest, NoWrapIsOneCall) {
    CRichTextParagraph paragraph = paragraphOf({L"a"});
    paragraph.noWrap = true;
    const auto layout = process(paragraph);
    EXPECT_EQ(layout.pObject->GetWordWrapping(), DWRITE_WORD_WRAPPING_NO_WRAP);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetWordWrapping"), ElementsAre("Layout.SetWordWrapping(1)"));
}

TEST_F(RichTextDocumentProcessorTest, AlignmentsAreTheParagraphs) {
    CRichTextParagraph paragraph = paragraphOf({L"a"});
    paragraph.alignment = render::eRichTextParagraphAlignment::Justify;
    paragraph.verticalAlignment = render::eRichTextParagraphVerticalAlignment::Bottom;
    const auto layout = process(paragraph);
    EXPECT_EQ(layout.pObject->GetTextAlignment(), DWRITE_TEXT_ALIGNMENT_JUSTIFIED);
    EXPECT_EQ(layout.pObject->GetParagraphAlignment(), DWRITE_PARAGRAPH_ALIGNMENT_FAR);
}

TEST_F(RichTextDocumentProcessorTest, ParagraphWithoutTokensIsAViolationInADocument) {
    try {
        process(render::makeDocument({paragraphOf({L"a"}), CRichTextParagraph()}));
        FAIL() << "no exception";
    } catch (const common::ECheckViolation& violation) {
        EXPECT_THAT(violation.message.c_str(),
                    StartsWith("Assertion violation: FontEngine/src/RichTextDocumentProcessor("));
    }
}

TEST_F(RichTextDocumentProcessorTest, ParagraphWithoutTokensIsOutOfRangeByItself) {
    try {
        process(CRichTextParagraph());
        FAIL() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
    // The factory had been asked for by then, the format had not.
    EXPECT_THAT(fake::platform().calls,
                ElementsAre(StartsWith("DWriteCreateFactory"), StartsWith("Factory.QueryInterface")));
}

TEST_F(RichTextDocumentProcessorTest, CapitalSizeThatThePlatformLetsPassIsCheckedForItsRun) {
    for (const float size : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()}) {
        CRichTextParagraph paragraph = paragraphOf({L"a"});
        paragraph.tokens[0].fontCapSize = size;
        EXPECT_THROW(process(paragraph), common::ECheckViolation) << size;
    }
}

TEST_F(RichTextDocumentProcessorTest, LayoutGoesWithItsRecord) {
    auto layout = process(paragraphOf({L"a"}));
    EXPECT_EQ(fake::platform().otherReferences(), 1);
    fonts::SLayoutDesc moved = std::move(layout);
    EXPECT_EQ(fake::platform().otherReferences(), 1);
    moved = {};
    EXPECT_EQ(fake::platform().otherReferences(), 0);
}

TEST_P(FailingProcessTest, FailureIsReportedAndNothingIsLeft) {
    CRichTextParagraph paragraph = paragraphOf({L"a"});
    paragraph.noWrap = GetParam().noWrap;
    const auto engine = fonts::createFontEngine(L"Sans");
    const auto heldByEngine = fake::platform().otherReferences();
    fake::platform().fail(GetParam().call, E_INVALIDARG, 0);
    EXPECT_THROW(CRichTextDocumentProcessor::process(paragraph, engine.get(), std::nullopt), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), GetParam().expression);
    EXPECT_EQ(log.path(), "FontEngine/src/RichTextDocumentProcessor");
    EXPECT_EQ(fake::platform().otherReferences(), heldByEngine);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingProcessTest,
    testing::Values(
        FailingCall{"DWriteCreateFactory",
                    "DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(pDWriteFactory), &pUnkFactory)"},
        FailingCall{"Factory.CreateTextFormat",
                    "pDWriteFactory->CreateTextFormat( firstToken.fontFamily.c_str(), nullptr, "
                    "firstToken.fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL, "
                    "firstToken.fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL, "
                    "DWRITE_FONT_STRETCH_NORMAL, firstToken.fontCapSize, L\"\", &pDefaultTextFormat)"},
        FailingCall{"Factory.CreateTextLayout", "pDWriteFactory->CreateTextLayout(plainText.c_str(), textLength, "
                                                "pDefaultTextFormat, 0, 0, &pTextLayout)"},
        FailingCall{"Layout.SetWordWrapping", "pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP)", true},
        FailingCall{"Layout.SetWordWrapping", "pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_WRAP)"},
        FailingCall{"Layout.SetIncrementalTabStop",
                    "pTextLayout->SetIncrementalTabStop(static_cast<FLOAT>(tabStopWidth))"}));

TEST_P(UncheckedProcessTest, FailureIsIgnored) {
    fake::platform().fail(GetParam(), E_FAIL, 0);
    const auto layout = process(paragraphOf({L"a"}));
    EXPECT_EQ(layout.runs.size(), 1u);
    EXPECT_EQ(fake::platform().countOf(GetParam()), 1u);
    EXPECT_TRUE(log.records.empty());
}

INSTANTIATE_TEST_SUITE_P(Calls, UncheckedProcessTest,
                         testing::Values("Format.SetTextAlignment", "Format.SetParagraphAlignment",
                                         "Format.SetWordWrapping", "Layout.SetTextAlignment",
                                         "Layout.SetParagraphAlignment"));

TEST_F(RichTextDocumentProcessorTest, FailureOfALaterParagraphEndsTheDocument) {
    fake::platform().fail("Factory.CreateTextLayout", E_FAIL, 2);
    EXPECT_THROW(process(render::makeDocument({paragraphOf({L"a"}), paragraphOf({L"b"}), paragraphOf({L"c"})})),
                 oslayer::EOsLayerError);
    EXPECT_EQ(fake::platform().countOf("Factory.CreateTextLayout"), 2u);
    EXPECT_EQ(fake::platform().otherReferences(), 0);
}

TEST_F(RichTextDocumentProcessorDeathTest, FactoryOfAnotherKindEndsTheProcess) {
    const auto engine = fonts::createFontEngine(L"Sans");
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory)", E_NOINTERFACE);
    EXPECT_DEATH(CRichTextDocumentProcessor::process(paragraphOf({L"a"}), engine.get(), std::nullopt),
                 "terminate called");
}

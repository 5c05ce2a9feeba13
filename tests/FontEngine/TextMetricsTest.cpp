#include "../../FontEngine/src/TextMetrics.h"

#include <optional>
#include <stdexcept>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "GlyphRuns.h"
#include "TestDocuments.h"
#include "fake/FakePlatform.h"

using namespace testdocuments;
using fake::LayoutState;
using fonts::CTextMetrics;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

constexpr render::SRichTextFontStyle plain = {};
constexpr render::SRichTextFontStyle all = {true, true, true};

render::CRichTextParagraph makeSans(std::wstring text) {
    return makeParagraph(std::move(text), eRichTextParagraphAlignment::Right,
                         eRichTextParagraphVerticalAlignment::Bottom, L"Sans");
}

render::CRichTextDocument makeSansDocument(const std::vector<std::wstring>& texts) {
    std::vector<render::CRichTextParagraph> paragraphs;
    for (const std::wstring& text : texts)
        paragraphs.push_back(makeSans(text));
    return render::makeDocument(std::move(paragraphs));
}

// Draws the layout's text as one run whose baseline is 8 units below the top.
HRESULT drawText(const LayoutState& layout, void*, IDWriteTextRenderer* renderer, FLOAT x, FLOAT y) {
    DrawnGlyphRun run;
    run.text = layout.text;
    run.glyphIndices.assign(layout.text.length(), 1);
    run.advances.assign(layout.text.length(), 1.0f);
    run.clusterMap.assign(layout.text.length(), 0);
    return run.draw(*renderer, fake::platform().fontFace(), x, y + 8.0f);
}

class TextMetrics : public fake::FakePlatformTest {
protected:
    TextMetrics() { fake::platform().calls.clear(); }

    // The fonts have been found, so that only the calls of the operation follow.
    CTextMetrics& warm() {
        engine->getFont(L"Sans", fonts::Weight::Normal, fonts::Style::Normal)->fontFamily();
        engine->getFont(L"Sans", fonts::Weight::Bold, fonts::Style::Italic)->fontFamily();
        fake::platform().calls.clear();
        return *service;
    }

    // What a failing call throws, and what it logs.
    template <class Action>
    void expectFailure(const char* call, const char* expression, Action&& action,
                       const char* path = "FontEngine/src/TextMetrics") {
        log.records.clear();
        fake::platform().fail(call, E_OUTOFMEMORY);
        EXPECT_THROW(action(), oslayer::EOsLayerError) << call;
        EXPECT_EQ(log.expression(), expression);
        EXPECT_EQ(log.path(), path);
    }

    std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"Sans");
    std::unique_ptr<CTextMetrics> service = std::make_unique<CTextMetrics>(engine.get());

    void TearDown() override {
        service.reset();
        engine.reset();
        FakePlatformTest::TearDown();
    }
};

} // namespace

// ---- construction ----

TEST_F(TextMetrics, IsMadeWithAMultiThreadedGeometryFactoryThenTheSharedFactoryThenItsFonts) {
    const auto made = fonts::createTextMetricsService(engine.get());
    ASSERT_NE(made, nullptr);
    EXPECT_THAT(fake::platform().calls,
                ElementsAre("D2D1CreateFactory(1, ID2D1Factory, 0)", "DWriteCreateFactory(0, IDWriteFactory)",
                            "Factory.QueryInterface(IDWriteFactory)", "Factory.GetSystemFontCollection(0)"));
}

TEST_F(TextMetrics, AFailedGeometryFactoryIsReportedAsHr) {
    expectFailure("D2D1CreateFactory", "hr", [&] { fonts::createTextMetricsService(engine.get()); });
    EXPECT_EQ(fake::platform().countOf("DWriteCreateFactory"), 0u);
}

TEST_F(TextMetrics, AFailedFactoryIsReported) {
    expectFailure("DWriteCreateFactory",
                  "DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(m_dwFactory), &pUnkFactory)",
                  [&] { fonts::createTextMetricsService(engine.get()); });
}

TEST_F(TextMetrics, AFailedCollectionIsIgnoredAndFormatsTakeThePlatformsOwn) {
    fake::platform().fail("Factory.GetSystemFontCollection", E_FAIL);
    const auto made = fonts::createTextMetricsService(engine.get());
    fake::platform().calls.clear();
    made->getTextGeometryRect(L"a", L"Sans", 10, {}, plain);
    EXPECT_THAT(log.records, IsEmpty());
    EXPECT_THAT(fake::platform().calls, Contains("Factory.CreateTextFormat(\"Sans\", null, 400, 0, 5, 10, \"\")"));
}

using TextMetricsDeathTest = TextMetrics;

TEST_F(TextMetricsDeathTest, AFactoryThatDoesNotAnswerForItsInterfaceEndsTheProcess) {
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory)", E_NOINTERFACE);
    EXPECT_DEATH(fonts::createTextMetricsService(engine.get()), "");
}

// ---- one-line operations ----

TEST_F(TextMetrics, AOneLineInkBoxIsMeasuredInThisOrder) {
    warm().getTextGeometryRect(L"ab", L"Sans", 10, 12.5, all);
    std::vector<std::string> calls;
    for (const std::string& call : fake::platform().calls)
        if (!call.starts_with("Factory.QueryInterface") && !call.starts_with("Fallback") &&
            !call.starts_with("Factory.GetSystemFontFallback") && !call.starts_with("Font") &&
            !call.starts_with("Family"))
            calls.push_back(call);
    EXPECT_THAT(
        calls,
        ElementsAre("Factory.CreateTextFormat(\"Sans\", Collection, 700, 2, 5, 10, \"\")", "Format.SetTextAlignment(0)",
                    "Format.SetParagraphAlignment(0)", "Format.SetWordWrapping(1)",
                    "Factory.CreateTextLayout(\"ab\", 2, Format, 0, 0)", "Layout.SetWordWrapping(1)",
                    // The engine splits the token with a format of its own.
                    "Factory.CreateTextFormat(\"Sans\", Collection, 700, 2, 5, 10, \"\")", "Format.GetLocaleName(256)",
                    "Format.GetFontCollection()", "Layout.SetFontFamilyName(\"Sans\", [0, 2])",
                    // 10 / (1467 / 2048), as text.
                    "Layout.SetFontSize(13.960464, [0, 2])", "Layout.SetFontWeight(700, [0, 2])",
                    "Layout.SetFontStyle(2, [0, 2])", "Layout.SetFontStretch(5, [0, 2])",
                    "Layout.SetUnderline(0, [0, 2])", "Layout.SetTextAlignment(0)", "Layout.SetParagraphAlignment(0)",
                    "Layout.SetIncrementalTabStop(12.5)", "Layout.Draw(null, Renderer, 0, 0)"));
}

TEST_F(TextMetrics, EveryCheckedCallOfAOneLineLayoutIsReported) {
    const auto measure = [&] { static_cast<void>(service->getTextGeometryRect(L"ab", L"Sans", 10, {}, plain)); };
    expectFailure("Factory.CreateTextFormat",
                  "m_dwFactory->CreateTextFormat( fontFamily.c_str(), m_pFontCollection, fontStyle.bold ? "
                  "DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL, fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : "
                  "DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, fontSize, L\"\", &pTextFormat)",
                  measure);
    expectFailure("Factory.CreateTextLayout",
                  "m_dwFactory->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.length()), pTextFormat, 0, 0, "
                  "&pTextLayout)",
                  measure);
    expectFailure("Layout.SetWordWrapping", "pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP)", measure);
    expectFailure("Layout.SetTextAlignment", "pTextLayout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING)", measure);
    expectFailure("Layout.SetParagraphAlignment", "pTextLayout->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR)",
                  measure);
    expectFailure("Layout.SetIncrementalTabStop",
                  "pTextLayout->SetIncrementalTabStop(static_cast<FLOAT>(tabStopWidth))", measure);
    expectFailure("Layout.Draw", "pTextLayout->Draw(NULL, &textGeometryGetter, 0, 0)", measure);
    expectFailure("Layout.Draw", "pTextLayout->Draw(NULL, &textGeometryGetter, 0, 0)",
                  [&] { static_cast<void>(service->getTextBaseline(L"ab", L"Sans", 10, {}, plain)); });
    // The service is as good as before.
    EXPECT_NO_THROW(measure());
}

TEST_F(TextMetrics, TheFormatsOwnSettingsAreIgnoredWhenTheyFail) {
    for (const char* call : {"Format.SetTextAlignment", "Format.SetParagraphAlignment", "Format.SetWordWrapping"})
        fake::platform().fail(call, E_FAIL, 0);
    EXPECT_NO_THROW(static_cast<void>(service->getTextGeometryRect(L"ab", L"Sans", 10, {}, plain)));
    EXPECT_THAT(log.records, IsEmpty());
}

TEST_F(TextMetrics, TheInkBoxIsTheRenderersAndEmptyWhenNothingIsDrawn) {
    EXPECT_EQ(service->getTextGeometryRect(L"ab", L"Sans", 10, {}, plain), MbRect());
    fake::platform().draw = drawText;
    fake::platform().pathBounds = {0.5f, -7.0f, 1.5f, 2.0f};
    EXPECT_EQ(service->getTextGeometryRect(L"ab", L"Sans", 10, {}, plain), MbRect(0.5, -10.0, 1.5, -1.0));
}

TEST_F(TextMetrics, ATextWithATabAndNoTabStopWidthUsesTabStopsOfForty) {
    static_cast<void>(service->getTextGeometryRect(L"a\tb", L"Sans", 10, {}, plain));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetIncrementalTabStop"),
                ElementsAre("Layout.SetIncrementalTabStop(40)"));
}

TEST_F(TextMetrics, PiecesOfAOneLineTextHaveTheirExactRanges) {
    fake::FamilySpec other = fake::platform().families.front();
    other.names = {L"Other"};
    for (fake::FontSpec& font : other.fonts)
        font.win32FamilyNames = {L"Other"};
    // These two belong to the platform that is about to be reset.
    service.reset();
    engine.reset();
    fake::platform().reset();
    fake::platform().families.push_back(other);
    fake::platform().mapCharacters = [](std::wstring_view, uint32_t position, uint32_t length) {
        return position == 0 ? fake::FallbackAnswer{2, 1, 0} : fake::FallbackAnswer{length, 0, 0};
    };
    const auto freshEngine = fonts::createFontEngine(L"Sans");
    static_cast<void>(
        fonts::createTextMetricsService(freshEngine.get())->getTextGeometryRect(L"abcde", L"Sans", 10, {}, plain));
    EXPECT_THAT(
        fake::platform().callsTo("Layout.SetFontFamilyName"),
        ElementsAre("Layout.SetFontFamilyName(\"Other\", [0, 2])", "Layout.SetFontFamilyName(\"Sans\", [2, 3])"));
}

TEST_F(TextMetrics, AnEmptyOneLineTextWithoutFontFallbackHasARangeOfLengthZero) {
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory2)", E_NOINTERFACE, 0);
    static_cast<void>(service->getTextGeometryRect(L"", L"Sans", 10, {}, plain));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetFontWeight"), ElementsAre("Layout.SetFontWeight(400, [0, 0])"));
}

TEST_F(TextMetrics, TheBaselineIsTheFirstRunsAndZeroWithoutRuns) {
    EXPECT_EQ(service->getTextBaseline(L"", L"Sans", 10, {}, plain), 0.0);
    fake::platform().draw = [](const LayoutState& layout, void* context, IDWriteTextRenderer* renderer, FLOAT x,
                               FLOAT y) {
        drawText(layout, context, renderer, x, y);
        return drawText(layout, context, renderer, x, y + 5.0f);
    };
    EXPECT_EQ(service->getTextBaseline(L"ab", L"Sans", 10, {}, plain), -8.0);
}

TEST_F(TextMetrics, TheUnderlineFlagHasNoEffectInTheOneLineOperations) {
    static_cast<void>(service->getTextRect(L"ab", L"Sans", 10, all));
    static_cast<void>(service->getTextGeometryRect(L"ab", L"Sans", 10, {}, all));
    static_cast<void>(service->getTextBaseline(L"ab", L"Sans", 10, {}, all));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetUnderline"),
                ElementsAre("Layout.SetUnderline(0, [0, 2])", "Layout.SetUnderline(0, [0, 2])",
                            "Layout.SetUnderline(0, [0, 2])"));
}

// ---- font metrics ----

TEST_F(TextMetrics, FontMetricsTakeItalicBeforeBold) {
    fake::FamilySpec sans = fake::platform().families.front();
    sans.fonts[1].metrics.ascent = 1467;     // bold
    sans.fonts[2].metrics.ascent = 2 * 1467; // italic
    fake::platform().families = {sans};
    EXPECT_DOUBLE_EQ(service->getFontMetrics(L"Sans", 10.0, true, false).ascent, 20.0);
    EXPECT_DOUBLE_EQ(service->getFontMetrics(L"Sans", 10.0, false, true).ascent, 10.0);
}

TEST_F(TextMetrics, FontMetricsAreThoseOfTheNearestFloatSize) {
    const fonts::SFontMetrics narrowed = service->getFontMetrics(L"Sans", 0.1, false, false);
    EXPECT_EQ(narrowed.descent, 480.0 * (static_cast<double>(0.1f) / 1467.0));
    EXPECT_NE(narrowed.descent, 480.0 * (0.1 / 1467.0));
}

// ---- documents ----

TEST_F(TextMetrics, ADocumentWithoutParagraphsIsEmptyInEveryOperation) {
    const render::CRichTextDocument document;
    EXPECT_EQ(service->getDocumentRect(document), MbRect(1e300, 1e300, -1e300, -1e300));
    EXPECT_THAT(service->getParagraphRects(document, 10, 10), IsEmpty());
    EXPECT_THAT(service->getParagraphGeometryRects(document, 10, 10), IsEmpty());
    EXPECT_EQ(service->getDocumentGeometryRect(document, 10, 10), MbRect(1e300, 1e300, -1e300, -1e300));
}

TEST_F(TextMetrics, TheDocumentsBoxIsItsNaturalExtentWhateverItAsksFor) {
    LayoutState measured;
    fake::platform().layoutMetrics = [&measured](const LayoutState& layout) {
        measured = layout;
        DWRITE_TEXT_METRICS metrics = {};
        metrics.left = 0.5f;
        metrics.top = 0.25f;
        metrics.width = static_cast<FLOAT>(layout.text.length());
        metrics.height = 10.0f;
        return metrics;
    };
    EXPECT_EQ(service->getDocumentRect(makeSansDocument({L"abcd", L"ab"})), MbRect(0.5, -20.25, 4.5, -0.25));
    EXPECT_EQ(measured.wrapping, DWRITE_WORD_WRAPPING_NO_WRAP);
    EXPECT_EQ(measured.textAlignment, DWRITE_TEXT_ALIGNMENT_LEADING);
    EXPECT_EQ(measured.paragraphAlignment, DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    EXPECT_THAT(fake::platform().callsTo("Layout.SetMax"), IsEmpty());
}

TEST_F(TextMetrics, SettingsBeforeTheDocumentsBoxAreIgnoredWhenTheyFail) {
    // The processor's own come first: two wrappings for two paragraphs, say.
    const render::CRichTextDocument document = makeSansDocument({L"a"});
    fake::platform().fail("Layout.SetWordWrapping", E_FAIL, 2);
    fake::platform().fail("Layout.SetTextAlignment", E_FAIL, 2);
    fake::platform().fail("Layout.SetParagraphAlignment", E_FAIL, 2);
    EXPECT_EQ(service->getDocumentRect(document), MbRect(0.0, -10.0, 1.0, 0.0));
    EXPECT_EQ(fake::platform().countOf("Layout.SetWordWrapping"), 2u);
    EXPECT_THAT(log.records, IsEmpty());
}

TEST_F(TextMetrics, SumsOfBoxesAreSinglePrecision) {
    fake::platform().layoutMetrics = [](const LayoutState&) {
        DWRITE_TEXT_METRICS metrics = {};
        metrics.left = 0.1f;
        metrics.width = 0.2f;
        metrics.height = 16777216.0f;
        return metrics;
    };
    const std::vector<MbRect> rects = service->getParagraphRects(makeSansDocument({L"a", L"b", L"c"}), 0, 0);
    ASSERT_THAT(rects, SizeIs(3));
    EXPECT_EQ(rects[0].xmax, static_cast<double>(0.2f + 0.1f));
    fake::platform().layoutMetrics = [](const LayoutState& layout) {
        DWRITE_TEXT_METRICS metrics = {};
        metrics.height = layout.text == L"a" ? 16777216.0f : 1.0f;
        return metrics;
    };
    const std::vector<MbRect> stacked = service->getParagraphRects(makeSansDocument({L"a", L"b", L"c", L"d"}), 0, 0);
    // 2^24 + 1 is no float: adding 1 after 1 leads nowhere, though 2^24 + 2 is one.
    EXPECT_EQ(stacked.at(3).ymax, -16777216.0);
    EXPECT_EQ(service->getDocumentRect(makeSansDocument({L"a", L"b", L"c", L"d"})).ymin, -16777216.0);
}

TEST_F(TextMetrics, EveryEdgeOfABoxIsASinglePrecisionSum) {
    fake::platform().layoutMetrics = [](const LayoutState&) {
        DWRITE_TEXT_METRICS metrics = {};
        metrics.left = 0.1f;
        metrics.top = 0.1f;
        metrics.width = 0.2f;
        metrics.height = 0.7f;
        return metrics;
    };
    const MbRect second = service->getParagraphRects(makeSansDocument({L"a", L"b"}), 0, 0).at(1);
    EXPECT_EQ(second, MbRect(0.1f, -(0.7f + 0.1f + 0.7f), 0.2f + 0.1f, -(0.7f + 0.1f)));
    // The same sums in double precision are others.
    EXPECT_NE(second.ymin, -(double{0.7f} + double{0.1f} + double{0.7f}));
    EXPECT_NE(second.xmax, double{0.2f} + double{0.1f});
    EXPECT_NE(second.ymax, -(double{0.7f} + double{0.1f}));
}

TEST_F(TextMetrics, ParagraphBoxesAreStackedDownwards) {
    EXPECT_THAT(service->getParagraphRects(makeSansDocument({L"abc", L"de"}), 0, 0),
                ElementsAre(MbRect(0.0, -10.0, 3.0, 0.0), MbRect(0.0, -20.0, 2.0, -10.0)));
}

TEST_F(TextMetrics, LimitsAboveZeroAreAppliedAndOthersLeaveTheLayoutsOwn) {
    const render::CRichTextDocument document = makeSansDocument({L"abc"});
    static_cast<void>(service->getParagraphRects(document, 0.0, 0.0));
    static_cast<void>(service->getParagraphRects(document, -1.0, -1.0));
    static_cast<void>(service->getParagraphGeometryRects(document, 0.0, -1.0));
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    static_cast<void>(service->getGlyphRuns(document.paragraphs.at(0), 0.0, 0.0, {}, regions));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetMax"), IsEmpty());

    static_cast<void>(service->getParagraphRects(document, 0.5, 20.0));
    static_cast<void>(service->getParagraphGeometryRects(document, 30.0, 40.0));
    static_cast<void>(service->getGlyphRuns(document.paragraphs.at(0), 50.0, 60.0, {}, regions));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetMax"),
                ElementsAre("Layout.SetMaxWidth(0.5)", "Layout.SetMaxHeight(20)", "Layout.SetMaxWidth(30)",
                            "Layout.SetMaxHeight(40)", "Layout.SetMaxWidth(50)", "Layout.SetMaxHeight(60)"));
}

TEST_F(TextMetrics, LimitsAreNarrowedToFloatAndARefusedOneIsIgnored) {
    FLOAT seen = 0.0f;
    fake::platform().layoutMetrics = [&seen](const LayoutState& layout) {
        seen = layout.maxWidth;
        return DWRITE_TEXT_METRICS{};
    };
    static_cast<void>(service->getParagraphRects(makeSansDocument({L"a"}), 0.1, 0.0));
    EXPECT_EQ(seen, 0.1f);
    fake::platform().fail("Layout.SetMax", E_INVALIDARG, 0);
    EXPECT_NO_THROW(static_cast<void>(service->getParagraphRects(makeSansDocument({L"a"}), 5.0, 5.0)));
    EXPECT_EQ(seen, 0.0f);
    EXPECT_THAT(log.records, IsEmpty());
}

TEST_F(TextMetrics, WrappingAndAlignmentOfParagraphBoxesAreTheProcessors) {
    LayoutState measured;
    fake::platform().layoutMetrics = [&measured](const LayoutState& layout) {
        measured = layout;
        return DWRITE_TEXT_METRICS{};
    };
    static_cast<void>(service->getParagraphRects(makeSansDocument({L"a"}), 5.0, 5.0));
    EXPECT_EQ(measured.wrapping, DWRITE_WORD_WRAPPING_WHOLE_WORD);
    EXPECT_EQ(measured.textAlignment, DWRITE_TEXT_ALIGNMENT_TRAILING);
    EXPECT_EQ(measured.paragraphAlignment, DWRITE_PARAGRAPH_ALIGNMENT_FAR);
}

TEST_F(TextMetrics, InkBoxesAreDrawnWhereTheParagraphsStandEachIntoARendererOfItsOwn) {
    fake::platform().draw = drawText;
    fake::platform().pathBounds = {0.5f, -7.0f, 1.5f, 2.0f};
    EXPECT_THAT(service->getParagraphGeometryRects(makeSansDocument({L"a", L"b"}), 0, 0),
                ElementsAre(MbRect(0.5, -10.0, 1.5, -1.0), MbRect(0.5, -20.0, 1.5, -11.0)));
    EXPECT_THAT(fake::platform().callsTo("Layout.Draw"),
                ElementsAre("Layout.Draw(null, Renderer, 0, 0)", "Layout.Draw(null, Renderer, 0, 10)"));
    EXPECT_EQ(service->getDocumentGeometryRect(makeSansDocument({L"a", L"b"}), 0, 0), MbRect(0.5, -20.0, 1.5, -1.0));
}

TEST_F(TextMetrics, AParagraphWithoutInkHasAnEmptyInkBoxAndARealBoxAndItsUnderlineAloneMakesOne) {
    fake::platform().draw = drawText;
    EXPECT_THAT(service->getParagraphGeometryRects(makeSansDocument({L"  "}), 0, 0), ElementsAre(MbRect()));
    EXPECT_THAT(service->getParagraphRects(makeSansDocument({L"  "}), 0, 0), ElementsAre(MbRect(0.0, -10.0, 2.0, 0.0)));
    fake::platform().draw = [](const LayoutState& layout, void* context, IDWriteTextRenderer* renderer, FLOAT x,
                               FLOAT y) {
        const HRESULT result = drawText(layout, context, renderer, x, y);
        return FAILED(result) ? result : drawUnderline(*renderer, x, y + 8.0f, 2.0f, 0.5f, 1.0f);
    };
    EXPECT_THAT(service->getParagraphGeometryRects(makeSansDocument({L"  "}), 0, 0),
                ElementsAre(MbRect(0.0, -9.5, 2.0, -9.0)));
}

TEST_F(TextMetrics, EveryCheckedCallOnADocumentIsReported) {
    const render::CRichTextDocument document = makeSansDocument({L"a"});
    const render::CRichTextParagraph& paragraph = document.paragraphs.at(0);
    expectFailure("Layout.GetMetrics", "layout.pObject->GetMetrics(&metrics)",
                  [&] { static_cast<void>(service->getDocumentRect(document)); });
    expectFailure("Layout.GetMetrics", "pLayout->GetMetrics(&layoutMetrics)",
                  [&] { static_cast<void>(service->getParagraphRects(document, 0, 0)); });
    expectFailure("Layout.Draw", "pLayout->Draw(NULL, &textGeometryGetter, paragraphOrigin.x, paragraphOrigin.y)",
                  [&] { static_cast<void>(service->getParagraphGeometryRects(document, 0, 0)); });
    expectFailure("Layout.GetMetrics", "pLayout->GetMetrics(&textMetrics)",
                  [&] { static_cast<void>(service->getParagraphGeometryRects(document, 0, 0)); });
    expectFailure("Layout.Draw", "pLayout->Draw(NULL, &glyphRunGetter, paragraphOrigin.x, paragraphOrigin.y)", [&] {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        static_cast<void>(service->getGlyphRuns(paragraph, 0, 0, {}, regions));
    });
    // What the processor checks comes through under its own name.
    expectFailure(
        "Layout.SetIncrementalTabStop", "pTextLayout->SetIncrementalTabStop(static_cast<FLOAT>(tabStopWidth))",
        [&] { static_cast<void>(service->getParagraphRects(document, 0, 0)); },
        "FontEngine/src/RichTextDocumentProcessor");
}

TEST_F(TextMetrics, ARendererCallbackThatFailsIsReportedAsAFailedDrawing) {
    fake::platform().draw = drawText;
    expectFailure("Face.GetGlyphRunOutline",
                  "pLayout->Draw(NULL, &textGeometryGetter, paragraphOrigin.x, paragraphOrigin.y)",
                  [&] { static_cast<void>(service->getParagraphGeometryRects(makeSansDocument({L"a"}), 0, 0)); });
}

TEST_F(TextMetrics, ALayoutWithAnInlineObjectFailsToDraw) {
    fake::platform().draw = [](const LayoutState&, void*, IDWriteTextRenderer* renderer, FLOAT x, FLOAT y) {
        return renderer->DrawInlineObject(nullptr, x, y, nullptr, FALSE, FALSE, nullptr);
    };
    try {
        static_cast<void>(service->getTextGeometryRect(L"a", L"Sans", 10, {}, plain));
        FAIL() << "an inline object was drawn";
    } catch (const oslayer::EOsLayerError& error) {
        EXPECT_STREQ(error.what(), "E_NOTIMPL");
    }
}

TEST_F(TextMetrics, APlatformThatCountsReferencesOfTheRendererDoesNotFreeIt) {
    fake::platform().draw = [](const LayoutState& layout, void* context, IDWriteTextRenderer* renderer, FLOAT x,
                               FLOAT y) {
        EXPECT_EQ(renderer->AddRef(), 1u);
        const HRESULT result = drawText(layout, context, renderer, x, y);
        EXPECT_EQ(renderer->Release(), 0u);
        return result;
    };
    EXPECT_EQ(service->getTextBaseline(L"a", L"Sans", 10, {}, plain), -8.0);
}

// ---- the memo ----

TEST_F(TextMetrics, DocumentsThatDifferOnlyInAlignmentOrColourAreMeasuredOnce) {
    render::CRichTextParagraph paragraph = makeSans(L"abc");
    const MbRect first = service->getDocumentRect(render::makeDocument({paragraph}));
    fake::platform().calls.clear();
    paragraph.alignment = eRichTextParagraphAlignment::Center;
    paragraph.verticalAlignment = eRichTextParagraphVerticalAlignment::Middle;
    paragraph.noWrap = true;
    paragraph.tokens[0].color = 0xFFFF0000;
    EXPECT_EQ(service->getDocumentRect(render::makeDocument({paragraph})), first);
    EXPECT_THAT(fake::platform().calls, IsEmpty());

    paragraph.tokens[0].fontStyle.bold = true;
    static_cast<void>(service->getDocumentRect(render::makeDocument({paragraph})));
    EXPECT_EQ(fake::platform().countOf("Factory.CreateTextLayout"), 1u);
}

TEST_F(TextMetrics, ATextsBoxIsThatOfItsOneParagraphDocumentAndRememberedWithIt) {
    const MbRect rect = service->getTextRect(L"abc", L"Sans", 10, plain);
    EXPECT_EQ(rect, MbRect(0.0, -10.0, 3.0, 0.0));
    fake::platform().calls.clear();
    EXPECT_EQ(service->getTextRect(L"abc", L"Sans", 10, plain), rect);
    EXPECT_EQ(service->getDocumentRect(render::makeSingleParagraphDocument(L"abc", L"Sans", 10, plain)), rect);
    EXPECT_THAT(fake::platform().calls, IsEmpty());
}

TEST_F(TextMetrics, DocumentsThatDifferInWhereParagraphsEndAreMeasuredEach) {
    const auto paragraphOf = [](const std::vector<std::wstring>& texts) {
        render::CRichTextParagraph paragraph;
        for (const std::wstring& text : texts)
            paragraph.tokens.push_back(render::makeToken(text, L"Sans", 10, plain));
        return paragraph;
    };
    const auto one = render::makeDocument({paragraphOf({L"Room", L"101"})});
    const auto two = render::makeDocument({paragraphOf({L"Room"}), paragraphOf({L"101"})});
    EXPECT_EQ(service->getDocumentRect(one), MbRect(0.0, -10.0, 7.0, 0.0));
    EXPECT_EQ(service->getDocumentRect(two), MbRect(0.0, -20.0, 4.0, 0.0));
    fake::platform().calls.clear();
    EXPECT_EQ(service->getDocumentRect(one), MbRect(0.0, -10.0, 7.0, 0.0));
    EXPECT_EQ(service->getDocumentRect(two), MbRect(0.0, -20.0, 4.0, 0.0));
    EXPECT_THAT(fake::platform().calls, IsEmpty());
}

TEST_F(TextMetrics, TenThousandDocumentsAreRemembered) {
    // Tab stops tell the documents apart, so that nothing but the boxes takes room.
    render::CRichTextDocument document = makeSansDocument({L"a"});
    const auto measure = [&](int i) {
        document.tabStopWidth = static_cast<float>(i);
        static_cast<void>(service->getDocumentRect(document));
    };
    for (int i = 0; i < 10000; ++i) {
        measure(i);
        fake::platform().calls.clear();
    }
    measure(0);
    EXPECT_THAT(fake::platform().calls, IsEmpty());
    measure(10000);
    fake::platform().calls.clear();
    measure(0);
    EXPECT_THAT(fake::platform().calls, IsEmpty());
    measure(1);
    EXPECT_EQ(fake::platform().countOf("Factory.CreateTextLayout"), 1u);
}

TEST_F(TextMetrics, AFailedMeasurementIsNotRemembered) {
    fake::platform().fail("Layout.GetMetrics", E_FAIL);
    EXPECT_THROW(static_cast<void>(service->getTextRect(L"abc", L"Sans", 10, plain)), oslayer::EOsLayerError);
    EXPECT_EQ(service->getTextRect(L"abc", L"Sans", 10, plain), MbRect(0.0, -10.0, 3.0, 0.0));
}

TEST_F(TextMetrics, OtherOperationsMeasureEachTimeAnew) {
    const render::CRichTextDocument document = makeSansDocument({L"a"});
    static_cast<void>(service->getParagraphRects(document, 0, 0));
    static_cast<void>(service->getParagraphRects(document, 0, 0));
    EXPECT_EQ(fake::platform().countOf("Factory.CreateTextLayout"), 2u);
}

// ---- glyph runs ----

namespace {

// Two tokens "ab" and "cde", the second bold and red.
render::CRichTextParagraph makeTwoTokens() {
    render::CRichTextParagraph paragraph = makeSans(L"ab");
    paragraph.tokens.push_back(render::makeToken(L"cde", L"Sans", 7.5f, {true, false, false}));
    paragraph.tokens[1].color = 0xFFFF0000;
    paragraph.tokens[1].fontStyle.underline = true;
    return paragraph;
}

// Draws a run of these characters at that position.
HRESULT drawRunAt(IDWriteTextRenderer& renderer, const wchar_t* text, UINT32 textPosition) {
    DrawnGlyphRun run;
    run.text = text;
    run.textPosition = textPosition;
    run.clusterMap.assign(run.text.length(), 0);
    return run.draw(renderer, fake::platform().fontFace(), 0, 8);
}

} // namespace

TEST_F(TextMetrics, EachGlyphRunCarriesTheAttributesOfItsTokenAndItsOwnText) {
    fake::platform().draw = [](const LayoutState&, void*, IDWriteTextRenderer* renderer, FLOAT, FLOAT) {
        drawRunAt(*renderer, L"ab", 0);
        drawRunAt(*renderer, L"c", 2);
        return drawRunAt(*renderer, L"de", 3);
    };
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const std::vector<fonts::SGlyphRunDesc> runs = service->getGlyphRuns(makeTwoTokens(), 0, 0, {}, regions);
    ASSERT_THAT(runs, SizeIs(3));
    EXPECT_EQ(runs[0].token.text, L"ab");
    EXPECT_EQ(runs[0].token.fontCapSize, 10.0f);
    EXPECT_EQ(runs[0].token.color, 0xFF000000u);
    EXPECT_EQ(runs[0].token.fontStyle, plain);
    for (const size_t i : {1u, 2u}) {
        EXPECT_EQ(runs[i].token.text, runs[i].text);
        EXPECT_EQ(runs[i].token.fontFamily, L"Sans");
        EXPECT_EQ(runs[i].token.fontCapSize, 7.5f);
        EXPECT_EQ(runs[i].token.color, 0xFFFF0000u);
        EXPECT_EQ(runs[i].token.fontStyle, (render::SRichTextFontStyle{true, false, true}));
    }
    EXPECT_EQ(runs[2].token.text, L"de");
}

TEST_F(TextMetrics, AGlyphRunOutsideAllRangesIsAViolation) {
    for (const UINT32 position : {5u, 0x80000000u, 0xFFFFFFFFu}) {
        fake::platform().draw = [position](const LayoutState&, void*, IDWriteTextRenderer* renderer, FLOAT, FLOAT) {
            return drawRunAt(*renderer, L"x", position);
        };
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        EXPECT_EQ(violationPlace<common::ECheckViolation>(
                      [&] { static_cast<void>(service->getGlyphRuns(makeTwoTokens(), 0, 0, {}, regions)); }),
                  "Assertion violation: FontEngine/src/TextMetrics");
    }
}

TEST_F(TextMetrics, UnderlineRegionsAreAppendedToWhatTheCallerHas) {
    fake::platform().draw = [](const LayoutState&, void*, IDWriteTextRenderer* renderer, FLOAT, FLOAT) {
        drawUnderline(*renderer, 1, 8, 2.0f, 0.5f, 1.0f);
        return drawUnderline(*renderer, 5, 8, 2.0f, 0.5f, 1.0f);
    };
    std::vector<boost::intrusive_ptr<MbRegion>> regions(1);
    EXPECT_THAT(service->getGlyphRuns(makeTwoTokens(), 0, 0, {}, regions), IsEmpty());
    ASSERT_THAT(regions, SizeIs(3));
    EXPECT_EQ(regions[0], nullptr);
    EXPECT_EQ(regions[1]->boundingRect(), MbRect(1.0, -9.5, 3.0, -9.0));
    EXPECT_EQ(regions[2]->boundingRect(), MbRect(5.0, -9.5, 7.0, -9.0));
}

TEST_F(TextMetrics, TheTabStopWidthOfGlyphRunsIsTheCallersOrForty) {
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    static_cast<void>(service->getGlyphRuns(makeSans(L"a"), 0, 0, 12.5, regions));
    static_cast<void>(service->getGlyphRuns(makeSans(L"a"), 0, 0, {}, regions));
    EXPECT_THAT(fake::platform().callsTo("Layout.SetIncrementalTabStop"),
                ElementsAre("Layout.SetIncrementalTabStop(12.5)", "Layout.SetIncrementalTabStop(40)"));
}

TEST_F(TextMetrics, GlyphRunsOfAParagraphWithoutTokensAreOutOfRange) {
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    EXPECT_THROW(static_cast<void>(service->getGlyphRuns(render::CRichTextParagraph(), 0, 0, {}, regions)),
                 std::out_of_range);
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] {
                  static_cast<void>(
                      service->getParagraphRects(render::makeDocument({render::CRichTextParagraph()}), 0, 0));
              }),
              "Assertion violation: FontEngine/src/RichTextDocumentProcessor");
}

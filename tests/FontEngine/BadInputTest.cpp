// What hosts should not ask for and do: each gets an answer or a clear error.

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "RealFonts.h"

using namespace testdocuments;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Top = eRichTextParagraphVerticalAlignment::Top;
const wchar_t* const sans = L"Liberation Sans";

render::CRichTextDocument makeSized(float capSize) {
    return render::makeDocument({makeParagraph(L"text", Left, Top, sans, capSize)});
}

bool isFinite(const MbRect& rect) {
    return std::isfinite(rect.xmin) && std::isfinite(rect.ymin) && std::isfinite(rect.xmax) && std::isfinite(rect.ymax);
}

template <class Action>
std::string errorOf(Action&& action) {
    try {
        action();
    } catch (const oslayer::EOsLayerError& error) {
        return error.what();
    }
    return "no error";
}

class BadInput : public RealFontsTest {
protected:
    // All operations of the service that lay this document out.
    std::vector<std::function<void()>> measurements(const render::CRichTextDocument& document) {
        return {
            [=, this] { static_cast<void>(service->getDocumentRect(document)); },
            [=, this] { static_cast<void>(service->getParagraphRects(document, 0, 0)); },
            [=, this] { static_cast<void>(service->getDocumentGeometryRect(document, 0, 0)); },
            [=, this] { static_cast<void>(service->getParagraphGeometryRects(document, 0, 0)); },
            [=, this] { static_cast<void>(glyphRuns(document.paragraphs.at(0))); },
        };
    }

    // The same for a text on one line.
    std::vector<std::function<void()>> lineMeasurements(const wchar_t* text, float capSize) {
        return {
            [=, this] { static_cast<void>(service->getTextRect(text, sans, capSize, {})); },
            [=, this] { static_cast<void>(service->getTextGeometryRect(text, sans, capSize, {}, {})); },
            [=, this] { static_cast<void>(service->getTextBaseline(text, sans, capSize, {}, {})); },
        };
    }
};

} // namespace

// ---- nothing to lay out ----

TEST_F(BadInput, AnEmptyDocumentHasNothingInIt) {
    const render::CRichTextDocument document;
    EXPECT_EQ(service->getDocumentRect(document), MbRect());
    EXPECT_THAT(service->getParagraphRects(document, 10, 10), IsEmpty());
    EXPECT_THAT(service->getParagraphGeometryRects(document, 10, 10), IsEmpty());
    const fonts::CRichTextDocumentLayoutingFactory factory(service.get());
    std::vector<std::unique_ptr<fonts::IRichTextDocumentLayouting>> layoutings;
    layoutings.push_back(factory.create(document));
    layoutings.push_back(factory.createForDxfMTexts(document));
    layoutings.push_back(factory.createForDxfMTextsByClusters(document));
    for (const auto& layouting : layoutings) {
        layouting->setLayoutRect(MbRect(0, 0, 100, 100));
        layouting->layout();
        EXPECT_THAT(layouting->getRects(), IsEmpty());
        EXPECT_THAT(layouting->getParagraphs(), IsEmpty());
    }
}

TEST_F(BadInput, AnEmptyTextHasALinesHeightAndNoInk) {
    const MbRect rect = service->getTextRect(L"", sans, 10, {});
    EXPECT_GT(rect.ymax - rect.ymin, 10.0);
    EXPECT_EQ(service->getTextGeometryRect(L"", sans, 10, {}, {}), MbRect());
    EXPECT_EQ(service->getTextBaseline(L"", sans, 10, {}, {}), 0.0);
    EXPECT_THAT(glyphRuns(makeParagraph(L"")), IsEmpty());
}

TEST_F(BadInput, AParagraphWithoutTokensIsAViolationInADocumentAndOutOfRangeAlone) {
    const auto document = render::makeDocument({makeParagraph(L"a"), render::CRichTextParagraph()});
    EXPECT_THROW(static_cast<void>(service->getDocumentRect(document)), common::ECheckViolation);
    EXPECT_THROW(static_cast<void>(service->getParagraphRects(document, 0, 0)), common::ECheckViolation);
    EXPECT_THROW(static_cast<void>(service->getParagraphGeometryRects(document, 0, 0)), common::ECheckViolation);
    EXPECT_THROW(static_cast<void>(glyphRuns(render::CRichTextParagraph())), std::out_of_range);
}

TEST_F(BadInput, EmptyTokensAmongOthersChangeNothing) {
    render::CRichTextParagraph paragraph = makeParagraph(L"");
    paragraph.tokens.push_back(render::makeToken(L"ab", sans, 10, {}));
    paragraph.tokens.push_back(render::makeToken(L"", sans, 30, {}));
    EXPECT_EQ(service->getParagraphRects(render::makeDocument({paragraph}), 0, 0),
              service->getParagraphRects(render::makeDocument({makeParagraph(L"ab")}), 0, 0));
    EXPECT_THAT(glyphRuns(paragraph), SizeIs(1));
}

// ---- sizes ----

TEST_F(BadInput, ASizeOfZeroOrLessIsRefusedByThePlatform) {
    for (const float capSize : {0.0f, -0.0f, -10.0f, -infinity}) {
        for (const auto& measure : measurements(makeSized(capSize)))
            EXPECT_EQ(errorOf(measure), "E_INVALIDARG") << capSize;
        for (const auto& measure : lineMeasurements(L"text", capSize))
            EXPECT_EQ(errorOf(measure), "E_INVALIDARG") << capSize;
    }
}

TEST_F(BadInput, ASizeThatIsNotANumberIsAViolation) {
    const render::CRichTextDocument document = makeSized(notANumber);
    for (const auto& measure : measurements(document))
        EXPECT_THROW(measure(), common::ECheckViolation);
    for (const auto& measure : lineMeasurements(L"text", notANumber))
        EXPECT_THROW(measure(), common::ECheckViolation);
}

TEST_F(BadInput, SizesAtTheEndsOfTheRangeAreMeasured) {
    EXPECT_GT(service->getTextRect(L"text", sans, 1e-30f, {}).xmax, 0.0);
    EXPECT_GT(service->getTextRect(L"text", sans, 1e30f, {}).xmax, 1e30);
}

TEST_F(BadInput, FontMetricsOfAnySizeAreScaled) {
    EXPECT_EQ(service->getFontMetrics(sans, 0.0, false, false).ascent, 0.0);
    EXPECT_LT(service->getFontMetrics(sans, -10.0, false, false).ascent, 0.0);
    EXPECT_TRUE(std::isnan(service->getFontMetrics(sans, notANumber, false, false).ascent));
    EXPECT_TRUE(std::isinf(service->getFontMetrics(sans, infinity, false, false).ascent));
}

TEST_F(BadInput, ATabStopWidthOfZeroOrLessIsRefusedByThePlatform) {
    render::CRichTextDocument document = makeSized(10);
    for (const float tabStopWidth : {0.0f, -1.0f}) {
        document.tabStopWidth = tabStopWidth;
        EXPECT_EQ(errorOf([&] { static_cast<void>(service->getParagraphRects(document, 0, 0)); }), "E_INVALIDARG");
        EXPECT_EQ(
            errorOf([&] { static_cast<void>(service->getTextGeometryRect(L"a\tb", sans, 10, tabStopWidth, {})); }),
            "E_INVALIDARG");
    }
}

TEST_F(BadInput, LimitsThatAreNoNumbersSetNoLimit) {
    const render::CRichTextDocument document = makeSized(10);
    EXPECT_EQ(service->getParagraphRects(document, notANumber, notANumber), service->getParagraphRects(document, 0, 0));
    EXPECT_EQ(service->getParagraphRects(document, infinity, 0), service->getParagraphRects(document, 0, 0));
}

TEST_F(BadInput, ABoxThatIsNotANumberLaysNothingOutInDxfAndSetsNoLimitElsewhere) {
    const render::CRichTextDocument document = makeSized(10);
    const auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).create(document);
    layouting->setLayoutRect(MbRect(notANumber, 0, 100, 100));
    EXPECT_NO_THROW(layouting->layout());
    EXPECT_THAT(layouting->getRects(), SizeIs(1));
}

// ---- fonts and characters ----

TEST_F(BadInput, AFamilyInOtherLetterCaseIsFoundByThePlatform) {
    EXPECT_EQ(service->getTextRect(L"Hamburg", L"liberation SANS", 10, {}),
              service->getTextRect(L"Hamburg", sans, 10, {}));
}

TEST_F(BadInput, LoneSurrogatesAreDrawnAsMissingCharacters) {
    for (const wchar_t* text : {L"\xd800", L"\xdc00", L"a\xd800z", L"\xdc00\xd800", L"\xd800\xd800\xdc00"}) {
        const std::wstring expected = text;
        std::wstring drawn;
        for (const fonts::SGlyphRunDesc& run : glyphRuns(makeParagraph(text)))
            drawn += run.text;
        EXPECT_EQ(drawn, expected);
        EXPECT_TRUE(isFinite(service->getTextRect(text, sans, 10, {})));
        EXPECT_FALSE(service->getTextGeometryRect(text, sans, 10, {}, {}).isEmpty());
    }
}

TEST_F(BadInput, NulCharactersControlsAndNoncharactersAreTextLikeAnyOther) {
    const std::wstring text(L"a\0b\x01\x7f\xfffe\xffff\xfeffz", 9);
    std::wstring drawn;
    for (const fonts::SGlyphRunDesc& run : glyphRuns(makeParagraph(text)))
        drawn += run.text;
    EXPECT_EQ(drawn, text);
    EXPECT_TRUE(isFinite(service->getTextRect(text, sans, 10, {})));
}

TEST_F(BadInput, AlignmentsOutsideTheEnumerationsActAsDefault) {
    const auto unknown = render::makeDocument(
        {makeParagraph(L"text", eRichTextParagraphAlignment{99}, eRichTextParagraphVerticalAlignment{-7})});
    EXPECT_EQ(service->getParagraphRects(unknown, 100, 100), service->getParagraphRects(makeSized(10), 100, 100));
}

// ---- much of it ----

TEST_F(BadInput, SixtyThousandCharactersInOneParagraph) {
    std::wstring text;
    while (text.size() < 60000)
        text += L"lorem ipsum dolor ";
    const auto document = render::makeDocument({makeParagraph(text)});
    const MbRect rect = service->getParagraphRects(document, 500.0, 0.0).at(0);
    EXPECT_LE(rect.xmax, 500.0);
    EXPECT_GT(rect.ymax - rect.ymin, 10000.0);
    EXPECT_GT(service->getParagraphRects(document, 1e9, 0.0).at(0).xmax, 300000.0);
}

TEST_F(BadInput, AHundredThousandParagraphs) {
    std::vector<render::CRichTextParagraph> paragraphs(100000, makeParagraph(L"x"));
    const auto document = render::makeDocument(std::move(paragraphs));
    const std::vector<MbRect> rects = service->getParagraphRects(document, 0, 0);
    ASSERT_THAT(rects, SizeIs(100000));
    EXPECT_LT(rects.back().ymax, rects.front().ymax - 1000000.0);
    for (size_t i = 1; i < rects.size(); ++i)
        ASSERT_EQ(rects[i].ymax, rects[i - 1].ymin);
}

#include <FontEngine/LayoutScale.h>

#include <cmath>
#include <limits>

#include "TestDocuments.h"

using namespace testdocuments;
using fonts::layoutScale;
using fonts::scaledDocument;

TEST(LayoutScale, BringsCapitalsTo64UpTo128Units) {
    EXPECT_EQ(layoutScale(64.0), 1.0);
    EXPECT_EQ(layoutScale(127.9), 1.0);
    EXPECT_EQ(layoutScale(128.0), 0.5);
    EXPECT_EQ(layoutScale(2.5), 32.0);
    EXPECT_EQ(layoutScale(0.0025), 32768.0);
    for (double capSize = 1e-28; capSize < 1e28; capSize *= 3.7) {
        EXPECT_GE(capSize * layoutScale(capSize), 64.0);
        EXPECT_LT(capSize * layoutScale(capSize), 128.0);
    }
}

TEST(LayoutScale, IsAPowerOfTwo) {
    for (double capSize = 1e-35; capSize < 1e35; capSize *= 3.7) {
        int exponent = 0;
        EXPECT_EQ(std::frexp(layoutScale(capSize), &exponent), 0.5);
    }
}

TEST(LayoutScale, OfSizesBeyondItsReachIsThatOfTheNearestWithin) {
    EXPECT_EQ(layoutScale(1e-300), std::ldexp(1.0, 102));
    EXPECT_EQ(layoutScale(std::numeric_limits<double>::denorm_min()), std::ldexp(1.0, 102));
    EXPECT_EQ(layoutScale(1e300), std::ldexp(1.0, -90));
}

TEST(LayoutScale, OfNoSizeIsOne) {
    EXPECT_EQ(layoutScale(0.0), 1.0);
    EXPECT_EQ(layoutScale(-0.0), 1.0);
    EXPECT_EQ(layoutScale(std::numeric_limits<double>::infinity()), 1.0);
    EXPECT_EQ(layoutScale(std::numeric_limits<double>::quiet_NaN()), 1.0);
}

TEST(ScaledDocument, HasItsSizesAndTabStopsMultipliedAndNothingElseChanged) {
    render::CRichTextParagraph first = makeParagraph(L"a", eRichTextParagraphAlignment::Right);
    first.tokens.push_back({L"b", L"DejaVu Sans", 0.003F, 0xFF00FF00, {true, true, true}});
    first.noWrap = true;
    first.id.data1 = 7;
    render::CRichTextDocument document = render::makeDocument({first, makeParagraph(L"c")});
    document.name = L"plan";
    document.id.data1 = 9;
    document.tabStopWidth = 0.01F;

    const render::CRichTextDocument scaled = scaledDocument(document, 1024.0);
    EXPECT_EQ(scaled.name, L"plan");
    EXPECT_EQ(scaled.id, document.id);
    EXPECT_EQ(scaled.tabStopWidth, 0.01F * 1024.0F);
    ASSERT_EQ(scaled.paragraphs.size(), 2u);
    const render::CRichTextParagraph& paragraph = scaled.paragraphs.at(0);
    EXPECT_EQ(paragraph.alignment, eRichTextParagraphAlignment::Right);
    EXPECT_TRUE(paragraph.noWrap);
    EXPECT_EQ(paragraph.id, first.id);
    ASSERT_EQ(paragraph.tokens.size(), 2u);
    EXPECT_EQ(paragraph.tokens[0].fontCapSize, 10.0F * 1024.0F);
    EXPECT_EQ(paragraph.tokens[1].fontCapSize, 0.003F * 1024.0F);
    EXPECT_EQ(paragraph.tokens[1].text, L"b");
    EXPECT_EQ(paragraph.tokens[1].fontFamily, L"DejaVu Sans");
    EXPECT_EQ(paragraph.tokens[1].color, 0xFF00FF00U);
    EXPECT_EQ(paragraph.tokens[1].fontStyle, (render::SRichTextFontStyle{true, true, true}));
    EXPECT_EQ(scaled.paragraphs.at(1).tokens.at(0).text, L"c");
}

TEST(ScaledDocument, OfNoParagraphsHasNone) {
    EXPECT_EQ(scaledDocument({}, 2.0).paragraphs.size(), 0u);
}

#include <FontEngine/FontUtils.h>

#include <limits>

#include <gmock/gmock.h>

#include <Common/Violations.h>
#include <oslayer/Errors.h>

#include "fake/FakePlatform.h"

using fonts::Style;
using fonts::Underline;
using fonts::Weight;
using render::eRichTextParagraphAlignment;
using render::eRichTextParagraphVerticalAlignment;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct SetGdiFontTest : fake::FakePlatformTest {
    static oslayer::com_ptr<IDWriteTextLayout> newLayout() {
        oslayer::com_ptr<IUnknown> unknown;
        DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown);
        oslayer::com_ptr<IDWriteFactory> factory;
        factory.queryFrom(unknown);
        oslayer::com_ptr<IDWriteTextFormat> format;
        factory->CreateTextFormat(L"Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                  DWRITE_FONT_STRETCH_NORMAL, 1, L"", &format);
        oslayer::com_ptr<IDWriteTextLayout> layout;
        factory->CreateTextLayout(L"text", 4, format, 0, 0, &layout);
        fake::platform().calls.clear();
        return layout;
    }

    static void setFont(IDWriteTextLayout* layout, double capitalSize, render::SRichTextFontStyle style = {},
                        const std::wstring& family = L"Sans") {
        const auto engine = fonts::createFontEngine(L"Sans");
        fonts::setGdiFontToTextLayout(layout, {1, 2}, engine.get(), family, capitalSize, style);
    }
};

struct FailingCall {
    const char* call;
    const char* expression;
};

void PrintTo(const FailingCall& failing, std::ostream* out) {
    *out << failing.call;
}

struct FailingSetGdiFontTest : SetGdiFontTest, testing::WithParamInterface<FailingCall> {};

} // namespace

TEST(FontConversions, FromBool) {
    EXPECT_EQ(fonts::weightFromBool(false), Weight::Normal);
    EXPECT_EQ(fonts::weightFromBool(true), Weight::Bold);
    EXPECT_EQ(fonts::styleFromBool(false), Style::Normal);
    EXPECT_EQ(fonts::styleFromBool(true), Style::Italic);
    EXPECT_EQ(fonts::underlineFromBool(false), Underline::None);
    EXPECT_EQ(fonts::underlineFromBool(true), Underline::Underlined);
    EXPECT_EQ(static_cast<int>(Weight::Normal), 0);
    EXPECT_EQ(static_cast<int>(Weight::Bold), 1);
    EXPECT_EQ(static_cast<int>(Style::Normal), 0);
    EXPECT_EQ(static_cast<int>(Style::Italic), 1);
    EXPECT_EQ(static_cast<int>(Underline::None), 0);
    EXPECT_EQ(static_cast<int>(Underline::Underlined), 1);
}

TEST(FontConversions, OnlyWeight700IsBold) {
    EXPECT_EQ(fonts::weightFromDWriteWeight(DWRITE_FONT_WEIGHT_BOLD), Weight::Bold);
    for (const int weight : {0, 100, 400, 600, 699, 701, 800, 900, 950})
        EXPECT_EQ(fonts::weightFromDWriteWeight(static_cast<DWRITE_FONT_WEIGHT>(weight)), Weight::Normal) << weight;
}

TEST(FontConversions, OnlyTrueItalicIsItalic) {
    EXPECT_EQ(fonts::styleFromDWriteStyle(DWRITE_FONT_STYLE_ITALIC), Style::Italic);
    EXPECT_EQ(fonts::styleFromDWriteStyle(DWRITE_FONT_STYLE_OBLIQUE), Style::Normal);
    EXPECT_EQ(fonts::styleFromDWriteStyle(DWRITE_FONT_STYLE_NORMAL), Style::Normal);
}

TEST(Alignments, OfText) {
    EXPECT_EQ(fonts::getTextAlignment(eRichTextParagraphAlignment::Default), DWRITE_TEXT_ALIGNMENT_LEADING);
    EXPECT_EQ(fonts::getTextAlignment(eRichTextParagraphAlignment::Left), DWRITE_TEXT_ALIGNMENT_LEADING);
    EXPECT_EQ(fonts::getTextAlignment(eRichTextParagraphAlignment::Right), DWRITE_TEXT_ALIGNMENT_TRAILING);
    EXPECT_EQ(fonts::getTextAlignment(eRichTextParagraphAlignment::Center), DWRITE_TEXT_ALIGNMENT_CENTER);
    EXPECT_EQ(fonts::getTextAlignment(eRichTextParagraphAlignment::Justify), DWRITE_TEXT_ALIGNMENT_JUSTIFIED);
    for (const int unknown : {-1, 5, 1000})
        EXPECT_EQ(fonts::getTextAlignment(static_cast<eRichTextParagraphAlignment>(unknown)),
                  DWRITE_TEXT_ALIGNMENT_LEADING);
}

TEST(Alignments, OfParagraphs) {
    using enum eRichTextParagraphVerticalAlignment;
    EXPECT_EQ(fonts::getParagraphAlignment(Default), DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    EXPECT_EQ(fonts::getParagraphAlignment(Top), DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    EXPECT_EQ(fonts::getParagraphAlignment(Middle), DWRITE_PARAGRAPH_ALIGNMENT_CENTER);
    EXPECT_EQ(fonts::getParagraphAlignment(Bottom), DWRITE_PARAGRAPH_ALIGNMENT_FAR);
    for (const int unknown : {-1, 4, 1000})
        EXPECT_EQ(fonts::getParagraphAlignment(static_cast<eRichTextParagraphVerticalAlignment>(unknown)),
                  DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
}

TEST_F(SetGdiFontTest, SetsFamilySizeWeightStyleStretchAndUnderlineInThisOrder) {
    const auto layout = newLayout();
    setFont(layout, 14.67);
    EXPECT_THAT(fake::platform().callsTo("Layout."),
                ElementsAre("Layout.SetFontFamilyName(\"Sans\", [1, 2])", "Layout.SetFontSize(20.48, [1, 2])",
                            "Layout.SetFontWeight(400, [1, 2])", "Layout.SetFontStyle(0, [1, 2])",
                            "Layout.SetFontStretch(5, [1, 2])", "Layout.SetUnderline(0, [1, 2])"));
}

TEST_F(SetGdiFontTest, FlagsDecideWeightStyleAndUnderlineNotTheFontFound) {
    // The only face is upright, of normal weight and condensed.
    fake::platform().families.front().fonts.resize(1);
    fake::platform().families.front().fonts.front().stretch = DWRITE_FONT_STRETCH_CONDENSED;
    const auto layout = newLayout();
    setFont(layout, 14.67, {true, true, true});
    EXPECT_THAT(fake::platform().callsTo("Layout."),
                ElementsAre("Layout.SetFontFamilyName(\"Sans\", [1, 2])", "Layout.SetFontSize(20.48, [1, 2])",
                            "Layout.SetFontWeight(700, [1, 2])", "Layout.SetFontStyle(2, [1, 2])",
                            "Layout.SetFontStretch(5, [1, 2])", "Layout.SetUnderline(1, [1, 2])"));
}

TEST_F(SetGdiFontTest, FaceOfTheStyleAskedForGivesTheSize) {
    fake::platform().families.front().fonts.at(3).metrics.capHeight = 1024;
    const auto layout = newLayout();
    setFont(layout, 10.0, {true, true, false});
    EXPECT_EQ(fake::platform().callsTo("Layout.SetFontSize").front(), "Layout.SetFontSize(20, [1, 2])");
}

TEST_F(SetGdiFontTest, MissingFamilyIsReplacedByTheFallbackFontsFamily) {
    const auto layout = newLayout();
    setFont(layout, 10.0, {}, L"Nowhere");
    EXPECT_EQ(fake::platform().callsTo("Layout.").front(), "Layout.SetFontFamilyName(\"Sans\", [1, 2])");
}

TEST_F(SetGdiFontTest, CapitalSizeOfZeroThrowsAndSetsNothing) {
    const auto layout = newLayout();
    for (const double size : {0.0, -0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        try {
            setFont(layout, size);
            FAIL() << "no exception for " << size;
        } catch (const common::ECheckViolation& violation) {
            EXPECT_THAT(violation.message.c_str(),
                        testing::StartsWith("Assertion violation: FontEngine/src/FontUtils("));
        }
    }
    EXPECT_THAT(fake::platform().callsTo("Layout."), IsEmpty());
    EXPECT_THAT(fake::platform().callsTo("Collection."), IsEmpty());
}

TEST_P(FailingSetGdiFontTest, FailureIsReportedAndStopsTheRest) {
    const auto layout = newLayout();
    fake::platform().fail(GetParam().call, E_INVALIDARG);
    EXPECT_THROW(setFont(layout, 10.0), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), GetParam().expression);
    EXPECT_EQ(log.path(), "FontEngine/src/FontUtils");
    EXPECT_THAT(fake::platform().callsTo("Layout.").back(), testing::StartsWith(GetParam().call));
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingSetGdiFontTest,
    testing::Values(
        FailingCall{"Layout.SetFontFamilyName", "pTextLayout->SetFontFamilyName(font.fontFamily().c_str(), range)"},
        FailingCall{
            "Layout.SetFontSize",
            "pTextLayout->SetFontSize(static_cast<float>(font.capitalLetterSizeToFontSize(capitalSize)), range)"},
        FailingCall{"Layout.SetFontWeight", "pTextLayout->SetFontWeight(dWFontWeight, range)"},
        FailingCall{"Layout.SetFontStyle", "pTextLayout->SetFontStyle(dWFontStyle, range)"},
        FailingCall{"Layout.SetFontStretch", "pTextLayout->SetFontStretch(dWFontStretch, range)"},
        FailingCall{"Layout.SetUnderline", "pTextLayout->SetUnderline(dWFontUnderline, range)"}));

#include <FontEngine/IFont.h>

#include <cmath>

#include <gmock/gmock.h>

#include <FontEngine/IFontEngine.h>
#include <oslayer/Errors.h>

#include "fake/FakePlatform.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A family of one face whose DirectWrite name and Win32 name differ.
class FontTest : public fake::FakePlatformTest {
protected:
    FontTest() {
        fake::FontSpec face;
        face.win32FamilyNames = {L"Wide Sans"};
        fake::platform().families = {{{L"Serif", L"Antiqua"}, {face}}};
    }

    fake::FontSpec& face() { return fake::platform().families.front().fonts.front(); }

    // Asked for once the family is as the test wants it.
    static fonts::IFont& fontOf(fonts::IFontEngine& engine) {
        fonts::IFont* font = engine.getFont(L"Wide Sans", fonts::Weight::Normal, fonts::Style::Normal);
        fake::platform().calls.clear();
        return *font;
    }
};

struct FailingCall {
    const char* call;
    const char* expression;
};

void PrintTo(const FailingCall& failing, std::ostream* out) {
    *out << failing.call;
}

class FailingFontTest : public FontTest, public testing::WithParamInterface<FailingCall> {};

} // namespace

TEST_F(FontTest, RequestedFamilyIsTheNameAskedFor) {
    const auto engine = fonts::createFontEngine(L"Serif");
    EXPECT_EQ(fontOf(*engine).requestedFontFamily(), L"Wide Sans");
    EXPECT_THAT(fake::platform().calls, IsEmpty());
}

TEST_F(FontTest, FamilyNameOfFiveUnitsComesWithItsTerminatingNul) {
    const auto engine = fonts::createFontEngine(L"Serif");
    const std::wstring name = fontOf(*engine).fontFamily();
    EXPECT_EQ(name.length(), 6u);
    EXPECT_EQ(name, std::wstring(L"Serif\0", 6));
}

TEST_F(FontTest, FamilyNameIsTheFirstOfTheFamilyAndFetchedOnce) {
    const auto engine = fonts::createFontEngine(L"Serif");
    fonts::IFont& font = fontOf(*engine);
    EXPECT_STREQ(font.fontFamily().c_str(), L"Serif");
    EXPECT_STREQ(font.fontFamily().c_str(), L"Serif");
    EXPECT_THAT(fake::platform().calls, ElementsAre("Font.GetFontFamily()", "Family.GetFamilyNames()",
                                                    "FamilyNames.GetStringLength(0)", "FamilyNames.GetString(0, 6)"));
    EXPECT_EQ(fake::platform().familyReferences(), 0);
    EXPECT_EQ(fake::platform().familyNamesReferences(), 0);
}

TEST_P(FailingFontTest, FailedNameIsReportedAndFetchedAgain) {
    const auto engine = fonts::createFontEngine(L"Serif");
    fonts::IFont& font = fontOf(*engine);
    fake::platform().fail(GetParam().call, E_FAIL);
    EXPECT_THROW(font.fontFamily(), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), GetParam().expression);
    EXPECT_EQ(log.path(), "FontEngine/src/Font");
    EXPECT_EQ(fake::platform().familyReferences(), 0);
    EXPECT_EQ(fake::platform().familyNamesReferences(), 0);
    EXPECT_STREQ(font.fontFamily().c_str(), L"Serif");
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingFontTest,
    testing::Values(FailingCall{"Font.GetFontFamily", "m_pDWriteFont->GetFontFamily(&pFontFamily)"},
                    FailingCall{"Family.GetFamilyNames", "pFontFamily->GetFamilyNames(&pFontFamilyNames)"},
                    FailingCall{"FamilyNames.GetStringLength", "pFontFamilyNames->GetStringLength(0, &stringLength)"},
                    FailingCall{"FamilyNames.GetString(",
                                "pFontFamilyNames->GetString(0, m_fontFamily.data(), stringLength + 1)"}));

TEST_F(FontTest, FontSizeMakesCapitalsAsHighAsAskedFor) {
    const auto engine = fonts::createFontEngine(L"Serif");
    const double fontSize = fontOf(*engine).capitalLetterSizeToFontSize(2.5);
    EXPECT_NEAR(fontSize, 3.49, 0.005);
    EXPECT_EQ(fontSize, 2.5 / (1467.0 / 2048.0));
}

TEST_F(FontTest, MetricsAreScaledToTheCapitalSize) {
    const auto engine = fonts::createFontEngine(L"Serif");
    const fonts::SFontMetrics metrics = fontOf(*engine).metricsByCapitalLetterSize(14.67);
    EXPECT_DOUBLE_EQ(metrics.ascent, 19.0);
    EXPECT_DOUBLE_EQ(metrics.descent, 4.8);
    EXPECT_NEAR(metrics.capitalTopToAscent, 19.0 - 14.67, 1e-12);
    // The gap is the one metric with a sign.
    EXPECT_DOUBLE_EQ(metrics.lineGap, -0.2);
}

TEST_F(FontTest, MetricsAreRoundedProductByProduct) {
    const auto engine = fonts::createFontEngine(L"Serif");
    fonts::IFont& font = fontOf(*engine);
    for (int tenths = 1; tenths <= 200; ++tenths) {
        const double capitalSize = tenths / 10.0;
        // Kept from being fused with the subtraction, which would leave one of them unrounded.
        const volatile double scale = capitalSize / 1467.0;
        const volatile double ascent = 1900.0 * scale;
        const volatile double capitals = 1467.0 * scale;
        EXPECT_EQ(font.metricsByCapitalLetterSize(capitalSize).capitalTopToAscent, ascent - capitals) << capitalSize;
    }
}

TEST_F(FontTest, MetricsAboveTheSignedRangeStayPositive) {
    face().metrics.ascent = 40000;
    face().metrics.descent = 50000;
    face().metrics.capHeight = 40000;
    const auto engine = fonts::createFontEngine(L"Serif");
    const fonts::SFontMetrics metrics = fontOf(*engine).metricsByCapitalLetterSize(1.0);
    EXPECT_DOUBLE_EQ(metrics.ascent, 1.0);
    EXPECT_DOUBLE_EQ(metrics.descent, 1.25);
    EXPECT_DOUBLE_EQ(metrics.capitalTopToAscent, 0.0);
}

TEST_F(FontTest, MetricsAreFetchedOnce) {
    const auto engine = fonts::createFontEngine(L"Serif");
    fonts::IFont& font = fontOf(*engine);
    font.capitalLetterSizeToFontSize(1.0);
    font.metricsByCapitalLetterSize(1.0);
    font.capitalLetterSizeToFontSize(2.0);
    EXPECT_THAT(fake::platform().calls, ElementsAre("Font.GetMetrics()"));
}

TEST_F(FontTest, FontWithoutCapitalHeightGivesInfinitiesAndNoError) {
    face().metrics.capHeight = 0;
    const auto engine = fonts::createFontEngine(L"Serif");
    fonts::IFont& font = fontOf(*engine);
    EXPECT_TRUE(std::isinf(font.capitalLetterSizeToFontSize(2.5)));
    EXPECT_TRUE(std::isnan(font.capitalLetterSizeToFontSize(0.0)));
    EXPECT_TRUE(std::isinf(font.metricsByCapitalLetterSize(2.5).ascent));
    EXPECT_TRUE(std::isnan(font.metricsByCapitalLetterSize(2.5).capitalTopToAscent));
}

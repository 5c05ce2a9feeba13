#include <FontEngine/IFontEngine.h>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "../../FontEngine/src/FontEngine.h"
#include "fake/FakePlatform.h"

using fonts::createFontEngine;
using fonts::Style;
using fonts::Weight;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using FontEngineTest = fake::FakePlatformTest;
using FontEngineDeathTest = fake::FakePlatformTest;

fake::FamilySpec familyOf(const std::wstring& name, std::vector<fake::FontSpec> faces = {{}}) {
    for (fake::FontSpec& face : faces)
        face.win32FamilyNames = {name};
    return {{name}, std::move(faces)};
}

std::size_t scans() {
    return fake::platform().countOf("Collection.GetFontFamilyCount");
}

} // namespace

TEST_F(FontEngineTest, ConstructionAsksForTheSharedFactoryAndThenForItsCollection) {
    const auto engine = createFontEngine(L"Sans");
    EXPECT_THAT(fake::platform().calls,
                ElementsAre("DWriteCreateFactory(0, IDWriteFactory)", "Factory.QueryInterface(IDWriteFactory)",
                            "Factory.GetSystemFontCollection(0)"));
}

TEST_F(FontEngineTest, FailedCollectionIsReported) {
    fake::platform().fail("Factory.GetSystemFontCollection", E_INVALIDARG);
    try {
        createFontEngine(L"Sans");
        FAIL() << "no exception";
    } catch (const oslayer::EOsLayerError& error) {
        EXPECT_STREQ(error.what(), "E_INVALIDARG");
    }
    EXPECT_EQ(log.expression(), "m_pDWriteFactory->GetSystemFontCollection(&m_pFontCollection)");
    EXPECT_EQ(log.path(), "FontEngine/src/FontEngine");
}

TEST_F(FontEngineDeathTest, FailedFactoryIsNotCheckedAndEndsTheProcess) {
    fake::platform().fail("DWriteCreateFactory", E_FAIL);
    EXPECT_DEATH(createFontEngine(L"Sans"), "terminate called");
}

TEST_F(FontEngineDeathTest, FactoryOfAnotherKindEndsTheProcess) {
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory)", E_NOINTERFACE);
    EXPECT_DEATH(createFontEngine(L"Sans"), "terminate called");
}

TEST_F(FontEngineTest, AskingTwiceReturnsTheSameFontWithoutAnotherScan) {
    const auto engine = createFontEngine(L"Sans");
    fonts::IFont* font = engine->getFont(L"Sans", Weight::Bold, Style::Normal);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->requestedFontFamily(), L"Sans");
    const std::size_t callsOfFirst = fake::platform().calls.size();
    EXPECT_EQ(engine->getFont(L"Sans", Weight::Bold, Style::Normal), font);
    EXPECT_EQ(fake::platform().calls.size(), callsOfFirst);
}

TEST_F(FontEngineTest, SameFamilyInFourStylesIsLookedForFourTimes) {
    const auto engine = createFontEngine(L"Sans");
    const fonts::IFont* normal = engine->getFont(L"Sans", Weight::Normal, Style::Normal);
    const fonts::IFont* bold = engine->getFont(L"Sans", Weight::Bold, Style::Normal);
    const fonts::IFont* italic = engine->getFont(L"Sans", Weight::Normal, Style::Italic);
    const fonts::IFont* boldItalic = engine->getFont(L"Sans", Weight::Bold, Style::Italic);
    EXPECT_EQ(scans(), 4u);
    EXPECT_NE(normal, bold);
    EXPECT_NE(normal, italic);
    EXPECT_NE(bold, boldItalic);
    EXPECT_NE(italic, boldItalic);
}

TEST_F(FontEngineTest, UnknownFamilyGetsTheFallbackFontAndIsNotLookedForAgain) {
    const auto engine = createFontEngine(L"Sans");
    fonts::IFont* font = engine->getFont(L"Nowhere", Weight::Normal, Style::Normal);
    EXPECT_EQ(font, engine->getFallbackFont());
    EXPECT_EQ(font->requestedFontFamily(), L"Sans");
    const std::size_t callsOfFirst = fake::platform().calls.size();
    EXPECT_EQ(engine->getFont(L"Nowhere", Weight::Normal, Style::Normal), font);
    EXPECT_EQ(fake::platform().calls.size(), callsOfFirst);
}

TEST_F(FontEngineTest, NameInOtherLetterCaseIsAnotherKeyAndAMiss) {
    const auto engine = createFontEngine(L"Sans");
    const fonts::IFont* font = engine->getFont(L"Sans", Weight::Normal, Style::Normal);
    const fonts::IFont* shouted = engine->getFont(L"SANS", Weight::Normal, Style::Normal);
    EXPECT_EQ(scans(), 2u);
    EXPECT_NE(shouted, font);
    EXPECT_EQ(shouted, engine->getFallbackFont());
}

TEST_F(FontEngineTest, FamiliesAreVisitedInOrderAndTheFirstMatchWins) {
    fake::platform().families = {familyOf(L"Other"), familyOf(L"Wanted"), familyOf(L"Wanted")};
    const auto engine = createFontEngine(L"Other");
    fake::platform().calls.clear();
    engine->getFont(L"Wanted", Weight::Normal, Style::Normal);
    EXPECT_THAT(
        fake::platform().callsTo("Collection"),
        ElementsAre("Collection.GetFontFamilyCount()", "Collection.GetFontFamily(0)", "Collection.GetFontFamily(1)"));
}

TEST_F(FontEngineTest, FallbackFontIsTheFirstOfItsFamilyWhateverItsStyle) {
    fake::FontSpec heavy;
    heavy.weight = DWRITE_FONT_WEIGHT_BLACK;
    heavy.style = DWRITE_FONT_STYLE_ITALIC;
    fake::platform().families = {familyOf(L"Other"), familyOf(L"Spare", {heavy, {}})};
    const auto engine = createFontEngine(L"Spare");
    fake::platform().calls.clear();
    fonts::IFont* font = engine->getFallbackFont();
    EXPECT_THAT(fake::platform().calls, ElementsAre("Collection.FindFamilyName(\"Spare\")",
                                                    "Collection.GetFontFamily(1)", "Family.GetFont(0)"));
    EXPECT_EQ(font->requestedFontFamily(), L"Spare");
    EXPECT_STREQ(font->fontFamily().c_str(), L"Spare");
    fake::platform().calls.clear();
    EXPECT_EQ(engine->getFallbackFont(), font);
    EXPECT_THAT(fake::platform().calls, IsEmpty());
}

TEST_F(FontEngineTest, MissingFallbackFamilyGivesTheFirstFontOfTheFirstFamily) {
    fake::platform().families = {familyOf(L"First"), familyOf(L"Second")};
    const auto engine = createFontEngine(L"Nowhere");
    fake::platform().calls.clear();
    fonts::IFont* font = engine->getFallbackFont();
    EXPECT_THAT(fake::platform().calls, ElementsAre("Collection.FindFamilyName(\"Nowhere\")",
                                                    "Collection.GetFontFamily(0)", "Family.GetFont(0)"));
    EXPECT_EQ(font->requestedFontFamily(), L"Nowhere");
    EXPECT_STREQ(font->fontFamily().c_str(), L"First");
}

TEST_F(FontEngineTest, FailedScanIsReportedAndNotRemembered) {
    fake::platform().families = {familyOf(L"Other"), familyOf(L"Wanted")};
    fake::platform().fail("Collection.GetFontFamily(1)", E_FAIL);
    const auto engine = createFontEngine(L"Other");
    EXPECT_THROW(engine->getFont(L"Wanted", Weight::Normal, Style::Normal), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), "m_pFontCollection->GetFontFamily(iFamily, &pFontFamily)");
    EXPECT_EQ(log.path(), "FontEngine/src/FontEngine");
    EXPECT_EQ(engine->getFont(L"Wanted", Weight::Normal, Style::Normal)->requestedFontFamily(), L"Wanted");
    EXPECT_EQ(scans(), 2u);
}

TEST_F(FontEngineTest, FailedFallbackLookupIsReportedAndTriedAgain) {
    fake::platform().fail("Collection.FindFamilyName", E_FAIL);
    const auto engine = createFontEngine(L"Sans");
    EXPECT_THROW(engine->getFallbackFont(), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), "m_pFontCollection->FindFamilyName(m_fallbackGDIFontName.c_str(), &fontFamilyIndex, "
                                "&fontFamilyExists)");
    EXPECT_NE(engine->getFallbackFont(), nullptr);
}

TEST_F(FontEngineTest, FailedFallbackFamilyIsReported) {
    fake::platform().fail("Collection.GetFontFamily", E_FAIL);
    const auto engine = createFontEngine(L"Sans");
    EXPECT_THROW(engine->getFallbackFont(), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), "m_pFontCollection->GetFontFamily(fontFamilyIndex, &pFontFamily)");
}

TEST_F(FontEngineTest, MissOfAFailingFallbackIsStillRemembered) {
    fake::platform().fail("Collection.FindFamilyName", E_FAIL);
    const auto engine = createFontEngine(L"Sans");
    EXPECT_THROW(engine->getFont(L"Nowhere", Weight::Normal, Style::Normal), oslayer::EOsLayerError);
    EXPECT_EQ(engine->getFont(L"Nowhere", Weight::Normal, Style::Normal), engine->getFallbackFont());
    EXPECT_EQ(scans(), 1u);
}

TEST_F(FontEngineTest, SystemWithoutFontsIsReported) {
    fake::platform().families.clear();
    const auto engine = createFontEngine(L"Sans");
    EXPECT_THROW(engine->getFont(L"Sans", Weight::Normal, Style::Normal), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), "m_pFontCollection->GetFontFamily(fontFamilyIndex, &pFontFamily)");
}

TEST_F(FontEngineDeathTest, FallbackFontThatCannotBeHadIsNotCheckedAndEndsTheProcessWhenUsed) {
    fake::platform().fail("Family.GetFont(0)", E_FAIL);
    const auto engine = createFontEngine(L"Sans");
    fonts::IFont* font = engine->getFallbackFont();
    ASSERT_NE(font, nullptr);
    EXPECT_TRUE(log.records.empty());
    EXPECT_DEATH(font->capitalLetterSizeToFontSize(1.0), "terminate called");
    EXPECT_DEATH(font->fontFamily(), "terminate called");
}

TEST_F(FontEngineTest, EngineGivesItsFontsBack) {
    {
        const auto engine = createFontEngine(L"Sans");
        engine->getFont(L"Sans", Weight::Normal, Style::Normal);
        engine->getFont(L"Sans", Weight::Bold, Style::Normal);
        engine->getFallbackFont();
        EXPECT_EQ(fake::platform().fontReferences(), 3);
    }
    EXPECT_EQ(fake::platform().fontReferences(), 0);
    EXPECT_EQ(fake::platform().familyReferences(), 0);
}

TEST(FontKey, OrdersByNameThenWeightThenStyle) {
    const fonts::SFontKeyLess less;
    const fonts::SFontKey plain{Style::Normal, Weight::Normal, L"ab"};
    // A shorter name comes before those it begins.
    EXPECT_TRUE(less(plain, fonts::SFontKey{Style::Normal, Weight::Normal, L"abc"}));
    EXPECT_TRUE(less(fonts::SFontKey{Style::Italic, Weight::Bold, L"a"}, plain));
    // Units count as unsigned, letter case matters.
    EXPECT_TRUE(less(plain, fonts::SFontKey{Style::Normal, Weight::Normal, L"\xFFFD"}));
    EXPECT_TRUE(less(fonts::SFontKey{Style::Normal, Weight::Normal, L"AB"}, plain));
    // The name decides before the weight, the weight before the style.
    EXPECT_TRUE(less(fonts::SFontKey{Style::Normal, Weight::Bold, L"aa"}, plain));
    EXPECT_TRUE(less(fonts::SFontKey{Style::Italic, Weight::Normal, L"ab"},
                     fonts::SFontKey{Style::Normal, Weight::Bold, L"ab"}));
    EXPECT_TRUE(less(plain, fonts::SFontKey{Style::Italic, Weight::Normal, L"ab"}));
    EXPECT_FALSE(less(plain, plain));
    // A key that only looks at a name finds the entry that owns it.
    EXPECT_FALSE(less(plain, fonts::SFontKeyView{Style::Normal, Weight::Normal, L"ab"}));
    EXPECT_FALSE(less(fonts::SFontKeyView{Style::Normal, Weight::Normal, L"ab"}, plain));
}

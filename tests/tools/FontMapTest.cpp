#include <FontMap.h>

#include <Session.h>

#include "Program.h"

namespace {

class FontMapTest : public tooltest::ProgramTest {
protected:
    tool::Session m_session;
    tool::FontMap& m_map = m_session.fontMap();
};

TEST_F(FontMapTest, AnInstalledFamilyStandsForItself) {
    EXPECT_EQ(m_map.familyFor(L"DejaVu Serif"), L"DejaVu Serif");
    EXPECT_TRUE(m_map.replacements().empty());
}

TEST_F(FontMapTest, TheFallbackFontsOwnFamilyStandsForItself) {
    EXPECT_EQ(m_map.familyFor(L"DejaVu Sans"), L"DejaVu Sans");
    EXPECT_TRUE(m_map.replacements().empty());
}

TEST_F(FontMapTest, TheUsersTableComesBeforeAnInstalledFamily) {
    m_map.load(file("map.json", R"({"DejaVu Serif": "Liberation Mono"})"));
    EXPECT_EQ(m_map.familyFor(L"DejaVu Serif"), L"Liberation Mono");
}

TEST_F(FontMapTest, TheFirstInstalledFamilyOfAListWins) {
    m_map.load(file("map.json", R"({"romans.shx": ["Nowhere Sans", "Liberation Serif", "DejaVu Sans"]})"));
    EXPECT_EQ(m_map.familyFor(L"ROMANS"), L"Liberation Serif");
}

TEST_F(FontMapTest, ARowWhoseFamiliesAreAllMissingLeavesTheBuiltInTableToDecide) {
    m_map.load(file("map.json", R"({"arial": "Nowhere Sans"})"));
    EXPECT_EQ(m_map.familyFor(L"arial.ttf"), L"Liberation Sans");
}

TEST_F(FontMapTest, CaseFolderAndEndingOfAFileDoNotMatter) {
    EXPECT_EQ(m_map.familyFor(L"C:\\WINDOWS\\Fonts\\TIMES.TTF"), L"Liberation Serif");
    EXPECT_EQ(m_map.familyFor(L"fonts/times"), L"Liberation Serif");
}

TEST_F(FontMapTest, TheFileOfAnInstalledFamilyIsNoReplacement) {
    EXPECT_EQ(m_map.familyFor(L"DejaVuSans.ttf"), L"DejaVu Sans");
    EXPECT_EQ(m_map.familyFor(L"LiberationSerif-Regular.ttf"), L"Liberation Serif");
    EXPECT_TRUE(m_map.replacements().empty());
}

TEST_F(FontMapTest, WhatNoTableNamesBecomesTheDefaultFamily) {
    EXPECT_EQ(m_map.familyFor(L"nosuchfont.shx"), L"DejaVu Sans");
}

TEST_F(FontMapTest, EachReplacementIsRememberedOnceInOrderOfFirstUse) {
    m_map.familyFor(L"nosuchfont.shx");
    m_map.familyFor(L"arial.ttf");
    m_map.familyFor(L"nosuchfont.shx");
    ASSERT_EQ(m_map.replacements().size(), 2U);
    EXPECT_EQ(m_map.replacements()[0].requested, L"nosuchfont.shx");
    EXPECT_EQ(m_map.replacements()[1].family, L"Liberation Sans");
}

TEST_F(FontMapTest, AFontOfTwoByteCharactersIsNamedOnce) {
    m_map.coverBigFont(L"", L"DejaVu Sans");
    m_map.coverBigFont(L"bigfont.shx", L"DejaVu Sans");
    m_map.coverBigFont(L"bigfont.shx", L"Liberation Sans");
    ASSERT_EQ(m_map.replacements().size(), 1U);
    EXPECT_EQ(m_map.replacements()[0].family, L"DejaVu Sans");
}

} // namespace

#include "support/Fonts.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <thread>
#include <vector>

#include <Common/Utf.h>
#include <dwrite_2.h>
#include <gmock/gmock.h>

#include "fallback/FallbackMapper.h"
#include "fonts/FontSet.h"

namespace platform::test {
namespace {

using testing::ElementsAre;

std::wstring nameOf(CFontFamily* family) {
    return family != nullptr ? textAt(*familyNames(*family), 0) : L"(none)";
}

TEST(FamilySubstitutes, AreNotNeededForFamiliesThatExist) {
    CFontCollection& fonts = CFontCollection::system();
    for (const auto& family : fonts.families()) {
        const std::wstring name = textAt(*familyNames(*family), 0);
        EXPECT_EQ(fonts.familyFor(name), family.get());
        EXPECT_EQ(fonts.findFamily(name), family.get());
    }
}

TEST(FamilySubstitutes, AWin32FamilyHasItsOwnFacesOnly) {
    CFontFamily* const narrow = CFontCollection::system().familyFor(L"Liberation Sans Narrow");
    ASSERT_NE(narrow, nullptr);
    EXPECT_EQ(nameOf(narrow), L"Liberation Sans Narrow");
    std::vector<std::wstring> faces;
    for (const auto& font : narrow->fonts()) {
        faces.push_back(textAt(*faceNames(*font), 0));
    }
    EXPECT_THAT(faces, ElementsAre(L"Narrow", L"Narrow Italic", L"Narrow Bold", L"Narrow Bold Italic",
                                   L"Narrow Oblique", L"Narrow Bold Oblique"));
    CFont& bold = narrow->match(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(textAt(*faceNames(bold), 0), L"Narrow Bold Italic");
    EXPECT_EQ(nameOf(CFontCollection::system().familyFor(L"DejaVu Sans Condensed")), L"DejaVu Sans Condensed");
    EXPECT_EQ(nameOf(CFontCollection::system().familyFor(L"DejaVu Sans Light")), L"DejaVu Sans Light");
}

TEST(FamilySubstitutes, IgnoreLetterCaseAndNothingElse) {
    CFontCollection& fonts = CFontCollection::system();
    EXPECT_EQ(fonts.familyFor(L"LIBERATION sans NARROW"), fonts.familyFor(L"Liberation Sans Narrow"));
    for (const wchar_t* const name : {L"", L" ", L"Liberation Sans Narrow ", L"Liberation", L"Narrow", L"Arial"}) {
        EXPECT_EQ(fonts.familyFor(name), nullptr);
    }
}

TEST(FamilySubstitutes, ThatAreFoundByNameStayUnknownToCallers) {
    IDWriteFontCollection& fonts = CFontCollection::system();
    UINT32 index = 0;
    BOOL exists = TRUE;
    EXPECT_EQ(fonts.FindFamilyName(L"Liberation Sans Narrow", &index, &exists), S_OK);
    EXPECT_EQ(exists, FALSE);
}

TEST(FamilySubstitutes, ShareTheFacesOfTheFontsTheyStandFor) {
    CFont& real = fontOfFile("fonts-liberation/LiberationSansNarrow-Regular.ttf");
    CFont& narrow = *CFontCollection::system().familyFor(L"Liberation Sans Narrow")->fonts().front();
    EXPECT_NE(&real, &narrow);
    EXPECT_EQ(&real.face(), &narrow.face());
    oslayer::com_ptr<IDWriteFont> found;
    EXPECT_EQ(CFontCollection::system().GetFontFromFontFace(&narrow.face(), &found), S_OK);
    EXPECT_EQ(found.get(), static_cast<IDWriteFont*>(&real));
    oslayer::com_ptr<IDWriteFontFamily> family;
    narrow.GetFontFamily(&family);
    EXPECT_EQ(family.get(), static_cast<IDWriteFontFamily*>(&narrow.family()));
}

TEST(FamilySubstitutes, NamesThatNoFontCanHaveAreNotFound) {
    CFontCollection& fonts = CFontCollection::system();
    EXPECT_EQ(fonts.familyFor(std::wstring(300, L'a')), nullptr);
    EXPECT_EQ(fonts.familyFor(std::wstring(1, static_cast<wchar_t>(0xD800))), nullptr);
    EXPECT_EQ(fonts.familyFor(L"\U0001F600"), nullptr);
    const CFontCollection none{FontSet{}};
    EXPECT_EQ(none.familyFor(L"Liberation Sans Narrow"), nullptr);
}

TEST(FamilySubstitutes, MoreNamesThanAreKeptChangeNothing) {
    CFontCollection& fonts = CFontCollection::system();
    CFontFamily* const narrow = fonts.familyFor(L"Liberation Sans Narrow");
    for (int i = 0; i < 1100; ++i) {
        EXPECT_EQ(fonts.familyFor(L"No Such Family " + std::to_wstring(i)), nullptr);
    }
    EXPECT_EQ(fonts.familyFor(L"Liberation Sans Narrow"), narrow);
}

TEST(FamilySubstitutes, ServeManyThreads) {
    const CFontCollection own(readFontSet(nullptr));
    std::vector<std::thread> threads;
    std::array<CFontFamily*, 4> found{};
    for (CFontFamily*& family : found) {
        threads.emplace_back([&own, &family] { family = own.familyFor(L"Liberation Sans Narrow"); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_NE(found[0], nullptr);
    EXPECT_EQ(found, (std::array<CFontFamily*, 4>{found[0], found[0], found[0], found[0]}));
}

TEST(FamilySubstitutes, SetTheTextOfLayoutsThatAskForThem) {
    oslayer::com_ptr<IUnknown> unknown;
    ASSERT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown), S_OK);
    oslayer::com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    const auto widthIn = [&factory](const wchar_t* family, DWRITE_FONT_STRETCH stretch) {
        oslayer::com_ptr<IDWriteTextFormat> format;
        EXPECT_EQ(factory->CreateTextFormat(family, nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                            stretch, 10.0F, L"", &format),
                  S_OK);
        oslayer::com_ptr<IDWriteTextLayout> layout;
        EXPECT_EQ(factory->CreateTextLayout(L"Narrow", 6, format, 0, 0, &layout), S_OK);
        DWRITE_TEXT_METRICS metrics{};
        EXPECT_EQ(layout->GetMetrics(&metrics), S_OK);
        return metrics.width;
    };
    const float narrow = widthIn(L"Liberation Sans", DWRITE_FONT_STRETCH_CONDENSED);
    EXPECT_EQ(widthIn(L"Liberation Sans Narrow", DWRITE_FONT_STRETCH_NORMAL), narrow);
    EXPECT_LT(narrow, 0.9F * widthIn(L"Liberation Sans", DWRITE_FONT_STRETCH_NORMAL));
}

TEST(FamilySubstitutes, AreHandedOutByFallbackAsMembersOfTheirOwnFamily) {
    CFontFamily* const narrow = CFontCollection::system().familyFor(L"Liberation Sans Narrow");
    const Mapping mapping = FallbackMapper::system().map(u"abc", 0, 3, L"", narrow, DWRITE_FONT_WEIGHT_BOLD,
                                                         DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL);
    ASSERT_EQ(mapping.length, 3u);
    EXPECT_EQ(mapping.font, &fontOfFile("fonts-liberation/LiberationSansNarrow-Bold.ttf"));
    EXPECT_EQ(nameOf(&mapping.font->family()), L"Liberation Sans");
    EXPECT_EQ(mapping.font->GetStretch(), DWRITE_FONT_STRETCH_CONDENSED);
}

/// Writes which families stand for names that the rules of a configuration are about, and ends the process.
[[noreturn]] void answerWithConfiguration(const std::string& path, const char* language) {
    setenv("FONTCONFIG_FILE", path.c_str(), 1);
    setenv("LC_ALL", language, 1);
    for (const wchar_t* const name : {L"Arial", L"arial", L"Arial Narrow", L"Courier New", L"Times", L"Palatino"}) {
        std::cerr << common::utf8FromWide(nameOf(CFontCollection::system().familyFor(name))) << ';';
    }
    std::cerr << std::endl;
    std::_Exit(0);
}

TEST(FamilySubstitutes, AreWhatTheConfigurationBindsToAName) {
    const std::string path = testing::TempDir() + "family-substitutes.conf";
    std::ofstream(path)
        << "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\"><fontconfig>"
        << "<dir>" << FONTENGINE_TEST_FONTS << "/fonts-liberation</dir>"
        << "<cachedir>" << testing::TempDir()
        << "family-substitutes-cache</cachedir>"
        // As the rules for fonts made to the same measures do.
        << "<alias binding=\"same\"><family>Arial</family><accept><family>No Such Family</family>"
           "<family>Liberation Sans</family></accept></alias>"
        << "<alias binding=\"same\"><family>Arial Narrow</family><accept>"
           "<family>Liberation Sans Narrow</family></accept></alias>"
        << "<alias binding=\"same\"><family>Courier New</family><accept>"
           "<family>Liberation Mono</family></accept></alias>"
        // As the rules for kinds of fonts do.
        << "<alias><family>Times</family><default><family>Liberation Serif</family></default></alias>"
        << "<match><test qual=\"all\" name=\"family\" compare=\"not_eq\"><string>Serif</string></test>"
           "<edit name=\"family\" mode=\"append_last\"><string>Liberation Serif</string></edit></match>"
        // As the rules of a user's language may do.
        << "<match><test name=\"lang\" compare=\"contains\"><string>ja</string></test>"
           "<edit name=\"family\" mode=\"prepend\" binding=\"strong\">"
           "<string>Liberation Serif</string></edit></match>"
        << "</fontconfig>";
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    for (const char* const language : {"C.UTF-8", "ja_JP.UTF-8"}) {
        EXPECT_EXIT(answerWithConfiguration(path, language), testing::ExitedWithCode(0),
                    "Liberation Sans;Liberation Sans;Liberation Sans Narrow;Liberation Mono;\\(none\\);\\(none\\);");
    }
}

} // namespace
} // namespace platform::test

#include "fallback/Locale.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(FontconfigLanguage, keepsTheLanguageAndTheRegionsThatFontconfigKnows) {
    EXPECT_EQ(fontconfigLanguage(L"en"), "en");
    EXPECT_EQ(fontconfigLanguage(L"en-us"), "en");
    EXPECT_EQ(fontconfigLanguage(L"ja-JP"), "ja");
    EXPECT_EQ(fontconfigLanguage(L"sr-latn-rs"), "sr");
    EXPECT_EQ(fontconfigLanguage(L"pa-pk"), "pa-pk");
    EXPECT_EQ(fontconfigLanguage(L"ku-iq"), "ku-iq");
}

// Fontconfig's names are zh-cn, zh-sg, zh-tw, zh-hk and zh-mo.
TEST(FontconfigLanguage, tellsTheScriptsOfChineseByRegion) {
    EXPECT_EQ(fontconfigLanguage(L"zh"), "zh-cn");
    EXPECT_EQ(fontconfigLanguage(L"zh-hans"), "zh-cn");
    EXPECT_EQ(fontconfigLanguage(L"zh-cn"), "zh-cn");
    EXPECT_EQ(fontconfigLanguage(L"zh-sg"), "zh-sg");
    EXPECT_EQ(fontconfigLanguage(L"zh-hant"), "zh-tw");
    EXPECT_EQ(fontconfigLanguage(L"zh-tw"), "zh-tw");
    EXPECT_EQ(fontconfigLanguage(L"zh-hk"), "zh-hk");
    EXPECT_EQ(fontconfigLanguage(L"zh-hant-hk"), "zh-hk");
    EXPECT_EQ(fontconfigLanguage(L"zh-mo"), "zh-mo");
    EXPECT_EQ(fontconfigLanguage(L"zh-hans-hk"), "zh-cn");
}

TEST(FontconfigLanguage, isEmptyWithoutAUsableName) {
    EXPECT_EQ(fontconfigLanguage(L""), "");
    EXPECT_EQ(fontconfigLanguage(L"日本"), "");
    EXPECT_EQ(fontconfigLanguage(std::wstring(300, L'x')), "");
}

TEST(LanguageOfScript, isTheLocalesOwnIfItUsesTheScript) {
    EXPECT_EQ(languageOfScript(USCRIPT_HAN, "ja"), "ja");
    EXPECT_EQ(languageOfScript(USCRIPT_HAN, "ko"), "ko");
    EXPECT_EQ(languageOfScript(USCRIPT_HAN, "zh-tw"), "zh-tw");
    EXPECT_EQ(languageOfScript(USCRIPT_DEVANAGARI, "mr"), "mr");
    EXPECT_EQ(languageOfScript(USCRIPT_CYRILLIC, "uk"), "uk");
}

TEST(LanguageOfScript, isTheOneMostWrittenInItElse) {
    EXPECT_EQ(languageOfScript(USCRIPT_TAMIL, ""), "ta");
    EXPECT_EQ(languageOfScript(USCRIPT_TAMIL, "ja"), "ta");
    EXPECT_EQ(languageOfScript(USCRIPT_HIRAGANA, "en"), "ja");
    EXPECT_EQ(languageOfScript(USCRIPT_HANGUL, ""), "ko");
    EXPECT_EQ(languageOfScript(USCRIPT_BOPOMOFO, ""), "zh-tw");
    EXPECT_EQ(languageOfScript(USCRIPT_ARABIC, "de"), "ar");
}

TEST(LanguageOfScript, isNoGuess) {
    EXPECT_EQ(languageOfScript(USCRIPT_HAN, ""), "");
    EXPECT_EQ(languageOfScript(USCRIPT_HAN, "en"), "");
    EXPECT_EQ(languageOfScript(USCRIPT_COMMON, ""), "");
}

} // namespace
} // namespace platform

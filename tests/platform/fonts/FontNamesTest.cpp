#include "support/Fonts.h"

#include <Common/Utf.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;
using testing::ElementsAre;

constexpr UINT32 noIndex = 0xFFFFFFFF;

std::string english(IDWriteFont& font, DWRITE_INFORMATIONAL_STRING_ID id) {
    const com_ptr<IDWriteLocalizedStrings> strings = informationalStrings(font, id);
    return static_cast<IDWriteLocalizedStrings*>(strings) != nullptr ? common::utf8FromWide(textAt(*strings, 0)) : "";
}

TEST(FontNames, InformationalStringsAreThoseOfEveryPinnedFile) {
    for (const auto& row : readTable("faces.tsv")) {
        CFont& font = fontOfFile(row[0], std::stoi(row[1]));
        EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES), row[2]) << row[0];
        EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_WIN32_SUBFAMILY_NAMES), row[3]) << row[0];
        EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_PREFERRED_FAMILY_NAMES), row[4]) << row[0];
        EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_FULL_NAME), row[5]) << row[0];
        if (!row[4].empty()) {
            EXPECT_EQ(common::utf8FromWide(font.family().names()[0].text), row[4]) << row[0];
        }
    }
}

TEST(FontNames, WeightsAndStretchesAreThoseOfEveryPinnedFile) {
    for (const auto& row : readTable("faces.tsv")) {
        const CFont& font = fontOfFile(row[0], std::stoi(row[1]));
        const int weightClass = std::stoi(row[6]);
        const bool boldBit = (std::stoi(row[8]) & 0x20) != 0;
        EXPECT_EQ(font.weight(), weightClass == 400 && boldBit ? 700 : weightClass) << row[0];
        EXPECT_EQ(font.stretch(), std::stoi(row[7])) << row[0];
        const bool italicBit = (std::stoi(row[8]) & 0x01) != 0;
        EXPECT_EQ(font.style() != DWRITE_FONT_STYLE_NORMAL, italicBit) << row[0];
    }
}

TEST(FontNames, ObliqueAndItalicAreToldApart) {
    EXPECT_EQ(fontOfFile("fonts-dejavu-extra/DejaVuSans-Oblique.ttf").style(), DWRITE_FONT_STYLE_OBLIQUE);
    EXPECT_EQ(fontOfFile("fonts-dejavu-extra/DejaVuSerif-Italic.ttf").style(), DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(dataFont("Wws.ttf").style(), DWRITE_FONT_STYLE_OBLIQUE) << "by the bit of its own";
}

TEST(FontNames, AWeightClassOfOneDigitMeansHundreds) {
    EXPECT_EQ(dataFont("Wws.ttf").weight(), 900);
}

TEST(FontNames, AWeightClassBeyondTheHeaviestIsTheHeaviest) {
    EXPECT_EQ(dataFont("Collection.ttc", 1).weight(), DWRITE_FONT_WEIGHT_EXTRA_BLACK);
}

TEST(FontNames, WithoutOs2TheHeadTableTellsWeightAndStyle) {
    const CFont& font = dataFont("NoOs2.ttf");
    EXPECT_EQ(font.weight(), DWRITE_FONT_WEIGHT_BOLD);
    EXPECT_EQ(font.style(), DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(font.stretch(), DWRITE_FONT_STRETCH_NORMAL);
}

TEST(FontNames, AFontsOwnNamesForThisModelComeFirstInEveryLanguage) {
    CFont& font = dataFont("Wws.ttf");
    EXPECT_THAT(listed(*familyNames(font.family())),
                ElementsAre(L"en-us=Test Wws", L"de-de=Prüfschrift", L"ja-jp=テスト"));
    EXPECT_THAT(listed(*faceNames(font)), ElementsAre(L"en-us=Expanded Black Oblique"));
    EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_WWS_FAMILY_NAME), "Test Wws");
    EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_PREFERRED_SUBFAMILY_NAMES), "Expanded Heavy Display");
    EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_LICENSE_DESCRIPTION), "Free to use.");
}

TEST(FontNames, WordsOfStyleAreTakenOffAWin32Family) {
    CFont& font = dataFont("Words.ttf");
    EXPECT_THAT(listed(*familyNames(font.family())), ElementsAre(L"en-us=Test Words"));
    EXPECT_THAT(listed(*faceNames(font)), ElementsAre(L"en-us=Semi Condensed Light Italic"));
    EXPECT_EQ(english(font, DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES), "Test Words Semi Condensed Light");
    EXPECT_EQ(font.weight(), DWRITE_FONT_WEIGHT_LIGHT) << "stated by the name alone";
    EXPECT_EQ(font.stretch(), DWRITE_FONT_STRETCH_SEMI_CONDENSED);
}

TEST(FontNames, AFontWithoutEnglishNamesKeepsItsLanguage) {
    CFont& font = dataFont("Russian.ttf");
    EXPECT_THAT(listed(*familyNames(font.family())), ElementsAre(L"ru-ru=Проба"));
    EXPECT_THAT(listed(*faceNames(font)), ElementsAre(L"ru-ru=Обычный"));
}

TEST(FontNames, LanguagesWithARegionKeepIt) {
    // Traditional Chinese comes first in the file; English is put before it.
    CFont& font = fontOfFile("fonts-noto-cjk/NotoSansCJK-Regular.ttc", 3);
    const com_ptr<IDWriteLocalizedStrings> names = familyNames(font.family());
    ASSERT_EQ(names->GetCount(), 2u);
    EXPECT_EQ(localeAt(*names, 0), L"en-us");
    EXPECT_EQ(localeAt(*names, 1), L"zh-tw");
    EXPECT_EQ(textAt(*names, 0), L"Noto Sans CJK TC");
}

TEST(FontNames, MissingStringsAndUnknownIdsAreNoFailure) {
    CFont& regular = font(L"DejaVu Sans");
    for (const int id : {0, 19, 20, 500, -1}) {
        auto* strings = reinterpret_cast<IDWriteLocalizedStrings*>(1);
        BOOL exists = TRUE;
        EXPECT_EQ(regular.GetInformationalStrings(static_cast<DWRITE_INFORMATIONAL_STRING_ID>(id), &strings, &exists),
                  S_OK);
        EXPECT_EQ(exists, FALSE);
        EXPECT_EQ(strings, nullptr);
    }
}

TEST(FontNames, ASimulatedFontHasItsBasesStrings) {
    CFont& base = font(L"Liberation Sans");
    CFont& oblique = font(L"Liberation Sans", DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_OBLIQUE);
    ASSERT_EQ(oblique.simulations(), DWRITE_FONT_SIMULATIONS_OBLIQUE);
    for (const auto id : {DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES,
                          DWRITE_INFORMATIONAL_STRING_WIN32_SUBFAMILY_NAMES, DWRITE_INFORMATIONAL_STRING_FULL_NAME}) {
        EXPECT_FALSE(english(base, id).empty());
        EXPECT_EQ(english(oblique, id), english(base, id));
    }
}

TEST(FontNames, EveryOtherStringOfAFileIsThere) {
    // As fontTools prints them for this file.
    CFont& regular = fontOfFile("fonts-dejavu-core/DejaVuSans.ttf");
    EXPECT_EQ(english(regular, DWRITE_INFORMATIONAL_STRING_VERSION_STRINGS), "Version 2.37");
    EXPECT_EQ(english(regular, DWRITE_INFORMATIONAL_STRING_POSTSCRIPT_NAME), "DejaVuSans");
    EXPECT_EQ(english(regular, DWRITE_INFORMATIONAL_STRING_MANUFACTURER), "DejaVu fonts team");
    EXPECT_EQ(english(regular, DWRITE_INFORMATIONAL_STRING_FONT_VENDOR_URL), "http://dejavu.sourceforge.net");
    EXPECT_EQ(english(regular, DWRITE_INFORMATIONAL_STRING_LICENSE_INFO_URL),
              "http://dejavu.sourceforge.net/wiki/index.php/License");
    EXPECT_FALSE(english(regular, DWRITE_INFORMATIONAL_STRING_COPYRIGHT_NOTICE).empty());
    EXPECT_FALSE(english(regular, DWRITE_INFORMATIONAL_STRING_LICENSE_DESCRIPTION).empty());
}

TEST(LocalizedStrings, AnswerAsTheyAreAsked) {
    const com_ptr<IDWriteLocalizedStrings> names = familyNames(family(L"DejaVu Sans"));
    UINT32 length = 0;
    wchar_t exact[12] = {};
    wchar_t small[11] = {L'x'};
    EXPECT_EQ(names->GetStringLength(0, &length), S_OK);
    EXPECT_EQ(length, 11u);
    EXPECT_EQ(names->GetString(0, exact, 12), S_OK);
    EXPECT_STREQ(exact, L"DejaVu Sans");
    EXPECT_EQ(names->GetString(0, small, 11), E_NOT_SUFFICIENT_BUFFER);
    EXPECT_EQ(small[0], L'\0');
    EXPECT_EQ(names->GetLocaleName(0, small, 5), E_NOT_SUFFICIENT_BUFFER);
    EXPECT_EQ(names->GetLocaleName(0, small, 6), S_OK);
    EXPECT_STREQ(small, L"en-us");
    EXPECT_EQ(names->GetString(0, nullptr, 0), E_NOT_SUFFICIENT_BUFFER);
}

TEST(LocalizedStrings, PastTheEndEverythingFails) {
    const com_ptr<IDWriteLocalizedStrings> names = familyNames(family(L"DejaVu Sans"));
    UINT32 length = 0;
    wchar_t text[4] = {L'x'};
    EXPECT_EQ(names->GetStringLength(1, &length), E_FAIL);
    EXPECT_EQ(length, noIndex);
    length = 0;
    EXPECT_EQ(names->GetLocaleNameLength(1, &length), E_FAIL);
    EXPECT_EQ(length, noIndex);
    EXPECT_EQ(names->GetString(1, text, 4), E_FAIL);
    EXPECT_EQ(text[0], L'\0');
    text[0] = L'x';
    EXPECT_EQ(names->GetLocaleName(1, text, 4), E_FAIL);
    EXPECT_EQ(text[0], L'\0');
}

TEST(LocalizedStrings, ALocaleIsFoundWholeAndInAnyCase) {
    const com_ptr<IDWriteLocalizedStrings> names = familyNames(family(L"DejaVu Sans"));
    UINT32 index = 7;
    BOOL exists = FALSE;
    EXPECT_EQ(names->FindLocaleName(L"EN-us", &index, &exists), S_OK);
    EXPECT_EQ(exists, TRUE);
    EXPECT_EQ(index, 0u);
    for (const wchar_t* missing : {L"en", L"", L"de-de", L"en-us-x"}) {
        EXPECT_EQ(names->FindLocaleName(missing, &index, &exists), S_OK);
        EXPECT_EQ(exists, FALSE);
        EXPECT_EQ(index, noIndex);
    }
}

} // namespace
} // namespace platform::test

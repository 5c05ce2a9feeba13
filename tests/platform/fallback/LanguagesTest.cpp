#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <Common/Utf.h>
#include <gtest/gtest.h>
#include <unicode/utf16.h>

#include "fallback/FallbackCluster.h"
#include "fallback/FallbackTestSupport.h"
#include "fonts/FontFace.h"

namespace platform {
namespace {

struct Language {
    std::wstring tag;
    std::string name;
    std::u16string sentence;
    std::wstring family;
};

std::vector<Language> readLanguages() {
    const std::string path = std::string(FONTENGINE_TEST_DATA) + "/platform/fallback/data/languages.tsv";
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<Language> languages;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::istringstream fields(line);
        std::string tag;
        std::string name;
        std::string script;
        std::string sentence;
        std::string family;
        for (std::string* field : {&tag, &name, &script, &sentence, &family}) {
            std::getline(fields, *field, '\t');
        }
        const std::wstring wide = common::wideFromUtf8(sentence);
        languages.push_back(
            {common::wideFromUtf8(tag), name, std::u16string(wide.begin(), wide.end()), common::wideFromUtf8(family)});
    }
    return languages;
}

const std::vector<Language>& languages() {
    static const std::vector<Language> all = readLanguages();
    return all;
}

Question questionIn(const Language& language) {
    Question question{language.sentence};
    question.locale = language.tag;
    return question;
}

std::wstring namesOf(const std::set<CFont*>& fonts) {
    std::set<std::wstring> names;
    std::transform(fonts.begin(), fonts.end(), std::inserter(names, names.end()), familyName);
    std::wstring joined;
    for (const std::wstring& name : names) {
        joined += (joined.empty() ? L"" : L" + ") + name;
    }
    return joined;
}

/// The fonts that draw the letters of a text (punctuation, spaces and digits may be any font's).
std::set<CFont*> fontsOfLetters(const Question& question) {
    std::set<CFont*> fonts;
    for (std::size_t position = 0; position < question.text.size();) {
        const Mapping mapping = question.at(position);
        if (mapping.length == 0) {
            throw std::runtime_error("stuck");
        }
        const std::size_t end = position + mapping.length;
        while (position < end) {
            UChar32 c = 0;
            U16_NEXT(question.text.data(), position, question.text.size(), c);
            if (!isCommon(static_cast<char32_t>(c))) {
                fonts.insert(mapping.font);
            }
        }
    }
    return fonts;
}

TEST(FallbackLanguages, areFortyOrMore) {
    EXPECT_GE(languages().size(), 40U);
}

TEST(FallbackLanguages, everyCharacterIsDrawn) {
    for (const Language& language : languages()) {
        const Question question = questionIn(language);
        for (std::size_t position = 0; position < question.text.size();) {
            const Mapping mapping = question.at(position);
            ASSERT_NE(mapping.font, nullptr) << language.name << " at " << position;
            const std::size_t end = position + mapping.length;
            while (position < end) {
                UChar32 c = 0;
                U16_NEXT(question.text.data(), position, question.text.size(), c);
                const auto character = static_cast<char32_t>(c);
                EXPECT_TRUE(isRider(character) || mapping.font->face().hasCharacter(character))
                    << language.name << " U+" << std::hex << c;
            }
        }
    }
}

TEST(FallbackLanguages, lettersGoToTheOneFontAPersonWouldChoose) {
    for (const Language& language : languages()) {
        const std::set<CFont*> fonts = fontsOfLetters(questionIn(language));
        EXPECT_EQ(namesOf(fonts), language.family) << language.name;
        for (CFont* const font : fonts) {
            EXPECT_EQ(font->weight(), DWRITE_FONT_WEIGHT_NORMAL) << language.name;
            EXPECT_EQ(font->style(), DWRITE_FONT_STYLE_NORMAL) << language.name;
        }
    }
}

TEST(FallbackLanguages, weightAndStyleAreKeptWithinTheSameFamily) {
    const std::pair<DWRITE_FONT_WEIGHT, DWRITE_FONT_STYLE> wishes[] = {
        {DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_NORMAL},
        {DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_ITALIC},
        {DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_ITALIC}};
    for (const auto& [weight, style] : wishes) {
        for (const Language& language : languages()) {
            Question question = questionIn(language);
            question.weight = weight;
            question.style = style;
            const std::set<CFont*> fonts = fontsOfLetters(question);
            EXPECT_EQ(namesOf(fonts), language.family) << language.name;
            for (CFont* const font : fonts) {
                EXPECT_EQ(font->weight(), weight) << language.name;
                // An oblique stands in for an italic where a family has none, and the upright font where the slanted
                // one lacks the script, as DejaVu's obliques lack Arabic.
                const bool isKept = (font->style() == DWRITE_FONT_STYLE_NORMAL) == (style == DWRITE_FONT_STYLE_NORMAL);
                EXPECT_TRUE(isKept || language.tag == L"ar" || language.tag == L"fa") << language.name;
            }
        }
    }
    CFont& slanted = CFontCollection::system()
                         .findFamily(L"DejaVu Sans")
                         ->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_ITALIC);
    EXPECT_FALSE(slanted.face().hasCharacter(U'\u0633'));
}

/// Han does not tell by itself for whom it is written.
std::wstring withoutLocale(const Language& language) {
    if (language.tag.starts_with(L"zh")) {
        return L"Noto Sans CJK JP";
    }
    if (language.tag == L"ko") {
        return L"Noto Sans CJK JP + Noto Sans CJK KR";
    }
    return language.family;
}

TEST(FallbackLanguages, lettersGoToTheSameFamilyWithoutALocale) {
    for (const Language& language : languages()) {
        Question question = questionIn(language);
        question.locale.clear();
        const std::wstring names = namesOf(fontsOfLetters(question));
        EXPECT_EQ(names, withoutLocale(language)) << language.name;
    }
}

TEST(FallbackLanguages, whatAllLanguagesWriteHanWithDiffersByLocaleOnly) {
    std::map<std::wstring, std::wstring> families;
    for (const wchar_t* const locale : {L"ja", L"ko", L"zh-Hans", L"zh-Hant", L"zh-HK"}) {
        Question question{u"\u76F4\u9AA8"};
        question.locale = locale;
        ASSERT_EQ(question.at().length, 2U);
        families[familyName(question.at().font)] = locale;
    }
    EXPECT_EQ(families.size(), 5U);
}

/// Writes which fonts stand in for characters that many scripts share, and ends the process.
[[noreturn]] void answerInEnvironment(const char* variable, const char* language) {
    for (const char* const other : {"FC_LANG", "LC_ALL", "LC_CTYPE", "LANG"}) {
        unsetenv(other);
    }
    setenv(variable, language, 1);
    for (const wchar_t* const locale : {L"", L"en-us", L"th", L"zh-Hant"}) {
        for (const char16_t* const text : {u"\u0964", u"\u0F3A", u"\u3001", u"\u76F4"}) {
            Question question{text};
            question.locale = locale;
            std::cerr << common::utf8FromWide(familyName(question.at().font)) << ';';
        }
    }
    std::cerr << std::endl;
    std::_Exit(0);
}

TEST(FallbackLanguages, theEnvironmentsLanguageCountsForNothing) {
    // Fontconfig asks the environment once in a process: a new one has not been asked yet.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const std::string han = "Noto Serif Tibetan;Noto Sans CJK JP;Noto Sans CJK ";
    std::string expected;
    for (const char* const market : {"JP", "JP", "JP", "TC"}) {
        expected += "Noto Sans Takri;" + han + market + ";";
    }
    for (const char* const language : {"C.UTF-8", "bn_BD.UTF-8", "ko_KR.UTF-8"}) {
        for (const char* const variable : {"FC_LANG", "LC_ALL", "LANG"}) {
            EXPECT_EXIT(answerInEnvironment(variable, language), testing::ExitedWithCode(0), expected)
                << variable << '=' << language;
        }
    }
}

} // namespace
} // namespace platform

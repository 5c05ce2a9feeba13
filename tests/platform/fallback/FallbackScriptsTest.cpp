#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "fallback/FallbackTestSupport.h"
#include "fonts/FontFace.h"

namespace platform {
namespace {

/// A word of a script that Liberation Sans lacks, and the plain sans that a reader would expect for it: DejaVu Sans
/// where that has the script, because the configuration names it first, else the Noto face named after the script.
struct ScriptCase {
    const char* name;
    std::u16string word;
    std::wstring family;

    friend std::ostream& operator<<(std::ostream& out, const ScriptCase& c) { return out << c.name; }
};

class FallbackScripts : public testing::TestWithParam<ScriptCase> {};

TEST_P(FallbackScripts, goToOnePlainSans) {
    const std::wstring expected = GetParam().family + L":" + std::to_wstring(GetParam().word.size()) + L" ";
    EXPECT_EQ(Question{GetParam().word}.stretches(), expected);
}

TEST_P(FallbackScripts, goToTheSameFamilyInBold) {
    Question question{GetParam().word};
    question.weight = DWRITE_FONT_WEIGHT_BOLD;
    const std::wstring expected = GetParam().family + L":" + std::to_wstring(GetParam().word.size()) + L" ";
    EXPECT_EQ(question.stretches(), expected);
    ASSERT_NE(question.at().font, nullptr);
    EXPECT_EQ(question.at().font->weight(), DWRITE_FONT_WEIGHT_BOLD);
}

INSTANTIATE_TEST_SUITE_P(
    Pinned, FallbackScripts,
    testing::Values(
        ScriptCase{"Arabic", u"سلام", L"DejaVu Sans"}, ScriptCase{"Hebrew", u"שלום", L"DejaVu Sans"},
        ScriptCase{"Armenian", u"Բարեւ", L"DejaVu Sans"}, ScriptCase{"Georgian", u"გამარჯობა", L"DejaVu Sans"},
        ScriptCase{"Lao", u"ສະບາຍດີ", L"DejaVu Sans"}, ScriptCase{"Devanagari", u"नमस्ते", L"Noto Sans Devanagari"},
        ScriptCase{"Bengali", u"নমস্কার", L"Noto Sans Bengali"}, ScriptCase{"Gurmukhi", u"ਸਤਿ", L"Noto Sans Gurmukhi"},
        ScriptCase{"Gujarati", u"નમસ્તે", L"Noto Sans Gujarati"}, ScriptCase{"Oriya", u"ନମସ୍କାର", L"Noto Sans Oriya"},
        ScriptCase{"Tamil", u"வணக்கம்", L"Noto Sans Tamil"}, ScriptCase{"Telugu", u"నమస్తే", L"Noto Sans Telugu"},
        ScriptCase{"Kannada", u"ನಮಸ್ಕಾರ", L"Noto Sans Kannada"},
        ScriptCase{"Malayalam", u"നമസ്തേ", L"Noto Sans Malayalam"},
        ScriptCase{"Sinhala", u"ආයුබෝවන්", L"Noto Sans Sinhala"}, ScriptCase{"Thai", u"สวัสดี", L"Noto Sans Thai"},
        ScriptCase{"Myanmar", u"မင်္ဂလာပါ", L"Noto Sans Myanmar"}, ScriptCase{"Khmer", u"សួស្តី", L"Noto Sans Khmer"},
        ScriptCase{"Ethiopic", u"ሰላም", L"Noto Sans Ethiopic"}, ScriptCase{"Thaana", u"ދިވެހި", L"Noto Sans Thaana"},
        ScriptCase{"Kana", u"こんにちは", L"Noto Sans CJK JP"}, ScriptCase{"Han", u"你好", L"Noto Sans CJK JP"},
        ScriptCase{"Hangul", u"안녕하세요", L"Noto Sans CJK KR"}),
    [](const testing::TestParamInfo<ScriptCase>& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(PinnedAstral, FallbackScripts,
                         testing::Values(ScriptCase{"Gothic", u"𐌲𐌿𐍄", L"Noto Sans Gothic"},
                                         ScriptCase{"Adlam", u"𞤀𞤣", L"Noto Sans Adlam"}),
                         [](const testing::TestParamInfo<ScriptCase>& info) { return std::string(info.param.name); });

} // namespace
} // namespace platform

#include <FontEngine/IFontEngine.h>

#include <gmock/gmock.h>

#include <Common/Violations.h>
#include <oslayer/Errors.h>
#include <render/RichTextDocument.h>

#include "fake/FakePlatform.h"

using fake::FallbackAnswer;
using render::SRichTextToken;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Two families, and a rule: Latin letters are drawn by "Sans", everything from
// U+0400 to U+04FF by "Cyr", the rest by nothing.
struct FallbackSplittingTest : fake::FakePlatformTest {
    FallbackSplittingTest() {
        fake::platform().families = {{{L"Sans", L"Ohne"}, {{}, {}}}, {{L"Cyr"}, {{}}}};
        fake::platform().mapCharacters = [](std::wstring_view text, std::uint32_t position, std::uint32_t) {
            const int family = familyFor(text[position]);
            std::uint32_t end = position;
            while (end < text.length() && familyFor(text[end]) == family)
                ++end;
            return FallbackAnswer{end - position, family, 0};
        };
    }

    static int familyFor(wchar_t unit) { return unit < 0x80 ? 0 : unit >= 0x400 && unit < 0x500 ? 1 : -1; }

    static std::vector<SRichTextToken> split(const SRichTextToken& token) {
        const auto engine = fonts::createFontEngine(L"Sans");
        fake::platform().calls.clear();
        return engine->splitTokenByFallbackFonts(token);
    }

    static SRichTextToken token(std::wstring text) {
        SRichTextToken made = render::makeToken(std::move(text), L"Asked", 2.5f, {});
        made.color = 0x12345678u;
        return made;
    }
};

struct Fallback {
    const char* call;
    const char* expression;
};

void PrintTo(const Fallback& failing, std::ostream* out) {
    *out << failing.call;
}

struct FailingSplitTest : FallbackSplittingTest, testing::WithParamInterface<Fallback> {};

struct UncheckedSplitTest : FallbackSplittingTest, testing::WithParamInterface<const char*> {};

void expectLike(const SRichTextToken& run, const SRichTextToken& origin) {
    EXPECT_EQ(run.fontCapSize, origin.fontCapSize);
    EXPECT_EQ(run.color, origin.color);
    EXPECT_EQ(run.fontStyle, origin.fontStyle);
}

} // namespace

TEST_F(FallbackSplittingTest, RunsAreNamedAfterTheFamiliesThatDrawThem) {
    SRichTextToken origin = token(L"abЖЯc");
    origin.fontStyle = {true, true, true};
    const auto runs = split(origin);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[0].text, L"ab");
    EXPECT_EQ(runs[0].fontFamily, L"Sans");
    EXPECT_EQ(runs[1].text, L"ЖЯ");
    EXPECT_EQ(runs[1].fontFamily, L"Cyr");
    EXPECT_EQ(runs[2].text, L"c");
    EXPECT_EQ(runs[2].fontFamily, L"Sans");
    for (const SRichTextToken& run : runs)
        expectLike(run, origin);
}

TEST_F(FallbackSplittingTest, CallsComeInOrder) {
    split(token(L"aЖ"));
    EXPECT_THAT(fake::platform().calls,
                ElementsAre("Factory.QueryInterface(IDWriteFactory2)", "Factory.GetSystemFontFallback()",
                            "Factory.CreateTextFormat(\"Asked\", Collection, 400, 0, 5, 2.5, \"\")",
                            "Format.GetLocaleName(256)", "Format.GetFontCollection()",
                            "Fallback.MapCharacters(\"aЖ\", 0, 2, Collection, \"Asked\", 400, 0, 5)",
                            "Font.GetFontFamily()", "Family.GetFamilyNames()", "FamilyNames.GetString(0, 256)",
                            "Fallback.MapCharacters(\"aЖ\", 1, 1, Collection, \"Asked\", 400, 0, 5)",
                            "Font.GetFontFamily()", "Family.GetFamilyNames()", "FamilyNames.GetString(0, 256)"));
}

TEST_F(FallbackSplittingTest, FlagsBecomeWeightAndStyle) {
    SRichTextToken origin = token(L"a");
    origin.fontStyle = {true, true, false};
    split(origin);
    EXPECT_EQ(fake::platform().callsTo("Factory.CreateTextFormat").front(),
              "Factory.CreateTextFormat(\"Asked\", Collection, 700, 2, 5, 2.5, \"\")");
    EXPECT_EQ(fake::platform().callsTo("Fallback.MapCharacters").front(),
              "Fallback.MapCharacters(\"a\", 0, 1, Collection, \"Asked\", 700, 2, 5)");
}

TEST_F(FallbackSplittingTest, SourceShowsTextLocaleAndDirection) {
    fake::platform().formatLocaleName = L"ru-ru";
    bool asked = false;
    fake::platform().onAnalysisSource = [&](IDWriteTextAnalysisSource* source) {
        asked = true;
        const WCHAR* locale = nullptr;
        UINT32 length = 0;
        EXPECT_EQ(source->GetLocaleName(0, &length, &locale), S_OK);
        EXPECT_STREQ(locale, L"ru-ru");
        EXPECT_EQ(length, 2u);
        EXPECT_EQ(source->GetParagraphReadingDirection(), DWRITE_READING_DIRECTION_LEFT_TO_RIGHT);
        IDWriteNumberSubstitution* substitution = nullptr;
        EXPECT_EQ(source->GetNumberSubstitution(0, &length, &substitution), S_OK);
        EXPECT_EQ(substitution, nullptr);
        void* second = nullptr;
        EXPECT_EQ(source->QueryInterface(__uuidof(IDWriteTextAnalysisSource1), &second), S_OK);
        EXPECT_EQ(source->Release(), 0u);
    };
    split(token(L"ab"));
    EXPECT_TRUE(asked);
}

TEST_F(FallbackSplittingTest, PlatformThatTakesAndDropsReferencesDoesNotEndTheSource) {
    int calls = 0;
    fake::platform().onAnalysisSource = [&](IDWriteTextAnalysisSource* source) {
        ++calls;
        EXPECT_EQ(source->AddRef(), 1u);
        EXPECT_EQ(source->Release(), 0u);
    };
    // The source is read after each release, and for every run.
    EXPECT_EQ(split(token(L"aЖbЯ")).size(), 4u);
    EXPECT_EQ(calls, 4);
}

TEST_F(FallbackSplittingTest, EmptyTextGivesNoRuns) {
    EXPECT_THAT(split(token(L"")), IsEmpty());
    EXPECT_THAT(fake::platform().callsTo("Fallback."), IsEmpty());
}

TEST_F(FallbackSplittingTest, WithoutFallbackTheTokenComesBackWhole) {
    fake::platform().fail("Factory.QueryInterface(IDWriteFactory2)", E_NOINTERFACE, 0);
    for (const wchar_t* text : {L"", L"aЖ"}) {
        SRichTextToken origin = token(text);
        origin.fontStyle = {true, false, true};
        const auto runs = split(origin);
        ASSERT_EQ(runs.size(), 1u);
        EXPECT_EQ(runs[0].text, text);
        EXPECT_EQ(runs[0].fontFamily, L"Asked");
        expectLike(runs[0], origin);
        EXPECT_THAT(fake::platform().calls, ElementsAre("Factory.QueryInterface(IDWriteFactory2)"));
    }
}

TEST_F(FallbackSplittingTest, CharactersThatNoFontCoversComeOneTokenPerUnitInTheFamilyAskedFor) {
    // A surrogate pair and a letter.
    const SRichTextToken origin = token(L"a\xD83D\xDE00\x0627");
    const auto runs = split(origin);
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_EQ(runs[0].text, L"a");
    EXPECT_EQ(runs[1].text, L"\xD83D");
    EXPECT_EQ(runs[2].text, L"\xDE00");
    EXPECT_EQ(runs[3].text, L"\x0627");
    for (std::size_t i = 1; i < runs.size(); ++i) {
        EXPECT_EQ(runs[i].fontFamily, L"Asked");
        expectLike(runs[i], origin);
    }
}

TEST_F(FallbackSplittingTest, FamilyNameIsCutAtItsFirstNul) {
    fake::platform().families.front().names = {std::wstring(L"Sa\0ns", 5)};
    EXPECT_EQ(split(token(L"a")).front().fontFamily, L"Sa");
}

TEST_F(FallbackSplittingTest, FamilyNameThatDoesNotFitIsEmpty) {
    fake::platform().families.front().names = {std::wstring(256, L'n')};
    EXPECT_EQ(split(token(L"a")).front().fontFamily, L"");
    fake::platform().reset();
    fake::platform().families.front().names = {std::wstring(255, L'n')};
    EXPECT_EQ(split(token(L"a")).front().fontFamily, std::wstring(255, L'n'));
}

TEST_F(FallbackSplittingTest, MappedFontItsFamilyAndNamesAreKept) {
    split(token(L"abЖ\x0627"));
    // One reference of each for the two runs with a font; everything else is given back.
    EXPECT_EQ(fake::platform().fontReferences(), 2);
    EXPECT_EQ(fake::platform().familyReferences(), 2);
    EXPECT_EQ(fake::platform().familyNamesReferences(), 2);
    EXPECT_EQ(fake::platform().otherReferences(), 0);
}

TEST_P(FailingSplitTest, FailureIsReported) {
    fake::platform().fail(GetParam().call, E_INVALIDARG);
    EXPECT_THROW(split(token(L"a")), oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), GetParam().expression);
    EXPECT_EQ(log.path(), "FontEngine/src/FontEngine");
    EXPECT_EQ(fake::platform().otherReferences(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingSplitTest,
    testing::Values(Fallback{"Factory.GetSystemFontFallback", "pFactory2->GetSystemFontFallback(&pFontFallBack)"},
                    Fallback{"Factory.CreateTextFormat",
                             "m_pDWriteFactory->CreateTextFormat( originToken.fontFamily.c_str(), m_pFontCollection, "
                             "originToken.fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL, "
                             "originToken.fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL, "
                             "DWRITE_FONT_STRETCH_NORMAL, originToken.fontCapSize, L\"\", &pTextFormat)"},
                    Fallback{
                        "Fallback.MapCharacters",
                        "pFontFallBack->MapCharacters(&source, position, textLength - position, pFontCollection, "
                        "originToken.fontFamily.c_str(), weight, style, DWRITE_FONT_STRETCH_NORMAL, &mappedLength, "
                        "&pMappedFont, &scale)"}));

TEST_F(FallbackSplittingTest, PlatformThatMapsNothingIsNotAskedForEver) {
    fake::platform().mapCharacters = [](std::wstring_view, std::uint32_t, std::uint32_t) {
        return FallbackAnswer{0, -1, 0};
    };
    EXPECT_THROW(split(token(L"a")), common::ECheckViolation);
    EXPECT_EQ(fake::platform().countOf("Fallback.MapCharacters"), 1u);
}

TEST_P(UncheckedSplitTest, FailureIsIgnored) {
    fake::platform().formatLocaleName = L"ru-ru";
    fake::platform().fail(GetParam(), E_FAIL, 0);
    const auto runs = split(token(L"a"));
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].text, L"a");
    EXPECT_TRUE(log.records.empty());
}

INSTANTIATE_TEST_SUITE_P(Calls, UncheckedSplitTest,
                         testing::Values("Format.GetLocaleName", "Format.GetFontCollection", "FamilyNames.GetString("));

TEST_F(FallbackSplittingTest, CollectionThatCannotBeHadIsPassedOnAsNone) {
    fake::platform().fail("Format.GetFontCollection", E_FAIL);
    split(token(L"a"));
    EXPECT_EQ(fake::platform().callsTo("Fallback.MapCharacters").front(),
              "Fallback.MapCharacters(\"a\", 0, 1, null, \"Asked\", 400, 0, 5)");
}

TEST_F(FallbackSplittingTest, LocaleThatCannotBeHadIsTheEmptyOne) {
    fake::platform().formatLocaleName = L"ru-ru";
    fake::platform().fail("Format.GetLocaleName", E_FAIL);
    fake::platform().onAnalysisSource = [&](IDWriteTextAnalysisSource* source) {
        const WCHAR* locale = nullptr;
        UINT32 length = 0;
        source->GetLocaleName(0, &length, &locale);
        EXPECT_STREQ(locale, L"");
    };
    EXPECT_EQ(split(token(L"a")).size(), 1u);
}

using FallbackSplittingDeathTest = FallbackSplittingTest;

TEST_F(FallbackSplittingDeathTest, FamilyOrNamesThatCannotBeHadAreNotCheckedAndEndTheProcess) {
    fake::platform().fail("Font.GetFontFamily", E_FAIL);
    EXPECT_DEATH(split(token(L"a")), "terminate called");
    fake::platform().reset();
    fake::platform().fail("Family.GetFamilyNames", E_FAIL);
    EXPECT_DEATH(split(token(L"a")), "terminate called");
}

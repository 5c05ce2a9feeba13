#include <FontEngine/IFontEngine.h>
#include <FontEngine/ITextMetrics.h>

#include <dwrite.h>

#include <gtest/gtest.h>

#include <Common/Utf.h>
#include <oslayer/Errors.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

using render::SRichTextToken;

namespace {

std::vector<SRichTextToken> split(const std::wstring& text, const std::wstring& family = L"Liberation Sans",
                                  float capSize = 2.5f) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    return engine->splitTokenByFallbackFonts(render::makeToken(text, family, capSize, {}));
}

// Code points of UTF-16 text; a lone surrogate stands for itself.
std::vector<UINT32> codePointsOf(const std::wstring& text) {
    std::vector<UINT32> codePoints;
    for (std::size_t i = 0; i < text.length(); ++i) {
        const auto unit = static_cast<UINT32>(text[i]);
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.length())
            codePoints.push_back(0x10000 + ((unit - 0xD800) << 10) + (static_cast<UINT32>(text[++i]) - 0xDC00));
        else
            codePoints.push_back(unit);
    }
    return codePoints;
}

// Whether some font of the family has the character.
bool familyHas(const std::wstring& familyName, UINT32 codePoint) {
    oslayer::com_ptr<IUnknown> unknown;
    DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown);
    oslayer::com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    oslayer::com_ptr<IDWriteFontCollection> collection;
    factory->GetSystemFontCollection(&collection);
    UINT32 index = 0;
    BOOL exists = FALSE;
    collection->FindFamilyName(familyName.c_str(), &index, &exists);
    if (!exists)
        return false;
    oslayer::com_ptr<IDWriteFontFamily> family;
    collection->GetFontFamily(index, &family);
    for (UINT32 i = 0; i < family->GetFontCount(); ++i) {
        oslayer::com_ptr<IDWriteFont> font;
        family->GetFont(i, &font);
        BOOL has = FALSE;
        font->HasCharacter(codePoint, &has);
        if (has)
            return true;
    }
    return false;
}

std::wstring joined(const std::vector<SRichTextToken>& runs) {
    std::wstring text;
    for (const SRichTextToken& run : runs)
        text += run.text;
    return text;
}

} // namespace

TEST(FallbackOnRealFonts, TextOfOneFontStaysOneRun) {
    for (const wchar_t* text : {L"Wall 1:50", L"Стена", L"Τοίχος", L"a"}) {
        const auto runs = split(text);
        ASSERT_EQ(runs.size(), 1u) << common::utf8FromWide(text);
        EXPECT_EQ(runs[0].text, text);
        EXPECT_EQ(runs[0].fontFamily, L"Liberation Sans");
    }
}

TEST(FallbackOnRealFonts, MixedScriptsAreCutIntoRunsOfFontsThatHaveThem) {
    // Latin and Cyrillic, Han, Thai, Devanagari, Georgian, and Latin again.
    const std::wstring text = L"Wall Стена \x58C1\x4F53 \x0E1C\x0E19\x0E31\x0E07 "
                              L"\x0926\x0940\x0935\x093E\x0930 \x10D9\x10D4\x10D3\x10D4\x10DA\x10D8 end";
    const auto runs = split(text);
    EXPECT_GE(runs.size(), 6u);
    EXPECT_EQ(joined(runs), text);
    EXPECT_EQ(runs.front().fontFamily, L"Liberation Sans");
    EXPECT_TRUE(runs.front().text.starts_with(L"Wall Стена"));
    EXPECT_EQ(runs.back().fontFamily, L"Liberation Sans");
    EXPECT_TRUE(runs.back().text.ends_with(L"end"));
    for (const SRichTextToken& run : runs)
        for (const UINT32 codePoint : codePointsOf(run.text))
            EXPECT_TRUE(familyHas(run.fontFamily, codePoint))
                << common::utf8FromWide(run.fontFamily) << " for " << codePoint;
}

TEST(FallbackOnRealFonts, UnknownFamilyIsDrawnByFontsThatExist) {
    const auto runs = split(L"Wall \x58C1", L"No Such Family");
    ASSERT_EQ(joined(runs), L"Wall \x58C1");
    for (const SRichTextToken& run : runs) {
        EXPECT_NE(run.fontFamily, L"No Such Family");
        for (const UINT32 codePoint : codePointsOf(run.text))
            EXPECT_TRUE(familyHas(run.fontFamily, codePoint));
    }
}

TEST(FallbackOnRealFonts, TextInAWin32FamilyIsSetInItsFaces) {
    // The narrow faces are members of Liberation Sans, and no family has their own name.
    const auto runs = split(L"Wall \x58C1", L"Liberation Sans Narrow");
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].fontFamily, L"Liberation Sans Narrow");
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const auto widthIn = [&metrics](const wchar_t* family) {
        const MbRect box = metrics->getTextRect(L"Wall 1:50", family, 2.5f, {});
        return box.xmax - box.xmin;
    };
    // Their advances are 82 % of the usual ones.
    EXPECT_NEAR(widthIn(L"Liberation Sans Narrow") / widthIn(L"Liberation Sans"), 0.82, 0.005);
}

TEST(FallbackOnRealFonts, SurrogatePairOfAKnownCharacterIsNotSplit) {
    // A mathematical bold A, which Liberation Sans lacks.
    const std::wstring text = L"a\xD835\xDC00z";
    const auto runs = split(text);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[1].text, L"\xD835\xDC00");
    EXPECT_TRUE(familyHas(runs[1].fontFamily, 0x1D400));
}

TEST(FallbackOnRealFonts, CharactersThatNoFontHasComeOneTokenPerUnitInTheFamilyAskedFor) {
    // A code point that will never be a character's, one of a private plane as a
    // surrogate pair.
    ASSERT_FALSE(familyHas(L"DejaVu Sans", 0x10FFFD));
    const auto runs = split(L"a\x0378\xDBFF\xDFFDz");
    ASSERT_EQ(runs.size(), 5u);
    EXPECT_EQ(runs[0].text, L"a");
    EXPECT_EQ(runs[1].text, L"\x0378");
    EXPECT_EQ(runs[2].text, L"\xDBFF");
    EXPECT_EQ(runs[3].text, L"\xDFFD");
    EXPECT_EQ(runs[4].text, L"z");
    for (const SRichTextToken& run : runs)
        EXPECT_EQ(run.fontFamily, L"Liberation Sans");
}

TEST(FallbackOnRealFonts, LoneSurrogatesAreTextLikeAnyOther) {
    EXPECT_EQ(joined(split(L"a\xD83Dz")), L"a\xD83Dz");
    EXPECT_EQ(joined(split(L"\xDE00")), L"\xDE00");
}

TEST(FallbackOnRealFonts, BaseAndItsMarksStayInOneRun) {
    // Hebrew with points, and a Latin letter with a mark that its font lacks.
    const std::wstring pointed = L"\x05E9\x05C1\x05B8\x05DC";
    ASSERT_EQ(split(pointed, L"No Such Family").size(), 1u);
    const std::wstring marked = L"abe\x1DC4z";
    const auto runs = split(marked);
    EXPECT_EQ(joined(runs), marked);
    for (const SRichTextToken& run : runs)
        EXPECT_NE(run.text.front(), L'\x1DC4');
}

TEST(FallbackOnRealFonts, EmptyTextGivesNoRuns) {
    EXPECT_TRUE(split(L"").empty());
}

TEST(FallbackOnRealFonts, AttributesAreKept) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    SRichTextToken origin = render::makeToken(L"Wall \x58C1", L"Liberation Sans", 3.25f, {true, true, false});
    origin.color = 0x00FF00FFu;
    origin.fontStyle.underline = true;
    for (const SRichTextToken& run : engine->splitTokenByFallbackFonts(origin)) {
        EXPECT_EQ(run.fontCapSize, 3.25f);
        EXPECT_EQ(run.color, 0x00FF00FFu);
        EXPECT_EQ(run.fontStyle, origin.fontStyle);
    }
}

TEST(FallbackOnRealFonts, WhatThePlatformRefusesIsAnErrorThatNamesIt) {
    const auto refused = [](const std::wstring& text, float capSize) {
        try {
            split(text, L"Liberation Sans", capSize);
        } catch (const oslayer::EOsLayerError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(refused(L"a", 0.0f), "E_INVALIDARG");
    EXPECT_EQ(refused(L"a", -1.0f), "E_INVALIDARG");
}

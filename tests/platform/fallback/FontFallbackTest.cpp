#include "fallback/FontFallback.h"

#include <algorithm>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "fallback/FallbackTestSupport.h"
#include "fonts/FontSet.h"
#include "fonts/HostFiles.h"
#include "support/ForeignCollection.h"

namespace platform {
namespace {

using oslayer::com_ptr;

/// A source as callers write them: on the stack, with a count of its own that starts at 0 and that nobody may touch.
class StackSource final : public IDWriteTextAnalysisSource {
public:
    explicit StackSource(std::wstring text) : m_text(std::move(text)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*riid*/, void** object) override {
        ++m_touches;
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_touches); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(++m_touches); }

    HRESULT STDMETHODCALLTYPE GetTextAtPosition(UINT32 textPosition, const WCHAR** textString,
                                                UINT32* textLength) override {
        ++m_asked;
        *textString = nullptr;
        *textLength = 0;
        if (FAILED(m_textResult)) {
            return m_textResult;
        }
        if (textPosition < m_text.size()) {
            *textString = m_text.data() + textPosition;
            *textLength = std::min(static_cast<UINT32>(m_text.size()) - textPosition, m_piece);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTextBeforePosition(UINT32 textPosition, const WCHAR** textString,
                                                    UINT32* textLength) override {
        *textString = nullptr;
        *textLength = 0;
        if (SUCCEEDED(m_beforeResult) && textPosition > 0 && textPosition <= m_text.size()) {
            *textLength = std::min(textPosition, m_piece);
            *textString = m_text.data() + (textPosition - *textLength);
        }
        return m_beforeResult;
    }
    DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetParagraphReadingDirection() override {
        return DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
    }
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 textPosition, UINT32* textLength,
                                            const WCHAR** localeName) override {
        const bool first = textPosition < m_localeLength;
        *localeName = first ? m_locale : L"en";
        *textLength = first ? m_localeLength - textPosition : 0;
        return m_localeResult;
    }
    HRESULT STDMETHODCALLTYPE GetNumberSubstitution(UINT32 /*textPosition*/, UINT32* textLength,
                                                    IDWriteNumberSubstitution** numberSubstitution) override {
        *textLength = 0;
        *numberSubstitution = nullptr;
        return S_OK;
    }

    std::wstring m_text;
    UINT32 m_piece = 0xFFFFFFFF;
    const WCHAR* m_locale = L"";
    UINT32 m_localeLength = 0;
    HRESULT m_textResult = S_OK;
    HRESULT m_localeResult = S_OK;
    HRESULT m_beforeResult = S_OK;
    int m_touches = 0;
    int m_asked = 0;
};

struct Answer {
    HRESULT result = E_FAIL;
    UINT32 length = 77;
    com_ptr<IDWriteFont> font;
    FLOAT scale = 7.0F;
};

Answer map(IDWriteTextAnalysisSource* source, UINT32 position, UINT32 length, const WCHAR* family = L"Liberation Sans",
           IDWriteFontCollection* collection = nullptr, CFontFallback& fallback = CFontFallback::system()) {
    Answer answer;
    answer.result = fallback.MapCharacters(source, position, length, collection, family, DWRITE_FONT_WEIGHT_NORMAL,
                                           DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, &answer.length,
                                           &answer.font, &answer.scale);
    return answer;
}

void expectNothing(const Answer& answer, HRESULT result) {
    EXPECT_EQ(answer.result, result);
    EXPECT_EQ(answer.length, 0U);
    EXPECT_EQ(answer.font.get(), nullptr);
    EXPECT_EQ(answer.scale, 1.0F);
}

TEST(MapCharacters, refusesToWorkWithoutASource) {
    expectNothing(map(nullptr, 0, 1), E_INVALIDARG);
}

TEST(MapCharacters, refusesACollectionThatACallerMade) {
    test::ForeignCollection foreign;
    StackSource source(L"abc");
    expectNothing(map(&source, 0, 1, L"Liberation Sans", &foreign), E_INVALIDARG);
}

TEST(MapCharacters, takesACollectionOfAHostsOwnFiles) {
    test::HostFonts fonts;
    fonts.file("w").bytes = test::fontBytes("Words.ttf");
    const com_ptr<IDWriteFontCollection> collection = fonts.collection("w");
    StackSource source(L"HIa");
    const Answer own = map(&source, 0, 3, L"Test Words", collection);
    EXPECT_EQ(own.result, S_OK);
    EXPECT_EQ(own.length, 2U);
    EXPECT_EQ(familyName(own.font), L"Test Words");
    const Answer systems = map(&source, 2, 1, L"Test Words", collection);
    EXPECT_EQ(systems.length, 1U);
    ASSERT_NE(systems.font.get(), nullptr);
    EXPECT_NE(familyName(systems.font), L"Test Words");
    const Answer unknown = map(&source, 0, 3, L"Liberation Sans", collection);
    EXPECT_EQ(unknown.length, 3U);
    ASSERT_NE(unknown.font.get(), nullptr);
}

TEST(MapCharacters, mapsNothingOfLengthZero) {
    StackSource source(L"abc");
    expectNothing(map(&source, 0, 0), S_OK);
    expectNothing(map(&source, 3, 5), S_OK); // nothing is left there
}

TEST(MapCharacters, cutsALengthPastTheEnd) {
    StackSource source(L"abc");
    const Answer answer = map(&source, 1, 100);
    EXPECT_EQ(answer.result, S_OK);
    EXPECT_EQ(answer.length, 2U);
    EXPECT_EQ(familyName(answer.font), L"Liberation Sans");
    EXPECT_EQ(answer.scale, 1.0F);
}

TEST(MapCharacters, letsTheTextAroundTheQuestionDecide) {
    // An Urdu letter that DejaVu Sans lacks, and two that it has.
    StackSource source(L"\x06D2 \x067E\x0631");
    for (const UINT32 piece : {0xFFFFFFFFU, 1U}) {
        source.m_piece = piece;
        const Answer answer = map(&source, 2, 2);
        EXPECT_EQ(answer.length, 2U);
        EXPECT_EQ(familyName(answer.font), L"Noto Sans Arabic");
    }
    StackSource alone(L"\x067E\x0631");
    EXPECT_EQ(familyName(map(&alone, 0, 2).font), L"DejaVu Sans");
}

TEST(MapCharacters, doesWithoutTheTextBeforeTheQuestionWhereTheSourceHasNone) {
    StackSource source(L"\x06D2 \x067E\x0631");
    source.m_beforeResult = E_FAIL;
    const Answer answer = map(&source, 2, 2);
    EXPECT_EQ(answer.result, S_OK);
    EXPECT_EQ(answer.length, 2U);
    EXPECT_EQ(familyName(answer.font), L"DejaVu Sans");
}

TEST(MapCharacters, doesWithoutTextBeforeTheQuestionThatIsNotUtf16) {
    StackSource source(L"\x06D2 \x067E\x0631");
    source.m_text[1] = static_cast<wchar_t>(0x1F600);
    EXPECT_EQ(familyName(map(&source, 2, 2).font), L"DejaVu Sans");
}

TEST(MapCharacters, isTheSameForAnyLengthOfText) {
    // The letter that decides stands as far ahead as counts, behind what is fetched first.
    std::wstring text(200, L'a');
    text += L"\x067E" + std::wstring(62, L' ') + L"\x06D2";
    StackSource source(text);
    EXPECT_EQ(map(&source, 0, 300).length, 200U);
    EXPECT_EQ(familyName(map(&source, 200, 300).font), L"Noto Sans Arabic");
}

TEST(MapCharacters, neverTouchesTheCountOfTheSource) {
    StackSource source(L"a\x3042z\x0378");
    for (UINT32 position = 0; position < 4; ++position) {
        EXPECT_EQ(map(&source, position, 4 - position).length, 1U);
    }
    EXPECT_EQ(source.m_touches, 0);
}

TEST(MapCharacters, mapsLatinKanaLatinInThreeStretches) {
    StackSource source(L"a\x3042z");
    EXPECT_EQ(familyName(map(&source, 0, 3).font), L"Liberation Sans");
    EXPECT_EQ(map(&source, 0, 3).length, 1U);
    EXPECT_EQ(familyName(map(&source, 1, 2).font), L"Noto Sans CJK JP");
    EXPECT_EQ(map(&source, 1, 2).length, 1U);
    EXPECT_EQ(familyName(map(&source, 2, 1).font), L"Liberation Sans");
    EXPECT_EQ(map(&source, 2, 1).length, 1U);
}

TEST(MapCharacters, takesTheSystemsCollectionForNullAndForItself) {
    StackSource source(L"abc");
    EXPECT_EQ(map(&source, 0, 3, L"Liberation Sans", &CFontCollection::system()).font.get(),
              map(&source, 0, 3, L"Liberation Sans", nullptr).font.get());
}

TEST(MapCharacters, givesAFontOfTheSystemsCollection) {
    StackSource source(L"\x3042");
    const Answer answer = map(&source, 0, 1);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(answer.font->CreateFontFace(&face), S_OK);
    com_ptr<IDWriteFont> font;
    EXPECT_EQ(CFontCollection::system().GetFontFromFontFace(face, &font), S_OK);
    BOOL exists = FALSE;
    EXPECT_EQ(font->HasCharacter(0x3042, &exists), S_OK);
    EXPECT_TRUE(exists);
}

TEST(MapCharacters, fallsBackWithoutABaseFamilyAndForAnUnknownOne) {
    StackSource source(L"abc");
    for (const WCHAR* const family : {static_cast<const WCHAR*>(nullptr), L"No Such Family", L""}) {
        const Answer answer = map(&source, 0, 3, family);
        EXPECT_EQ(answer.result, S_OK);
        EXPECT_EQ(answer.length, 3U);
        EXPECT_EQ(familyName(answer.font), L"DejaVu Sans");
    }
}

TEST(MapCharacters, hasNoFontForCharactersThatNobodyHas) {
    StackSource source(L"\x0378\x0379z");
    const Answer answer = map(&source, 0, 3);
    EXPECT_EQ(answer.result, S_OK);
    EXPECT_EQ(answer.length, 2U);
    EXPECT_EQ(answer.font.get(), nullptr);
    EXPECT_EQ(answer.scale, 1.0F);
}

TEST(MapCharacters, readsASourceThatHandsItsTextOutInPieces) {
    StackSource source(std::wstring(1000, L'\x3042') + L"a");
    source.m_piece = 3;
    const Answer answer = map(&source, 0, 1001);
    EXPECT_EQ(answer.length, 1000U);
    EXPECT_EQ(familyName(answer.font), L"Noto Sans CJK JP");
}

TEST(MapCharacters, readsNoMoreOfALongTextThanItNeeds) {
    StackSource source(L"a\x3042" + std::wstring(100000, L'b'));
    source.m_piece = 1;
    EXPECT_EQ(map(&source, 0, 100002).length, 1U);
    EXPECT_LE(source.m_asked, 256);
}

TEST(MapCharacters, doesNotCutAClusterWhereAPieceEnds) {
    // Wherever a piece ends, between a letter and its mark is one of the places.
    for (UINT32 letters = 1; letters < 300; ++letters) {
        StackSource source(std::wstring(letters, L'a') + L"x\x0302");
        EXPECT_EQ(map(&source, 0, letters + 2).length, letters);
        EXPECT_EQ(map(&source, letters, 2).length, 2U);
        EXPECT_EQ(familyName(map(&source, letters, 2).font), L"DejaVu Sans");
    }
}

TEST(MapCharacters, refusesElementsThatAreNoUtf16) {
    StackSource source(std::wstring(L"a") + static_cast<wchar_t>(0x1F600));
    expectNothing(map(&source, 0, 2), E_INVALIDARG);
    EXPECT_EQ(map(&source, 0, 1).length, 1U);
}

TEST(MapCharacters, passesAFailureOfTheSourceOn) {
    StackSource source(L"abc");
    source.m_textResult = E_OUTOFMEMORY;
    expectNothing(map(&source, 0, 3), E_OUTOFMEMORY);
    source.m_textResult = S_OK;
    source.m_localeResult = E_UNEXPECTED;
    expectNothing(map(&source, 0, 3), E_UNEXPECTED);
}

TEST(MapCharacters, followsTheLocaleOfTheSourceAndEndsWithIt) {
    StackSource source(L"\x9aa8\x9aa8\x9aa8");
    source.m_locale = L"zh-hant";
    source.m_localeLength = 2;
    const Answer chinese = map(&source, 0, 3);
    EXPECT_EQ(chinese.length, 2U);
    EXPECT_EQ(familyName(chinese.font), L"Noto Sans CJK TC");
    EXPECT_EQ(familyName(map(&source, 2, 1).font), L"Noto Sans CJK JP");
    source.m_locale = nullptr;
    EXPECT_EQ(familyName(map(&source, 0, 1).font), L"Noto Sans CJK JP");
}

TEST(MapCharacters, hasNoFontForAnythingWithoutFonts) {
    const CFontCollection none{FontSet{}};
    FallbackMapper mapper(none);
    CFontFallback fallback(mapper);
    StackSource source(L"abc");
    const Answer answer = map(&source, 0, 3, nullptr, nullptr, fallback);
    EXPECT_EQ(answer.result, S_OK);
    EXPECT_EQ(answer.length, 3U);
    EXPECT_EQ(answer.font.get(), nullptr);
}

TEST(FontFallback, isOneObjectThatAnswersForItself) {
    CFontFallback& fallback = CFontFallback::system();
    EXPECT_EQ(&fallback, &CFontFallback::system());
    com_ptr<IDWriteFontFallback> same;
    EXPECT_EQ(fallback.QueryInterface(&same), S_OK);
    EXPECT_EQ(same.get(), &fallback);
    com_ptr<IDWriteFontFamily> other;
    EXPECT_EQ(fallback.QueryInterface(&other), E_NOINTERFACE);
    EXPECT_EQ(other.get(), nullptr);
    // References that are never given back cost nothing.
    for (int i = 0; i < 1000; ++i) {
        fallback.AddRef();
    }
}

} // namespace
} // namespace platform

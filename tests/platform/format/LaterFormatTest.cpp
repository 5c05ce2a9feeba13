#include "fonts/FontFace.h"
#include "support/ForeignFormat.h"
#include "support/LayoutTestSupport.h"

// What formats of the second generation add: IDWriteTextFormat1.

namespace platform_test {
namespace {

using Texts = std::vector<std::u16string>;

constexpr auto withoutBearings = DWRITE_OPTICAL_ALIGNMENT_NO_SIDE_BEARINGS;

Reference<IDWriteTextFormat1> later(IUnknown& formatOrLayout) {
    void* queried = nullptr;
    EXPECT_EQ(S_OK, formatOrLayout.QueryInterface(__uuidof(IDWriteTextFormat1), &queried));
    return {static_cast<IDWriteTextFormat1*>(queried), false};
}

TEST(LaterFormat, FormatsAndLayoutsAnswerForIt) {
    const auto format = makeFormat();
    EXPECT_EQ(static_cast<IDWriteTextFormat*>(later(*format).get()), format.get());
    const auto layout = makeLayout(u"text");
    const auto view = later(*layout);
    EXPECT_NE(static_cast<void*>(layout.get()), static_cast<void*>(view.get()));
    IDWriteTextFormat* first = nullptr;
    ASSERT_EQ(S_OK, layout->QueryInterface(&first));
    EXPECT_EQ(static_cast<IDWriteTextFormat*>(view.get()), first);
    first->Release();
    // One count for the layout and its view.
    EXPECT_EQ(3U, layout->AddRef());
    EXPECT_EQ(2U, view->Release());
}

TEST(LaterFormat, StartsWithTheUsualAndRefusesWhatIsNoMemberOfAnEnumeration) {
    const auto format = later(*makeFormat());
    EXPECT_EQ(DWRITE_VERTICAL_GLYPH_ORIENTATION_DEFAULT, format->GetVerticalGlyphOrientation());
    EXPECT_TRUE(format->GetLastLineWrapping());
    EXPECT_EQ(DWRITE_OPTICAL_ALIGNMENT_NONE, format->GetOpticalAlignment());
    IDWriteFontFallback* fallback = nullptr;
    EXPECT_EQ(S_OK, format->GetFontFallback(&fallback));
    EXPECT_EQ(nullptr, fallback);
    EXPECT_EQ(S_OK, format->SetVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED));
    EXPECT_EQ(E_INVALIDARG, format->SetVerticalGlyphOrientation(static_cast<DWRITE_VERTICAL_GLYPH_ORIENTATION>(2)));
    EXPECT_EQ(DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED, format->GetVerticalGlyphOrientation());
    EXPECT_EQ(S_OK, format->SetOpticalAlignment(withoutBearings));
    EXPECT_EQ(E_INVALIDARG, format->SetOpticalAlignment(static_cast<DWRITE_OPTICAL_ALIGNMENT>(-1)));
    EXPECT_EQ(withoutBearings, format->GetOpticalAlignment());
    EXPECT_EQ(S_OK, format->SetLastLineWrapping(FALSE));
    EXPECT_FALSE(format->GetLastLineWrapping());
}

TEST(LaterFormat, IsCopiedWhenALayoutIsMade) {
    ForeignFormat<platform::LaterFormatOperations> foreign;
    foreign.settings.font.family = platform::makeName(L"DejaVu Sans");
    foreign.settings.font.locale = platform::makeName(L"en-us");
    foreign.settings.font.size = 20.0F;
    const auto own = makeFormat();
    for (IDWriteTextFormat1* format : {static_cast<IDWriteTextFormat1*>(&foreign), later(*own).get()}) {
        EXPECT_EQ(S_OK, format->SetVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED));
        EXPECT_EQ(S_OK, format->SetLastLineWrapping(FALSE));
        EXPECT_EQ(S_OK, format->SetOpticalAlignment(withoutBearings));
        IDWriteTextLayout* created = nullptr;
        ASSERT_EQ(S_OK, factory().CreateTextLayout(L"text", 4, format, 0, 0, &created));
        const Reference<IDWriteTextLayout> layout(created, false);
        const auto view = later(*layout);
        EXPECT_EQ(DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED, view->GetVerticalGlyphOrientation());
        EXPECT_FALSE(view->GetLastLineWrapping());
        EXPECT_EQ(withoutBearings, view->GetOpticalAlignment());
        EXPECT_EQ(S_OK, view->SetLastLineWrapping(TRUE));
        EXPECT_FALSE(format->GetLastLineWrapping());
    }
}

DWRITE_OVERHANG_METRICS overhangOf(IDWriteTextLayout& layout) {
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout.GetOverhangMetrics(&overhang));
    return overhang;
}

TEST(OpticalAlignment, BringsTheInkToTheMargins) {
    for (const std::u16string_view text : {u"HHH ", u"jf", u"\u05D0\u05D1", u"H\n"}) {
        const auto layout = makeLayout(text, 200.0F);
        const float advance = metricsOf(*layout).width;
        const DWRITE_OVERHANG_METRICS before = overhangOf(*layout);
        const float ink = before.left + 200.0F + before.right;
        EXPECT_EQ(S_OK, later(*layout)->SetOpticalAlignment(withoutBearings));
        EXPECT_NEAR(0.0F, overhangOf(*layout).left, 1e-4F);
        EXPECT_EQ(0.0F, metricsOf(*layout).left);
        EXPECT_NEAR(ink, metricsOf(*layout).width, 1e-4F);
        EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
        EXPECT_NEAR(0.0F, overhangOf(*layout).right, 1e-4F);
        EXPECT_NEAR(200.0F - ink, metricsOf(*layout).left, 1e-4F);
        EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_CENTER));
        EXPECT_NEAR(overhangOf(*layout).left, overhangOf(*layout).right, 1e-4F);
        EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
        EXPECT_EQ(S_OK, later(*layout)->SetOpticalAlignment(DWRITE_OPTICAL_ALIGNMENT_NONE));
        EXPECT_NEAR(before.left, overhangOf(*layout).left, 1e-4F);
        EXPECT_EQ(advance, metricsOf(*layout).width);
    }
}

TEST(OpticalAlignment, JustifiedLinesReachBothMarginsWithTheirInk) {
    for (const auto reading : {DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, DWRITE_READING_DIRECTION_RIGHT_TO_LEFT}) {
        const auto layout = makeLayout(u"HH HH HH HH", 130.0F, 0, {.reading = reading});
        EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
        ASSERT_EQ(2U, metricsOf(*layout).lineCount);
        EXPECT_GT(-1.0F, overhangOf(*layout).left);
        EXPECT_EQ(S_OK, later(*layout)->SetOpticalAlignment(withoutBearings));
        EXPECT_NEAR(0.0F, overhangOf(*layout).left, 1e-4F);
        EXPECT_NEAR(0.0F, overhangOf(*layout).right, 1e-4F);
        EXPECT_EQ(130.0F, metricsOf(*layout).width);
    }
}

TEST(OpticalAlignment, LinesWithoutInkStandAsEver) {
    const auto layout = makeLayout(u"\u00A0\n", 200.0F);
    const float width = metricsOf(*layout).width;
    EXPECT_EQ(S_OK, later(*layout)->SetOpticalAlignment(withoutBearings));
    EXPECT_EQ(0.0F, metricsOf(*layout).left);
    EXPECT_EQ(width, metricsOf(*layout).width);
}

TEST(LastLineWrapping, WhatHasNoRoomBelowStaysOnTheLastLineThatHas) {
    const std::u16string text = u"aa bb cc dd ee\nff gg";
    const float width = metricsOf(*makeLayout(u"aa bb")).width + 1.0F;
    const float lineHeight = linesOf(*makeLayout(u"a"))[0].height;
    const auto layout = makeLayout(text, width, 2 * lineHeight + 1.0F);
    EXPECT_EQ((Texts{u"aa bb ", u"cc dd ", u"ee\n", u"ff gg"}), lineTexts(text, *layout));
    EXPECT_EQ(S_OK, later(*layout)->SetLastLineWrapping(FALSE));
    EXPECT_EQ((Texts{u"aa bb ", u"cc dd ee\n", u"ff gg"}), lineTexts(text, *layout));
    // The height now decides where lines end.
    EXPECT_EQ(S_OK, layout->SetMaxHeight(lineHeight / 2));
    EXPECT_EQ((Texts{u"aa bb cc dd ee\n", u"ff gg"}), lineTexts(text, *layout));
    EXPECT_EQ(S_OK, layout->SetMaxHeight(100 * lineHeight));
    EXPECT_EQ((Texts{u"aa bb ", u"cc dd ", u"ee\n", u"ff gg"}), lineTexts(text, *layout));
    EXPECT_EQ(S_OK, layout->SetMaxHeight(0.0F));
    EXPECT_EQ(4U, metricsOf(*layout).lineCount);
    EXPECT_EQ(S_OK, later(*layout)->SetLastLineWrapping(TRUE));
    EXPECT_EQ(S_OK, layout->SetMaxHeight(lineHeight));
    EXPECT_EQ(4U, metricsOf(*layout).lineCount);
}

TEST(LastLineWrapping, LeavesTheLastLineToTrimming) {
    const std::u16string text = u"aa bb cc dd ee";
    const float width = metricsOf(*makeLayout(u"aa bb")).width + 1.0F;
    const auto layout = makeLayout(text, width, 2 * linesOf(*makeLayout(u"a"))[0].height);
    EXPECT_EQ(S_OK, later(*layout)->SetLastLineWrapping(FALSE));
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0};
    EXPECT_EQ(S_OK, layout->SetTrimming(&trimming, nullptr));
    const auto lines = linesOf(*layout);
    ASSERT_EQ(2U, lines.size());
    EXPECT_FALSE(lines[0].isTrimmed);
    EXPECT_TRUE(lines[1].isTrimmed);
    EXPECT_GE(width, metricsOf(*layout).width);
}

/// A font that is not installed.
class ForeignFont final : public IDWriteFont {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    HRESULT STDMETHODCALLTYPE GetFontFamily(IDWriteFontFamily**) override { return E_FAIL; }
    DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetWeight() override { return DWRITE_FONT_WEIGHT_NORMAL; }
    DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetStretch() override { return DWRITE_FONT_STRETCH_NORMAL; }
    DWRITE_FONT_STYLE STDMETHODCALLTYPE GetStyle() override { return DWRITE_FONT_STYLE_NORMAL; }
    HRESULT STDMETHODCALLTYPE GetFaceNames(IDWriteLocalizedStrings**) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID, IDWriteLocalizedStrings**,
                                                      BOOL*) override {
        return E_FAIL;
    }
    DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() override { return DWRITE_FONT_SIMULATIONS_NONE; }
    void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* metrics) override { *metrics = {}; }
    HRESULT STDMETHODCALLTYPE HasCharacter(UINT32, BOOL* exists) override {
        *exists = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CreateFontFace(IDWriteFontFace** face) override {
        *face = nullptr;
        return E_FAIL;
    }
    ULONG count = 1;
};

/// Draws every "s" with Liberation Serif at double size, leaves every "n" without a font, and everything else to the
/// system's fallback.
class HostsFallback final : public IDWriteFontFallback {
public:
    HRESULT answer = S_OK;
    /// Named for everything, where set.
    IDWriteFont* font = nullptr;
    std::wstring locale;
    std::wstring before;
    DWRITE_READING_DIRECTION reading = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    HRESULT STDMETHODCALLTYPE MapCharacters(IDWriteTextAnalysisSource* source, UINT32 position, UINT32 length,
                                            IDWriteFontCollection* collection, const WCHAR* family,
                                            DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                                            DWRITE_FONT_STRETCH stretch, UINT32* mappedLength, IDWriteFont** mapped,
                                            FLOAT* scale) override {
        const WCHAR* text = nullptr;
        UINT32 textLength = 0;
        EXPECT_EQ(S_OK, source->GetTextAtPosition(position, &text, &textLength));
        EXPECT_LE(length, textLength);
        remember(*source, position);
        *mappedLength = 1;
        *mapped = nullptr;
        *scale = 1.0F;
        if (font != nullptr) {
            font->AddRef();
            *mapped = font;
        } else if (text[0] == L's') {
            *scale = 2.0F;
            *mapped = serif(*collection);
        } else if (text[0] != L'n') {
            IDWriteFontFallback* system = nullptr;
            void* factory2 = nullptr;
            EXPECT_EQ(S_OK, factory().QueryInterface(__uuidof(IDWriteFactory2), &factory2));
            EXPECT_EQ(S_OK, static_cast<IDWriteFactory2*>(factory2)->GetSystemFontFallback(&system));
            return system->MapCharacters(source, position, 1, collection, family, weight, style, stretch, mappedLength,
                                         mapped, scale);
        }
        return answer;
    }
    ULONG count = 1;

private:
    void remember(IDWriteTextAnalysisSource& source, UINT32 position) {
        const WCHAR* name = nullptr;
        const WCHAR* text = nullptr;
        UINT32 length = 0;
        EXPECT_EQ(S_OK, source.GetLocaleName(position, &length, &name));
        locale = name;
        EXPECT_EQ(S_OK, source.GetTextBeforePosition(position, &text, &length));
        EXPECT_EQ(position, length);
        before = position == 0 ? L"" : std::wstring(text, length);
        EXPECT_EQ(S_OK, source.GetTextAtPosition(1000, &text, &length));
        EXPECT_EQ(0U, length);
        IDWriteNumberSubstitution* substitution = nullptr;
        EXPECT_EQ(S_OK, source.GetNumberSubstitution(position, &length, &substitution));
        EXPECT_EQ(nullptr, substitution);
        EXPECT_LT(0U, length);
        reading = source.GetParagraphReadingDirection();
        void* self = nullptr;
        EXPECT_EQ(S_OK, source.QueryInterface(__uuidof(IDWriteTextAnalysisSource), &self));
        EXPECT_EQ(static_cast<void*>(&source), self);
        source.Release();
        EXPECT_EQ(E_NOINTERFACE, source.QueryInterface(__uuidof(IDWriteFont), &self));
    }

    static IDWriteFont* serif(IDWriteFontCollection& collection) {
        UINT32 index = 0;
        BOOL exists = FALSE;
        EXPECT_EQ(S_OK, collection.FindFamilyName(L"Liberation Serif", &index, &exists));
        IDWriteFontFamily* family = nullptr;
        EXPECT_EQ(S_OK, collection.GetFontFamily(index, &family));
        const Reference<IDWriteFontFamily> owned(family, false);
        IDWriteFont* found = nullptr;
        EXPECT_EQ(S_OK, family->GetFirstMatchingFont(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL,
                                                     DWRITE_FONT_STYLE_NORMAL, &found));
        return found;
    }
};

TEST(HostsFallback, ChoosesTheFontsOfALayout) {
    HostsFallback fallback;
    {
        const auto layout = makeLayout(u"abssn\u05D0", 0, 0, {.reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT});
        EXPECT_EQ(S_OK, later(*layout)->SetFontFallback(&fallback));
        EXPECT_EQ(2U, fallback.count);
        IDWriteFontFallback* held = nullptr;
        EXPECT_EQ(S_OK, later(*layout)->GetFontFallback(&held));
        EXPECT_EQ(&fallback, held);
        held->Release();
        std::vector<float> sizes;
        std::vector<IDWriteFontFace*> faces;
        std::wstring text;
        for (const DrawnCall& run : drawnRuns(*layout)) {
            for (std::size_t i = 0; i < run.text.size(); ++i) {
                text += run.text[i];
                sizes.push_back(run.emSize);
                faces.push_back(run.face);
                EXPECT_EQ(run.text[i] == L'n', run.glyphs[i] == 0U);
            }
        }
        EXPECT_EQ(L"abssn\u05D0", text);
        EXPECT_EQ((std::vector<float>{20, 20, 40, 40, 20, 20}), sizes);
        IDWriteFontFace* const sans = &regularFace("DejaVu Sans");
        IDWriteFontFace* const serif = &regularFace("Liberation Serif");
        EXPECT_EQ((std::vector<IDWriteFontFace*>{sans, sans, serif, serif, sans, sans}), faces);
        EXPECT_EQ(L"en-us", fallback.locale);
        EXPECT_EQ(L"abssn", fallback.before);
        EXPECT_EQ(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT, fallback.reading);
        EXPECT_EQ(S_OK, later(*layout)->SetFontFallback(nullptr));
        EXPECT_EQ(1U, fallback.count);
        EXPECT_EQ(2U, drawnRuns(*layout).size());
    }
    EXPECT_EQ(1U, fallback.count);
}

TEST(HostsFallback, WithoutAnInstalledFontTextIsDrawnAsMissing) {
    ForeignFont foreign;
    HostsFallback naming;
    naming.font = &foreign;
    HostsFallback failing;
    failing.answer = E_FAIL;
    for (HostsFallback* fallback : {&naming, &failing}) {
        const auto layout = makeLayout(u"ns");
        EXPECT_EQ(S_OK, later(*layout)->SetFontFallback(fallback));
        for (const DrawnCall& run : drawnRuns(*layout)) {
            EXPECT_EQ(static_cast<IDWriteFontFace*>(&regularFace("DejaVu Sans")), run.face);
            for (const unsigned glyph : run.glyphs) {
                EXPECT_EQ(0U, glyph);
            }
        }
    }
    EXPECT_EQ(1U, foreign.count);
}

TEST(HostsFallback, DrawsAPairWholeWhereItAnswersForOneHalf) {
    IDWriteFontCollection* collection = nullptr;
    ASSERT_EQ(S_OK, factory().GetSystemFontCollection(&collection));
    const Reference<IDWriteFontCollection> owned(collection, false);
    HostsFallback fallback;
    ASSERT_EQ(S_OK, collection->GetFontFromFontFace(&regularFace("DejaVu Sans"), &fallback.font));
    const Reference<IDWriteFont> font(fallback.font, false);
    const auto layout = makeLayout(u"a\U0001F600b");
    EXPECT_EQ(S_OK, later(*layout)->SetFontFallback(&fallback));
    std::vector<unsigned> glyphs;
    for (const DrawnCall& run : drawnRuns(*layout)) {
        glyphs.insert(glyphs.end(), run.glyphs.begin(), run.glyphs.end());
    }
    // hb-shape --no-glyph-names DejaVuSans.ttf --unicodes=61,1F600,62
    EXPECT_EQ((std::vector<unsigned>{68, 5857, 69}), glyphs);
}

TEST(HostsFallback, TheSystemsOwnIsTheSameAsNone) {
    void* queried = nullptr;
    ASSERT_EQ(S_OK, factory().QueryInterface(__uuidof(IDWriteFactory2), &queried));
    const Reference<IDWriteFactory2> factory2(static_cast<IDWriteFactory2*>(queried), false);
    IDWriteFontFallback* system = nullptr;
    ASSERT_EQ(S_OK, factory2->GetSystemFontFallback(&system));
    const auto plain = drawnRuns(*makeLayout(u"a\u6F22b \u0E01"));
    const auto layout = makeLayout(u"a\u6F22b \u0E01");
    EXPECT_EQ(S_OK, later(*layout)->SetFontFallback(system));
    system->Release();
    const auto runs = drawnRuns(*layout);
    EXPECT_EQ(runTexts(plain), runTexts(runs));
    for (std::size_t i = 0; i < runs.size(); ++i) {
        EXPECT_EQ(plain[i].face, runs[i].face);
    }
}

} // namespace
} // namespace platform_test

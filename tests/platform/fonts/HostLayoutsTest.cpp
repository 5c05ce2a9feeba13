// Texts in a host's own fonts.

#include "fonts/HostFiles.h"

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "support/LayoutTestSupport.h"
#include "support/Fonts.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;
using platform_test::DrawnCall;
using platform_test::drawnRuns;

/// "w" is a font of the letters H, I, O and x and the space.
class HostLayouts : public testing::Test {
protected:
    HostLayouts() {
        m_fonts.file("w").bytes = fontBytes("Words.ttf");
        m_fonts.file("w").copiesFragments = true;
    }

    com_ptr<IDWriteTextLayout> makeLayout(const std::wstring& text, IDWriteFontCollection* collection) {
        com_ptr<IDWriteTextFormat> format;
        EXPECT_EQ(m_fonts.factory().CreateTextFormat(L"Test Words", collection, DWRITE_FONT_WEIGHT_NORMAL,
                                                     DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, 10.0F,
                                                     L"en-us", &format),
                  S_OK);
        com_ptr<IDWriteTextLayout> layout;
        EXPECT_EQ(
            m_fonts.factory().CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), format, 0, 0, &layout),
            S_OK);
        return layout;
    }

    static bool isOf(IDWriteFontCollection& collection, IDWriteFontFace* face) {
        com_ptr<IDWriteFont> font;
        return SUCCEEDED(collection.GetFontFromFontFace(face, &font));
    }

    HostFonts m_fonts;
};

TEST_F(HostLayouts, AreDrawnInTheHostsFontAndElseInTheSystems) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("w");
    const auto layout = makeLayout(L"HIzzO", collection);
    const std::vector<DrawnCall> runs = drawnRuns(*layout);
    ASSERT_EQ(platform_test::runTexts(runs), (std::vector<std::wstring>{L"HI", L"zz", L"O"}));
    EXPECT_TRUE(isOf(*collection, runs[0].face));
    EXPECT_EQ(runs[0].advances, (std::vector<float>{7, 3}));
    EXPECT_FALSE(isOf(*collection, runs[1].face));
    EXPECT_TRUE(isOf(CFontCollection::system(), runs[1].face));
    EXPECT_NE(runs[1].glyphs[0], 0u);
    EXPECT_EQ(runs[2].face, runs[0].face);
}

TEST_F(HostLayouts, AFamilyThatOnlyTheHostHasIsUnknownToTheSystem) {
    const auto layout = makeLayout(L"HI", nullptr);
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("w");
    const std::vector<DrawnCall> runs = drawnRuns(*layout);
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_FALSE(isOf(*collection, runs[0].face));
}

TEST_F(HostLayouts, ARangeMayHaveAnotherCollection) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("w");
    const auto layout = makeLayout(L"HIHI", nullptr);
    EXPECT_EQ(layout->SetFontCollection(collection, {2, 2}), S_OK);
    std::vector<DrawnCall> runs = drawnRuns(*layout);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_FALSE(isOf(*collection, runs[0].face));
    EXPECT_TRUE(isOf(*collection, runs[1].face));
    com_ptr<IDWriteFontCollection> read;
    EXPECT_EQ(layout->GetFontCollection(2, &read, nullptr), S_OK);
    EXPECT_EQ(read.get(), collection.get());
}

TEST_F(HostLayouts, KeepTheirFontsAndLetGoOfThem) {
    com_ptr<IDWriteTextLayout> layout = makeLayout(L"HI", m_fonts.collection("w"));
    DWRITE_TEXT_METRICS metrics{};
    ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
    EXPECT_EQ(metrics.width, 10);
    EXPECT_LT(0, m_fonts.held());
    // Another one takes the first one's place, once shaped and once not.
    EXPECT_EQ(layout->SetFontCollection(m_fonts.collection("w"), {0, 0xFFFFFFFF}), S_OK);
    EXPECT_EQ(layout->SetFontCollection(m_fonts.collection("w"), {0, 0xFFFFFFFF}), S_OK);
    ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
    EXPECT_EQ(metrics.width, 10);
    EXPECT_EQ(drawnRuns(*layout).size(), 1u);
    layout = nullptr;
    EXPECT_EQ(m_fonts.held(), 0);
    EXPECT_EQ(m_fonts.counts.fragments, 0);
}

TEST_F(HostLayouts, ManyCollectionsOneAfterTheOtherLeaveNothing) {
    for (int i = 0; i < 50; ++i) {
        const auto layout = makeLayout(L"HIx HOx", m_fonts.collection("w"));
        DWRITE_TEXT_METRICS metrics{};
        ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
        EXPECT_NEAR(metrics.width, 37.5F, 1e-4F);
        EXPECT_EQ(m_fonts.held(), 1);
    }
    EXPECT_EQ(m_fonts.held(), 0);
}

/// Draws everything with one font.
class OneFont final : public IDWriteFontFallback {
public:
    explicit OneFont(com_ptr<IDWriteFont> font) : m_font(std::move(font)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE MapCharacters(IDWriteTextAnalysisSource*, UINT32, UINT32 length, IDWriteFontCollection*,
                                            const WCHAR*, DWRITE_FONT_WEIGHT, DWRITE_FONT_STYLE, DWRITE_FONT_STRETCH,
                                            UINT32* mappedLength, IDWriteFont** mapped, FLOAT* scale) override {
        *mappedLength = length;
        m_font->AddRef();
        *mapped = m_font;
        *scale = 1.0F;
        return S_OK;
    }

    void forget() { m_font = nullptr; }

private:
    com_ptr<IDWriteFont> m_font;
};

TEST_F(HostLayouts, AHostsFallbackMayNameTheHostsFonts) {
    com_ptr<IDWriteFont> font;
    {
        com_ptr<IDWriteFontFamily> family;
        ASSERT_EQ(m_fonts.collection("w")->GetFontFamily(0, &family), S_OK);
        ASSERT_EQ(family->GetFont(0, &font), S_OK);
    }
    OneFont fallback(font);
    font = nullptr;
    com_ptr<IDWriteTextLayout> layout = makeLayout(L"HI", nullptr);
    com_ptr<IDWriteTextFormat1> settings;
    settings.queryFrom(layout);
    ASSERT_EQ(settings->SetFontFallback(&fallback), S_OK);
    DWRITE_TEXT_METRICS metrics{};
    ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
    EXPECT_EQ(metrics.width, 10);
    // What was shaped keeps its font, also where the host does not.
    fallback.forget();
    const std::vector<DrawnCall> runs = drawnRuns(*layout);
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].face->GetGlyphCount(), 6u);
    EXPECT_EQ(settings->SetFontFallback(nullptr), S_OK);
    settings = nullptr;
    layout = nullptr;
    EXPECT_EQ(m_fonts.held(), 0);
}

} // namespace
} // namespace platform::test

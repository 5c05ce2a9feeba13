#include "support/Fonts.h"

#include <d2d1.h>
#include <dwrite_2.h>
#include <gtest/gtest.h>

#include "fonts/FontSet.h"

namespace platform::test {
namespace {

constexpr char32_t smile = U'\U0001F600';
constexpr char32_t heart = U'\u2764';

/// Fonts whose glyphs are pictures, at 100 pixels per em: beside empty outlines, and without any.
std::vector<CFont*> pictureFonts() {
    static auto& collection =
        *new CFontCollection(FontSet{{{dataPath("pictures/Cbdt.ttf"), 0}, {dataPath("pictures/Sbix.ttf"), 0}}});
    std::vector<CFont*> fonts;
    for (const auto& family : collection.families()) {
        fonts.push_back(family->fonts().front().get());
    }
    return fonts;
}

TEST(PictureFonts, HaveThePlacesOfTheirPicturesForInk) {
    ASSERT_EQ(pictureFonts().size(), 2u);
    for (CFont* const font : pictureFonts()) {
        const CFontFace& face = font->face();
        // 64 by 72 pixels from (3, -12) on, in an em of 1000 units.
        const GlyphBounds& bounds = face.glyphBounds(face.nominalGlyph(smile));
        EXPECT_FLOAT_EQ(bounds.xMin, 30.0F);
        EXPECT_FLOAT_EQ(bounds.xMax, 670.0F);
        EXPECT_FLOAT_EQ(bounds.yMin, -120.0F);
        EXPECT_FLOAT_EQ(bounds.yMax, 600.0F);
        EXPECT_EQ(face.advance(face.nominalGlyph(smile)), 700);
        // 20 by 71 from (10, 0) on.
        const GlyphBounds& other = face.glyphBounds(face.nominalGlyph(heart));
        EXPECT_FLOAT_EQ(other.xMin, 100.0F);
        EXPECT_FLOAT_EQ(other.xMax, 300.0F);
        EXPECT_FLOAT_EQ(other.yMin, 0.0F);
        EXPECT_FLOAT_EQ(other.yMax, 710.0F);
        EXPECT_TRUE(face.glyphBounds(face.nominalGlyph(U' ')).empty());
    }
}

TEST(PictureFonts, KeepTheOutlinesThatTheyHave) {
    CFont& font = *pictureFonts().back();
    const CFontFace& face = font.face();
    EXPECT_FLOAT_EQ(face.glyphBounds(face.nominalGlyph(U'x')).xMax, 470.0F);
    EXPECT_FLOAT_EQ(face.glyphBounds(face.nominalGlyph(U'x')).yMax, 480.0F);
}

/// Counts what the outline of a run consists of.
class CountingSink final : public ID2D1SimplifiedGeometrySink {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        ++m_figures;
        m_current = m_start = start;
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            addEdge(points[i]);
        }
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT32 count) override { m_curves += count; }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override { addEdge(m_start); }
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

    unsigned m_figures = 0;
    unsigned m_curves = 0;
    /// What is filled, holes taken off; the sign is the outer figure's direction.
    float m_area = 0;

private:
    void addEdge(D2D1_POINT_2F to) {
        m_area += (m_current.x * to.y - to.x * m_current.y) / 2;
        m_current = to;
    }

    D2D1_POINT_2F m_start{};
    D2D1_POINT_2F m_current{};
};

TEST(PictureFonts, AreDrawnAsFramesAroundTheirPictures) {
    for (CFont* const font : pictureFonts()) {
        CountingSink sink;
        const UINT16 glyph = font->face().nominalGlyph(smile);
        ASSERT_EQ(font->face().GetGlyphRunOutline(1000, &glyph, nullptr, nullptr, 1, FALSE, FALSE, &sink), S_OK);
        EXPECT_EQ(sink.m_figures, 2u);
        EXPECT_EQ(sink.m_curves, 0u);
        // A frame of 640 by 720 units whose bars are a 32nd of the em.
        EXPECT_NEAR(std::abs(sink.m_area), 640 * 720 - (640 - 62.5) * (720 - 62.5), 1);
    }
}

TEST(PictureFonts, ABoldThatIsSimulatedLeavesPicturesAsTheyAre) {
    for (CFont* const font : pictureFonts()) {
        CFontFace& bold =
            font->family().match(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL).face();
        ASSERT_EQ(bold.simulations(), DWRITE_FONT_SIMULATIONS_BOLD);
        const GlyphBounds& bounds = bold.glyphBounds(bold.nominalGlyph(smile));
        EXPECT_FLOAT_EQ(bounds.xMin, 30.0F);
        EXPECT_FLOAT_EQ(bounds.xMax, 670.0F);
    }
}

} // namespace
} // namespace platform::test

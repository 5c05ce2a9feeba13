#include "support/Fonts.h"

#include "com/ComObject.h"
#include "fonts/GlyphOutlineSink.h"

#include <d2d1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace platform::test {
namespace {

using testing::ElementsAre;

/// Records what a face plays: the calls in order, and the box of all points on contours.
class RecordingSink : public ID2D1SimplifiedGeometrySink {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        ++queries;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override { calls += 'M'; }
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override { calls += 'S'; }
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN begin) override {
        calls += begin == D2D1_FIGURE_BEGIN_FILLED ? 'B' : 'H';
        include(start);
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT count) override {
        calls += 'L';
        std::for_each(points, points + count, [this](D2D1_POINT_2F point) { include(point); });
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT count) override {
        calls += 'C';
        for (UINT i = 0; i < count; ++i) {
            include(beziers[i].point3);
            last = beziers[i];
        }
    }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END end) override {
        calls += end == D2D1_FIGURE_END_CLOSED ? 'E' : 'O';
    }
    HRESULT STDMETHODCALLTYPE Close() override {
        calls += 'X';
        return S_OK;
    }

    std::vector<float> box() const { return {left, top, right, bottom}; }

    std::string calls;
    int queries = 0;
    D2D1_BEZIER_SEGMENT last{};

private:
    void include(D2D1_POINT_2F point) {
        left = std::min(left, point.x);
        top = std::min(top, point.y);
        right = std::max(right, point.x);
        bottom = std::max(bottom, point.y);
    }

    float left = std::numeric_limits<float>::infinity();
    float top = left;
    float right = -left;
    float bottom = -left;
};

// In the test font at an em of 1000: H is (50, 0)-(650, 710), advance 700 (glyph 2);
// I is (100, 0)-(200, 710), advance 300 (glyph 4); the space is glyph 1, O glyph 5.
constexpr UINT16 space = 1;
constexpr UINT16 h = 2;
constexpr UINT16 i = 4;
constexpr UINT16 o = 5;

struct Played {
    HRESULT result;
    RecordingSink sink;
};

struct Request {
    std::vector<UINT16> glyphs;
    std::vector<FLOAT> advances = {};
    std::vector<DWRITE_GLYPH_OFFSET> offsets = {};
    FLOAT em = 1000;
    bool isSideways = false;
    bool isRightToLeft = false;
};

Played play(const Request& request, const char* file = "Words.ttf") {
    Played played{};
    played.result = dataFont(file).face().GetGlyphRunOutline(
        request.em, request.glyphs.data(), request.advances.empty() ? nullptr : request.advances.data(),
        request.offsets.empty() ? nullptr : request.offsets.data(), static_cast<UINT32>(request.glyphs.size()),
        request.isSideways, request.isRightToLeft, &played.sink);
    return played;
}

TEST(GlyphRunOutline, WithoutGlyphsOrSinkItIsRefused) {
    CFontFace& face = dataFont("Words.ttf").face();
    RecordingSink sink;
    const UINT16 glyph = h;
    EXPECT_EQ(face.GetGlyphRunOutline(10, nullptr, nullptr, nullptr, 1, FALSE, FALSE, &sink), E_INVALIDARG);
    EXPECT_EQ(face.GetGlyphRunOutline(10, &glyph, nullptr, nullptr, 1, FALSE, FALSE, nullptr), E_INVALIDARG);
    EXPECT_EQ(face.GetGlyphRunOutline(10, &glyph, nullptr, nullptr, 1, TRUE, TRUE, &sink), E_INVALIDARG);
    EXPECT_EQ(sink.calls, "");
}

TEST(GlyphRunOutline, NoGlyphsMakeNoCalls) {
    RecordingSink sink;
    const UINT16 glyph = h;
    EXPECT_EQ(dataFont("Words.ttf").face().GetGlyphRunOutline(10, &glyph, nullptr, nullptr, 0, FALSE, FALSE, &sink),
              S_OK);
    EXPECT_EQ(sink.calls, "");
    EXPECT_EQ(sink.queries, 0);
}

TEST(GlyphRunOutline, YGoesDownAndTheFigureIsFilledAndClosed) {
    const Played played = play({.glyphs = {h}});
    EXPECT_EQ(played.result, S_OK);
    EXPECT_EQ(played.sink.calls, "MBLLLLE");
    EXPECT_THAT(played.sink.box(), ElementsAre(50, -710, 650, 0));
}

TEST(GlyphRunOutline, AContourOfASinglePointBeginsNoFigure) {
    // u of DejaVu Sans has a contour and, 27 units above it, a point that marks are anchored at: fontTools'
    // TTFont(...)["glyf"]["u"].endPtsOfContours is [19, 20], and BoundsPen's yMax without single points 1120.
    CFont& plain = fontOfFile("fonts-dejavu-core/DejaVuSans.ttf");
    for (const auto& font : plain.family().fonts()) {
        if (&font->source() != &plain.source()) {
            continue;
        }
        const UINT16 glyph = plain.face().nominalGlyph(U'u');
        RecordingSink sink;
        font->face().GetGlyphRunOutline(2048, &glyph, nullptr, nullptr, 1, FALSE, FALSE, &sink);
        EXPECT_EQ(std::count(sink.calls.begin(), sink.calls.end(), 'B'), 1);
        EXPECT_EQ(std::count(sink.calls.begin(), sink.calls.end(), 'E'), 1);
        EXPECT_NEAR(sink.box()[1], -1120.0F, 0.01F) << font->simulations();
    }
}

TEST(GlyphRunOutline, SetsTheFillModeOnceAlsoForASpace) {
    EXPECT_EQ(play({.glyphs = {space}}).sink.calls, "M");
    EXPECT_EQ(play({.glyphs = {i, space, i}}).sink.calls, "MBLLLLEBLLLLE");
}

TEST(GlyphRunOutline, ScalesByEmOverUnitsPerEmWithoutRounding) {
    EXPECT_THAT(play({.glyphs = {h}, .em = 1.25F}).sink.box(),
                ElementsAre(testing::FloatEq(0.0625F), testing::FloatEq(-0.8875F), testing::FloatEq(0.8125F), 0));
}

TEST(GlyphRunOutline, GlyphsStartAtTheSumOfTheAdvancesBefore) {
    EXPECT_THAT(play({.glyphs = {h, i}}).sink.box(), ElementsAre(50, -710, 900, 0));
    EXPECT_THAT(play({.glyphs = {h, i}, .advances = {1000, 0}}).sink.box(), ElementsAre(50, -710, 1200, 0));
}

TEST(GlyphRunOutline, ARightToLeftRunLiesLeftOfTheOrigin) {
    // H occupies -700..0, I -1000..-700; the shapes are not mirrored.
    EXPECT_THAT(play({.glyphs = {h}, .isRightToLeft = true}).sink.box(), ElementsAre(-650, -710, -50, 0));
    EXPECT_THAT(play({.glyphs = {h, i}, .isRightToLeft = true}).sink.box(), ElementsAre(-900, -710, -50, 0));
}

TEST(GlyphRunOutline, OffsetsMoveAlongTheDirectionAndUp) {
    EXPECT_THAT(play({.glyphs = {i}, .offsets = {{10, 5}}}).sink.box(), ElementsAre(110, -715, 210, -5));
    EXPECT_THAT(play({.glyphs = {i}, .offsets = {{10, 5}}, .isRightToLeft = true}).sink.box(),
                ElementsAre(-210, -715, -110, -5));
    // They do not move the pen.
    EXPECT_THAT(play({.glyphs = {space, i}, .offsets = {{10, 5}, {0, 0}}}).sink.box(), ElementsAre(350, -710, 450, 0));
}

TEST(GlyphRunOutline, QuadraticCurvesArriveAsTheSameCubicOnes) {
    const Played played = play({.glyphs = {o}});
    EXPECT_EQ(std::count(played.sink.calls.begin(), played.sink.calls.end(), 'C'), 2);
    // The last one: from (700, 700) over (850, 350) to (700, 0), y up.
    EXPECT_FLOAT_EQ(played.sink.last.point1.x, 800.0F);
    EXPECT_FLOAT_EQ(played.sink.last.point2.x, 800.0F);
    EXPECT_NEAR(played.sink.last.point1.y, -700.0F + 700.0F / 3, 0.001F);
    EXPECT_NEAR(played.sink.last.point2.y, -700.0F / 3, 0.001F);
    EXPECT_FLOAT_EQ(played.sink.last.point3.y, 0.0F);
}

TEST(GlyphRunOutline, AGlyphPastTheEndDrawsNothing) {
    const Played played = play({.glyphs = {999}});
    EXPECT_EQ(played.result, S_OK);
    EXPECT_EQ(played.sink.calls, "M");
}

TEST(GlyphRunOutline, TheEmSizeIsNotChecked) {
    EXPECT_EQ(play({.glyphs = {h}, .em = 0}).result, S_OK);
    EXPECT_THAT(play({.glyphs = {h}, .em = -1000}).sink.box(), ElementsAre(-650, 0, -50, 710));
}

TEST(GlyphRunOutline, ASidewaysGlyphIsTurnedToTheLeftAboutItsVerticalOrigin) {
    CFontFace& face = dataFont("Words.ttf").face();
    DWRITE_GLYPH_METRICS metrics;
    const UINT16 glyph = i;
    ASSERT_EQ(face.GetDesignGlyphMetrics(&glyph, 1, &metrics, FALSE), S_OK);
    const auto origin = static_cast<float>(metrics.verticalOriginY);
    // Its top points left; it stands centred on the baseline: 100 wide about the middle of its advance.
    EXPECT_THAT(play({.glyphs = {i}, .isSideways = true}).sink.box(), ElementsAre(origin - 710, -50, origin, 50));
    // Glyphs follow each other by their heights.
    const auto height = static_cast<float>(metrics.advanceHeight);
    EXPECT_THAT(play({.glyphs = {space, i}, .advances = {height, height}, .isSideways = true}).sink.box(),
                ElementsAre(height + origin - 710, -50, height + origin, 50));
    EXPECT_THAT(play({.glyphs = {i, i}, .isSideways = true}).sink.box(),
                ElementsAre(origin - 710, -50, height + origin, 50));
}

/// A sink that takes whole glyphs, as the platform's own geometry does.
class GlyphTakingSink : public RecordingSink, public IGlyphOutlineSink {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IGlyphOutlineSink);
        *object = known ? static_cast<IGlyphOutlineSink*>(this) : nullptr;
        references += known ? 1 : 0;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
    void STDMETHODCALLTYPE reserveGlyphs(std::size_t count) noexcept override { reserved = count; }
    void STDMETHODCALLTYPE addGlyph(CFontFace&, UINT16 glyph, float scale, float x, float y) noexcept override {
        taken.push_back({static_cast<float>(glyph), scale, x, y});
    }

    int references = 0;
    std::size_t reserved = 0;
    std::vector<std::vector<float>> taken;
};

TEST(GlyphRunOutline, OurOwnGeometryIsHandedWholeGlyphs) {
    GlyphTakingSink sink;
    const UINT16 glyphs[] = {h, i};
    const DWRITE_GLYPH_OFFSET offsets[] = {{0, 0}, {1, 2}};
    CFontFace& face = dataFont("Words.ttf").face();
    ID2D1SimplifiedGeometrySink& target = static_cast<RecordingSink&>(sink);
    ASSERT_EQ(face.GetGlyphRunOutline(500, glyphs, nullptr, offsets, 2, FALSE, FALSE, &target), S_OK);
    EXPECT_EQ(sink.calls, "M");
    EXPECT_EQ(sink.reserved, 2u);
    EXPECT_EQ(sink.references, 0);
    EXPECT_THAT(sink.taken, ElementsAre(ElementsAre(2, 0.5F, 0, 0), ElementsAre(4, 0.5F, 351, -2)));
    // What it cannot bound from upright glyphs alone it gets as curves.
    ASSERT_EQ(face.GetGlyphRunOutline(500, glyphs, nullptr, offsets, 2, TRUE, FALSE, &target), S_OK);
    EXPECT_EQ(sink.taken.size(), 2u);
    EXPECT_EQ(sink.calls, "MMBLLLLEBLLLLE");
}

} // namespace
} // namespace platform::test

// Operations of the platform's text layouts that a host may need beside the library: the same on every platform.
// Lengths are design units of DejaVu Sans, which has 2048 to the em: A 1401, i 569, q 1300, x 1212, U+2026 2048.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <dwrite_2.h>

#include <oslayer/com_ptr.h>

namespace {

using oslayer::com_ptr;

constexpr DWRITE_TEXT_RANGE everything{0, 0xFFFFFFFF};

com_ptr<IDWriteFactory> sharedFactory() {
    com_ptr<IUnknown> unknown;
    EXPECT_EQ(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown), S_OK);
    com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    return factory;
}

com_ptr<IDWriteTextFormat> makeFormat() {
    com_ptr<IDWriteTextFormat> format;
    EXPECT_EQ(sharedFactory()->CreateTextFormat(L"DejaVu Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                                DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, 2048.0f, L"en-us",
                                                &format),
              S_OK);
    EXPECT_EQ(format->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP), S_OK);
    return format;
}

com_ptr<IDWriteTextLayout1> makeLayout(const std::wstring& text) {
    com_ptr<IDWriteTextLayout> layout;
    EXPECT_EQ(sharedFactory()->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), makeFormat(), 0.0f,
                                                0.0f, &layout),
              S_OK);
    com_ptr<IDWriteTextLayout1> later;
    later.queryFrom(layout);
    return later;
}

std::vector<float> clusterWidths(IDWriteTextLayout& layout) {
    UINT32 count = 0;
    layout.GetClusterMetrics(nullptr, 0, &count);
    std::vector<DWRITE_CLUSTER_METRICS> clusters(count);
    EXPECT_EQ(layout.GetClusterMetrics(clusters.data(), count, &count), S_OK);
    std::vector<float> widths;
    for (const DWRITE_CLUSTER_METRICS& cluster : clusters)
        widths.push_back(cluster.width);
    return widths;
}

// Keeps the glyphs of all runs.
class Glyphs final : public IDWriteTextRenderer {
public:
    std::vector<float> advances;
    std::vector<float> offsets;
    std::vector<float> origins;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {1.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT* pixels) override {
        *pixels = 1.0f;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION*, IUnknown*) override {
        origins.insert(origins.end(), {x, y});
        for (UINT32 i = 0; i < run->glyphCount; ++i) {
            advances.push_back(run->glyphAdvances[i]);
            offsets.push_back(run->glyphOffsets[i].advanceOffset);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return S_OK;
    }
};

Glyphs drawn(IDWriteTextLayout& layout) {
    Glyphs glyphs;
    EXPECT_EQ(layout.Draw(nullptr, &glyphs, 0.0f, 0.0f), S_OK);
    return glyphs;
}

struct SpacingCase {
    float leading;
    float trailing;
    float minimum;
    std::vector<float> advances;
    std::vector<float> offsets;
};

} // namespace

TEST(LayoutOperations, CharacterSpacingWidensClustersAndMovesTheirGlyphs) {
    const std::vector<SpacingCase> cases{
        {100, 30, 0, {1531, 699}, {100, 100}},       {-100, -30, 0, {1271, 439}, {-100, -100}},
        {0, 0, 1000, {1401, 1000}, {0, 215.5}},      {100, 30, 1000, {1531, 1130}, {100, 315.5}},
        {-2000, 0, 50, {50, 50}, {-1351, -519}},     {0, -2000, 50, {50, 50}, {0, 0}},
        {-1000, -1000, 0, {0, 0}, {-700.5, -284.5}}, {100, -2000, 50, {150, 150}, {100, 100}},
        {-2000, 100, 50, {150, 150}, {-1351, -519}}};
    for (const SpacingCase& one : cases) {
        SCOPED_TRACE(testing::Message() << one.leading << ' ' << one.trailing << ' ' << one.minimum);
        const com_ptr<IDWriteTextLayout1> layout = makeLayout(L"Ai");
        EXPECT_EQ(layout->SetCharacterSpacing(one.leading, one.trailing, one.minimum, everything), S_OK);
        EXPECT_EQ(clusterWidths(*layout), one.advances);
        EXPECT_EQ(drawn(*layout).advances, one.advances);
        EXPECT_EQ(drawn(*layout).offsets, one.offsets);
    }
}

TEST(LayoutOperations, AMarkKeepsItsPlaceOnASpacedBase) {
    const com_ptr<IDWriteTextLayout1> layout = makeLayout(L"q\x0301x");
    EXPECT_EQ(layout->SetCharacterSpacing(100.0f, 30.0f, 0.0f, everything), S_OK);
    EXPECT_EQ(drawn(*layout).advances, (std::vector<float>{1430, 0, 1342}));
    EXPECT_EQ(drawn(*layout).offsets, (std::vector<float>{100, -195, 100}));
}

TEST(LayoutOperations, CharacterSpacingLeavesControlsAndNewlinesAsTheyAre) {
    const com_ptr<IDWriteTextLayout1> layout = makeLayout(L"x\r\nx\x0001x");
    EXPECT_EQ(layout->SetCharacterSpacing(100.0f, 30.0f, 50.0f, everything), S_OK);
    EXPECT_EQ(clusterWidths(*layout), (std::vector<float>{1342, 0, 0, 1342, 0, 1342}));
}

TEST(LayoutOperations, CharacterSpacingIsReadBack) {
    const com_ptr<IDWriteTextLayout1> layout = makeLayout(L"x");
    EXPECT_EQ(layout->SetCharacterSpacing(1.0f, 2.0f, -1.0f, everything), E_INVALIDARG);
    EXPECT_EQ(layout->SetCharacterSpacing(1.0f, -2.0f, 3.0f, {0, 1}), S_OK);
    FLOAT leading = 0.0f;
    FLOAT trailing = 0.0f;
    FLOAT minimum = 0.0f;
    DWRITE_TEXT_RANGE range{};
    EXPECT_EQ(layout->GetCharacterSpacing(0, &leading, &trailing, &minimum, &range), S_OK);
    EXPECT_EQ(leading, 1.0f);
    EXPECT_EQ(trailing, -2.0f);
    EXPECT_EQ(minimum, 3.0f);
    EXPECT_EQ(range.length, 1u);
    EXPECT_EQ(layout->GetCharacterSpacing(1, &leading, &trailing, &minimum, nullptr), S_OK);
    EXPECT_EQ(minimum, 0.0f);
}

TEST(LayoutOperations, PairKerningIsReadBack) {
    const com_ptr<IDWriteTextLayout1> layout = makeLayout(L"AV");
    for (const BOOL isKerned : {TRUE, FALSE}) {
        EXPECT_EQ(layout->SetPairKerning(isKerned, everything), S_OK);
        BOOL answer = -1;
        DWRITE_TEXT_RANGE range{};
        EXPECT_EQ(layout->GetPairKerning(0, &answer, &range), S_OK);
        EXPECT_EQ(answer, isKerned);
    }
    EXPECT_EQ(layout->SetPairKerning(TRUE, {10, 0xFFFFFFFF}), E_INVALIDARG);
}

TEST(LayoutOperations, TheEllipsisSignIsARunWithoutHeight) {
    com_ptr<IDWriteInlineObject> sign;
    EXPECT_EQ(sharedFactory()->CreateEllipsisTrimmingSign(nullptr, &sign), E_INVALIDARG);
    ASSERT_EQ(sign.get(), nullptr);
    const com_ptr<IDWriteTextFormat> format = makeFormat();
    ASSERT_EQ(sharedFactory()->CreateEllipsisTrimmingSign(format, &sign), S_OK);
    DWRITE_INLINE_OBJECT_METRICS metrics{};
    EXPECT_EQ(sign->GetMetrics(&metrics), S_OK);
    EXPECT_EQ(metrics.width, 2048.0f);
    EXPECT_EQ(metrics.height, 0.0f);
    EXPECT_EQ(metrics.baseline, 0.0f);
    EXPECT_EQ(metrics.supportsSideways, FALSE);
    Glyphs glyphs;
    EXPECT_EQ(sign->Draw(nullptr, &glyphs, 100.0f, 200.0f, FALSE, FALSE, nullptr), S_OK);
    EXPECT_EQ(glyphs.advances, (std::vector<float>{2048}));
    EXPECT_EQ(glyphs.origins, (std::vector<float>{100, 200}));
    DWRITE_BREAK_CONDITION before = DWRITE_BREAK_CONDITION_CAN_BREAK;
    DWRITE_BREAK_CONDITION after = DWRITE_BREAK_CONDITION_CAN_BREAK;
    EXPECT_EQ(sign->GetBreakConditions(&before, &after), S_OK);
    EXPECT_EQ(before, DWRITE_BREAK_CONDITION_NEUTRAL);
    EXPECT_EQ(after, DWRITE_BREAK_CONDITION_NEUTRAL);
}

#include "LayoutAnswers.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <initializer_list>

#include "Input.h"

namespace fuzz {

namespace {

bool same(std::initializer_list<FLOAT> left, std::initializer_list<FLOAT> right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](FLOAT a, FLOAT b) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
    });
}

bool same(const DWRITE_TEXT_METRICS& a, const DWRITE_TEXT_METRICS& b) {
    return same(
               {a.left, a.top, a.width, a.widthIncludingTrailingWhitespace, a.height, a.layoutWidth, a.layoutHeight},
               {b.left, b.top, b.width, b.widthIncludingTrailingWhitespace, b.height, b.layoutWidth, b.layoutHeight}) &&
           a.maxBidiReorderingDepth == b.maxBidiReorderingDepth && a.lineCount == b.lineCount;
}

bool same(const DWRITE_OVERHANG_METRICS& a, const DWRITE_OVERHANG_METRICS& b) {
    return same({a.left, a.top, a.right, a.bottom}, {b.left, b.top, b.right, b.bottom});
}

bool same(const DWRITE_CLUSTER_METRICS& a, const DWRITE_CLUSTER_METRICS& b) {
    return same({a.width}, {b.width}) && a.length == b.length && a.canWrapLineAfter == b.canWrapLineAfter &&
           a.isWhitespace == b.isWhitespace && a.isNewline == b.isNewline && a.isSoftHyphen == b.isSoftHyphen &&
           a.isRightToLeft == b.isRightToLeft;
}

bool same(const DWRITE_LINE_METRICS& a, const DWRITE_LINE_METRICS& b) {
    return same({a.height, a.baseline}, {b.height, b.baseline}) && a.length == b.length &&
           a.trailingWhitespaceLength == b.trailingWhitespaceLength && a.newlineLength == b.newlineLength &&
           a.isTrimmed == b.isTrimmed;
}

template <class Value>
bool same(const std::vector<Value>& left, const std::vector<Value>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const Value& a, const Value& b) { return same(a, b); });
}

/// Looks at what it is given and keeps nothing.
class Renderer final : public IDWriteTextRenderer {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT* pixelsPerDip) override {
        *pixelsPerDip = 1.0F;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT, FLOAT, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        for (UINT32 i = 0; i < run->glyphCount; ++i) {
            require(run->glyphIndices[i] < run->fontFace->GetGlyphCount());
        }
        // The map of a run without glyphs counts its units.
        for (UINT32 i = 0; run->glyphCount > 0 && i < description->stringLength; ++i) {
            require(description->clusterMap[i] < run->glyphCount);
            require(i == 0 || description->clusterMap[i - 1] <= description->clusterMap[i]);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject* object, BOOL, BOOL,
                                               IUnknown*) override {
        require(object != nullptr);
        return S_OK;
    }
};

} // namespace

bool operator==(const Answers& left, const Answers& right) {
    return left.succeeded == right.succeeded && same(left.metrics, right.metrics) &&
           same(left.overhangs, right.overhangs) && same(left.clusters, right.clusters) &&
           same(left.lines, right.lines) && same({left.minWidth}, {right.minWidth});
}

Answers ask(IDWriteTextLayout& layout) {
    Answers answers;
    UINT32 count = 0;
    if (layout.GetMetrics(&answers.metrics) != S_OK) {
        return answers;
    }
    layout.GetClusterMetrics(nullptr, 0, &count);
    answers.clusters.resize(count);
    require(layout.GetClusterMetrics(answers.clusters.data(), count, &count) == S_OK);
    layout.GetLineMetrics(nullptr, 0, &count);
    answers.lines.resize(count);
    require(layout.GetLineMetrics(answers.lines.data(), count, &count) == S_OK);
    answers.succeeded =
        layout.GetOverhangMetrics(&answers.overhangs) == S_OK && layout.DetermineMinWidth(&answers.minWidth) == S_OK;
    return answers;
}

void draw(IDWriteTextLayout& layout) {
    Renderer renderer;
    layout.Draw(nullptr, &renderer, 0.0F, 0.0F);
}

} // namespace fuzz

#include "Layouts.h"

#include <initializer_list>
#include <string>
#include <vector>

#include <dwrite_2.h>
#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

#include "Counter.h"
#include "Renderers.h"

namespace growth {

namespace {

using LayoutPtr = oslayer::com_ptr<IDWriteTextLayout>;

constexpr float emSize = 12.0F;

IDWriteFactory& factory() {
    static const oslayer::com_ptr<IDWriteFactory> shared = [] {
        oslayer::com_ptr<IUnknown> created;
        OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &created));
        oslayer::com_ptr<IDWriteFactory> queried;
        queried.queryFrom(created);
        return queried;
    }();
    return *shared;
}

/// Sets something at every second unit.
void setRanges(const Shape& shape, UINT32 length, IDWriteTextLayout& layout) {
    static Square square;
    oslayer::com_ptr<IDWriteTypography> features;
    OSLAYER_CHECK(factory().CreateTypography(&features));
    OSLAYER_CHECK(features->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 0}));
    oslayer::com_ptr<IDWriteTextLayout1> later;
    later.queryFrom(&layout);
    for (UINT32 position = 0; position < length; position += 2) {
        const DWRITE_TEXT_RANGE range{position, 1};
        switch (shape.ranges) {
        case Ranges::None:
            return;
        case Ranges::Sizes:
            layout.SetFontSize(emSize + 1.0F, range);
            break;
        case Ranges::Underlines:
            layout.SetUnderline(TRUE, range);
            layout.SetStrikethrough(TRUE, range);
            break;
        case Ranges::Locales:
            layout.SetLocaleName(L"tr-tr", range);
            break;
        case Ranges::Features:
            layout.SetTypography(features, range);
            break;
        case Ranges::Objects:
            layout.SetInlineObject(&square, range);
            break;
        case Ranges::Spacings:
            later->SetCharacterSpacing(1.0F, 0.5F, 2.0F, range);
            break;
        }
    }
}

LayoutPtr makeLayout(const Shape& shape, const std::wstring& text) {
    oslayer::com_ptr<IDWriteTextFormat> format;
    OSLAYER_CHECK(factory().CreateTextFormat(L"DejaVu Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                             DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, emSize, L"en-us",
                                             &format));
    OSLAYER_CHECK(format->SetReadingDirection(shape.readsRightToLeft ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT
                                                                     : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT));
    LayoutPtr layout;
    OSLAYER_CHECK(
        factory().CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), format, 0.0F, 0.0F, &layout));
    setRanges(shape, static_cast<UINT32>(text.size()), *layout);
    return layout;
}

DWRITE_TEXT_METRICS metricsOf(IDWriteTextLayout& layout) {
    DWRITE_TEXT_METRICS metrics{};
    OSLAYER_CHECK(layout.GetMetrics(&metrics));
    return metrics;
}

void askMetrics(IDWriteTextLayout& layout) {
    const DWRITE_TEXT_METRICS metrics = metricsOf(layout);
    UINT32 count = 0;
    std::vector<DWRITE_LINE_METRICS> lines(metrics.lineCount);
    OSLAYER_CHECK(layout.GetLineMetrics(lines.data(), metrics.lineCount, &count));
    layout.GetClusterMetrics(nullptr, 0, &count);
    std::vector<DWRITE_CLUSTER_METRICS> clusters(count);
    OSLAYER_CHECK(layout.GetClusterMetrics(clusters.data(), count, &count));
    DWRITE_OVERHANG_METRICS overhangs{};
    OSLAYER_CHECK(layout.GetOverhangMetrics(&overhangs));
}

void draw(IDWriteTextLayout& layout) {
    Renderer renderer;
    OSLAYER_CHECK(layout.Draw(nullptr, &renderer, 0.0F, 0.0F));
}

void hit(IDWriteTextLayout& layout, UINT32 length) {
    const DWRITE_TEXT_METRICS text = metricsOf(layout);
    BOOL isTrailing = FALSE;
    BOOL isInside = FALSE;
    FLOAT x = 0.0F;
    FLOAT y = 0.0F;
    DWRITE_HIT_TEST_METRICS metrics{};
    OSLAYER_CHECK(layout.HitTestPoint(text.width / 2, text.height / 2, &isTrailing, &isInside, &metrics));
    OSLAYER_CHECK(layout.HitTestTextPosition(length - 1, FALSE, &x, &y, &metrics));
    UINT32 count = 0;
    layout.HitTestTextRange(1, length, 0.0F, 0.0F, nullptr, 0, &count);
    std::vector<DWRITE_HIT_TEST_METRICS> boxes(count);
    OSLAYER_CHECK(layout.HitTestTextRange(1, length, 0.0F, 0.0F, boxes.data(), count, &count));
}

/// Breaks the layout into lines of `width` in one way after the other.
void wrap(IDWriteTextLayout& layout, float width, std::initializer_list<DWRITE_WORD_WRAPPING> ways) {
    OSLAYER_CHECK(layout.SetMaxWidth(width));
    for (const DWRITE_WORD_WRAPPING wrapping : ways) {
        OSLAYER_CHECK(layout.SetWordWrapping(wrapping));
        metricsOf(layout);
    }
}

void cut(IDWriteTextLayout& layout, float width) {
    OSLAYER_CHECK(layout.SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
    OSLAYER_CHECK(layout.SetMaxWidth(width));
    const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_WORD, 'a', 2};
    OSLAYER_CHECK(layout.SetTrimming(&trimming, nullptr));
    askMetrics(layout);
    draw(layout);
}

} // namespace

void askLayout(const Shape& shape, std::size_t units) {
    const auto name = [&](const char* work, const std::wstring& text) {
        return shape.name + '/' + work + '/' + std::to_string(text.size());
    };
    // A longer text for what is asked of every layout, and for lines that are longer than what a break may change.
    const std::wstring longText = shape.text(4 * units);
    LayoutPtr longLayout;
    DWRITE_TEXT_METRICS longMetrics{};
    count(name("shape", longText), [&] {
        longLayout = makeLayout(shape, longText);
        longMetrics = metricsOf(*longLayout);
    });
    // Words stay whole: how often a torn one is tried, where tearing changes its shapes, is not a matter of length.
    count(name("long lines", longText), [&] {
        wrap(*longLayout, longMetrics.widthIncludingTrailingWhitespace * 0.6F, {DWRITE_WORD_WRAPPING_WHOLE_WORD});
    });

    const std::wstring text = shape.text(units);
    const auto length = static_cast<UINT32>(text.size());
    const LayoutPtr layout = makeLayout(shape, text);
    const float width = metricsOf(*layout).widthIncludingTrailingWhitespace;
    count(name("metrics", text), [&] { askMetrics(*layout); });
    count(name("draw", text), [&] { draw(*layout); });
    count(name("hit", text), [&] { hit(*layout, length); });
    count(name("narrowest", text), [&] {
        FLOAT narrowest = 0.0F;
        OSLAYER_CHECK(layout->DetermineMinWidth(&narrowest));
    });
    OSLAYER_CHECK(layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    count(name("narrow lines", text), [&] {
        wrap(*layout, 10 * emSize, {DWRITE_WORD_WRAPPING_CHARACTER, DWRITE_WORD_WRAPPING_WRAP});
    });
    count(name("draw lines", text), [&] {
        askMetrics(*layout);
        draw(*layout);
    });
    count(name("tiny lines", text), [&] { wrap(*layout, emSize / 8, {DWRITE_WORD_WRAPPING_WRAP}); });
    count(name("cut", text), [&] { cut(*layout, width * 0.6F); });
}

} // namespace growth

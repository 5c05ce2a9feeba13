#include <string>

#include "support/ForeignFormat.h"
#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

TEST(TextFormat, StartsWithTheDefaults) {
    const auto format = makeFormat({.size = 12.0F});
    EXPECT_EQ(DWRITE_TEXT_ALIGNMENT_LEADING, format->GetTextAlignment());
    EXPECT_EQ(DWRITE_PARAGRAPH_ALIGNMENT_NEAR, format->GetParagraphAlignment());
    EXPECT_EQ(DWRITE_WORD_WRAPPING_WRAP, format->GetWordWrapping());
    EXPECT_EQ(DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, format->GetReadingDirection());
    EXPECT_EQ(DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM, format->GetFlowDirection());
    EXPECT_FLOAT_EQ(48.0F, format->GetIncrementalTabStop());
    EXPECT_FLOAT_EQ(12.0F, format->GetFontSize());
    DWRITE_LINE_SPACING_METHOD method = DWRITE_LINE_SPACING_METHOD_UNIFORM;
    FLOAT spacing = 1.0F;
    FLOAT baseline = 1.0F;
    EXPECT_EQ(S_OK, format->GetLineSpacing(&method, &spacing, &baseline));
    EXPECT_EQ(DWRITE_LINE_SPACING_METHOD_DEFAULT, method);
    EXPECT_EQ(0.0F, spacing);
    EXPECT_EQ(0.0F, baseline);
    DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_WORD, 1, 1};
    auto* sign = reinterpret_cast<IDWriteInlineObject*>(1);
    EXPECT_EQ(S_OK, format->GetTrimming(&trimming, &sign));
    EXPECT_EQ(DWRITE_TRIMMING_GRANULARITY_NONE, trimming.granularity);
    EXPECT_EQ(0U, trimming.delimiter);
    EXPECT_EQ(0U, trimming.delimiterCount);
    EXPECT_EQ(nullptr, sign);
}

TEST(TextFormat, LocaleIsKeptInLowerCaseAndFamilyAsGiven) {
    const auto format = makeFormat({.family = L"DejaVu SANS", .locale = L"eN-uS"});
    EXPECT_EQ(5U, format->GetLocaleNameLength());
    WCHAR name[32] = {};
    EXPECT_EQ(S_OK, format->GetLocaleName(name, 32));
    EXPECT_STREQ(L"en-us", name);
    EXPECT_EQ(11U, format->GetFontFamilyNameLength());
    EXPECT_EQ(S_OK, format->GetFontFamilyName(name, 12));
    EXPECT_STREQ(L"DejaVu SANS", name);
}

TEST(TextFormat, NamesNeedRoomForTheirTerminator) {
    const auto format = makeFormat();
    WCHAR name[8] = L"before";
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, format->GetLocaleName(name, 5));
    EXPECT_STREQ(L"", name);
    EXPECT_EQ(S_OK, format->GetLocaleName(name, 6));
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, format->GetLocaleName(nullptr, 0));
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, format->GetFontFamilyName(name, 8));
}

TEST(TextFormat, WithoutACollectionReportsTheSystems) {
    const auto format = makeFormat();
    IDWriteFontCollection* ofFormat = nullptr;
    EXPECT_EQ(S_OK, format->GetFontCollection(&ofFormat));
    IDWriteFontCollection* ofSystem = nullptr;
    EXPECT_EQ(S_OK, factory().GetSystemFontCollection(&ofSystem));
    EXPECT_EQ(ofSystem, ofFormat);
    ofFormat->Release();
    ofSystem->Release();
}

/// Setters take numbers of their enumeration only; a refused one leaves the value.
template <class Enumeration, class Get, class Set>
void expectRange(Enumeration last, Get get, Set set) {
    for (int value = 0; value <= static_cast<int>(last); ++value) {
        EXPECT_EQ(S_OK, set(static_cast<Enumeration>(value)));
        EXPECT_EQ(static_cast<Enumeration>(value), get());
        EXPECT_EQ(S_OK, set(static_cast<Enumeration>(value)));
    }
    EXPECT_EQ(E_INVALIDARG, set(static_cast<Enumeration>(static_cast<int>(last) + 1)));
    EXPECT_EQ(E_INVALIDARG, set(static_cast<Enumeration>(-1)));
    EXPECT_EQ(last, get());
}

void expectRanges(IDWriteTextFormat& format) {
    expectRange(
        DWRITE_TEXT_ALIGNMENT_JUSTIFIED, [&] { return format.GetTextAlignment(); },
        [&](auto value) { return format.SetTextAlignment(value); });
    expectRange(
        DWRITE_PARAGRAPH_ALIGNMENT_CENTER, [&] { return format.GetParagraphAlignment(); },
        [&](auto value) { return format.SetParagraphAlignment(value); });
    expectRange(
        DWRITE_WORD_WRAPPING_CHARACTER, [&] { return format.GetWordWrapping(); },
        [&](auto value) { return format.SetWordWrapping(value); });
    expectRange(
        DWRITE_READING_DIRECTION_BOTTOM_TO_TOP, [&] { return format.GetReadingDirection(); },
        [&](auto value) { return format.SetReadingDirection(value); });
    expectRange(
        DWRITE_FLOW_DIRECTION_RIGHT_TO_LEFT, [&] { return format.GetFlowDirection(); },
        [&](auto value) { return format.SetFlowDirection(value); });
}

TEST(TextFormat, EnumerationsAreRangeChecked) {
    expectRanges(*makeFormat());
}

TEST(TextFormat, EnumerationsAreRangeCheckedOnALayoutToo) {
    expectRanges(*makeLayout(u"text"));
}

TEST(TextFormat, TabStopMustBePositive) {
    const auto format = makeFormat();
    EXPECT_EQ(E_INVALIDARG, format->SetIncrementalTabStop(0.0F));
    EXPECT_EQ(E_INVALIDARG, format->SetIncrementalTabStop(-5.0F));
    EXPECT_FLOAT_EQ(80.0F, format->GetIncrementalTabStop());
    EXPECT_EQ(S_OK, format->SetIncrementalTabStop(33.0F));
    EXPECT_FLOAT_EQ(33.0F, format->GetIncrementalTabStop());
}

TEST(TextFormat, TabStopStaysWhenTheTextsSizeChanges) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(40.0F, {0, 4}));
    EXPECT_FLOAT_EQ(80.0F, layout->GetIncrementalTabStop());
}

TEST(TextFormat, LineSpacingRefusesNegativeSpacingAndUnknownMethods) {
    const auto format = makeFormat();
    EXPECT_EQ(E_INVALIDARG, format->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, -1.0F, 1.0F));
    EXPECT_EQ(E_INVALIDARG, format->SetLineSpacing(static_cast<DWRITE_LINE_SPACING_METHOD>(3), 1.0F, 1.0F));
    EXPECT_EQ(S_OK, format->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, 10.0F, -1.0F));
    DWRITE_LINE_SPACING_METHOD method = DWRITE_LINE_SPACING_METHOD_DEFAULT;
    FLOAT spacing = 0.0F;
    FLOAT baseline = 0.0F;
    EXPECT_EQ(S_OK, format->GetLineSpacing(&method, &spacing, &baseline));
    EXPECT_EQ(DWRITE_LINE_SPACING_METHOD_UNIFORM, method);
    EXPECT_EQ(10.0F, spacing);
    EXPECT_EQ(-1.0F, baseline);
}

TEST(TextFormat, TrimmingIsKeptWithItsSign) {
    Picture sign;
    {
        const auto format = makeFormat();
        const DWRITE_TRIMMING word{DWRITE_TRIMMING_GRANULARITY_WORD, u'/', 2};
        EXPECT_EQ(S_OK, format->SetTrimming(&word, &sign));
        EXPECT_EQ(2U, sign.count);
        DWRITE_TRIMMING trimming{};
        IDWriteInlineObject* held = nullptr;
        EXPECT_EQ(S_OK, format->GetTrimming(&trimming, &held));
        EXPECT_EQ(DWRITE_TRIMMING_GRANULARITY_WORD, trimming.granularity);
        EXPECT_EQ(static_cast<UINT32>(u'/'), trimming.delimiter);
        EXPECT_EQ(2U, trimming.delimiterCount);
        EXPECT_EQ(&sign, held);
        EXPECT_EQ(3U, sign.count);
        held->Release();
        const DWRITE_TRIMMING unknown{static_cast<DWRITE_TRIMMING_GRANULARITY>(3), 0, 0};
        EXPECT_EQ(E_INVALIDARG, format->SetTrimming(&unknown, nullptr));
        EXPECT_EQ(E_INVALIDARG, format->SetTrimming(nullptr, nullptr));
        EXPECT_EQ(2U, sign.count);
    }
    EXPECT_EQ(1U, sign.count);
}

TEST(TextFormat, IsCopiedWhenALayoutIsMade) {
    const auto format = makeFormat();
    IDWriteTextLayout* created = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTextLayout(L"text", 4, format.get(), 0, 0, &created));
    const Reference<IDWriteTextLayout> layout(created, false);
    EXPECT_EQ(2U, format->AddRef());
    EXPECT_EQ(1U, format->Release());
    EXPECT_EQ(S_OK, format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_CENTER));
    EXPECT_EQ(DWRITE_TEXT_ALIGNMENT_LEADING, layout->GetTextAlignment());
    EXPECT_EQ(S_OK, layout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
    EXPECT_EQ(DWRITE_WORD_WRAPPING_WRAP, format->GetWordWrapping());
}

TEST(LayoutAsFormat, IsAnotherPointerThatSharesTheCount) {
    const auto layout = makeLayout(u"text");
    void* queried = nullptr;
    ASSERT_EQ(S_OK, layout->QueryInterface(__uuidof(IDWriteTextFormat), &queried));
    auto* format = static_cast<IDWriteTextFormat*>(queried);
    EXPECT_NE(static_cast<IDWriteTextFormat*>(layout.get()), format);
    EXPECT_EQ(3U, layout->AddRef());
    EXPECT_EQ(2U, format->Release());
    void* unknown = nullptr;
    ASSERT_EQ(S_OK, format->QueryInterface(__uuidof(IUnknown), &unknown));
    EXPECT_EQ(static_cast<void*>(static_cast<IUnknown*>(layout.get())), unknown);
    layout->Release();
    EXPECT_EQ(1U, format->Release());
}

TEST(LayoutAsFormat, RefusesOtherInterfaces) {
    const auto layout = makeLayout(u"text");
    void* queried = &queried;
    EXPECT_EQ(E_NOINTERFACE, layout->QueryInterface(__uuidof(IDWriteFont), &queried));
    EXPECT_EQ(nullptr, queried);
    const auto format = makeFormat();
    queried = &queried;
    EXPECT_EQ(E_NOINTERFACE, format->QueryInterface(__uuidof(IDWriteTextLayout), &queried));
    EXPECT_EQ(nullptr, queried);
}

TEST(LayoutAsFormat, ParagraphSettingsAreTheLayoutsAndFontsTheOriginalOnes) {
    const auto layout = makeLayout(u"text", 100.0F);
    const float before = metricsOf(*layout).left;
    IDWriteTextFormat* format = nullptr;
    ASSERT_EQ(S_OK, layout->QueryInterface(&format));
    const Reference<IDWriteTextFormat> owned(format, false);
    EXPECT_EQ(S_OK, format->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
    EXPECT_EQ(DWRITE_TEXT_ALIGNMENT_TRAILING, layout->GetTextAlignment());
    EXPECT_GT(metricsOf(*layout).left, before);
    EXPECT_EQ(S_OK, layout->SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, {0, 0xFFFFFFFF}));
    EXPECT_EQ(DWRITE_FONT_WEIGHT_NORMAL, format->GetFontWeight());
    EXPECT_EQ(DWRITE_FONT_WEIGHT_NORMAL, layout->GetFontWeight());
}

TEST(LayoutAsFormat, ALayoutCanBeMadeFromALayout) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_CENTER));
    IDWriteTextLayout* created = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTextLayout(L"text", 4, layout.get(), 0, 0, &created));
    const Reference<IDWriteTextLayout> copy(created, false);
    EXPECT_EQ(DWRITE_TEXT_ALIGNMENT_CENTER, copy->GetTextAlignment());
    EXPECT_FLOAT_EQ(metricsOf(*layout).width, metricsOf(*copy).width);
}

TEST(LayoutAsFormat, AnyImplementationOfAFormatWillDo) {
    ForeignFormat<platform::FormatOperations<IDWriteTextFormat>> foreign;
    foreign.settings.font.family = platform::makeName(L"DejaVu Sans");
    foreign.settings.font.locale = platform::makeName(L"de-de");
    foreign.settings.font.size = 20.0F;
    foreign.settings.paragraph.incrementalTabStop = 17.0F;
    foreign.settings.paragraph.textAlignment = DWRITE_TEXT_ALIGNMENT_CENTER;
    Picture sign;
    foreign.settings.paragraph.trimmingSign = &sign;
    IDWriteTextLayout* created = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTextLayout(L"Hello", 5, &foreign, 0, 0, &created));
    {
        const Reference<IDWriteTextLayout> layout(created, false);
        EXPECT_EQ(17.0F, layout->GetIncrementalTabStop());
        EXPECT_EQ(DWRITE_TEXT_ALIGNMENT_CENTER, layout->GetTextAlignment());
        WCHAR name[16] = {};
        EXPECT_EQ(S_OK, layout->GetLocaleName(0, name, 16, nullptr));
        EXPECT_STREQ(L"de-de", name);
        EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"Hello")).width, metricsOf(*layout).width);
        EXPECT_EQ(3U, sign.count);
    }
    EXPECT_EQ(2U, sign.count);
}

} // namespace
} // namespace platform_test

#include <functional>
#include <string>
#include <vector>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

TEST(CreateTextFormat, ARefusedFormatLeavesANullPointer) {
    auto* format = reinterpret_cast<IDWriteTextFormat*>(1);
    EXPECT_EQ(E_INVALIDARG,
              factory().CreateTextFormat(L"DejaVu Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                         DWRITE_FONT_STRETCH_NORMAL, 0.0F, L"en-us", &format));
    EXPECT_EQ(nullptr, format);
}

TEST(References, EveryObjectThatALayoutGivesBackCarriesOne) {
    Effect effect;
    Picture picture;
    Picture sign;
    {
        const auto layout = makeLayout(u"text");
        const DWRITE_TRIMMING trimming{DWRITE_TRIMMING_GRANULARITY_CHARACTER, 0, 0};
        ASSERT_EQ(S_OK, layout->SetDrawingEffect(&effect, {0, 1}));
        ASSERT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
        ASSERT_EQ(S_OK, layout->SetTrimming(&trimming, &sign));
        const ULONG heldEffect = effect.count;
        const ULONG heldPicture = picture.count;
        const ULONG heldSign = sign.count;
        IUnknown* givenEffect = nullptr;
        IDWriteInlineObject* givenPicture = nullptr;
        IDWriteInlineObject* givenSign = nullptr;
        DWRITE_TRIMMING givenTrimming{};
        EXPECT_EQ(S_OK, layout->GetDrawingEffect(0, &givenEffect));
        EXPECT_EQ(S_OK, layout->GetInlineObject(1, &givenPicture));
        EXPECT_EQ(S_OK, layout->GetTrimming(&givenTrimming, &givenSign));
        EXPECT_EQ(heldEffect + 1, effect.count);
        EXPECT_EQ(heldPicture + 1, picture.count);
        EXPECT_EQ(heldSign + 1, sign.count);
        givenEffect->Release();
        givenPicture->Release();
        givenSign->Release();

        IDWriteTypography* typography = nullptr;
        ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
        const Reference<IDWriteTypography> owned(typography, false);
        ASSERT_EQ(S_OK, layout->SetTypography(typography, {0, 1}));
        const ULONG heldTypography = typography->AddRef();
        typography->Release();
        IDWriteTypography* given = nullptr;
        EXPECT_EQ(S_OK, layout->GetTypography(0, &given));
        EXPECT_EQ(heldTypography, given->Release() + 1);
    }
    EXPECT_EQ(1U, effect.count);
    EXPECT_EQ(1U, picture.count);
    EXPECT_EQ(1U, sign.count);
}

/// Every setter of a range, with a value that changes something.
std::vector<std::function<HRESULT(DWRITE_TEXT_RANGE)>> rangeSetters(IDWriteTextLayout& layout, IUnknown& effect,
                                                                    IDWriteInlineObject& object) {
    using Range = DWRITE_TEXT_RANGE;
    return {[&](Range range) { return layout.SetFontCollection(nullptr, range); },
            [&](Range range) { return layout.SetFontFamilyName(L"Liberation Sans", range); },
            [&](Range range) { return layout.SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, range); },
            [&](Range range) { return layout.SetFontStyle(DWRITE_FONT_STYLE_ITALIC, range); },
            [&](Range range) { return layout.SetFontStretch(DWRITE_FONT_STRETCH_CONDENSED, range); },
            [&](Range range) { return layout.SetFontSize(30.0F, range); },
            [&](Range range) { return layout.SetUnderline(TRUE, range); },
            [&](Range range) { return layout.SetStrikethrough(TRUE, range); },
            [&](Range range) { return layout.SetDrawingEffect(&effect, range); },
            [&](Range range) { return layout.SetInlineObject(&object, range); },
            [&](Range range) { return layout.SetTypography(nullptr, range); },
            [&](Range range) { return layout.SetLocaleName(L"de-de", range); }};
}

TEST(RangeProperties, EverySetterTakesTheSameRanges) {
    Effect effect;
    Picture picture;
    const auto layout = makeLayout(u"text");
    const auto setters = rangeSetters(*layout, effect, picture);
    for (std::size_t i = 0; i < setters.size(); ++i) {
        EXPECT_EQ(E_INVALIDARG, setters[i]({10, 0xFFFFFFFF - 9})) << i;
        EXPECT_EQ(S_OK, setters[i]({10, 0xFFFFFFFF - 10})) << i;
        EXPECT_EQ(S_OK, setters[i]({2, 0})) << i;
        EXPECT_EQ(S_OK, setters[i]({100, 4})) << i;
        EXPECT_EQ(S_OK, setters[i]({2, 100})) << i;
        EXPECT_EQ(S_OK, setters[i]({0, 0xFFFFFFFF})) << i;
    }
}

TEST(RangeProperties, ARangePartlyPastTheTextIsRememberedWhole) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 100}));
    FLOAT size = 0.0F;
    DWRITE_TEXT_RANGE range{};
    EXPECT_EQ(S_OK, layout->GetFontSize(101, &size, &range));
    EXPECT_EQ(30.0F, size);
    EXPECT_EQ(2U, range.startPosition);
    EXPECT_EQ(100U, range.length);
    EXPECT_EQ(S_OK, layout->GetFontSize(102, &size, &range));
    EXPECT_EQ(20.0F, size);
}

TEST(RangeProperties, ARefusedNameLeavesTheOldOne) {
    const auto layout = makeLayout(u"text");
    const DWRITE_TEXT_RANGE all{0, 0xFFFFFFFF};
    EXPECT_EQ(E_INVALIDARG, layout->SetLocaleName(nullptr, all));
    EXPECT_EQ(E_INVALIDARG, layout->SetLocaleName(std::wstring(85, L'x').c_str(), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontFamilyName(nullptr, all));
    WCHAR name[32] = {};
    EXPECT_EQ(S_OK, layout->GetLocaleName(0, name, 32));
    EXPECT_STREQ(L"en-us", name);
    EXPECT_EQ(S_OK, layout->GetFontFamilyName(0, name, 32));
    EXPECT_STREQ(L"DejaVu Sans", name);
}

} // namespace
} // namespace platform_test

#include <limits>
#include <string>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

constexpr UINT32 everything = 0xFFFFFFFF;

struct SizeAt {
    float size = 0.0F;
    DWRITE_TEXT_RANGE range{};
};

SizeAt sizeAt(IDWriteTextLayout& layout, UINT32 position) {
    SizeAt found;
    EXPECT_EQ(S_OK, layout.GetFontSize(position, &found.size, &found.range));
    return found;
}

void expectRange(UINT32 start, UINT32 length, const DWRITE_TEXT_RANGE& range) {
    EXPECT_EQ(start, range.startPosition);
    EXPECT_EQ(length, range.length);
}

TEST(RangeProperties, OneRangeCoversAllPositionsAtFirst) {
    const auto layout = makeLayout(u"text");
    expectRange(0, everything, sizeAt(*layout, 0).range);
    expectRange(0, everything, sizeAt(*layout, 1000).range);
}

TEST(RangeProperties, RangesMustNotRunPastTheLastPosition) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(E_INVALIDARG, layout->SetFontSize(30.0F, {10, everything - 9}));
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {10, everything - 10}));
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {0, everything}));
    expectRange(0, everything, sizeAt(*layout, 3).range);
}

TEST(RangeProperties, RangesPastTheTextAreRemembered) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {100, 4}));
    const SizeAt found = sizeAt(*layout, 100);
    EXPECT_EQ(30.0F, found.size);
    expectRange(100, 4, found.range);
    EXPECT_EQ(20.0F, sizeAt(*layout, 104).size);
}

TEST(RangeProperties, LengthZeroChangesNothing) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 0}));
    expectRange(0, everything, sizeAt(*layout, 2).range);
    EXPECT_EQ(20.0F, sizeAt(*layout, 2).size);
}

TEST(RangeProperties, RangesCountOverAllPositionsNotOverTheText) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {0, 4}));
    expectRange(4, everything - 4, sizeAt(*layout, 20).range);
}

TEST(RangeProperties, EqualNeighboursAreJoined) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {0, 2}));
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 2}));
    expectRange(0, 4, sizeAt(*layout, 1).range);
    EXPECT_EQ(S_OK, layout->SetFontSize(20.0F, {0, 4}));
    expectRange(0, everything, sizeAt(*layout, 1).range);
}

TEST(RangeProperties, AnyAttributesBoundaryShowsInEveryGetter) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 2}));
    EXPECT_EQ(S_OK, layout->SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, {1, 3}));
    expectRange(0, 1, sizeAt(*layout, 0).range);
    expectRange(1, 1, sizeAt(*layout, 1).range);
    expectRange(2, 2, sizeAt(*layout, 2).range);
    BOOL underline = TRUE;
    DWRITE_TEXT_RANGE range{};
    EXPECT_EQ(S_OK, layout->GetUnderline(0, &underline, &range));
    EXPECT_EQ(FALSE, underline);
    expectRange(0, 1, range);
}

TEST(RangeProperties, SettingAnEqualValueCutsNothing) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetFontSize(20.0F, {1, 2}));
    EXPECT_EQ(S_OK, layout->SetFontFamilyName(L"DejaVu Sans", {1, 2}));
    EXPECT_EQ(S_OK, layout->SetLocaleName(L"EN-us", {1, 2}));
    expectRange(0, everything, sizeAt(*layout, 1).range);
}

TEST(RangeProperties, ImpossibleValuesAreRefused) {
    const auto layout = makeLayout(u"text");
    const DWRITE_TEXT_RANGE all{0, everything};
    EXPECT_EQ(E_INVALIDARG, layout->SetFontSize(0.0F, all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontSize(-1.0F, all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontWeight(static_cast<DWRITE_FONT_WEIGHT>(1000), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontStyle(static_cast<DWRITE_FONT_STYLE>(3), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontStretch(static_cast<DWRITE_FONT_STRETCH>(0), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontStretch(static_cast<DWRITE_FONT_STRETCH>(10), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontFamilyName(nullptr, all));
    EXPECT_EQ(E_INVALIDARG, layout->SetLocaleName(nullptr, all));
    EXPECT_EQ(E_INVALIDARG, layout->SetLocaleName(std::wstring(85, L'x').c_str(), all));
    EXPECT_EQ(S_OK, layout->SetLocaleName(std::wstring(84, L'x').c_str(), all));
    EXPECT_EQ(E_INVALIDARG, layout->SetFontFamilyName(L"\U0001F600", all));
    EXPECT_EQ(E_INVALIDARG, layout->SetLocaleName(L"\U0001F600", all));
}

TEST(RangeProperties, EveryAttributeReadsBack) {
    const auto layout = makeLayout(u"text");
    const DWRITE_TEXT_RANGE range{1, 2};
    Effect effect;
    Picture picture;
    IDWriteTypography* typography = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
    const Reference<IDWriteTypography> ownTypography(typography, false);
    IDWriteFontCollection* collection = nullptr;
    ASSERT_EQ(S_OK, factory().GetSystemFontCollection(&collection));
    const Reference<IDWriteFontCollection> ownCollection(collection, false);

    EXPECT_EQ(S_OK, layout->SetFontCollection(nullptr, range));
    EXPECT_EQ(S_OK, layout->SetFontFamilyName(L"Some Family", range));
    EXPECT_EQ(S_OK, layout->SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, range));
    EXPECT_EQ(S_OK, layout->SetFontStyle(DWRITE_FONT_STYLE_ITALIC, range));
    EXPECT_EQ(S_OK, layout->SetFontStretch(DWRITE_FONT_STRETCH_CONDENSED, range));
    EXPECT_EQ(S_OK, layout->SetFontSize(31.0F, range));
    EXPECT_EQ(S_OK, layout->SetUnderline(7, range));
    EXPECT_EQ(S_OK, layout->SetStrikethrough(-1, range));
    EXPECT_EQ(S_OK, layout->SetDrawingEffect(&effect, range));
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, range));
    EXPECT_EQ(S_OK, layout->SetTypography(typography, range));
    EXPECT_EQ(S_OK, layout->SetLocaleName(L"De-At", range));

    DWRITE_TEXT_RANGE found{};
    auto* readCollection = collection;
    EXPECT_EQ(S_OK, layout->GetFontCollection(2, &readCollection, &found));
    EXPECT_EQ(nullptr, readCollection);
    expectRange(1, 2, found);
    EXPECT_EQ(S_OK, layout->GetFontCollection(0, &readCollection));
    EXPECT_EQ(collection, readCollection);
    readCollection->Release();
    UINT32 length = 0;
    EXPECT_EQ(S_OK, layout->GetFontFamilyNameLength(1, &length));
    EXPECT_EQ(11U, length);
    WCHAR name[32] = {};
    EXPECT_EQ(S_OK, layout->GetFontFamilyName(1, name, 32));
    EXPECT_STREQ(L"Some Family", name);
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    EXPECT_EQ(S_OK, layout->GetFontWeight(1, &weight));
    EXPECT_EQ(DWRITE_FONT_WEIGHT_BOLD, weight);
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    EXPECT_EQ(S_OK, layout->GetFontStyle(1, &style));
    EXPECT_EQ(DWRITE_FONT_STYLE_ITALIC, style);
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;
    EXPECT_EQ(S_OK, layout->GetFontStretch(1, &stretch));
    EXPECT_EQ(DWRITE_FONT_STRETCH_CONDENSED, stretch);
    EXPECT_EQ(31.0F, sizeAt(*layout, 1).size);
    BOOL flag = FALSE;
    EXPECT_EQ(S_OK, layout->GetUnderline(1, &flag));
    EXPECT_EQ(TRUE, flag);
    flag = FALSE;
    EXPECT_EQ(S_OK, layout->GetStrikethrough(1, &flag));
    EXPECT_EQ(TRUE, flag);
    IUnknown* readEffect = nullptr;
    EXPECT_EQ(S_OK, layout->GetDrawingEffect(1, &readEffect));
    EXPECT_EQ(&effect, readEffect);
    readEffect->Release();
    EXPECT_EQ(S_OK, layout->GetDrawingEffect(0, &readEffect));
    EXPECT_EQ(nullptr, readEffect);
    IDWriteInlineObject* readObject = nullptr;
    EXPECT_EQ(S_OK, layout->GetInlineObject(1, &readObject));
    EXPECT_EQ(&picture, readObject);
    readObject->Release();
    IDWriteTypography* readTypography = nullptr;
    EXPECT_EQ(S_OK, layout->GetTypography(1, &readTypography));
    EXPECT_EQ(typography, readTypography);
    readTypography->Release();
    EXPECT_EQ(S_OK, layout->GetLocaleNameLength(1, &length));
    EXPECT_EQ(5U, length);
    EXPECT_EQ(S_OK, layout->GetLocaleName(1, name, 32));
    EXPECT_STREQ(L"de-at", name);
}

TEST(RangeProperties, HeldObjectsAreGivenBackWithTheLayout) {
    Effect effect;
    Picture picture;
    {
        const auto layout = makeLayout(u"text");
        EXPECT_EQ(S_OK, layout->SetDrawingEffect(&effect, {1, 1}));
        EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {2, 1}));
        EXPECT_LT(1U, effect.count);
        EXPECT_LT(1U, picture.count);
        metricsOf(*layout);
    }
    EXPECT_EQ(1U, effect.count);
    EXPECT_EQ(1U, picture.count);
}

TEST(RangeProperties, NamesNeedRoomForTheirTerminator) {
    const auto layout = makeLayout(u"text");
    WCHAR name[8] = L"before";
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout->GetLocaleName(0, name, 5));
    EXPECT_STREQ(L"", name);
    EXPECT_EQ(S_OK, layout->GetLocaleName(0, name, 6));
    EXPECT_EQ(E_INVALIDARG, layout->GetLocaleName(0, nullptr, 0));
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout->GetFontFamilyName(0, name, 8));
}

TEST(RangeProperties, BoxSetterRefusesNegativesAndKeepsTheOldValue) {
    const auto layout = makeLayout(u"text", 50.0F, 60.0F);
    EXPECT_EQ(E_INVALIDARG, layout->SetMaxWidth(-1.0F));
    EXPECT_EQ(E_INVALIDARG, layout->SetMaxHeight(-1.0F));
    EXPECT_EQ(50.0F, layout->GetMaxWidth());
    EXPECT_EQ(60.0F, layout->GetMaxHeight());
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_EQ(S_OK, layout->SetMaxHeight(0.0F));
    EXPECT_EQ(0.0F, layout->GetMaxWidth());
    EXPECT_EQ(0.0F, layout->GetMaxHeight());
}

TEST(RangeProperties, SizesThatAreNotNumbersAreKept) {
    const auto layout = makeLayout(u"text");
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(S_OK, layout->SetFontSize(nan, {0, 4}));
    EXPECT_EQ(S_OK, layout->SetFontSize(nan, {0, 4}));
    const SizeAt found = sizeAt(*layout, 0);
    EXPECT_NE(found.size, found.size);
    expectRange(0, 4, found.range);
    metricsOf(*layout);
}

} // namespace
} // namespace platform_test

#include <cmath>
#include <limits>
#include <string>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

Reference<IUnknown> createFactory(DWRITE_FACTORY_TYPE type) {
    IUnknown* created = nullptr;
    EXPECT_EQ(S_OK, DWriteCreateFactory(type, __uuidof(IDWriteFactory), &created));
    return {created, false};
}

IDWriteFactory& asFactory(const Reference<IUnknown>& object) {
    return static_cast<IDWriteFactory&>(*object);
}

Reference<IDWriteFontCollection> collectionOf(IDWriteFactory& owner) {
    IDWriteFontCollection* collection = nullptr;
    EXPECT_EQ(S_OK, owner.GetSystemFontCollection(&collection, FALSE));
    return {collection, false};
}

TEST(Factory, SharedFactoryIsOneObject) {
    EXPECT_EQ(createFactory(DWRITE_FACTORY_TYPE_SHARED), createFactory(DWRITE_FACTORY_TYPE_SHARED));
}

TEST(Factory, IsolatedFactoriesAreObjectsOfTheirOwn) {
    const auto first = createFactory(DWRITE_FACTORY_TYPE_ISOLATED);
    const auto second = createFactory(DWRITE_FACTORY_TYPE_ISOLATED);
    EXPECT_NE(first, second);
    EXPECT_NE(first, createFactory(DWRITE_FACTORY_TYPE_SHARED));
}

TEST(Factory, WrongInterfaceIsRefusedAndGivesNull) {
    auto* created = reinterpret_cast<IUnknown*>(1);
    EXPECT_EQ(E_NOINTERFACE, DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFont), &created));
    EXPECT_EQ(nullptr, created);
    created = reinterpret_cast<IUnknown*>(1);
    EXPECT_EQ(E_NOINTERFACE, DWriteCreateFactory(DWRITE_FACTORY_TYPE_ISOLATED, __uuidof(IDWriteFont), &created));
    EXPECT_EQ(nullptr, created);
}

TEST(Factory, EveryGenerationOfTheInterfaceIsTheSameObject) {
    void* second = nullptr;
    ASSERT_EQ(S_OK, factory().QueryInterface(__uuidof(IDWriteFactory2), &second));
    void* first = nullptr;
    ASSERT_EQ(S_OK, factory().QueryInterface(__uuidof(IDWriteFactory1), &first));
    void* unknown = nullptr;
    ASSERT_EQ(S_OK, factory().QueryInterface(__uuidof(IUnknown), &unknown));
    EXPECT_EQ(second, first);
    EXPECT_EQ(second, unknown);
    factory().Release();
    factory().Release();
    factory().Release();
}

TEST(Factory, CollectionIsOneObjectPerFactory) {
    const auto isolated = createFactory(DWRITE_FACTORY_TYPE_ISOLATED);
    EXPECT_EQ(collectionOf(factory()), collectionOf(factory()));
    EXPECT_EQ(collectionOf(asFactory(isolated)), collectionOf(asFactory(isolated)));
    EXPECT_NE(collectionOf(factory()), collectionOf(asFactory(isolated)));
}

TEST(Factory, IsolatedCollectionHasTheSystemsFonts) {
    const auto isolated = createFactory(DWRITE_FACTORY_TYPE_ISOLATED);
    const auto collection = collectionOf(asFactory(isolated));
    EXPECT_EQ(collectionOf(factory())->GetFontFamilyCount(), collection->GetFontFamilyCount());
    UINT32 index = 0;
    BOOL exists = FALSE;
    EXPECT_EQ(S_OK, collection->FindFamilyName(L"DejaVu Sans", &index, &exists));
    EXPECT_TRUE(exists);
    IDWriteFontFamily* family = nullptr;
    ASSERT_EQ(S_OK, collection->GetFontFamily(index, &family));
    const Reference<IDWriteFontFamily> ownFamily(family, false);
    IDWriteFont* font = nullptr;
    ASSERT_EQ(S_OK, family->GetFont(0, &font));
    const Reference<IDWriteFont> ownFont(font, false);
    IDWriteFontFace* face = nullptr;
    ASSERT_EQ(S_OK, font->CreateFontFace(&face));
    const Reference<IDWriteFontFace> ownFace(face, false);
    IDWriteFont* found = nullptr;
    EXPECT_EQ(S_OK, collection->GetFontFromFontFace(face, &found));
    const Reference<IDWriteFont> ownFound(found, false);
}

TEST(Factory, SystemFallbackIsOneObject) {
    IDWriteFactory2* second = nullptr;
    ASSERT_EQ(S_OK, factory().QueryInterface(&second));
    const Reference<IDWriteFactory2> owned(second, false);
    IDWriteFontFallback* one = nullptr;
    IDWriteFontFallback* other = nullptr;
    EXPECT_EQ(S_OK, second->GetSystemFontFallback(&one));
    EXPECT_EQ(S_OK, second->GetSystemFontFallback(&other));
    EXPECT_NE(nullptr, one);
    EXPECT_EQ(one, other);
    one->Release();
    other->Release();
}

/// What CreateTextFormat answers for one unusual argument.
struct FormatArguments {
    const WCHAR* family = L"DejaVu Sans";
    int weight = 400;
    int style = 0;
    int stretch = 5;
    float size = 10.0F;
    const WCHAR* locale = L"";
};

HRESULT createFormat(const FormatArguments& arguments) {
    IDWriteTextFormat* format = nullptr;
    const HRESULT result = factory().CreateTextFormat(
        arguments.family, nullptr, static_cast<DWRITE_FONT_WEIGHT>(arguments.weight),
        static_cast<DWRITE_FONT_STYLE>(arguments.style), static_cast<DWRITE_FONT_STRETCH>(arguments.stretch),
        arguments.size, arguments.locale, &format);
    EXPECT_EQ(FAILED(result), format == nullptr);
    if (format != nullptr) {
        format->Release();
    }
    return result;
}

TEST(CreateTextFormat, SizeMustBePositiveButNeedNotBeANumber) {
    EXPECT_EQ(E_INVALIDARG, createFormat({.size = 0.0F}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.size = -1.0F}));
    EXPECT_EQ(S_OK, createFormat({.size = std::numeric_limits<float>::quiet_NaN()}));
    EXPECT_EQ(S_OK, createFormat({.size = std::numeric_limits<float>::infinity()}));
}

TEST(CreateTextFormat, WeightLiesBelow999) {
    EXPECT_EQ(E_INVALIDARG, createFormat({.weight = 1000}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.weight = 999}));
    EXPECT_EQ(S_OK, createFormat({.weight = 950}));
    EXPECT_EQ(S_OK, createFormat({.weight = 0}));
    EXPECT_EQ(S_OK, createFormat({.weight = 1}));
}

TEST(CreateTextFormat, StyleAndStretchAreOfTheirEnumerations) {
    EXPECT_EQ(S_OK, createFormat({.style = 2}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.style = 3}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.stretch = 0}));
    EXPECT_EQ(S_OK, createFormat({.stretch = 9}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.stretch = 10}));
}

TEST(CreateTextFormat, FamilyIsNotLookedUp) {
    EXPECT_EQ(S_OK, createFormat({.family = L""}));
    EXPECT_EQ(S_OK, createFormat({.family = L"No Such Family"}));
}

TEST(CreateTextFormat, NamesMustBeUtf16) {
    EXPECT_EQ(E_INVALIDARG, createFormat({.family = nullptr}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.locale = nullptr}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.family = L"\U0001F600"}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.locale = L"\U0001F600"}));
}

TEST(CreateTextFormat, LocaleNamesAreLimited) {
    EXPECT_EQ(S_OK, createFormat({.locale = L"xx-anything"}));
    EXPECT_EQ(S_OK, createFormat({.locale = std::wstring(84, L'a').c_str()}));
    EXPECT_EQ(E_INVALIDARG, createFormat({.locale = std::wstring(85, L'a').c_str()}));
}

HRESULT createLayout(const WCHAR* text, UINT32 length, IDWriteTextFormat* format, float width, float height) {
    auto* layout = reinterpret_cast<IDWriteTextLayout*>(1);
    const HRESULT result = factory().CreateTextLayout(text, length, format, width, height, &layout);
    EXPECT_EQ(FAILED(result), layout == nullptr);
    if (layout != nullptr) {
        layout->Release();
    }
    return result;
}

TEST(CreateTextLayout, NeedsAStringAndAFormat) {
    const auto format = makeFormat();
    EXPECT_EQ(E_INVALIDARG, createLayout(nullptr, 0, format.get(), 0, 0));
    EXPECT_EQ(E_INVALIDARG, createLayout(nullptr, 3, format.get(), 0, 0));
    EXPECT_EQ(E_INVALIDARG, createLayout(L"abc", 3, nullptr, 0, 0));
    EXPECT_EQ(S_OK, createLayout(L"", 0, format.get(), 0, 0));
}

TEST(CreateTextLayout, ExtentsMustNotBeNegative) {
    const auto format = makeFormat();
    EXPECT_EQ(E_INVALIDARG, createLayout(L"abc", 3, format.get(), -1, 0));
    EXPECT_EQ(E_INVALIDARG, createLayout(L"abc", 3, format.get(), 0, -1));
    EXPECT_EQ(S_OK, createLayout(L"abc", 3, format.get(), 0, 0));
    EXPECT_EQ(S_OK, createLayout(L"abc", 3, format.get(), std::nanf(""), std::numeric_limits<float>::infinity()));
}

TEST(CreateTextLayout, TextThatIsNotUtf16IsRefused) {
    const auto format = makeFormat();
    EXPECT_EQ(E_INVALIDARG, createLayout(L"a\U0001F600", 2, format.get(), 0, 0));
    EXPECT_EQ(S_OK, createLayout(L"a\U0001F600", 1, format.get(), 0, 0));
}

TEST(CreateTextLayout, UnknownFamilyIsSetInFallbackFonts) {
    const auto layout = makeLayout(u"text", 0, 0, {.family = L"No Such Family"});
    const DWRITE_TEXT_METRICS metrics = metricsOf(*layout);
    EXPECT_GT(metrics.width, 0.0F);
    EXPECT_GT(metrics.height, 0.0F);
    for (const DrawnCall& run : drawnRuns(*layout)) {
        for (const unsigned glyph : run.glyphs) {
            EXPECT_NE(0U, glyph);
        }
    }
}

TEST(Typography, KeepsItsFeaturesInOrder) {
    IDWriteTypography* typography = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
    const Reference<IDWriteTypography> owned(typography, false);
    EXPECT_EQ(0U, typography->GetFontFeatureCount());
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 0}));
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES, 1}));
    EXPECT_EQ(2U, typography->GetFontFeatureCount());
    DWRITE_FONT_FEATURE feature{};
    EXPECT_EQ(S_OK, typography->GetFontFeature(1, &feature));
    EXPECT_EQ(DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES, feature.nameTag);
    EXPECT_EQ(1U, feature.parameter);
    EXPECT_EQ(E_INVALIDARG, typography->GetFontFeature(2, &feature));
}

} // namespace
} // namespace platform_test

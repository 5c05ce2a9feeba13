#include "support/ForeignCollection.h"

#include "support/Fonts.h"
#include "support/ForeignFormat.h"
#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using platform::test::ForeignCollection;

HRESULT createFormat(IDWriteFactory& owner, IDWriteFontCollection* collection) {
    auto* created = reinterpret_cast<IDWriteTextFormat*>(1);
    const HRESULT result =
        owner.CreateTextFormat(L"DejaVu Sans", collection, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                               DWRITE_FONT_STRETCH_NORMAL, 20.0F, L"", &created);
    EXPECT_EQ(SUCCEEDED(result), created != nullptr);
    if (created != nullptr) {
        created->Release();
    }
    return result;
}

TEST(ForeignCollections, AreRefusedByFormats) {
    ForeignCollection foreign;
    EXPECT_EQ(E_INVALIDARG, createFormat(factory(), &foreign));
}

TEST(ForeignCollections, OursAreTakenFromWhateverFactory) {
    IUnknown* created = nullptr;
    ASSERT_EQ(S_OK, DWriteCreateFactory(DWRITE_FACTORY_TYPE_ISOLATED, __uuidof(IDWriteFactory), &created));
    const Reference<IDWriteFactory> isolated(static_cast<IDWriteFactory*>(created), false);
    IDWriteFontCollection* view = nullptr;
    ASSERT_EQ(S_OK, isolated->GetSystemFontCollection(&view, FALSE));
    const Reference<IDWriteFontCollection> owned(view, false);
    EXPECT_EQ(S_OK, createFormat(factory(), view));
    EXPECT_EQ(S_OK, createFormat(*isolated, view));
    EXPECT_EQ(S_OK, createFormat(factory(), nullptr));
    EXPECT_EQ(&platform::CFontCollection::of(view), &platform::CFontCollection::system());
    EXPECT_EQ(S_OK, createFormat(factory(), &platform::test::dataCollection()));
}

TEST(ForeignCollections, AreRefusedForRangesWhichKeepTheirOwn) {
    ForeignCollection foreign;
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(E_INVALIDARG, layout->SetFontCollection(&foreign, {0, 2}));
    IDWriteFontCollection* kept = nullptr;
    DWRITE_TEXT_RANGE range{};
    ASSERT_EQ(S_OK, layout->GetFontCollection(0, &kept, &range));
    const Reference<IDWriteFontCollection> owned(kept, false);
    EXPECT_EQ(kept, static_cast<IDWriteFontCollection*>(&platform::CFontCollection::system()));
    EXPECT_LT(2U, range.length);
}

TEST(ForeignCollections, AreRefusedInAnotherImplementationsFormat) {
    ForeignCollection foreign;
    ForeignFormat<platform::FormatOperations<IDWriteTextFormat>> format;
    format.settings.font.family = platform::makeName(L"DejaVu Sans");
    format.settings.font.locale = platform::makeName(L"");
    format.settings.font.size = 20.0F;
    format.settings.paragraph.incrementalTabStop = 80.0F;
    format.settings.font.collection = &foreign;
    auto* created = reinterpret_cast<IDWriteTextLayout*>(1);
    EXPECT_EQ(E_INVALIDARG, factory().CreateTextLayout(L"text", 4, &format, 0, 0, &created));
    EXPECT_EQ(nullptr, created);
}

} // namespace
} // namespace platform_test

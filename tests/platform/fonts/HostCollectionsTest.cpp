// Collections of a host's own files. Runs over the system's DirectWrite as well.

#include "fonts/HostFiles.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;

/// A host with "a": DejaVu Sans, "b": its bold face, "c": two families in one file, "n": no font.
class HostCollections : public testing::Test {
protected:
    HostCollections() {
        m_fonts.file("a").bytes = fontBytes("fonts-dejavu-core/DejaVuSans.ttf");
        m_fonts.file("b").bytes = fontBytes("fonts-dejavu-core/DejaVuSans-Bold.ttf");
        m_fonts.file("c").bytes = fontBytes("Collection.ttc");
        m_fonts.file("n").bytes = std::string(5000, 'n');
    }

    HostFonts m_fonts;
};

TEST_F(HostCollections, HaveTheFamiliesOfTheirFilesAndNoOther) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("abc");
    ASSERT_EQ(collection->GetFontFamilyCount(), 3u);
    UINT32 index = 99;
    BOOL exists = FALSE;
    for (const wchar_t* name : {L"DejaVu Sans", L"test collection one", L"Test Collection Two"}) {
        EXPECT_EQ(collection->FindFamilyName(name, &index, &exists), S_OK);
        EXPECT_TRUE(exists) << name;
    }
    EXPECT_EQ(collection->FindFamilyName(L"Liberation Sans", &index, &exists), S_OK);
    EXPECT_FALSE(exists);
    EXPECT_EQ(index, 0xFFFFFFFFu);
}

TEST_F(HostCollections, AFamilyHasItsFacesFromSeveralFiles) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("ab");
    ASSERT_EQ(collection->GetFontFamilyCount(), 1u);
    EXPECT_EQ(familyName(*collection, 0), L"DejaVu Sans");
    com_ptr<IDWriteFontFamily> family;
    ASSERT_EQ(collection->GetFontFamily(0, &family), S_OK);
    for (const DWRITE_FONT_WEIGHT weight : {DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_WEIGHT_BOLD}) {
        com_ptr<IDWriteFont> font;
        ASSERT_EQ(family->GetFirstMatchingFont(weight, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL, &font),
                  S_OK);
        EXPECT_EQ(font->GetWeight(), weight);
        EXPECT_EQ(font->GetSimulations(), DWRITE_FONT_SIMULATIONS_NONE);
        com_ptr<IDWriteFontFace> face;
        ASSERT_EQ(font->CreateFontFace(&face), S_OK);
        com_ptr<IDWriteFontFile> file;
        UINT32 count = 1;
        ASSERT_EQ(face->GetFiles(&count, &file), S_OK);
        const void* key = nullptr;
        UINT32 size = 0;
        EXPECT_EQ(file->GetReferenceKey(&key, &size), S_OK);
        EXPECT_EQ(std::string(static_cast<const char*>(key), size), weight == DWRITE_FONT_WEIGHT_BOLD ? "b" : "a");
    }
}

TEST_F(HostCollections, OfNoFilesAreEmpty) {
    EXPECT_EQ(m_fonts.collection("")->GetFontFamilyCount(), 0u);
}

TEST_F(HostCollections, LeaveOutWhatIsNoFont) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("na");
    ASSERT_EQ(collection->GetFontFamilyCount(), 1u);
    EXPECT_EQ(familyName(*collection, 0), L"DejaVu Sans");
}

TEST_F(HostCollections, FailAsTheirEnumeratorDoes) {
    constexpr HRESULT refused = static_cast<HRESULT>(0x80070005U);
    HostCollectionLoader& loader = *m_fonts.collectionLoader;
    const auto make = [this] {
        com_ptr<IDWriteFontCollection> collection;
        const HRESULT result = m_fonts.makeCollection("ab", collection);
        // Wine leaves something there that is no collection.
        static_cast<void>(collection.detach());
        return result;
    };
    for (HRESULT* const answer : {&loader.enumeratorResult, &loader.moveResult, &loader.fileResult}) {
        *answer = refused;
        EXPECT_EQ(make(), refused);
        *answer = S_OK;
    }
}

TEST_F(HostCollections, FindTheFontOfTheirFaces) {
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("ab");
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(m_fonts.makeFace("b", face), S_OK);
    com_ptr<IDWriteFont> font;
    ASSERT_EQ(collection->GetFontFromFontFace(face, &font), S_OK);
    EXPECT_EQ(font->GetWeight(), DWRITE_FONT_WEIGHT_BOLD);
    com_ptr<IDWriteFontFace> itsOwn;
    ASSERT_EQ(font->CreateFontFace(&itsOwn), S_OK);
    ASSERT_EQ(collection->GetFontFromFontFace(itsOwn, &font), S_OK);
    EXPECT_EQ(font->GetWeight(), DWRITE_FONT_WEIGHT_BOLD);

    const com_ptr<IDWriteFontCollection> other = m_fonts.collection("a");
    EXPECT_EQ(other->GetFontFromFontFace(face, &font), DWRITE_E_NOFONT);
    EXPECT_EQ(font.get(), nullptr);
}

TEST_F(HostCollections, AreKeptByAnythingOfTheirs) {
    com_ptr<IDWriteLocalizedStrings> names;
    {
        com_ptr<IDWriteFontFamily> family;
        com_ptr<IDWriteFont> font;
        com_ptr<IDWriteFontFace> face;
        ASSERT_EQ(m_fonts.collection("a")->GetFontFamily(0, &family), S_OK);
        ASSERT_EQ(family->GetFont(0, &font), S_OK);
        family = nullptr;
        ASSERT_EQ(font->CreateFontFace(&face), S_OK);
        font = nullptr;
        EXPECT_EQ(tableBytes(*face, "head").size(), 54u);
        EXPECT_EQ(face->GetGlyphCount(), 6253u);
        face = nullptr;
        ASSERT_EQ(m_fonts.collection("a")->GetFontFamily(0, &family), S_OK);
        ASSERT_EQ(family->GetFamilyNames(&names), S_OK);
    }
    UINT32 length = 0;
    EXPECT_EQ(names->GetStringLength(0, &length), S_OK);
    EXPECT_EQ(length, 11u);
    names = nullptr;
    EXPECT_EQ(m_fonts.held(), 0);
}

TEST_F(HostCollections, SetTextInTheirFonts) {
    m_fonts.file("w").bytes = fontBytes("Words.ttf");
    const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("w");
    const std::wstring name = familyName(*collection, 0);
    com_ptr<IDWriteTextFormat> format;
    ASSERT_EQ(m_fonts.factory().CreateTextFormat(name.c_str(), collection, DWRITE_FONT_WEIGHT_NORMAL,
                                                 DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, 1000.0F,
                                                 L"en-us", &format),
              S_OK);
    com_ptr<IDWriteTextLayout> layout;
    ASSERT_EQ(m_fonts.factory().CreateTextLayout(L"HI", 2, format, 1e6F, 1e6F, &layout), S_OK);
    DWRITE_TEXT_METRICS metrics{};
    ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(m_fonts.makeFace("w", face), S_OK);
    DWRITE_FONT_METRICS design{};
    face->GetMetrics(&design);
    const UINT32 letters[] = {U'H', U'I'};
    UINT16 glyphs[2] = {};
    ASSERT_EQ(face->GetGlyphIndices(letters, 2, glyphs), S_OK);
    EXPECT_NE(glyphs[0], 0u);
    DWRITE_GLYPH_METRICS advances[2] = {};
    ASSERT_EQ(face->GetDesignGlyphMetrics(glyphs, 2, advances, FALSE), S_OK);
    const auto expected = static_cast<float>(advances[0].advanceWidth + advances[1].advanceWidth) * 1000.0F /
                          static_cast<float>(design.designUnitsPerEm);
    EXPECT_NEAR(metrics.width, expected, 0.01F);
    EXPECT_NEAR(metrics.height,
                static_cast<float>(design.ascent + design.descent + design.lineGap) * 1000.0F /
                    static_cast<float>(design.designUnitsPerEm),
                0.01F);
}

} // namespace
} // namespace platform::test

// Faces of a host's own files. Runs over the system's DirectWrite as well.

#include "fonts/HostFiles.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;

constexpr const char* dejaVu = "fonts-dejavu-core/DejaVuSans.ttf";

struct Analysis {
    HRESULT result = S_OK;
    BOOL isSupported = FALSE;
    DWRITE_FONT_FILE_TYPE file = DWRITE_FONT_FILE_TYPE_UNKNOWN;
    DWRITE_FONT_FACE_TYPE face = DWRITE_FONT_FACE_TYPE_UNKNOWN;
    UINT32 count = 0;
};

Analysis analyse(IDWriteFontFile& file) {
    Analysis analysis;
    analysis.isSupported = TRUE;
    analysis.count = 99;
    analysis.result = file.Analyze(&analysis.isSupported, &analysis.file, &analysis.face, &analysis.count);
    return analysis;
}

TEST(HostFontFiles, ALoaderIsKnownUntilItIsUnregistered) {
    HostFonts fonts;
    IDWriteFactory& factory = fonts.factory();
    const auto other = com_ptr<HostLoader>::adopt(new HostLoader(fonts.counts));
    com_ptr<IDWriteFontFile> file;
    EXPECT_EQ(factory.CreateCustomFontFileReference("a", 1, other, &file), E_INVALIDARG);
    EXPECT_EQ(file.get(), nullptr);
    EXPECT_EQ(factory.RegisterFontFileLoader(other), S_OK);
    EXPECT_EQ(factory.RegisterFontFileLoader(other), DWRITE_E_ALREADYREGISTERED);
    EXPECT_EQ(factory.CreateCustomFontFileReference("a", 1, other, &file), S_OK);
    file = nullptr;
    EXPECT_EQ(factory.UnregisterFontFileLoader(other), S_OK);
    EXPECT_EQ(factory.UnregisterFontFileLoader(other), E_INVALIDARG);
    EXPECT_EQ(other->references(), 1u);
    EXPECT_EQ(factory.RegisterFontFileLoader(nullptr), E_INVALIDARG);
}

TEST(HostFontFiles, ACollectionLoaderIsKnownUntilItIsUnregistered) {
    HostFonts fonts;
    IDWriteFactory& factory = fonts.factory();
    const auto other = com_ptr<HostCollectionLoader>::adopt(new HostCollectionLoader(fonts.counts, *fonts.loader));
    com_ptr<IDWriteFontCollection> collection;
    EXPECT_EQ(factory.CreateCustomFontCollection(other, "", 0, &collection), E_INVALIDARG);
    EXPECT_EQ(collection.get(), nullptr);
    EXPECT_EQ(factory.RegisterFontCollectionLoader(other), S_OK);
    EXPECT_EQ(factory.RegisterFontCollectionLoader(other), DWRITE_E_ALREADYREGISTERED);
    EXPECT_EQ(factory.UnregisterFontCollectionLoader(other), S_OK);
    EXPECT_EQ(factory.UnregisterFontCollectionLoader(other), E_INVALIDARG);
    EXPECT_EQ(other->references(), 1u);
    EXPECT_EQ(factory.RegisterFontCollectionLoader(nullptr), E_INVALIDARG);
}

TEST(HostFontFiles, AFileIsItsKeyAndItsLoader) {
    HostFonts fonts;
    const std::string key("any bytes, \0 too", 16);
    const com_ptr<IDWriteFontFile> file = fonts.reference(key);
    const void* stored = nullptr;
    UINT32 size = 0;
    EXPECT_EQ(file->GetReferenceKey(&stored, &size), S_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(stored), size), key);
    EXPECT_NE(stored, static_cast<const void*>(key.data()));
    com_ptr<IDWriteFontFileLoader> loader;
    EXPECT_EQ(file->GetLoader(&loader), S_OK);
    EXPECT_EQ(loader.get(), static_cast<IDWriteFontFileLoader*>(fonts.loader.get()));
}

TEST(HostFontFiles, AnalysisTellsWhatAFileIs) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    fonts.file("o").bytes = fontBytes("Cff.otf");
    fonts.file("c").bytes = fontBytes("Collection.ttc");
    const struct {
        const char* key;
        DWRITE_FONT_FILE_TYPE file;
        DWRITE_FONT_FACE_TYPE face;
        UINT32 count;
    } cases[] = {
        {"t", DWRITE_FONT_FILE_TYPE_TRUETYPE, DWRITE_FONT_FACE_TYPE_TRUETYPE, 1},
        {"o", DWRITE_FONT_FILE_TYPE_CFF, DWRITE_FONT_FACE_TYPE_CFF, 1},
        {"c", DWRITE_FONT_FILE_TYPE_TRUETYPE_COLLECTION, DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION, 2},
    };
    for (const auto& c : cases) {
        const Analysis analysis = analyse(*fonts.reference(c.key));
        EXPECT_EQ(analysis.result, S_OK) << c.key;
        EXPECT_TRUE(analysis.isSupported) << c.key;
        EXPECT_EQ(analysis.file, c.file) << c.key;
        EXPECT_EQ(analysis.face, c.face) << c.key;
        EXPECT_EQ(analysis.count, c.count) << c.key;
    }
    EXPECT_EQ(fonts.counts.fragments, 0);
}

TEST(HostFontFiles, AnalysisOfWhatIsNoFontIsNoError) {
    HostFonts fonts;
    fonts.file("n").bytes = std::string(5000, 'n');
    const Analysis analysis = analyse(*fonts.reference("n"));
    EXPECT_EQ(analysis.result, S_OK);
    EXPECT_FALSE(analysis.isSupported);
    EXPECT_EQ(analysis.file, DWRITE_FONT_FILE_TYPE_UNKNOWN);
    EXPECT_EQ(analysis.face, DWRITE_FONT_FACE_TYPE_UNKNOWN);
    EXPECT_EQ(analysis.count, 0u);
}

TEST(HostFontFiles, AFaceIsThatOfTheBytes) {
    HostFonts fonts;
    const std::string& bytes = fonts.file("t").bytes = fontBytes(dejaVu);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(fonts.makeFace("t", face), S_OK);
    EXPECT_EQ(face->GetType(), DWRITE_FONT_FACE_TYPE_TRUETYPE);
    EXPECT_EQ(face->GetIndex(), 0u);
    EXPECT_EQ(face->GetSimulations(), DWRITE_FONT_SIMULATIONS_NONE);
    EXPECT_FALSE(face->IsSymbolFont());
    // As the tables say.
    EXPECT_EQ(face->GetGlyphCount(), 6253u);
    DWRITE_FONT_METRICS metrics{};
    face->GetMetrics(&metrics);
    EXPECT_EQ(metrics.designUnitsPerEm, 2048u);
    EXPECT_EQ(metrics.ascent, 1901u);
    const UINT32 letters[] = {U'H', 0x10FFFF};
    UINT16 glyphs[2] = {};
    EXPECT_EQ(face->GetGlyphIndices(letters, 2, glyphs), S_OK);
    EXPECT_EQ(glyphs[0], 43u);
    EXPECT_EQ(glyphs[1], 0u);
    EXPECT_EQ(tableBytes(*face, "head").size(), 54u);
    EXPECT_NE(bytes.find(tableBytes(*face, "glyf")), std::string::npos);
    EXPECT_EQ(tableBytes(*face, "CFF "), "");

    com_ptr<IDWriteFontFile> file;
    UINT32 count = 1;
    ASSERT_EQ(face->GetFiles(&count, &file), S_OK);
    const void* key = nullptr;
    UINT32 size = 0;
    EXPECT_EQ(file->GetReferenceKey(&key, &size), S_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(key), size), "t");
}

TEST(HostFontFiles, FacesOfACollectionAreToldByTheirIndex) {
    HostFonts fonts;
    fonts.file("c").bytes = fontBytes("Collection.ttc");
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(fonts.makeFace("c", face, DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION, 1), S_OK);
    EXPECT_EQ(face->GetIndex(), 1u);
    EXPECT_EQ(face->GetType(), DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION);
    EXPECT_FALSE(SUCCEEDED(fonts.makeFace("c", face, DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION, 2)));
    EXPECT_EQ(face.get(), nullptr);
}

TEST(HostFontFiles, SimulationsAreDrawn) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(fonts.makeFace("t", face, DWRITE_FONT_FACE_TYPE_TRUETYPE, 0, DWRITE_FONT_SIMULATIONS_OBLIQUE), S_OK);
    EXPECT_EQ(face->GetSimulations(), DWRITE_FONT_SIMULATIONS_OBLIQUE);
}

TEST(HostFontFiles, ImpossibleFacesAreRefused) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    const com_ptr<IDWriteFontFile> file = fonts.reference("t");
    IDWriteFontFile* const files[] = {file, file};
    IDWriteFactory& factory = fonts.factory();
    com_ptr<IDWriteFontFace> face;
    EXPECT_EQ(factory.CreateFontFace(DWRITE_FONT_FACE_TYPE_UNKNOWN, 1, files, 0, DWRITE_FONT_SIMULATIONS_NONE, &face),
              E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(DWRITE_FONT_FACE_TYPE_TRUETYPE, 1, files, 1, DWRITE_FONT_SIMULATIONS_NONE, &face),
              E_INVALIDARG);
    EXPECT_EQ(face.get(), nullptr);
}

TEST(HostFontFiles, AnotherKindThanTheFilesIsAnError) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    com_ptr<IDWriteFontFace> face;
    EXPECT_EQ(fonts.makeFace("t", face, DWRITE_FONT_FACE_TYPE_CFF), DWRITE_E_FILEFORMAT);
    EXPECT_EQ(fonts.makeFace("t", face, DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION), DWRITE_E_FILEFORMAT);
    EXPECT_EQ(face.get(), nullptr);
}

TEST(HostFontFiles, WhatOpeningFailsWithIsTheAnswer) {
    constexpr HRESULT refused = static_cast<HRESULT>(0x80070005U);
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    fonts.file("t").openResult = refused;
    com_ptr<IDWriteFontFace> face;
    EXPECT_EQ(fonts.makeFace("t", face), refused);
    EXPECT_EQ(face.get(), nullptr);
    const Analysis analysis = analyse(*fonts.reference("t"));
    EXPECT_EQ(analysis.result, refused);
    EXPECT_FALSE(analysis.isSupported);
    EXPECT_EQ(analysis.count, 0u);
    EXPECT_EQ(fonts.held(), 0);
}

TEST(HostFontFiles, EverythingThatWasTakenIsGivenBack) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(fonts.makeFace("t", face), S_OK);
    EXPECT_LT(0, fonts.held());
    const void* data = nullptr;
    UINT32 size = 0;
    void* context = nullptr;
    BOOL exists = FALSE;
    ASSERT_EQ(face->TryGetFontTable(DWRITE_MAKE_OPENTYPE_TAG('c', 'm', 'a', 'p'), &data, &size, &context, &exists),
              S_OK);
    face->ReleaseFontTable(context);
    face = nullptr;
    EXPECT_EQ(fonts.held(), 0);
}

TEST(HostFontFiles, AFaceOutlivesTheRegistrationOfItsLoader) {
    HostFonts fonts;
    fonts.file("t").bytes = fontBytes(dejaVu);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(fonts.makeFace("t", face), S_OK);
    EXPECT_EQ(fonts.factory().UnregisterFontFileLoader(fonts.loader), S_OK);
    EXPECT_EQ(tableBytes(*face, "head").size(), 54u);
    const UINT32 letter = U'H';
    UINT16 glyph = 0;
    EXPECT_EQ(face->GetGlyphIndices(&letter, 1, &glyph), S_OK);
    EXPECT_EQ(glyph, 43u);
}

} // namespace
} // namespace platform::test

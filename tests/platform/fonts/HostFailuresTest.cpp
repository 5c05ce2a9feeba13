// What becomes of a host's failing, lying and damaged files.

#include "fonts/HostFiles.h"

#include <d2d1.h>
#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;

constexpr HRESULT hostFailure = static_cast<HRESULT>(0x80040ABCU);
constexpr const char* dejaVu = "fonts-dejavu-core/DejaVuSans.ttf";

class HostFailures : public testing::Test {
protected:
    HostFailures() {
        m_fonts.file("t").bytes = fontBytes(dejaVu);
        m_fonts.file("t").copiesFragments = true;
    }

    HRESULT makeFace(const std::string& key, DWRITE_FONT_FACE_TYPE type = DWRITE_FONT_FACE_TYPE_TRUETYPE) {
        com_ptr<IDWriteFontFace> face;
        const HRESULT result = m_fonts.makeFace(key, face, type);
        EXPECT_EQ(SUCCEEDED(result), face.get() != nullptr);
        return result;
    }

    HRESULT makeCollection(const std::string& keys) {
        com_ptr<IDWriteFontCollection> collection;
        const HRESULT result = m_fonts.makeCollection(keys, collection);
        EXPECT_EQ(SUCCEEDED(result), collection.get() != nullptr);
        return result;
    }

    void expectNothingHeld() {
        EXPECT_EQ(m_fonts.held(), 0);
        EXPECT_EQ(m_fonts.counts.fragments, 0);
    }

    /// How many reads something takes; before that many, `attempt` gives the host's failure.
    template <typename Attempt>
    int readsOf(Attempt attempt) {
        HostFile& file = m_fonts.file("t");
        file.readResult = hostFailure;
        for (int reads = 0; reads < 200; ++reads) {
            file.goodReads = reads;
            const HRESULT result = attempt();
            if (SUCCEEDED(result)) {
                return reads;
            }
            EXPECT_EQ(result, hostFailure) << reads;
            expectNothingHeld();
        }
        return -1;
    }

    HostFonts m_fonts;
};

TEST_F(HostFailures, AnyReadThatFailsFailsTheFace) {
    EXPECT_LT(10, readsOf([this] { return makeFace("t"); }));
    expectNothingHeld();
}

TEST_F(HostFailures, AnyReadThatFailsFailsTheCollection) {
    EXPECT_LT(4, readsOf([this] { return makeCollection("t"); }));
    expectNothingHeld();
}

TEST_F(HostFailures, AFontThatCannotBeReadLaterHasNoFace) {
    com_ptr<IDWriteFontCollection> collection;
    EXPECT_LT(4, readsOf([&] { return m_fonts.makeCollection("t", collection); }));
    com_ptr<IDWriteFontFamily> family;
    com_ptr<IDWriteFont> font;
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(collection->GetFontFamily(0, &family), S_OK);
    ASSERT_EQ(family->GetFont(0, &font), S_OK);
    EXPECT_EQ(font->CreateFontFace(&face), hostFailure);
    EXPECT_EQ(face.get(), nullptr);
    // Text in it is drawn by fallback.
    BOOL exists = TRUE;
    EXPECT_EQ(font->HasCharacter(U'H', &exists), S_OK);
    EXPECT_FALSE(exists);
}

TEST_F(HostFailures, LargeOutlinesThatCannotBeReadAreAnError) {
    HostFile& file = m_fonts.file("k");
    file.bytes = fontBytes("fonts-noto-cjk/NotoSansCJK-Regular.ttc");
    file.readResult = hostFailure;
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(m_fonts.makeFace("k", face, DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION), S_OK);
    EXPECT_LT(m_fonts.counts.bytesRead, 4'000'000u);
    file.goodReads = 0;

    com_ptr<ID2D1Factory> factory;
    com_ptr<ID2D1PathGeometry> geometry;
    com_ptr<ID2D1GeometrySink> sink;
    ASSERT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, __uuidof(ID2D1Factory), nullptr,
                                reinterpret_cast<void**>(&factory)),
              S_OK);
    ASSERT_EQ(factory->CreatePathGeometry(&geometry), S_OK);
    ASSERT_EQ(geometry->Open(&sink), S_OK);
    const UINT16 glyph = 700;
    EXPECT_EQ(face->GetGlyphRunOutline(20, &glyph, nullptr, nullptr, 1, FALSE, FALSE, sink), hostFailure);
    DWRITE_GLYPH_METRICS metrics{};
    EXPECT_EQ(face->GetDesignGlyphMetrics(&glyph, 1, &metrics), hostFailure);
    const void* data = nullptr;
    UINT32 size = 0;
    void* context = nullptr;
    BOOL exists = FALSE;
    EXPECT_EQ(face->TryGetFontTable(DWRITE_MAKE_OPENTYPE_TAG('C', 'F', 'F', ' '), &data, &size, &context, &exists),
              hostFailure);
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(tableBytes(*face, "head").size(), 54u);
    EXPECT_EQ(face->TryGetFontTable(DWRITE_MAKE_OPENTYPE_TAG('n', 'o', 'n', 'e'), &data, &size, &context, &exists),
              S_OK);
}

TEST_F(HostFailures, ImpossibleArgumentsAreRefused) {
    const com_ptr<IDWriteFontFile> file = m_fonts.reference("t");
    IDWriteFontFile* const files[] = {file, nullptr};
    IDWriteFactory& factory = m_fonts.factory();
    com_ptr<IDWriteFontFace> face;
    constexpr auto type = DWRITE_FONT_FACE_TYPE_TRUETYPE;
    constexpr auto none = DWRITE_FONT_SIMULATIONS_NONE;
    EXPECT_EQ(factory.CreateFontFace(type, 1, files, 0, static_cast<DWRITE_FONT_SIMULATIONS>(4), &face), E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(type, 0, files, 0, none, &face), E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(type, 2, files, 0, none, &face), E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(type, 1, files + 1, 0, none, &face), E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(type, 1, nullptr, 0, none, &face), E_INVALIDARG);
    EXPECT_EQ(factory.CreateFontFace(DWRITE_FONT_FACE_TYPE_TYPE1, 1, files, 0, none, &face), E_INVALIDARG);
    EXPECT_EQ(face.get(), nullptr);
    EXPECT_EQ(m_fonts.counts.streamsMade, 0);
}

TEST_F(HostFailures, ASuccessWithoutAnythingIsAFailure) {
    m_fonts.file("t").givesNoStream = true;
    EXPECT_EQ(makeFace("t"), E_FAIL);
    EXPECT_EQ(makeCollection("t"), E_FAIL);
    m_fonts.file("t").givesNoStream = false;
    m_fonts.file("t").givesNoBytes = true;
    EXPECT_EQ(makeFace("t"), E_FAIL);
    expectNothingHeld();
    m_fonts.file("t").givesNoBytes = false;
    m_fonts.collectionLoader->givesNoEnumerator = true;
    EXPECT_EQ(makeCollection("tt"), E_FAIL);
    m_fonts.collectionLoader->givesNoEnumerator = false;
    m_fonts.collectionLoader->givesNoFile = true;
    EXPECT_EQ(makeCollection("tt"), E_FAIL);
    expectNothingHeld();
}

TEST_F(HostFailures, AnEnumeratorThatFailsEndsTheCollection) {
    HostCollectionLoader& loader = *m_fonts.collectionLoader;
    for (HRESULT* const answer : {&loader.enumeratorResult, &loader.moveResult, &loader.fileResult}) {
        *answer = hostFailure;
        EXPECT_EQ(makeCollection("tt"), hostFailure);
        expectNothingHeld();
        *answer = S_OK;
    }
    EXPECT_EQ(makeCollection("tt"), S_OK);
    EXPECT_EQ(loader.askedBy, &m_fonts.factory());
}

TEST_F(HostFailures, AnUnknownSizeIsTheFailureOfTheFile) {
    m_fonts.file("t").sizeResult = hostFailure;
    EXPECT_EQ(makeFace("t"), hostFailure);
    EXPECT_EQ(makeCollection("t"), hostFailure);
    expectNothingHeld();
}

TEST_F(HostFailures, AFileThatPretendsToBeLongerIsReadAsFarAsItIsNeeded) {
    HostFile& file = m_fonts.file("t");
    file.missingBytes = UINT64{1} << 60;
    EXPECT_EQ(makeFace("t"), S_OK);
    const std::size_t whole = file.bytes.size();
    file.bytes.resize(whole / 2);
    file.missingBytes = whole - file.bytes.size();
    EXPECT_EQ(makeFace("t"), HostStream::pastTheEnd);
    expectNothingHeld();
}

TEST_F(HostFailures, ACutFileIsNoFont) {
    const std::string whole = fontBytes(dejaVu);
    HostFile& file = m_fonts.file("t");
    for (std::size_t part = 0; part < 60; ++part) {
        file.bytes = whole.substr(0, whole.size() * part / 60);
        EXPECT_EQ(makeFace("t"), DWRITE_E_FILEFORMAT) << part;
        com_ptr<IDWriteFontCollection> collection;
        EXPECT_EQ(m_fonts.makeCollection("t", collection), S_OK);
        EXPECT_EQ(collection->GetFontFamilyCount(), 0u);
    }
    expectNothingHeld();
}

TEST_F(HostFailures, ADamagedDirectoryIsNoFont) {
    const std::string whole = fontBytes("Words.ttf");
    HostFile& file = m_fonts.file("t");
    const auto damaged = [&](std::size_t at, char byte) {
        file.bytes = whole;
        file.bytes[at] = byte;
        return makeFace("t");
    };
    EXPECT_EQ(damaged(0, 'x'), DWRITE_E_FILEFORMAT);
    EXPECT_EQ(damaged(4, '\xFF'), DWRITE_E_FILEFORMAT);  // more tables than there is room for
    EXPECT_EQ(damaged(12, 'x'), S_OK);                   // a table that nobody needs now
    EXPECT_EQ(damaged(20, '\x7F'), DWRITE_E_FILEFORMAT); // where the first table is
    EXPECT_EQ(damaged(whole.find("head"), 'x'), DWRITE_E_FILEFORMAT);
    EXPECT_EQ(damaged(whole.find("maxp"), 'x'), DWRITE_E_FILEFORMAT);
    const auto magic = whole.find("\x5F\x0F\x3C\xF5");
    ASSERT_NE(magic, std::string::npos);
    EXPECT_EQ(damaged(magic, '\0'), DWRITE_E_FILEFORMAT);
}

TEST_F(HostFailures, ACollectionOfMoreFacesThanThereIsRoomForHasThoseThatAreThere) {
    HostFile& file = m_fonts.file("c");
    file.bytes = fontBytes("Collection.ttc");
    for (std::size_t at = 8; at < 12; ++at) {
        file.bytes[at] = '\xFF';
    }
    BOOL isSupported = FALSE;
    DWRITE_FONT_FILE_TYPE type = DWRITE_FONT_FILE_TYPE_UNKNOWN;
    UINT32 count = 0;
    EXPECT_EQ(m_fonts.reference("c")->Analyze(&isSupported, &type, nullptr, &count), S_OK);
    EXPECT_EQ(count, (file.bytes.size() - 12) / 4);
    com_ptr<IDWriteFontCollection> collection;
    ASSERT_EQ(m_fonts.makeCollection("c", collection), S_OK);
    EXPECT_EQ(collection->GetFontFamilyCount(), 2u);
}

TEST_F(HostFailures, AnEmptyFileIsNoFont) {
    m_fonts.file("t").bytes.clear();
    EXPECT_EQ(makeFace("t"), DWRITE_E_FILEFORMAT);
    EXPECT_EQ(m_fonts.counts.bytesRead, 0u);
}

TEST_F(HostFailures, FacesOfOneFileObjectReadTheirTablesOnce) {
    const com_ptr<IDWriteFontFile> file = m_fonts.reference("t");
    IDWriteFontFile* const files[] = {file};
    com_ptr<IDWriteFontFace> first;
    com_ptr<IDWriteFontFace> second;
    ASSERT_EQ(m_fonts.factory().CreateFontFace(DWRITE_FONT_FACE_TYPE_TRUETYPE, 1, files, 0,
                                               DWRITE_FONT_SIMULATIONS_NONE, &first),
              S_OK);
    const UINT64 forFirst = m_fonts.counts.bytesRead;
    EXPECT_LE(forFirst, m_fonts.file("t").bytes.size() + 10'000);
    ASSERT_EQ(m_fonts.factory().CreateFontFace(DWRITE_FONT_FACE_TYPE_TRUETYPE, 1, files, 0,
                                               DWRITE_FONT_SIMULATIONS_BOLD, &second),
              S_OK);
    EXPECT_LT(m_fonts.counts.bytesRead - forFirst, 1000u);
    EXPECT_EQ(m_fonts.counts.streamsMade, 1);
}

} // namespace
} // namespace platform::test

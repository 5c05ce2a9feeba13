// Files on disk that a host names itself.

#include "fonts/HostFiles.h"

#include "fonts/FaceSource.h"
#include "fonts/LocalPath.h"
#include "support/Fonts.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace platform::test {
namespace {

using oslayer::com_ptr;
namespace files = std::filesystem;

class LocalFiles : public testing::Test {
protected:
    LocalFiles() : m_folder(files::temp_directory_path() / ("local-files-" + std::to_string(getpid()))) {
        files::create_directories(m_folder);
    }
    ~LocalFiles() override { files::remove_all(m_folder); }

    std::string copyOf(const std::string& font, const std::string& name) const {
        const files::path copy = m_folder / name;
        files::copy_file(dataPath(font), copy, files::copy_options::overwrite_existing);
        return copy.string();
    }

    HRESULT makeReference(const std::string& path, com_ptr<IDWriteFontFile>& file, const FILETIME* time = nullptr) {
        return m_fonts.factory().CreateFontFileReference(widePath(path).c_str(), time, &file);
    }

    HRESULT makeFace(IDWriteFontFile* file, com_ptr<IDWriteFontFace>& face, UINT32 index = 0,
                     DWRITE_FONT_SIMULATIONS simulations = DWRITE_FONT_SIMULATIONS_NONE,
                     DWRITE_FONT_FACE_TYPE type = DWRITE_FONT_FACE_TYPE_TRUETYPE) {
        return m_fonts.factory().CreateFontFace(type, 1, &file, index, simulations, &face);
    }

    const files::path m_folder;
    HostFonts m_fonts;
};

struct Key {
    com_ptr<IDWriteLocalFontFileLoader> loader;
    const void* bytes = nullptr;
    UINT32 size = 0;
};

Key keyOf(IDWriteFontFile& file) {
    Key key;
    com_ptr<IDWriteFontFileLoader> loader;
    EXPECT_EQ(file.GetLoader(&loader), S_OK);
    key.loader.queryFrom(loader);
    EXPECT_EQ(file.GetReferenceKey(&key.bytes, &key.size), S_OK);
    return key;
}

HRESULT analyse(IDWriteFontFile& file) {
    BOOL isSupported = FALSE;
    DWRITE_FONT_FILE_TYPE type = DWRITE_FONT_FILE_TYPE_UNKNOWN;
    UINT32 count = 0;
    const HRESULT result = file.Analyze(&isSupported, &type, nullptr, &count);
    EXPECT_EQ(SUCCEEDED(result), isSupported != FALSE);
    return result;
}

TEST_F(LocalFiles, AFileThatIsNotThereIsNotFound) {
    com_ptr<IDWriteFontFile> file;
    EXPECT_EQ(makeReference((m_folder / "none.ttf").string(), file), DWRITE_E_FILENOTFOUND);
    EXPECT_EQ(makeReference(copyOf("Words.ttf", "a.ttf") + "/none.ttf", file), DWRITE_E_FILENOTFOUND);
    EXPECT_EQ(makeReference(m_folder.string(), file), DWRITE_E_FILEACCESS);
    EXPECT_EQ(file.get(), nullptr);
    // With a time, nobody looks before the file is needed.
    const FILETIME time{1, 2};
    ASSERT_EQ(makeReference((m_folder / "none.ttf").string(), file, &time), S_OK);
    EXPECT_EQ(analyse(*file), DWRITE_E_FILENOTFOUND);
    com_ptr<IDWriteFontFace> face;
    EXPECT_EQ(makeFace(file, face), DWRITE_E_FILENOTFOUND);
}

TEST_F(LocalFiles, WhatIsNoPathIsRefused) {
    com_ptr<IDWriteFontFile> file;
    IDWriteFactory& factory = m_fonts.factory();
    for (const wchar_t* path : {static_cast<const wchar_t*>(nullptr), L"", L"/\xD800", L"/\xDC20.ttf"}) {
        EXPECT_EQ(factory.CreateFontFileReference(path, nullptr, &file), E_INVALIDARG);
        EXPECT_EQ(file.get(), nullptr);
    }
}

TEST_F(LocalFiles, AChangedFileIsNotOpened) {
    const std::string path = copyOf("Words.ttf", "a.ttf");
    com_ptr<IDWriteFontFile> file;
    ASSERT_EQ(makeReference(path, file), S_OK);
    EXPECT_EQ(analyse(*file), S_OK);
    const Key key = keyOf(*file);
    FILETIME time{};
    ASSERT_EQ(key.loader->GetLastWriteTimeFromKey(key.bytes, key.size, &time), S_OK);
    com_ptr<IDWriteFontFile> timed;
    ASSERT_EQ(makeReference(path, timed, &time), S_OK);
    EXPECT_EQ(analyse(*timed), S_OK);

    files::last_write_time(path, files::last_write_time(path) - std::chrono::hours(1));
    EXPECT_EQ(analyse(*file), DWRITE_E_FILEACCESS);
    EXPECT_EQ(analyse(*timed), DWRITE_E_FILEACCESS);
    com_ptr<IDWriteFontFileStream> stream;
    EXPECT_EQ(key.loader->CreateStreamFromKey(key.bytes, key.size, &stream), DWRITE_E_FILEACCESS);
    EXPECT_EQ(stream.get(), nullptr);
    com_ptr<IDWriteFontFile> again;
    ASSERT_EQ(makeReference(path, again), S_OK);
    EXPECT_EQ(analyse(*again), S_OK);
}

TEST_F(LocalFiles, AStreamOfAFileThatChangesGivesNoMoreBytes) {
    const std::string path = copyOf("Words.ttf", "a.ttf");
    com_ptr<IDWriteFontFile> file;
    ASSERT_EQ(makeReference(path, file), S_OK);
    const Key key = keyOf(*file);
    com_ptr<IDWriteFontFileStream> stream;
    ASSERT_EQ(key.loader->CreateStreamFromKey(key.bytes, key.size, &stream), S_OK);
    files::resize_file(path, 50);
    const void* bytes = nullptr;
    void* context = nullptr;
    EXPECT_EQ(stream->ReadFileFragment(&bytes, 0, 100, &context), DWRITE_E_FILEACCESS);
    EXPECT_EQ(context, nullptr);
}

TEST_F(LocalFiles, AnyFileNameIsToldAndTaken) {
    // A character outside the first plane, and bytes that are no UTF-8.
    for (const std::string name : {"\xF0\x9F\x98\x80.ttf", "\xFF\xC3(\xE2\x82.ttf"}) {
        const std::string path = copyOf("Words.ttf", name);
        com_ptr<IDWriteFontFile> file;
        ASSERT_EQ(makeReference(path, file), S_OK);
        const Key key = keyOf(*file);
        UINT32 length = 0;
        ASSERT_EQ(key.loader->GetFilePathLengthFromKey(key.bytes, key.size, &length), S_OK);
        std::wstring told(length + 1, L'?');
        ASSERT_EQ(key.loader->GetFilePathFromKey(key.bytes, key.size, told.data(), length + 1), S_OK);
        told.pop_back();
        EXPECT_EQ(localPath(told), path);
        EXPECT_EQ(analyse(*file), S_OK);
    }
    EXPECT_EQ(widePath("a\xFF/\xF0\x9F\x98\x80"), L"a\xDCFF/\xD83D\xDE00");
}

TEST_F(LocalFiles, AKeyNamesTheSameFileAgain) {
    com_ptr<IDWriteFontFile> file;
    ASSERT_EQ(makeReference(copyOf("Words.ttf", "a.ttf"), file), S_OK);
    const Key key = keyOf(*file);
    com_ptr<IDWriteFontFile> again;
    IDWriteFactory& factory = m_fonts.factory();
    ASSERT_EQ(factory.CreateCustomFontFileReference(key.bytes, key.size, key.loader, &again), S_OK);
    EXPECT_EQ(analyse(*again), S_OK);
    EXPECT_EQ(factory.CreateCustomFontFileReference(key.bytes, 3, key.loader, &again), E_INVALIDARG);
    EXPECT_EQ(again.get(), nullptr);
    EXPECT_EQ(factory.CreateCustomFontFileReference(nullptr, 3, m_fonts.loader, &again), E_INVALIDARG);
}

TEST_F(LocalFiles, AFaceOfAnInstalledFileIsThatOfTheInstalledFont) {
    const struct {
        CFont& font;
    } cases[] = {
        {font(L"Liberation Sans", DWRITE_FONT_WEIGHT_BOLD)},
        {family(L"Noto Music").match(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL)},
        {fontOfFile("fonts-noto-cjk/NotoSansCJK-Regular.ttc", 3)}};
    for (const auto& c : cases) {
        CFontFace& listed = c.font.face();
        com_ptr<IDWriteFontFile> file;
        ASSERT_EQ(makeReference(c.font.source().path(), file), S_OK);
        com_ptr<IDWriteFontFace> face;
        ASSERT_EQ(makeFace(file, face, listed.GetIndex(), listed.GetSimulations(), listed.GetType()), S_OK);
        EXPECT_EQ(face->GetGlyphCount(), listed.GetGlyphCount());
        com_ptr<IDWriteFont> found;
        EXPECT_EQ(CFontCollection::system().GetFontFromFontFace(face, &found), S_OK);
        EXPECT_EQ(found.get(), &c.font);
    }
}

TEST_F(LocalFiles, AFaceOfAnotherFileHasNoFontInTheSystem) {
    com_ptr<IDWriteFontFile> file;
    ASSERT_EQ(makeReference(dataPath("Words.ttf"), file), S_OK);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(makeFace(file, face), S_OK);
    com_ptr<IDWriteFont> found;
    EXPECT_EQ(CFontCollection::system().GetFontFromFontFace(face, &found), DWRITE_E_NOFONT);
    EXPECT_EQ(found.get(), nullptr);
}

TEST_F(LocalFiles, TheFileOfAFaceMakesTheSameFace) {
    CFontFace& bold = dataFont("Variable.ttf", 2 << 16).face();
    com_ptr<IDWriteFontFile> file;
    UINT32 count = 1;
    ASSERT_EQ(bold.GetFiles(&count, &file), S_OK);
    com_ptr<IDWriteFontFace> face;
    ASSERT_EQ(makeFace(file, face, bold.GetIndex()), S_OK);
    EXPECT_EQ(face->GetIndex(), 2u << 16);
    UINT16 glyph = bold.nominalGlyph(U'I');
    DWRITE_GLYPH_METRICS metrics{};
    ASSERT_EQ(face->GetDesignGlyphMetrics(&glyph, 1, &metrics), S_OK);
    EXPECT_EQ(metrics.advanceWidth, 360u); // 300 for the default one
    EXPECT_EQ(makeFace(file, face, 9u << 16), E_INVALIDARG);
    EXPECT_EQ(makeFace(file, face, 0x80000000u), E_INVALIDARG);
    EXPECT_EQ(makeFace(file, face, 1), E_INVALIDARG);
}

/// The indices of the fonts that Fontconfig finds in a file.
std::multiset<unsigned> listedByFontconfig(const std::string& path) {
    FcFontSet* const set = FcFontSetCreate();
    FcFreeTypeQueryAll(reinterpret_cast<const FcChar8*>(path.c_str()), static_cast<unsigned>(-1), nullptr, nullptr,
                       set);
    std::multiset<unsigned> indices;
    for (int i = 0; i < set->nfont; ++i) {
        int index = 0;
        FcBool isVariable = FcFalse;
        FcPatternGetInteger(set->fonts[i], FC_INDEX, 0, &index);
        FcPatternGetBool(set->fonts[i], FC_VARIABLE, 0, &isVariable);
        if (isVariable == FcFalse) {
            indices.insert(static_cast<unsigned>(index));
        }
    }
    FcFontSetDestroy(set);
    return indices;
}

TEST_F(LocalFiles, CollectionsHaveTheFontsThatFontconfigFinds) {
    for (const char* name : {"Variable.ttf", "Cff2.otf", "Collection.ttc", "Words.ttf"}) {
        m_fonts.file("f").bytes = fontBytes(name);
        const com_ptr<IDWriteFontCollection> collection = m_fonts.collection("f");
        std::multiset<unsigned> indices;
        for (UINT32 i = 0; i < collection->GetFontFamilyCount(); ++i) {
            com_ptr<IDWriteFontFamily> family;
            ASSERT_EQ(collection->GetFontFamily(i, &family), S_OK);
            for (UINT32 j = 0; j < family->GetFontCount(); ++j) {
                com_ptr<IDWriteFont> font;
                com_ptr<IDWriteFontFace> face;
                ASSERT_EQ(family->GetFont(j, &font), S_OK);
                ASSERT_EQ(font->CreateFontFace(&face), S_OK);
                if (face->GetSimulations() == DWRITE_FONT_SIMULATIONS_NONE) {
                    indices.insert(face->GetIndex());
                }
            }
        }
        EXPECT_EQ(indices, listedByFontconfig(dataPath(name))) << name;
    }
}

} // namespace
} // namespace platform::test

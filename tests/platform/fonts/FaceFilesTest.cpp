#include "support/Fonts.h"

#include "fonts/FaceSource.h"
#include "fonts/FontSet.h"

#include <gtest/gtest.h>

#include <boost/crc.hpp>

#include <fstream>
#include <sstream>

#include <sys/stat.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;

CFont& listedFont(const std::string& file, int index) {
    if (file.find('/') != std::string::npos) {
        return fontOfFile(file, index);
    }
    // What the other tests have no use for is not in their collection.
    static auto& symbols = *new CFontCollection(FontSet{{{dataPath("Symbol.ttf"), 0}}});
    CFont* const symbol = symbols.fontOfFile(dataPath(file), index);
    return symbol != nullptr ? *symbol : dataFont(file, index);
}

com_ptr<IDWriteFontFile> onlyFile(IDWriteFontFace& face) {
    com_ptr<IDWriteFontFile> file;
    UINT32 count = 1;
    EXPECT_EQ(face.GetFiles(&count, &file), S_OK);
    EXPECT_EQ(count, 1u);
    return file;
}

UINT32 tagOf(const std::string& name) {
    return DWRITE_MAKE_OPENTYPE_TAG(name[0], name[1], name[2], name[3] == '_' ? ' ' : name[3]);
}

std::string tableOf(IDWriteFontFace& face, UINT32 tag) {
    const void* data = nullptr;
    UINT32 size = 0;
    void* context = nullptr;
    BOOL exists = FALSE;
    EXPECT_EQ(face.TryGetFontTable(tag, &data, &size, &context, &exists), S_OK);
    EXPECT_TRUE(exists);
    const std::string bytes(static_cast<const char*>(data), size);
    face.ReleaseFontTable(context);
    return bytes;
}

struct LocalFile {
    com_ptr<IDWriteLocalFontFileLoader> loader;
    const void* key = nullptr;
    UINT32 keySize = 0;
};

LocalFile localFile(IDWriteFontFile& file) {
    LocalFile local;
    com_ptr<IDWriteFontFileLoader> loader;
    EXPECT_EQ(file.GetLoader(&loader), S_OK);
    local.loader.queryFrom(loader);
    EXPECT_EQ(file.GetReferenceKey(&local.key, &local.keySize), S_OK);
    return local;
}

std::wstring pathOf(const LocalFile& local) {
    UINT32 length = 0;
    EXPECT_EQ(local.loader->GetFilePathLengthFromKey(local.key, local.keySize, &length), S_OK);
    std::wstring path(length + 1, L'?');
    EXPECT_EQ(local.loader->GetFilePathFromKey(local.key, local.keySize, path.data(), length + 1), S_OK);
    EXPECT_EQ(path.back(), L'\0');
    path.pop_back();
    return path;
}

std::string readFile(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

TEST(FaceFiles, TablesAreTheBytesOfTheFile) {
    for (const auto& row : readTable("tables.tsv")) {
        CFontFace& face = listedFont(row.at(0), std::stoi(row.at(1))).face();
        std::istringstream tables(row.at(5));
        int count = 0;
        for (std::string name, length, checksum; std::getline(tables, name, '=') && std::getline(tables, length, '=') &&
                                                 std::getline(tables, checksum, ' ');
             ++count) {
            const std::string bytes = tableOf(face, tagOf(name));
            boost::crc_32_type crc;
            crc.process_bytes(bytes.data(), bytes.size());
            EXPECT_EQ(bytes.size(), std::stoul(length)) << row.at(0) << ' ' << name;
            EXPECT_EQ(crc.checksum(), std::stoul(checksum)) << row.at(0) << ' ' << name;
        }
        EXPECT_LT(6, count);
    }
}

TEST(FaceFiles, ATableThatIsNotThereIsNoError) {
    IDWriteFontFace& face = font(L"DejaVu Sans").face();
    const void* data = &face;
    UINT32 size = 7;
    void* context = &face;
    BOOL exists = TRUE;
    EXPECT_EQ(face.TryGetFontTable(DWRITE_MAKE_OPENTYPE_TAG('C', 'F', 'F', ' '), &data, &size, &context, &exists),
              S_OK);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(context, nullptr);
    EXPECT_FALSE(exists);
    face.ReleaseFontTable(context);
}

TEST(FaceFiles, TheKindIsThatOfTheFile) {
    for (const auto& row : readTable("tables.tsv")) {
        CFontFace& face = listedFont(row.at(0), std::stoi(row.at(1))).face();
        const bool isCollection = row.at(2) == "1";
        const bool isCff = row.at(3) == "OTTO";
        EXPECT_EQ(face.GetType(), isCollection ? DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION
                                  : isCff      ? DWRITE_FONT_FACE_TYPE_CFF
                                               : DWRITE_FONT_FACE_TYPE_TRUETYPE)
            << row.at(0);
        EXPECT_EQ(face.IsSymbolFont() != FALSE, row.at(4) == "1") << row.at(0);
    }
}

TEST(FaceFiles, AnalysisTellsTheKindAndHowManyFacesThereAre) {
    const struct {
        CFont& font;
        DWRITE_FONT_FILE_TYPE file;
        DWRITE_FONT_FACE_TYPE face;
        UINT32 count;
    } cases[] = {{font(L"DejaVu Sans"), DWRITE_FONT_FILE_TYPE_TRUETYPE, DWRITE_FONT_FACE_TYPE_TRUETYPE, 1},
                 {dataFont("Cff.otf"), DWRITE_FONT_FILE_TYPE_CFF, DWRITE_FONT_FACE_TYPE_CFF, 1},
                 {dataFont("Collection.ttc", 1), DWRITE_FONT_FILE_TYPE_OPENTYPE_COLLECTION,
                  DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION, 2}};
    for (const auto& c : cases) {
        BOOL isSupported = FALSE;
        DWRITE_FONT_FILE_TYPE file = DWRITE_FONT_FILE_TYPE_UNKNOWN;
        DWRITE_FONT_FACE_TYPE face = DWRITE_FONT_FACE_TYPE_UNKNOWN;
        UINT32 count = 0;
        EXPECT_EQ(onlyFile(c.font.face())->Analyze(&isSupported, &file, &face, &count), S_OK);
        EXPECT_TRUE(isSupported);
        EXPECT_EQ(file, c.file);
        EXPECT_EQ(face, c.face);
        EXPECT_EQ(count, c.count);
        EXPECT_EQ(onlyFile(c.font.face())->Analyze(&isSupported, &file, nullptr, &count), S_OK);
    }
}

TEST(FaceFiles, AFaceHasOneFile) {
    IDWriteFontFace& face = font(L"DejaVu Sans").face();
    UINT32 count = 0;
    EXPECT_EQ(face.GetFiles(&count, nullptr), S_OK);
    EXPECT_EQ(count, 1u);
    com_ptr<IDWriteFontFile> file;
    count = 0;
    EXPECT_EQ(face.GetFiles(&count, &file), E_INVALIDARG);
    EXPECT_EQ(file.get(), nullptr);
}

TEST(FaceFiles, SimulatedFacesAreOfTheFileOfTheRealOne) {
    CFontFamily& music = family(L"Noto Music");
    CFontFace& heavy =
        music.match(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL).face();
    ASSERT_EQ(heavy.GetSimulations(), DWRITE_FONT_SIMULATIONS_BOLD);
    EXPECT_EQ(pathOf(localFile(*onlyFile(heavy))), pathOf(localFile(*onlyFile(font(L"Noto Music").face()))));
}

TEST(FaceFiles, TheIndexNamesTheFaceAndTheInstanceOfAVariableFont) {
    EXPECT_EQ(font(L"DejaVu Sans").face().GetIndex(), 0u);
    EXPECT_EQ(dataFont("Collection.ttc", 1).face().GetIndex(), 1u);
    EXPECT_EQ(dataFont("Variable.ttf").face().GetIndex(), 0u);
    EXPECT_EQ(dataFont("Variable.ttf", 3 << 16).face().GetIndex(), 3u << 16);
}

TEST(FaceFiles, TheLoaderOfFilesOnDiskKnowsPathAndTime) {
    const std::string expected = dataPath("Words.ttf");
    const com_ptr<IDWriteFontFile> file = onlyFile(dataFont("Words.ttf").face());
    const LocalFile local = localFile(*file);
    ASSERT_NE(local.loader.get(), nullptr);
    EXPECT_EQ(pathOf(local), std::wstring(expected.begin(), expected.end()));

    FILETIME time{};
    EXPECT_EQ(local.loader->GetLastWriteTimeFromKey(local.key, local.keySize, &time), S_OK);
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    struct stat status {};
    ASSERT_EQ(stat(expected.c_str(), &status), 0);
    // The years from 1601 to 1970 have 134774 days.
    EXPECT_EQ(ticks,
              (std::uint64_t{134'774} * 86'400u + static_cast<std::uint64_t>(status.st_mtim.tv_sec)) * 10'000'000u +
                  static_cast<std::uint64_t>(status.st_mtim.tv_nsec) / 100u);
}

TEST(FaceFiles, APathNeedsRoomForItsTerminator) {
    const com_ptr<IDWriteFontFile> file = onlyFile(dataFont("Words.ttf").face());
    const LocalFile local = localFile(*file);
    UINT32 length = 0;
    ASSERT_EQ(local.loader->GetFilePathLengthFromKey(local.key, local.keySize, &length), S_OK);
    std::wstring path(length + 1, L'?');
    EXPECT_EQ(local.loader->GetFilePathFromKey(local.key, local.keySize, path.data(), length), E_NOT_SUFFICIENT_BUFFER);
    EXPECT_EQ(path.front(), L'\0');
    EXPECT_EQ(local.loader->GetFilePathFromKey(local.key, local.keySize, path.data(), 0), E_INVALIDARG);
    EXPECT_EQ(local.loader->GetFilePathFromKey(local.key, local.keySize, nullptr, 9), E_INVALIDARG);
}

TEST(FaceFiles, WhatIsNoKeyIsRefused) {
    const com_ptr<IDWriteFontFile> file = onlyFile(dataFont("Words.ttf").face());
    const LocalFile local = localFile(*file);
    UINT32 length = 7;
    WCHAR path[9] = L"????????";
    FILETIME time{7, 7};
    com_ptr<IDWriteFontFileStream> stream;
    const std::string withNul("12345678a\0b", 11);
    const struct {
        const void* key;
        UINT32 size;
    } cases[] = {{nullptr, 20}, {local.key, 0}, {local.key, 8}, {withNul.data(), 11}};
    for (const auto& c : cases) {
        EXPECT_EQ(local.loader->GetFilePathLengthFromKey(c.key, c.size, &length), E_INVALIDARG);
        EXPECT_EQ(length, 0u);
        EXPECT_EQ(local.loader->GetFilePathFromKey(c.key, c.size, path, 9), E_INVALIDARG);
        EXPECT_EQ(path[0], L'\0');
        EXPECT_EQ(local.loader->GetLastWriteTimeFromKey(c.key, c.size, &time), E_INVALIDARG);
        EXPECT_EQ(time.dwLowDateTime | time.dwHighDateTime, 0u);
        EXPECT_EQ(local.loader->CreateStreamFromKey(c.key, c.size, &stream), E_INVALIDARG);
        EXPECT_EQ(stream.get(), nullptr);
    }
}

TEST(FaceFiles, AStreamHandsOutTheBytesOfTheFile) {
    const com_ptr<IDWriteFontFile> file = onlyFile(dataFont("Words.ttf").face());
    const LocalFile local = localFile(*file);
    com_ptr<IDWriteFontFileStream> stream;
    ASSERT_EQ(local.loader->CreateStreamFromKey(local.key, local.keySize, &stream), S_OK);
    const std::string expected = readFile(dataPath("Words.ttf"));
    UINT64 size = 0;
    EXPECT_EQ(stream->GetFileSize(&size), S_OK);
    ASSERT_EQ(size, expected.size());
    const void* bytes = nullptr;
    void* context = nullptr;
    ASSERT_EQ(stream->ReadFileFragment(&bytes, 5, size - 5, &context), S_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(bytes), expected.size() - 5), expected.substr(5));
    stream->ReleaseFileFragment(context);
    UINT64 time = 0;
    FILETIME keysTime{};
    EXPECT_EQ(stream->GetLastWriteTime(&time), S_OK);
    local.loader->GetLastWriteTimeFromKey(local.key, local.keySize, &keysTime);
    EXPECT_EQ(time, UINT64{keysTime.dwHighDateTime} << 32 | keysTime.dwLowDateTime);

    for (const auto& [offset, length] : {std::pair<UINT64, UINT64>{size, 1}, {0, size + 1}, {~UINT64{0}, 2}}) {
        bytes = this;
        context = this;
        EXPECT_EQ(stream->ReadFileFragment(&bytes, offset, length, &context), E_FAIL);
        EXPECT_EQ(bytes, nullptr);
        EXPECT_EQ(context, nullptr);
    }
}

TEST(FaceFiles, ATableStaysAsLongAsItIsHeld) {
    auto fonts = std::make_unique<CFontCollection>(FontSet{{{dataPath("Words.ttf"), 0}}});
    IDWriteFontFace& face = fonts->families().at(0)->fonts().at(0)->face();
    const std::string expected = tableOf(face, tagOf("head"));
    const void* data = nullptr;
    UINT32 size = 0;
    void* context = nullptr;
    BOOL exists = FALSE;
    ASSERT_EQ(face.TryGetFontTable(tagOf("head"), &data, &size, &context, &exists), S_OK);
    IDWriteFontFace& other = font(L"DejaVu Sans").face();
    fonts.reset();
    EXPECT_EQ(std::string(static_cast<const char*>(data), size), expected);
    other.ReleaseFontTable(context);
}

} // namespace
} // namespace platform::test

#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <d2d1.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <sys/stat.h>
#include <unistd.h>

namespace platform::test {
namespace {

namespace files = std::filesystem;

const std::string small = std::string(FONTENGINE_TEST_FONTS) + "/fonts-dejavu-core/DejaVuSans.ttf";
const std::string large = std::string(FONTENGINE_TEST_FONTS) + "/fonts-noto-cjk/NotoSansCJK-Regular.ttc";

/// A font file of the test's own that is changed under its users.
class FontFiles : public testing::Test {
protected:
    FontFiles() : m_folder(files::temp_directory_path() / ("font-files-" + std::to_string(getpid()))) {
        files::create_directories(m_folder);
    }
    ~FontFiles() override { files::remove_all(m_folder); }

    std::string copyOf(const std::string& font) const {
        const files::path copy = m_folder / "font.ttf";
        files::copy_file(files::canonical(font), copy, files::copy_options::overwrite_existing);
        return copy.string();
    }

    const files::path m_folder;
};

CFont& onlyFont(const CFontCollection& fonts) {
    return *fonts.families().at(0)->fonts().at(0);
}

/// Everything that is asked of a face later than its first use, for the glyphs of Latin letters.
void expectSameFace(const CFontFace& face, const CFontFace& expected) {
    ASSERT_EQ(face.glyphCount(), expected.glyphCount());
    for (char32_t letter = U'A'; letter <= U'z'; ++letter) {
        const std::uint16_t glyph = face.nominalGlyph(letter);
        EXPECT_EQ(glyph, expected.nominalGlyph(letter));
        EXPECT_EQ(face.advance(glyph), expected.advance(glyph));
        EXPECT_EQ(face.glyphBounds(glyph).xMax, expected.glyphBounds(glyph).xMax);
    }
}

/// Bytes that this process has read from files so far.
long long bytesRead() {
    std::ifstream counts("/proc/self/io");
    std::string name;
    long long bytes = 0;
    counts >> name >> bytes;
    return name == "rchar:" ? bytes : throw std::runtime_error("no count of bytes read");
}

TEST_F(FontFiles, AFileCutWhileItIsInUseChangesNothing) {
    const std::string path = copyOf(small);
    const CFontCollection fonts(FontSet{{{path, 0}}});
    const CFontFace& face = onlyFont(fonts).face();
    files::resize_file(path, 100);
    expectSameFace(face, fontOfFile("fonts-dejavu-core/DejaVuSans.ttf").face());
}

TEST_F(FontFiles, AFileReplacedWhileItIsInUseChangesNothing) {
    const std::string path = copyOf(small);
    const CFontCollection fonts(FontSet{{{path, 0}}});
    const CFontFace& face = onlyFont(fonts).face();
    const files::path other = m_folder / "other.ttf";
    files::copy_file(dataPath("Words.ttf"), other);
    files::rename(other, path);
    expectSameFace(face, fontOfFile("fonts-dejavu-core/DejaVuSans.ttf").face());
}

TEST_F(FontFiles, AFileChangedBeforeItsFirstUseHasNoGlyphs) {
    for (const bool replaced : {false, true}) {
        const std::string path = copyOf(small);
        const CFontCollection fonts(FontSet{{{path, 0}}});
        if (replaced) {
            files::remove(path);
            files::copy_file(dataPath("Words.ttf"), path);
        } else {
            files::resize_file(path, 400000);
        }
        const CFontFace& face = onlyFont(fonts).face();
        EXPECT_EQ(face.glyphCount(), 0u);
        EXPECT_FALSE(face.hasCharacter(U'H'));
    }
}

/// Counts what it is sent.
class CountingSink final : public ID2D1SimplifiedGeometrySink {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F, D2D1_FIGURE_BEGIN) override { ++figures; }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F*, UINT) override {}
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT) override {}
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override {}
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }
    int figures = 0;
};

TEST_F(FontFiles, OutlinesThatWereNotReadBeforeAChangeAreAnError) {
    const std::string path = copyOf(large);
    const CFontCollection fonts(FontSet{{{path, 0}}});
    CFontFace& face = onlyFont(fonts).face();
    const UINT16 glyph = face.nominalGlyph(U'\u7A97');
    ASSERT_NE(glyph, 0);
    std::ofstream(path, std::ios::binary | std::ios::in) << "OTTO";
    files::last_write_time(path, files::last_write_time(path) + std::chrono::seconds(1));

    EXPECT_EQ(face.advance(glyph), 1000);
    EXPECT_THROW(face.glyphBounds(glyph), std::runtime_error);
    CountingSink sink;
    EXPECT_EQ(face.GetGlyphRunOutline(20, &glyph, nullptr, nullptr, 1, FALSE, FALSE, &sink), E_FAIL);
    EXPECT_EQ(sink.figures, 0);
    DWRITE_GLYPH_METRICS metrics{};
    EXPECT_EQ(face.GetDesignGlyphMetrics(&glyph, 1, &metrics, FALSE), E_FAIL);
}

TEST_F(FontFiles, LargeOutlinesAreReadForOutlinesOnlyAndOnceForAllFacesOfAFile) {
    constexpr long long megabyte = 1 << 20;
    const CFontCollection fonts(FontSet{{{large, 0}, {large, 1}}});
    CFontFace& japanese = fonts.fontOfFile(large, 0)->face();
    CFontFace& korean = fonts.fontOfFile(large, 1)->face();
    const std::uint16_t glyph = japanese.nominalGlyph(U'\u7A97');
    const long long before = bytesRead();
    EXPECT_FALSE(japanese.glyphBounds(glyph).empty());
    const long long outlines = bytesRead() - before;
    EXPECT_GT(outlines, 10 * megabyte);
    EXPECT_FALSE(korean.glyphBounds(glyph).empty());
    EXPECT_LT(bytesRead() - before - outlines, megabyte);
}

TEST_F(FontFiles, OneThatIsOnlyListedIsHardlyRead) {
    const long long before = bytesRead();
    const CFontCollection fonts(FontSet{{{large, 0}}});
    EXPECT_EQ(fonts.families().size(), 1u);
    EXPECT_LT(bytesRead() - before, 100000);
}

TEST_F(FontFiles, PipesAndDevicesAreLeftOut) {
    const std::string pipe = (m_folder / "pipe.ttf").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    alarm(30);
    EXPECT_TRUE(CFontCollection(FontSet{{{pipe, 0}, {"/dev/zero", 0}, {"/dev/tty", 0}}}).families().empty());
    alarm(0);
}

} // namespace
} // namespace platform::test

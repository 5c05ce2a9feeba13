#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include <unistd.h>

namespace platform::test {
namespace {

namespace fs = std::filesystem;

/// A folder for the font files of one test.
class BrokenFonts : public testing::Test {
protected:
    BrokenFonts() : m_folder(fs::temp_directory_path() / ("broken-fonts-" + std::to_string(::getpid()))) {
        fs::create_directories(m_folder);
    }
    ~BrokenFonts() override { fs::remove_all(m_folder); }

    std::string write(const std::string& name, const std::string& bytes) {
        const fs::path path = m_folder / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

    const fs::path m_folder;
};

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Asks a collection for everything it has; returns how many fonts there were.
std::size_t exhaust(const CFontCollection& collection) {
    std::size_t count = 0;
    for (const auto& family : collection.families()) {
        for (const auto& font : family->fonts()) {
            ++count;
            for (int id = 0; id <= 20; ++id) {
                informationalStrings(*font, static_cast<DWRITE_INFORMATIONAL_STRING_ID>(id));
            }
            const CFontFace& face = font->face();
            EXPECT_GT(face.unitsPerEm(), 0u);
            EXPECT_GT(face.metrics().capHeight, 0);
            for (char32_t c = 0; c < 0x500; ++c) {
                face.nominalGlyph(c);
            }
            for (unsigned glyph = 0; glyph < face.glyphCount(); ++glyph) {
                const auto id = static_cast<std::uint16_t>(glyph);
                face.advance(id);
                face.glyphBounds(id);
            }
        }
    }
    return count;
}

TEST_F(BrokenFonts, AFileCutAnywhereIsLeftOutOrMissesGlyphs) {
    const std::string whole = contents(dataPath("Wws.ttf"));
    ASSERT_GT(whole.size(), 500u);
    for (std::size_t size = 0; size < whole.size(); size += 37) {
        const std::string path = write("cut-" + std::to_string(size) + ".ttf", whole.substr(0, size));
        exhaust(CFontCollection(FontSet{{{path, 0}}}));
    }
}

TEST_F(BrokenFonts, ALargeFileCutInItsTablesIsLeftOutOrMissesGlyphs) {
    const std::string whole = contents(std::string(FONTENGINE_TEST_FONTS) + "/fonts-dejavu-core/DejaVuSans.ttf");
    ASSERT_GT(whole.size(), 700000u);
    for (const double share : {0.001, 0.5, 0.99}) {
        const auto size = static_cast<std::size_t>(share * static_cast<double>(whole.size()));
        exhaust(CFontCollection(FontSet{{{write("cut.ttf", whole.substr(0, size)), 0}}}));
    }
}

TEST_F(BrokenFonts, DamagedBytesNeverCrash) {
    const std::string whole = contents(dataPath("Variable.ttf"));
    std::mt19937 random(20250101);
    for (int round = 0; round < 100; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 8; ++i) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        exhaust(
            CFontCollection(FontSet{{{write("damaged.ttf", damaged), 0}, {write("damaged.ttf", damaged), 2 << 16}}}));
    }
}

TEST_F(BrokenFonts, WhatIsNoFontIsLeftOut) {
    const std::string missing = (m_folder / "missing.ttf").string();
    const FontSet set{{{missing, 0},
                       {m_folder.string(), 0},
                       {write("empty.ttf", ""), 0},
                       {write("text.ttf", "This is not a font."), 0},
                       {dataPath("Collection.ttc"), 7},
                       {dataPath("Cff.otf"), 0}}};
    const CFontCollection collection(set);
    ASSERT_EQ(collection.families().size(), 1u);
    EXPECT_EQ(collection.families()[0]->names()[0].text, L"Test Cff");
    EXPECT_EQ(collection.fontOfFile(missing, 0), nullptr);
}

TEST_F(BrokenFonts, AFileThatGoesAwayLeavesAFontWithoutGlyphs) {
    const std::string path = write("gone.ttf", contents(dataPath("Words.ttf")));
    const CFontCollection collection(FontSet{{{path, 0}}});
    ASSERT_EQ(collection.families().size(), 1u);
    fs::remove(path);
    CFont& font = *collection.families()[0]->fonts()[0];
    EXPECT_EQ(font.face().glyphCount(), 0u);
    EXPECT_FALSE(font.face().hasCharacter(U'H'));
    EXPECT_EQ(font.face().advance(2), 0);
    EXPECT_TRUE(font.face().glyphBounds(2).empty());
    EXPECT_EQ(textAt(*informationalStrings(font, DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES), 0),
              L"Test Words Semi Condensed Light");
    EXPECT_GT(font.face().metrics().ascent, 0);
}

} // namespace
} // namespace platform::test

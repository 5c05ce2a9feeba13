#include "support/Fonts.h"
#include "support/NumberedFonts.h"

#include "fallback/FallbackMapper.h"

#include <Common/Utf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

namespace platform::test {
namespace {

namespace files = std::filesystem;

/// What a font is called, and what it draws.
void describe(CFont& font, std::ostream& out) {
    const auto names = informationalStrings(font, DWRITE_INFORMATIONAL_STRING_FULL_NAME);
    const CFontFace& face = font.face();
    out << (names ? common::utf8FromWide(textAt(*names, 0)) : "?") << ' ' << font.simulations() << ' '
        << face.glyphCount() << ' ' << face.glyphBounds(face.nominalGlyph(U'H')).xMax;
}

/// Writes what the fonts of a configuration draw, families first, then fallback, and ends the process.
[[noreturn]] void drawWith(const std::string& configuration, const std::string& answer) {
    setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
    std::ofstream out(answer);
    for (const auto& family : CFontCollection::system().families()) {
        out << common::utf8FromWide(family->names()[0].text) << ": ";
        for (const auto& font : family->fonts()) {
            describe(*font, out << "; ");
        }
        for (const DWRITE_FONT_WEIGHT weight : {DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_WEIGHT_BOLD}) {
            for (const DWRITE_FONT_STYLE style : {DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STYLE_ITALIC}) {
                describe(family->match(weight, DWRITE_FONT_STRETCH_NORMAL, style), out << " | ");
            }
        }
        out << '\n';
    }
    for (const char16_t letter : u"H\u0416\u05D0\u0639\u0915\u2264\u2328") {
        const Mapping mapping =
            FallbackMapper::system().map({&letter, 1}, 0, 1, L"", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                         DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL);
        out << std::hex << static_cast<unsigned>(letter) << ": ";
        if (mapping.font != nullptr) {
            describe(*mapping.font, out);
        }
        out << '\n';
    }
    out.close();
    std::_Exit(0);
}

/// The files to draw with: families with ties, copies, and several fonts for each of some scripts.
std::vector<files::path> fontFiles() {
    std::vector<files::path> found;
    for (const auto& entry : files::directory_iterator(dataPath("odd"))) {
        found.push_back(entry.path());
    }
    const files::path pinned = FONTENGINE_TEST_FONTS;
    for (const char* const name :
         {"fonts-dejavu-core/DejaVuSans.ttf", "fonts-dejavu-core/DejaVuSans-Bold.ttf",
          "fonts-dejavu-core/DejaVuSansMono.ttf", "fonts-dejavu-core/DejaVuSans.ttf",
          "fonts-liberation/LiberationSans-Regular.ttf", "fonts-liberation/LiberationSans-Italic.ttf",
          "fonts-liberation/LiberationSerif-Regular.ttf", "fonts-noto-core/NotoSansDevanagari-Regular.ttf",
          "fonts-noto-core/NotoSerifDevanagari-Regular.ttf", "fonts-noto-core/NotoSansHebrew-Regular.ttf",
          "fonts-noto-core/NotoSansHebrew-Regular.ttf", "fonts-noto-core/NotoSansArabic-Regular.ttf",
          "fonts-noto-core/NotoNaskhArabic-Regular.ttf", "fonts-noto-core/NotoSansMath-Regular.ttf"}) {
        found.push_back(files::canonical(pinned / name));
    }
    return found;
}

std::string contents(const files::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(FileNames, TheSameFontsUnderOtherNamesGiveTheSamePicture) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const files::path folder = files::path(testing::TempDir()) / "fonts-under-other-names";
    constexpr unsigned rounds = 4;
    if (!testing::internal::InDeathTestChild()) {
        files::remove_all(folder);
        std::mt19937 random(20260101);
        for (unsigned round = 0; round < rounds; ++round) {
            std::vector<files::path> fonts = fontFiles();
            std::shuffle(fonts.begin(), fonts.end(), random);
            const files::path place = folder / std::to_string(round);
            for (std::size_t i = 0; i < fonts.size(); ++i) {
                const files::path target = place / std::to_string(random() % 3);
                files::create_directories(target);
                files::copy_file(fonts[i], target / (std::to_string(100 + i) + ".ttf"));
            }
            configureFolder(place, folder / (std::to_string(round) + ".conf"));
        }
    }
    for (unsigned round = 0; round < rounds; ++round) {
        const std::string name = std::to_string(round);
        EXPECT_EXIT(drawWith((folder / (name + ".conf")).string(), (folder / name).string() + ".txt"),
                    testing::ExitedWithCode(0), "");
    }
    const std::string first = contents(folder / "0.txt");
    EXPECT_NE(first.find("Test Tied: "), std::string::npos);
    EXPECT_NE(first.find("\n915: Noto"), std::string::npos) << first;
    for (unsigned round = 1; round < rounds; ++round) {
        EXPECT_EQ(contents(folder / (std::to_string(round) + ".txt")), first);
    }
    files::remove_all(folder);
}

} // namespace
} // namespace platform::test

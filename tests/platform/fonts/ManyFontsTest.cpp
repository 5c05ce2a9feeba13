#include "support/Fonts.h"
#include "support/NumberedFonts.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <gtest/gtest.h>

#include "fallback/FallbackMapper.h"

namespace platform::test {
namespace {

namespace files = std::filesystem;

constexpr std::size_t fontCount = 3000;

/// Writes what a new process makes of the fonts of a configuration, and ends it.
[[noreturn]] void answerWithFonts(const std::string& configuration) {
    setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
    const CFontCollection& collection = CFontCollection::system();
    std::size_t inOrder = 0;
    std::size_t whole = 0;
    for (const auto& family : collection.families()) {
        const std::wstring digits = std::to_wstring(1000000 + inOrder).substr(1);
        inOrder += family->names()[0].text == L"Test " + digits ? 1 : 0;
        // The three faces and the obliques of two of them.
        whole += family->fonts().size() == 5 ? 1 : 0;
    }
    std::size_t right = 0;
    for (std::size_t i = 0; i < fontCount / 3; ++i) {
        CFontFamily* const family = collection.findFamily(L"test " + std::to_wstring(1000000 + i).substr(1));
        CFont& font = family->match(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL);
        const CFontFace& face = font.face();
        right += font.weight() == DWRITE_FONT_WEIGHT_BOLD && face.advance(face.nominalGlyph(U'H')) == 700 ? 1 : 0;
    }
    const Mapping fallback = FallbackMapper::system().map(u"H", 0, 1, L"", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                                          DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL);
    std::cerr << collection.families().size() << ' ' << inOrder << ' ' << whole << ' ' << right << ' '
              << (fallback.font != nullptr && fallback.font->weight() == DWRITE_FONT_WEIGHT_NORMAL) << std::endl;
    std::_Exit(0);
}

TEST(ManyFonts, AreAllThereInAnOrderThatDoesNotDependOnTheirFiles) {
    const files::path folder = files::path(testing::TempDir()) / "many-fonts";
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    if (!testing::internal::InDeathTestChild()) {
        files::remove_all(folder);
        for (const bool reversed : {false, true}) {
            const files::path fonts = folder / (reversed ? "reversed" : "fonts");
            makeNumberedFonts(dataPath(""), fonts, fontCount, reversed);
            configureFolder(fonts, folder / (reversed ? "reversed.conf" : "fonts.conf"));
        }
    }
    EXPECT_EXIT(answerWithFonts((folder / "fonts.conf").string()), testing::ExitedWithCode(0),
                "^1000 1000 1000 1000 1\n$");
    EXPECT_EXIT(answerWithFonts((folder / "reversed.conf").string()), testing::ExitedWithCode(0),
                "^1000 1000 1000 1000 1\n$");
    files::remove_all(folder);
}

} // namespace
} // namespace platform::test

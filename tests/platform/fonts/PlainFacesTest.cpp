#include "support/Fonts.h"

#include "fonts/FaceSource.h"
#include "fonts/FontSet.h"
#include "fonts/NameTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace platform::test {
namespace {

namespace files = std::filesystem;

/// The families of data/odd, whose tables and file names mislead.
FontSet oddFonts() {
    FontSet set;
    for (const auto& entry : files::directory_iterator(dataPath("odd"))) {
        set.entries.push_back({entry.path().string(), 0});
    }
    std::sort(set.entries.begin(), set.entries.end(),
              [](const FontSetEntry& a, const FontSetEntry& b) { return a.file < b.file; });
    return set;
}

/// What a request for a family gets: its face name.
std::wstring faceFor(const CFontCollection& fonts, const wchar_t* family,
                     DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL,
                     DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL,
                     DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL) {
    CFontFamily* const found = fonts.findFamily(family);
    return found != nullptr ? textAt(*faceNames(found->match(weight, stretch, style)), 0) : L"(no family)";
}

TEST(PlainFaces, WhatSaysMoreThanRegularIsNotTakenForThePlainFace) {
    const CFontCollection fonts(oddFonts());
    EXPECT_EQ(faceFor(fonts, L"Test Tied"), L"Regular");
    EXPECT_EQ(fonts.findFamily(L"Test Tied")->fonts().front()->source().names().win32Family[0].text, L"Test Tied");
}

TEST(PlainFaces, ANameCountsWhereTheTablesAreSilent) {
    const CFontCollection fonts(oddFonts());
    EXPECT_EQ(faceFor(fonts, L"Test Bitless"), L"Regular");
    EXPECT_EQ(faceFor(fonts, L"Test Bitless", DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_ITALIC), L"Italic");
    EXPECT_EQ(faceFor(fonts, L"Test Bitless", DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_ITALIC), L"BoldItalic");
    EXPECT_EQ(faceFor(fonts, L"Test Bitless", DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                      DWRITE_FONT_STRETCH_CONDENSED),
              L"Condensed");
}

TEST(PlainFaces, APlainRequestGetsTheRegularFaceWhateverItsTablesState) {
    const CFontCollection fonts(oddFonts());
    EXPECT_EQ(faceFor(fonts, L"Test Far"), L"Regular");
    EXPECT_EQ(faceFor(fonts, L"Test Stems"), L"Regular");
    EXPECT_EQ(faceFor(fonts, L"Test Broad"), L"Regular");
    // What was asked for in so many words comes first as ever, and the tables are reported as they are.
    EXPECT_EQ(faceFor(fonts, L"Test Far", DWRITE_FONT_WEIGHT_MEDIUM), L"Medium");
    EXPECT_EQ(fonts.findFamily(L"Test Far")
                  ->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL)
                  .GetWeight(),
              350);
    oslayer::com_ptr<IDWriteFontList> list;
    ASSERT_EQ(S_OK, fonts.findFamily(L"Test Far")
                        ->GetMatchingFonts(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL,
                                           DWRITE_FONT_STYLE_NORMAL, &list));
    oslayer::com_ptr<IDWriteFont> first;
    ASSERT_EQ(S_OK, list->GetFont(0, &first));
    EXPECT_EQ(textAt(*faceNames(*first), 0), L"Regular");
}

TEST(PlainFaces, OfTwoThatCallThemselvesRegularTheOneWithTheFamilysOwnNameIsTaken) {
    const CFontCollection fonts(oddFonts());
    const CFont& taken = fonts.findFamily(L"Test Same Name")
                             ->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL);
    EXPECT_EQ(taken.source().names().win32Family[0].text, L"Test Same Name");
}

TEST(PlainFaces, FilesWithTheSameContentAreOneFont) {
    const files::path copy = files::path(testing::TempDir()) / ("same-content-" + std::to_string(getpid()) + ".ttf");
    files::copy_file(dataPath("Words.ttf"), copy, files::copy_options::overwrite_existing);
    for (const bool copyFirst : {false, true}) {
        const FontSetEntry original{dataPath("Words.ttf"), 0};
        const FontSetEntry again{copy.string(), 0};
        const CFontCollection fonts(copyFirst ? FontSet{{again, original}} : FontSet{{original, again}});
        ASSERT_EQ(fonts.families().size(), 1u);
        const auto& members = fonts.families()[0]->fonts();
        EXPECT_EQ(std::count_if(members.begin(), members.end(),
                                [](const auto& font) { return font->simulations() == DWRITE_FONT_SIMULATIONS_NONE; }),
                  1);
    }
    files::remove(copy);
}

} // namespace
} // namespace platform::test

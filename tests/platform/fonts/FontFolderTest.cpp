#include <cstdlib>
#include <iostream>

#include <fontfolder.h>
#include <gtest/gtest.h>

#include "support/Fonts.h"

namespace platform::test {
namespace {

/// Writes what came of adding a folder before and after the fonts were read, and ends the process.
[[noreturn]] void answerWithFolder(const std::string& folder) {
    const HRESULT before = AddFontFolder(folder.c_str());
    CFontCollection& fonts = CFontCollection::system();
    std::cerr << (before == S_OK) << (fonts.findFamily(L"Test Emoji") != nullptr)
              << (fonts.findFamily(L"DejaVu Sans") != nullptr) << (AddFontFolder(folder.c_str()) == E_FAIL)
              << std::endl;
    std::_Exit(0);
}

TEST(FontFolder, ItsFontsJoinTheInstalledOnesUntilTheyAreRead) {
    // In a process of its own, because a process reads its fonts once.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(answerWithFolder(dataPath("emoji")), testing::ExitedWithCode(0), "1111");
}

TEST(FontFolder, WhatIsNoFolderIsRefused) {
    EXPECT_EQ(AddFontFolder(nullptr), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(""), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(dataPath("missing").c_str()), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(dataPath("Cff.otf").c_str()), E_INVALIDARG);
}

} // namespace
} // namespace platform::test

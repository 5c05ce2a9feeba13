#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <sys/stat.h>
#include <unistd.h>

#include <fontfolder.h>
#include <gtest/gtest.h>

#include "support/Fonts.h"

namespace platform::test {
namespace {

namespace files = std::filesystem;

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

/// Writes whether the fonts of a folder and of the folders in it were found, and ends the process.
[[noreturn]] void answerWithPipes(const std::string& folder) {
    // Who opens a pipe waits until somebody writes into it.
    alarm(30);
    const HRESULT added = AddFontFolder(folder.c_str());
    CFontCollection& fonts = CFontCollection::system();
    std::cerr << (added == S_OK) << (fonts.findFamily(L"Test Cff") != nullptr)
              << (fonts.findFamily(L"Test Wws") != nullptr) << std::endl;
    std::_Exit(0);
}

TEST(FontFolder, PipesAreSkippedAndLinksBackAreNotFollowedForEver) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const files::path folder = files::path(testing::TempDir()) / "folder-with-pipes";
    if (!testing::internal::InDeathTestChild()) {
        files::remove_all(folder);
        files::create_directories(folder / "more");
        files::copy_file(dataPath("Cff.otf"), folder / "Cff.otf");
        files::copy_file(dataPath("Wws.ttf"), folder / "more" / "Wws.ttf");
        files::create_directory_symlink(folder, folder / "more" / "back");
        ASSERT_EQ(mkfifo((folder / "more" / "pipe.ttf").c_str(), 0600), 0);
    }
    EXPECT_EXIT(answerWithPipes(folder.string()), testing::ExitedWithCode(0), "111");
    files::remove_all(folder);
}

TEST(FontFolder, WhatIsNoFolderIsRefused) {
    EXPECT_EQ(AddFontFolder(nullptr), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(""), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(dataPath("missing").c_str()), E_INVALIDARG);
    EXPECT_EQ(AddFontFolder(dataPath("Cff.otf").c_str()), E_INVALIDARG);
}

} // namespace
} // namespace platform::test

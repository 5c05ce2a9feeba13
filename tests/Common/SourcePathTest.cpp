#include <Common/SourcePath.h>

#include <gtest/gtest.h>

#include <string_view>

namespace {

template <std::size_t Size>
constexpr std::string_view view(const common::SourcePath<Size>& path) {
    return path.text;
}

TEST(SourcePath, IsRelativeToTheRootWithoutExtension) {
    constexpr auto path = common::sourcePath("/home/me/engine/Common/Common/UUID.cpp", "/home/me/engine/");
    EXPECT_EQ(view(path), "Common/Common/UUID");
}

TEST(SourcePath, TurnsBackslashesIntoSlashesAndMatchesTheRootByEither) {
    constexpr auto path = common::sourcePath("C:\\dev\\engine\\FontEngine\\src\\Font.cpp", "C:/dev/engine/");
    EXPECT_EQ(view(path), "FontEngine/src/Font");
}

TEST(SourcePath, KeepsAPathOutsideTheRootWhole) {
    constexpr auto path = common::sourcePath("/elsewhere/Font.cpp", "/home/me/engine/");
    EXPECT_EQ(view(path), "/elsewhere/Font");
    constexpr auto shorter = common::sourcePath("a.cpp", "/home/me/engine/");
    EXPECT_EQ(view(shorter), "a");
}

TEST(SourcePath, DropsTheStepsOfARelativeBuild) {
    constexpr auto path = common::sourcePath("../../oslayer/./oslayer/Logger.cpp", "/home/me/engine/");
    EXPECT_EQ(view(path), "oslayer/./oslayer/Logger");
    constexpr auto here = common::sourcePath("./Logger.cpp", "");
    EXPECT_EQ(view(here), "Logger");
}

TEST(SourcePath, DropsTheLastExtensionOnly) {
    constexpr auto two = common::sourcePath("a/b.test.cpp", "");
    EXPECT_EQ(view(two), "a/b.test");
    constexpr auto none = common::sourcePath("a.b/c", "");
    EXPECT_EQ(view(none), "a.b/c");
    constexpr auto hidden = common::sourcePath("a/.config", "");
    EXPECT_EQ(view(hidden), "a/.config");
}

TEST(SourcePath, OfThisFileIsItsPlaceInTheRepository) {
    EXPECT_STREQ(COMMON_SOURCE_PATH, "tests/Common/SourcePathTest");
}

} // namespace

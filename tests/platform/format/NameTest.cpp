#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "format/Name.h"

namespace platform_test {
namespace {

TEST(Names, AreSharedAndCompareByTheirCharacters) {
    EXPECT_EQ(platform::makeName(L"Some Family"), platform::makeName(L"Some Family"));
    EXPECT_EQ(nullptr, platform::makeName(L""));
    EXPECT_TRUE(platform::sameName(nullptr, std::make_shared<const std::wstring>()));
    EXPECT_FALSE(platform::sameName(platform::makeName(L"a"), platform::makeName(L"b")));
    EXPECT_EQ(L"de-\u00C4t", platform::textOf(platform::makeLocaleName(L"DE-\u00C4T")));
    EXPECT_EQ(L"", platform::textOf(nullptr));
}

} // namespace
} // namespace platform_test
